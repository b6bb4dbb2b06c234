// How the two demo processes tell each other that the region holds a message: three named
// semaphores beside the region (request ready, answer ready, end of session). Every wait is
// bounded and watches the other process, so neither side can hang on a peer that died.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "os.h"

namespace cmdtool {

enum class WaitOutcome { kSignalled, kTimedOut, kPeerGone, kEnded };

class Signals {
public:
    /// The requesting side creates the names (and removes them when destroyed).
    bool Create(const std::string& base, std::string* error);
    /// The vehicle side opens them.
    bool Open(const std::string& base, std::string* error);

    void RequestReady() { request_.Post(); }
    void AnswerReady() { answer_.Post(); }
    /// Tells the vehicle side that no more requests follow.
    void EndSession() {
        end_.Post();
        request_.Post();
    }

    /// Waits for a request; kEnded once the session is over. peerAlive is asked between slices.
    WaitOutcome WaitRequest(std::uint32_t timeoutMs, const std::function<bool()>& peerAlive);
    WaitOutcome WaitAnswer(std::uint32_t timeoutMs, const std::function<bool()>& peerAlive);

private:
    static WaitOutcome WaitOn(os::Semaphore& semaphore, std::uint32_t timeoutMs,
                              const std::function<bool()>& peerAlive);
    os::Semaphore request_;
    os::Semaphore answer_;
    os::Semaphore end_;
};

}  // namespace cmdtool
