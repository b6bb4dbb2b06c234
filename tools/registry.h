// The tool's map from a catalogue command and a side to the class that carries it: its name and
// a factory that builds it with a given version, from the library's class table.
#pragma once

#include <cstdint>
#include <memory>

#include "cmddata/command/catalogue.h"
#include "cmddata/core/core.h"
#include "cmddata/table/classes.h"

namespace cmdtool {

/// One side of one command.
struct MessageClass {
    const char* className;           // C<Command>Snd or C<Command>Rcv; null while not built
    const cmddata::ClassInfo* info;  // the library's entry; null while not built
    bool takesVersion;               // the constructor takes a version argument
};

/// The entry of a command's side (never null for a command of the catalogue).
const MessageClass& ClassOf(const cmddata::CommandInfo& command, cmddata::Side side);
inline bool IsBuilt(const cmddata::CommandInfo& command, cmddata::Side side) {
    return ClassOf(command, side).info != nullptr;
}
/// Number of commands whose two classes are both built.
std::size_t BuiltCommandCount();

/// A message object for a command's side. The built class when there is one; otherwise a stand-in
/// that carries the header alone in the command's framing (*standIn set), or null for a command
/// that puts no header on the wire.
std::unique_ptr<CCmdCore> MakeMessage(const cmddata::CommandInfo& command, cmddata::Side side,
                                      std::uint16_t version, bool* standIn);

/// The little-endian u32 at data[at..at+4) (the caller checks the size).
std::uint32_t U32At(const unsigned char* data, std::size_t at);
/// Where a framing puts the command identifier: 0 for a plain header, 4 behind the version
/// prefix of a prefixed one.
constexpr std::size_t IdentifierOffset(cmddata::Framing framing) {
    return framing == cmddata::Framing::kVersionedHeader ? 4 : 0;
}
/// The command that a message's identifier names when read where the framing puts it, if that
/// command frames the side so (on either side when side is null). Null when the bytes are too
/// short, the framing carries no identifier or the identifier names no such command.
const cmddata::CommandInfo* CommandNamed(const unsigned char* data, std::size_t size,
                                         cmddata::Framing framing, const cmddata::Side* side);

const char* SideName(cmddata::Side side);           // "snd" / "rcv"
const char* FramingName(cmddata::Framing framing);  // "header", "prefix+header", "none"
/// The catalogue's notation: 1, 2, V1, V2, V3, 1*, d.
const char* RuleName(cmddata::VersionRule rule);

}  // namespace cmdtool
