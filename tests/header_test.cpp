// The message header, the header-with-prefix, and the three ways a message frames itself.
#include <gtest/gtest.h>

#include "cmddata_internal/procs.h"
#include "helpers.h"

using testing_cmddata::Hex;
using testing_cmddata::Region;
using testing_cmddata::WireHex;

// A named namespace: the test messages' unused processor entry points must stay external.
namespace header_test {
class PlainMessage;
class VersionedMessage;
class HeaderlessAnswer;
class HeaderlessRequest;
class EmptyRequest;
class InfoRecord;
}  // namespace header_test
CMDDATA_UNLISTED(header_test::PlainMessage)
CMDDATA_UNLISTED(header_test::VersionedMessage)
CMDDATA_UNLISTED(header_test::HeaderlessAnswer)
CMDDATA_UNLISTED(header_test::HeaderlessRequest)
CMDDATA_UNLISTED(header_test::EmptyRequest)
CMDDATA_UNLISTED(header_test::InfoRecord)

namespace header_test {

const std::string kZeroWords = "00000000000000000000000000000000";

void SetStatus(CCmdHeaderWords& h, std::uint32_t first) {
    for (int n = 1; n <= 4; ++n) h.SetStatusWord(n, first + static_cast<std::uint32_t>(n - 1));
}

void ExpectStatus(const CCmdHeaderWords& h, std::uint32_t w1, std::uint32_t w2, std::uint32_t w3,
                  std::uint32_t w4) {
    EXPECT_EQ(h.GetStatusWord(1), w1);
    EXPECT_EQ(h.GetStatusWord(2), w2);
    EXPECT_EQ(h.GetStatusWord(3), w3);
    EXPECT_EQ(h.GetStatusWord(4), w4);
}

// The three framings, each as a small message of its own.

/// Plain header, then a u16.
class PlainMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(PlainMessage)
    PlainMessage() : CCmdBase(0x30) {}
    std::uint16_t value = 0;
};
template <class P>
void PlainMessage::Fields(P& p) {
    Header(p);
    p.U16("value", value);
}
CMDDATA_DEFINE_FIELDS(PlainMessage)

/// Version prefix, header, then a u32.
class VersionedMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(VersionedMessage)
    explicit VersionedMessage(std::uint16_t version = 1) : CCmdBase(0x31, version, 0) {}
    std::uint32_t value = 0;
};
template <class P>
void VersionedMessage::Fields(P& p) {
    p.Prefix(*this);
    Header(p);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(VersionedMessage)

/// No header: status word 3 alone, status word 2 derived from it while reading.
class HeaderlessAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(HeaderlessAnswer)
    HeaderlessAnswer() : CCmdBase(0x32) {}
    std::uint16_t value = 0;
};
template <class P>
void HeaderlessAnswer::Fields(P& p) {
    p.U32("status_word_3", status_[2]);
    if (p.Reading()) status_[1] = status_[2] != 0 ? 1 : 0;
    p.U16("value", value);
}
CMDDATA_DEFINE_FIELDS(HeaderlessAnswer)

/// No header: status word 4 alone, then a byte.
class HeaderlessRequest : public CCmdBase {
public:
    CMDDATA_FIELDS(HeaderlessRequest)
    HeaderlessRequest() : CCmdBase(0x33) {}
    std::uint8_t value = 0;
};
template <class P>
void HeaderlessRequest::Fields(P& p) {
    p.U32("status_word_4", status_[3]);
    p.U8("value", value);
}
CMDDATA_DEFINE_FIELDS(HeaderlessRequest)

/// No header and no fields: zero bytes on the wire.
class EmptyRequest : public CCmdBase {
public:
    CMDDATA_FIELDS(EmptyRequest)
    EmptyRequest() : CCmdBase(0x34) {}
};
template <class P>
void EmptyRequest::Fields(P&) {}
CMDDATA_DEFINE_FIELDS(EmptyRequest)

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

TEST(Header, BaseWritesTwentyBytesWithoutPrefix) {
    CCmdBase header(221);
    EXPECT_EQ(WireHex(header), "dd000000" + kZeroWords);
    EXPECT_EQ(cmddata::WireSize(header), 20u);
}

TEST(Header, BaseInfoWritesPrefixThenHeader) {
    CCmdBaseInfo info(221);
    EXPECT_EQ(WireHex(info),
              "01000000"
              "dd000000" +
                  kZeroWords);
    EXPECT_EQ(cmddata::WireSize(info), 24u);
}

TEST(Header, StatusWordsTravelInOrder) {
    CCmdBase header(0x01020304);
    SetStatus(header, 0x11);
    EXPECT_EQ(WireHex(header),
              "04030201"
              "11000000"
              "12000000"
              "13000000"
              "14000000");
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

TEST(Framing, PlainHeaderThenFields) {
    PlainMessage m;
    SetStatus(m, 1);
    m.value = 0xBEEF;
    EXPECT_EQ(WireHex(m),
              "30000000"
              "01000000"
              "02000000"
              "03000000"
              "04000000"
              "efbe");

    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&m);
    PlainMessage back;
    CCmdReader r = region.Reader();
    r.Read(&back);
    EXPECT_EQ(r.GetPosition(), 22u);
    EXPECT_EQ(back.value, 0xBEEF);
    ExpectStatus(back, 1, 2, 3, 4);
}

TEST(Framing, VersionPrefixBeforeTheHeaderCarriesTheSendersVersion) {
    VersionedMessage m(2);
    m.value = 0x0A0B0C0D;
    m.SetStatusWord(4, 0x44);
    EXPECT_EQ(WireHex(m),
              "02000000"
              "31000000"
              "00000000"
              "00000000"
              "00000000"
              "44000000"
              "0d0c0b0a");

    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&m);
    VersionedMessage newer(3);
    CCmdReader r1 = region.Reader();
    r1.Read(&newer);
    EXPECT_EQ(newer.GetVersion(), 2u);
    EXPECT_EQ(newer.value, 0x0A0B0C0Du);
    EXPECT_EQ(newer.GetStatusWord(4), 0x44u);

    VersionedMessage older(1);
    CCmdReader r2 = region.Reader();
    r2.Read(&older);
    EXPECT_EQ(older.GetVersion(), 0u);
    EXPECT_EQ(r2.GetPosition(), 28u);
}

TEST(Framing, HeaderlessAnswerCarriesStatusWordThreeAndDerivesTwo) {
    HeaderlessAnswer m;
    SetStatus(m, 5);  // words 5, 6, 7, 8
    m.value = 0x0102;
    EXPECT_EQ(WireHex(m),
              "07000000"
              "0201");

    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&m);
    HeaderlessAnswer back;
    CCmdReader r = region.Reader();
    r.Read(&back);
    EXPECT_EQ(r.GetPosition(), 6u);
    ExpectStatus(back, 0, 1, 7, 0);
    EXPECT_EQ(back.value, 0x0102);

    m.SetStatusWord(3, 0);
    CCmdWriter w2 = region.Writer();
    w2.Write(&m);
    back.SetStatusWord(2, 1);
    CCmdReader r2 = region.Reader();
    r2.Read(&back);
    EXPECT_EQ(back.GetStatusWord(2), 0u);  // a zero word 3 clears the flag
}

TEST(Framing, HeaderlessRequestCarriesStatusWordFourAlone) {
    HeaderlessRequest m;
    SetStatus(m, 0x21);
    m.value = 0x7F;
    EXPECT_EQ(WireHex(m),
              "24000000"
              "7f");

    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&m);
    HeaderlessRequest back;
    CCmdReader r = region.Reader();
    r.Read(&back);
    ExpectStatus(back, 0, 0, 0, 0x24);
    EXPECT_EQ(back.value, 0x7F);
    EXPECT_EQ(back.GetCmdId(), 0x33u);  // never on the wire: the constructor's stays
}

TEST(Framing, MessageOfZeroBytes) {
    EmptyRequest m;
    SetStatus(m, 1);
    Region region(16);
    CCmdWriter w = region.Writer();
    w.Write(&m);
    EXPECT_EQ(w.GetPosition(), 0u);
    EXPECT_EQ(w.GetLastError(), 0u);
    EXPECT_EQ(cmddata::WireSize(m), 0u);
    EXPECT_EQ(Hex(region.data(), 4), "eeeeeeee");  // the region is untouched
    m.RemoveAll();
    ExpectStatus(m, 0, 0, 0, 0);
}
