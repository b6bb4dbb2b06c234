#include "text.h"

#include <cctype>
#include <cstdio>

namespace cmdtool {

namespace {
const char kDigits[] = "0123456789abcdef";

void AppendUtf8(std::string& out, std::uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

void AppendEscaped(std::string& out, std::uint32_t unit) {
    char buf[8];
    std::snprintf(buf, sizeof(buf), "\\u%04x", static_cast<unsigned>(unit & 0xFFFF));
    out += buf;
}
}  // namespace

std::string HexBytes(const unsigned char* data, std::size_t size, std::size_t maxBytes) {
    std::string out;
    const std::size_t shown = size < maxBytes ? size : maxBytes;
    for (std::size_t i = 0; i < shown; ++i) {
        if (i != 0) out += ' ';
        out += kDigits[data[i] >> 4];
        out += kDigits[data[i] & 15];
    }
    if (shown < size) out += " ...";
    return out;
}

std::string HexRun(const unsigned char* data, std::size_t size) {
    std::string out;
    out.reserve(size * 2);
    for (std::size_t i = 0; i < size; ++i) {
        out += kDigits[data[i] >> 4];
        out += kDigits[data[i] & 15];
    }
    return out;
}

std::string HexWord(std::uint64_t value, unsigned width) {
    std::string out = "0x";
    for (int shift = static_cast<int>(width) * 8 - 4; shift >= 0; shift -= 4)
        out += kDigits[(value >> shift) & 15];
    return out;
}

void HexView(std::ostream& out, const unsigned char* data, std::size_t size, std::size_t baseOffset,
             std::size_t maxBytes, const std::string& indent) {
    const std::size_t shown = size < maxBytes ? size : maxBytes;
    for (std::size_t row = 0; row < shown; row += 16) {
        char line[128];
        int n = std::snprintf(line, sizeof(line), "%s%06zx  ", indent.c_str(), baseOffset + row);
        std::string text;
        for (std::size_t i = 0; i < 16; ++i) {
            if (row + i < shown) {
                const unsigned char b = data[row + i];
                n +=
                    std::snprintf(line + n, sizeof(line) - static_cast<std::size_t>(n), "%02x ", b);
                text += (b >= 0x20 && b < 0x7F) ? static_cast<char>(b) : '.';
            } else {
                n += std::snprintf(line + n, sizeof(line) - static_cast<std::size_t>(n), "   ");
            }
        }
        out << line << " " << text << "\n";
    }
    if (shown < size) out << indent << "... " << (size - shown) << " more bytes\n";
}

std::string Utf16ToUtf8(const unsigned char* data, std::size_t size, bool* clean) {
    std::string out;
    bool ok = size % 2 == 0;
    const std::size_t units = size / 2;
    std::size_t i = 0;
    for (; i < units; ++i) {
        std::uint32_t u = static_cast<std::uint32_t>(data[2 * i] | (data[2 * i + 1] << 8));
        if (u == 0) break;
        if (u >= 0xD800 && u <= 0xDBFF && i + 1 < units) {
            const std::uint32_t low =
                static_cast<std::uint32_t>(data[2 * i + 2] | (data[2 * i + 3] << 8));
            if (low >= 0xDC00 && low <= 0xDFFF) {
                AppendUtf8(out, 0x10000 + ((u - 0xD800) << 10) + (low - 0xDC00));
                ++i;
                continue;
            }
        }
        if (u < 0x20 || u == 0x7F || (u >= 0xD800 && u <= 0xDFFF)) {
            AppendEscaped(out, u);
            ok = false;
        } else {
            AppendUtf8(out, u);
        }
    }
    for (std::size_t j = 2 * i; j < size; ++j)
        if (data[j] != 0) ok = false;  // something hides behind the terminator
    if (clean != nullptr) *clean = ok;
    return out;
}

std::string Utf16ToUtf8(const std::uint16_t* text) {
    if (text == nullptr) return std::string();
    std::size_t n = 0;
    while (text[n] != 0) ++n;
    std::string bytes;
    for (std::size_t i = 0; i < n; ++i) {
        bytes += static_cast<char>(text[i] & 0xFF);
        bytes += static_cast<char>(text[i] >> 8);
    }
    return Utf16ToUtf8(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), nullptr);
}

std::u16string Ascii16(const std::string& text) {
    std::u16string out;
    for (char c : text) out += static_cast<char16_t>(static_cast<unsigned char>(c));
    return out;
}

bool ContainsNoCase(const std::string& haystack, const std::string& needle) {
    if (needle.empty()) return true;
    for (std::size_t i = 0; i + needle.size() <= haystack.size(); ++i) {
        std::size_t j = 0;
        while (j < needle.size() && std::tolower(static_cast<unsigned char>(haystack[i + j])) ==
                                        std::tolower(static_cast<unsigned char>(needle[j])))
            ++j;
        if (j == needle.size()) return true;
    }
    return false;
}

}  // namespace cmdtool
