// The catalogue checked against the command table it was transcribed from.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "helpers.h"

using cmddata::CommandInfo;
using cmddata::FindCommand;
using cmddata::Framing;
using cmddata::kCommandCount;
using cmddata::kCommands;
using cmddata::Side;
using cmddata::VersionRule;

namespace {

const CommandInfo& Named(const char* name) {
    const CommandInfo* c = FindCommand(std::string_view(name));
    EXPECT_NE(c, nullptr) << name;
    static const CommandInfo none{};
    return c != nullptr ? *c : none;
}

const char* const kVersionedHeader[] = {
    "EcuEachConnect",
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
    "GetTirePressureInfo",
};

const char* const kPayloadUnknown[] = {
    "GetVimInfo",          "SetVimSystemTime", "SetCustomizeAllDefault",
    "GetDischargeMonData", "GetSupport",       "GetDescription",
    "GetTranslationStr",   "GetDispMessage",   "GetTirePressureInfo",
    "VINControl",          "GetImageFFD",      "GetMktMonRamData",
    "GetVINCheckEcu",      "IsNonDisplayInfo", "IsImageFFD",
    "GetSupportMulti",     "GetImageSpecInfo", "GetPartNumber",
    "GetCBESTInfo",        "GetVimSupport",    "IsPCSSBRVehicle",
};

bool Contains(const char* const* begin, const char* const* end, std::string_view name) {
    return std::any_of(begin, end, [&](const char* n) { return name == n; });
}

bool IsDmci(const CommandInfo& c) { return std::string_view(c.name).substr(0, 4) == "Dmci"; }

}  // namespace

TEST(Catalogue, IdentifiersInUseAndUnused) {
    std::set<std::uint32_t> ids;
    for (const CommandInfo& c : kCommands) ids.insert(c.id);
    EXPECT_EQ(kCommandCount, 236u);  // 234 values; three commands share 0
    EXPECT_EQ(ids.size(), 234u);
    EXPECT_EQ(*ids.rbegin(), 286u);

    // The unused values, as ranges.
    const std::pair<std::uint32_t, std::uint32_t> gaps[] = {
        {15, 18},   {26, 27},   {29, 33},   {37, 37},   {104, 105}, {107, 110}, {113, 113},
        {115, 115}, {124, 124}, {127, 127}, {129, 132}, {171, 171}, {200, 200}, {207, 207},
        {216, 216}, {226, 227}, {230, 232}, {237, 245}, {247, 255},
    };
    std::set<std::uint32_t> unused;
    for (const auto& gap : gaps)
        for (std::uint32_t id = gap.first; id <= gap.second; ++id) unused.insert(id);
    EXPECT_EQ(unused.size(), 287u - 234u);
    for (std::uint32_t id : unused) {
        EXPECT_EQ(FindCommand(id), nullptr) << id;
        EXPECT_EQ(ids.count(id), 0u) << id;
    }
    for (std::uint32_t id = 0; id <= 286; ++id)
        EXPECT_TRUE(ids.count(id) + unused.count(id) == 1) << id;
}

TEST(Catalogue, ZeroIsSharedByExactlyThePcMonitorCommands) {
    std::set<std::string> atZero;
    for (const CommandInfo& c : kCommands)
        if (c.id == 0) atZero.insert(c.name);
    EXPECT_EQ(atZero, (std::set<std::string>{"PcMonGetData", "PcMonStart", "PcMonStop"}));
    EXPECT_STREQ(FindCommand(0u)->name, "PcMonGetData");
    EXPECT_EQ(cmddata::cmd::PcMonStart, 0u);
    EXPECT_EQ(cmddata::cmd::PcMonStop, 0u);
}

TEST(Catalogue, DirectInterfaceCommandsOccupyExactly256To286) {
    int dmci = 0;
    for (const CommandInfo& c : kCommands) {
        EXPECT_EQ(IsDmci(c), c.id >= 256) << c.name;
        if (IsDmci(c)) {
            ++dmci;
        } else {
            EXPECT_LE(c.id, 246u) << c.name;
        }
    }
    EXPECT_EQ(dmci, 31);
}

TEST(Catalogue, NamesAreUniqueAndFindCommandFindsEach) {
    std::set<std::string_view> names;
    for (const CommandInfo& c : kCommands) {
        EXPECT_TRUE(names.insert(c.name).second) << c.name;
        EXPECT_EQ(FindCommand(std::string_view(c.name)), &c);
    }
    EXPECT_EQ(FindCommand(std::string_view("GetCarInfoX")), nullptr);
    EXPECT_EQ(FindCommand(287u), nullptr);
}

TEST(Catalogue, VersionRulesAndDefaults) {
    using cmddata::DefaultVersion;
    EXPECT_EQ(Named("StartMultiMonDesMode").sendVersion, VersionRule::kFixed2);
    EXPECT_EQ(DefaultVersion(Named("StartMultiMonDesMode"), Side::kSend), 2);
    EXPECT_EQ(DefaultVersion(Named("StartMultiMonDesMode"), Side::kReceive), 1);
    EXPECT_EQ(Named("GetDatMonValue").sendVersion, VersionRule::kArg3);
    EXPECT_EQ(DefaultVersion(Named("GetDatMonValue"), Side::kSend), 3);
    EXPECT_EQ(Named("CreateDrsFile").sendVersion, VersionRule::kArg2);
    EXPECT_EQ(Named("CreateDrsFile").receiveVersion, VersionRule::kFixed1);
    EXPECT_EQ(Named("GetCanBusEcuConnect").sendVersion, VersionRule::kIgnored1);
    EXPECT_EQ(Named("GetCanBusEcuConnect").receiveVersion, VersionRule::kIgnored1);
    EXPECT_EQ(DefaultVersion(Named("GetCanBusEcuConnect"), Side::kSend), 1);
    EXPECT_EQ(Named("DmciCommDefineDynamicDataidSetup").sendVersion, VersionRule::kArg1);
    EXPECT_EQ(Named("DmciCommDefineDynamicDataidSetup").receiveVersion, VersionRule::kArg1);
    EXPECT_EQ(DefaultVersion(Named("GetCID"), Side::kReceive), 2);
    EXPECT_EQ(cmddata::DefaultVersion(Named("GetCID"), Side::kSend), 1);
    EXPECT_EQ(cmddata::DefaultVersion(Named("GetCID"), Side::kReceive), 2);
}

TEST(Catalogue, TwelveCommandsPutTheVersionPrefixBeforeTheirHeader) {
    int own = 0;
    for (const CommandInfo& c : kCommands) {
        SCOPED_TRACE(c.name);
        if (c.IsDerived()) {
            const CommandInfo* base = FindCommand(c.layoutOf);
            ASSERT_NE(base, nullptr);
            EXPECT_EQ(c.sendFraming, base->sendFraming);
            EXPECT_EQ(c.receiveFraming, base->receiveFraming);
            continue;
        }
        const bool versioned =
            Contains(std::begin(kVersionedHeader), std::end(kVersionedHeader), c.name);
        if (versioned) ++own;
        const Framing expected = versioned ? Framing::kVersionedHeader : Framing::kHeader;
        if (IsDmci(c) || c.id == 0) continue;  // headerless families, below
        EXPECT_EQ(c.sendFraming, expected);
        EXPECT_EQ(c.receiveFraming, expected);
    }
    EXPECT_EQ(own, 12);
}

TEST(Catalogue, HeaderlessFraming) {
    for (const CommandInfo& c : kCommands) {
        if (!IsDmci(c)) continue;
        EXPECT_EQ(c.sendFraming, Framing::kNone) << c.name;
        EXPECT_EQ(c.receiveFraming, Framing::kNone) << c.name;
    }
    EXPECT_EQ(Named("PcMonGetData").sendFraming, Framing::kHeader);
    EXPECT_EQ(Named("PcMonGetData").receiveFraming, Framing::kNone);
    for (const char* name : {"PcMonStart", "PcMonStop"}) {
        EXPECT_EQ(Named(name).sendFraming, Framing::kNone) << name;
        EXPECT_EQ(Named(name).receiveFraming, Framing::kNone) << name;
    }
}

TEST(Catalogue, DerivedCommandsNameTheirLayout) {
    const std::pair<std::uint32_t, std::uint32_t> derived[] = {
        {134, 20}, {141, 52},  {155, 4}, {158, 51},  {166, 20},
        {167, 5},  {168, 128}, {173, 5}, {177, 172},
    };
    int count = 0;
    for (const CommandInfo& c : kCommands) {
        if (!c.IsDerived()) continue;
        ++count;
        EXPECT_EQ(c.sendVersion, VersionRule::kDerived) << c.name;
        EXPECT_EQ(c.receiveVersion, VersionRule::kDerived) << c.name;
    }
    EXPECT_EQ(count, 9);
    for (const auto& d : derived) {
        const CommandInfo* c = FindCommand(d.first);
        ASSERT_NE(c, nullptr);
        EXPECT_EQ(c->layoutOf, d.second) << c->name;
    }
    // A derived class is built with its base's default version, side by side.
    EXPECT_EQ(cmddata::DefaultVersion(Named("GetUtilFuncListNoComm"), Side::kSend), 2);
    EXPECT_EQ(cmddata::DefaultVersion(Named("GetUtilFuncListNoComm"), Side::kReceive), 1);
    EXPECT_EQ(cmddata::DefaultVersion(Named("GetCustomListInfoNoComm"), Side::kSend), 1);
}

TEST(Catalogue, CommandsOfUnknownPayloadAreFlagged) {
    int unknown = 0;
    for (const CommandInfo& c : kCommands) {
        const bool listed =
            Contains(std::begin(kPayloadUnknown), std::end(kPayloadUnknown), c.name);
        EXPECT_EQ(c.payloadKnown, !listed) << c.name;
        if (!c.payloadKnown) ++unknown;
    }
    EXPECT_EQ(unknown, 21);
    EXPECT_EQ(Named("GetTirePressureInfo").sendFraming, Framing::kVersionedHeader);
}


TEST(Catalogue, UnknownPayloadCommandsCarryTheirHeaderAlone) {
    CGetTirePressureInfoRcv answer;  // V2 on the receive side, prefix before the header
    EXPECT_EQ(testing_cmddata::WireHex(answer),
              "02000000"
              "87000000" +
                  std::string(32, '0'));
    CGetTirePressureInfoSnd request(5);
    EXPECT_EQ(testing_cmddata::WireHex(request).substr(0, 16), "0500000087000000");
    CIsPCSSBRVehicleSnd plain;
    EXPECT_EQ(testing_cmddata::WireHex(plain), "f6000000" + std::string(32, '0'));
}
