// The demo's vehicle side (hidden subcommand 'vehicle-side', started by 'demo'): waits for a
// request, recognises its command, checks it against the fill both sides expect (or hands it to
// a showcase), answers with the receive class filled the same way and signals back.
#include <cstdio>
#include <cstring>
#include <memory>

#include "cmddata/core/describe.h"
#include "cmddata/core/result.h"
#include "cmddata/core/shared_region.h"
#include "demo.h"
#include "os.h"
#include "registry.h"
#include "signalling.h"
#include "tool.h"

namespace cmdtool {

namespace {

using cmddata::Side;

// How the request's bytes name the command that the control block names. A message with a
// header is recognised by its identifier, read where each framing puts it (the two readings can
// both name a command: a version prefix reads as a small identifier); one without a header only
// by the control block.
Recognised Recognise(const cmddata::CommandInfo& told, const unsigned char* data) {
    const Side side = Side::kSend;
    if (told.FramingOf(side) == cmddata::Framing::kNone) return Recognised::kControlWord;
    if (CommandNamed(data, kMessageArea, cmddata::Framing::kHeader, &side) == &told)
        return Recognised::kPlainHeader;
    if (CommandNamed(data, kMessageArea, cmddata::Framing::kVersionedHeader, &side) == &told)
        return Recognised::kPrefixedHeader;
    return Recognised::kNot;
}

// Answers the request in the region (message area and control block) and writes the answer back;
// returns the answer's size.
std::uint32_t Answer(cmddata::SharedRegion& region, bool skew) {
    unsigned char* data = region.data();
    Control control = Control::Load(data + kControlOffset);
    const cmddata::CommandInfo* told =
        control.command >= 1 && control.command <= cmddata::kCommandCount
            ? &cmddata::kCommands[control.command - 1]
            : nullptr;
    const cmddata::ClassInfo* snd = told ? cmddata::FindMessageClass(*told, Side::kSend) : nullptr;
    const cmddata::ClassInfo* rcv =
        told ? cmddata::FindMessageClass(*told, Side::kReceive) : nullptr;
    std::unique_ptr<CCmdCore> answer;
    if (snd == nullptr || rcv == nullptr) {
        control.problem = "the control block names no built command";
    } else {
        control.recognised = Recognise(*told, data);
        if (control.recognised == Recognised::kNot)
            control.problem = std::string("its bytes do not name ") + told->name;
        const std::uint16_t sndVersion = cmddata::DefaultVersion(*told, Side::kSend);
        answer.reset(rcv->make(cmddata::DefaultVersion(*told, Side::kReceive)));
        if (control.showcase != 0) {
            const ShowcaseAnswer respond = FindShowcaseAnswer(control.showcase);
            std::unique_ptr<CCmdCore> request(snd->make(sndVersion));
            CCmdReader reader;
            reader.AttachView(data, kMessageArea);
            if (request) reader.Read(request.get());
            if (respond == nullptr)
                control.problem = "no showcase answer " + std::to_string(control.showcase);
            else if (!request || reader.GetLastError() != 0)
                control.problem = "the showcase request does not decode";
            else if (answer)
                respond(*request, *answer);
        } else {
            std::uint32_t size = 0;
            const std::string problem = CheckFilled(
                *snd, sndVersion, DemoSeed(*told, Side::kSend, skew), data, kMessageArea, &size);
            if (control.problem.empty() && !problem.empty()) control.problem = "request " + problem;
            if (answer) cmddata::Fill(*answer, DemoSeed(*told, Side::kReceive, skew));
        }
    }
    // Nothing of the request stays behind the answer.
    std::memset(data, 0, kMessageArea);
    std::uint32_t size = 0;
    if (answer) {
        CCmdWriter writer;
        writer.AttachView(data, kMessageArea);
        writer.Write(answer.get());
        if (writer.GetLastError() != 0 && control.problem.empty())
            control.problem = std::string("writing the answer failed: ") +
                              cmddata::ResultName(writer.GetLastError());
        size = writer.GetPosition();
    }
    control.answerSize = size;
    control.Store(data + kControlOffset);
    return size;
}

}  // namespace

int RunVehicleSide(const VehicleSideOptions& options) {
    cmddata::SharedRegion region = cmddata::SharedRegion::OpenNamed(options.region);
    if (!region.IsValid() || region.size() < kRegionSize) {
        std::fprintf(stderr, "vehicle side: cannot open the region '%s'\n", options.region.c_str());
        return kExitFailed;
    }
    Signals signals;
    std::string error;
    if (!signals.Open(options.region, &error)) {
        std::fprintf(stderr, "vehicle side: %s\n", error.c_str());
        return kExitFailed;
    }
    const Fault& fault = options.fault;
    const std::uint32_t parent = options.parent;
    for (std::uint64_t served = 1;; ++served) {
        const WaitOutcome waited =
            signals.WaitRequest(options.timeoutMs, [parent] { return os::ProcessAlive(parent); });
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
                         static_cast<unsigned>(options.timeoutMs));
            return kExitFailed;
        }
        if (fault.kind == Fault::kExit && served >= fault.at) return 3;
        if (fault.kind == Fault::kMute && served >= fault.at) continue;
        const std::uint32_t size = Answer(region, fault.kind == Fault::kSkew && served == fault.at);
        if (fault.kind == Fault::kGarble && served == fault.at)  // damaged from its middle on
            std::memset(region.data() + size / 2, 0xFF, kMessageArea - size / 2);
        signals.AnswerReady();
    }
}

}  // namespace cmdtool
