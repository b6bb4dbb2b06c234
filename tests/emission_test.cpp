// Emission checks: the monitoring-test word order, the request fields a version adds, and the
// members that travel at another place than where they are declared.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

// --- CCmdMonitoringTest ---

TEST(MonitoringTestLayout, ThreeNumbersThenValuesEachAfterANumber) {
    CCmdMonitoringTest test;
    for (int i = 0; i < 5; ++i) test.numbers[i] = static_cast<std::uint16_t>(0x0101 * (i + 1));
    for (int i = 0; i < 3; ++i) test.values[i] = 0xA0A0A0A0u + static_cast<std::uint32_t>(i);
    CCmdFrzFrmDat emptyFrame;
    EXPECT_EQ(WireHex(test), "01000000" + WireHex(emptyFrame) +
                                 "0101"
                                 "0202"
                                 "0303"
                                 "a0a0a0a0"
                                 "0404"
                                 "a1a0a0a0"
                                 "0505"
                                 "a2a0a0a0");
}

// --- messages ---

TEST(MonitorStatusInfoRequest, VersionTwoAddsANumberAndAWord) {
    CGetMonitorStatusInfoSnd v1(1);
    v1.word = 0x11223344;
    v1.number = 0x5566;
    v1.secondWord = 0x778899AA;
    EXPECT_EQ(WireHex(v1), "5a000000" + kNoStatus + "44332211");

    CGetMonitorStatusInfoSnd v2;  // version 2 by default
    EXPECT_EQ(v2.GetVersion(), 2);
    v2.word = 0x11223344;
    v2.number = 0x5566;
    v2.secondWord = 0x778899AA;
    EXPECT_EQ(WireHex(v2), "5a000000" + kNoStatus +
                               "44332211"
                               "6655"
                               "aa998877");

    // The version does not travel: a version 1 reader stops after the first word.
    CGetMonitorStatusInfoSnd reader(1);
    EXPECT_EQ(Transfer(v2, reader), 24u);
    EXPECT_EQ(reader.word, 0x11223344u);
    EXPECT_EQ(reader.number, 0);
}

}  // namespace
