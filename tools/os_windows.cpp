// Windows half of the tool's system services.
#include <windows.h>

#include <cstring>

#include "os.h"

namespace cmdtool {
namespace os {

namespace {
// Quotes one argument the way the C runtime splits command lines.
std::string Quote(const std::string& arg) {
    if (!arg.empty() && arg.find_first_of(" \t\"") == std::string::npos) return arg;
    std::string out = "\"";
    std::size_t slashes = 0;
    for (char c : arg) {
        if (c == '\\') {
            ++slashes;
            continue;
        }
        if (c == '"')
            out.append(slashes * 2 + 1, '\\');
        else
            out.append(slashes, '\\');
        slashes = 0;
        out += c;
    }
    out.append(slashes * 2, '\\');
    return out + "\"";
}
}  // namespace

bool ReadFileBytes(const std::string& path, std::size_t max, std::vector<unsigned char>* bytes,
                   bool* more, std::string* error) {
    bytes->clear();
    *more = false;
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        *error = path + " is a directory, not a file";
        return false;
    }
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        *error = "cannot open " + path + " (error " + std::to_string(GetLastError()) + ")";
        return false;
    }
    LARGE_INTEGER size;
    if (GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &size) &&
        static_cast<std::uint64_t>(size.QuadPart) > max) {
        *more = true;  // a huge file is refused without reading it
        CloseHandle(file);
        return true;
    }
    std::vector<unsigned char> chunk(64 * 1024);
    for (;;) {
        DWORD n = 0;
        if (!ReadFile(file, chunk.data(), static_cast<DWORD>(chunk.size()), &n, nullptr)) {
            const DWORD code = GetLastError();
            if (code == ERROR_BROKEN_PIPE || code == ERROR_HANDLE_EOF) break;
            *error = "cannot read " + path + " (error " + std::to_string(code) + ")";
            CloseHandle(file);
            return false;
        }
        if (n == 0) break;
        const std::size_t room = max - bytes->size();
        if (n > room) {
            bytes->insert(bytes->end(), chunk.begin(), chunk.begin() + room);
            *more = true;
            break;
        }
        bytes->insert(bytes->end(), chunk.begin(), chunk.begin() + n);
    }
    CloseHandle(file);
    return true;
}

std::uint32_t ProcessId() { return static_cast<std::uint32_t>(GetCurrentProcessId()); }

std::string SelfPath() {
    char path[MAX_PATH * 4];
    const DWORD n = GetModuleFileNameA(nullptr, path, sizeof(path));
    if (n == 0 || n >= sizeof(path)) return std::string();
    return std::string(path, n);
}

bool ProcessAlive(std::uint32_t pid) {
    HANDLE h = OpenProcess(SYNCHRONIZE, FALSE, pid);
    if (h == nullptr) return false;
    const bool alive = WaitForSingleObject(h, 0) == WAIT_TIMEOUT;
    CloseHandle(h);
    return alive;
}

void SleepMs(std::uint32_t ms) { Sleep(ms); }

Child::~Child() {
    if (started_ && !ended_) Kill();
    if (handle_ != nullptr) CloseHandle(static_cast<HANDLE>(handle_));
}

bool Child::Start(const std::string& path, const std::vector<std::string>& args,
                  std::string* error) {
    std::string line;
    for (const std::string& a : args) line += (line.empty() ? "" : " ") + Quote(a);
    std::vector<char> mutableLine(line.begin(), line.end());
    mutableLine.push_back('\0');
    STARTUPINFOA si{};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi{};
    if (!CreateProcessA(path.c_str(), mutableLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &si, &pi)) {
        *error = "cannot start " + path + ": system error " + std::to_string(GetLastError());
        return false;
    }
    CloseHandle(pi.hThread);
    handle_ = pi.hProcess;
    id_ = pi.dwProcessId;
    started_ = true;
    return true;
}

bool Child::Ended(int* exitCode, std::string* how) {
    if (!started_) return true;
    if (!ended_) {
        if (WaitForSingleObject(static_cast<HANDLE>(handle_), 0) == WAIT_TIMEOUT) return false;
        DWORD code = 0;
        GetExitCodeProcess(static_cast<HANDLE>(handle_), &code);
        ended_ = true;
        exitCode_ = static_cast<int>(code);
        how_ = "exited with code " + std::to_string(code);
    }
    if (exitCode != nullptr) *exitCode = exitCode_;
    if (how != nullptr) *how = how_;
    return true;
}

bool Child::Wait(std::uint32_t timeoutMs, int* exitCode, std::string* how) {
    if (started_ && !ended_) WaitForSingleObject(static_cast<HANDLE>(handle_), timeoutMs);
    return Ended(exitCode, how);
}

void Child::Kill() {
    if (!started_ || ended_) return;
    TerminateProcess(static_cast<HANDLE>(handle_), 137);
    WaitForSingleObject(static_cast<HANDLE>(handle_), 5000);
    ended_ = true;
    exitCode_ = 137;
    how_ = "killed";
}

Semaphore::~Semaphore() { Close(); }

bool Semaphore::Create(const std::string& name) {
    Close();
    name_ = "Local\\" + name;
    HANDLE h = CreateSemaphoreA(nullptr, 0, 0x7fffffff, name_.c_str());
    if (h == nullptr) return false;
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        CloseHandle(h);
        return false;
    }
    handle_ = h;
    owner_ = true;
    return true;
}

bool Semaphore::Open(const std::string& name) {
    Close();
    name_ = "Local\\" + name;
    HANDLE h = OpenSemaphoreA(SEMAPHORE_MODIFY_STATE | SYNCHRONIZE, FALSE, name_.c_str());
    if (h == nullptr) return false;
    handle_ = h;
    owner_ = false;
    return true;
}

bool Semaphore::Post() {
    return handle_ != nullptr && ReleaseSemaphore(static_cast<HANDLE>(handle_), 1, nullptr) != 0;
}

bool Semaphore::Wait(std::uint32_t timeoutMs) {
    return handle_ != nullptr &&
           WaitForSingleObject(static_cast<HANDLE>(handle_), timeoutMs) == WAIT_OBJECT_0;
}

// A Windows semaphore's name goes with its last handle.
void Semaphore::Close() {
    if (handle_ == nullptr) return;
    CloseHandle(static_cast<HANDLE>(handle_));
    handle_ = nullptr;
    owner_ = false;
}

RegionReader::~RegionReader() {
    if (view_ != nullptr) UnmapViewOfFile(view_);
    if (handle_ != nullptr) CloseHandle(handle_);
}

bool RegionReader::Open(const std::string& name, std::string* error) {
    if (name.empty() || name.size() > 63) {
        *error = "'" + name + "' is not a region name";
        return false;
    }
    name_ = name;
    fd_ = -1;  // the descriptor of the POSIX half
    handle_ = OpenFileMappingA(FILE_MAP_READ, FALSE, name.c_str());
    if (handle_ == nullptr) {
        *error = "cannot open the shared region '" + name + "' (no such region)";
        return false;
    }
    // A read-only view: nothing here can write to the region.
    view_ = static_cast<const unsigned char*>(MapViewOfFile(handle_, FILE_MAP_READ, 0, 0, 0));
    MEMORY_BASIC_INFORMATION info;
    if (view_ == nullptr || VirtualQuery(view_, &info, sizeof info) != sizeof info ||
        info.RegionSize == 0) {
        *error = "the shared region '" + name + "' is empty or cannot be mapped";
        return false;
    }
    size_ = info.RegionSize;
    return true;
}

// A mapping object keeps its size while a view of it exists.
std::uint64_t RegionReader::Size() { return size_; }

bool RegionReader::Read(std::uint64_t offset, void* out, std::uint32_t size) {
    if (view_ == nullptr || offset > size_ || size > size_ - offset) return false;
    std::memcpy(out, view_ + offset, size);
    return true;
}

// The system keeps the name while this process holds the mapping open.
bool RegionReader::StillNamed() { return true; }

namespace {
volatile LONG interrupted = 0;
BOOL WINAPI OnInterrupt(DWORD) {
    interrupted = 1;
    return TRUE;
}
}  // namespace

void CatchInterrupt() { SetConsoleCtrlHandler(OnInterrupt, TRUE); }

bool Interrupted() { return interrupted != 0; }

}  // namespace os
}  // namespace cmdtool
