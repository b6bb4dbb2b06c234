// The few operating-system services the tool needs: its own path and id, a child process,
// named semaphores and a sleep. Two halves (os_posix.cpp, os_windows.cpp); CMake picks one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace cmdtool {
namespace os {

/// This process's id.
std::uint32_t ProcessId();
/// Path of the running executable (empty when the system will not say).
std::string SelfPath();
/// True while a process of this id exists.
bool ProcessAlive(std::uint32_t pid);
void SleepMs(std::uint32_t ms);

/// Reads a file's bytes, at most max of them: *more says there were more (the rest is not read,
/// so an endless or huge file costs max + 1 bytes at most). A named pipe without a writer reads
/// as empty instead of waiting for one. False with a one-line reason (directory, cannot open,
/// read error) on failure.
bool ReadFileBytes(const std::string& path, std::size_t max, std::vector<unsigned char>* bytes,
                   bool* more, std::string* error);

/// A child process started from an executable path and its arguments.
class Child {
public:
    Child() = default;
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Starts path with args (args[0] is the program name). False and a reason on failure.
    bool Start(const std::string& path, const std::vector<std::string>& args, std::string* error);
    /// Non-blocking: true when the child has ended; its exit code (or a description of the signal
    /// that ended it) goes to *how.
    bool Ended(int* exitCode, std::string* how);
    /// Waits up to timeoutMs for the end; true when it ended.
    bool Wait(std::uint32_t timeoutMs, int* exitCode, std::string* how);
    /// Ends the child at once (only this child, by its id) and reaps it.
    void Kill();
    bool Started() const { return started_; }
    std::uint32_t Id() const { return id_; }

private:
    bool started_ = false;
    bool ended_ = false;
    int exitCode_ = 0;
    std::string how_;
    std::uint32_t id_ = 0;
    void* handle_ = nullptr;  // process handle on Windows
};

/// A named counting semaphore shared between processes. The creator removes the name when it is
/// destroyed, so nothing named outlives a run.
class Semaphore {
public:
    Semaphore() = default;
    ~Semaphore();
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    /// Creates a new semaphore (count 0); fails if the name exists already.
    bool Create(const std::string& name);
    /// Opens one that another process created.
    bool Open(const std::string& name);
    bool Post();
    /// Waits up to timeoutMs; true when the count was taken.
    bool Wait(std::uint32_t timeoutMs);
    bool IsValid() const { return handle_ != nullptr; }
    void Close();

private:
    void* handle_ = nullptr;
    bool owner_ = false;
    std::string name_;
};

/// A named region opened for reading only: never mapped writable, never written. Reads copy out
/// of it and fail, rather than fault, when the region has shrunk under them.
class RegionReader {
public:
    RegionReader() = default;
    ~RegionReader();
    RegionReader(const RegionReader&) = delete;
    RegionReader& operator=(const RegionReader&) = delete;

    /// Opens the region; false with a one-line reason (no such region, or it is empty).
    bool Open(const std::string& name, std::string* error);
    /// The region's size now (0 when it cannot be told).
    std::uint64_t Size();
    /// Copies size bytes from offset; false when the region does not hold them (any more).
    bool Read(std::uint64_t offset, void* out, std::uint32_t size);
    /// False once the name no longer leads to this region (its creator removed it); true where
    /// the system keeps a name while anyone has the region open.
    bool StillNamed();

private:
    void* handle_ = nullptr;
    int fd_ = -1;
    const unsigned char* view_ = nullptr;
    std::uint64_t size_ = 0;
    std::string name_;
};

/// From now on an interrupt (Ctrl-C) or a termination request only sets a flag, so that a loop
/// can end in order; Interrupted() reads it.
void CatchInterrupt();
bool Interrupted();

}  // namespace os
}  // namespace cmdtool
