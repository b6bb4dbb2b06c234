// Counted byte runs: CCmdBuffer (u32 count) and CCmdString (u16 count, read as 16-bit text).
#pragma once

#include <cstdint>

#include "cmddata/core/core.h"

namespace cmddata {
namespace detail {
/// Bytes on the heap with a reference count in front of them: the one block behind buffers,
/// texts and held frame bytes. A copy shares the block; the last owner lets it go, whatever the
/// order of destruction.
class CMDDATA_API SharedBlock {
public:
    SharedBlock() = default;
    SharedBlock(const SharedBlock& other);
    SharedBlock& operator=(const SharedBlock&) = delete;
    ~SharedBlock();

    /// A new block of n bytes (contents undefined) with no owner yet, or null when memory runs
    /// out; give it to Reset.
    static unsigned char* Allocate(std::uint32_t n);
    /// Lets go of the block held and holds fresh (from Allocate, or null).
    void Reset(unsigned char* fresh = nullptr);
    /// A block for n bytes (n > 0) that this owner holds alone: the one held when nobody shares
    /// it and it fits without being more than twice too large, else a new one (the old one let
    /// go). Null when memory runs out; the old block is gone then too.
    unsigned char* Refill(std::uint32_t n);
    unsigned char* get() const { return data_; }

private:
    unsigned char* data_ = nullptr;
};
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

    const unsigned char* GetAt() const { return block_.get(); }
    /// The bytes, writable; a copy that shares the block sees what is written here.
    unsigned char* GetAddr() const { return block_.get(); }
    std::uint32_t GetSize() const { return size_; }

    void RemoveAll() override;
    /// Returns to the state of a new buffer but keeps the block for a read that follows at once
    /// to write into; that read lets it go if it brings no bytes. A list reading into items it
    /// held before uses it.
    void Renew();
    /// Reads prefix, count and bytes. A count larger than the bytes left in the region is not
    /// allocated for: the buffer stays empty and the reader is run to its end with kPastEnd.
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdBuffer"; }

private:
    friend struct cmddata::detail::Access;
    cmddata::detail::SharedBlock block_;
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

    const std::uint16_t* GetAt() const {
        return reinterpret_cast<const std::uint16_t*>(block_.get());
    }
    const unsigned char* GetBytes() const { return block_.get(); }
    std::uint16_t GetSize() const { return length_; }

    void RemoveAll() override;
    /// Returns to the state of a new string but keeps the block for a read that follows at once
    /// to write into; that read lets it go if it brings no bytes. A list reading into items it
    /// held before uses it.
    void Renew();
    /// Reads prefix, count and bytes. The block held before is let go only when a new one
    /// replaces it, so a count of 0 leaves the old pointer beside a length of 0. A count larger
    /// than the bytes left is not allocated for: the reader is run to its end with kPastEnd.
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdString"; }

private:
    friend struct cmddata::detail::Access;
    cmddata::detail::SharedBlock block_;
    std::uint16_t length_ = 0;
};
