// The library's classes as data, expanded from the family class lists (classes.def): a name, a
// family, the command and side of a message, and a factory. The tools and tests walk it instead
// of naming classes one by one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "cmddata/command/catalogue.h"
#include "cmddata/core/core.h"

namespace cmddata {

enum class ClassKind : std::uint8_t {
    kRecord,   // a record (list item, nested object)
    kLayout,   // a message layout that several commands share
    kMessage,  // a send or receive message of a catalogue command
};

/// One class of the library.
struct ClassInfo {
    const char* name;
    const char* family;  // the title of its family
    ClassKind kind;
    const CommandInfo* command;  // messages: their command; otherwise null
    Side side;                   // messages: which side
    bool takesVersion;           // its constructor takes a version argument
    bool crossed;                // it reads some fields in another order than it writes them
    /// A new object built with the version (ignored where the constructor takes none; layouts
    /// get identifier 0); null when memory runs out. Delete it through CCmdCore.
    CCmdCore* (*make)(std::uint16_t version);
    /// A copy made by the class's copy constructor (shares texts, buffers and list items).
    CCmdCore* (*copy)(const CCmdCore& source);
    /// The class's assignment (a deep copy); both objects must be of this class.
    void (*assign)(CCmdCore& target, const CCmdCore& source);
    /// A new object made by the class's default constructor; null when memory runs out.
    CCmdCore* (*makeDefault)();
    /// The version the default constructor gives.
    std::uint16_t defaultVersion;
};

/// Every class, family by family in the order of the class lists.
CMDDATA_API const ClassInfo* Classes(std::size_t* count);
/// The class of this exact name, or null.
CMDDATA_API const ClassInfo* FindClass(std::string_view name);
/// The message class of a command's side, or null while it is not built.
CMDDATA_API const ClassInfo* FindMessageClass(const CommandInfo& command, Side side);
/// A new object of the class built with the version, its fields taken from JSON text
/// (cmddata/core/json.h); null with *error set when the text does not fit the class. Delete it
/// through CCmdCore.
CMDDATA_API CCmdCore* MakeFromJson(const ClassInfo& cls, std::uint16_t version,
                                   std::string_view text, std::string* error);
/// The seed with which the demo and the captured wire files fill a command's message
/// (cmddata::Fill): distinct for every command and side.
CMDDATA_API std::uint32_t FillSeed(const CommandInfo& command, Side side);

}  // namespace cmddata
