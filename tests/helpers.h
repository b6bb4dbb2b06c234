// Test helpers: a region in plain memory, hex views and write/read round trips.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cmddata/cmddata.h"

namespace testing_cmddata {

/// A heap region of exactly size bytes, so AddressSanitizer sees any step outside it.
class Region {
public:
    explicit Region(std::uint32_t size = 4096) : bytes_(size, 0xEE) {}
    CCmdWriter Writer() {
        CCmdWriter w;
        w.AttachView(bytes_.data(), static_cast<std::uint32_t>(bytes_.size()));
        return w;
    }
    CCmdReader Reader() {
        CCmdReader r;
        r.AttachView(bytes_.data(), static_cast<std::uint32_t>(bytes_.size()));
        return r;
    }
    unsigned char* data() { return bytes_.data(); }
    std::vector<unsigned char>& bytes() { return bytes_; }

private:
    std::vector<unsigned char> bytes_;
};

/// Lowercase hex of n bytes, no separators.
inline std::string Hex(const unsigned char* p, std::size_t n) {
    static const char* digits = "0123456789abcdef";
    std::string s;
    for (std::size_t i = 0; i < n; ++i) {
        s += digits[p[i] >> 4];
        s += digits[p[i] & 15];
    }
    return s;
}

/// The bytes the object writes (and the writer's last error must be 0).
inline std::string WireHex(CCmdCore& object, std::uint32_t capacity = 1 << 16) {
    Region region(capacity);
    CCmdWriter w = region.Writer();
    w.Write(&object);
    if (w.GetLastError() != 0) return "write failed";
    return Hex(region.data(), w.GetPosition());
}

/// A conversion table whose scalars are 0x11 to 0x1A in member order, with one display entry:
/// what the image tests look for at the table's offsets.
inline void FillImageTable(CCmdConversionTbl& t) {
    t.scaleNumerator = 0x11;
    t.scaleDenominator = 0x12;
    t.offset = 0x13;
    t.decimalPlaces = 0x14;
    t.signMode = 0x15;
    t.bitWidth = 0x16;
    t.displayEntries.AddTail();
    t.rangeLow = 0x17;
    t.rangeHigh = 0x18;
    t.graphLow = 0x19;
    t.graphHigh = 0x1A;
}

}  // namespace testing_cmddata
