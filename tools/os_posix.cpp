// POSIX half of the tool's system services.
#include <errno.h>
#include <fcntl.h>
#include <semaphore.h>
#include <signal.h>
#include <spawn.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "os.h"

extern char** environ;

namespace cmdtool {
namespace os {

std::uint32_t ProcessId() { return static_cast<std::uint32_t>(getpid()); }

std::string SelfPath() {
    char path[4096];
    const ssize_t n = readlink("/proc/self/exe", path, sizeof(path) - 1);
    if (n <= 0) return std::string();
    return std::string(path, static_cast<std::size_t>(n));
}

bool ProcessAlive(std::uint32_t pid) {
    return kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
}

void SleepMs(std::uint32_t ms) {
    timespec t{static_cast<time_t>(ms / 1000), static_cast<long>(ms % 1000) * 1000000L};
    while (nanosleep(&t, &t) != 0 && errno == EINTR) {
    }
}

Child::~Child() {
    if (started_ && !ended_) Kill();
}

bool ReadFileBytes(const std::string& path, std::size_t max, std::vector<unsigned char>* bytes,
                   bool* more, std::string* error) {
    bytes->clear();
    *more = false;
    // Non-blocking open: a named pipe nobody writes to would otherwise wait here for ever.
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        *error = "cannot open " + path + ": " + strerror(errno);
        return false;
    }
    struct stat st;
    if (fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
        *error = S_ISDIR(st.st_mode) ? path + " is a directory, not a file" : "cannot read " + path;
        close(fd);
        return false;
    }
    // Reads block again from here on: a pipe with a writer delivers what it is given.
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    if (S_ISREG(st.st_mode) && static_cast<std::uint64_t>(st.st_size) > max) {
        *more = true;  // a huge (perhaps sparse) file is refused without reading it
        close(fd);
        return true;
    }
    std::vector<unsigned char> chunk(64 * 1024);
    for (;;) {
        const ssize_t n = read(fd, chunk.data(), chunk.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            *error = "cannot read " + path + ": " + strerror(errno);
            close(fd);
            return false;
        }
        if (n == 0) break;
        const std::size_t room = max - bytes->size();
        if (static_cast<std::size_t>(n) > room) {
            bytes->insert(bytes->end(), chunk.begin(), chunk.begin() + room);
            *more = true;
            break;
        }
        bytes->insert(bytes->end(), chunk.begin(), chunk.begin() + n);
    }
    close(fd);
    return true;
}

bool Child::Start(const std::string& path, const std::vector<std::string>& args,
                  std::string* error) {
    std::vector<char*> argv;
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int rc = posix_spawn(&pid, path.c_str(), nullptr, nullptr, argv.data(), environ);
    if (rc != 0) {
        *error = std::string("cannot start ") + path + ": " + strerror(rc);
        return false;
    }
    started_ = true;
    id_ = static_cast<std::uint32_t>(pid);
    return true;
}

bool Child::Ended(int* exitCode, std::string* how) {
    if (!started_) return true;
    if (!ended_) {
        int status = 0;
        const pid_t r = waitpid(static_cast<pid_t>(id_), &status, WNOHANG);
        if (r == 0) return false;
        ended_ = true;
        if (r < 0) {
            exitCode_ = -1;
            how_ = "lost (cannot be waited for)";
        } else if (WIFEXITED(status)) {
            exitCode_ = WEXITSTATUS(status);
            how_ = "exited with code " + std::to_string(exitCode_);
        } else if (WIFSIGNALED(status)) {
            exitCode_ = 128 + WTERMSIG(status);
            how_ = std::string("killed by signal ") + std::to_string(WTERMSIG(status)) + " (" +
                   strsignal(WTERMSIG(status)) + ")";
        }
    }
    if (exitCode != nullptr) *exitCode = exitCode_;
    if (how != nullptr) *how = how_;
    return true;
}

bool Child::Wait(std::uint32_t timeoutMs, int* exitCode, std::string* how) {
    for (std::uint32_t waited = 0;; waited += 10) {
        if (Ended(exitCode, how)) return true;
        if (waited >= timeoutMs) return false;
        SleepMs(10);
    }
}

void Child::Kill() {
    if (!started_ || ended_) return;
    kill(static_cast<pid_t>(id_), SIGKILL);
    int status = 0;
    waitpid(static_cast<pid_t>(id_), &status, 0);
    ended_ = true;
    exitCode_ = 128 + SIGKILL;
    how_ = "killed";
}

Semaphore::~Semaphore() { Close(); }

bool Semaphore::Create(const std::string& name) {
    Close();
    const std::string full = "/" + name;
    sem_t* s = sem_open(full.c_str(), O_CREAT | O_EXCL, 0600, 0);
    if (s == SEM_FAILED) return false;
    handle_ = s;
    owner_ = true;
    name_ = full;
    return true;
}

bool Semaphore::Open(const std::string& name) {
    Close();
    const std::string full = "/" + name;
    sem_t* s = sem_open(full.c_str(), 0);
    if (s == SEM_FAILED) return false;
    handle_ = s;
    owner_ = false;
    name_ = full;
    return true;
}

bool Semaphore::Post() { return handle_ != nullptr && sem_post(static_cast<sem_t*>(handle_)) == 0; }

bool Semaphore::Wait(std::uint32_t timeoutMs) {
    if (handle_ == nullptr) return false;
    timespec until{};
    clock_gettime(CLOCK_REALTIME, &until);
    until.tv_sec += static_cast<time_t>(timeoutMs / 1000);
    until.tv_nsec += static_cast<long>(timeoutMs % 1000) * 1000000L;
    if (until.tv_nsec >= 1000000000L) {
        until.tv_sec += 1;
        until.tv_nsec -= 1000000000L;
    }
    for (;;) {
        if (sem_timedwait(static_cast<sem_t*>(handle_), &until) == 0) return true;
        if (errno != EINTR) return false;
    }
}

void Semaphore::Close() {
    if (handle_ == nullptr) return;
    sem_close(static_cast<sem_t*>(handle_));
    if (owner_) sem_unlink(name_.c_str());
    handle_ = nullptr;
    owner_ = false;
}

RegionReader::~RegionReader() {
    if (fd_ >= 0) close(fd_);
    handle_ = nullptr;  // the mapping of the Windows half
    view_ = nullptr;
}

bool RegionReader::Open(const std::string& name, std::string* error) {
    // The names the library gives its regions: one leading slash, no other.
    if (name.empty() || name.find('/') != std::string::npos || name.size() > 62) {
        *error = "'" + name + "' is not a region name";
        return false;
    }
    name_ = "/" + name;
    fd_ = shm_open(name_.c_str(), O_RDONLY, 0);
    if (fd_ < 0) {
        *error = "cannot open the shared region '" + name + "': " + strerror(errno);
        return false;
    }
    size_ = Size();
    if (size_ == 0) {
        *error = "the shared region '" + name + "' is empty";
        return false;
    }
    return true;
}

std::uint64_t RegionReader::Size() {
    struct stat st;
    if (fd_ < 0 || fstat(fd_, &st) != 0 || st.st_size < 0) return 0;
    return static_cast<std::uint64_t>(st.st_size);
}

// Read through the descriptor, not a mapping: a region that shrinks gives a short read here
// where a mapping would fault.
bool RegionReader::Read(std::uint64_t offset, void* out, std::uint32_t size) {
    unsigned char* to = static_cast<unsigned char*>(out);
    while (size > 0) {
        const ssize_t n = pread(fd_, to, size, static_cast<off_t>(offset));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        to += n;
        offset += static_cast<std::uint64_t>(n);
        size -= static_cast<std::uint32_t>(n);
    }
    return true;
}

bool RegionReader::StillNamed() {
    const int fd = shm_open(name_.c_str(), O_RDONLY, 0);
    if (fd < 0) return false;
    struct stat now, ours;
    const bool same = fstat(fd, &now) == 0 && fstat(fd_, &ours) == 0 && now.st_dev == ours.st_dev &&
                      now.st_ino == ours.st_ino;
    close(fd);
    return same;
}

namespace {
volatile sig_atomic_t interrupted = 0;
void OnInterrupt(int) { interrupted = 1; }
}  // namespace

void CatchInterrupt() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Interrupted() { return interrupted != 0; }

}  // namespace os
}  // namespace cmdtool
