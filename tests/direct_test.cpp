// Direct interfaces, raw frames and the PC monitor: the headerless framings, the status words
// they carry or derive, and the byte layouts that are easy to get wrong.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "helpers.h"

using cmddata::ClassInfo;
using namespace testing_cmddata;

namespace {

// Every message class of one family and side.
template <class F>
void ForEachMessage(const char* family, cmddata::Side side, F&& visit) {
    std::size_t count = 0;
    const ClassInfo* all = cmddata::Classes(&count);
    int seen = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (std::string(all[i].family) != family || all[i].command == nullptr ||
            all[i].side != side)
            continue;
        SCOPED_TRACE(all[i].name);
        std::unique_ptr<CCmdCore> object(all[i].make(1));
        visit(all[i], *object);
        ++seen;
    }
    EXPECT_GT(seen, 0) << family;
}

}  // namespace

// --- Interface creation ---

TEST(DmciFraming, RequestsWithoutFieldsMoveNoBytes) {
    CDmciDeleteDiagInterfaceSnd del;
    CDmciDeleteDLC12InterfaceSnd dlc;
    CDmciDeleteDmInterfaceSnd dm;
    for (CCmdBase* m : {static_cast<CCmdBase*>(&del), static_cast<CCmdBase*>(&dlc),
                        static_cast<CCmdBase*>(&dm)}) {
        SetStatus(*m, 1);
        EXPECT_EQ(WireHex(*m), "");
        cmddata::Result error = 1;
        EXPECT_EQ(ReadHex("0a0b0c0d", *m, &error), 0u);
        EXPECT_EQ(error, cmddata::result::kOk);
        EXPECT_EQ(m->GetStatusWord(1), 1u);
        EXPECT_EQ(m->GetStatusWord(4), 4u);
    }
}

TEST(DmciFraming, AnswersCarryStatusWordThreeAlone) {
    ForEachMessage("Diagnostic interface creation", cmddata::Side::kReceive,
                   [](const ClassInfo& c, CCmdCore& object) {
                       auto& sent = dynamic_cast<CCmdBase&>(object);
                       SetStatus(sent, 0x11);
                       EXPECT_EQ(WireHex(sent), "13000000");
                       std::unique_ptr<CCmdCore> fresh(c.make(1));
                       auto& received = dynamic_cast<CCmdBase&>(*fresh);
                       EXPECT_EQ(ReadHex("13000000", received), 4u);
                       EXPECT_EQ(received.GetStatusWord(3), 0x13u);
                       EXPECT_EQ(received.GetStatusWord(1), 0u);
                       EXPECT_EQ(received.GetStatusWord(2), 0u);
                       EXPECT_EQ(received.GetStatusWord(4), 0u);
                       EXPECT_EQ(received.GetCmdId(), sent.GetCmdId());
                   });
}

TEST(DmciInterface, SettingHasNoPrefixAndKeepsItsVersion) {
    CCmdSConfig s;
    s.settingId = 0x0102;
    s.value = 0x0A0B0C0D;
    EXPECT_EQ(WireHex(s),
              "02010000"
              "0d0c0b0a");
    CCmdSConfig r;
    EXPECT_EQ(ReadHex("ffff000001000000", r), 8u);
    EXPECT_EQ(r.GetVersion(), 1);
    EXPECT_EQ(r.settingId, 0xFFFFu);
}

TEST(DmciInterface, IsoRequestBytes) {
    CDmciCreateIsoDiagInterfaceSnd m;
    SetStatus(m, 1);
    m.name = "K";
    CCmdSConfig& s = m.settings.GetAt(m.settings.AddTail());
    s.settingId = 7;
    s.value = 9;
    for (std::uint32_t i = 0; i < 4; ++i) m.parameters[i] = 0xA0 + i;
    EXPECT_EQ(WireHex(m),
              "01000000"
              "0200"
              "4b00"  // name: prefix, byte count, text with terminator
              "01000000"
              "01000000"  // settings: prefix, count
              "07000000"
              "09000000"  // the setting, without a prefix
              "a0000000"
              "a1000000"
              "a2000000"
              "a3000000");
}

// --- Direct data monitor and active test ---

TEST(DmciMonitor, AnswersAreStatusWordThreeAndAResultWord) {
    ForEachMessage("Direct data monitor and active test", cmddata::Side::kReceive,
                   [](const ClassInfo& c, CCmdCore& object) {
                       auto& sent = dynamic_cast<CCmdBase&>(object);
                       SetStatus(sent, 0x21);
                       const std::string name = c.name;
                       std::string expected = "2300000000000000";  // status word 3, result
                       if (name == "CDmciSetInterruptSendTimingRcv") expected = "";
                       if (name == "CDmciIDMapAppendRcv") expected = "23000000";
                       if (name != "CDmciGetMonitorDataRcv") {
                           EXPECT_EQ(WireHex(sent), expected);
                       }
                   });
}

TEST(DmciMonitor, InterruptTimingAnswerReadsNothing) {
    CDmciSetInterruptSendTimingRcv r;
    SetStatus(r, 1);
    cmddata::Result error = 1;
    EXPECT_EQ(ReadHex("0a0b0c0d", r, &error), 0u);
    EXPECT_EQ(error, cmddata::result::kOk);
    EXPECT_EQ(r.GetStatusWord(3), 3u);
}

TEST(DmciMonitor, SetUpRequestsLeadWithStatusWordFour) {
    CDmciDataMonitorSetupPackSnd pack;
    CDmciDataMonitorSetupPairSnd pair;
    CDmciDataMonitorSetupDtcSnd dtc;
    CDmciDataMonitorSetupRidSnd rid;
    CDmciDataidSetupSnd dataid;
    for (CCmdBase* m : {static_cast<CCmdBase*>(&pack), static_cast<CCmdBase*>(&pair),
                        static_cast<CCmdBase*>(&dtc), static_cast<CCmdBase*>(&rid),
                        static_cast<CCmdBase*>(&dataid)}) {
        SetStatus(*m, 0x0A0B0C0A);  // status word 4: 0x0A0B0C0D
        const std::string hex = WireHex(*m);
        EXPECT_EQ(hex.substr(0, 8), "0d0c0b0a");
        m->RemoveAll();
        EXPECT_EQ(ReadHex(hex, *m), hex.size() / 2);
        EXPECT_EQ(m->GetStatusWord(4), 0x0A0B0C0Du);
        EXPECT_EQ(m->GetStatusWord(3), 0u);
    }
    pack.parameter = 1;
    pack.option = 0x0203;
    pack.standardValues.GetAt(pack.standardValues.AddTail()).upperValue = 4;
    EXPECT_EQ(WireHex(pack),
              "0d0c0b0a"
              "01000000"
              "0100000000000000"  // status word 4, parameter, no requests
              "00000000"
              "0100000001000000"  // standard parameter, one value
              "00000000"
              "04000000"
              "0302");  // the value without prefix, option
}

TEST(DmciMonitor, MonitorDataAnswerOrder) {
    CDmciGetMonitorDataRcv r;
    SetStatus(r, 7);
    CCmdDmciMonData& v = r.values.GetAt(r.values.AddTail());
    v.itemId = 1;
    v.status = 2;
    const unsigned char raw = 0xAB;
    r.rawData[4].SetAt(&raw, 1);
    r.result = 0x55;
    EXPECT_EQ(WireHex(r),
              "09000000"
              "0100000001000000"  // status word 3, one value
              "01000000"
              "01000000"
              "02000000"
              "0100000000000000"  // the value
              "0100000000000000"
              "0100000000000000"
              "0100000000000000"
              "0100000000000000"
              "0100000001000000"
              "ab"  // five buffers, the last one byte
              "55000000");
}

TEST(DmciMonitor, DynamicDataidSetupTakesAVersionThatNeverTravels) {
    CDmciCommDefineDynamicDataidSetupSnd v1;
    CDmciCommDefineDynamicDataidSetupSnd v3(3);
    CDmciCommDefineDynamicDataidSetupRcv r(2);
    EXPECT_EQ(v1.GetVersion(), 1);
    EXPECT_EQ(v3.GetVersion(), 3);
    EXPECT_EQ(r.GetVersion(), 2);
    EXPECT_EQ(WireHex(v1), WireHex(v3));
    EXPECT_EQ(WireHex(v1),
              "00000000"
              "0100000000000000");
}

// --- Raw frames ---

TEST(Frame, SetMsgDataRules) {
    const unsigned char bytes[3] = {0xA1, 0xA2, 0xA3};
    SCmdIPMsg m;
    EXPECT_EQ(m.SetMsgData(bytes, 3), cmddata::result::kOk);
    const unsigned char* held = m.GetMsgData();
    ASSERT_NE(held, nullptr);
    EXPECT_NE(held, bytes);
    EXPECT_EQ(std::memcmp(held, bytes, 3), 0);
    EXPECT_EQ(m.GetMsgLength(), 3u);

    // A null source changes nothing, whatever the length.
    EXPECT_EQ(m.SetMsgData(nullptr, 9), cmddata::result::kNullOutput);
    EXPECT_EQ(m.GetMsgData(), held);
    EXPECT_EQ(m.GetMsgLength(), 3u);

    // A length of 0 holds an empty block; the count of 0 is all that travels.
    CCmdFrameCtrlMessage c;
    c.identifier = 0x0102;
    c.firstControl = 3;
    c.secondControl = 4;
    EXPECT_EQ(c.SetMsgData(bytes, 0), cmddata::result::kOk);
    EXPECT_NE(c.GetMsgData(), nullptr);
    EXPECT_EQ(c.GetMsgLength(), 0u);
    EXPECT_EQ(WireHex(c),
              "01000000"
              "0201"
              "03"
              "04"
              "00000000");

    m.RemoveAll();
    EXPECT_EQ(m.GetMsgData(), nullptr);
    EXPECT_EQ(m.GetMsgLength(), 0u);
}

TEST(Frame, HeldBytesNeverTravelAndReadingDropsTheRun) {
    const unsigned char bytes[5] = {0xA1, 0xA2, 0xA3, 0xA4, 0xA5};
    SCmdIPMsg m;
    m.identifier = 0x0A0B0C0D;
    m.SetMsgData(bytes, 5);
    EXPECT_EQ(WireHex(m),
              "01000000"
              "0d0c0b0a"
              "0000"
              "0000"
              "05000000"
              "0000000000");

    SCmdIPMsg r;
    r.SetMsgData(bytes, 2);
    EXPECT_EQ(ReadHex("01000000"
                      "01000000"
                      "0200"
                      "0300"
                      "05000000"
                      "ffffffffff",
                      r),
              21u);
    EXPECT_EQ(r.GetMsgLength(), 5u);
    EXPECT_EQ(r.GetMsgData(), nullptr);
    EXPECT_EQ(r.identifier, 1u);
    EXPECT_EQ(r.secondWord, 3);
}

TEST(Frame, HostileCountsStayInsideTheRegion) {
    // A count the region cannot hold is not read: count 0, reader at the end with kPastEnd.
    CCmdFrameCtrlMessage c;
    cmddata::Result error = 0;
    EXPECT_EQ(ReadHex("01000000"
                      "0100"
                      "02"
                      "03"
                      "ffffffff"
                      "aabb",
                      c, &error),
              14u);
    EXPECT_EQ(error, cmddata::result::kPastEnd);
    EXPECT_EQ(c.GetMsgLength(), 0u);
    EXPECT_EQ(c.GetMsgData(), nullptr);

    // A run longer than the writer's room fails as one transfer: nothing of it is written.
    Region region(20);
    CCmdWriter w = region.Writer();
    SCmdIPMsg m;
    m.SetMsgData(region.data(), 16);  // 4 + 4 + 2 + 2 + 4 + 16 = 32 bytes wanted
    w.Write(&m);
    EXPECT_EQ(w.GetLastError(), cmddata::result::kPastEnd);
    EXPECT_EQ(w.GetPosition(), 16u);
}

TEST(Frame, AssignmentCopiesTheBytesButNotTheVersion) {
    const unsigned char bytes[2] = {0x51, 0x52};
    SCmdIPMsg source;
    source.identifier = 9;
    source.SetMsgData(bytes, 2);
    SCmdIPMsg shared(source);  // a copy shares the bytes
    EXPECT_EQ(shared.GetMsgData(), source.GetMsgData());

    SCmdIPMsg target;
    ReadHex(
        "07000000"
        "00000000"
        "0000"
        "0000"
        "00000000",
        target);
    ASSERT_EQ(target.GetVersion(), 0);  // a newer sender made it 0
    target = source;
    EXPECT_EQ(target.GetVersion(), 0);
    EXPECT_EQ(target.identifier, 9u);
    EXPECT_EQ(target.GetMsgLength(), 2u);
    ASSERT_NE(target.GetMsgData(), nullptr);
    EXPECT_NE(target.GetMsgData(), source.GetMsgData());
    EXPECT_EQ(std::memcmp(target.GetMsgData(), bytes, 2), 0);
    source.RemoveAll();
    EXPECT_EQ(shared.GetMsgData()[1], 0x52);
}

// --- PC monitor ---

TEST(PcMonitor, AnswersDeriveStatusWordTwoWhileReading) {
    for (std::uint32_t word3 : {5u, 0u}) {
        CPcMonStopRcv sent;
        SetStatus(sent, 1);
        sent.SetStatusWord(3, word3);
        const std::string hex = WireHex(sent);
        EXPECT_EQ(hex, word3 == 5 ? "05000000" : "00000000");  // status word 2 never travels
        CPcMonStopRcv received;
        received.SetStatusWord(2, 7);
        EXPECT_EQ(ReadHex(hex, received), 4u);
        EXPECT_EQ(received.GetStatusWord(3), word3);
        EXPECT_EQ(received.GetStatusWord(2), word3 != 0 ? 1u : 0u);
    }
    // The fields after status word 3 are read in either case.
    CPcMonStartRcv start;
    EXPECT_EQ(ReadHex("02000000"
                      "09000000"
                      "0100000000000000",
                      start),
              16u);
    EXPECT_EQ(start.GetStatusWord(2), 1u);
    EXPECT_EQ(start.word, 9u);
    CPcMonGetDataRcv data;
    data.SetStatusWord(2, 1);
    EXPECT_EQ(ReadHex("00000000"
                      "0100000001000000"
                      "03000000"
                      "0100000000000000",
                      data),
              24u);
    EXPECT_EQ(data.GetStatusWord(2), 0u);
    EXPECT_EQ(data.blocks.GetAt(0).word, 3u);
}

TEST(PcMonitor, FramingsAndSizes) {
    CPcMonStopSnd stop;
    SetStatus(stop, 1);
    EXPECT_EQ(WireHex(stop), "04000000");
    CPcMonStartSnd start;
    SetStatus(start, 1);
    CCmdPcMonInfo& info = start.monitors.GetAt(start.monitors.AddTail());
    info.firstWord = 0x11;
    info.items.GetAt(info.items.AddTail()) = 0x0A0B;
    EXPECT_EQ(WireHex(start),
              "04000000"
              "0100000001000000"  // status word 4, one monitor
              "11000000"
              "00000000"
              "0100000001000000"
              "0b0a");  // no prefix on the record
    CPcMonGetDataSnd get;
    SetStatus(get, 1);
    EXPECT_EQ(WireHex(get),
              "00000000"
              "01000000"
              "02000000"
              "03000000"
              "04000000"
              "0100000000000000");
    CCmdPcMonRcvSignInfo sign;
    EXPECT_EQ(cmddata::WireSize(sign), 6u);
    EXPECT_EQ(start.GetCmdId(), 0u);
    EXPECT_EQ(CPcMonStopRcv().GetCmdId(), 0u);
}
