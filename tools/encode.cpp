// cmddata encode: JSON to a message's bytes, the other way of dump --json. The class comes from
// the options, else from the document dump prints (its command, side and version); the fields
// are taken by the library's JSON reader, which names the JSON path of anything it refuses.
#include <cstdio>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cmddata/core/describe.h"
#include "cmddata/core/json.h"
#include "cmddata/core/shared_region.h"
#include "os.h"
#include "registry.h"
#include "tool.h"

namespace cmdtool {

namespace {

using cmddata::Side;

int Failed(const std::string& message) {
    std::fprintf(stderr, "cmddata encode: %s\n", message.c_str());
    return kExitFailed;
}

// The text of FILE, or of standard input for "-", at most one byte more than the JSON reader
// takes.
bool LoadText(const std::string& file, std::string* text, std::string* error) {
    const std::size_t most = cmddata::kJsonMaxText + 1;
    if (file == "-") {
        char chunk[65536];
        std::size_t n = 0;
        while ((n = std::fread(chunk, 1, sizeof chunk, stdin)) != 0 && text->size() < most)
            text->append(chunk, n);
        if (std::ferror(stdin)) {
            *error = "cannot read standard input";
            return false;
        }
    } else {
        std::vector<unsigned char> bytes;
        bool more = false;
        if (!os::ReadFileBytes(file, most, &bytes, &more, error)) return false;
        text->assign(bytes.begin(), bytes.end());
    }
    if (text->size() >= most) {
        *error = (file == "-" ? std::string("standard input") : file) + " holds more than the " +
                 std::to_string(cmddata::kJsonMaxText) + " bytes a JSON message may take";
        return false;
    }
    return true;
}

// Nesting deeper than the library's JSON reader takes is refused before the document is parsed
// here, so that no parser of the tool ever recurses through a hostile depth.
bool TooDeep(const std::string& text) {
    std::uint32_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > cmddata::kJsonMaxDepth + 1) return true;
        } else if ((c == '}' || c == ']') && depth > 0) {
            --depth;
        }
    }
    return false;
}

struct Target {
    const cmddata::CommandInfo* command = nullptr;
    Side side = Side::kSend;
    bool sideKnown = false;
    std::uint16_t version = 0;
    bool versionKnown = false;
};

// Command, side and version: the options first, then what the document says. Without a
// document only the options are checked.
int ChooseTarget(const EncodeOptions& options, const nlohmann::json* document, Target* t) {
    if (!options.command.empty() && t->command == nullptr) {
        std::uint64_t id = 0;
        t->command = ParseNumber(options.command, 0xFFFFFFFFu, &id)
                         ? cmddata::FindCommand(static_cast<std::uint32_t>(id))
                         : cmddata::FindCommand(options.command);
        if (t->command == nullptr)
            return UsageError("encode", "no command '" + options.command + "' in the catalogue");
    }
    if (!options.side.empty()) {
        t->side = options.side == "rcv" ? Side::kReceive : Side::kSend;
        t->sideKnown = true;
    }
    if (options.versionGiven) {
        t->version = options.version;
        t->versionKnown = true;
    }
    if (document == nullptr) return kExitOk;
    const nlohmann::json& doc = *document;
    const auto field = [&doc](const char* key) -> const nlohmann::json* {
        const auto it = doc.find(key);
        return it != doc.end() ? &*it : nullptr;
    };
    if (t->command == nullptr) {
        const nlohmann::json* name = field("command");
        const nlohmann::json* id = field("command_id");
        if (name != nullptr && name->is_string())
            t->command = cmddata::FindCommand(name->get<std::string>());
        else if (id != nullptr && id->is_number_unsigned() &&
                 id->get<std::uint64_t>() <= 0xFFFFFFFFu)
            t->command = cmddata::FindCommand(id->get<std::uint32_t>());
        if (t->command == nullptr)
            return Failed("the document names no command of the catalogue: give --command");
    }
    if (!t->sideKnown) {
        const nlohmann::json* side = field("side");
        if (side == nullptr || !side->is_string() || (*side != "snd" && *side != "rcv"))
            return Failed(
                "the document does not say the side (\"side\": \"snd\" or \"rcv\"): "
                "give --side");
        t->side = *side == "rcv" ? Side::kReceive : Side::kSend;
    }
    if (!t->versionKnown) {
        const nlohmann::json* version = field("version");
        t->version = cmddata::DefaultVersion(*t->command, t->side);
        // A message's own "version" field is its prefix's, inside "message"; at the top of a
        // dump document it is the version the class was built with.
        if (version != nullptr && field("message") != nullptr) {
            if (!version->is_number_unsigned() || version->get<std::uint64_t>() > 0xFFFF)
                return Failed("version: not a version from 0 to 65535");
            t->version = version->get<std::uint16_t>();
        }
    }
    return kExitOk;
}

bool Store(const EncodeOptions& options, const std::vector<unsigned char>& bytes,
           std::string* error) {
    if (!options.output.empty()) {
        std::ofstream out(options.output, std::ios::binary | std::ios::trunc);
        if (out)
            out.write(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<std::streamsize>(bytes.size()));
        if (out) out.close();
        if (!out) *error = "cannot write " + options.output;
        return static_cast<bool>(out);
    }
    cmddata::SharedRegion region = cmddata::SharedRegion::OpenNamed(options.region);
    if (!region.IsValid()) {
        *error = "cannot open the shared region '" + options.region +
                 "' (no such region, or it is empty)";
        return false;
    }
    if (region.size() < bytes.size()) {
        *error = "the message takes " + std::to_string(bytes.size()) + " bytes; the region '" +
                 options.region + "' holds " + std::to_string(region.size());
        return false;
    }
    CCmdWriter writer(region.handle(), region.size());
    if (!bytes.empty() && writer.Write(bytes.data(), static_cast<std::int32_t>(bytes.size())) !=
                              cmddata::result::kOk) {
        *error =
            std::string("writing the region failed: ") + cmddata::ResultName(writer.GetLastError());
        return false;
    }
    return true;
}

}  // namespace

int RunEncode(const EncodeOptions& options) {
    if (options.output.empty() == options.region.empty())
        return UsageError("encode", "give exactly one of -o OUT and --region NAME");
    Target target;
    if (const int status = ChooseTarget(options, nullptr, &target); status != kExitOk)
        return status;
    std::string text, error;
    if (!LoadText(options.file, &text, &error)) return Failed(error);
    const std::string source = options.file == "-" ? "standard input" : options.file;
    if (TooDeep(text)) return Failed(source + ": nested deeper than a message's JSON can be");
    nlohmann::json doc;
    try {
        doc = nlohmann::json::parse(text);
    } catch (const nlohmann::json::exception& e) {
        return Failed(source + ": " + e.what());
    }
    if (!doc.is_object()) return Failed(source + ": the JSON value is not an object");

    if (const int status = ChooseTarget(options, &doc, &target); status != kExitOk) return status;
    const MessageClass& cls = ClassOf(*target.command, target.side);
    if (cls.info == nullptr)
        return Failed(std::string("the ") + SideName(target.side) + " class of " +
                      target.command->name + " is not built into this program");
    const auto message = doc.find("message");
    const std::string fields = message != doc.end() ? message->dump() : text;
    std::unique_ptr<CCmdCore> object(
        cmddata::MakeFromJson(*cls.info, target.version, fields, &error));
    if (object == nullptr) return Failed(source + ": " + error);

    std::vector<unsigned char> bytes(cmddata::WireSize(*object));
    if (!bytes.empty()) {
        CCmdWriter writer;
        writer.AttachView(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        writer.Write(object.get());
        if (writer.GetLastError() != cmddata::result::kOk)
            return Failed(std::string("the message could not be written: ") +
                          cmddata::ResultName(writer.GetLastError()));
    }
    if (!Store(options, bytes, &error)) return Failed(error);
    std::printf(
        "%s (%s %s, version %u): %zu bytes to %s\n", cls.className, target.command->name,
        SideName(target.side), static_cast<unsigned>(target.version), bytes.size(),
        options.output.empty() ? ("region " + options.region).c_str() : options.output.c_str());
    return kExitOk;
}

}  // namespace cmdtool
