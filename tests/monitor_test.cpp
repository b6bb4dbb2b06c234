// Data-monitor records and messages: the byte layouts that are easy to get wrong.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

// --- Byte layouts that are easy to get wrong ---

TEST(ConversionTable, SignModeWidthAndDecimalsTravelLast) {
    CCmdConversionTbl t;
    t.scaleNumerator = 1;
    t.scaleDenominator = 2;
    t.offset = 3;
    t.decimalPlaces = 0x0404;
    t.signMode = 5;
    t.bitWidth = 0x0606;
    t.rangeLow = 7;
    t.rangeHigh = 8;
    t.graphLow = 9;
    t.graphHigh = 10;
    EXPECT_EQ(WireHex(t),
              "01000000"
              "01000000"
              "02000000"
              "03000000" +
                  kEmptyList +
                  "07000000"
                  "08000000"
                  "09000000"
                  "0a000000"
                  "0404"
                  "05"
                  "0606");
}

TEST(DispInfo, TrailingByteOnlyFromVersionTwo) {
    CCmdDispInfo v2;  // default version 2
    CCmdDispInfo v1(1);
    for (CCmdDispInfo* d : {&v2, &v1}) {
        d->entryId = 0x11;
        d->matchValue = 0x22;
        d->matchUpper = 0x33;
        d->highlight = 0x44;
    }
    const std::string body = "11000000" + kEmptyText +
                             "22000000"
                             "33000000";
    EXPECT_EQ(WireHex(v2), "02000000" + body + "44");
    EXPECT_EQ(WireHex(v1), "01000000" + body);
}

TEST(DispInfo, ReaderTakesTheOlderVersionAndSkipsTheByte) {
    // A version-2 reader meets a version-1 entry: it becomes version 1 and stops before the byte.
    CCmdDispInfo old(1);
    old.matchValue = 5;
    Region r1;
    CCmdWriter w1 = r1.Writer();
    w1.Write(&old);
    CCmdDispInfo newer;
    newer.highlight = 0x77;
    CCmdReader rd1 = r1.Reader();
    rd1.Read(&newer);
    EXPECT_EQ(newer.GetVersion(), 1);
    EXPECT_EQ(rd1.GetPosition(), w1.GetPosition());
    EXPECT_EQ(newer.matchValue, 5u);

    // A version-1 reader meets a version-2 entry: it becomes version 0 and leaves the byte.
    CCmdDispInfo sent;
    sent.highlight = 0x44;
    Region r2;
    CCmdWriter w2 = r2.Writer();
    w2.Write(&sent);
    CCmdDispInfo reader1(1);
    CCmdReader rd2 = r2.Reader();
    rd2.Read(&reader1);
    EXPECT_EQ(reader1.GetVersion(), 0);
    EXPECT_EQ(rd2.GetPosition(), w2.GetPosition() - 1);
    EXPECT_EQ(reader1.highlight, 0);
}

TEST(LinkName, BytesAfterNameGrowWithEachVersion) {
    const std::uint32_t expected[] = {2, 16, 20, 36};
    for (std::uint16_t version = 1; version <= 4; ++version) {
        CCmdLinkName link(version);
        link.linkName = "L";  // 2 bytes with the terminator
        const std::string hex = WireHex(link);
        const std::string lead = "0" + std::to_string(version) +
                                 "000000"
                                 "01000000"
                                 "0200"
                                 "4c00";
        EXPECT_EQ(hex.substr(0, lead.size()), lead);
        EXPECT_EQ((hex.size() - lead.size()) / 2, expected[version - 1]) << "version " << version;
    }
    EXPECT_EQ(CCmdLinkName().GetVersion(), 4);
}

TEST(DatMonMessages, SignalInfoListRequestNeverSendsItsList) {
    CGetDatMonSignalInfoListSnd empty;
    CGetDatMonSignalInfoListSnd filled;
    filled.itemIds.GetAt(filled.itemIds.AddTail()) = 0x1234;
    filled.itemIds.GetAt(filled.itemIds.AddTail()) = 0x5678;
    EXPECT_EQ(WireHex(filled), "c6000000" + kNoStatus);
    EXPECT_EQ(WireHex(filled), WireHex(empty));
    EXPECT_EQ(cmddata::WireSize(filled), 20u);
    filled.RemoveAll();
    EXPECT_EQ(filled.itemIds.GetCount(), 0u);
}

// The value request sends its item and sample count from version 3 only.
TEST(DatMonMessages, ValueRequestLayoutsByVersion) {
    CGetDatMonValueSnd v3;  // the catalogue's default: version 3
    CGetDatMonValueSnd v1(1);
    for (CGetDatMonValueSnd* m : {&v3, &v1}) {
        m->requestId = 1;
        m->itemId = 0x0202;
        m->sampleCount = 3;
    }
    EXPECT_EQ(v3.GetVersion(), 3);
    EXPECT_EQ(WireHex(v3), "92000000" + kNoStatus +
                               "01000000"
                               "0202"
                               "03000000");
    EXPECT_EQ(WireHex(v1), "92000000" + kNoStatus + "01000000");

    CGetStandardValueInfoSnd standard(2);
    standard.itemIds.GetAt(standard.itemIds.AddTail()) = 0x0a0b;
    EXPECT_EQ(standard.GetVersion(), 2);
    EXPECT_EQ(WireHex(standard), "47000000" + kNoStatus +
                                     "01000000"
                                     "01000000"
                                     "0b0a");
}

}  // namespace
