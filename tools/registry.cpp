// The registry: one entry per command and side, generated from the catalogue. A class counts as
// built when its definition is visible here (through the umbrella header); the entries of classes
// that are not yet written stay without a factory, so new families need no edit here.
#include "registry.h"

#include <new>
#include <type_traits>

#include "cmddata/cmddata.h"

// Declares every message class name the catalogue implies; those that a family header defined
// above stay complete, the others stay incomplete.
#define CMDDATA_COMMAND(id, name, s, r, fs, fr, base, known) \
    class C##name##Snd;                                      \
    class C##name##Rcv;
#include "cmddata/command/commands.def"
#undef CMDDATA_COMMAND

namespace cmdtool {

namespace {

template <class T, class = void>
struct IsComplete : std::false_type {};
template <class T>
struct IsComplete<T, std::void_t<decltype(sizeof(T))>> : std::true_type {};

template <class T>
std::unique_ptr<CCmdCore> Make(std::uint16_t version) {
    if constexpr (std::is_constructible_v<T, std::uint16_t>) {
        return std::unique_ptr<CCmdCore>(new (std::nothrow) T(version));
    } else {
        (void)version;
        return std::unique_ptr<CCmdCore>(new (std::nothrow) T());
    }
}

template <class T>
constexpr Factory FactoryOf() {
    if constexpr (IsComplete<T>::value)
        return &Make<T>;
    else
        return nullptr;
}

template <class T>
constexpr bool TakesVersion() {
    if constexpr (IsComplete<T>::value)
        return std::is_constructible_v<T, std::uint16_t>;
    else
        return false;
}

using cmddata::kCommands;
using cmddata::Side;

// Same order as kCommands: entry 2i is the send side of command i, 2i + 1 its receive side.
#define CMDDATA_COMMAND(id, name, s, r, fs, fr, base, known)                        \
    {"C" #name "Snd", FactoryOf<::C##name##Snd>(), TakesVersion<::C##name##Snd>()}, \
        {"C" #name "Rcv", FactoryOf<::C##name##Rcv>(), TakesVersion<::C##name##Rcv>()},
const MessageClass kClasses[] = {
#include "cmddata/command/commands.def"
};
#undef CMDDATA_COMMAND
static_assert(sizeof(kClasses) / sizeof(kClasses[0]) == 2 * cmddata::kCommandCount,
              "the registry must hold both sides of every catalogue command");

}  // namespace

const MessageClass& ClassOf(const cmddata::CommandInfo& command, Side side) {
    const std::size_t index = static_cast<std::size_t>(&command - kCommands);
    return kClasses[2 * index + (side == Side::kSend ? 0 : 1)];
}

std::size_t BuiltCommandCount() {
    std::size_t n = 0;
    for (const cmddata::CommandInfo& c : kCommands)
        if (IsBuilt(c, Side::kSend) && IsBuilt(c, Side::kReceive)) ++n;
    return n;
}

std::unique_ptr<CCmdCore> MakeMessage(const cmddata::CommandInfo& command, Side side,
                                      std::uint16_t version, bool* standIn) {
    const MessageClass& entry = ClassOf(command, side);
    *standIn = entry.make == nullptr;
    if (entry.make != nullptr) return entry.make(version);
    switch (command.FramingOf(side)) {
        case cmddata::Framing::kHeader:
            return std::unique_ptr<CCmdCore>(new (std::nothrow)
                                                 CCmdHeaderOnly(command.id, version));
        case cmddata::Framing::kVersionedHeader:
            return std::unique_ptr<CCmdCore>(new (std::nothrow)
                                                 CCmdBaseInfo(command.id, version, 0));
        case cmddata::Framing::kNone:
            break;
    }
    return nullptr;
}

const cmddata::CommandInfo* CommandFromBytes(const unsigned char* data, std::size_t size,
                                             Side side) {
    auto u32 = [data](std::size_t at) {
        return static_cast<std::uint32_t>(data[at]) |
               static_cast<std::uint32_t>(data[at + 1]) << 8 |
               static_cast<std::uint32_t>(data[at + 2]) << 16 |
               static_cast<std::uint32_t>(data[at + 3]) << 24;
    };
    if (size >= 4) {
        const cmddata::CommandInfo* c = cmddata::FindCommand(u32(0));
        if (c != nullptr && c->FramingOf(side) == cmddata::Framing::kHeader) return c;
    }
    if (size >= 8) {
        const cmddata::CommandInfo* c = cmddata::FindCommand(u32(4));
        if (c != nullptr && c->FramingOf(side) == cmddata::Framing::kVersionedHeader) return c;
    }
    return nullptr;
}

const char* SideName(Side side) { return side == Side::kSend ? "snd" : "rcv"; }

const char* FramingName(cmddata::Framing framing) {
    switch (framing) {
        case cmddata::Framing::kHeader:
            return "header";
        case cmddata::Framing::kVersionedHeader:
            return "prefix+header";
        case cmddata::Framing::kNone:
            return "none";
    }
    return "?";
}

const char* RuleName(cmddata::VersionRule rule) {
    using cmddata::VersionRule;
    switch (rule) {
        case VersionRule::kFixed1:
            return "1";
        case VersionRule::kFixed2:
            return "2";
        case VersionRule::kArg1:
            return "V1";
        case VersionRule::kArg2:
            return "V2";
        case VersionRule::kArg3:
            return "V3";
        case VersionRule::kIgnored1:
            return "1*";
        case VersionRule::kDerived:
            return "d";
    }
    return "?";
}

}  // namespace cmdtool
