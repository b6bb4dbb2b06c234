#include "signalling.h"

#include <algorithm>

namespace cmdtool {

namespace {
constexpr std::uint32_t kSliceMs = 50;
}

bool Signals::Create(const std::string& base, std::string* error) {
    if (request_.Create(base + ".req") && answer_.Create(base + ".ans") &&
        end_.Create(base + ".end"))
        return true;
    *error = "cannot create the named semaphores for " + base;
    return false;
}

bool Signals::Open(const std::string& base, std::string* error) {
    if (request_.Open(base + ".req") && answer_.Open(base + ".ans") && end_.Open(base + ".end"))
        return true;
    *error = "cannot open the named semaphores of " + base;
    return false;
}

WaitOutcome Signals::WaitOn(os::Semaphore& semaphore, std::uint32_t timeoutMs,
                            const std::function<bool()>& peerAlive) {
    std::uint32_t waited = 0;
    for (;;) {
        const std::uint32_t slice = std::min(kSliceMs, timeoutMs - waited);
        if (semaphore.Wait(slice)) return WaitOutcome::kSignalled;
        waited += slice;
        if (peerAlive && !peerAlive()) {
            // It may have signalled just before it went.
            return semaphore.Wait(0) ? WaitOutcome::kSignalled : WaitOutcome::kPeerGone;
        }
        if (waited >= timeoutMs) return WaitOutcome::kTimedOut;
    }
}

WaitOutcome Signals::WaitRequest(std::uint32_t timeoutMs, const std::function<bool()>& peerAlive) {
    const WaitOutcome outcome = WaitOn(request_, timeoutMs, peerAlive);
    if (outcome == WaitOutcome::kSignalled && end_.Wait(0)) return WaitOutcome::kEnded;
    return outcome;
}

WaitOutcome Signals::WaitAnswer(std::uint32_t timeoutMs, const std::function<bool()>& peerAlive) {
    return WaitOn(answer_, timeoutMs, peerAlive);
}

}  // namespace cmdtool
