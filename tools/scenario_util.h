// Small helpers the scenario files share: texts in and out of CCmdString, id lists, raw samples.
#pragma once

#include <cstdint>
#include <string>

#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "text.h"

namespace cmdtool {

/// Stores ASCII text as 16-bit characters with the terminator, as the peers expect.
inline void SetText(CCmdString& target, const std::string& text) {
    const std::u16string wide = Ascii16(text);
    target = reinterpret_cast<const std::uint16_t*>(wide.c_str());
}

/// The text for printing (UTF-8, up to the terminator).
inline std::string TextOf(const CCmdString& text) {
    return Utf16ToUtf8(text.GetBytes(), text.GetSize(), nullptr);
}

inline void AddWordId(CCmdList<CCmdWordId>& list, std::uint16_t id) {
    list.GetAt(list.AddTail()) = id;
}

inline void AddByte(CCmdList<CCmdByteData>& list, std::uint8_t value) {
    list.GetAt(list.AddTail()) = value;
}

/// A raw value as little-endian bytes of the given width (1 to 4).
inline void SetRaw(CCmdBuffer& buffer, std::uint32_t raw, std::uint32_t width) {
    unsigned char bytes[4] = {static_cast<unsigned char>(raw), static_cast<unsigned char>(raw >> 8),
                              static_cast<unsigned char>(raw >> 16),
                              static_cast<unsigned char>(raw >> 24)};
    buffer.SetAt(bytes, width > 4 ? 4 : width);
}

/// The little-endian raw value held in a buffer (its first four bytes at most).
inline std::uint32_t RawOf(const CCmdBuffer& buffer) {
    std::uint32_t raw = 0;
    for (std::uint32_t i = 0; i < buffer.GetSize() && i < 4; ++i)
        raw |= static_cast<std::uint32_t>(buffer.GetAt()[i]) << (8 * i);
    return raw;
}

}  // namespace cmdtool
