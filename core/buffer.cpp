// Byte buffers and strings over reference-counted blocks.
#include "cmddata/core/buffer.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "cmddata_internal/procs.h"

namespace result = cmddata::result;
using cmddata::Result;

namespace cmddata {
namespace detail {
namespace {
// The count sits in front of the bytes, padded to the alignment malloc guarantees so that the
// bytes keep it: 8 in a 32-bit process (a 32-bit Windows heap gives no more), else max_align_t's.
constexpr std::size_t kHeadAlign = sizeof(void*) == 4 ? 8 : alignof(std::max_align_t);
struct alignas(kHeadAlign) BlockHead {
    std::atomic<std::uint32_t> refs;
    std::uint32_t capacity;
};
static_assert(sizeof(BlockHead) == kHeadAlign, "block head must keep the bytes aligned");

BlockHead* HeadOf(unsigned char* data) { return reinterpret_cast<BlockHead*>(data) - 1; }
}  // namespace

unsigned char* SharedBlock::Allocate(std::uint32_t size) {
    // With a 32-bit size_t the head plus a size near 4 GB would wrap to a tiny block.
    const std::size_t total = sizeof(BlockHead) + static_cast<std::size_t>(size);
    if (total < size) return nullptr;
    void* raw = std::malloc(total);
    if (raw == nullptr) return nullptr;
    BlockHead* head = new (raw) BlockHead{{1}, size};
    return reinterpret_cast<unsigned char*>(head + 1);
}

unsigned char* SharedBlock::Refill(std::uint32_t n) {
    if (data_ != nullptr) {
        BlockHead* head = HeadOf(data_);
        const std::uint64_t room = head->capacity;
        // Only a block nobody else sees is written over; one far too large is let go.
        if (head->refs.load(std::memory_order_acquire) == 1 && room >= n && room / 2 <= n + 64u)
            return data_;
    }
    Reset(Allocate(n));
    return data_;
}

SharedBlock::SharedBlock(const SharedBlock& other) : data_(other.data_) {
    if (data_ != nullptr) HeadOf(data_)->refs.fetch_add(1, std::memory_order_relaxed);
}

SharedBlock::~SharedBlock() { Reset(); }

void SharedBlock::Reset(unsigned char* fresh) {
    unsigned char* old = data_;
    data_ = fresh;
    if (old == nullptr) return;
    BlockHead* head = HeadOf(old);
    if (head->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        head->~BlockHead();
        std::free(head);
    }
}
}  // namespace detail
}  // namespace cmddata

using cmddata::detail::SharedBlock;

// ---- CCmdBuffer -------------------------------------------------------------------------------

CCmdBuffer::CCmdBuffer(const CCmdBuffer& other) = default;

CCmdBuffer::~CCmdBuffer() = default;

void CCmdBuffer::operator=(const CCmdBuffer& source) {
    if (source.size_ == 0)
        RemoveAll();
    else
        SetAt(source.block_.get(), source.size_);
}

Result CCmdBuffer::SetSize(std::uint32_t n) {
    RemoveAll();
    if (n == 0) return result::kOk;
    unsigned char* fresh = SharedBlock::Allocate(n);
    if (fresh == nullptr) return result::kOutOfMemory;
    std::memset(fresh, 0, n);  // defined contents: nothing stale can travel
    block_.Reset(fresh);
    size_ = n;
    return result::kOk;
}

Result CCmdBuffer::SetAt(const unsigned char* source, std::uint32_t n) {
    // The new block is filled before the old one goes, so a source inside it stays valid.
    unsigned char* fresh = (n == 0 || source == nullptr) ? nullptr : SharedBlock::Allocate(n);
    if (fresh != nullptr) std::memcpy(fresh, source, n);
    RemoveAll();
    if (n == 0 || source == nullptr) return result::kOk;
    if (fresh == nullptr) return result::kOutOfMemory;
    block_.Reset(fresh);
    size_ = n;
    return result::kOk;
}

Result CCmdBuffer::Add(const unsigned char* source, std::uint32_t n) {
    if (source == nullptr || n == 0) return result::kBadArgument;
    if (static_cast<std::uint64_t>(size_) + n > 0xFFFFFFFFull) return result::kBadArgument;
    unsigned char* grown = SharedBlock::Allocate(size_ + n);
    if (grown == nullptr) return result::kOutOfMemory;
    if (size_ != 0) std::memcpy(grown, block_.get(), size_);
    std::memcpy(grown + size_, source, n);
    block_.Reset(grown);
    size_ += n;
    return result::kOk;
}

void CCmdBuffer::RemoveAll() {
    block_.Reset();
    size_ = 0;
}

void CCmdBuffer::Renew() {
    CCmdCore::operator=(CCmdBuffer());  // a new buffer's version and reserved word
    size_ = 0;
}

void CCmdBuffer::Read(CCmdReader& reader) {
    cmddata::detail::ViaReader x{reader};
    cmddata::detail::ReadBytes(*this, x);
}

void CCmdBuffer::Write(CCmdWriter& writer) {
    cmddata::detail::ViaWriter x{writer};
    cmddata::detail::WriteBytes(*this, x);
}

void CCmdBuffer::Visit(cmddata::FieldProcessor& p) { p.Buffer(nullptr, *this); }

// ---- CCmdString -------------------------------------------------------------------------------

CCmdString::CCmdString(const CCmdString& other) = default;

CCmdString::~CCmdString() = default;

void CCmdString::operator=(const CCmdString& source) {
    if (source.length_ == 0)
        Initial();
    else
        SetAt(reinterpret_cast<const char*>(source.block_.get()), source.length_);
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
    unsigned char* fresh = SharedBlock::Allocate(count);  // filled before the old block goes
    if (fresh != nullptr) std::memcpy(fresh, text, count);
    Initial();
    if (fresh == nullptr) return;  // out of memory: an empty string rather than a dangling one
    block_.Reset(fresh);
    length_ = count;
}

void CCmdString::SetAt(const std::uint16_t* text, std::uint16_t count) {
    SetAt(reinterpret_cast<const char*>(text), static_cast<std::uint16_t>(count * 2u));
}

void CCmdString::Initial() {
    length_ = 0;
    block_.Reset();
}

void CCmdString::RemoveAll() { SetAt(static_cast<const char*>(nullptr), 0); }

void CCmdString::Renew() {
    CCmdCore::operator=(CCmdString());  // a new string's version and reserved word
    length_ = 0;
}

void CCmdString::Read(CCmdReader& reader) {
    cmddata::detail::ViaReader x{reader};
    cmddata::detail::ReadText(*this, x);
}

void CCmdString::Write(CCmdWriter& writer) {
    cmddata::detail::ViaWriter x{writer};
    cmddata::detail::WriteText(*this, x);
}

void CCmdString::Visit(cmddata::FieldProcessor& p) { p.String(nullptr, *this); }
