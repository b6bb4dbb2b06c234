// cmddata dump: a saved message or a live region, field by field. The steps: read the options,
// load the input, find the candidate commands, decode every candidate and side, choose one, and
// report it as a text tree or JSON.
#include "dump.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <sstream>

#include "cmddata/core/json.h"
#include "cmddata/core/shared_region.h"
#include "os.h"
#include "printers.h"
#include "registry.h"
#include "text.h"
#include "tool.h"

namespace cmdtool {

namespace {

using cmddata::Framing;
using cmddata::Side;

// What the options ask for, checked before any input is read so that a mistyped option is a
// usage error whatever the input holds.
struct Request {
    const cmddata::CommandInfo* forced = nullptr;  // --command
    std::vector<Side> sides = {Side::kSend, Side::kReceive};
    std::string notes;
};

struct Input {
    std::string source;  // "region NAME" or the file's path
    bool live = false;   // a region: larger than the message it holds
    std::vector<unsigned char> bytes;
    std::uint32_t size() const { return static_cast<std::uint32_t>(bytes.size()); }
};

// A command to try, with the framing its identifier was found in (kNone: given by --command).
struct Candidate {
    const cmddata::CommandInfo* command;
    Framing framing;
};

// The decode chosen and whether it stands: a file must be taken whole by one side, a region
// only needs a complete message at its start.
struct Choice {
    std::size_t best = 0;
    bool accepted = false;
};

int ReadOptions(const DumpOptions& options, Request* request) {
    if (options.file.empty() == options.region.empty())
        return UsageError("dump", "give exactly one FILE or --region NAME");
    if (!options.command.empty()) {
        std::uint64_t id = 0;
        if (ParseNumber(options.command, 0xFFFFFFFFu, &id)) {
            request->forced = cmddata::FindCommand(static_cast<std::uint32_t>(id));
            if (request->forced != nullptr && id == 0)
                request->notes +=
                    "identifier 0 is shared by PcMonGetData, PcMonStart and PcMonStop; taking "
                    "PcMonGetData (name the command to choose another)\n";
        } else {
            request->forced = cmddata::FindCommand(options.command);
        }
        if (request->forced == nullptr)
            return UsageError("dump", "no command '" + options.command + "' in the catalogue");
    }
    if (options.side == "snd") request->sides = {Side::kSend};
    if (options.side == "rcv") request->sides = {Side::kReceive};
    return kExitOk;
}

bool LoadInput(const DumpOptions& options, Input* input) {
    if (!options.region.empty()) {
        input->source = "region " + options.region;
        input->live = true;
        cmddata::SharedRegion region = cmddata::SharedRegion::OpenNamed(options.region);
        if (!region.IsValid()) {
            std::fprintf(stderr,
                         "cmddata dump: cannot open the shared region '%s' (no such region, or "
                         "it is empty)\n",
                         options.region.c_str());
            return false;
        }
        if (region.size() > kLargestInput) {
            std::fprintf(stderr,
                         "cmddata dump: the region '%s' holds %llu bytes, more than the %u "
                         "that dump reads\n",
                         options.region.c_str(), static_cast<unsigned long long>(region.size()),
                         static_cast<unsigned>(kLargestInput));
            return false;
        }
        input->bytes.assign(region.data(), region.data() + region.size());
        return true;
    }
    input->source = options.file;
    bool more = false;
    std::string error;
    if (!os::ReadFileBytes(options.file, kLargestInput, &input->bytes, &more, &error)) {
        std::fprintf(stderr, "cmddata dump: %s\n", error.c_str());
        return false;
    }
    if (more) {
        std::fprintf(stderr,
                     "cmddata dump: %s holds more than %u bytes, more than the largest region "
                     "dump reads; stopped there\n",
                     options.file.c_str(), static_cast<unsigned>(kLargestInput));
        return false;
    }
    return true;
}

// The commands to try: the one given, or those the identifier names where a plain and a
// prefixed header put it. Empty (with the reasons printed) when neither reading names one.
std::vector<Candidate> FindCandidates(const Input& input, Request* request) {
    if (request->forced != nullptr) {
        request->notes += "command " + std::string(request->forced->name) + " (" +
                          std::to_string(request->forced->id) + ") given on the command line\n";
        return {{request->forced, Framing::kNone}};
    }
    std::vector<Candidate> found;
    std::ostringstream why;
    for (Framing framing : {Framing::kHeader, Framing::kVersionedHeader}) {
        const std::size_t at = IdentifierOffset(framing);
        if (input.size() < at + 4) continue;
        const std::uint32_t id = U32At(input.bytes.data(), at);
        const char* where = at == 0 ? "leading u32" : "u32 after the 4-byte prefix";
        const char* kind = at == 0 ? "plain" : "prefixed";
        const cmddata::CommandInfo* c =
            CommandNamed(input.bytes.data(), input.size(), framing, nullptr);
        if (c != nullptr) {
            found.push_back({c, framing});
            why << where << " = " << id << ": " << c->name << " with a " << kind << " header";
            if (id == 0 && at == 0)
                why << " (of the three id-0 commands only PcMonGetData's request carries it)";
            why << "\n";
        } else {
            why << where << " = " << id << ": "
                << (cmddata::FindCommand(id) == nullptr
                        ? "not a command identifier"
                        : std::string("that command has no ") + kind + " header")
                << "\n";
        }
    }
    request->notes += why.str();
    if (found.empty())
        std::fprintf(stderr,
                     "cmddata dump: %s: no command identifier found (%u bytes)\n%s"
                     "Messages without a header on the wire need --command.\n",
                     input.source.c_str(), static_cast<unsigned>(input.size()),
                     request->notes.c_str());
    return found;
}

std::vector<Decoded> DecodeCandidates(const Input& input, const std::vector<Candidate>& candidates,
                                      const Request& request, const DumpOptions& options) {
    std::vector<Decoded> attempts;
    for (const Candidate& candidate : candidates) {
        for (Side side : request.sides) {
            if (candidate.framing != Framing::kNone &&
                candidate.command->FramingOf(side) != candidate.framing)
                continue;
            const std::uint16_t version = options.versionGiven
                                              ? options.version
                                              : cmddata::DefaultVersion(*candidate.command, side);
            Decoded d;
            if (DecodeAs(input.bytes.data(), input.size(), *candidate.command, side, version, &d))
                attempts.push_back(std::move(d));
        }
    }
    return attempts;
}

bool TakesAll(const Decoded& d, std::uint32_t size) { return d.Complete() && d.consumed == size; }

// Better first: a decode that takes exactly all bytes; then the one that makes sense of more
// bytes; at equal reach a failure beats a decode that leaves bytes over, since the failure says
// why those bytes are there. Of two that take all bytes, the one whose object writes them again
// as they are wins: the other lost something, a sender's version above its own say.
bool Better(const Decoded& a, const Decoded& b, std::uint32_t size) {
    if (TakesAll(a, size) != TakesAll(b, size)) return TakesAll(a, size);
    if (TakesAll(a, size) && a.exact != b.exact) return a.exact;
    if (a.extent != b.extent) return a.extent > b.extent;
    return !a.Complete() && b.Complete();
}

Choice Choose(const Input& input, const std::vector<Decoded>& attempts, std::string* notes) {
    const std::uint32_t size = input.size();
    Choice choice;
    for (std::size_t i = 1; i < attempts.size(); ++i)
        if (Better(attempts[i], attempts[choice.best], size)) choice.best = i;
    const Decoded& chosen = attempts[choice.best];
    choice.accepted = input.live ? chosen.Complete() : TakesAll(chosen, size);

    std::ostringstream why;
    std::size_t whole = 0;
    bool tie = false;
    for (std::size_t i = 0; i < attempts.size(); ++i) {
        const Decoded& d = attempts[i];
        if (TakesAll(d, size)) ++whole;
        if (i != choice.best && !Better(chosen, d, size)) tie = true;
        if (attempts.size() == 1) break;
        why << "tried " << d.command->name << " " << SideName(d.side) << ": ";
        if (!d.Complete())
            why << "fails at offset " << d.failure.offset << "\n";
        else if (d.consumed == size)
            why << "takes all " << size << " bytes\n";
        else
            why << "takes " << d.consumed << " of " << size << " bytes\n";
    }
    const std::string name = std::string(chosen.command->name) + " " + SideName(chosen.side);
    if (!input.live && whole == 0)
        why << "no side decodes the whole file (" << size << " bytes); showing " << name
            << ", which gets furthest\n";
    else if (!chosen.Complete())
        why << "none decodes; showing " << name << ", which gets furthest\n";
    else if (tie || whole > 1)
        why << "ambiguous: more than one fits; showing " << name
            << " (--command and --side choose another)\n";
    else if (attempts.size() > 1)
        why << "chose " << name << "\n";
    *notes += why.str();
    return choice;
}

// Notes on the decode chosen: what the user should know beside the fields.
void AddNotes(const Decoded& d, const DumpOptions& options, std::string* notes) {
    if (options.versionGiven && !d.standIn && !ClassOf(*d.command, d.side).takesVersion)
        *notes += "note: " + d.className + " takes no version; --version has no effect\n";
    for (const FieldNode& field : d.root.children)
        if (field.type == cmddata::WireType::kIdent && field.value != d.command->id)
            *notes += "warning: the identifier in the bytes (" + std::to_string(field.value) +
                      ") is not " + d.command->name + "'s (" + std::to_string(d.command->id) +
                      ")\n";
    if (!d.command->payloadKnown)
        *notes += "payload undefined: the classes of " + std::string(d.command->name) +
                  " carry the header alone\n";
    if (d.standIn)
        *notes += "the classes of " + std::string(d.command->name) +
                  " are not built: only the header is decoded\n";
}

// Where the decode stopped, and the bytes from there on.
struct Rest {
    std::uint32_t end;
    std::uint32_t left;
    bool zero;
};

Rest RestOf(const Decoded& d, const Input& input) {
    Rest r;
    r.end = d.Complete() ? d.consumed : d.failure.offset;
    if (r.end > input.size()) r.end = input.size();
    r.left = input.size() - r.end;
    r.zero = true;
    for (std::uint32_t i = r.end; i < input.size(); ++i)
        if (input.bytes[i] != 0) r.zero = false;
    return r;
}

void PrintJson(const Decoded& d, const Input& input, const Choice& choice,
               const std::string& notes) {
    const Rest rest = RestOf(d, input);
    nlohmann::ordered_json j;
    j["source"] = input.source;
    j["size"] = input.size();
    j["command"] = d.command->name;
    j["id"] = d.command->id;
    j["side"] = SideName(d.side);
    j["class"] = d.className;
    j["built"] = !d.standIn;
    j["payload_known"] = d.command->payloadKnown;
    j["version"] = d.version;
    j["framing"] = FramingName(d.command->FramingOf(d.side));
    j["notes"] = notes;
    j["complete"] = d.Complete();
    j["accepted"] = choice.accepted;
    j["decoded"] = rest.end;
    j["result"] = d.code;
    j["result_hex"] = HexWord(d.code, 4);
    j["result_name"] = cmddata::ResultName(d.code);
    if (d.failure.failed)
        j["failure"] = {
            {"field", d.failure.field}, {"offset", d.failure.offset}, {"why", d.failure.why}};
    j["left_over"] = rest.left;
    j["left_over_bytes"] = HexRun(input.bytes.data() + rest.end, rest.left);
    j["fields"] = JsonFields(d.root);
    // The object's own JSON, which 'cmddata encode' takes back.
    if (!d.message.empty()) j["message"] = nlohmann::ordered_json::parse(d.message, nullptr, false);
    std::cout << j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

void PrintText(const Decoded& d, const Input& input, const std::string& notes) {
    const Rest rest = RestOf(d, input);
    std::ostream& out = std::cout;
    out << input.source << ": " << input.size() << " bytes\n" << notes;
    out << d.command->name << " " << (d.side == Side::kSend ? "send" : "receive") << " message, "
        << d.className << ", version " << d.version << ", "
        << FramingName(d.command->FramingOf(d.side)) << " framing\n";
    PrintTree(out, d.root, "");
    if (d.Complete()) {
        out << "decoded " << rest.end << " of " << input.size() << " bytes\n";
        if (rest.left != 0) {
            out << rest.left << " bytes left over after the message"
                << (rest.zero ? " (all zero)\n" : ":\n");
            if (!rest.zero)
                HexView(out, input.bytes.data() + rest.end, rest.left, rest.end, 256, "  ");
        }
    } else {
        out << "decode failed at offset " << d.failure.offset << " (0x" << std::hex
            << d.failure.offset << std::dec << ")"
            << (d.failure.field.empty() ? "" : ", field '" + d.failure.field + "'") << ": "
            << d.failure.why << "; result " << HexWord(d.code, 4) << " "
            << cmddata::ResultName(d.code) << "\n";
        out << rest.left << " bytes from that offset on:\n";
        HexView(out, input.bytes.data() + rest.end, rest.left, rest.end, 256, "  ");
    }
}

}  // namespace

bool DecodeAs(const unsigned char* data, std::uint32_t size, const cmddata::CommandInfo& command,
              Side side, std::uint16_t version, Decoded* out) {
    bool standIn = false;
    std::unique_ptr<CCmdCore> object = MakeMessage(command, side, version, &standIn);
    if (!object) return false;
    out->command = &command;
    out->side = side;
    out->version = version;
    out->standIn = standIn;
    const MessageClass& cls = ClassOf(command, side);
    out->className = standIn ? (command.FramingOf(side) == Framing::kVersionedHeader
                                    ? "CCmdBaseInfo (stand-in)"
                                    : "CCmdHeaderOnly (stand-in)")
                             : cls.className;
    // The reader works on a private copy: decoding never touches the caller's bytes.
    // One byte at least: an empty message is read from an attached stream of size 0.
    std::vector<unsigned char> copy(data, data + size);
    copy.resize(size == 0 ? 1 : size);
    CCmdReader reader;
    reader.AttachView(copy.data(), size);
    TreeBuilder tree(out->className);
    out->code = cmddata::DecodeAndDescribe(*object, reader, tree);
    out->consumed = reader.GetPosition();
    out->root = std::move(tree.Root());
    out->failure = tree.GetFailure();
    if (out->failure.failed && out->code == 0) out->code = out->failure.code;
    out->extent = out->Complete() ? out->consumed : tree.Extent();
    // The message's JSON is the sender's object, taken in write order: encoding it gives these
    // very bytes also where the class reads some fields in another order than it writes them.
    if (out->Complete() && !standIn) {
        std::unique_ptr<CCmdCore> sent = MakeMessage(command, side, version, &standIn);
        CCmdReader again;
        again.AttachView(copy.data(), size);
        if (sent != nullptr && cmddata::ReadAsWritten(*sent, again) == cmddata::result::kOk) {
            cmddata::ToJson(*sent, &out->message);
            std::vector<unsigned char> written(cmddata::WireSize(*sent) + 1);
            CCmdWriter writer;
            writer.AttachView(written.data(), static_cast<std::uint32_t>(written.size()));
            writer.Write(sent.get());
            out->exact =
                writer.GetPosition() == size && std::equal(data, data + size, written.begin());
        }
    }
    return true;
}

int RunDump(const DumpOptions& options) {
    Request request;
    if (const int usage = ReadOptions(options, &request); usage != kExitOk) return usage;
    Input input;
    if (!LoadInput(options, &input)) return kExitFailed;
    // Without the command and side nothing can be said of no bytes; with them, an empty input is
    // the complete message of a class whose wire form is empty.
    if (input.bytes.empty() && (request.forced == nullptr || request.sides.size() != 1)) {
        std::fprintf(stderr,
                     "cmddata dump: %s is empty: no message to decode (an empty message needs "
                     "--command and --side)\n",
                     input.source.c_str());
        return kExitFailed;
    }
    const std::vector<Candidate> candidates = FindCandidates(input, &request);
    if (candidates.empty()) return kExitFailed;
    const std::vector<Decoded> attempts = DecodeCandidates(input, candidates, request, options);
    if (attempts.empty()) {
        std::fprintf(stderr,
                     "cmddata dump: %s carries no header and its classes are not built into "
                     "this program: nothing to decode it with\n",
                     candidates.front().command->name);
        return kExitFailed;
    }
    std::string notes = request.notes;
    const Choice choice = Choose(input, attempts, &notes);
    const Decoded& chosen = attempts[choice.best];
    AddNotes(chosen, options, &notes);
    if (options.json)
        PrintJson(chosen, input, choice, notes);
    else
        PrintText(chosen, input, notes);
    return choice.accepted ? kExitOk : kExitFailed;
}

}  // namespace cmdtool
