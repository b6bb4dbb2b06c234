// cmddata list: the catalogue with each command's framing, version rules and built classes.
#include <cstdio>
#include <iostream>

#include "cli.h"
#include "registry.h"
#include "text.h"

namespace cmdtool {

namespace {

const char kHelp[] =
    "usage: cmddata list [SUBSTRING]\n"
    "\n"
    "Lists the command catalogue: identifier, name, framing of the send/receive message\n"
    "(header = 20-byte header first, prefix+header = 4-byte version prefix then the header,\n"
    "none = no header on the wire), version rule per side (1, 2: fixed; V1..V3: constructor\n"
    "argument with that default; 1*: argument ignored; d: derived from the command named in\n"
    "'layout of'), whether the two classes are built into this program, and 'payload\n"
    "undefined' for commands whose classes carry the header alone.\n"
    "SUBSTRING keeps the commands whose name contains it (any case) or whose identifier is it.\n";

}  // namespace

int RunList(const std::vector<std::string>& args) {
    ParsedArgs parsed;
    std::string error;
    if (!ParseArgs(args, {}, &parsed, &error)) return UsageError("list", error);
    if (parsed.help) {
        std::fputs(kHelp, stdout);
        return kExitOk;
    }
    if (parsed.positional.size() > 1) return UsageError("list", "at most one SUBSTRING");
    const std::string filter = parsed.positional.empty() ? "" : parsed.positional[0];

    std::printf("%4s  %-34s %-28s %-7s %-9s %s\n", "id", "command", "framing snd/rcv", "version",
                "classes", "notes");
    std::size_t shown = 0;
    for (const cmddata::CommandInfo& c : cmddata::kCommands) {
        if (!ContainsNoCase(c.name, filter) && filter != std::to_string(c.id)) continue;
        ++shown;
        const bool snd = IsBuilt(c, cmddata::Side::kSend);
        const bool rcv = IsBuilt(c, cmddata::Side::kReceive);
        const std::string framing =
            std::string(FramingName(c.sendFraming)) + "/" + FramingName(c.receiveFraming);
        const std::string version =
            std::string(RuleName(c.sendVersion)) + "/" + RuleName(c.receiveVersion);
        const char* classes = snd && rcv ? "built" : (snd ? "snd only" : (rcv ? "rcv only" : "-"));
        std::string notes;
        if (c.IsDerived()) {
            const cmddata::CommandInfo* base = cmddata::FindCommand(c.layoutOf);
            notes += std::string("layout of ") + (base != nullptr ? base->name : "?");
        }
        if (!c.payloadKnown) notes += std::string(notes.empty() ? "" : "; ") + "payload undefined";
        std::printf("%4u  %-34s %-28s %-7s %-9s %s\n", static_cast<unsigned>(c.id), c.name,
                    framing.c_str(), version.c_str(), classes, notes.c_str());
    }
    std::printf("%zu of %zu commands shown; %zu of %zu built (both classes).\n", shown,
                cmddata::kCommandCount, BuiltCommandCount(), cmddata::kCommandCount);
    return kExitOk;
}

}  // namespace cmdtool
