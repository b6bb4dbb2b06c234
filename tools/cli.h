// Command-line plumbing shared by the subcommands: option parsing, usage errors, numbers.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace cmdtool {

/// Exit codes: 0 success, 1 the work failed (bad bytes, a peer that went away), 2 usage error.
constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct OptionDef {
    const char* name;  // "--region"
    bool takesValue;
};

struct ParsedArgs {
    std::vector<std::string> positional;
    std::map<std::string, std::string> options;  // flags map to ""
    bool help = false;

    bool Has(const std::string& name) const { return options.count(name) != 0; }
    std::string Get(const std::string& name) const {
        auto it = options.find(name);
        return it != options.end() ? it->second : std::string();
    }
};

/// Parses args (after the subcommand name). "--name=value" and "--name value" both work;
/// -h/--help is always known. False with a one-line reason on an unknown or incomplete option.
bool ParseArgs(const std::vector<std::string>& args, const std::vector<OptionDef>& known,
               ParsedArgs* out, std::string* error);

/// Prints "cmddata <command>: <message>" and a hint to stderr; returns kExitUsage.
int UsageError(const std::string& command, const std::string& message);

/// A decimal or 0x-prefixed number no larger than max.
bool ParseNumber(const std::string& text, std::uint64_t max, std::uint64_t* value);

// The subcommands.
int RunList(const std::vector<std::string>& args);
int RunDump(const std::vector<std::string>& args);
int RunDemo(const std::vector<std::string>& args);
int RunVehicleSide(const std::vector<std::string>& args);

}  // namespace cmdtool
