// Multi-monitor: the measure duration, the records built on the header, the version thresholds
// of the requests and the frame check's repeated status word.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

std::uint32_t Seconds(std::uint32_t period, std::uint32_t size, std::uint32_t capacity) {
    CCmdMultiMonMeasureInfo info;
    info.SetSamplePeriod(period);
    info.SetSampleSize(size);
    info.SetCapacity(capacity);
    return info.GetMeasureSecond();
}

TEST(MeasureSecond, DividesThenMultipliesThenDividesByThousand) {
    EXPECT_EQ(Seconds(100, 10, 1005), 10u);
    EXPECT_EQ(Seconds(1500, 3, 10), 4u);  // 3 whole samples: 4500 ms, not 5 s
    EXPECT_EQ(Seconds(999, 1, 1), 0u);
    EXPECT_EQ(Seconds(0xFFFFFFFF, 0, 0xFFFFFFFF), 0u);
    EXPECT_EQ(Seconds(1000, 0, 0), 0u);
}

TEST(MeasureSecond, ProductWrapsAtThirtyTwoBits) {
    EXPECT_EQ(Seconds(0x10000, 1, 0x10000), 0u);  // 2^32 wraps to 0
    // 0x10000 * 0x10001 = 0x1'0001'0000, kept as 0x10000 ms: 65 s, not 4295032.
    EXPECT_EQ(Seconds(0x10001, 1, 0x10000), 65u);
    EXPECT_EQ(Seconds(0xFFFFFFFF, 1, 0xFFFFFFFF), 0u);  // (2^32-1)^2 mod 2^32 = 1 ms
}

TEST(MeasureInfo, DefaultsToVersionTwoAndSendsPeriodSizeCapacity) {
    CCmdMultiMonMeasureInfo info;
    EXPECT_EQ(info.GetVersion(), 2);
    EXPECT_EQ(CCmdMultiMonMeasureInfo(5).GetVersion(), 5);
    info.SetSamplePeriod(1);
    info.SetSampleSize(2);
    info.SetCapacity(3);
    EXPECT_EQ(WireHex(info),
              "02000000"
              "01000000"
              "02000000"
              "03000000");

    // The standard-value triple reads the same bytes.
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&info);
    CCmdDatMonStdValue triple;
    CCmdReader r = region.Reader();
    r.Read(&triple);
    EXPECT_EQ(r.GetPosition(), 16u);
    EXPECT_EQ(triple.GetVersion(), 0);  // a version-1 reader meets version 2
    EXPECT_EQ(triple.lowerLimit, 2u);
}

TEST(TriggerRecords, CarryHeaderIdentityButSendOnlyPrefixAndFields) {
    CCmdTriggerInfo info;
    EXPECT_EQ(info.GetCmdId(), 5u);
    EXPECT_EQ(info.GetVersion(), 1);
    info.SetStatusWord(1, 0xAA);  // never travels
    info.triggerMode = 1;
    info.preTrigger = 2;
    info.postTrigger = 3;
    EXPECT_EQ(WireHex(info),
              "01000000"
              "0100"
              "0200"
              "0300");

    CCmdTriggerParam param;
    EXPECT_EQ(param.GetCmdId(), 6u);
    EXPECT_EQ(param.GetVersion(), 1);
    param.triggerMode = 7;
    param.combination = 8;
    param.itemIds.GetAt(param.itemIds.AddTail()) = 0x1234;
    EXPECT_EQ(WireHex(param),
              "01000000"
              "0700"
              "0800" +
                  kEmptyList +
                  "0100000001000000"
                  "3412");

    // Reading fills the fields; the identifier is not in the region, so it stays.
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&info);
    CCmdTriggerInfo back;
    CCmdReader r = region.Reader();
    r.Read(&back);
    EXPECT_EQ(r.GetPosition(), 10u);
    EXPECT_EQ(back.postTrigger, 3);
    EXPECT_EQ(back.GetCmdId(), 5u);
    EXPECT_EQ(back.GetStatusWord(1), 0u);
}

TEST(MultiMonRequests, ItemListsFollowTheirVersionThresholds) {
    CCheckMultiMonSnd check;  // default 2, below the threshold 3
    EXPECT_EQ(check.GetVersion(), 2);
    check.mode = 9;
    check.triggerItemIds.AddTail();
    const std::string checkBody = "42000000" + kNoStatus + kEmptyList + "09000000";
    EXPECT_EQ(WireHex(check), checkBody);
    CCheckMultiMonSnd check3(3);
    check3.mode = 9;
    EXPECT_EQ(WireHex(check3), checkBody + kEmptyList);

    CStartMultiMonSnd start;  // default 2, at its threshold
    EXPECT_EQ(start.GetVersion(), 2);
    start.mode = 1;
    const std::string startBody = "38000000" + kNoStatus + "0100" + kEmptyList;
    EXPECT_EQ(WireHex(start), startBody + kEmptyList);
    CStartMultiMonSnd start1(1);
    start1.mode = 1;
    start1.triggerItemIds.AddTail();
    EXPECT_EQ(WireHex(start1), startBody);

    EXPECT_EQ(CStartMultiMonDesModeSnd().GetVersion(), 2);
}

TEST(CheckDatMonCommFrm, StatusWordFourTravelsTwiceAndReadsBackIntoOneWord) {
    CCheckDatMonCommFrmSnd sent;
    sent.SetStatusWord(4, 0x11223344);
    sent.requestId = 5;
    EXPECT_EQ(WireHex(sent),
              "07000000"
              "000000000000000000000000"
              "44332211"
              "44332211" +
                  kEmptyList + "05000000");

    // The second copy is the one that stays.
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&sent);
    region.data()[20] = 0x99;
    CCheckDatMonCommFrmSnd back;
    CCmdReader r = region.Reader();
    r.Read(&back);
    EXPECT_EQ(back.GetStatusWord(4), 0x11223399u);
    EXPECT_EQ(r.GetPosition(), w.GetPosition());

    CCheckDatMonCommFrmRcv answer;
    EXPECT_EQ(answer.GetVersion(), 2);
    EXPECT_EQ(answer.measure.GetVersion(), 2);
    answer.measure.SetSamplePeriod(1);
    EXPECT_EQ(WireHex(answer), "07000000" + kNoStatus +
                                   "0000"
                                   "00000000"
                                   "00000000"
                                   "02000000"
                                   "01000000"
                                   "00000000"
                                   "00000000");
}

}  // namespace
