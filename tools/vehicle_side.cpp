// The demo's vehicle side (hidden subcommand 'vehicle-side', started by 'demo'): waits for a
// request, learns the command from its leading identifier, builds the matching classes through
// the registry, answers from the simulated vehicle and signals back.
#include <cstdio>
#include <cstring>
#include <memory>

#include "cli.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/shared_region.h"
#include "demo.h"
#include "os.h"
#include "registry.h"
#include "signalling.h"

namespace cmdtool {

namespace {

struct Fault {
    enum Kind { kNone, kExit, kMute, kGarble } kind = kNone;
    std::uint64_t at = 0;  // the request number (from 1) where it starts
};

bool ParseFault(const std::string& text, Fault* fault) {
    const struct {
        const char* prefix;
        Fault::Kind kind;
    } kinds[] = {{"exit:", Fault::kExit}, {"mute:", Fault::kMute}, {"garble:", Fault::kGarble}};
    for (const auto& k : kinds) {
        const std::size_t n = std::strlen(k.prefix);
        if (text.compare(0, n, k.prefix) == 0 && ParseNumber(text.substr(n), 1000000, &fault->at)) {
            fault->kind = k.kind;
            return true;
        }
    }
    return false;
}

// Builds the answer to the request in the region and writes it back there.
void Answer(cmddata::SharedRegion& region) {
    const cmddata::CommandInfo* command =
        CommandFromBytes(region.data(), region.size(), cmddata::Side::kSend);
    std::unique_ptr<CCmdCore> answer;
    std::uint32_t result = outcome::kDone;
    if (command == nullptr) {
        // Answer under the identifier we were given, so the requester can match it.
        std::uint32_t id = 0;
        std::memcpy(&id, region.data(), 4);
        answer.reset(new CCmdHeaderOnly(id, 1, 0));
        result = outcome::kUnknownCommand;
    } else {
        bool standIn = false;
        std::unique_ptr<CCmdCore> request =
            MakeMessage(*command, cmddata::Side::kSend,
                        cmddata::DefaultVersion(*command, cmddata::Side::kSend), &standIn);
        answer = MakeMessage(*command, cmddata::Side::kReceive,
                             cmddata::DefaultVersion(*command, cmddata::Side::kReceive), &standIn);
        if (!answer) answer.reset(new CCmdHeaderOnly(command->id, 1, 0));
        CCmdReader reader;
        reader.AttachView(region.data(), region.size());
        if (request) reader.Read(request.get());
        const Responder responder = FindResponder(command->id);
        if (!request || reader.GetLastError() != cmddata::result::kOk)
            result = outcome::kBadRequest;
        else if (responder == nullptr || standIn)
            result = outcome::kNotSupported;
        else
            result = responder(*request, *answer);
    }
    if (CCmdHeaderWords* words = dynamic_cast<CCmdHeaderWords*>(answer.get()))
        words->SetStatusWord(1, result);
    CCmdWriter writer;
    writer.AttachView(region.data(), region.size());
    writer.Write(answer.get());
    if (writer.GetLastError() != cmddata::result::kOk)
        std::fprintf(stderr, "vehicle side: writing the answer failed (0x%08x %s)\n",
                     static_cast<unsigned>(writer.GetLastError()),
                     cmddata::ResultName(writer.GetLastError()));
}

}  // namespace

int RunVehicleSide(const std::vector<std::string>& args) {
    ParsedArgs parsed;
    std::string error;
    if (!ParseArgs(
            args,
            {{"--region", true}, {"--parent", true}, {"--timeout-ms", true}, {"--fault", true}},
            &parsed, &error))
        return UsageError("vehicle-side", error);
    if (parsed.help) {
        std::puts(
            "usage: cmddata vehicle-side --region NAME --parent PID [--timeout-ms N]\n"
            "The simulated vehicle side of 'cmddata demo', which starts it.");
        return kExitOk;
    }
    std::uint64_t parent = 0;
    std::uint64_t timeoutMs = 5000;
    Fault fault;
    if (!parsed.Has("--region") || !ParseNumber(parsed.Get("--parent"), 0xFFFFFFFFu, &parent))
        return UsageError("vehicle-side", "needs --region NAME and --parent PID");
    if (parsed.Has("--timeout-ms") &&
        (!ParseNumber(parsed.Get("--timeout-ms"), 600000, &timeoutMs) || timeoutMs == 0))
        return UsageError("vehicle-side", "--timeout-ms needs a number from 1 to 600000");
    if (parsed.Has("--fault") && !ParseFault(parsed.Get("--fault"), &fault))
        return UsageError("vehicle-side", "bad --fault");

    cmddata::SharedRegion region = cmddata::SharedRegion::OpenNamed(parsed.Get("--region"));
    if (!region.IsValid()) {
        std::fprintf(stderr, "vehicle side: cannot open the region '%s'\n",
                     parsed.Get("--region").c_str());
        return kExitFailed;
    }
    Signals signals;
    if (!signals.Open(parsed.Get("--region"), &error)) {
        std::fprintf(stderr, "vehicle side: %s\n", error.c_str());
        return kExitFailed;
    }
    const std::uint32_t parentId = static_cast<std::uint32_t>(parent);
    for (std::uint64_t served = 1;; ++served) {
        const WaitOutcome waited =
            signals.WaitRequest(static_cast<std::uint32_t>(timeoutMs),
                                [parentId] { return os::ProcessAlive(parentId); });
        if (waited == WaitOutcome::kEnded) return kExitOk;
        if (waited == WaitOutcome::kPeerGone) {
            std::fprintf(stderr, "vehicle side: the requesting process went away\n");
            return kExitFailed;
        }
        const bool muted = fault.kind == Fault::kMute && served > fault.at;
        if (waited == WaitOutcome::kTimedOut && muted) {
            --served;  // a muted side keeps listening until the requester ends or goes
            continue;
        }
        if (waited == WaitOutcome::kTimedOut) {
            std::fprintf(stderr, "vehicle side: no request within %u ms; giving up\n",
                         static_cast<unsigned>(timeoutMs));
            return kExitFailed;
        }
        if (fault.kind == Fault::kExit && served >= fault.at) return 3;
        if (fault.kind == Fault::kMute && served >= fault.at) continue;
        Answer(region);
        if (fault.kind == Fault::kGarble && served == fault.at && region.size() > 20)
            std::memset(region.data() + 20, 0xFF, region.size() - 20);
        signals.AnswerReady();
    }
}

}  // namespace cmdtool
