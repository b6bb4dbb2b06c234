// Windows side of the platform layer: file mappings, thread ids, critical sections, ANSI text.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwctype>
#include <new>

#include "cmddata/platform/platform.h"

namespace cmddata {
namespace platform {

MappingHandle InvalidMapping() { return nullptr; }

namespace {
// The streams' views, one per mapping object, kept for the life of the process. An object is
// known by a duplicate of its handle, compared with the system's own test: a handle value is
// reused once closed, while the duplicate keeps its object (and so its identity) alive.
struct SharedView {
    HANDLE object;
    unsigned char* view;
    std::size_t size;
};
SRWLOCK viewsLock = SRWLOCK_INIT;
SharedView* views = nullptr;  // grown by hand: the lock is held and nothing may throw
std::size_t viewCount = 0;
std::size_t viewCapacity = 0;

using CompareHandles = BOOL(WINAPI*)(HANDLE, HANDLE);
// Windows 10 and later; without it every stream maps a view of its own, as it always did.
CompareHandles HandleComparer() {
    HMODULE module = GetModuleHandleA("kernelbase.dll");
    if (module == nullptr) module = GetModuleHandleA("kernel32.dll");
    if (module == nullptr) return nullptr;
    return reinterpret_cast<CompareHandles>(
        reinterpret_cast<void*>(GetProcAddress(module, "CompareObjectHandles")));
}

unsigned char* MapFresh(HANDLE mapping, std::size_t* viewSize) {
    void* view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0);
    if (view == nullptr) return nullptr;
    MEMORY_BASIC_INFORMATION info;
    if (VirtualQuery(view, &info, sizeof info) == sizeof info) *viewSize = info.RegionSize;
    return static_cast<unsigned char*>(view);
}

void Remember(HANDLE mapping, unsigned char* view, std::size_t size) {
    HANDLE process = GetCurrentProcess();
    HANDLE object = nullptr;
    if (!DuplicateHandle(process, mapping, process, &object, 0, FALSE, DUPLICATE_SAME_ACCESS))
        return;
    if (viewCount == viewCapacity) {
        const std::size_t grown = viewCapacity == 0 ? 8 : viewCapacity * 2;
        void* more = std::realloc(views, grown * sizeof(SharedView));
        if (more == nullptr) {
            CloseHandle(object);
            return;
        }
        views = static_cast<SharedView*>(more);
        viewCapacity = grown;
    }
    views[viewCount++] = SharedView{object, view, size};
}
}  // namespace

unsigned char* MapWholeView(MappingHandle mapping, std::size_t* viewSize) {
    *viewSize = 0;
    if (mapping == nullptr) return nullptr;
    static const CompareHandles same = HandleComparer();
    if (same == nullptr) return MapFresh(mapping, viewSize);
    AcquireSRWLockExclusive(&viewsLock);
    for (std::size_t i = 0; i < viewCount; ++i) {
        if (same(views[i].object, mapping)) {
            *viewSize = views[i].size;
            unsigned char* view = views[i].view;
            ReleaseSRWLockExclusive(&viewsLock);
            return view;
        }
    }
    unsigned char* view = MapFresh(mapping, viewSize);
    if (view != nullptr) Remember(mapping, view, *viewSize);
    ReleaseSRWLockExclusive(&viewsLock);
    return view;
}

std::uint32_t CurrentThreadId() { return GetCurrentThreadId(); }

std::size_t WideToAnsi(const std::uint16_t* text, char* out, std::size_t outSize) {
    // The system fills what fits before it reports a too-small destination; callers rely on it.
    const int n = WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<LPCWCH>(text), -1, out,
                                      static_cast<int>(outSize), nullptr, nullptr);
    return n > 0 ? static_cast<std::size_t>(n) : 0;
}

bool IsWideDigit(std::uint16_t ch) { return iswdigit(static_cast<wint_t>(ch)) != 0; }

static_assert(sizeof(CRITICAL_SECTION) <= 64, "lock storage too small");

RecursiveLock::RecursiveLock() {
    InitializeCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(storage_));
}
RecursiveLock::~RecursiveLock() {
    DeleteCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(storage_));
}
void RecursiveLock::Lock() { EnterCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(storage_)); }
void RecursiveLock::Unlock() {
    LeaveCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(storage_));
}

namespace {
bool MapOwn(RegionParts* out) {
    out->view = static_cast<unsigned char*>(MapViewOfFile(out->handle, FILE_MAP_WRITE, 0, 0, 0));
    if (out->view == nullptr) return false;
    MEMORY_BASIC_INFORMATION info;
    if (VirtualQuery(out->view, &info, sizeof info) != sizeof info) return false;
    out->size = info.RegionSize;
    return true;
}
}  // namespace

bool CreateRegion(const char* name, std::uint32_t size, RegionParts* out) {
    *out = RegionParts{nullptr, nullptr, 0, false, {}};
    if (size == 0) return false;
    const bool named = name != nullptr && *name != '\0';
    if (named && std::snprintf(out->name, sizeof out->name, "%s", name) >= 64) return false;
    out->handle = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size,
                                     named ? out->name : nullptr);
    // An existing mapping of that name belongs to someone else: refuse rather than share it.
    if (out->handle != nullptr && named && GetLastError() == ERROR_ALREADY_EXISTS) {
        CloseRegion(out);
        return false;
    }
    if (out->handle == nullptr || !MapOwn(out)) {
        CloseRegion(out);
        return false;
    }
    // The view is page-rounded; the region is what was asked for.
    out->size = size;
    return true;
}

bool OpenRegion(const char* name, RegionParts* out) {
    *out = RegionParts{nullptr, nullptr, 0, false, {}};
    if (name == nullptr || std::snprintf(out->name, sizeof out->name, "%s", name) >= 64)
        return false;
    out->handle = OpenFileMappingA(FILE_MAP_WRITE, FALSE, out->name);
    if (out->handle == nullptr || !MapOwn(out)) {
        CloseRegion(out);
        return false;
    }
    return true;
}

void CloseRegion(RegionParts* parts) {
    if (parts->view != nullptr) UnmapViewOfFile(parts->view);
    if (parts->handle != nullptr) CloseHandle(parts->handle);
    *parts = RegionParts{nullptr, nullptr, 0, false, {}};
}

}  // namespace platform
}  // namespace cmddata
