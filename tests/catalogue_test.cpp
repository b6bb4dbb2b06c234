// The catalogue's invariants: identifiers, names, derived commands, framings and the classes each
// command needs; a few spot checks where a wrong line would still keep every invariant.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "helpers.h"

using cmddata::CommandInfo;
using cmddata::FindCommand;
using cmddata::Framing;
using cmddata::kCommands;
using cmddata::Side;
using cmddata::VersionRule;

namespace {

bool IsDmci(const CommandInfo& c) { return std::string_view(c.name).substr(0, 4) == "Dmci"; }

// The bytes of a command's side, filled as the demo fills it, with the identifier blanked.
std::string FilledWithoutId(const CommandInfo& c, Side side) {
    const cmddata::ClassInfo* info = cmddata::FindMessageClass(c, side);
    if (info == nullptr) return "no class";
    std::unique_ptr<CCmdCore> m(info->make(cmddata::DefaultVersion(c, side)));
    cmddata::Fill(*m, 7);
    std::string hex = testing_cmddata::WireHex(*m);
    const Framing framing = c.FramingOf(side);
    if (framing != Framing::kNone) hex.replace(framing == Framing::kHeader ? 0 : 8, 8, "IDIDIDID");
    return hex;
}

}  // namespace

TEST(Catalogue, IdentifiersAndNames) {
    std::set<std::uint32_t> ids;
    std::set<std::string_view> names;
    for (const CommandInfo& c : kCommands) {
        SCOPED_TRACE(c.name);
        EXPECT_LE(c.id, 286u);
        EXPECT_TRUE(names.insert(c.name).second) << "name used twice";
        EXPECT_EQ(FindCommand(std::string_view(c.name)), &c);
        // Only the PC monitor commands share an identifier (0), and the lookup gives the first.
        if (!ids.insert(c.id).second) {
            EXPECT_EQ(c.id, 0u);
        }
        EXPECT_EQ(FindCommand(c.id)->id, c.id);
        // The direct interfaces occupy 256 and above, and nothing else does.
        EXPECT_EQ(IsDmci(c), c.id >= 256);
    }
    EXPECT_EQ(cmddata::kCommandCount, 236u);
    EXPECT_EQ(ids.size(), 234u);
    EXPECT_STREQ(FindCommand(0u)->name, "PcMonGetData");
    EXPECT_EQ(cmddata::cmd::PcMonStop, 0u);
    EXPECT_EQ(cmddata::cmd::GetVIN, 81u);
    EXPECT_EQ(FindCommand(std::string_view("GetCarInfoX")), nullptr);
    EXPECT_EQ(FindCommand(287u), nullptr);
}

TEST(Catalogue, EveryCommandHasBothClassesInTheClassTable) {
    for (const CommandInfo& c : kCommands)
        for (Side side : {Side::kSend, Side::kReceive}) {
            const cmddata::ClassInfo* info = cmddata::FindMessageClass(c, side);
            ASSERT_NE(info, nullptr) << c.name;
            EXPECT_STREQ(info->command->name, c.name) << info->name;
            EXPECT_EQ(info->side, side) << info->name;
        }
}

// A derived command names a command of its own that is not derived, keeps its framings and
// default versions, and its classes write the base's bytes but for the identifier.
TEST(Catalogue, DerivedCommandsShareTheirBasesLayout) {
    int derived = 0;
    for (const CommandInfo& c : kCommands) {
        if (!c.IsDerived()) continue;
        SCOPED_TRACE(c.name);
        ++derived;
        const CommandInfo* base = FindCommand(c.layoutOf);
        ASSERT_NE(base, nullptr);
        EXPECT_FALSE(base->IsDerived());
        EXPECT_EQ(c.sendVersion, VersionRule::kDerived);
        EXPECT_EQ(c.receiveVersion, VersionRule::kDerived);
        for (Side side : {Side::kSend, Side::kReceive}) {
            EXPECT_EQ(c.FramingOf(side), base->FramingOf(side));
            EXPECT_EQ(cmddata::DefaultVersion(c, side), cmddata::DefaultVersion(*base, side));
            EXPECT_EQ(FilledWithoutId(c, side), FilledWithoutId(*base, side));
        }
    }
    EXPECT_EQ(derived, 9);
    EXPECT_EQ(FindCommand(cmddata::cmd::GetDiagCodeWOTS)->layoutOf, cmddata::cmd::GetDiagCode);
}

// The twelve commands that put the version prefix before their header, the headerless direct
// interfaces and PC monitor, the plain header everywhere else.
TEST(Catalogue, FramingGroups) {
    const std::set<std::string> versioned = {"EcuEachConnect",
                                             "GetADSDdrInfo",
                                             "GetAbsoluteTimeStamp",
                                             "GetAbsoluteTimeStampSaveLog",
                                             "GetAnalyzeWorkFactorDcm",
                                             "GetCustomListInfo",
                                             "GetDdrInfo",
                                             "GetDdrInfoSaveLog",
                                             "GetMountEcuListNoComm",
                                             "GetPCSFuncList",
                                             "GetPIDSignalData",
                                             "GetTirePressureInfo"};
    for (const CommandInfo& c : kCommands) {
        SCOPED_TRACE(c.name);
        const CommandInfo& layout = *FindCommand(c.layoutOf);
        Framing expected =
            versioned.count(layout.name) ? Framing::kVersionedHeader : Framing::kHeader;
        if (IsDmci(c) || c.id == 0) expected = Framing::kNone;
        if (c.id == 0 && std::string_view(c.name) == "PcMonGetData") {
            EXPECT_EQ(c.sendFraming, Framing::kHeader);
        } else {
            EXPECT_EQ(c.sendFraming, expected);
        }
        EXPECT_EQ(c.receiveFraming, expected);
    }
}

// A command of unknown payload carries its header alone, however its classes are filled.
TEST(Catalogue, UnknownPayloadCommandsCarryTheirHeaderAlone) {
    int unknown = 0;
    for (const CommandInfo& c : kCommands) {
        if (c.payloadKnown) continue;
        ++unknown;
        for (Side side : {Side::kSend, Side::kReceive}) {
            const std::string hex = FilledWithoutId(c, side);
            EXPECT_EQ(hex.size(), c.FramingOf(side) == Framing::kVersionedHeader ? 48u : 40u)
                << c.name;
        }
    }
    EXPECT_EQ(unknown, 21);
}
