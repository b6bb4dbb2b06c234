// What the subcommands share: exit codes, their options as parsed by main.cpp, usage errors.
#pragma once

#include <cstdint>
#include <string>

namespace cmdtool {

/// Exit codes: 0 success, 1 the work failed (bad bytes, a peer that went away), 2 usage error.
constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// The most bytes dump reads from a file or a region (64 MiB, 64 times the demo's region): a
/// larger, endless or sparse input is refused after reading at most this much, never loaded whole.
constexpr std::uint32_t kLargestInput = 64u * 1024 * 1024;

/// Prints "cmddata <command>: <message> (see 'cmddata <command> --help')" as one line to stderr;
/// returns kExitUsage.
int UsageError(const std::string& command, const std::string& message);

/// A decimal or 0x-prefixed number no larger than max.
bool ParseNumber(const std::string& text, std::uint64_t max, std::uint64_t* value);

/// A misbehaviour of the demo's vehicle side, for testing: from request `at` (counted from 1).
struct Fault {
    enum Kind { kNone, kExit, kMute, kGarble, kSkew } kind = kNone;
    std::uint64_t at = 0;
};
/// "exit:K", "mute:K", "garble:K" or "skew:K" with K from 1.
bool ParseFault(const std::string& text, Fault* fault);

struct DemoOptions {
    std::string saveDir;  // empty: nothing saved
    std::uint32_t timeoutMs = 5000;
    Fault fault;
};

struct VehicleSideOptions {
    std::string region;
    std::uint32_t parent = 0;
    std::uint32_t timeoutMs = 5000;
    Fault fault;
};

struct DumpOptions {
    std::string file;
    std::string region;
    std::string command;  // a catalogue name or identifier; empty: read from the bytes
    std::string side;     // "snd", "rcv" or empty for both
    bool versionGiven = false;
    std::uint16_t version = 0;
    bool json = false;
};

struct EncodeOptions {
    std::string file;     // "-": standard input
    std::string command;  // empty: from the document
    std::string side;     // "snd", "rcv" or empty: from the document
    bool versionGiven = false;
    std::uint16_t version = 0;
    std::string output;  // -o
    std::string region;  // --region
};

struct ListOptions {
    std::string filter;
};

struct SchemaOptions {
    bool json = false;
    std::string output;  // empty: standard output
};

struct KsyOptions {
    std::string outDir;
};

struct WatchOptions {
    std::string region;
    bool json = false;
    std::uint64_t count = 0;    // 0: no limit
    std::uint32_t seconds = 0;  // 0: no limit
};

int RunDemo(const DemoOptions& options);
int RunVehicleSide(const VehicleSideOptions& options);
int RunDump(const DumpOptions& options);
int RunEncode(const EncodeOptions& options);
int RunList(const ListOptions& options);
int RunSchema(const SchemaOptions& options);
int RunKsy(const KsyOptions& options);
int RunWatch(const WatchOptions& options);

}  // namespace cmdtool
