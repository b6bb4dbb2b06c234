// POSIX side of the platform layer: shared-memory descriptors, mmap, gettid, pthread locks.
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

#include "cmddata/platform/platform.h"
#include "cmddata_internal/ansi1252.h"

namespace cmddata {
namespace platform {

MappingHandle InvalidMapping() { return -1; }

namespace {
// Maps the whole object; the caller owns the view.
unsigned char* MapFresh(int mapping, std::size_t* viewSize) {
    *viewSize = 0;
    struct stat st;
    if (mapping < 0 || fstat(mapping, &st) != 0 || st.st_size <= 0) return nullptr;
    // Beyond the address space of a 32-bit process, the size would wrap.
    if (static_cast<std::uint64_t>(st.st_size) > SIZE_MAX) return nullptr;
    void* view = mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ | PROT_WRITE,
                      MAP_SHARED, mapping, 0);
    if (view == MAP_FAILED) return nullptr;
    *viewSize = static_cast<std::size_t>(st.st_size);
    return static_cast<unsigned char*>(view);
}

// The streams' views, one per mapping object and size, kept for the life of the process. An
// object is known by its device and inode, not by the descriptor's number: a number is reused
// once closed, while the inode of an object stays taken for as long as a view of it exists.
struct SharedView {
    dev_t device;
    ino_t inode;
    std::size_t size;
    unsigned char* view;
};
std::mutex& ViewsLock() {
    static std::mutex lock;
    return lock;
}
std::vector<SharedView>& Views() {
    static std::vector<SharedView>* views = new std::vector<SharedView>();  // outlives statics
    return *views;
}
}  // namespace

unsigned char* MapWholeView(MappingHandle mapping, std::size_t* viewSize) {
    *viewSize = 0;
    struct stat st;
    if (mapping < 0 || fstat(mapping, &st) != 0 || st.st_size <= 0) return nullptr;
    if (static_cast<std::uint64_t>(st.st_size) > SIZE_MAX) return nullptr;
    const std::size_t size = static_cast<std::size_t>(st.st_size);
    std::lock_guard<std::mutex> hold(ViewsLock());
    std::vector<SharedView>& views = Views();
    for (const SharedView& v : views) {
        if (v.device == st.st_dev && v.inode == st.st_ino && v.size == size) {
            *viewSize = v.size;
            return v.view;
        }
    }
    std::size_t mapped = 0;
    unsigned char* view = MapFresh(mapping, &mapped);
    if (view == nullptr) return nullptr;
    try {
        // Resized between the two looks: used, but not remembered under the older size.
        if (mapped == size) views.push_back(SharedView{st.st_dev, st.st_ino, size, view});
    } catch (...) {
        // Not remembered: this stream still gets its view, the next one maps another.
    }
    *viewSize = mapped;
    return view;
}

// Every message constructor asks for the thread id; a system call each time would cost more than
// the message. Four bytes fit in the static room glibc keeps for libraries opened later (dlopen,
// ctypes), which the initial-exec model needs.
__thread std::uint32_t detail::cachedThreadId = 0;

namespace {
void ForgetThreadId() { detail::cachedThreadId = 0; }
const int kForgetOnFork = pthread_atfork(nullptr, nullptr, &ForgetThreadId);
}  // namespace

std::uint32_t detail::FetchThreadId() {
    (void)kForgetOnFork;
    return detail::cachedThreadId = static_cast<std::uint32_t>(syscall(SYS_gettid));
}

std::size_t WideToAnsi(const std::uint16_t* text, char* out, std::size_t outSize) {
    std::size_t n = 0;
    for (const std::uint16_t* p = text;; ++p) {
        std::uint16_t ch = *p;
        // A surrogate pair is one character outside the page: one '?'.
        if (ch >= 0xD800 && ch <= 0xDBFF && p[1] >= 0xDC00 && p[1] <= 0xDFFF) ++p;
        if (n == outSize) return 0;
        out[n++] = (ch >= 0xD800 && ch <= 0xDFFF) ? '?' : detail::To1252(ch);
        if (ch == 0) return n;
    }
}

bool IsWideDigit(std::uint16_t ch) { return ch >= u'0' && ch <= u'9'; }

static_assert(sizeof(std::recursive_mutex) <= 64, "lock storage too small");

RecursiveLock::RecursiveLock() { new (storage_) std::recursive_mutex(); }
RecursiveLock::~RecursiveLock() {
    reinterpret_cast<std::recursive_mutex*>(storage_)->~recursive_mutex();
}
void RecursiveLock::Lock() { reinterpret_cast<std::recursive_mutex*>(storage_)->lock(); }
void RecursiveLock::Unlock() { reinterpret_cast<std::recursive_mutex*>(storage_)->unlock(); }

namespace {
bool ShmName(const char* name, char* out) {
    // shm_open wants one leading slash and no other.
    if (std::strchr(name, '/') != nullptr) return false;
    return std::snprintf(out, 64, "/%s", name) < 64;
}

// The region's own view, unmapped by CloseRegion: never one of the streams' shared views.
bool MapOwn(RegionParts* out) {
    out->view = MapFresh(out->handle, &out->size);
    // A region's size is a 32-bit count: a larger object is not one this library made.
    if (out->view != nullptr && out->size > 0xFFFFFFFFu) {
        munmap(out->view, out->size);
        out->view = nullptr;
    }
    return out->view != nullptr;
}
}  // namespace

bool CreateRegion(const char* name, std::uint32_t size, RegionParts* out) {
    *out = RegionParts{-1, nullptr, 0, false, {}};
    if (size == 0) return false;
    if (name == nullptr || *name == '\0') {
        out->handle = static_cast<int>(syscall(SYS_memfd_create, "cmddata", 1u /*CLOEXEC*/));
    } else {
        if (!ShmName(name, out->name)) return false;
        out->handle = shm_open(out->name, O_CREAT | O_EXCL | O_RDWR, 0600);
        out->unlinkOnClose = out->handle >= 0;
    }
    if (out->handle < 0 || ftruncate(out->handle, size) != 0 || !MapOwn(out)) {
        CloseRegion(out);
        return false;
    }
    return true;
}

bool OpenRegion(const char* name, RegionParts* out) {
    *out = RegionParts{-1, nullptr, 0, false, {}};
    if (name == nullptr || !ShmName(name, out->name)) return false;
    out->handle = shm_open(out->name, O_RDWR, 0600);
    if (out->handle < 0 || !MapOwn(out)) {
        CloseRegion(out);
        return false;
    }
    return true;
}

void CloseRegion(RegionParts* parts) {
    if (parts->view != nullptr) munmap(parts->view, parts->size);
    if (parts->handle >= 0) close(parts->handle);
    if (parts->unlinkOnClose) shm_unlink(parts->name);
    *parts = RegionParts{-1, nullptr, 0, false, {}};
}

}  // namespace platform
}  // namespace cmddata
