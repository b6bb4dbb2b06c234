// cmddata watch: follows a live region read-only and reports each message as it passes. A region
// of the demo carries a history of its messages (history.h), followed by sequence number so that
// none is missed or repeated; any other region is looked at again and again, and a change of its
// content is reported as a message (one that comes and goes between two looks is missed).
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "cmddata/core/result.h"
#include "demo.h"
#include "dump.h"
#include "history.h"
#include "os.h"
#include "printers.h"
#include "registry.h"
#include "text.h"
#include "tool.h"

namespace cmdtool {

namespace {

using cmddata::Side;
using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kIdleMs = 1;
constexpr std::uint32_t kNameCheckMs = 100;
constexpr std::uint32_t kSetUpMs = 1000;
constexpr std::uint32_t kLookBytes = 64 * 1024;  // what the change watch compares and decodes

class RegionSource : public ByteSource {
public:
    explicit RegionSource(os::RegionReader& region) : region_(region) {}
    bool Read(std::uint64_t offset, void* out, std::uint32_t size) override {
        return region_.Read(offset, out, size);
    }

private:
    os::RegionReader& region_;
};

std::uint64_t NowUs() {
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(
                                          std::chrono::system_clock::now().time_since_epoch())
                                          .count());
}

// "23:41:02.123" (UTC).
std::string TimeText(std::uint64_t us) {
    const std::time_t seconds = static_cast<std::time_t>(us / 1000000);
    const std::tm* t = std::gmtime(&seconds);
    char text[32];
    if (t == nullptr) return "?";
    std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03u", t->tm_hour, t->tm_min, t->tm_sec,
                  static_cast<unsigned>(us / 1000 % 1000));
    return text;
}

// One message as the watcher saw it.
struct Seen {
    std::uint32_t sequence = 0;
    std::uint32_t exchange = 0;  // 0: not known
    std::uint64_t timeUs = 0;
    std::uint32_t size = 0;
    bool kept = true;
    const cmddata::CommandInfo* command = nullptr;  // null: not told and not found in the bytes
    Side side = Side::kSend;
    bool sideKnown = false;
    const unsigned char* bytes = nullptr;
    bool live = false;  // bytes are a region's start: a complete message there is enough
};

// The decode of bytes whose command is not told: every command the identifier names where each
// framing puts it, on each side that has that framing; the whole decode that takes most, else the
// one that gets furthest.
bool DecodeFound(const unsigned char* data, std::uint32_t size, Decoded* best) {
    bool any = false;
    for (cmddata::Framing framing :
         {cmddata::Framing::kHeader, cmddata::Framing::kVersionedHeader}) {
        const cmddata::CommandInfo* c = CommandNamed(data, size, framing, nullptr);
        if (c == nullptr) continue;
        for (Side side : {Side::kSend, Side::kReceive}) {
            if (c->FramingOf(side) != framing) continue;
            Decoded d;
            if (!DecodeAs(data, size, *c, side, cmddata::DefaultVersion(*c, side), &d)) continue;
            const bool better =
                !any || (d.Complete() && !best->Complete()) ||
                (d.Complete() == best->Complete() &&
                 (d.Complete() ? d.consumed > best->consumed : d.extent > best->extent));
            if (better) *best = std::move(d);
            any = true;
        }
    }
    return any;
}

class Watcher {
public:
    explicit Watcher(const WatchOptions& options) : options_(options) {}

    void Start(const std::string& mode, const std::string& note, std::uint64_t size) {
        if (options_.json) {
            nlohmann::ordered_json j;
            j["watch"] = options_.region;
            j["size"] = size;
            j["mode"] = mode;
            j["note"] = note;
            Emit(j);
        } else {
            std::cout << "watching region '" << options_.region << "' (" << size
                      << " bytes): " << note << "\n"
                      << std::flush;
        }
    }

    void Report(const Seen& seen) {
        ++messages_;
        if (firstUs_ == 0) firstUs_ = seen.timeUs;
        lastUs_ = seen.timeUs;
        Decoded d;
        bool decoded = false;
        if (seen.kept && seen.bytes != nullptr) {
            if (seen.command != nullptr && seen.sideKnown)
                decoded = DecodeAs(seen.bytes, seen.size, *seen.command, seen.side,
                                   cmddata::DefaultVersion(*seen.command, seen.side), &d);
            else
                decoded = DecodeFound(seen.bytes, seen.size, &d);
        }
        const cmddata::CommandInfo* command = decoded ? d.command : seen.command;
        const Side side = decoded ? d.side : seen.side;
        const bool sideKnown = decoded || seen.sideKnown;
        const bool whole = decoded && d.Complete() && (seen.live || d.consumed == seen.size);
        if (!whole) ++undecoded_;
        const std::string name = command != nullptr ? command->name : "?";
        Count& count = counts_[name];
        if (count.order == 0) count.order = ++order_;
        (side == Side::kSend ? count.snd : count.rcv) += 1;
        const std::uint32_t size = seen.live && whole ? d.consumed : seen.size;
        bytes_ += size;

        std::string status;
        if (!seen.kept)
            status = "not kept (larger than the history holds)";
        else if (!decoded)
            status = seen.command == nullptr ? "no command identifier found" : "nothing decodes it";
        else if (whole)
            status = "decoded";
        else if (d.Complete())
            status = "decodes " + std::to_string(d.consumed) + " of " + std::to_string(seen.size) +
                     " bytes";
        else
            status = "stops at offset " + std::to_string(d.failure.offset) +
                     (d.failure.field.empty() ? "" : " ('" + d.failure.field + "')") + ": " +
                     d.failure.why + ", result " + HexWord(d.code, 4) + " " +
                     cmddata::ResultName(d.code);

        if (options_.json) {
            nlohmann::ordered_json j;
            j["time"] = TimeText(seen.timeUs);
            j["time_us"] = seen.timeUs;
            j["sequence"] = seen.sequence;
            if (seen.exchange != 0) j["exchange"] = seen.exchange;
            j["command"] = name;
            j["side"] = sideKnown ? SideName(side) : "?";
            j["size"] = size;
            j["complete"] = whole;
            j["status"] = status;
            if (decoded) {
                j["class"] = d.className;
                j["version"] = d.version;
                j["decoded"] = d.Complete() ? d.consumed : d.failure.offset;
                j["result"] = d.code;
                if (d.failure.failed)
                    j["failure"] = {{"field", d.failure.field},
                                    {"offset", d.failure.offset},
                                    {"why", d.failure.why}};
                j["fields"] = JsonFields(d.root);
            }
            Emit(j);
            return;
        }
        char line[256];
        char exchange[16] = "";
        if (seen.exchange != 0)
            std::snprintf(exchange, sizeof exchange, "[%03u]",
                          static_cast<unsigned>(seen.exchange));
        std::snprintf(line, sizeof line, "%s  #%-5u %5s %-32s %s %6u bytes  ",
                      TimeText(seen.timeUs).c_str(), static_cast<unsigned>(seen.sequence), exchange,
                      name.c_str(), sideKnown ? SideName(side) : "?  ",
                      static_cast<unsigned>(size));
        std::cout << line << status << "\n" << std::flush;
    }

    void Summary(const std::string& end, std::uint64_t missed, bool mayMiss) {
        const double seconds = lastUs_ > firstUs_ ? (lastUs_ - firstUs_) / 1e6 : 0.0;
        const double rate = seconds > 0 ? messages_ / seconds : 0.0;
        const double byteRate = seconds > 0 ? bytes_ / seconds : 0.0;
        std::vector<std::pair<std::string, Count>> commands(counts_.begin(), counts_.end());
        std::sort(commands.begin(), commands.end(),
                  [](const auto& a, const auto& b) { return a.second.order < b.second.order; });
        std::string missedText = mayMiss       ? "messages between two looks may be missed"
                                 : missed == 0 ? "none missed"
                                               : std::to_string(missed) + " missed";
        if (options_.json) {
            nlohmann::ordered_json j;
            nlohmann::ordered_json& s = j["summary"];
            s["end"] = end;
            s["messages"] = messages_;
            s["bytes"] = bytes_;
            s["seconds"] = seconds;
            s["messages_per_second"] = rate;
            s["bytes_per_second"] = byteRate;
            s["undecodable"] = undecoded_;
            s["missed"] = missed;
            s["may_miss"] = mayMiss;
            nlohmann::ordered_json& c = s["commands"];
            c = nlohmann::ordered_json::object();
            for (const auto& [name, count] : commands)
                c[name] = {{"snd", count.snd}, {"rcv", count.rcv}};
            Emit(j);
            return;
        }
        char line[200];
        std::snprintf(line, sizeof line,
                      "\n%llu messages, %llu bytes in %.3f s (%.0f messages/s, %.0f bytes/s); "
                      "%llu not decoded whole; %s; %s\n",
                      static_cast<unsigned long long>(messages_),
                      static_cast<unsigned long long>(bytes_), seconds, rate, byteRate,
                      static_cast<unsigned long long>(undecoded_), missedText.c_str(), end.c_str());
        std::cout << line;
        if (!commands.empty()) std::cout << "per command (requests/answers):\n";
        for (const auto& [name, count] : commands) {
            std::snprintf(line, sizeof line, "  %-32s %4llu %4llu\n", name.c_str(),
                          static_cast<unsigned long long>(count.snd),
                          static_cast<unsigned long long>(count.rcv));
            std::cout << line;
        }
        std::cout << std::flush;
    }

    std::uint64_t Messages() const { return messages_; }

private:
    struct Count {
        std::uint64_t order = 0;
        std::uint64_t snd = 0;
        std::uint64_t rcv = 0;
    };
    static void Emit(const nlohmann::ordered_json& j) {
        std::cout << j.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << "\n"
                  << std::flush;
    }

    const WatchOptions& options_;
    std::uint64_t messages_ = 0;
    std::uint64_t bytes_ = 0;
    std::uint64_t undecoded_ = 0;
    std::uint64_t firstUs_ = 0;
    std::uint64_t lastUs_ = 0;
    std::uint64_t order_ = 0;
    std::map<std::string, Count> counts_;
};

// What ends the watch: the options' limits, an interrupt, the region's going away.
class Limits {
public:
    explicit Limits(const WatchOptions& options) : options_(options), start_(Clock::now()) {}
    bool Reached(const Watcher& watcher) const {
        if (os::Interrupted()) return true;
        if (options_.count != 0 && watcher.Messages() >= options_.count) return true;
        return options_.seconds != 0 &&
               Clock::now() - start_ >= std::chrono::milliseconds(options_.seconds * 1000);
    }
    std::string Why(const Watcher& watcher) const {
        if (os::Interrupted()) return "interrupted";
        if (options_.count != 0 && watcher.Messages() >= options_.count)
            return "--count " + std::to_string(options_.count) + " reached";
        return "--seconds " + std::to_string(options_.seconds) + " passed";
    }

private:
    const WatchOptions& options_;
    Clock::time_point start_;
};

// Whether the region is still there, asked every kNameCheckMs of idling.
class NameCheck {
public:
    explicit NameCheck(os::RegionReader& region) : region_(region), last_(Clock::now()) {}
    bool Gone() {
        if (Clock::now() - last_ < std::chrono::milliseconds(kNameCheckMs)) return false;
        last_ = Clock::now();
        return !region_.StillNamed();
    }

private:
    os::RegionReader& region_;
    Clock::time_point last_;
};

int Failed(const std::string& why) {
    std::cout << std::flush;
    std::fprintf(stderr, "cmddata watch: %s\n", why.c_str());
    return kExitFailed;
}

std::string LostWhy(os::RegionReader& region, std::uint64_t size) {
    const std::uint64_t now = region.Size();
    if (now < size)
        return "the region shrank under the watcher (" + std::to_string(size) + " to " +
               std::to_string(now) + " bytes)";
    return "the region can no longer be read";
}

Seen FromHistory(const HistoryRecord& record) {
    Seen seen;
    seen.sequence = record.sequence;
    seen.exchange = record.exchange;
    seen.timeUs = record.timeUs;
    seen.size = record.size;
    seen.kept = record.kept;
    seen.command = record.command >= 1 && record.command <= cmddata::kCommandCount
                       ? &cmddata::kCommands[record.command - 1]
                       : nullptr;
    seen.side = record.side == 0 ? Side::kSend : Side::kReceive;
    seen.sideKnown = record.side <= 1;
    seen.bytes = record.bytes.data();
    return seen;
}

int FollowHistory(os::RegionReader& region, HistoryReader& history, Watcher& watcher,
                  const WatchOptions& options, std::uint64_t size, bool* damaged) {
    const Limits limits(options);
    NameCheck name(region);
    HistoryRecord record;
    std::string end;
    for (;;) {
        if (limits.Reached(watcher)) {
            end = limits.Why(watcher);
            break;
        }
        const HistoryReader::Step step = history.Next(&record);
        if (step == HistoryReader::Step::kRecord) {
            watcher.Report(FromHistory(record));
            continue;
        }
        if (step == HistoryReader::Step::kEnded) {
            end = "the demo ended its session";
            break;
        }
        if (step == HistoryReader::Step::kLost) {
            watcher.Summary("stopped: " + LostWhy(region, size), history.Missed(), false);
            return Failed(LostWhy(region, size));
        }
        if (step == HistoryReader::Step::kDamaged) {
            *damaged = true;
            return kExitOk;
        }
        if (name.Gone()) {
            // Whatever was published before the name went is still read.
            while (history.Next(&record) == HistoryReader::Step::kRecord)
                watcher.Report(FromHistory(record));
            end = "the region was removed";
            break;
        }
        os::SleepMs(kIdleMs);
    }
    watcher.Summary(end, history.Missed(), false);
    return kExitOk;
}

bool AllZero(const std::vector<unsigned char>& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](unsigned char b) { return b == 0; });
}

int FollowChanges(os::RegionReader& region, Watcher& watcher, const WatchOptions& options,
                  std::uint64_t size) {
    const Limits limits(options);
    NameCheck name(region);
    const std::uint32_t look =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(size, kLookBytes));
    std::vector<unsigned char> last(look, 0);
    std::vector<unsigned char> now(look);
    std::uint32_t sequence = 0;
    std::string end;
    for (;;) {
        if (limits.Reached(watcher)) {
            end = limits.Why(watcher);
            break;
        }
        if (!region.Read(0, now.data(), look)) {
            watcher.Summary("stopped: " + LostWhy(region, size), 0, true);
            return Failed(LostWhy(region, size));
        }
        if (now != last && !AllZero(now)) {
            Seen seen;
            seen.sequence = ++sequence;
            seen.timeUs = NowUs();
            seen.size = look;
            seen.bytes = now.data();
            seen.live = true;
            watcher.Report(seen);
        }
        last.swap(now);
        if (name.Gone()) {
            end = "the region was removed";
            break;
        }
        os::SleepMs(kIdleMs);
    }
    watcher.Summary(end, 0, true);
    return kExitOk;
}

}  // namespace

int RunWatch(const WatchOptions& options) {
    os::RegionReader region;
    std::string error;
    if (!region.Open(options.region, &error)) return Failed(error);
    const std::uint64_t size = region.Size();
    if (size == 0) return Failed("the shared region '" + options.region + "' is empty");
    os::CatchInterrupt();
    Watcher watcher(options);
    RegionSource source(region);
    HistoryReader history(source, kHistoryOffset, kHistorySize);
    // A region of the demo's size may be one whose demo has not yet set its history up.
    bool attached = size == kRegionSize && history.Attach();
    for (std::uint32_t waited = 0; size == kRegionSize && !attached && waited < kSetUpMs;
         waited += 10) {
        os::SleepMs(10);
        attached = history.Attach();
    }
    if (attached) {
        watcher.Start("history",
                      "the demo's message history: every message in order, by sequence number",
                      size);
        bool damaged = false;
        const int status = FollowHistory(region, history, watcher, options, size, &damaged);
        if (!damaged) return status;
        if (!options.json)
            std::cout << "the history holds what the demo does not write: following changes "
                         "instead\n";
    }
    watcher.Start("changes",
                  "no message history: the region's start is reported when it changes, and "
                  "messages that come and go between two looks are missed",
                  size);
    return FollowChanges(region, watcher, options, size);
}

}  // namespace cmdtool
