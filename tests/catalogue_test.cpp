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

// The command table as published: id, name, send and receive version notation. One name is
// left out (nullptr): it is checked by identifier alone.
struct Row {
    std::uint32_t id;
    const char* name;
    const char* send;
    const char* receive;
};
// clang-format off
const Row kTable[] = {
    {0, "PcMonGetData", "1", "1"}, {0, "PcMonStart", "1", "1"}, {0, "PcMonStop", "1", "1"},
    {1, "GetCarInfo", "1", "1"}, {2, "GetEcuGroupList", "1", "1"}, {3, "GetConnectEcuList", "1", "1"},
    {4, "GetEcuFuncList", "1", "1"}, {5, "GetDatMonList", "1", "1"}, {6, "GetActTstList", "1", "1"},
    {7, "CheckDatMonCommFrm", "1", "V2"}, {8, "GetActTstInit", "1", "V2"}, {9, "StartDatMon", "1", "1"},
    {10, "StopDatMon", "1", "1"}, {11, "StartActTst", "1", "1"}, {12, "StopActTst", "V2", "1"},
    {13, "GetCustomItemList", "1", "1"}, {14, "SetCustom", "1", "1"}, {19, "GetDiagCodeCount", "1", "1"},
    {20, "GetDiagCode", "1", "1"}, {21, "GetFrzFrmDat", "1", "1"}, {22, "GetMultiFrzFrmDat", "1", "1"},
    {23, "ConfCheckMode", "1", "1"}, {24, "ChangeCheckMode", "1", "1"}, {25, "DelDiagCode", "1", "1"},
    {28, "GetIdCodeFuncList", "1", "1"}, {34, "GetCustomSupportList", "1", "1"}, {35, "GetWorkSupportList", "1", "1"},
    {36, "GetWorkSupportSectionList", "1", "1"}, {38, "GetCanBusEcuList", "1", "1"}, {39, "GetCarExceptionList", "1", "1"},
    {40, "SetCarException", "1", "1"}, {41, "JudgeDiagStatus", "1", "1"}, {42, "GetDiagDetailIdList", "1", "1"},
    {43, "GetDiagDetail", "1", "1"}, {44, "GetSpOperateCtrlRecordGroup", "1", "1"}, {45, "GetSpOperateCtrlRecord", "1", "1"},
    {46, "DelSpOperateCtrlRecord", "1", "1"}, {47, "GetDiagDetailFrzFrmDat", "1", "1"}, {48, "IsAbsFrzFrmDat", "1", "V2"},
    {49, "GetSleepNg", "1", "1"}, {50, "DelSleepNg", "1", "1"}, {51, "GetUtilFuncList", "V2", "1"},
    {52, "GetPendingCode", "1", "1"}, {53, "RepairGetEcuData", "1", "1"}, {54, "RepairActTst", "1", "1"},
    {55, "GetMultiMonEcuList", "1", "1"}, {56, "StartMultiMon", "V2", "1"}, {57, "GetTriggerItemList", "1", "1"},
    {58, "StartTesterPresent", "1", "1"}, {59, "StopTesterPresent", "1", "1"}, {60, "SetEcuBusline", "1", "1"},
    {61, "RepairStopActTst", "1", "1"}, {62, "GetCanBusDiag", "1", "1"}, {63, "GetShortCutList", "1", "1"},
    {64, "CheckConnectShortCut", "1", "1"}, {65, "GetDatMonSignalInfo", "1", "1"}, {66, "CheckMultiMon", "V2", "1"},
    {67, "GetDiagModeList", "1", "1"}, {68, "ChangeDiagMode", "1", "1"}, {69, "SelectCarType", "V1", "V1"},
    {70, "GetMountEcuList", "V1", "V1"}, {71, "GetStandardValueInfo", "V1", "V1"}, {72, "SelectCarCategory", "V1", "V1"},
    {73, "CommInitMountEcuList", "1", "1"}, {74, "SelectCarTypeVin", "V1", "V1"}, {75, "IsMultiFrzFrmDat", "V1", "V1"},
    {76, "GetMilInfo", "1", "1"}, {77, "GetVimInfo", "1", "1"}, {78, "SetVimSystemTime", "1", "1"},
    {79, "GetO2SList", "V1", "V1"}, {80, "GetO2SData", "V1", "V1"}, {81, "GetVIN", "V1", "V1"},
    {82, "GetCID", "V1", "V2"}, {83, "GetCVN", "V1", "V1"}, {84, "GetMonitoringTest", "V1", "V1"},
    {85, "GetReadinessCode", "V1", "V1"}, {86, "CARBModeInit", "V1", "V1"}, {87, "StartMultiMonDesMode", "2", "1"},
    {88, "CreateDrsFile", "V2", "1"}, {89, "TestEvapSystemLeak", "1", "1"}, {90, "GetMonitorStatusInfo", "V2", "1"},
    {91, "GetMonitorResultInfo", "1", "1"}, {92, "SetCustomizeAllDefault", "1", "1"}, {93, "StartDiagCARB", "1", "1"},
    {94, "GetGeneralCommResult", "1", "1"}, {95, "WriteAfterSalesZone", "V1", "V1"}, {96, "StartOnBoardDeviceCtrl", "1", "1"},
    {97, "GetFrmCheckMode", "1", "1"}, {98, "GetFrmConfCheckMode", "1", "1"}, {99, "GetMultiActTstInit", "V1", "V1"},
    {100, "GetDischargeMonData", "1", "1"}, {101, "GetFrmCarInfoVin", "1", "1"}, {102, "GetCommConfig", "1", "1"},
    {103, "GetSupport", "1", "1"}, {106, "DelCommCacheCustomDop", "1", "1"}, {111, "GetAnalyzeWorkFactor", "1", "1"},
    {112, "GetActTstSignalInfo", "1", "1"}, {114, "GetCurrentTimeInfo", "V1", "V2"}, {116, "GetPermanentCode", "1", "1"},
    {117, "GetCanBusCategoryList", "V1", "V1"}, {118, "GetCanBusCheckList", "V1", "V1"}, {119, "GetDescription", "1", "1"},
    {120, "GetAnalyzeWorkFactorDcm", "1", "1"}, {121, "GetMountEcuListNoComm", "1", "1"}, {122, "EcuEachConnect", "1", "1"},
    {123, "GetDefaultCarExceptList", "1", "1"}, {125, "SelectCarTypeVin10", "V1", "V2"}, {126, "GetTranslationStr", "V1", "V1"},
    {128, "GetCustomListInfo", "V1", "V1"}, {133, "GetDispMessage", "1", "1"}, {134, "GetDiagCodeWOTS", "d", "d"},
    {135, "GetTirePressureInfo", "V1", "V2"}, {136, "GetAbsoluteTimeStamp", "V1", "V1"}, {137, "StartMultiMonFuel", "V1", "V1"},
    {138, "CheckMultiMonFuel", "V1", "V1"}, {139, "GetCarInfoException", "V1", "V1"}, {140, "GetExceptionListCarType", "V1", "V1"},
    {141, "GetPendingCodeWOTS", "d", "d"}, {142, "SeekFFDNo", "1", "1"}, {143, "SetCommFrameCache", "1", "1"},
    {144, "GetCommFrameCache", "1", "1"}, {145, "GetDatMonSndFrame", "1", "1"}, {146, "GetDatMonValue", "V3", "1"},
    {147, "GetCarIdOptList", "1", "1"}, {148, "GetRemoteProtInfo", "1", "1"}, {149, "NoConfGeneralCommResponse", "1", "1"},
    {150, "VINControl", "V1", "V1"}, {151, "GetAvailableSetCustItemList", "1", "1"}, {152, "GetSndFrmCustomizeCurVal", "1", "1"},
    {153, "GetCustomizeCurVal", "1", "1"}, {154, "GetSndFrmSetCustomize", "1", "1"}, {155, "GetEcuFuncListNoComm", "d", "d"},
    {156, "SelectCarTypeRemote", "V1", "V1"}, {157, "GetVehicleSupportInfo", "1", "1"}, {158, "GetUtilFuncListNoComm", "d", "d"},
    {159, "GetRoBCandidateEcuList", "V1", "V1"}, {160, "GetRecordOnBehavior", "V1", "V2"}, {161, "DelRecordOnBehavior", "V1", "V1"},
    {162, "GetActiveTestCustomListId", "V1", "V1"}, {163, "GetPIDSignalData", "V1", "V1"}, {164, "GetDiagCodeInfo", "V1", "V1"},
    {165, "GetSelectFuncCandidateEcuList", "V1", "V1"}, {166, "GetDiagCodeCanBusDiag", "d", "d"}, {167, "GetDatMonListNoComm", "d", "d"},
    {168, "GetCustomListInfoNoComm", "d", "d"}, {169, "GetDdrInfo", "V1", "V1"}, {170, "GetOperationFrzFrmDat", "V1", "V1"},
    {172, "GetDiagCodeP5", "1", "1"}, {173, "GetDatMonListForActTest", "d", "d"}, {174, "GetRoutineActTstInit", "V1", "V1"},
    {175, "GetRoutineActTstSignalInfo", "V1", "V1"}, {176, "StartRoutineActTst", "V1", "V1"}, {177, "GetDiagCodeCanBusDiagP5", "d", "d"},
    {178, "GetSimpleOperationUtilityInfo", "1", "1"}, {179, "GetSimpleOperationUtilityResult", "1", "1"}, {180, "GetPhysicalAddressCARB", "V1", "V1"},
    {181, "GetEachFrzFrmDatP5", "1", "1"}, {182, "GetIdCodeFuncListNoCarInfo", "1*", "1*"}, {183, "DelEcuCnctCache", "1", "1"},
    {184, "GetPCSFuncList", "V1", "V2"}, {185, "GetPCSReadTime", "V2", "V3"}, {186, "GetPCSOperationFFD", "V1", "V1"},
    {187, "GetImageFFD", "V1", "V1"}, {188, "GetDdrInfoSaveLog", "V1", "V1"}, {189, "GetAbsoluteTimeStampSaveLog", "V1", "V1"},
    {190, "GetPCSHeaderInfo", "V1", "V1"}, {191, "SetDefSession", "V1", "V1"}, {192, "SelectCGWCanBusOption", "V1", "V1"},
    {193, "GetCGWCanBusCtgrList", "V1", "V1"}, {194, "GetCGWCanBusChkList", "V1", "V1"}, {195, "GetCanBusEcuConnect", "1*", "1*"},
    {196, nullptr, "1*", "1*"}, {197, "GetEcuNameId", "1", "1"}, {198, "GetDatMonSignalInfoList", "1", "1"},
    {199, "GetMktMonRamData", "V1", "V1"}, {201, "GetVINCheckEcu", "V1", "V1"}, {202, "MoveSessionCGWDK", "V1", "V1"},
    {203, "GetOperationFrzFrmDat2", "V1", "V1"}, {204, "DelSpecifiedCache", "V1", "V1"}, {205, "SetVehicleInfoForVehicleId", "V1", "V1"},
    {206, "IsNonDisplayInfo", "V1", "V1"}, {208, "GetLCSOperationFFD", "V1", "V1"}, {209, "GetCurrentTimeInfoEachEcu", "V1", "V1"},
    {210, "IsImageFFD", "V1", "V1"}, {211, "CheckUtilFunc", "V1", "V1"}, {212, "SingleRoutineActTst", "V1", "V1"},
    {213, "GetSupportMulti", "V1", "V1"}, {214, "GetAnalyzeWorkFactorRoB", "V2", "V1"}, {215, "GetAnalyzeWorkFactorDcmP5", "V1", "V1"},
    {217, "GetImageSpecInfo", "V2", "V2"}, {218, "GetCurrentAbsTimeInfo", "V1", "V1"}, {219, "GetPartNumber", "V1", "V1"},
    {220, "ChangeLogCollectionMode", "1", "1"}, {221, "AutoPowerOffCansel", "V1", "V1"}, {222, "GetPVMImageFFD", "V2", "V1"},
    {223, "GetCBESTInfo", "1", "1"}, {224, "GetADSOperationFFD", "V1", "V1"}, {225, "GetADSImageFFD", "V1", "V1"},
    {228, "GetReadTime", "V1", "V1"}, {229, "GetADSDdrInfo", "V1", "V1"}, {233, "GetVela3ImageFFD", "V1", "V1"},
    {234, "GetVela3OperationFFD", "V1", "V1"}, {235, "GetRCImageFFD", "V1", "V1"}, {236, "GetVimSupport", "V1", "V1"},
    {246, "IsPCSSBRVehicle", "V1", "V1"}, {256, "DmciCreateIsoDiagInterface", "1", "1"}, {257, "DmciCreateCanDiagInterface", "1", "1"},
    {258, "DmciCreateVpwDiagInterface", "1", "1"}, {259, "DmciCreatePwmDiagInterface", "1", "1"}, {260, "DmciDeleteDiagInterface", "1", "1"},
    {261, "DmciCreateDLC12Interface", "1", "1"}, {262, "DmciDeleteDLC12Interface", "1", "1"}, {263, "DmciCreateDmInterface", "1", "1"},
    {264, "DmciDeleteDmInterface", "1", "1"}, {265, "DmciDataMonitorSetupPack", "1", "1"}, {266, "DmciDataMonitorSetupPair", "1", "1"},
    {267, "DmciDataMonitorSetupDtc", "1", "1"}, {268, "DmciDataMonitorStart", "1", "1"}, {269, "DmciGetMonitorData", "1", "1"},
    {270, "DmciDataMonitorStop", "1", "1"}, {271, "DmciActiveTestStart", "1", "1"}, {272, "DmciActiveTestStop", "1", "1"},
    {273, "DmciIDMapAppend", "1", "1"}, {274, "DmciSetPickupData", "1", "1"}, {275, "DmciMonitorSystemSend", "1", "1"},
    {276, "DmciSetNegCount", "1", "1"}, {277, "DmciCreatePsaDiagInterface", "1", "1"}, {278, "DmciSetInterruptSendTiming", "1", "1"},
    {279, "DmciSetAdditionFrame", "1", "1"}, {280, "DmciCreatePhase5DiagInterface", "1", "1"}, {281, "DmciDataidSetup", "1", "1"},
    {282, "DmciClearDynamicDataid", "1", "1"}, {283, "DmciActiveTestStartP5", "1", "1"}, {284, "DmciDataMonitorSetupRid", "1", "1"},
    {285, "DmciCommDefineDynamicDataidSetup", "V1", "V1"}, {286, "DmciSetRoutineInfo", "1", "1"},
};
// clang-format on

VersionRule RuleOf(std::string_view notation) {
    if (notation == "1") return VersionRule::kFixed1;
    if (notation == "2") return VersionRule::kFixed2;
    if (notation == "V1") return VersionRule::kArg1;
    if (notation == "V2") return VersionRule::kArg2;
    if (notation == "V3") return VersionRule::kArg3;
    if (notation == "1*") return VersionRule::kIgnored1;
    return VersionRule::kDerived;  // "d"
}

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

bool IsDmci(const CommandInfo& c) {
    return std::string_view(c.name).substr(0, 4) == "Dmci";
}

}  // namespace

TEST(Catalogue, EveryRowOfTheTableIsPresentWithItsVersionRules) {
    ASSERT_EQ(kCommandCount, sizeof kTable / sizeof kTable[0]);
    EXPECT_EQ(kCommandCount, 236u);
    for (const Row& row : kTable) {
        SCOPED_TRACE(row.id);
        const CommandInfo* c = nullptr;
        if (row.name != nullptr) {
            c = FindCommand(std::string_view(row.name));
        } else {
            c = FindCommand(row.id);
        }
        ASSERT_NE(c, nullptr);
        EXPECT_EQ(c->id, row.id);
        EXPECT_EQ(c->sendVersion, RuleOf(row.send));
        EXPECT_EQ(c->receiveVersion, RuleOf(row.receive));
    }
}

TEST(Catalogue, IdentifiersInUseAndUnused) {
    std::set<std::uint32_t> ids;
    for (const CommandInfo& c : kCommands) ids.insert(c.id);
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
    EXPECT_EQ(DefaultVersion(cmddata::cmd::StartMultiMonDesMode, Side::kSend), 2);
    EXPECT_EQ(DefaultVersion(cmddata::cmd::StartMultiMonDesMode, Side::kReceive), 1);
    EXPECT_EQ(Named("GetDatMonValue").sendVersion, VersionRule::kArg3);
    EXPECT_EQ(DefaultVersion(cmddata::cmd::GetDatMonValue, Side::kSend), 3);
    EXPECT_EQ(Named("CreateDrsFile").sendVersion, VersionRule::kArg2);
    EXPECT_EQ(Named("CreateDrsFile").receiveVersion, VersionRule::kFixed1);
    EXPECT_EQ(Named("GetCanBusEcuConnect").sendVersion, VersionRule::kIgnored1);
    EXPECT_EQ(Named("GetCanBusEcuConnect").receiveVersion, VersionRule::kIgnored1);
    EXPECT_EQ(DefaultVersion(cmddata::cmd::GetCanBusEcuConnect, Side::kSend), 1);
    EXPECT_EQ(Named("DmciCommDefineDynamicDataidSetup").sendVersion, VersionRule::kArg1);
    EXPECT_EQ(Named("DmciCommDefineDynamicDataidSetup").receiveVersion, VersionRule::kArg1);
    EXPECT_EQ(DefaultVersion(cmddata::cmd::GetCID, Side::kReceive), 2);
    EXPECT_EQ(cmddata::SndVersion(cmddata::cmd::GetCID), 1);
    EXPECT_EQ(cmddata::RcvVersion(cmddata::cmd::GetCID), 2);
    EXPECT_EQ(DefaultVersion(0xFFFF, Side::kSend), 1);  // unknown: 1
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
    EXPECT_EQ(cmddata::SndVersion(cmddata::cmd::GetUtilFuncListNoComm), 2);
    EXPECT_EQ(cmddata::RcvVersion(cmddata::cmd::GetUtilFuncListNoComm), 1);
    EXPECT_EQ(cmddata::SndVersion(cmddata::cmd::GetCustomListInfoNoComm), 1);
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

TEST(Catalogue, GetCarInfoMessagesLeadWithTheirIdentifier) {
    CGetCarInfoSnd snd;
    CGetCarInfoRcv rcv;
    EXPECT_EQ(testing_cmddata::WireHex(snd).substr(0, 8), "01000000");
    EXPECT_EQ(testing_cmddata::WireHex(rcv).substr(0, 8), "01000000");
}
