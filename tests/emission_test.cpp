// Emission checks: the monitoring-test word order, the request fields a version adds, and the
// members that travel at another place than where they are declared.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

const std::string kNoStatus = "00000000000000000000000000000000";
const std::string kEmptyText = "010000000000";
const std::string kEmptyList = "0100000000000000";

std::uint32_t Transfer(CCmdCore& sent, CCmdCore& received) {
    Region region(1 << 16);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    return reader.GetPosition();
}

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

TEST(MonitoringTestLayout, EmptyFrameStillCarriesItsWholeForm) {
    CCmdMonitoringTest test;
    CCmdConversionTbl emptyTable;
    // prefix; frame: prefix, item number, three texts, two flags, table, empty item list.
    const std::string frame =
        "01000000"
        "0000" +
        kEmptyText + kEmptyText + kEmptyText + "0000" + WireHex(emptyTable) + kEmptyList;
    EXPECT_EQ(WireHex(test),
              "01000000" + frame + std::string(2 * (3 * 2 + 4 + 2 + 4 + 2 + 4), '0'));
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

TEST(SleepNgAnswer, WordTravelsAfterTheRecords) {
    CGetSleepNgRcv answer;
    answer.word = 0xCAFEBABE;
    answer.records.AddTail();
    answer.records[0].firstFlag = 0x11;
    answer.records[0].secondFlag = 0x22;
    EXPECT_EQ(WireHex(answer), "31000000" + kNoStatus +
                                   "01000000"
                                   "01000000"
                                   "01000000" +
                                   kEmptyText + "11" + kEmptyText + "22" + "bebafeca");
    CGetSleepNgRcv received;
    Transfer(answer, received);
    EXPECT_EQ(received.word, 0xCAFEBABEu);
    EXPECT_EQ(received.records.GetCount(), 1u);
}

TEST(PIDSignalDataLayout, RequestSendsPrefixHeaderThenSelectorBeforeNumber) {
    CGetPIDSignalDataSnd request(3);
    request.number = 0x0102;
    request.selector = 0x7F;
    request.ecus.AddTail();
    request.ecus[0].ecuId = 0x0A0B0C0D;
    request.ecus[0].value = 0x0E0F;
    EXPECT_EQ(WireHex(request),
              "03000000"
              "a3000000" +
                  kNoStatus +
                  "7f"
                  "0201"
                  "01000000"
                  "01000000"
                  "01000000"
                  "0d0c0b0a"
                  "0f0e");

    // The version travels: a reader built with a newer one takes the sender's.
    CGetPIDSignalDataSnd received(5);
    Transfer(request, received);
    EXPECT_EQ(received.GetVersion(), 3);
    EXPECT_EQ(received.selector, 0x7F);
    EXPECT_EQ(received.number, 0x0102);
    CGetPIDSignalDataSnd older(2);
    Transfer(request, older);
    EXPECT_EQ(older.GetVersion(), 0);
}

TEST(PIDSignalDataLayout, AnswerSendsTheWordBeforeTheEcusThenTheFrame) {
    CGetPIDSignalDataRcv answer;
    answer.word = 0x01020304;
    answer.SetStatusWord(3, 9);
    CCmdFrzFrmDat emptyFrame;
    EXPECT_EQ(WireHex(answer),
              "01000000"
              "a3000000"
              "00000000"
              "00000000"
              "09000000"
              "00000000"
              "04030201" +
                  kEmptyList + WireHex(emptyFrame));
}

}  // namespace
