// Function lists and utilities: which diagnostic functions, utilities, identification-code
// functions, work-support entries, shortcuts and diagnostic modes an ECU or the vehicle offers,
// and the few utility actions that go with them.
//
// The numeric words of these records are carried, not interpreted; their names are the meaning
// both processes give them.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/function.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/function.h"

// --- Records ---

/// One utility function. Each version adds a group of words (tests independent, in order):
/// 2 a kind word, 3 two link words, 4 four option words, 5 one further word, 6 that version-5
/// word a second time, twelve setting words and a flag word. Reading stores both copies of the
/// version-5 word into the one member, so the second copy wins; writing sends the member twice.
/// The default version is 6.
class CMDDATA_API CCmdFunction : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFunction)
    explicit CCmdFunction(std::uint16_t version = 6) : CCmdCore(version, 0) {}
    CCmdString name;
    std::uint16_t words[3] = {0, 0, 0};
    std::uint32_t values[2] = {0, 0};
    std::uint16_t kind = 0;                   // version 2 and later
    std::uint32_t links[2] = {0, 0};          // version 3 and later
    std::uint32_t options[4] = {0, 0, 0, 0};  // version 4 and later
    std::uint32_t extension = 0;              // version 5 and later; sent twice from version 6
    std::uint16_t settings[12] = {};          // version 6 and later
    std::uint32_t flags = 0;                  // version 6 and later
};

/// An identification-code function: name, number, attribute and option words, then from
/// version 2 the target it links to, from 3 a display order, from 4 four option words (the
/// default version is 4). The attribute word is declared after the number but sent before it.
class CMDDATA_API CCmdIdCodeFunc : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdIdCodeFunc)
    explicit CCmdIdCodeFunc(std::uint16_t version = 4) : CCmdCore(version, 0) {}
    CCmdString name;
    std::uint16_t functionId = 0;
    std::uint32_t attribute = 0;  // travels before functionId
    std::uint32_t option = 0;
    // version 2 and later
    std::uint16_t targetEcuId = 0;
    std::uint16_t targetItemId = 0;
    std::uint32_t targetAddress = 0;
    std::uint16_t targetKind = 0;
    std::uint32_t targetFlags = 0;
    // version 3 and later
    std::uint32_t displayOrder = 0;
    // version 4 and later
    std::uint32_t options[4] = {0, 0, 0, 0};
};

/// An identification-code function entry of a part (no version-dependent fields).
class CMDDATA_API CCmdIdCodeFunction : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdIdCodeFunction)
    explicit CCmdIdCodeFunction(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString name;
    std::uint16_t ids[3] = {0, 0, 0};
    std::uint32_t values[2] = {0, 0};
    std::uint16_t kind = 0;
    std::uint32_t options[7] = {0, 0, 0, 0, 0, 0, 0};
};

/// A part with its identification-code functions; the functions travel before the name.
class CMDDATA_API CCmdIdCodePart : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdIdCodePart)
    explicit CCmdIdCodePart(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdList<CCmdIdCodeFunction> functions;
    CCmdString name;
};

/// A shortcut entry: its number and name.
class CMDDATA_API CCmdShortCut : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdShortCut)
    CCmdShortCut() = default;
    std::uint16_t shortCutId = 0;
    CCmdString name;
};

/// A diagnostic mode: its name and number.
class CMDDATA_API CCmdDiagMode : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagMode)
    CCmdDiagMode() = default;
    CCmdString name;
    std::uint16_t modeId = 0;
};

/// A pair of names.
class CMDDATA_API CCmdStringName : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdStringName)
    explicit CCmdStringName(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString name;
    CCmdString secondName;
};

/// Detail bytes.
class CMDDATA_API CCmdDetailData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDetailData)
    CCmdDetailData() = default;
    CCmdList<CCmdByteData> bytes;
};

/// One identification section: its functions, its name and two words.
class CMDDATA_API CCmdIdSection : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdIdSection)
    CCmdIdSection() = default;
    CCmdList<CCmdIdCodeFunc> functions;
    CCmdString name;
    std::uint16_t sectionId = 0;
    std::uint16_t kind = 0;
};

// --- Layouts several requests share ---

// --- Messages ---

/// Asks for the diagnostic functions of the ECU (header only).
class CMDDATA_API CGetEcuFuncListSnd
    : public CCmdSnd<cmddata::command::GetEcuFuncList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetEcuFuncListSnd)
};

/// The diagnostic functions of the ECU.
class CMDDATA_API CGetEcuFuncListRcv : public CCmdRcv<cmddata::command::GetEcuFuncList> {
public:
    CMDDATA_MESSAGE(CGetEcuFuncListRcv)
    CCmdList<CCmdFunc> functions;
};

/// Asks for the ECU's functions without talking to it; the list request under its own id.
CMDDATA_DERIVED_COMMAND(CGetEcuFuncListNoCommSnd, CGetEcuFuncListSnd, GetEcuFuncListNoComm);

/// The ECU's functions known without talking to it; the list answer under its own id.
CMDDATA_DERIVED_COMMAND(CGetEcuFuncListNoCommRcv, CGetEcuFuncListRcv, GetEcuFuncListNoComm);

/// Asks for the identification-code functions (header only).
class CMDDATA_API CGetIdCodeFuncListSnd
    : public CCmdSnd<cmddata::command::GetIdCodeFuncList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetIdCodeFuncListSnd)
};

/// The identification-code functions, section by section.
class CMDDATA_API CGetIdCodeFuncListRcv : public CCmdRcv<cmddata::command::GetIdCodeFuncList> {
public:
    CMDDATA_MESSAGE(CGetIdCodeFuncListRcv)
    CCmdList<CCmdIdSection> sections;
};

/// Asks for the identification-code functions without vehicle information; the selector
/// chooses the set.
class CMDDATA_API CGetIdCodeFuncListNoCarInfoSnd
    : public CCmdSnd<cmddata::command::GetIdCodeFuncListNoCarInfo, CCmdSelectorMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetIdCodeFuncListNoCarInfoSnd)
};

/// The identification-code functions part by part, and a text.
class CMDDATA_API CGetIdCodeFuncListNoCarInfoRcv
    : public CCmdRcv<cmddata::command::GetIdCodeFuncListNoCarInfo> {
public:
    CMDDATA_MESSAGE(CGetIdCodeFuncListNoCarInfoRcv)
    CCmdList<CCmdIdCodePart> parts;
    CCmdString text;
};

/// Asks for the work-support entries of one section.
class CMDDATA_API CGetWorkSupportListSnd
    : public CCmdSnd<cmddata::command::GetWorkSupportList, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetWorkSupportListSnd)
};

/// The work-support entries and two words. The list travels first, then the two words in the
/// reverse of their order here: secondWord before firstWord.
class CMDDATA_API CGetWorkSupportListRcv : public CCmdRcv<cmddata::command::GetWorkSupportList> {
public:
    CMDDATA_MESSAGE(CGetWorkSupportListRcv)
    std::uint16_t firstWord = 0;
    std::uint16_t secondWord = 0;
    CCmdList<CCmdLinkName> links;
};

/// Asks for the work-support sections (header only).
class CMDDATA_API CGetWorkSupportSectionListSnd
    : public CCmdSnd<cmddata::command::GetWorkSupportSectionList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetWorkSupportSectionListSnd)
};

/// The work-support sections: a word, then the numbered section names.
class CMDDATA_API CGetWorkSupportSectionListRcv
    : public CCmdRcv<cmddata::command::GetWorkSupportSectionList> {
public:
    CMDDATA_MESSAGE(CGetWorkSupportSectionListRcv)
    std::uint16_t sectionCount = 0;
    CCmdList<CCmdItemName> sections;
};

/// Asks for the utility functions; from version 2 (the default) a second selector byte
/// follows. The version does not travel: both sides construct the message with the same one.
class CMDDATA_API CGetUtilFuncListSnd : public CCmdSnd<cmddata::command::GetUtilFuncList> {
public:
    CMDDATA_MESSAGE(CGetUtilFuncListSnd)
    std::uint8_t selector = 0;
    std::uint8_t secondSelector = 0;  // version 2 and later
};

/// The utility functions.
class CMDDATA_API CGetUtilFuncListRcv : public CCmdRcv<cmddata::command::GetUtilFuncList> {
public:
    CMDDATA_MESSAGE(CGetUtilFuncListRcv)
    CCmdList<CCmdFunction> functions;
};

/// Asks for the utility functions without talking to the ECU; the request (version 2) under
/// its own id.
CMDDATA_DERIVED_COMMAND(CGetUtilFuncListNoCommSnd, CGetUtilFuncListSnd, GetUtilFuncListNoComm);

/// The utility functions known without talking to the ECU; the answer under its own id.
CMDDATA_DERIVED_COMMAND(CGetUtilFuncListNoCommRcv, CGetUtilFuncListRcv, GetUtilFuncListNoComm);

/// Asks for the shortcuts (header only).
class CMDDATA_API CGetShortCutListSnd
    : public CCmdSnd<cmddata::command::GetShortCutList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetShortCutListSnd)
};

/// The shortcuts.
class CMDDATA_API CGetShortCutListRcv : public CCmdRcv<cmddata::command::GetShortCutList> {
public:
    CMDDATA_MESSAGE(CGetShortCutListRcv)
    CCmdList<CCmdShortCut> shortCuts;
};

/// Asks for the diagnostic modes; the selector chooses the set.
class CMDDATA_API CGetDiagModeListSnd
    : public CCmdSnd<cmddata::command::GetDiagModeList, CCmdSelectorMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDiagModeListSnd)
};

/// The diagnostic modes.
class CMDDATA_API CGetDiagModeListRcv : public CCmdRcv<cmddata::command::GetDiagModeList> {
public:
    CMDDATA_MESSAGE(CGetDiagModeListRcv)
    CCmdList<CCmdDiagMode> modes;
};

/// Changes the diagnostic mode: a selector, the mode number and an option byte.
class CMDDATA_API CChangeDiagModeSnd : public CCmdSnd<cmddata::command::ChangeDiagMode> {
public:
    CMDDATA_MESSAGE(CChangeDiagModeSnd)
    std::uint8_t selector = 0;
    std::uint16_t modeId = 0;
    std::uint8_t option = 0;
};

/// Outcome of changing the diagnostic mode (header only).
class CMDDATA_API CChangeDiagModeRcv
    : public CCmdRcv<cmddata::command::ChangeDiagMode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CChangeDiagModeRcv)
};

/// Controls an on-board device: device id, value and qualifier words.
class CMDDATA_API CStartOnBoardDeviceCtrlSnd
    : public CCmdSnd<cmddata::command::StartOnBoardDeviceCtrl, CCmdItemValueMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartOnBoardDeviceCtrlSnd)
};

/// Outcome of the device control (header only).
class CMDDATA_API CStartOnBoardDeviceCtrlRcv
    : public CCmdRcv<cmddata::command::StartOnBoardDeviceCtrl, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartOnBoardDeviceCtrlRcv)
};

/// Writes the after-sales zone: the bytes, then two words (the version does not travel).
class CMDDATA_API CWriteAfterSalesZoneSnd : public CCmdSnd<cmddata::command::WriteAfterSalesZone> {
public:
    CMDDATA_MESSAGE(CWriteAfterSalesZoneSnd)
    CCmdList<CCmdByteData> data;
    std::uint32_t address = 0;
    std::uint32_t option = 0;
};

/// Outcome of writing the after-sales zone: a result word and a byte (the version does not
/// travel).
class CMDDATA_API CWriteAfterSalesZoneRcv : public CCmdRcv<cmddata::command::WriteAfterSalesZone> {
public:
    CMDDATA_MESSAGE(CWriteAfterSalesZoneRcv)
    std::uint32_t result = 0;
    std::uint8_t state = 0;
};

/// Asks for the description of one simple operation utility.
class CMDDATA_API CGetSimpleOperationUtilityInfoSnd
    : public CCmdSnd<cmddata::command::GetSimpleOperationUtilityInfo, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSimpleOperationUtilityInfoSnd)
};

/// The description of a simple operation utility: two words around a 16-bit one.
class CMDDATA_API CGetSimpleOperationUtilityInfoRcv
    : public CCmdRcv<cmddata::command::GetSimpleOperationUtilityInfo> {
public:
    CMDDATA_MESSAGE(CGetSimpleOperationUtilityInfoRcv)
    std::uint32_t result = 0;
    std::uint16_t kind = 0;
    std::uint32_t value = 0;
};

/// Asks for the result of a simple operation utility: its id and a step byte.
class CMDDATA_API CGetSimpleOperationUtilityResultSnd
    : public CCmdSnd<cmddata::command::GetSimpleOperationUtilityResult> {
public:
    CMDDATA_MESSAGE(CGetSimpleOperationUtilityResultSnd)
    std::uint16_t itemId = 0;
    std::uint8_t step = 0;
};

/// The result of a simple operation utility: words, bytes and a text.
class CMDDATA_API CGetSimpleOperationUtilityResultRcv
    : public CCmdRcv<cmddata::command::GetSimpleOperationUtilityResult> {
public:
    CMDDATA_MESSAGE(CGetSimpleOperationUtilityResultRcv)
    std::uint32_t result = 0;
    CCmdList<CCmdByteData> data;
    std::uint32_t value = 0;
    CCmdString text;
    std::uint32_t state = 0;
};

/// Asks whether a utility function is available (the version does not travel).
class CMDDATA_API CCheckUtilFuncSnd
    : public CCmdSnd<cmddata::command::CheckUtilFunc, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CCheckUtilFuncSnd)
};

/// Whether the utility is available, and the functions it offers (the version does not
/// travel).
class CMDDATA_API CCheckUtilFuncRcv : public CCmdRcv<cmddata::command::CheckUtilFunc> {
public:
    CMDDATA_MESSAGE(CCheckUtilFuncRcv)
    std::uint8_t available = 0;
    CCmdList<CCmdFunction> functions;
};
