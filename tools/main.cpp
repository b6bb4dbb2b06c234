// cmddata: exchanges demo messages between two processes, decodes regions, lists the catalogue.
#include <cstdio>
#include <string>
#include <vector>

#include "cli.h"

namespace {

const char kUsage[] =
    "usage: cmddata <command> [options]\n"
    "\n"
    "commands:\n"
    "  demo   run a requesting side and a simulated vehicle side in two processes that\n"
    "         exchange messages through a named shared region\n"
    "  dump   decode a saved message or a live region field by field (text tree or JSON)\n"
    "  list   show the command catalogue and which classes are built\n"
    "\n"
    "'cmddata <command> --help' describes each command.\n";

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (args.empty()) {
        std::fputs(kUsage, stderr);
        return cmdtool::kExitUsage;
    }
    const std::string command = args.front();
    args.erase(args.begin());
    if (command == "-h" || command == "--help" || command == "help") {
        std::fputs(kUsage, stdout);
        return cmdtool::kExitOk;
    }
    if (command == "list") return cmdtool::RunList(args);
    if (command == "dump") return cmdtool::RunDump(args);
    if (command == "demo") return cmdtool::RunDemo(args);
    if (command == "vehicle-side") return cmdtool::RunVehicleSide(args);  // started by demo
    std::fprintf(stderr, "cmddata: unknown command '%s' (see 'cmddata --help')\n", command.c_str());
    return cmdtool::kExitUsage;
}
