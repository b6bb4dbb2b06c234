// The command catalogue as data: identifiers by name, and a table for lookups both ways.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "cmddata/platform/export.h"

namespace cmddata {

/// How a side's constructor fixes the header version.
enum class VersionRule : std::uint8_t {
    kFixed1,    // version 1, no argument
    kFixed2,    // version 2, no argument
    kArg1,      // argument, default 1
    kArg2,      // argument, default 2
    kArg3,      // argument, default 3
    kIgnored1,  // argument taken and ignored: always 1
    kDerived,   // as the layout command's class on the same side
};

/// How a message puts its header on the wire.
enum class Framing : std::uint8_t {
    kHeader,           // 20-byte header, then the fields
    kVersionedHeader,  // version prefix, header, fields
    kNone,             // no header: the fields (and at most status words 3/4) alone
};

enum class Side : std::uint8_t { kSend, kReceive };

/// One command of the catalogue.
struct CommandInfo {
    std::uint32_t id;
    const char* name;
    VersionRule sendVersion;
    VersionRule receiveVersion;
    Framing sendFraming;
    Framing receiveFraming;
    std::uint32_t layoutOf;  // the command whose classes carry the layout (itself unless derived)
    bool payloadKnown;       // false: the classes carry the header alone; the payload is unknown

    constexpr VersionRule Rule(Side side) const {
        return side == Side::kSend ? sendVersion : receiveVersion;
    }
    constexpr Framing FramingOf(Side side) const {
        return side == Side::kSend ? sendFraming : receiveFraming;
    }
    constexpr bool IsDerived() const { return layoutOf != id; }
};

/// Command identifiers by command name (the three PC monitor commands share 0).
namespace cmd {
enum : std::uint32_t {
#define CMDDATA_COMMAND(id, name, s, r, fs, fr, base, known) name = id,
#include "cmddata/command/commands.def"
#undef CMDDATA_COMMAND
};
}  // namespace cmd

/// Positions in kCommands by command name: the key a message class names its command by (the
/// identifier alone is not one: the three PC monitor commands share 0).
namespace command {
enum : std::size_t {
#define CMDDATA_COMMAND(id, name, s, r, fs, fr, base, known) name,
#include "cmddata/command/commands.def"
#undef CMDDATA_COMMAND
};
}  // namespace command

inline constexpr CommandInfo kCommands[] = {
#define CMDDATA_COMMAND(id, name, s, r, fs, fr, base, known) \
    {id, #name, VersionRule::s, VersionRule::r, Framing::fs, Framing::fr, base, known},
#include "cmddata/command/commands.def"
#undef CMDDATA_COMMAND
};
inline constexpr std::size_t kCommandCount = sizeof(kCommands) / sizeof(kCommands[0]);

/// The first command with this identifier (PcMonGetData for 0), or null.
constexpr const CommandInfo* FindCommand(std::uint32_t id) {
    for (const CommandInfo& c : kCommands)
        if (c.id == id) return &c;
    return nullptr;
}
/// The command of this exact name, or null.
constexpr const CommandInfo* FindCommand(std::string_view name) {
    for (const CommandInfo& c : kCommands)
        if (name == c.name) return &c;
    return nullptr;
}

/// The version a rule gives a constructor called without an argument (kDerived: see below).
constexpr std::uint16_t DefaultVersion(VersionRule rule) {
    switch (rule) {
        case VersionRule::kFixed2:
        case VersionRule::kArg2:
            return 2;
        case VersionRule::kArg3:
            return 3;
        default:
            return 1;
    }
}

/// The version a side's constructor uses when given no argument; a derived command takes its
/// base command's.
constexpr std::uint16_t DefaultVersion(const CommandInfo& c, Side side) {
    if (c.Rule(side) != VersionRule::kDerived) return DefaultVersion(c.Rule(side));
    const CommandInfo* base = FindCommand(c.layoutOf);
    return base == nullptr || base == &c ? 1 : DefaultVersion(*base, side);
}

}  // namespace cmddata
