// Forced into every GoogleTest source of a MinGW cross build. The win32 thread model has no
// std::mutex or std::condition_variable, which GoogleTest's own Notification is built on; this
// one waits on an atomic flag instead. GoogleTest uses it only to start its helper threads.
#pragma once

#include <atomic>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing {
namespace internal {

class Notification {
public:
    Notification() = default;
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;

    void Notify() { notified_.store(true, std::memory_order_release); }
    void WaitForNotification() {
        while (!notified_.load(std::memory_order_acquire)) {
        }
    }

private:
    std::atomic<bool> notified_{false};
};

}  // namespace internal
}  // namespace testing
