// The compare after each copy must really read the region again: a compare that the compiler
// folded away (it "knows" both sides are equal right after the copy) or that was switched off
// would pass every test below.
//
// Two views of one mapping make it deterministic: a destination (or source) in the second view,
// one byte off the region's bytes in the first, is the same memory seen at another address. The
// copy then changes the very bytes it copies from, and only a compare that reads both sides again
// can see it. Where threads are available, another thread also keeps changing the region's bytes
// while objects pass through it, as a second process would; those tests repeat their transfers
// until the failure shows, up to a bound far above what it takes, and stop by themselves.
#include <gtest/gtest.h>

#include <chrono>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "helpers.h"

// The win32 thread model of some MinGW runtimes has no std::thread: the threaded tests are left
// out there, the two-view tests still run.
#if !defined(__GLIBCXX__) || defined(_GLIBCXX_HAS_GTHREADS)
#define CMDDATA_TEST_THREADS 1
#include <thread>
#endif

namespace {

using cmddata::result::kOk;
using cmddata::result::kVerifyFailed;

// A region in a fresh mapping, and a second view of the same mapping.
struct TwoViews {
    TwoViews() : region(cmddata::SharedRegion::Create(4096)) {
        CCmdReader mapper;
        mapper.Attach(region.handle(), region.size());  // maps a further view, never unmapped
        other = const_cast<unsigned char*>(mapper.GetBase());
    }
    cmddata::SharedRegion region;
    unsigned char* other = nullptr;
};

TEST(VerifyCompare, SecondViewReallyShowsTheSameBytes) {
    TwoViews v;
    ASSERT_TRUE(v.region.IsValid());
    ASSERT_NE(nullptr, v.other);
    ASSERT_NE(v.region.data(), v.other);
    v.region.data()[100] = 0x5A;
    EXPECT_EQ(0x5A, v.other[100]);
}

// From two bytes on (one byte copied one further on really does compare equal afterwards): a
// transfer whose other side is the region's own bytes one further on changes its own source, and
// only a compare that reads both sides again sees it. The same transfer into bytes apart from the
// region compares equal.
template <class Stream, class Move>
void ExpectAliasedTransferFails(Move move) {
    for (std::int32_t count : {2, 3, 4, 8, 24, 64, 100, 1000}) {
        SCOPED_TRACE(count);
        TwoViews v;
        ASSERT_NE(nullptr, v.other);
        unsigned char* view = v.region.data();
        for (int i = 0; i < 2048; ++i) view[i] = static_cast<unsigned char>(i * 37 + 1);
        Stream s;
        s.AttachView(view, 2048);
        EXPECT_EQ(kVerifyFailed, move(s, v.other + 1, count));
        EXPECT_EQ(kVerifyFailed, s.GetLastError());
        EXPECT_EQ(static_cast<std::uint32_t>(count), s.GetPosition());
        EXPECT_EQ(kOk, move(s, v.other + 3000, count));
        EXPECT_EQ(kOk, s.GetLastError());
    }
}

TEST(VerifyCompare, TransfersWithBytesThatAliasTheRegionFailTheCompare) {
    ExpectAliasedTransferFails<CCmdReader>(
        [](CCmdReader& r, unsigned char* p, std::int32_t n) { return r.Read(p, n); });
    ExpectAliasedTransferFails<CCmdWriter>(
        [](CCmdWriter& w, unsigned char* p, std::int32_t n) { return w.Write(p, n); });
}

// The same for a record's fixed-width field, which the library moves inline rather than through
// the raw transfer: a record placed in the second view so that its 32-bit value lies one byte
// before the region's bytes for it. Writing changes the record's own value under the compare;
// only a compare that reads the record's side again sees it.
TEST(VerifyCompare, FixedWidthFieldThatAliasesTheRegionFailsTheCompare) {
    // Where the value lies in the record: found by its bytes, as the layout is the compiler's.
    CCmdDwordId probe;
    probe = 0xA1B2C3D4;
    const auto* raw = reinterpret_cast<const unsigned char*>(&probe);
    std::size_t at = 0;
    while (at + 4 <= sizeof probe &&
           !(raw[at] == 0xD4 && raw[at + 1] == 0xC3 && raw[at + 2] == 0xB2 && raw[at + 3] == 0xA1))
        ++at;
    ASSERT_LE(at + 4, sizeof probe);

    TwoViews v;
    ASSERT_NE(nullptr, v.other);
    constexpr std::size_t kRecord = 64;  // aligned for any record
    // The value travels alone (4 bytes), from the stream's start at kRecord + at + 1.
    const std::size_t base = kRecord + at + 1;
    auto* record = new (v.other + kRecord) CCmdDwordId();
    *record = 0x01020304;
    CCmdWriter w;
    w.AttachView(v.region.data() + base, 16);
    w.Write(record);
    EXPECT_EQ(kVerifyFailed, w.GetLastError());
    EXPECT_EQ(4u, w.GetPosition());
    record->~CCmdDwordId();

    // The same record apart from the region writes with success.
    CCmdDwordId apart;
    apart = 0x01020304;
    w.AttachView(v.region.data() + base, 16);
    w.Write(&apart);
    EXPECT_EQ(kOk, w.GetLastError());
}

#ifdef CMDDATA_TEST_THREADS

// Flips bytes [from, from + n) of the region until told to stop. Each byte is written through an
// atomic reference, so the flipping thread's own stores are well defined.
class Flipper {
public:
    Flipper(unsigned char* base, std::size_t from, std::size_t n)
        : thread_([this, base, from, n] {
              started_.store(true);
              unsigned char x = 0x5A;
              while (!stop_.load(std::memory_order_relaxed)) {
                  for (std::size_t i = 0; i < n; ++i)
                      reinterpret_cast<std::atomic<unsigned char>*>(base + from + i)
                          ->fetch_xor(x, std::memory_order_relaxed);
                  x = static_cast<unsigned char>(x + 1) | 1;
              }
          }) {
        while (!started_.load()) std::this_thread::yield();
    }
    ~Flipper() {
        stop_.store(true);
        thread_.join();
    }

private:
    std::atomic<bool> stop_{false};
    std::atomic<bool> started_{false};
    std::thread thread_;
};

// Runs transfer() until it returns the verification failure, for at most a minute (a loaded
// machine may keep the two threads apart for a while); every other result must be success.
// Returns whether the failure was seen.
template <class F>
bool SeesVerifyFailure(F transfer) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    for (std::uint32_t i = 1;; ++i) {
        const std::uint32_t r = transfer();
        if (r == kVerifyFailed) return true;
        EXPECT_EQ(kOk, r);
        if (r != kOk) return false;
        if (i % 256 == 0 && std::chrono::steady_clock::now() > deadline) return false;
    }
}

constexpr std::uint32_t kBulk = 64 * 1024;  // a long copy: a wide window for the other thread

TEST(VerifyCompare, ReaderOfABufferSeesTheRegionChangeUnderIt) {
    testing_cmddata::Region region(kBulk + 64);
    CCmdBuffer source;
    ASSERT_EQ(kOk, source.SetSize(kBulk));
    CCmdWriter w = region.Writer();
    w.Write(&source);
    ASSERT_EQ(kOk, w.GetLastError());

    Flipper flipper(region.data(), 8, kBulk);  // the bytes behind prefix and count
    CCmdBuffer target;
    EXPECT_TRUE(SeesVerifyFailure([&] {
        CCmdReader r = region.Reader();
        r.Read(&target);
        return r.GetLastError();
    }));
}

TEST(VerifyCompare, WriterOfABufferSeesTheRegionChangeUnderIt) {
    testing_cmddata::Region region(kBulk + 64);
    CCmdBuffer source;
    ASSERT_EQ(kOk, source.SetSize(kBulk));

    Flipper flipper(region.data(), 8, kBulk);
    EXPECT_TRUE(SeesVerifyFailure([&] {
        CCmdWriter w = region.Writer();
        w.Write(&source);
        return w.GetLastError();
    }));
}

// The short raw transfer (copied and compared in words) and the inlined fixed-width field
// transfer of a record must both re-read the region too.
TEST(VerifyCompare, ShortRawTransferSeesTheRegionChangeUnderIt) {
    testing_cmddata::Region region(64);
    Flipper flipper(region.data(), 0, 24);
    unsigned char bytes[24];
    EXPECT_TRUE(SeesVerifyFailure([&] {
        CCmdReader r = region.Reader();
        return r.Read(bytes, 24);
    }));
}

TEST(VerifyCompare, FixedWidthFieldsSeeTheRegionChangeUnderThem) {
    testing_cmddata::Region region(64);
    Flipper flipper(region.data(), 0, 4);
    CCmdDwordId id;
    EXPECT_TRUE(SeesVerifyFailure([&] {
        CCmdReader r = region.Reader();
        r.Read(&id);
        return r.GetLastError();
    }));
    CCmdDwordId out;
    out = 0x01020304;
    EXPECT_TRUE(SeesVerifyFailure([&] {
        CCmdWriter w = region.Writer();
        w.Write(&out);
        return w.GetLastError();
    }));
}

// A failed compare is a result like any other: the position still moves by the count, and a
// later transfer that compares equal sets the last error back to 0.
TEST(VerifyCompare, AFailedCompareStillAdvancesAndIsOverwrittenBySuccess) {
    testing_cmddata::Region region(kBulk + 64);
    CCmdBuffer source;
    ASSERT_EQ(kOk, source.SetSize(kBulk));
    CCmdWriter w;
    {
        Flipper flipper(region.data(), 0, kBulk);
        ASSERT_TRUE(SeesVerifyFailure([&] {
            w = region.Writer();
            return w.Write(source.GetAddr(), static_cast<std::int32_t>(kBulk));
        }));
    }
    EXPECT_EQ(kVerifyFailed, w.GetLastError());
    EXPECT_EQ(kBulk, w.GetPosition());
    const std::uint32_t word = 0x11223344;
    EXPECT_EQ(kOk, w.Write(&word, 4));
    EXPECT_EQ(kOk, w.GetLastError());
    EXPECT_EQ(kBulk + 4, w.GetPosition());
}

#endif  // CMDDATA_TEST_THREADS

}  // namespace
