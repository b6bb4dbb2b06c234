// The root of every serializable class and the two streams that move bytes through a region.
#pragma once

#include <atomic>
#include <cstdint>
#include <typeinfo>

#include "cmddata/core/result.h"
#include "cmddata/platform/export.h"
#include "cmddata/platform/platform.h"

namespace cmddata {
class FieldProcessor;
namespace detail {
struct Access;
}
}  // namespace cmddata

class CCmdReader;
class CCmdWriter;

namespace cmddata {
namespace detail {
/// True when the stream's type_info is the library's own CCmdReader / CCmdWriter: the usual case,
/// decided by one address compare. False proves nothing (see IsPlain).
template <class Stream>
inline bool IsPlainAtOnce(const Stream& s) {
    return &typeid(s) == &typeid(Stream);
}
/// True when the stream is exactly CCmdReader / CCmdWriter, not a class of the caller's own. The
/// full comparison (a name compare where type_info objects are not merged: a program linked to the
/// DLL has its own copy of the stream's vtable and type_info) runs only when the addresses differ.
template <class Stream>
inline bool IsPlain(const Stream& s) {
    return IsPlainAtOnce(s) || typeid(s) == typeid(Stream);
}
}  // namespace detail
}  // namespace cmddata

/// Root of every serializable object: a 16-bit version and a 16-bit reserved word.
class CMDDATA_API CCmdCore {
public:
    virtual ~CCmdCore() = default;
    /// Reads the 4-byte version prefix; a sender version above ours makes ours 0.
    virtual void Read(CCmdReader& reader);
    /// Writes the 4-byte version prefix.
    virtual void Write(CCmdWriter& writer);
    /// Empties the object; every class below the root overrides it.
    virtual void RemoveAll();
    /// Runs a field processor over the object's wire fields (processor.h).
    virtual void Visit(cmddata::FieldProcessor& p);

    std::uint16_t GetVersion() const { return version_; }
    std::uint16_t GetReserved() const { return reserved_; }

    CCmdCore(const CCmdCore&) = default;
    CCmdCore& operator=(const CCmdCore&) = default;

protected:
    explicit CCmdCore(std::uint16_t version = 1, std::uint16_t reserved = 0)
        : version_(version), reserved_(reserved) {}

private:
    friend struct cmddata::detail::Access;
    std::uint16_t version_;
    std::uint16_t reserved_;
};

namespace cmddata {
namespace detail {
class StreamState;
}
}  // namespace cmddata

/// Fields shared by both streams; kept in one place so the two stay identical.
class CMDDATA_API CCmdStreamBase {
public:
    /// Takes the view of the whole mapping that all streams over it share (mapped by the first,
    /// never unmapped) and sets position and base to it.
    /// The last error is left as it was. A size beyond the mapped view is cut to the view.
    void Attach(cmddata::platform::MappingHandle mapping, std::uint32_t size);
    /// Uses memory the caller has already mapped (or owns) as the region; nothing is mapped.
    /// Inline: a stream made for each message costs no call to begin. Position and base are two
    /// stores, not one wide store of both: a transfer that follows loads them one by one, and a
    /// load of the upper half of a wider store waits for it to reach the cache on processors that
    /// forward only from a store's first byte. The fence keeps the compiler from merging them.
    void AttachView(void* view, std::uint32_t size) {
        position_ = static_cast<unsigned char*>(view);
        size_ = size;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        base_ = position_;
    }
    std::uint32_t GetLastError() const { return lastError_; }
    /// Bytes moved so far: position minus base, unsigned (a view may lie above 2 GB).
    std::uint32_t GetPosition() const {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(position_) -
                                          reinterpret_cast<std::uintptr_t>(base_));
    }
    std::uint32_t GetSize() const { return size_; }
    const unsigned char* GetBase() const { return base_; }
    bool IsAttached() const { return position_ != nullptr; }

protected:
    CCmdStreamBase() = default;
    CCmdStreamBase(const CCmdStreamBase&) = default;
    CCmdStreamBase& operator=(const CCmdStreamBase&) = default;
    ~CCmdStreamBase() = default;

    friend struct cmddata::detail::Access;
    std::uint32_t lastError_ = 0;
    unsigned char* position_ = nullptr;
    unsigned char* base_ = nullptr;
    std::uint32_t size_ = 0;
};

/// Reads fields out of a region, bound-checked and verified by a compare after each copy.
class CMDDATA_API CCmdReader : public CCmdStreamBase {
public:
    CCmdReader() = default;
    CCmdReader(cmddata::platform::MappingHandle mapping, std::uint32_t size) {
        Attach(mapping, size);
    }
    CCmdReader(const CCmdReader&) = default;
    CCmdReader& operator=(const CCmdReader&) = default;
    /// Inline: a reader made for each message costs no call to end. The class's first virtual
    /// transfer, defined in the library, anchors its virtual table there.
    virtual ~CCmdReader() = default;

    /// Raw transfer of count bytes into destination; stores and returns the result.
    virtual cmddata::Result Read(void* destination, std::int32_t count);
    /// Object transfer: runs the object's own Read with this reader. Inline: a call on a reader
    /// of this very class goes straight to the object's Read.
    virtual void Read(CCmdCore* object) { object->Read(*this); }

    cmddata::Result Read(char* value) { return Read(static_cast<void*>(value), 1); }
    cmddata::Result Read(std::int16_t* value) { return Read(static_cast<void*>(value), 2); }
    cmddata::Result Read(std::int32_t* value) { return Read(static_cast<void*>(value), 4); }
    cmddata::Result Read(std::uint64_t* value) { return Read(static_cast<void*>(value), 8); }
};

/// Writes fields into a region, bound-checked and verified by a compare after each copy.
class CMDDATA_API CCmdWriter : public CCmdStreamBase {
public:
    CCmdWriter() = default;
    CCmdWriter(cmddata::platform::MappingHandle mapping, std::uint32_t size) {
        Attach(mapping, size);
    }
    CCmdWriter(const CCmdWriter&) = default;
    CCmdWriter& operator=(const CCmdWriter&) = default;
    /// Inline, as the reader's.
    virtual ~CCmdWriter() = default;

    /// Raw transfer of count bytes from source. A null source or count below 1 returns
    /// kBadArgument without storing it: the last error keeps its previous value.
    virtual cmddata::Result Write(const void* source, std::int32_t count);
    /// Object transfer: runs the object's own Write with this writer (inline, as the reader's).
    virtual void Write(CCmdCore* object) { object->Write(*this); }

    cmddata::Result Write(char value) { return Write(&value, 1); }
    cmddata::Result Write(std::int16_t value) { return Write(&value, 2); }
    cmddata::Result Write(std::int32_t value) { return Write(&value, 4); }
    cmddata::Result Write(std::uint64_t value) { return Write(&value, 8); }
};
