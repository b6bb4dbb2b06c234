// The message header, the header-with-prefix, and the three ways a message frames itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "cmddata_internal/procs.h"
#include "helpers.h"

using namespace testing_cmddata;

// A named namespace: the test record's unused processor entry points must stay external.
namespace header_test {
class InfoRecord;
}  // namespace header_test
CMDDATA_UNLISTED(header_test::InfoRecord)

namespace header_test {

void ExpectStatus(const CCmdHeaderWords& h, std::uint32_t w1, std::uint32_t w2, std::uint32_t w3,
                  std::uint32_t w4) {
    EXPECT_EQ(h.GetStatusWord(1), w1);
    EXPECT_EQ(h.GetStatusWord(2), w2);
    EXPECT_EQ(h.GetStatusWord(3), w3);
    EXPECT_EQ(h.GetStatusWord(4), w4);
}

/// A record that keeps a header copy, with a payload of its own.
class InfoRecord : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(InfoRecord)
    InfoRecord() : CCmdBaseInfo(2, 0) {}
    CCmdList<CCmdWordId> ids;
};
template <class P>
void InfoRecord::Fields(P& p) {
    InfoHeader(p);
    p.List("ids", ids);
}
CMDDATA_DEFINE_FIELDS(InfoRecord)

}  // namespace header_test

using namespace header_test;

TEST(Header, IdentifierAndStatusWordsTravelInOrderAfterAnyPrefix) {
    CCmdBase header(0x01020304);
    SetStatus(header, 0x11);
    EXPECT_EQ(WireHex(header),
              "04030201"
              "11000000"
              "12000000"
              "13000000"
              "14000000");
    CCmdBaseInfo info(221);
    EXPECT_EQ(WireHex(info),
              "01000000"
              "dd000000" +
                  kNoStatus);
}

TEST(Header, ReadTakesTheRegionsIdentifierAndKeepsThreadId) {
    Region region;
    CCmdBase written(5);
    SetStatus(written, 0xA0);
    CCmdWriter w = region.Writer();
    w.Write(&written);

    CCmdBase read(7);
    read.SetThreadId(0x1234);
    CCmdReader r = region.Reader();
    r.Read(&read);
    EXPECT_EQ(r.GetLastError(), 0u);
    EXPECT_EQ(r.GetPosition(), 20u);
    EXPECT_EQ(read.GetCmdId(), 5u);
    EXPECT_EQ(read.GetThreadId(), 0x1234u);
    ExpectStatus(read, 0xA0, 0xA1, 0xA2, 0xA3);
}

TEST(Header, BaseInfoReadAppliesTheVersionRule) {
    Region region;
    CCmdBaseInfo written(9, 3, 0x55);
    CCmdWriter w = region.Writer();
    w.Write(&written);

    CCmdBaseInfo older(9);  // version 1 cannot take version 3
    CCmdReader r1 = region.Reader();
    r1.Read(&older);
    EXPECT_EQ(older.GetVersion(), 0u);
    EXPECT_EQ(older.GetReserved(), 0x55u);

    CCmdBaseInfo newer(9, 5, 0);
    CCmdReader r2 = region.Reader();
    r2.Read(&newer);
    EXPECT_EQ(newer.GetVersion(), 3u);
    EXPECT_EQ(r2.GetPosition(), 24u);
}

TEST(Header, RemoveAllKeepsIdentifierAndThreadId) {
    CCmdBase header(42, 3, 7);
    header.SetThreadId(99);
    SetStatus(header, 1);
    header.RemoveAll();
    ExpectStatus(header, 0, 0, 0, 0);
    EXPECT_EQ(header.GetCmdId(), 42u);
    EXPECT_EQ(header.GetThreadId(), 99u);
    EXPECT_EQ(header.GetVersion(), 3u);
    EXPECT_EQ(header.GetReserved(), 7u);

    CCmdBaseInfo info(43);
    info.SetThreadId(98);
    SetStatus(info, 1);
    info.RemoveAll();
    ExpectStatus(info, 0, 0, 0, 0);
    EXPECT_EQ(info.GetCmdId(), 43u);
    EXPECT_EQ(info.GetThreadId(), 98u);
}

TEST(Header, VersionConstructorOfBaseInfoLeavesIdentifierAndThreadIdZero) {
    CCmdBaseInfo info(4, 2);
    EXPECT_EQ(info.GetCmdId(), 0u);
    EXPECT_EQ(info.GetThreadId(), 0u);
    EXPECT_EQ(info.GetVersion(), 4u);
    EXPECT_EQ(info.GetReserved(), 2u);
    ExpectStatus(info, 0, 0, 0, 0);
}

TEST(Header, ConstructorRecordsTheCallingThread) {
    EXPECT_EQ(CCmdBase(1).GetThreadId(), cmddata::platform::CurrentThreadId());
    EXPECT_EQ(CCmdBaseInfo(1).GetThreadId(), cmddata::platform::CurrentThreadId());
}

TEST(Header, CopyToCopiesStatusWordsAndClearsTheTargetsPayload) {
    CCmdBaseInfo info(77);
    SetStatus(info, 0x51);

    CGetCarInfoRcv target;
    target.SetThreadId(0x4321);
    SetStatus(target, 0x99);
    target.carInfo.GetAt(target.carInfo.AddTail()).itemId = 1;
    target.carInfo.GetAt(target.carInfo.AddTail()).itemId = 2;

    info.CopyTo(&target);
    ExpectStatus(target, 0x51, 0x52, 0x53, 0x54);
    EXPECT_EQ(target.GetCmdId(), 1u);
    EXPECT_EQ(target.GetThreadId(), 0x4321u);
    EXPECT_EQ(target.GetVersion(), 1u);
    EXPECT_EQ(target.carInfo.GetCount(), 0u);
    info.CopyTo(nullptr);  // nothing to copy into: nothing happens
}

TEST(Header, BaseInfoTakesAHeaderAndEmptiesItsPayload) {
    CCmdBase source(42);
    source.SetThreadId(0x777);
    SetStatus(source, 0x61);

    InfoRecord record;
    record.ids.AddTail();
    record.SetStatusWord(3, 0xFFFF);
    static_cast<CCmdBaseInfo&>(record) = source;  // the record's own operator= hides it
    ExpectStatus(record, 0x61, 0x62, 0x63, 0x64);
    EXPECT_EQ(record.GetCmdId(), 42u);
    EXPECT_EQ(record.GetThreadId(), 0x777u);
    EXPECT_EQ(record.GetVersion(), 2u);  // the record's own version stays
    EXPECT_EQ(record.ids.GetCount(), 0u);
    EXPECT_EQ(WireHex(record),
              "02000000"
              "2a000000"
              "61000000"
              "62000000"
              "63000000"
              "64000000"
              "01000000"
              "00000000");
}

TEST(Header, CopyAndAssignmentTakeEveryWord) {
    CCmdBase source(12, 2, 3);
    source.SetThreadId(5);
    SetStatus(source, 8);
    CCmdBase copy(source);
    CCmdBase assigned(1);
    assigned = source;
    for (const CCmdBase* h : {&copy, &assigned}) {
        EXPECT_EQ(h->GetCmdId(), 12u);
        EXPECT_EQ(h->GetThreadId(), 5u);
        EXPECT_EQ(h->GetVersion(), 2u);
        EXPECT_EQ(h->GetReserved(), 3u);
        ExpectStatus(*h, 8, 9, 10, 11);
    }
}

namespace header_test {

// A reader of the caller's own: it counts the raw transfers that reach it.
class CountingReader : public CCmdReader {
public:
    using CCmdReader::Read;
    cmddata::Result Read(void* destination, std::int32_t count) override {
        ++calls;
        return CCmdReader::Read(destination, count);
    }
    int calls = 0;
};

// What a read leaves behind, to set the caller's inline path against the library's processors.
struct ReadOutcome {
    cmddata::Result error;
    std::uint32_t position;
    std::uint16_t version, reserved;
    std::uint32_t cmdId, threadId, status[4];
    bool operator==(const ReadOutcome& o) const {
        return error == o.error && position == o.position && version == o.version &&
               reserved == o.reserved && cmdId == o.cmdId && threadId == o.threadId &&
               std::equal(status, status + 4, o.status);
    }
};
ReadOutcome Outcome(const CCmdReader& r, const CCmdHeaderOnly& m) {
    return {r.GetLastError(),
            r.GetPosition(),
            m.GetVersion(),
            m.GetReserved(),
            m.GetCmdId(),
            m.GetThreadId(),
            {m.GetStatusWord(1), m.GetStatusWord(2), m.GetStatusWord(3), m.GetStatusWord(4)}};
}

}  // namespace header_test

// A header-only message runs its field list in the caller's own code; its out-of-line entry runs
// the same list through the library's processors. Both must leave the same bytes, results,
// positions and words, for both framings, every cut of the region and either side of the version
// rule; and a stream of the caller's own must still see every transfer.
TEST(Header, HeaderOnlyMessagesMoveInTheCallerAsThroughTheLibrary) {
    std::size_t count = 0;
    const cmddata::ClassInfo* classes = cmddata::Classes(&count);
    std::size_t messages = 0, versioned = 0;
    for (std::size_t i = 0; i < count; ++i) {
        using Object = std::unique_ptr<CCmdCore>;
        Object a(classes[i].make(1)), b(classes[i].make(1));
        auto* inCaller = dynamic_cast<CCmdHeaderOnly*>(a.get());
        auto* inLibrary = dynamic_cast<CCmdHeaderOnly*>(b.get());
        if (inCaller == nullptr) continue;
        SCOPED_TRACE(classes[i].name);
        ++messages;
        SetStatus(*inCaller, 0x40);
        SetStatus(*inLibrary, 0x40);
        const std::string wire = WireHex(*inCaller);
        const auto size = static_cast<std::uint32_t>(wire.size() / 2);
        if (size == 24) ++versioned;

        for (std::uint32_t cut = 0; cut <= size; ++cut) {
            Region ra(cut), rb(cut);
            CCmdWriter wa = ra.Writer(), wb = rb.Writer();
            inCaller->CCmdHeaderOnly::Write(wa);  // qualified: the inline code, compiled here
            inLibrary->WriteOther(wb);
            EXPECT_EQ(wa.GetLastError(), wb.GetLastError()) << cut;
            EXPECT_EQ(wa.GetPosition(), wb.GetPosition()) << cut;
            EXPECT_EQ(ra.bytes(), rb.bytes()) << cut;
        }

        for (std::uint16_t sender : {0, 1, 2, 9}) {
            SetVersion(*inCaller, sender);
            Region full(size);
            CCmdWriter w = full.Writer();
            inCaller->CCmdHeaderOnly::Write(w);
            ASSERT_EQ(w.GetLastError(), 0u);
            for (std::uint32_t cut = 0; cut <= size; ++cut) {
                Object x(classes[i].make(1)), y(classes[i].make(1));
                auto& viaCaller = dynamic_cast<CCmdHeaderOnly&>(*x);
                auto& viaLibrary = dynamic_cast<CCmdHeaderOnly&>(*y);
                CCmdReader ra, rb;
                ra.AttachView(full.data(), cut);
                rb.AttachView(full.data(), cut);
                viaCaller.CCmdHeaderOnly::Read(ra);
                viaLibrary.ReadOther(rb);
                EXPECT_TRUE(Outcome(ra, viaCaller) == Outcome(rb, viaLibrary))
                    << "sender version " << sender << ", cut " << cut;
            }
            // A reader of the caller's own class takes its own transfers, with the same outcome.
            Object x(classes[i].make(1)), y(classes[i].make(1));
            auto& viaOwn = dynamic_cast<CCmdHeaderOnly&>(*x);
            auto& viaPlain = dynamic_cast<CCmdHeaderOnly&>(*y);
            CountingReader own;
            CCmdReader plain;
            own.AttachView(full.data(), size);
            plain.AttachView(full.data(), size);
            viaOwn.CCmdHeaderOnly::Read(own);
            viaPlain.CCmdHeaderOnly::Read(plain);
            EXPECT_EQ(own.calls, size == 24 ? 7 : size == 20 ? 5 : 0);  // no framing: nothing
            EXPECT_TRUE(Outcome(own, viaOwn) == Outcome(plain, viaPlain)) << sender;
        }
    }
    EXPECT_GT(messages, 0u);
    EXPECT_GT(versioned, 0u);             // the prefix's path is taken
    EXPECT_GT(messages - versioned, 0u);  // and the bare header's (or none, unframed)
}
