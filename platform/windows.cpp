// Windows side of the platform layer: file mappings, thread ids, critical sections, ANSI text.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <cwctype>
#include <new>

#include "cmddata/platform/platform.h"

namespace cmddata {
namespace platform {

MappingHandle InvalidMapping() { return nullptr; }

unsigned char* MapWholeView(MappingHandle mapping, std::size_t* viewSize) {
    *viewSize = 0;
    if (mapping == nullptr) return nullptr;
    void* view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0);
    if (view == nullptr) return nullptr;
    MEMORY_BASIC_INFORMATION info;
    if (VirtualQuery(view, &info, sizeof info) == sizeof info) *viewSize = info.RegionSize;
    return static_cast<unsigned char*>(view);
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
