// Direct interfaces, raw frames and the PC monitor: the headerless framings, the status words
// they carry or derive, and the byte layouts that are easy to get wrong.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "helpers.h"

using cmddata::ClassInfo;
using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

// Reads hex bytes into object; returns the bytes consumed (the reader's last error in *error).
std::uint32_t ReadHex(const std::string& hex, CCmdCore& object, cmddata::Result* error = nullptr) {
    Region region(static_cast<std::uint32_t>(hex.size() / 2 + 1));
    for (std::size_t i = 0; i < hex.size() / 2; ++i)
        region.data()[i] = static_cast<unsigned char>(std::stoi(hex.substr(2 * i, 2), nullptr, 16));
    CCmdReader reader;
    reader.AttachView(region.data(), static_cast<std::uint32_t>(hex.size() / 2));
    reader.Read(&object);
    if (error != nullptr) *error = reader.GetLastError();
    return reader.GetPosition();
}

void SetStatus(CCmdHeaderWords& h, std::uint32_t first) {
    for (int n = 1; n <= 4; ++n) h.SetStatusWord(n, first + static_cast<std::uint32_t>(n) - 1);
}

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

TEST(DmciInterface, FixedRequestSizes) {
    CDmciCreateCanDiagInterfaceSnd can;
    CDmciCreatePhase5DiagInterfaceSnd phase5;
    CDmciCreatePsaDiagInterfaceSnd psa;
    CDmciCreateDLC12InterfaceSnd dlc;
    EXPECT_EQ(cmddata::WireSize(can), 30u);
    EXPECT_EQ(cmddata::WireSize(phase5), 30u);
    EXPECT_EQ(cmddata::WireSize(psa), 24u);
    dlc.option = 0x12;
    dlc.parameter = 0x3456;
    EXPECT_EQ(WireHex(dlc), "125634");
    EXPECT_EQ(phase5.GetCmdId(), 280u);
}
