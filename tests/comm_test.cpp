// Communication set-up: the status word sent twice by the configuration request and the version
// that never travels.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

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

    const std::string hex = WireHex(sent);
    CGetCommConfigSnd received;
    cmddata::Result error = 1;
    EXPECT_EQ(ReadHex(hex, received, &error), 26u);
    EXPECT_EQ(error, cmddata::result::kOk);
    EXPECT_EQ(received.GetStatusWord(4), 0x11223344u);
    EXPECT_EQ(received.configKind, 0x0506);

    // The copy is read last: where the two differ, it is the word that stays.
    CGetCommConfigSnd differing;
    ReadHex(hex.substr(0, 40) + "99" + hex.substr(42), differing);
    EXPECT_EQ(differing.GetStatusWord(4), 0x11223399u);
}

// A version given to the constructor never travels.
TEST(CommSizes, SessionRequestSendsNoVersion) {
    CMoveSessionCGWDKSnd move(4);
    move.session = 0x7F;
    EXPECT_EQ(WireHex(move), "ca000000" + kNoStatus + "7f");
}

}  // namespace
