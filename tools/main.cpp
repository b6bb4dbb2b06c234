// cmddata: exchanges every built command between two processes, decodes regions, lists the
// catalogue. The options of every subcommand are declared here, parsed with CLI11.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>

#include "tool.h"

namespace cmdtool {

int UsageError(const std::string& command, const std::string& message) {
    std::string line = message;
    for (char& c : line)
        if (c == '\n') c = ' ';
    const std::string prefix = command.empty() ? "cmddata" : "cmddata " + command;
    std::fprintf(stderr, "%s: %s (see '%s --help')\n", prefix.c_str(), line.c_str(),
                 prefix.c_str());
    return kExitUsage;
}

bool ParseNumber(const std::string& text, std::uint64_t max, std::uint64_t* value) {
    if (text.empty() || text.size() > 20) return false;
    std::uint64_t v = 0;
    std::size_t i = 0;
    unsigned base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        i = 2;
    }
    for (; i < text.size(); ++i) {
        const char c = text[i];
        unsigned d = 0;
        if (c >= '0' && c <= '9')
            d = static_cast<unsigned>(c - '0');
        else if (base == 16 && c >= 'a' && c <= 'f')
            d = static_cast<unsigned>(c - 'a' + 10);
        else if (base == 16 && c >= 'A' && c <= 'F')
            d = static_cast<unsigned>(c - 'A' + 10);
        else
            return false;
        if (v > (max - d) / base) return false;
        v = v * base + d;
    }
    *value = v;
    return true;
}

bool ParseFault(const std::string& text, Fault* fault) {
    const struct {
        const char* prefix;
        Fault::Kind kind;
    } kinds[] = {{"exit:", Fault::kExit},
                 {"mute:", Fault::kMute},
                 {"garble:", Fault::kGarble},
                 {"skew:", Fault::kSkew}};
    for (const auto& k : kinds) {
        const std::size_t n = std::strlen(k.prefix);
        std::uint64_t at = 0;
        if (text.compare(0, n, k.prefix) == 0 && ParseNumber(text.substr(n), 1000000, &at) &&
            at > 0) {
            fault->kind = k.kind;
            fault->at = at;
            return true;
        }
    }
    return false;
}

}  // namespace cmdtool

namespace {

using namespace cmdtool;

const char kSummary[] =
    "usage: cmddata <command> [options]\n"
    "commands: demo, dump, encode, list, schema, ksy, watch; 'cmddata <command> --help' describes "
    "each.\n";

const char kDemoText[] =
    "Exchanges every built command between two processes. This process (the requesting side)\n"
    "creates a named shared region and starts a second one (the simulated vehicle side). A few\n"
    "showcases first show what the library computes from answers (vehicle information codes,\n"
    "monitor conversions, freeze-frame values); then, for every command of the catalogue whose\n"
    "two classes are built, the request is filled with deterministic content and exchanged, the\n"
    "vehicle side checks it and answers with the receive class filled the same way, and the\n"
    "requesting side checks the answer. One transcript line per exchange with both sizes on the\n"
    "wire. Exit status 1 when any message differs from what its fill gives, or the other side\n"
    "dies or stays silent.";

const char kDumpText[] =
    "Decodes one message field by field: byte offset, wire type, name and value (texts shown\n"
    "as text, buffers as hex), nested records and lists indented. Without --command the\n"
    "identifier is read from the bytes: the leading u32 (plain header) or the u32 after the\n"
    "4-byte version prefix (prefixed header); both readings and both sides are tried. A file\n"
    "must be decoded whole by one side; a live region may hold more than its message.";

const char kDumpFooter[] =
    "Exit status: 0 decoded, 1 the bytes do not decode (offset, result code, the part decoded\n"
    "and a hex view of the rest are shown) or no side takes the whole file, 2 usage error.";

const char kEncodeText[] =
    "Makes a message's bytes from JSON: the document 'cmddata dump --json' prints (its\n"
    "\"message\" holds the fields; its command, side and version choose the class), or the\n"
    "fields alone with --command and --side. A field that is absent is empty. The bytes go to\n"
    "a file (-o) or to the start of a live named region (--region). Exit status: 0 written,\n"
    "1 the JSON does not fit the class (the JSON path and the reason are shown) or the output\n"
    "cannot be written, 2 usage error.";

const char kListText[] =
    "Lists the command catalogue: identifier, name, framing of the send/receive message\n"
    "(header = 20-byte header first, prefix+header = 4-byte version prefix then the header,\n"
    "none = no header on the wire), version rule per side (1, 2: fixed; V1..V3: constructor\n"
    "argument with that default; 1*: argument ignored; d: derived from the command named in\n"
    "'layout of'), whether the two classes are built into this program, and 'payload\n"
    "undefined' for commands whose classes carry the header alone.";

const char kSchemaText[] =
    "Describes every class of the class table from its field list: name, family, kind (record,\n"
    "message, layout), for messages the command, side, framing and version rule, and the fields\n"
    "in wire order with type, width, count, nested class, the version a field is present from,\n"
    "array item counts and image sizes; classes that read fields in another order than they\n"
    "write them give their read order too. --json prints one document (schema_version 1,\n"
    "described in docs/schema.md).";

const char kKsyText[] =
    "Writes a Kaitai Struct description (.ksy) of every class of the class table into DIR, made\n"
    "from the field lists like the schema: one file per class, nested records imported from\n"
    "their own files, texts and buffers from cmddata_string.ksy and cmddata_buffer.ksy, and\n"
    "DIR/index.json naming each class's file and top-level type.";

const char kWatchText[] =
    "Follows a live region read-only and prints one line per message as it passes: time (UTC),\n"
    "sequence, exchange, command, side, bytes, and whether it decodes whole or where it stops;\n"
    "--json prints one JSON object per line with the full decode. A demo's region is followed\n"
    "through its message history, in order, none missed or repeated; any other region is\n"
    "reported when its content changes (messages between two looks may be missed). Ends when\n"
    "the demo ends, the region goes away, --count or --seconds is reached, or on Ctrl-C, with\n"
    "a summary: messages per command and rates.";

CLI::Validator FaultValidator() {
    return CLI::Validator(
        [](std::string& text) {
            Fault fault;
            return ParseFault(text, &fault)
                       ? std::string()
                       : "must be exit:K, mute:K, garble:K or skew:K (K from 1), not '" + text +
                             "'";
        },
        "");
}

// The name of the subcommand the command line chose ("" before one was seen).
std::string Chosen(CLI::App& app) {
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? std::string() : chosen.front()->get_name();
}

int Main(int argc, char** argv) {
    CLI::App app("Exchanges, decodes and lists the messages of the cmddata library.", "cmddata");
    app.require_subcommand(1);
    app.get_formatter()->column_width(24);

    DemoOptions demo;
    std::string fault;
    CLI::App* demoCmd =
        app.add_subcommand("demo", "exchange every built command between two processes");
    demoCmd->footer(kDemoText);
    demoCmd->add_option("--save", demo.saveDir, "write each message to DIR/NNN-Command-snd.bin")
        ->type_name("DIR");
    demoCmd->add_option("--timeout-ms", demo.timeoutMs, "longest wait for the other side (5000)")
        ->type_name("N")
        ->check(CLI::Range(1u, 600000u).description(""));
    demoCmd
        ->add_option("--fault", fault,
                     "for tests, the vehicle side at request K: exit:K dies, mute:K stops\n"
                     "answering, garble:K damages its answer, skew:K expects and answers\n"
                     "another fill")
        ->type_name("F")
        ->check(FaultValidator());

    VehicleSideOptions vehicle;
    std::string vehicleFault;
    CLI::App* vehicleCmd =
        app.add_subcommand("vehicle-side", "The simulated vehicle side of 'cmddata demo'.");
    vehicleCmd->group("");  // started by demo, not listed
    vehicleCmd->add_option("--region", vehicle.region)->required();
    vehicleCmd->add_option("--parent", vehicle.parent)->required();
    vehicleCmd->add_option("--timeout-ms", vehicle.timeoutMs)->check(CLI::Range(1u, 600000u));
    vehicleCmd->add_option("--fault", vehicleFault)->check(FaultValidator());

    DumpOptions dump;
    CLI::App* dumpCmd = app.add_subcommand("dump", "decode a saved message or a live region");
    dumpCmd->footer(std::string(kDumpText) + "\n\n" + kDumpFooter);
    dumpCmd->add_option("FILE", dump.file, "a message's bytes (as 'demo --save' writes them)")
        ->type_name("");
    dumpCmd->add_option("--region", dump.region, "read a live named shared region instead")
        ->type_name("NAME");
    dumpCmd->add_option("--command", dump.command, "the command, by catalogue name or identifier")
        ->type_name("NAME|ID");
    dumpCmd
        ->add_option("--side", dump.side,
                     "snd (request) or rcv (answer); without it both are tried\n"
                     "and the one that decodes the whole input wins")
        ->type_name("snd|rcv")
        ->check(CLI::Validator(
            [](std::string& side) {
                return side == "snd" || side == "rcv" || side == "send" || side == "receive"
                           ? std::string()
                           : "must be snd or rcv, not '" + side + "'";
            },
            ""));
    CLI::Option* versionOpt =
        dumpCmd
            ->add_option("--version", dump.version,
                         "build the class with this version (default: the constructor's);\n"
                         "a plain header does not carry it: it must be the sender's")
            ->type_name("N");
    dumpCmd->add_flag("--json", dump.json, "print the same as one JSON object");

    EncodeOptions encode;
    CLI::App* encodeCmd = app.add_subcommand("encode", "make a message's bytes from JSON");
    encodeCmd->footer(kEncodeText);
    encodeCmd->add_option("FILE", encode.file, "the JSON, '-' for standard input")
        ->required()
        ->type_name("");
    encodeCmd
        ->add_option("--command", encode.command, "the command, by catalogue name or identifier")
        ->type_name("NAME|ID");
    encodeCmd->add_option("--side", encode.side, "snd (request) or rcv (answer)")
        ->type_name("snd|rcv")
        ->check(CLI::IsMember({"snd", "rcv"}));
    CLI::Option* encodeVersion =
        encodeCmd->add_option("--version", encode.version, "build the class with this version")
            ->type_name("N");
    encodeCmd->add_option("-o,--output", encode.output, "write the bytes to OUT")->type_name("OUT");
    encodeCmd->add_option("--region", encode.region, "write them into a live named region")
        ->type_name("NAME");

    ListOptions list;
    CLI::App* listCmd = app.add_subcommand("list", "show the command catalogue and what is built");
    listCmd->footer(kListText);
    listCmd
        ->add_option("SUBSTRING", list.filter,
                     "keep the commands whose name contains it (any case)\n"
                     "or whose identifier it is")
        ->type_name("");

    SchemaOptions schema;
    CLI::App* schemaCmd = app.add_subcommand("schema", "describe every class and its wire fields");
    schemaCmd->footer(kSchemaText);
    schemaCmd->add_flag("--json", schema.json, "print one JSON document");
    schemaCmd->add_option("-o,--output", schema.output, "write to FILE instead of standard output")
        ->type_name("FILE");

    KsyOptions ksy;
    CLI::App* ksyCmd = app.add_subcommand("ksy", "write Kaitai Struct descriptions of every class");
    ksyCmd->footer(kKsyText);
    ksyCmd->add_option("--out", ksy.outDir, "the directory to write into")
        ->type_name("DIR")
        ->required();

    WatchOptions watch;
    CLI::App* watchCmd = app.add_subcommand("watch", "report the messages passing a live region");
    watchCmd->footer(kWatchText);
    watchCmd->add_option("--region", watch.region, "the named shared region")
        ->type_name("NAME")
        ->required();
    watchCmd->add_flag("--json", watch.json, "one JSON object per line");
    watchCmd->add_option("--count", watch.count, "stop after N messages")
        ->type_name("N")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 40).description(""));
    watchCmd->add_option("--seconds", watch.seconds, "stop after S seconds")
        ->type_name("S")
        ->check(CLI::Range(1u, 86400u).description(""));

    if (argc < 2) {
        std::fputs(kSummary, stderr);
        return kExitUsage;
    }
    const std::string first = argv[1];
    if (first[0] != '-' &&
        app.get_subcommands([&first](CLI::App* sub) { return sub->get_name() == first; }).empty())
        return UsageError("", std::string("unknown command '") + argv[1] + "'");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        return UsageError(Chosen(app), e.what());
    }

    if (demoCmd->parsed()) {
        if (!fault.empty()) ParseFault(fault, &demo.fault);
        return RunDemo(demo);
    }
    if (vehicleCmd->parsed()) {
        if (!vehicleFault.empty()) ParseFault(vehicleFault, &vehicle.fault);
        return RunVehicleSide(vehicle);
    }
    if (dumpCmd->parsed()) {
        dump.versionGiven = versionOpt->count() != 0;
        if (dump.side == "send") dump.side = "snd";
        if (dump.side == "receive") dump.side = "rcv";
        return RunDump(dump);
    }
    if (encodeCmd->parsed()) {
        encode.versionGiven = encodeVersion->count() != 0;
        return RunEncode(encode);
    }
    if (schemaCmd->parsed()) return RunSchema(schema);
    if (ksyCmd->parsed()) return RunKsy(ksy);
    if (watchCmd->parsed()) return RunWatch(watch);
    return RunList(list);
}

}  // namespace

int main(int argc, char** argv) {
    // The last resort: every known failure is reported where it happens, and nothing that
    // escapes is allowed to end the program with an abort.
    try {
        return Main(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "cmddata: %s\n", e.what());
    } catch (...) {
        std::fprintf(stderr, "cmddata: unexpected failure\n");
    }
    return kExitFailed;
}
