// cmddata demo: the requesting side. Creates the named region and the signals, starts the vehicle
// side as a second process, plays the showcases, then walks every command whose two classes are
// built, and prints the transcript.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "cmddata/core/describe.h"
#include "cmddata/core/result.h"
#include "cmddata/core/shared_region.h"
#include "demo.h"
#include "history.h"
#include "os.h"
#include "registry.h"
#include "signalling.h"
#include "text.h"
#include "tool.h"

namespace cmdtool {

namespace {

using cmddata::Side;

class DemoSession : public Session {
public:
    DemoSession(cmddata::SharedRegion& region, Signals& signals, os::Child& child,
                const DemoOptions& options)
        : region_(region),
          signals_(signals),
          child_(child),
          options_(options),
          history_(region.data() + kHistoryOffset, kHistorySize) {}

    std::ostream& Out() override { return std::cout; }

    bool Exchange(const cmddata::CommandInfo& command, std::uint32_t showcase, CCmdCore& request,
                  CCmdCore& answer) override {
        Control control;
        std::uint32_t sent = 0;
        if (!Send(command, showcase, request, &sent, &control)) return false;
        CCmdReader reader;
        reader.AttachView(region_.data(), kMessageArea);
        reader.Read(&answer);
        const std::uint32_t received = reader.GetPosition();
        const bool decoded = reader.GetLastError() == 0 && received == control.answerSize;
        Line(command, sent, decoded ? received : control.answerSize,
             decoded && control.problem.empty() ? "showcase" : "MISMATCH");
        if (!control.problem.empty()) Fail(command, "the vehicle side found: " + control.problem);
        if (reader.GetLastError() != 0)
            Fail(command, "the answer does not decode: result " +
                              HexWord(reader.GetLastError(), 4) + " " +
                              cmddata::ResultName(reader.GetLastError()));
        else if (!decoded)
            Fail(command, "the answer decodes " + std::to_string(received) + " bytes, not the " +
                              std::to_string(control.answerSize) + " written");
        return Save(command, "rcv", control.answerSize) && decoded && control.problem.empty();
    }

    /// One command of the walk: the request filled, checked by the vehicle side, the answer
    /// checked here. False only when the exchange broke off.
    bool Walk(const cmddata::CommandInfo& command) {
        const cmddata::ClassInfo* snd = cmddata::FindMessageClass(command, Side::kSend);
        const cmddata::ClassInfo* rcv = cmddata::FindMessageClass(command, Side::kReceive);
        std::unique_ptr<CCmdCore> request(snd->make(cmddata::DefaultVersion(command, Side::kSend)));
        if (!request) return Broke(command, "out of memory");
        cmddata::Fill(*request, DemoSeed(command, Side::kSend));
        Control control;
        std::uint32_t sent = 0;
        if (!Send(command, 0, *request, &sent, &control)) return false;

        std::uint32_t received = 0;
        const std::string problem =
            CheckFilled(*rcv, cmddata::DefaultVersion(command, Side::kReceive),
                        DemoSeed(command, Side::kReceive), region_.data(), kMessageArea, &received);
        std::string note = problem.empty() && control.problem.empty() ? "ok" : "MISMATCH";
        if (control.recognised == Recognised::kControlWord)
            note += ", no header: named by the control block";
        else if (control.recognised == Recognised::kPrefixedHeader)
            note += ", identifier behind the version prefix";
        if (!command.payloadKnown) note += ", payload undefined";
        Line(command, sent, received, note);
        if (!control.problem.empty()) Fail(command, "the vehicle side found: " + control.problem);
        if (!problem.empty()) Fail(command, "the answer " + problem);
        ++walked_;
        return Save(command, "rcv", received);
    }

    std::uint32_t Count() const { return count_; }
    std::uint32_t Walked() const { return walked_; }
    std::uint32_t Mismatches() const { return mismatches_; }
    bool Broken() const { return broken_; }
    std::uint64_t BytesSent() const { return bytesSent_; }
    std::uint64_t BytesReceived() const { return bytesReceived_; }

private:
    // Writes the request and the control block, signals and waits for the answer; false (and the
    // reason printed) when the exchange broke off.
    bool Send(const cmddata::CommandInfo& command, std::uint32_t showcase, CCmdCore& request,
              std::uint32_t* sent, Control* control) {
        ++count_;
        std::memset(region_.data(), 0, kMessageArea);
        CCmdWriter writer;
        writer.AttachView(region_.data(), kMessageArea);
        writer.Write(&request);
        if (writer.GetLastError() != 0)
            return Broke(command, "writing the " + std::string(command.name) + " request failed: " +
                                      cmddata::ResultName(writer.GetLastError()));
        *sent = writer.GetPosition();
        if (!Save(command, "snd", *sent)) return false;
        Control told;
        told.command = static_cast<std::uint32_t>(&command - cmddata::kCommands) + 1;
        told.showcase = showcase;
        told.Store(region_.data() + kControlOffset);
        history_.Append(told.command, 0, count_, region_.data(), *sent);
        signals_.RequestReady();

        const WaitOutcome waited = signals_.WaitAnswer(
            options_.timeoutMs, [this] { return !child_.Ended(nullptr, nullptr); });
        if (waited != WaitOutcome::kSignalled) {
            std::string how;
            child_.Ended(nullptr, &how);
            if (waited == WaitOutcome::kPeerGone)
                return Broke(command, "the vehicle side " + how + " without answering the " +
                                          command.name + " request");
            return Broke(command, "no answer to the " + std::string(command.name) +
                                      " request within " + std::to_string(options_.timeoutMs) +
                                      " ms: the vehicle side is not responding");
        }
        *control = Control::Load(region_.data() + kControlOffset);
        history_.Append(told.command, 1, count_, region_.data(),
                        std::min(control->answerSize, kMessageArea));
        bytesSent_ += *sent;
        return true;
    }

    void Line(const cmddata::CommandInfo& command, std::uint32_t sent, std::uint32_t received,
              const std::string& note) {
        bytesReceived_ += received;
        char line[200];
        std::snprintf(line, sizeof line, "  [%03u] %-32s request %6u bytes  answer %6u bytes  %s\n",
                      count_, command.name, static_cast<unsigned>(sent),
                      static_cast<unsigned>(received), note.c_str());
        std::cout << line;
    }

    void Fail(const cmddata::CommandInfo& command, const std::string& why) {
        ++mismatches_;
        std::cout << "  ! " << command.name << ": " << why << "\n";
    }

    bool Broke(const cmddata::CommandInfo&, const std::string& why) {
        broken_ = true;
        std::cout << "  ! " << why << "\n";
        return false;
    }

    // The message's bytes as they lie at the start of the region.
    bool Save(const cmddata::CommandInfo& command, const char* side, std::uint32_t size) {
        if (options_.saveDir.empty()) return true;
        char file[80];
        std::snprintf(file, sizeof file, "%03u-%s-%s.bin", count_, command.name, side);
        const std::string path = (std::filesystem::path(options_.saveDir) / file).string();
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(region_.data()), size);
        if (!out) return Broke(command, "cannot write " + path);
        return true;
    }

    cmddata::SharedRegion& region_;
    Signals& signals_;
    os::Child& child_;
    const DemoOptions& options_;
    std::uint32_t count_ = 0;
    std::uint32_t walked_ = 0;
    std::uint32_t mismatches_ = 0;
    bool broken_ = false;
    std::uint64_t bytesSent_ = 0;
    std::uint64_t bytesReceived_ = 0;
    HistoryWriter history_;

public:
    /// Tells watchers that no more messages follow.
    void EndHistory() { history_.End(); }
};

std::string FaultArgument(const Fault& fault) {
    static const char* const kNames[] = {"", "exit", "mute", "garble", "skew"};
    return std::string(kNames[fault.kind]) + ":" + std::to_string(fault.at);
}

// Plays the showcases, then every built command; stops when an exchange breaks off.
void Play(DemoSession& session) {
    std::size_t count = 0;
    const Showcase* showcases = Showcases(&count);
    for (std::size_t i = 0; i < count && !session.Broken(); ++i) {
        std::cout << "\n== " << showcases[i].title << "\n";
        showcases[i].play(session);
    }
    std::cout << "\n== every built command, " << BuiltCommandCount() << " of "
              << cmddata::kCommandCount << ": both messages filled, each checked by its reader\n"
              << "   (a message without a header cannot be told from the region: the control "
                 "block names its command)\n";
    for (const cmddata::CommandInfo& c : cmddata::kCommands) {
        if (session.Broken()) break;
        if (IsBuilt(c, Side::kSend) && IsBuilt(c, Side::kReceive)) session.Walk(c);
    }
}

}  // namespace

int RunDemo(const DemoOptions& options) {
    if (!options.saveDir.empty()) {
        std::error_code ec;
        std::filesystem::create_directories(options.saveDir, ec);
        if (ec) {
            std::fprintf(stderr, "cmddata demo: cannot create the directory '%s': %s\n",
                         options.saveDir.c_str(), ec.message().c_str());
            return kExitFailed;
        }
        // Found out now rather than after the first exchange.
        const std::filesystem::path probe =
            std::filesystem::path(options.saveDir) / ".cmddata-write-probe";
        const bool writable = static_cast<bool>(std::ofstream(probe, std::ios::binary) << 'x');
        std::filesystem::remove(probe, ec);
        if (!writable) {
            std::fprintf(stderr, "cmddata demo: cannot write into the directory '%s'\n",
                         options.saveDir.c_str());
            return kExitFailed;
        }
    }
    const std::string name = "cmddata-demo-" + std::to_string(os::ProcessId());
    cmddata::SharedRegion region = cmddata::SharedRegion::CreateNamed(name, kRegionSize);
    if (!region.IsValid()) {
        std::fprintf(stderr, "cmddata demo: cannot create the shared region '%s'\n", name.c_str());
        return kExitFailed;
    }
    Signals signals;
    std::string error;
    if (!signals.Create(name, &error)) {
        std::fprintf(stderr, "cmddata demo: %s\n", error.c_str());
        return kExitFailed;
    }
    const std::string self = os::SelfPath();
    std::vector<std::string> childArgs = {"cmddata",      "vehicle-side",
                                          "--region",     name,
                                          "--parent",     std::to_string(os::ProcessId()),
                                          "--timeout-ms", std::to_string(options.timeoutMs)};
    if (options.fault.kind != Fault::kNone) {
        childArgs.push_back("--fault");
        childArgs.push_back(FaultArgument(options.fault));
    }
    os::Child child;
    if (self.empty() || !child.Start(self, childArgs, &error)) {
        std::fprintf(stderr, "cmddata demo: %s\n",
                     self.empty() ? "cannot find this program's own path" : error.c_str());
        return kExitFailed;
    }
    std::cout << "requesting side: process " << os::ProcessId() << ", region '" << name << "' ("
              << region.size() << " bytes: messages, a " << kHistorySize / 1024
              << " KiB history that 'cmddata watch' follows, a " << kControlSize
              << "-byte control block)\n"
              << "vehicle side:    process " << child.Id() << "\n";

    DemoSession session(region, signals, child, options);
    Play(session);
    session.EndHistory();

    signals.EndSession();
    int code = 0;
    std::string how;
    if (!child.Wait(options.timeoutMs, &code, &how)) {
        child.Kill();
        how = "did not end within " + std::to_string(options.timeoutMs) + " ms and was stopped";
        code = -1;
    }
    std::cout << "\n"
              << session.Count() << " exchanges (" << session.Walked() << " commands walked), "
              << session.BytesSent() << " bytes requested, " << session.BytesReceived()
              << " bytes answered, " << session.Mismatches() << " differing; vehicle side " << how
              << "\n";
    if (session.Broken()) {
        std::cout << "demo FAILED: the exchange above broke off\n";
        return kExitFailed;
    }
    if (session.Mismatches() != 0) {
        std::cout << "demo FAILED: messages differ from what was sent (" << session.Mismatches()
                  << ")\n";
        return kExitFailed;
    }
    if (code != 0) {
        std::cout << "demo FAILED: the vehicle side did not end cleanly\n";
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace cmdtool
