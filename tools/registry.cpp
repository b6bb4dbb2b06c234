// The registry: one entry per command and side, from the catalogue and the library's class table
// (itself expanded from the family class lists), so new families need no edit here.
#include "registry.h"

#include <new>
#include <type_traits>

#include "cmddata/cmddata.h"

namespace cmdtool {

namespace {
using cmddata::kCommands;
using cmddata::Side;

// Same order as kCommands: entry 2i is the send side of command i, 2i + 1 its receive side.
struct Registry {
    MessageClass entries[2 * cmddata::kCommandCount];
    Registry() {
        for (std::size_t i = 0; i < cmddata::kCommandCount; ++i) {
            int n = 0;
            for (Side side : {Side::kSend, Side::kReceive}) {
                const cmddata::ClassInfo* c = cmddata::FindMessageClass(kCommands[i], side);
                MessageClass& e = entries[2 * i + n++];
                e.className = c != nullptr ? c->name : nullptr;
                e.info = c;
                e.takesVersion = c != nullptr && c->takesVersion;
            }
        }
    }
};
const Registry& TheRegistry() {
    static const Registry registry;
    return registry;
}
}  // namespace

const MessageClass& ClassOf(const cmddata::CommandInfo& command, Side side) {
    const std::size_t index = static_cast<std::size_t>(&command - kCommands);
    return TheRegistry().entries[2 * index + (side == Side::kSend ? 0 : 1)];
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
    *standIn = entry.info == nullptr;
    if (entry.info != nullptr) return std::unique_ptr<CCmdCore>(entry.info->make(version));
    switch (command.FramingOf(side)) {
        case cmddata::Framing::kHeader:
            return std::unique_ptr<CCmdCore>(new (std::nothrow)
                                                 CCmdHeaderOnly(command.id, version, 0));
        case cmddata::Framing::kVersionedHeader:
            return std::unique_ptr<CCmdCore>(new (std::nothrow)
                                                 CCmdBaseInfo(command.id, version, 0));
        case cmddata::Framing::kNone:
            break;
    }
    return nullptr;
}

std::uint32_t U32At(const unsigned char* data, std::size_t at) {
    return static_cast<std::uint32_t>(data[at]) | static_cast<std::uint32_t>(data[at + 1]) << 8 |
           static_cast<std::uint32_t>(data[at + 2]) << 16 |
           static_cast<std::uint32_t>(data[at + 3]) << 24;
}

const cmddata::CommandInfo* CommandNamed(const unsigned char* data, std::size_t size,
                                         cmddata::Framing framing, const Side* side) {
    const std::size_t at = IdentifierOffset(framing);
    if (framing == cmddata::Framing::kNone || size < at + 4) return nullptr;
    const cmddata::CommandInfo* c = cmddata::FindCommand(U32At(data, at));
    if (c == nullptr) return nullptr;
    const bool fits = side != nullptr ? c->FramingOf(*side) == framing
                                      : c->sendFraming == framing || c->receiveFraming == framing;
    return fits ? c : nullptr;
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
