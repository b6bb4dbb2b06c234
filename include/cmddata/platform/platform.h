// The operating system seen through one narrow door: mapping views, thread ids, a recursive
// lock and the narrow-text conversion. Nothing outside platform/ calls the system directly.
#pragma once

#include <cstddef>
#include <cstdint>

#include "cmddata/platform/export.h"

namespace cmddata {
namespace platform {

#if defined(_WIN32)
/// A file-mapping object handle (HANDLE).
using MappingHandle = void*;
#else
/// A shared-memory file descriptor.
using MappingHandle = int;
#endif

/// The value that names no mapping at all.
CMDDATA_API MappingHandle InvalidMapping();

/// Maps the whole mapping object read-write from its start. Returns null on failure; the view
/// size (bytes actually mapped) goes to *viewSize. Every call for the same mapping object gets
/// the same view (known by the object, not by the handle's value); views are never unmapped.
CMDDATA_API unsigned char* MapWholeView(MappingHandle mapping, std::size_t* viewSize);

#if defined(_WIN32)
/// The calling thread's 32-bit identifier.
CMDDATA_API std::uint32_t CurrentThreadId();
#else
namespace detail {
/// The calling thread's id once asked for: 0 until then, and 0 again in a forked child, whose
/// only thread has a new id. Initial-exec: a module that makes messages reads it with one load
/// beside the thread pointer.
extern CMDDATA_API __thread std::uint32_t cachedThreadId __attribute__((tls_model("initial-exec")));
/// Asks the system for the calling thread's id and keeps it in cachedThreadId.
CMDDATA_API std::uint32_t FetchThreadId();
}  // namespace detail

/// The calling thread's 32-bit identifier. Inline, since every message's constructor asks for
/// it: a call into the library cost more than the rest of a small message's construction.
inline std::uint32_t CurrentThreadId() {
    const std::uint32_t id = detail::cachedThreadId;
    return id != 0 ? id : detail::FetchThreadId();
}
#endif

/// Converts a NUL-terminated 16-bit text to narrow bytes in the Western ANSI code page (1252),
/// terminator included, into out[0..outSize). As the system call it mirrors, a destination that
/// is too small keeps the first bytes that fit and the call reports 0; otherwise it reports the
/// bytes written. Characters outside the code page become '?'.
CMDDATA_API std::size_t WideToAnsi(const std::uint16_t* text, char* out, std::size_t outSize);

/// The wide-character decimal digit test the vehicle-information accessors use.
CMDDATA_API bool IsWideDigit(std::uint16_t ch);

/// A recursive lock (a critical section on Windows, a recursive mutex elsewhere).
class CMDDATA_API RecursiveLock {
public:
    RecursiveLock();
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;
    void Lock();
    void Unlock();

private:
    // Storage large enough for either system object, so the header stays system-free.
    alignas(8) unsigned char storage_[64];
};

/// Owner of one mapping object and of this process's own view of it.
struct CMDDATA_API RegionParts {
    MappingHandle handle;
    unsigned char* view;
    std::size_t size;
    bool unlinkOnClose;  // POSIX: the creator removes the name
    char name[64];
};

/// Creates a mapping of size bytes; a null or empty name makes an anonymous one. Fails (returns
/// false) if a named mapping of that name exists already.
CMDDATA_API bool CreateRegion(const char* name, std::uint32_t size, RegionParts* out);
/// Opens an existing named mapping and maps it whole.
CMDDATA_API bool OpenRegion(const char* name, RegionParts* out);
/// Unmaps this process's own view, closes the handle and, for a creator on POSIX, removes the name.
CMDDATA_API void CloseRegion(RegionParts* parts);

}  // namespace platform
}  // namespace cmddata
