// The demo's message history: a ring in the region, before the control block, to which the
// requesting side appends every message as it passes (its exchange, command, side, time and
// bytes), so that a watcher can follow the exchange without the two sides waiting for it or
// knowing it is there.
//
// The ring is written by one process and read by any number of others under a sequence
// protocol: the writer announces how far it is about to write (reserve) before it overwrites old
// records, writes the record, then publishes the record count (sequence) and the end. A reader
// copies a record and afterwards checks that the reserve has not reached it: a record it copied
// is whole, and one overwritten while it looked is noticed, never taken.
//
// Layout (u32 words, little-endian): magic, layout version, ring bytes, sequence (records
// published), end, reserve, ended (1 once no more follow), oldest record's position and its
// sequence number; the ring from kHistoryHeader on. Positions count bytes written (mod 2^32);
// a record lies at position % ring bytes and never wraps: a zero word there sends the reader
// to the ring's start.
#pragma once

#include <cstdint>
#include <vector>

namespace cmdtool {

constexpr std::uint32_t kHistoryMagic = 0x31574443;  // "CDW1"
constexpr std::uint32_t kHistoryHeader = 64;
constexpr std::uint32_t kRecordHeader = 40;

/// One message as the history keeps it.
struct HistoryRecord {
    std::uint32_t sequence = 0;        // from 1
    std::uint32_t size = 0;            // the message's bytes on the wire
    std::uint32_t command = 0;         // position in the catalogue + 1
    std::uint32_t side = 0;            // 0 request, 1 answer
    std::uint32_t exchange = 0;        // the demo's exchange number
    std::uint64_t timeUs = 0;          // microseconds since 1970, when it was written
    std::vector<unsigned char> bytes;  // all size bytes, unless kept is false
    bool kept = true;                  // false: too large for the ring, only its size is known
};

/// The requesting side's end: appends records to the ring at area (size bytes).
class HistoryWriter {
public:
    HistoryWriter(unsigned char* area, std::uint32_t size);
    void Append(std::uint32_t command, std::uint32_t side, std::uint32_t exchange,
                const unsigned char* bytes, std::uint32_t size);
    /// No more records follow.
    void End();

private:
    std::uint32_t Word(std::uint32_t offset) const;
    void Publish(std::uint32_t offset, std::uint32_t value);
    unsigned char* area_;
    std::uint32_t ring_;
    std::uint32_t sequence_ = 0;
    std::uint32_t end_ = 0;
    std::uint32_t oldest_ = 0;
    std::uint32_t oldestSequence_ = 1;
};

/// Reads the region's bytes for a HistoryReader (the watcher's read-only view).
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual bool Read(std::uint64_t offset, void* out, std::uint32_t size) = 0;
};

/// A watcher's end: follows the ring at base within a source.
class HistoryReader {
public:
    enum class Step { kRecord, kNothingNew, kEnded, kLost, kDamaged };

    HistoryReader(ByteSource& source, std::uint64_t base, std::uint32_t size)
        : source_(source), base_(base), size_(size) {}
    /// True when the area holds a history of this layout; the reader then starts at the oldest
    /// record still kept.
    bool Attach();
    /// The next record, or why there is none: nothing new yet, the writer ended, the region
    /// could not be read (lost), or the ring holds what no writer writes (damaged).
    Step Next(HistoryRecord* record);
    /// Records that went round the ring before they were read, so far.
    std::uint64_t Missed() const { return missed_; }

private:
    bool Header(std::uint32_t words[9]);
    bool Resync(const std::uint32_t words[9]);
    ByteSource& source_;
    std::uint64_t base_;
    std::uint32_t size_;
    std::uint32_t ring_ = 0;
    std::uint32_t next_ = 1;      // sequence number of the next record
    std::uint32_t position_ = 0;  // its position
    std::uint64_t missed_ = 0;
};

}  // namespace cmdtool
