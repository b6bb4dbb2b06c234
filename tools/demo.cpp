// cmddata demo: the requesting side. Creates the named region and the signals, starts the vehicle
// side as a second process, plays every family's requests and prints the transcript.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "cli.h"
#include "cmddata/command/catalogue.h"
#include "cmddata/core/result.h"
#include "cmddata/core/shared_region.h"
#include "demo.h"
#include "os.h"
#include "signalling.h"
#include "text.h"

namespace cmdtool {

namespace {

const char kHelp[] =
    "usage: cmddata demo [--save DIR] [--timeout-ms N]\n"
    "\n"
    "Plays a typical exchange between two processes. This process creates a named shared region\n"
    "and starts a second one (the simulated vehicle side); for each command of the families\n"
    "built in it writes the request into the region, signals, waits for the answer and reads\n"
    "it back, printing a transcript: the vehicle identification, the monitor items with their\n"
    "conversion, the freeze-frame items, and every message's size on the wire.\n"
    "\n"
    "  --save DIR       write each message's bytes to DIR/NN-Command-snd.bin / -rcv.bin\n"
    "  --timeout-ms N   longest wait for the other side (default 5000); a side that dies or\n"
    "                   stays silent is reported and the demo exits with status 1\n"
    "  --fault F        make the vehicle side misbehave, for testing: exit:K (die on request\n"
    "                   K), mute:K (stop answering at request K), garble:K (answer request K\n"
    "                   with damaged bytes)\n";

constexpr std::uint32_t kRegionSize = 64 * 1024;

class DemoSession : public Session {
public:
    DemoSession(cmddata::SharedRegion& region, Signals& signals, os::Child& child,
                std::uint32_t timeoutMs, const std::string& saveDir)
        : region_(region),
          signals_(signals),
          child_(child),
          timeoutMs_(timeoutMs),
          saveDir_(saveDir) {}

    std::ostream& Out() override { return std::cout; }

    bool Exchange(std::uint32_t command, CCmdCore& request, CCmdCore& answer) override {
        const cmddata::CommandInfo* info = cmddata::FindCommand(command);
        const std::string name =
            info != nullptr ? info->name : "command " + std::to_string(command);
        ++count_;
        char line[160];

        std::memset(region_.data(), 0, region_.size());
        CCmdWriter writer(region_.handle(), region_.size());
        writer.Write(&request);
        if (writer.GetLastError() != cmddata::result::kOk) {
            std::cout << "  ! writing the " << name
                      << " request failed: " << HexWord(writer.GetLastError(), 4) << " "
                      << cmddata::ResultName(writer.GetLastError()) << "\n";
            return false;
        }
        const std::uint32_t sent = writer.GetPosition();
        if (!Save(name, "snd", sent)) return false;
        signals_.RequestReady();

        const WaitOutcome waited =
            signals_.WaitAnswer(timeoutMs_, [this] { return !child_.Ended(nullptr, nullptr); });
        if (waited != WaitOutcome::kSignalled) {
            std::string how;
            child_.Ended(nullptr, &how);
            if (waited == WaitOutcome::kPeerGone)
                std::cout << "  ! the vehicle side " << how << " without answering the " << name
                          << " request\n";
            else
                std::cout << "  ! no answer to the " << name << " request within " << timeoutMs_
                          << " ms: the vehicle side is not responding\n";
            return false;
        }

        CCmdReader reader(region_.handle(), region_.size());
        reader.Read(&answer);
        if (reader.GetLastError() != cmddata::result::kOk) {
            std::cout << "  ! the " << name << " answer does not decode: result "
                      << HexWord(reader.GetLastError(), 4) << " "
                      << cmddata::ResultName(reader.GetLastError()) << "\n";
            Save(name, "rcv", region_.size() < 256 ? region_.size() : 256);
            return false;
        }
        const std::uint32_t received = reader.GetPosition();
        if (!Save(name, "rcv", received)) return false;
        bytesSent_ += sent;
        bytesReceived_ += received;

        const std::uint32_t result = OutcomeOf(answer);
        std::snprintf(line, sizeof(line),
                      "  [%02u] %-22s request %5u bytes  answer %5u bytes  %s\n", count_,
                      name.c_str(), static_cast<unsigned>(sent), static_cast<unsigned>(received),
                      OutcomeName(result));
        std::cout << line;
        return true;
    }

    std::uint32_t Count() const { return count_; }
    std::uint64_t BytesSent() const { return bytesSent_; }
    std::uint64_t BytesReceived() const { return bytesReceived_; }

private:
    // The exact bytes of the message, as they lie at the start of the region.
    bool Save(const std::string& name, const char* side, std::uint32_t size) {
        if (saveDir_.empty()) return true;
        char file[64];
        std::snprintf(file, sizeof(file), "%02u-%s-%s.bin", count_, name.c_str(), side);
        const std::string path = (std::filesystem::path(saveDir_) / file).string();
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(region_.data()), size);
        if (!out) {
            std::cout << "  ! cannot write " << path << "\n";
            return false;
        }
        return true;
    }

    cmddata::SharedRegion& region_;
    Signals& signals_;
    os::Child& child_;
    std::uint32_t timeoutMs_;
    std::string saveDir_;
    std::uint32_t count_ = 0;
    std::uint64_t bytesSent_ = 0;
    std::uint64_t bytesReceived_ = 0;
};

bool ValidFault(const std::string& fault) {
    for (const char* kind : {"exit:", "mute:", "garble:"}) {
        const std::size_t n = std::strlen(kind);
        std::uint64_t k = 0;
        if (fault.compare(0, n, kind) == 0 && ParseNumber(fault.substr(n), 1000000, &k) && k > 0)
            return true;
    }
    return false;
}

}  // namespace

int RunDemo(const std::vector<std::string>& args) {
    ParsedArgs parsed;
    std::string error;
    if (!ParseArgs(args, {{"--save", true}, {"--timeout-ms", true}, {"--fault", true}}, &parsed,
                   &error))
        return UsageError("demo", error);
    if (parsed.help) {
        std::fputs(kHelp, stdout);
        return kExitOk;
    }
    if (!parsed.positional.empty())
        return UsageError("demo", "unexpected argument '" + parsed.positional[0] + "'");
    std::uint64_t timeoutMs = 5000;
    if (parsed.Has("--timeout-ms") &&
        (!ParseNumber(parsed.Get("--timeout-ms"), 600000, &timeoutMs) || timeoutMs == 0))
        return UsageError("demo", "--timeout-ms needs a number from 1 to 600000");
    const std::string fault = parsed.Get("--fault");
    if (parsed.Has("--fault") && !ValidFault(fault))
        return UsageError("demo", "--fault must be exit:K, mute:K or garble:K (K from 1)");
    const std::string saveDir = parsed.Get("--save");
    if (parsed.Has("--save")) {
        std::error_code ec;
        std::filesystem::create_directories(saveDir, ec);
        if (ec || saveDir.empty()) {
            std::fprintf(stderr, "cmddata demo: cannot create the directory '%s'\n",
                         saveDir.c_str());
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
    if (!signals.Create(name, &error)) {
        std::fprintf(stderr, "cmddata demo: %s\n", error.c_str());
        return kExitFailed;
    }
    const std::string self = os::SelfPath();
    std::vector<std::string> childArgs = {"cmddata",      "vehicle-side",
                                          "--region",     name,
                                          "--parent",     std::to_string(os::ProcessId()),
                                          "--timeout-ms", std::to_string(timeoutMs)};
    if (!fault.empty()) {
        childArgs.push_back("--fault");
        childArgs.push_back(fault);
    }
    os::Child child;
    if (self.empty() || !child.Start(self, childArgs, &error)) {
        std::fprintf(stderr, "cmddata demo: %s\n",
                     self.empty() ? "cannot find this program's own path" : error.c_str());
        return kExitFailed;
    }
    std::cout << "requesting side: process " << os::ProcessId() << ", region '" << name << "' ("
              << region.size() << " bytes)\n"
              << "vehicle side:    process " << child.Id() << "\n";

    DemoSession session(region, signals, child, static_cast<std::uint32_t>(timeoutMs), saveDir);
    bool ok = true;
    std::size_t familyCount = 0;
    const Family* const* families = Families(&familyCount);
    for (std::size_t i = 0; i < familyCount && ok; ++i) {
        std::cout << "\n== " << families[i]->title << "\n";
        ok = families[i]->play(session);
    }

    signals.EndSession();
    int code = 0;
    std::string how;
    if (!child.Wait(static_cast<std::uint32_t>(timeoutMs), &code, &how)) {
        child.Kill();
        how = "did not end within " + std::to_string(timeoutMs) + " ms and was stopped";
        code = -1;
    }
    std::cout << "\n"
              << session.Count() << " exchanges, " << session.BytesSent() << " bytes requested, "
              << session.BytesReceived() << " bytes answered; vehicle side " << how << "\n";
    if (!ok) {
        std::cout << "demo FAILED: the exchange above broke off\n";
        return kExitFailed;
    }
    if (code != 0) {
        std::cout << "demo FAILED: the vehicle side did not end cleanly\n";
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace cmdtool
