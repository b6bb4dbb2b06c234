// Unicode to Western ANSI (code page 1252), shared by the POSIX side of the platform layer.
#pragma once

#include <cstdint>

namespace cmddata {
namespace platform {
namespace detail {

// The 32 code points that code page 1252 places at 0x80..0x9F; 0 marks a byte the page leaves
// undefined, which the system maps to the same-numbered control character.
constexpr std::uint16_t kHigh1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

inline char To1252(std::uint16_t ch) {
    if (ch < 0x80 || (ch >= 0xA0 && ch <= 0xFF)) return static_cast<char>(ch);
    for (int i = 0; i < 32; ++i) {
        const std::uint16_t cp = kHigh1252[i];
        if (cp == ch || (cp == 0 && ch == 0x80 + i)) return static_cast<char>(0x80 + i);
    }
    return '?';
}

}  // namespace detail
}  // namespace platform
}  // namespace cmddata
