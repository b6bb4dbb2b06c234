// Active test: the two set-value conversions with their examples, the item orders and the
// repeated status word of the initialisation messages.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

#include "helpers.h"

using cmddata::result::kBadArgument;
using cmddata::result::kOk;
using namespace testing_cmddata;

namespace {

const std::string kStatus = "01000000020000000300000004000000";

CCmdActTstDataItem Scale(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    CCmdActTstDataItem item;
    item.conversion.scaleNumerator = a;
    item.conversion.scaleDenominator = b;
    item.conversion.offset = c;
    return item;
}

std::uint32_t StartValue(const CCmdActTstDataItem& item, std::int32_t value) {
    CStartActTstSnd m;
    EXPECT_EQ(m.SetValue(&item, value), kOk);
    return m.value;
}

std::uint32_t RepairByte(float value, float divisor, float zeroPoint, std::int32_t mode) {
    CRepairActTstSnd m;
    EXPECT_EQ(m.SetValue(value, divisor, zeroPoint, mode), kOk);
    return m.testByte;
}

TEST(StartActTstSetValue, ScalesWrapsAndKeepsTheLowByte) {
    EXPECT_EQ(StartValue(Scale(1, 1, 0), 300), 44u);
    EXPECT_EQ(StartValue(Scale(1, 1, 0), -1), 255u);
    EXPECT_EQ(StartValue(Scale(2, 1, 0), 5), 2u);
    EXPECT_EQ(StartValue(Scale(2, 1, 0), -5), 254u);
    EXPECT_EQ(StartValue(Scale(2, 3, 4), 10), 9u);                    // (10 - 4) * 3 / 2
    EXPECT_EQ(StartValue(Scale(0xFFFFFFFEu, 1, 0), 7), 253u);         // A taken as -2: -3
    EXPECT_EQ(StartValue(Scale(1, 0x10000, 0), 0x10000), 0u);         // product wraps to 0
    EXPECT_EQ(StartValue(Scale(0xFFFFFFFFu, 1, 0), INT32_MIN), 0u);   // wraps, no trap
    EXPECT_EQ(StartValue(Scale(3, 1, 0x80000000u), 0x7FFFFFFF), 0u);  // -1 / 3 truncates to 0
}

TEST(StartActTstSetValue, RefusesNullItemAndZeroScaleAndStoresInTheValueWord) {
    CStartActTstSnd m;
    m.itemId = 0x0102;
    m.value = 0x77;
    m.qualifier = 0x0a0b0c0d;
    EXPECT_EQ(m.SetValue(nullptr, 1), kBadArgument);
    const CCmdActTstDataItem zero = Scale(0, 1, 0);
    EXPECT_EQ(m.SetValue(&zero, 1), kBadArgument);
    EXPECT_EQ(m.value, 0x77u);
    const CCmdActTstDataItem one = Scale(1, 1, 0);
    EXPECT_EQ(m.SetValue(&one, 0x1ff), kOk);
    EXPECT_EQ(m.value, 0xFFu);
    EXPECT_EQ(m.qualifier, 0x0a0b0c0du);
}

TEST(RepairActTstSetValue, ExamplesOfBothModes) {
    EXPECT_EQ(RepairByte(-10.0f, 1.0f, 0.0f, 1), 246u);
    EXPECT_EQ(RepairByte(-10.0f, 1.0f, 0.0f, 0), 246u);
    EXPECT_EQ(RepairByte(-10.5f, 1.0f, 0.0f, 1), 245u);
    EXPECT_EQ(RepairByte(-10.5f, 1.0f, 0.0f, 0), 246u);
    // The correction tests the value itself: 9.5 is positive although q is -10.5.
    EXPECT_EQ(RepairByte(9.5f, 1.0f, 20.0f, 1), 246u);
    EXPECT_EQ(RepairByte(0.0f, 1.0f, 0.0f, 1), 0u);  // 0 + 256: low byte 0
    EXPECT_EQ(RepairByte(300.0f, 2.0f, 0.0f, 0), 150u);
    EXPECT_EQ(RepairByte(1000.75f, 1.0f, 0.0f, 0), 232u);  // 1000 mod 256
    // Beyond the 32-bit range, infinite or not a number: 0, never undefined behaviour.
    EXPECT_EQ(RepairByte(3.0e9f, 1.0f, 0.0f, 0), 0u);
    EXPECT_EQ(RepairByte(1.0f, 1.0e-45f, 0.0f, 0), 0u);
    EXPECT_EQ(RepairByte(std::nanf(""), 1.0f, 0.0f, 1), 0u);
}

TEST(RepairActTstSetValue, RefusesZeroDivisorFirstAndUnknownModes) {
    CRepairActTstSnd m;
    m.itemId = 0x0102;
    m.testByte = 0x77;
    m.option = 0x88;
    EXPECT_EQ(m.SetValue(1.0f, 0.0f, 0.0f, 0), kBadArgument);
    EXPECT_EQ(m.SetValue(1.0f, -0.0f, 0.0f, 9), kBadArgument);
    EXPECT_EQ(m.SetValue(1.0f, 1.0f, 0.0f, 2), kBadArgument);
    EXPECT_EQ(m.SetValue(1.0f, 1.0f, 0.0f, -1), kBadArgument);
    EXPECT_EQ(m.testByte, 0x77);
    EXPECT_EQ(m.SetValue(5.0f, 1.0f, 0.0f, 0), kOk);
    EXPECT_EQ(m.testByte, 5);
    EXPECT_EQ(m.option, 0x88);
}

TEST(ActTstItems, QAndRTravelBeforePAndTheTailFromVersionTwo) {
    CCmdActTstDataItem item;
    EXPECT_EQ(item.GetVersion(), 2);
    item.itemId = 0x0102;
    item.valueP = 0x0a;
    item.valueQ = 0x0b;
    item.valueR = 0x0c;
    item.valueS = 0x0d0e0f10;
    item.valueT = 0x1112;
    item.valueZ = 0x13;
    item.lowerLimit = 0x14;
    item.upperLimit = 0x15;
    item.valueAA = 0x16;
    item.valueAB = 0x1718;
    const std::string body = "0201" + kEmptyText + kEmptyText + kEmptyText +
                             "0b"
                             "0c"
                             "100f0e0d"
                             "0a"
                             "1211"
                             "0000"
                             "00" +
                             std::string(24, '0') + "13" + WireHex(item.conversion) +
                             "14000000"
                             "15000000";
    EXPECT_EQ(WireHex(item), "02000000" + body + "16" + "1817");

    CCmdActTstDataItem v1(1);
    static_cast<CCmdActTstItemMembers&>(v1) = item;
    EXPECT_EQ(WireHex(v1), "01000000" + body);

    // The signal-information record always carries the tail, at version 1.
    CCmdActTstSignalInfoItem info;
    static_cast<CCmdActTstItemMembers&>(info) = item;
    EXPECT_EQ(info.GetVersion(), 1);
    EXPECT_EQ(WireHex(info), "01000000" + body + "16" + "1817");
}

TEST(ActTstItems, RoutineItemsPlaceTheTailDifferently) {
    CCmdRoutineActTstDataItem init;
    init.itemId = 0x0102;
    init.secondId = 0x0304;
    init.valueP = 0x0a;
    init.valueQ = 0x0b;
    init.valueR = 0x0c;
    init.valueAA = 0x0d;
    init.valueT = 0x1112;
    init.valueU = 0x1314;
    init.valueAB = 0x1516;
    init.valueW = 0x17;
    init.valueZ = 0x18;
    init.upperLimit = 0x19;
    const std::string head =
        "01000000"
        "0201"
        "0403" +
        kEmptyText + kEmptyText + kEmptyText;
    const std::string words = "17000000" + std::string(16, '0') + "18" + WireHex(init.conversion) +
                              "00000000"
                              "19000000";
    const std::string lists = kEmptyList + kEmptyList + kEmptyList + kEmptyList;
    EXPECT_EQ(WireHex(init), head +
                                 "0b0c0d0a"
                                 "121114131615" +
                                 words + lists);

    CCmdRoutineActTstSignalInfoItem info;
    static_cast<CCmdRoutineActTstItemMembers&>(info) = init;
    EXPECT_EQ(WireHex(info), head +
                                 "0b0c0a"
                                 "12111413" +
                                 words +
                                 "0d"
                                 "1615" +
                                 lists);
}

TEST(ActTstInit, RequestsRepeatStatusWordFourAndReadersKeepTheSecondCopy) {
    CGetActTstInitSnd single;
    CGetMultiActTstInitSnd multi;
    CGetRoutineActTstInitSnd routine;
    for (CCmdActTstInitRequest* m :
         {static_cast<CCmdActTstInitRequest*>(&single), static_cast<CCmdActTstInitRequest*>(&multi),
          static_cast<CCmdActTstInitRequest*>(&routine)}) {
        SetStatus(*m, 1);
        m->itemId = 0x0506;
    }
    EXPECT_EQ(WireHex(single), "08000000" + kStatus + "04000000" + "0605");
    EXPECT_EQ(WireHex(multi), "63000000" + kStatus + "04000000" + "0605");
    EXPECT_EQ(WireHex(routine), "ae000000" + kStatus + "04000000" + "0605");

    const std::string hex = WireHex(single);
    CGetActTstInitSnd received;  // the second copy differs from the header's
    EXPECT_EQ(ReadHex(hex.substr(0, 40) + "09" + hex.substr(42), received), hex.size() / 2);
    EXPECT_EQ(received.GetStatusWord(4), 9u);
}

TEST(ActTstInit, AnswersRepeatStatusWordFour) {
    CGetActTstInitRcv answer;  // version 2: the byte and word follow the value
    SetStatus(answer, 1);
    answer.value = 0x0a;
    answer.option = 0x0b;
    answer.extra = 0x0c0d;
    const std::string item = WireHex(answer.item);
    EXPECT_EQ(answer.GetVersion(), 2);
    EXPECT_EQ(WireHex(answer),
              "08000000" + kStatus + "04000000" + item + "0a000000" + "0b" + "0d0c");
    CGetActTstInitRcv v1(1);
    SetStatus(v1, 1);
    v1.option = 0x0b;
    EXPECT_EQ(WireHex(v1), "08000000" + kStatus + "04000000" + item + "00000000");

    CGetRoutineActTstInitRcv routine;
    SetStatus(routine, 1);
    routine.value = 1;
    routine.option = 2;
    EXPECT_EQ(WireHex(routine), "ae000000" + kStatus + "04000000" + WireHex(routine.item) +
                                    "01000000"
                                    "02000000");
}

}  // namespace
