#include "cli.h"

#include <cstdio>

namespace cmdtool {

bool ParseArgs(const std::vector<std::string>& args, const std::vector<OptionDef>& known,
               ParsedArgs* out, std::string* error) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "-h" || arg == "--help") {
            out->help = true;
            continue;
        }
        if (arg.size() < 2 || arg[0] != '-') {
            out->positional.push_back(arg);
            continue;
        }
        const std::size_t eq = arg.find('=');
        const std::string name = arg.substr(0, eq);
        const OptionDef* found = nullptr;
        for (const OptionDef& s : known)
            if (name == s.name) found = &s;
        if (found == nullptr) {
            *error = "unknown option " + name;
            return false;
        }
        if (!found->takesValue) {
            if (eq != std::string::npos) {
                *error = "option " + name + " takes no value";
                return false;
            }
            out->options[name] = "";
        } else if (eq != std::string::npos) {
            out->options[name] = arg.substr(eq + 1);
        } else if (i + 1 < args.size()) {
            out->options[name] = args[++i];
        } else {
            *error = "option " + name + " needs a value";
            return false;
        }
    }
    return true;
}

int UsageError(const std::string& command, const std::string& message) {
    std::fprintf(stderr, "cmddata %s: %s (see 'cmddata %s --help')\n", command.c_str(),
                 message.c_str(), command.c_str());
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

}  // namespace cmdtool
