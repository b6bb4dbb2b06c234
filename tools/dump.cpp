// cmddata dump: a saved message or a live region, field by field.
#include "dump.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "cli.h"
#include "cmddata/core/shared_region.h"
#include "printers.h"
#include "registry.h"
#include "text.h"

namespace cmdtool {

namespace {

const char kHelp[] =
    "usage: cmddata dump FILE | --region NAME [--command NAME|ID] [--side snd|rcv]\n"
    "                    [--version N] [--json]\n"
    "\n"
    "Decodes one message field by field: byte offset, wire type, name and value (texts shown\n"
    "as text, buffers as hex), nested records and lists indented.\n"
    "\n"
    "  FILE            a file that holds the message's bytes (as 'demo --save' writes them)\n"
    "  --region NAME   read a live named shared region instead of a file\n"
    "  --command X     the command, by catalogue name or identifier; without it the identifier\n"
    "                  is read from the bytes: the leading u32 (plain header) or the u32 after\n"
    "                  the 4-byte version prefix (prefixed header); both are tried\n"
    "  --side S        snd (request) or rcv (answer); without it both are tried and the one that\n"
    "                  decodes the whole input wins\n"
    "  --version N     the version to build the class with (default: the constructor's);\n"
    "                  plain headers do not carry it, so it must match the sender's\n"
    "  --json          print the same as one JSON object\n"
    "\n"
    "Exit status: 0 decoded, 1 the bytes do not decode (offset, result code, the part\n"
    "decoded and a hex view of the rest are shown), 2 usage error.\n";

bool LoadFile(const std::string& path, std::vector<unsigned char>* bytes, std::string* error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        *error = "cannot open " + path;
        return false;
    }
    bytes->assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad()) {
        *error = "cannot read " + path;
        return false;
    }
    return true;
}

std::uint32_t U32At(const std::vector<unsigned char>& b, std::size_t at) {
    return static_cast<std::uint32_t>(b[at]) | static_cast<std::uint32_t>(b[at + 1]) << 8 |
           static_cast<std::uint32_t>(b[at + 2]) << 16 |
           static_cast<std::uint32_t>(b[at + 3]) << 24;
}

std::string Describe(const cmddata::CommandInfo& c) {
    return std::string(c.name) + " (" + std::to_string(c.id) + ")";
}

// Better first: a decode that takes exactly all bytes; then the one that makes sense of more
// bytes; at equal reach a failure beats a decode that leaves bytes over, since the failure says
// why those bytes are there.
bool Better(const Decoded& a, const Decoded& b, std::uint32_t size) {
    const bool exactA = a.Complete() && a.consumed == size;
    const bool exactB = b.Complete() && b.consumed == size;
    if (exactA != exactB) return exactA;
    if (a.extent != b.extent) return a.extent > b.extent;
    return !a.Complete() && b.Complete();
}

struct Choice {
    const cmddata::CommandInfo* command;
    cmddata::Framing framing;
};

}  // namespace

bool DecodeAs(const unsigned char* data, std::uint32_t size, const cmddata::CommandInfo& command,
              cmddata::Side side, std::uint16_t version, Decoded* out) {
    bool standIn = false;
    std::unique_ptr<CCmdCore> object = MakeMessage(command, side, version, &standIn);
    if (!object) return false;
    out->command = &command;
    out->side = side;
    out->version = version;
    out->standIn = standIn;
    const MessageClass& cls = ClassOf(command, side);
    out->className = standIn ? (command.FramingOf(side) == cmddata::Framing::kVersionedHeader
                                    ? "CCmdBaseInfo (stand-in)"
                                    : "CCmdHeaderOnly (stand-in)")
                             : cls.className;
    // The reader works on a private copy: decoding never touches the caller's bytes.
    std::vector<unsigned char> copy(data, data + size);
    CCmdReader reader;
    reader.AttachView(copy.data(), size);
    TreeBuilder tree(out->className);
    out->code = cmddata::DecodeAndDescribe(*object, reader, tree);
    out->consumed = reader.GetPosition();
    out->root = std::move(tree.Root());
    out->failure = tree.GetFailure();
    if (out->failure.failed && out->code == 0) out->code = out->failure.code;
    out->extent = out->Complete() ? out->consumed : tree.Extent();
    return true;
}

int RunDump(const std::vector<std::string>& args) {
    ParsedArgs parsed;
    std::string error;
    if (!ParseArgs(args,
                   {{"--region", true},
                    {"--command", true},
                    {"--side", true},
                    {"--version", true},
                    {"--json", false}},
                   &parsed, &error))
        return UsageError("dump", error);
    if (parsed.help) {
        std::fputs(kHelp, stdout);
        return kExitOk;
    }
    const bool json = parsed.Has("--json");
    if (parsed.Has("--region") == (parsed.positional.size() == 1) || parsed.positional.size() > 1)
        return UsageError("dump", "give exactly one FILE or --region NAME");

    // Options first, so that a mistyped one is a usage error whatever the input holds.
    const cmddata::CommandInfo* forced = nullptr;
    std::string notes;
    if (parsed.Has("--command")) {
        const std::string name = parsed.Get("--command");
        std::uint64_t id = 0;
        if (ParseNumber(name, 0xFFFFFFFFu, &id)) {
            forced = cmddata::FindCommand(static_cast<std::uint32_t>(id));
            if (forced != nullptr && id == 0)
                notes +=
                    "identifier 0 is shared by PcMonGetData, PcMonStart and PcMonStop; taking "
                    "PcMonGetData (name the command to choose another)\n";
        } else {
            forced = cmddata::FindCommand(name);
        }
        if (forced == nullptr)
            return UsageError("dump", "no command '" + name + "' in the catalogue");
    }
    std::vector<cmddata::Side> sides = {cmddata::Side::kSend, cmddata::Side::kReceive};
    if (parsed.Has("--side")) {
        const std::string s = parsed.Get("--side");
        if (s == "snd" || s == "send")
            sides = {cmddata::Side::kSend};
        else if (s == "rcv" || s == "receive")
            sides = {cmddata::Side::kReceive};
        else
            return UsageError("dump", "--side must be snd or rcv, not '" + s + "'");
    }
    bool versionGiven = false;
    std::uint64_t versionValue = 0;
    if (parsed.Has("--version")) {
        if (!ParseNumber(parsed.Get("--version"), 0xFFFF, &versionValue))
            return UsageError("dump", "--version needs a number from 0 to 65535");
        versionGiven = true;
    }

    // The input.
    std::vector<unsigned char> bytes;
    std::string source;
    if (parsed.Has("--region")) {
        source = "region " + parsed.Get("--region");
        cmddata::SharedRegion region = cmddata::SharedRegion::OpenNamed(parsed.Get("--region"));
        if (!region.IsValid()) {
            std::fprintf(stderr, "cmddata dump: cannot open the shared region '%s'\n",
                         parsed.Get("--region").c_str());
            return kExitFailed;
        }
        bytes.assign(region.data(), region.data() + region.size());
    } else {
        source = parsed.positional[0];
        if (!LoadFile(source, &bytes, &error)) {
            std::fprintf(stderr, "cmddata dump: %s\n", error.c_str());
            return kExitFailed;
        }
    }
    if (bytes.empty()) {
        std::fprintf(stderr, "cmddata dump: %s is empty: no message to decode\n", source.c_str());
        return kExitFailed;
    }
    if (bytes.size() > 0xFFFFFFFFu) {
        std::fprintf(stderr, "cmddata dump: %s is larger than any region\n", source.c_str());
        return kExitFailed;
    }
    const std::uint32_t size = static_cast<std::uint32_t>(bytes.size());

    // Which command: given, or read from the identifier where the framing puts one.
    std::vector<Choice> choices;
    if (forced != nullptr) {
        choices.push_back({forced, forced->FramingOf(sides.front())});
        notes += "command " + Describe(*forced) + " given on the command line\n";
    } else {
        std::ostringstream why;
        if (size >= 4) {
            const std::uint32_t id = U32At(bytes, 0);
            const cmddata::CommandInfo* c = cmddata::FindCommand(id);
            if (c != nullptr && (c->sendFraming == cmddata::Framing::kHeader ||
                                 c->receiveFraming == cmddata::Framing::kHeader)) {
                choices.push_back({c, cmddata::Framing::kHeader});
                why << "leading u32 = " << id << ": " << c->name << " with a plain header";
                if (id == 0)
                    why << " (of the three id-0 commands only PcMonGetData's request carries it)";
                why << "\n";
            } else {
                why << "leading u32 = " << id << ": "
                    << (c == nullptr ? "not a command identifier"
                                     : "that command has no plain header")
                    << "\n";
            }
        }
        if (size >= 8) {
            const std::uint32_t id = U32At(bytes, 4);
            const cmddata::CommandInfo* c = cmddata::FindCommand(id);
            if (c != nullptr && (c->sendFraming == cmddata::Framing::kVersionedHeader ||
                                 c->receiveFraming == cmddata::Framing::kVersionedHeader)) {
                choices.push_back({c, cmddata::Framing::kVersionedHeader});
                why << "u32 after the 4-byte prefix = " << id << ": " << c->name
                    << " with a prefixed header\n";
            } else {
                why << "u32 after the 4-byte prefix = " << id << ": "
                    << (c == nullptr ? "not a command identifier"
                                     : "that command has no prefixed header")
                    << "\n";
            }
        }
        notes += why.str();
        if (choices.empty()) {
            std::fprintf(stderr,
                         "cmddata dump: %s: no command identifier found (%u bytes)\n%s"
                         "Messages without a header on the wire need --command.\n",
                         source.c_str(), static_cast<unsigned>(size), notes.c_str());
            return kExitFailed;
        }
    }

    // Try every candidate command and side; keep the best decode.
    std::vector<Decoded> attempts;
    for (const Choice& choice : choices) {
        for (cmddata::Side side : sides) {
            if (forced == nullptr && choice.command->FramingOf(side) != choice.framing) continue;
            const std::uint16_t version = versionGiven
                                              ? static_cast<std::uint16_t>(versionValue)
                                              : cmddata::DefaultVersion(*choice.command, side);
            Decoded d;
            if (DecodeAs(bytes.data(), size, *choice.command, side, version, &d))
                attempts.push_back(std::move(d));
        }
    }
    if (attempts.empty()) {
        std::fprintf(stderr,
                     "cmddata dump: %s carries no header and its classes are not built into "
                     "this program: nothing to decode it with\n",
                     choices.front().command->name);
        return kExitFailed;
    }
    std::size_t best = 0;
    for (std::size_t i = 1; i < attempts.size(); ++i)
        if (Better(attempts[i], attempts[best], size)) best = i;
    if (attempts.size() > 1) {
        std::ostringstream why;
        for (const Decoded& d : attempts) {
            why << "tried " << d.command->name << " " << SideName(d.side) << ": ";
            if (!d.Complete())
                why << "fails at offset " << d.failure.offset << "\n";
            else if (d.consumed == size)
                why << "takes all " << size << " bytes\n";
            else
                why << "takes " << d.consumed << " of " << size << " bytes\n";
        }
        std::size_t complete = 0;
        bool tie = false;
        for (std::size_t i = 0; i < attempts.size(); ++i) {
            if (attempts[i].Complete()) ++complete;
            if (i != best && !Better(attempts[best], attempts[i], size)) tie = true;
        }
        const Decoded& chosen = attempts[best];
        if (complete == 0)
            why << "none decodes; showing the one that gets furthest, ";
        else if (tie || (complete > 1 && chosen.consumed != size))
            why << "ambiguous: more than one fits; showing ";
        else
            why << "chose ";
        why << chosen.command->name << " " << SideName(chosen.side);
        why << (tie || complete != 1 ? " (--command and --side choose another)\n" : "\n");
        notes += why.str();
    }
    Decoded& d = attempts[best];
    if (versionGiven && !d.standIn && !ClassOf(*d.command, d.side).takesVersion)
        notes += "note: " + d.className + " takes no version; --version has no effect\n";
    for (const FieldNode& field : d.root.children)
        if (field.name == "command_id" && field.value != d.command->id)
            notes += "warning: the identifier in the bytes (" + std::to_string(field.value) +
                     ") is not " + d.command->name + "'s (" + std::to_string(d.command->id) + ")\n";
    if (d.standIn)
        notes += "the classes of " + std::string(d.command->name) +
                 " are not built: only the header is decoded\n";

    const std::uint32_t end = d.Complete() ? d.consumed : d.failure.offset;
    const std::uint32_t left = size - (end <= size ? end : size);
    bool leftZero = true;
    for (std::uint32_t i = end; i < size; ++i)
        if (bytes[i] != 0) leftZero = false;

    if (json) {
        std::ostream& out = std::cout;
        out << "{\n  \"source\": " << JsonString(source) << ",\n  \"size\": " << size
            << ",\n  \"command\": " << JsonString(d.command->name)
            << ",\n  \"id\": " << d.command->id << ",\n  \"side\": " << JsonString(SideName(d.side))
            << ",\n  \"class\": " << JsonString(d.className)
            << ",\n  \"built\": " << (d.standIn ? "false" : "true")
            << ",\n  \"version\": " << d.version
            << ",\n  \"framing\": " << JsonString(FramingName(d.command->FramingOf(d.side)))
            << ",\n  \"notes\": " << JsonString(notes)
            << ",\n  \"complete\": " << (d.Complete() ? "true" : "false")
            << ",\n  \"decoded\": " << end << ",\n  \"result\": " << d.code
            << ",\n  \"result_hex\": " << JsonString(HexWord(d.code, 4))
            << ",\n  \"result_name\": " << JsonString(cmddata::ResultName(d.code));
        if (d.failure.failed)
            out << ",\n  \"failure\": {\"field\": " << JsonString(d.failure.field)
                << ", \"offset\": " << d.failure.offset
                << ", \"why\": " << JsonString(d.failure.why) << "}";
        out << ",\n  \"left_over\": " << left
            << ",\n  \"left_over_bytes\": " << JsonString(HexRun(bytes.data() + end, left))
            << ",\n  \"fields\": ";
        PrintJsonFields(out, d.root, 1);
        out << "\n}\n";
    } else {
        std::ostream& out = std::cout;
        out << source << ": " << size << " bytes\n" << notes;
        out << d.command->name << " " << (d.side == cmddata::Side::kSend ? "send" : "receive")
            << " message, " << d.className << ", version " << d.version << ", "
            << FramingName(d.command->FramingOf(d.side)) << " framing\n";
        PrintTree(out, d.root, "");
        if (d.Complete()) {
            out << "decoded " << end << " of " << size << " bytes\n";
            if (left != 0) {
                out << left << " bytes left over after the message"
                    << (leftZero ? " (all zero)\n" : ":\n");
                if (!leftZero) HexView(out, bytes.data() + end, left, end, 256, "  ");
            }
        } else {
            out << "decode failed at offset " << d.failure.offset << " (0x" << std::hex
                << d.failure.offset << std::dec << ")"
                << (d.failure.field.empty() ? "" : ", field '" + d.failure.field + "'") << ": "
                << d.failure.why << "; result " << HexWord(d.code, 4) << " "
                << cmddata::ResultName(d.code) << "\n";
            out << left << " bytes from that offset on:\n";
            HexView(out, bytes.data() + end, left, end, 256, "  ");
        }
    }
    return d.Complete() ? kExitOk : kExitFailed;
}

}  // namespace cmdtool
