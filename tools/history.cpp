#include "history.h"

#include <atomic>
#include <chrono>
#include <cstring>

namespace cmdtool {

namespace {

// Header words.
enum : std::uint32_t {
    kMagic = 0,
    kLayout = 4,
    kRing = 8,
    kSequence = 12,
    kEnd = 16,
    kReserve = 20,
    kEnded = 24,
    kOldest = 28,
    kOldestSequence = 32,
};

std::uint32_t Align8(std::uint32_t n) { return (n + 7u) & ~7u; }

std::uint32_t Get(const unsigned char* p) {
    std::uint32_t v;
    std::memcpy(&v, p, 4);
    return v;
}

void Put(unsigned char* p, std::uint32_t v) { std::memcpy(p, &v, 4); }

}  // namespace

HistoryWriter::HistoryWriter(unsigned char* area, std::uint32_t size)
    : area_(area), ring_((size - kHistoryHeader) & ~7u) {
    std::memset(area_, 0, kHistoryHeader);
    Put(area_ + kLayout, 1);
    Put(area_ + kRing, ring_);
    Put(area_ + kOldestSequence, 1);
    Publish(kMagic, kHistoryMagic);
}

std::uint32_t HistoryWriter::Word(std::uint32_t offset) const {
    return Get(area_ + kHistoryHeader + offset);
}

// A header word that readers look at: everything written before it is visible first.
void HistoryWriter::Publish(std::uint32_t offset, std::uint32_t value) {
    std::atomic_thread_fence(std::memory_order_release);
    Put(area_ + offset, value);
    std::atomic_thread_fence(std::memory_order_release);
}

void HistoryWriter::Append(std::uint32_t command, std::uint32_t side, std::uint32_t exchange,
                           const unsigned char* bytes, std::uint32_t size) {
    // A message larger than a quarter of the ring is recorded by its size alone.
    const bool kept = size <= ring_ / 4;
    const std::uint32_t length = Align8(kRecordHeader + (kept ? size : 0));
    std::uint32_t at = end_;
    const bool wraps = at % ring_ + length > ring_;
    if (wraps) at += ring_ - at % ring_;
    const std::uint32_t reserve = at + length;
    // Records the new one will overwrite stop being the oldest before a byte of them changes.
    while (reserve - oldest_ > ring_ && oldest_ != end_) {
        const std::uint32_t word = Word(oldest_ % ring_);
        oldest_ += word == 0 ? ring_ - oldest_ % ring_ : word;
        if (word != 0) ++oldestSequence_;
    }
    Publish(kOldestSequence, oldestSequence_);
    Publish(kOldest, oldest_);
    Publish(kReserve, reserve);
    if (wraps) Put(area_ + kHistoryHeader + end_ % ring_, 0);

    unsigned char* r = area_ + kHistoryHeader + at % ring_;
    const std::uint64_t now =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(
                                       std::chrono::system_clock::now().time_since_epoch())
                                       .count());
    const std::uint32_t words[10] = {length,
                                     sequence_ + 1,
                                     size,
                                     kept ? 1u : 0u,
                                     command,
                                     side,
                                     exchange,
                                     0,
                                     static_cast<std::uint32_t>(now),
                                     static_cast<std::uint32_t>(now >> 32)};
    std::memcpy(r, words, sizeof words);
    if (kept && size != 0) std::memcpy(r + kRecordHeader, bytes, size);
    ++sequence_;
    end_ = reserve;
    Publish(kEnd, end_);
    Publish(kSequence, sequence_);
}

void HistoryWriter::End() { Publish(kEnded, 1); }

bool HistoryReader::Header(std::uint32_t words[9]) {
    unsigned char header[36];
    if (!source_.Read(base_, header, sizeof header)) return false;
    std::atomic_thread_fence(std::memory_order_acquire);
    for (int i = 0; i < 9; ++i) words[i] = Get(header + 4 * i);
    return true;
}

bool HistoryReader::Attach() {
    std::uint32_t words[9];
    if (size_ < kHistoryHeader + 64 || !Header(words) || words[0] != kHistoryMagic || words[1] != 1)
        return false;
    ring_ = words[kRing / 4];
    if (ring_ < 64 || ring_ % 8 != 0 || ring_ > size_ - kHistoryHeader) return false;
    return Resync(words);
}

// Starts again at the oldest record still in the ring.
bool HistoryReader::Resync(const std::uint32_t words[9]) {
    const std::uint32_t oldestSequence = words[kOldestSequence / 4];
    if (oldestSequence > next_) missed_ += oldestSequence - next_;
    next_ = oldestSequence;
    position_ = words[kOldest / 4];
    return true;
}

HistoryReader::Step HistoryReader::Next(HistoryRecord* record) {
    std::uint32_t words[9];
    // Two tries: a record overwritten while it was copied sends the reader to the oldest one.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!Header(words) || words[0] != kHistoryMagic) return Step::kLost;
        const std::uint32_t published = words[kSequence / 4];
        if (published - (next_ - 1) > 0x7FFFFFFFu) return Step::kDamaged;  // behind the reader
        if (next_ > published) return words[kEnded / 4] == 1 ? Step::kEnded : Step::kNothingNew;
        std::uint32_t at = position_;
        unsigned char head[kRecordHeader];
        if (!source_.Read(base_ + kHistoryHeader + at % ring_, head, 4)) return Step::kLost;
        if (Get(head) == 0) at += ring_ - at % ring_;  // the record went to the ring's start
        const std::uint32_t offset = at % ring_;
        if (offset + kRecordHeader > ring_ ||
            !source_.Read(base_ + kHistoryHeader + offset, head, kRecordHeader))
            return Step::kLost;
        const std::uint32_t length = Get(head);
        record->sequence = Get(head + 4);
        record->size = Get(head + 8);
        record->kept = Get(head + 12) == 1;
        record->command = Get(head + 16);
        record->side = Get(head + 20);
        record->exchange = Get(head + 24);
        record->timeUs = Get(head + 32) | static_cast<std::uint64_t>(Get(head + 36)) << 32;
        const std::uint32_t kept = record->kept ? record->size : 0;
        const bool shaped =
            length >= kRecordHeader && length <= ring_ - offset && kept <= length - kRecordHeader;
        if (shaped) {
            record->bytes.resize(kept);
            if (kept != 0 && !source_.Read(base_ + kHistoryHeader + offset + kRecordHeader,
                                           record->bytes.data(), kept))
                return Step::kLost;
        }
        // Whole only if the writer had not begun to overwrite it when the copy was done.
        std::uint32_t after[9];
        if (!Header(after)) return Step::kLost;
        const bool overwritten = after[kReserve / 4] - position_ > ring_;
        if (!overwritten && shaped && record->sequence == next_) {
            ++next_;
            position_ = at + length;
            return Step::kRecord;
        }
        if (!overwritten) return Step::kDamaged;  // not a record this writer wrote
        Resync(after);
    }
    return Step::kNothingNew;
}

}  // namespace cmdtool
