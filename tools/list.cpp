// cmddata list: the catalogue with each command's framing, version rules and built classes.
#include <cstdio>
#include <iostream>

#include "registry.h"
#include "text.h"
#include "tool.h"

namespace cmdtool {

int RunList(const ListOptions& options) {
    const std::string& filter = options.filter;

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
    std::printf("%zu of %zu commands shown; %zu of %zu commands built (both classes).\n", shown,
                cmddata::kCommandCount, BuiltCommandCount(), cmddata::kCommandCount);
    return kExitOk;
}

}  // namespace cmdtool
