// Test helpers: a region in plain memory, hex views and write/read round trips.
#pragma once

#include <algorithm>
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

/// Hex written with spaces between fields, for reading; compared without them.
inline std::string Wire(std::string spaced) {
    spaced.erase(std::remove(spaced.begin(), spaced.end(), ' '), spaced.end());
    return spaced;
}

/// The bytes a hex string spells (spaces allowed).
inline std::vector<unsigned char> Unhex(const std::string& hex) {
    const std::string digits = Wire(hex);
    std::vector<unsigned char> out;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        out.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return out;
}

/// The four status words of a fresh header, and an empty list: prefix, count 0.
inline const std::string kNoStatus(32, '0');
inline const std::string kEmptyList = "0100000000000000";
/// An empty text: prefix and a byte count of 0.
inline const std::string kEmptyText = "010000000000";

/// Status words 1 to 4 set to first, first + 1, first + 2, first + 3.
inline void SetStatus(CCmdHeaderWords& h, std::uint32_t first) {
    for (int n = 1; n <= 4; ++n) h.SetStatusWord(n, first + static_cast<std::uint32_t>(n - 1));
}

/// A region holding hex bytes, one byte larger than they are; Reader() still sees only them.
class HexRegion {
public:
    explicit HexRegion(const std::string& hex)
        : region_(static_cast<std::uint32_t>(hex.size() / 2 + 1)), size_(hex.size() / 2) {
        for (std::size_t i = 0; i < size_; ++i)
            region_.data()[i] =
                static_cast<unsigned char>(std::stoi(hex.substr(2 * i, 2), nullptr, 16));
    }
    CCmdReader Reader() {
        CCmdReader reader;
        reader.AttachView(region_.data(), static_cast<std::uint32_t>(size_));
        return reader;
    }

private:
    Region region_;
    std::size_t size_;
};

/// Puts any object at a version through CCmdCore's own assignment, also where its constructor
/// fixes the version: a record takes the sender's version from a region, and an assignment
/// copies it.
inline void SetVersion(CCmdCore& object, std::uint16_t version) {
    class Carrier : public CCmdCore {
    public:
        explicit Carrier(std::uint16_t v) : CCmdCore(v, 0) {}
    };
    object = Carrier(version);
}

/// Reads hex bytes (a region of exactly their size) into object; returns the bytes consumed and
/// the reader's last error in *error.
inline std::uint32_t ReadHex(const std::string& hex, CCmdCore& object,
                             cmddata::Result* error = nullptr) {
    HexRegion region(hex);
    CCmdReader reader = region.Reader();
    reader.Read(&object);
    if (error != nullptr) *error = reader.GetLastError();
    return reader.GetPosition();
}

/// Writes sent into a region and reads exactly the bytes written into received; returns the
/// bytes the reader consumed and its last error in *error.
inline std::uint32_t Transfer(CCmdCore& sent, CCmdCore& received,
                              cmddata::Result* error = nullptr) {
    Region region(1 << 16);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    if (error != nullptr) *error = reader.GetLastError();
    return reader.GetPosition();
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
