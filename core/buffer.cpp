// Byte buffers and strings over reference-counted blocks.
#include "cmddata/core/buffer.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "procs.h"

namespace result = cmddata::result;
using cmddata::Result;

namespace cmddata {
namespace detail {
namespace {
// The count sits in front of the bytes, padded to the alignment malloc guarantees so that the
// bytes keep it: 8 on 32-bit systems (a 32-bit Windows heap gives no more), else max_align_t's.
constexpr std::size_t kHeadAlign = sizeof(void*) == 4 ? 8 : alignof(std::max_align_t);
struct alignas(kHeadAlign) BlockHead {
    std::atomic<std::uint32_t> refs;
};
static_assert(sizeof(BlockHead) == kHeadAlign, "block head must keep the bytes aligned");

BlockHead* HeadOf(unsigned char* data) { return reinterpret_cast<BlockHead*>(data) - 1; }
}  // namespace

unsigned char* BlockAlloc(std::uint32_t size) {
    // With a 32-bit size_t the head plus a size near 4 GB would wrap to a tiny block.
    if (size > SIZE_MAX - sizeof(BlockHead)) return nullptr;
    void* raw = std::malloc(sizeof(BlockHead) + static_cast<std::size_t>(size));
    if (raw == nullptr) return nullptr;
    BlockHead* head = new (raw) BlockHead{{1}};
    return reinterpret_cast<unsigned char*>(head + 1);
}

void BlockRetain(unsigned char* data) {
    if (data != nullptr) HeadOf(data)->refs.fetch_add(1, std::memory_order_relaxed);
}

void BlockRelease(unsigned char* data) {
    if (data == nullptr) return;
    BlockHead* head = HeadOf(data);
    if (head->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        head->~BlockHead();
        std::free(head);
    }
}
}  // namespace detail
}  // namespace cmddata

using cmddata::detail::BlockAlloc;
using cmddata::detail::BlockRelease;
using cmddata::detail::BlockRetain;

// ---- CCmdBuffer -------------------------------------------------------------------------------

CCmdBuffer::CCmdBuffer(const CCmdBuffer& other)
    : CCmdCore(other), data_(other.data_), size_(other.size_) {
    BlockRetain(data_);
}

CCmdBuffer::~CCmdBuffer() { BlockRelease(data_); }

void CCmdBuffer::operator=(const CCmdBuffer& source) {
    if (source.size_ == 0)
        RemoveAll();
    else
        SetAt(source.data_, source.size_);
}

Result CCmdBuffer::SetSize(std::uint32_t n) {
    RemoveAll();
    if (n == 0) return result::kOk;
    data_ = BlockAlloc(n);
    if (data_ == nullptr) return result::kOutOfMemory;
    std::memset(data_, 0, n);  // defined contents: nothing stale can travel
    size_ = n;
    return result::kOk;
}

Result CCmdBuffer::SetAt(const unsigned char* source, std::uint32_t n) {
    // The new block is filled before the old one goes, so a source inside it stays valid.
    unsigned char* fresh = (n == 0 || source == nullptr) ? nullptr : BlockAlloc(n);
    if (fresh != nullptr) std::memcpy(fresh, source, n);
    RemoveAll();
    if (n == 0 || source == nullptr) return result::kOk;
    if (fresh == nullptr) return result::kOutOfMemory;
    data_ = fresh;
    size_ = n;
    return result::kOk;
}

Result CCmdBuffer::Add(const unsigned char* source, std::uint32_t n) {
    if (source == nullptr || n == 0) return result::kBadArgument;
    if (static_cast<std::uint64_t>(size_) + n > 0xFFFFFFFFull) return result::kBadArgument;
    unsigned char* grown = BlockAlloc(size_ + n);
    if (grown == nullptr) return result::kOutOfMemory;
    if (size_ != 0) std::memcpy(grown, data_, size_);
    std::memcpy(grown + size_, source, n);
    BlockRelease(data_);
    data_ = grown;
    size_ += n;
    return result::kOk;
}

void CCmdBuffer::RemoveAll() {
    BlockRelease(data_);
    data_ = nullptr;
    size_ = 0;
}

void CCmdBuffer::Read(CCmdReader& reader) {
    cmddata::detail::ViaReader x{reader};
    cmddata::detail::ReadBytes(*this, reader, x);
}

void CCmdBuffer::Write(CCmdWriter& writer) {
    cmddata::detail::ViaWriter x{writer};
    cmddata::detail::WriteBytes(*this, x);
}

void CCmdBuffer::Describe(cmddata::DescribeProc& proc) { proc.BufferBody(nullptr, *this); }

// ---- CCmdString -------------------------------------------------------------------------------

CCmdString::CCmdString(const CCmdString& other)
    : CCmdCore(other), data_(other.data_), length_(other.length_) {
    BlockRetain(data_);
}

CCmdString::~CCmdString() { BlockRelease(data_); }

void CCmdString::operator=(const CCmdString& source) {
    if (source.length_ == 0)
        Initial();
    else
        SetAt(reinterpret_cast<const char*>(source.data_), source.length_);
}

void CCmdString::operator=(const char* text) {
    SetAt(text, text == nullptr ? 0 : static_cast<std::uint16_t>(std::strlen(text) + 1));
}

void CCmdString::operator=(const std::uint16_t* text) {
    std::size_t n = 0;
    if (text != nullptr)
        while (text[n] != 0) ++n;
    SetAt(text, text == nullptr ? 0 : static_cast<std::uint16_t>(n + 1));
}

void CCmdString::SetAt(const char* text, std::uint16_t count) {
    if (count == 0 || text == nullptr) {
        Initial();
        return;
    }
    unsigned char* fresh = BlockAlloc(count);  // filled before the old block goes
    if (fresh != nullptr) std::memcpy(fresh, text, count);
    Initial();
    if (fresh == nullptr) return;  // out of memory: an empty string rather than a dangling one
    data_ = fresh;
    length_ = count;
}

void CCmdString::SetAt(const std::uint16_t* text, std::uint16_t count) {
    SetAt(reinterpret_cast<const char*>(text), static_cast<std::uint16_t>(count * 2u));
}

void CCmdString::Initial() {
    length_ = 0;
    BlockRelease(data_);
    data_ = nullptr;
}

void CCmdString::RemoveAll() { SetAt(static_cast<const char*>(nullptr), 0); }

void CCmdString::Read(CCmdReader& reader) {
    cmddata::detail::ViaReader x{reader};
    cmddata::detail::ReadText(*this, reader, x);
}

void CCmdString::Write(CCmdWriter& writer) {
    cmddata::detail::ViaWriter x{writer};
    cmddata::detail::WriteText(*this, x);
}

void CCmdString::Describe(cmddata::DescribeProc& proc) { proc.TextBody(nullptr, *this); }
