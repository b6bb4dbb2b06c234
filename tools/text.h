// Small text helpers shared by the printers: hex, 16-bit text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

namespace cmdtool {

/// Bytes as "0c 80 00"; at most maxBytes, then " ...".
std::string HexBytes(const unsigned char* data, std::size_t size, std::size_t maxBytes = 64);
/// Bytes as one unbroken lowercase hex run (for JSON).
std::string HexRun(const unsigned char* data, std::size_t size);
/// value as 0x followed by 2 x width hex digits.
std::string HexWord(std::uint64_t value, unsigned width);
/// Classic hex view: offset, 16 bytes, printable ASCII; at most maxBytes shown.
void HexView(std::ostream& out, const unsigned char* data, std::size_t size, std::size_t baseOffset,
             std::size_t maxBytes, const std::string& indent);

/// Little-endian 16-bit text to UTF-8, up to its first NUL. *clean is false when the bytes are
/// not plain text (odd count, non-zero bytes after the NUL, control or unpaired characters);
/// such characters are shown as \uXXXX.
std::string Utf16ToUtf8(const unsigned char* data, std::size_t size, bool* clean);
/// 16-bit text from a NUL-terminated pointer (null gives "").
std::string Utf16ToUtf8(const std::uint16_t* text);
/// UTF-8/ASCII to a NUL-terminated 16-bit text (ASCII is all the demo needs).
std::u16string Ascii16(const std::string& text);

/// Case-insensitive substring test.
bool ContainsNoCase(const std::string& haystack, const std::string& needle);

}  // namespace cmdtool
