// The raw transfer, inlined for fixed widths: bound check, copy, verification compare, advance.
// Library-internal.
#pragma once

#include <cstdint>
#include <cstring>

#include "cmddata/core/core.h"

namespace cmddata {
namespace detail {

/// Reaches the private state of cores and streams for the library's own processors.
struct Access {
    static std::uint16_t& Version(CCmdCore& c) { return c.version_; }
    static std::uint16_t& Reserved(CCmdCore& c) { return c.reserved_; }
    static std::uint32_t& LastError(CCmdStreamBase& s) { return s.lastError_; }
    static unsigned char*& Position(CCmdStreamBase& s) { return s.position_; }
    static unsigned char* Base(CCmdStreamBase& s) { return s.base_; }
    static std::uint32_t Size(CCmdStreamBase& s) { return s.size_; }
};

// Makes the compiler assume any memory may have changed: the compare after the copy must really
// re-read both sides, since another process may be writing the region at the same time.
inline void Reload() { __asm__ __volatile__("" ::: "memory"); }

// Steps 2 to 6 of a transfer of count (>= 1) bytes; fromRegion says which way the bytes go.
inline Result Transfer(CCmdStreamBase& s, void* object, std::uint32_t count, bool fromRegion) {
    unsigned char*& pos = Access::Position(s);
    std::uint32_t& last = Access::LastError(s);
    if (pos == nullptr) return last = result::kNotAttached;
    // 64-bit sum: a 32-bit one could wrap and let a huge count through.
    const std::uint64_t used = static_cast<std::uint64_t>(pos - Access::Base(s));
    if (used + count > Access::Size(s)) return last = result::kPastEnd;
    if (fromRegion)
        std::memcpy(object, pos, count);
    else
        std::memcpy(pos, object, count);
    Reload();
    const Result r = std::memcmp(object, pos, count) == 0 ? result::kOk : result::kVerifyFailed;
    pos += count;
    return last = r;
}

template <std::uint32_t N>
inline Result ReadFixed(CCmdStreamBase& s, void* destination) {
    return Transfer(s, destination, N, true);
}
template <std::uint32_t N>
inline Result WriteFixed(CCmdStreamBase& s, const void* source) {
    return Transfer(s, const_cast<void*>(source), N, false);
}

}  // namespace detail
}  // namespace cmddata
