// Communication set-up: the status word sent twice by the configuration request, the message
// sizes, the header-only messages' shared body and the frame-cache lists.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

const std::string kNoStatus = "00000000000000000000000000000000";

TEST(CommConfig, StatusWordFourTravelsAgainAndIsRestoredOnReading) {
    CGetCommConfigSnd sent;
    sent.SetStatusWord(4, 0x11223344);
    sent.configKind = 0x0506;
    EXPECT_EQ(WireHex(sent),
              "66000000"
              "00000000"
              "00000000"
              "00000000"
              "44332211"
              "44332211"
              "0605");

    Region region(64);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    ASSERT_EQ(writer.GetPosition(), 26u);
    CGetCommConfigSnd received;
    CCmdReader reader;
    reader.AttachView(region.data(), 26);
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_EQ(received.GetStatusWord(4), 0x11223344u);
    EXPECT_EQ(received.configKind, 0x0506);

    // The copy is read last: where the two differ, it is the word that stays.
    region.data()[20] = 0x99;
    CGetCommConfigSnd differing;
    reader.AttachView(region.data(), 26);
    reader.Read(&differing);
    EXPECT_EQ(differing.GetStatusWord(4), 0x11223399u);
}

TEST(CommSizes, ScalarRequestsAndHeaderOnlyMessages) {
    CDelEcuCnctCacheSnd del;
    del.selector = 0x01020304;
    del.ecuNumber = 0x0506;
    EXPECT_EQ(WireHex(del), "b7000000" + kNoStatus + "04030201" + "0605");
    CMoveSessionCGWDKSnd move(4);  // the version does not travel
    move.session = 0x7F;
    EXPECT_EQ(WireHex(move), "ca000000" + kNoStatus + "7f");

    // Every header-only message of the family is the one shared body: 20 bytes, its identifier.
    CStartTesterPresentSnd a;
    CStartTesterPresentRcv b;
    CStopTesterPresentSnd c;
    CStopTesterPresentRcv d;
    CSetEcuBuslineRcv e;
    CSetCommFrameCacheRcv f;
    CGetCommFrameCacheSnd g;
    CGetRemoteProtInfoSnd h;
    CNoConfGeneralCommResponseRcv i;
    CDelEcuCnctCacheRcv j;
    CSetDefSessionSnd k(3);
    CSetDefSessionRcv l;
    CMoveSessionCGWDKRcv m;
    CDelSpecifiedCacheRcv n;
    CChangeLogCollectionModeRcv o;
    CAutoPowerOffCanselSnd p;
    CAutoPowerOffCanselRcv q;
    CCmdHeaderOnly* all[] = {&a, &b, &c, &d, &e, &f, &g, &h, &i, &j, &k, &l, &m, &n, &o, &p, &q};
    for (CCmdHeaderOnly* message : all) {
        message->SetStatusWord(2, 0x22);
        char id[9];
        const std::uint32_t cmd = message->GetCmdId();
        std::snprintf(id, sizeof id, "%02x%02x0000", cmd & 0xFF, cmd >> 8 & 0xFF);
        EXPECT_EQ(WireHex(*message), std::string(id) +
                                         "00000000"
                                         "22000000"
                                         "00000000"
                                         "00000000");
    }
}

// A frame-cache list travels as any list: prefix, count, then each frame with its own prefix;
// the cache selector follows the list.
TEST(CommFrameCache, FramesTravelAsAListBeforeTheSelector) {
    CSetCommFrameCacheSnd sent;
    CCmdFrameCtrlMessage& frame = sent.frames.GetAt(sent.frames.AddTail());
    frame.identifier = 0x0102;
    frame.firstControl = 3;
    frame.secondControl = 4;
    sent.cacheSelector = 0x5A;
    const std::string frameHex = WireHex(frame);
    EXPECT_EQ(WireHex(sent), "8f000000" + kNoStatus +
                                 "01000000"
                                 "01000000" +
                                 frameHex + "5a");

    CGetCommFrameCacheRcv answer;
    answer.frames.AddTail();
    answer.frames.GetAt(0) = frame;
    CGetCommFrameCacheRcv received;
    Region region(256);
    CCmdWriter writer = region.Writer();
    writer.Write(&answer);
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    ASSERT_EQ(received.frames.GetCount(), 1u);
    EXPECT_EQ(received.frames.GetAt(0).identifier, 0x0102);
    EXPECT_EQ(received.frames.GetAt(0).secondControl, 4);
}

}  // namespace
