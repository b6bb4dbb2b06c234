// Counted byte runs: CCmdBuffer (u32 count) and CCmdString (u16 count, read as 16-bit text).
#pragma once

#include <cstdint>

#include "cmddata/core/core.h"

namespace cmddata {
namespace detail {
// A heap block with a reference count in front of its bytes. Copy construction shares a block
// between objects; the count makes the last owner free it, whatever the order of destruction.
CMDDATA_API unsigned char* BlockAlloc(std::uint32_t size);  // count 1; null on failure
CMDDATA_API void BlockRetain(unsigned char* data);          // null is ignored
CMDDATA_API void BlockRelease(unsigned char* data);         // null is ignored
}  // namespace detail
}  // namespace cmddata

/// An owned run of raw bytes: version prefix, u32 byte count, then the bytes.
class CMDDATA_API CCmdBuffer : public CCmdCore {
public:
    CCmdBuffer() = default;
    /// Shares the source's block (no bytes are copied); either may be destroyed first.
    CCmdBuffer(const CCmdBuffer& other);
    ~CCmdBuffer() override;
    /// Deep copy. Returns nothing, as the callers know it.
    void operator=(const CCmdBuffer& source);

    /// Empties, then allocates n zeroed bytes. 0 or kOutOfMemory.
    cmddata::Result SetSize(std::uint32_t n);
    /// Empties, then copies n bytes from source (a null source or n of 0 leaves it empty).
    cmddata::Result SetAt(const unsigned char* source, std::uint32_t n);
    /// Appends n bytes; kBadArgument for a null source, n of 0 or a size past 32 bits.
    cmddata::Result Add(const unsigned char* source, std::uint32_t n);

    const unsigned char* GetAt() const { return data_; }
    unsigned char* GetAddr() const { return data_; }
    std::uint32_t GetSize() const { return size_; }

    void RemoveAll() override;
    /// Reads prefix, count and bytes. A count larger than the bytes left in the region is not
    /// allocated for: the buffer stays empty and the reader is run to its end with kPastEnd.
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdBuffer"; }

private:
    friend struct cmddata::detail::Access;
    unsigned char* data_ = nullptr;
    std::uint32_t size_ = 0;
};

/// An owned text, counted in bytes (u16): version prefix, u16 byte count, then the bytes.
class CMDDATA_API CCmdString : public CCmdCore {
public:
    CCmdString() = default;
    /// Shares the source's block (no bytes are copied); either may be destroyed first.
    CCmdString(const CCmdString& other);
    ~CCmdString() override;
    /// Deep copy. Returns nothing, as the callers know it.
    void operator=(const CCmdString& source);
    /// Stores the narrow text with its terminator (count taken modulo 65536).
    void operator=(const char* text);
    /// Stores the 16-bit text with its terminator: 2 x (characters + 1) bytes.
    void operator=(const std::uint16_t* text);

    /// Stores exactly count bytes of text, no terminator added.
    void SetAt(const char* text, std::uint16_t count);
    /// Stores count 16-bit characters (the byte count wraps at 65536).
    void SetAt(const std::uint16_t* text, std::uint16_t count);
    void Initial();

    const std::uint16_t* GetAt() const { return reinterpret_cast<const std::uint16_t*>(data_); }
    const unsigned char* GetBytes() const { return data_; }
    std::uint16_t GetSize() const { return length_; }

    void RemoveAll() override;
    /// Reads prefix, count and bytes. The block held before is let go only when a new one
    /// replaces it, so a count of 0 leaves the old pointer beside a length of 0. A count larger
    /// than the bytes left is not allocated for: the reader is run to its end with kPastEnd.
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdString"; }

private:
    friend struct cmddata::detail::Access;
    unsigned char* data_ = nullptr;
    std::uint16_t length_ = 0;
};
