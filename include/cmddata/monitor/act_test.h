// Active test: list the tests of an ECU, describe a test item, start it with a value (converted
// from display units to the raw byte the ECU expects), stop it, and the repair-time and routine
// variants of the same.
//
// The scalars valueP to valueAB of the item records are carried, not interpreted; the two
// processes agree on their meaning.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/result.h"
#include "cmddata/core/scalar.h"
#include "cmddata/monitor/function.h"
#include "cmddata/records/conversion.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/freeze_frame.h"

// --- Records ---

/// The members of an active-test item description, shared by the initialisation and the
/// signal-information records (one set of members, one field list).
class CMDDATA_API CCmdActTstItemMembers {
public:
    std::uint16_t itemId = 0;
    CCmdString name;
    CCmdString unit;
    CCmdString note;
    std::uint8_t valueP = 0;  // travels after valueQ, valueR and valueS
    std::uint8_t valueQ = 0;
    std::uint8_t valueR = 0;
    std::uint32_t valueS = 0;
    std::uint16_t valueT = 0;
    std::uint16_t valueU = 0;
    std::uint8_t valueV = 0;
    std::uint32_t valueW = 0;
    std::uint32_t valueX = 0;
    std::uint32_t valueY = 0;
    std::uint8_t valueZ = 0;
    CCmdConversionTbl conversion;  // SetValue scales with its first three words
    std::uint32_t lowerLimit = 0;
    std::uint32_t upperLimit = 0;
    std::uint8_t valueAA = 0;
    std::uint16_t valueAB = 0;
};

/// The description of one active-test item as the initialisation returns it: texts, scalars,
/// conversion table and limits. valueQ and valueR travel before valueP; valueAA and valueAB
/// travel only from version 2 (the default).
class CMDDATA_API CCmdActTstDataItem : public CCmdCore, public CCmdActTstItemMembers {
public:
    CMDDATA_FIELDS(CCmdActTstDataItem)
    explicit CCmdActTstDataItem(std::uint16_t version = 2) : CCmdCore(version, 0) {}
};

/// The item description as the signal-information command returns it: the layout of
/// CCmdActTstDataItem, except that valueAA and valueAB always travel although its version is 1.
class CMDDATA_API CCmdActTstSignalInfoItem : public CCmdCore, public CCmdActTstItemMembers {
public:
    CMDDATA_FIELDS(CCmdActTstSignalInfoItem)
    CCmdActTstSignalInfoItem() = default;
};

/// One entry of the multi-test initialisation: an item description and a value.
class CMDDATA_API CCmdActTstSignalDataInit : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdActTstSignalDataInit)
    explicit CCmdActTstSignalDataInit(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdActTstDataItem item;
    std::uint32_t value = 0;
};

/// One entry of the active-test list: test number, two texts and a value.
class CMDDATA_API CCmdActTstData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdActTstData)
    CCmdActTstData() = default;
    std::uint16_t testId = 0;
    CCmdString name;
    CCmdString note;
    std::uint32_t value = 0;
};

/// The members of a routine active-test description, shared by the initialisation and the
/// signal-information records, which send valueAA and valueAB at different places.
class CMDDATA_API CCmdRoutineActTstItemMembers {
public:
    std::uint16_t itemId = 0;
    std::uint16_t secondId = 0;
    CCmdString name;
    CCmdString unit;
    CCmdString note;
    std::uint8_t valueP = 0;
    std::uint8_t valueQ = 0;
    std::uint8_t valueR = 0;
    std::uint8_t valueAA = 0;
    std::uint16_t valueT = 0;
    std::uint16_t valueU = 0;
    std::uint16_t valueAB = 0;
    std::uint32_t valueW = 0;
    std::uint32_t valueX = 0;
    std::uint32_t valueY = 0;
    std::uint8_t valueZ = 0;
    CCmdConversionVariableTbl conversion;
    std::uint32_t lowerLimit = 0;
    std::uint32_t upperLimit = 0;
    CCmdList<CCmdDispVariableInfo> variableEntries;
    CCmdList<CCmdDispInfo> firstEntries;
    CCmdList<CCmdDispInfo> secondEntries;
    CCmdList<CCmdDispInfo> thirdEntries;
};

/// The description of a routine active test as its initialisation returns it: valueAA travels
/// among the bytes (after valueR, before valueP), valueAB among the 16-bit words.
class CMDDATA_API CCmdRoutineActTstDataItem : public CCmdCore, public CCmdRoutineActTstItemMembers {
public:
    CMDDATA_FIELDS(CCmdRoutineActTstDataItem)
    explicit CCmdRoutineActTstDataItem(std::uint16_t version = 1) : CCmdCore(version, 0) {}
};

/// The routine item as the signal-information command returns it: valueAA and valueAB travel
/// after the limits, before the four entry lists.
class CMDDATA_API CCmdRoutineActTstSignalInfoItem : public CCmdCore,
                                                    public CCmdRoutineActTstItemMembers {
public:
    CMDDATA_FIELDS(CCmdRoutineActTstSignalInfoItem)
    explicit CCmdRoutineActTstSignalInfoItem(std::uint16_t version = 1) : CCmdCore(version, 0) {}
};

// --- Layouts several messages share ---

/// The request that initialises a test: header, status word 4 a second time, the item id.
/// Reading keeps the second copy of the status word.
class CMDDATA_API CCmdActTstInitRequest : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdActTstInitRequest)
    CCmdActTstInitRequest(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint16_t itemId = 0;
};

/// An answer of a result word and a text.
class CMDDATA_API CCmdResultTextMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdResultTextMessage)
    CCmdResultTextMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint32_t result = 0;
    CCmdString text;
};

// --- Messages ---

/// Asks for the active tests of the ECU (header only).
class CMDDATA_API CGetActTstListSnd
    : public CCmdSnd<cmddata::command::GetActTstList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetActTstListSnd)
};

/// The active tests, a text and the groups they are shown in.
class CMDDATA_API CGetActTstListRcv : public CCmdRcv<cmddata::command::GetActTstList> {
public:
    CMDDATA_MESSAGE(CGetActTstListRcv)
    CCmdList<CCmdActTstData> tests;
    CCmdString text;
    CCmdList<CCmdGroupData> groups;
};

/// Initialises one active test.
class CMDDATA_API CGetActTstInitSnd
    : public CCmdSnd<cmddata::command::GetActTstInit, CCmdActTstInitRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetActTstInitSnd)
};

/// The initialised test: status word 4 again, the item description and a value; from version 2
/// (the default) a byte and a 16-bit word more. The version does not travel: both sides
/// construct the message with the same one.
class CMDDATA_API CGetActTstInitRcv : public CCmdRcv<cmddata::command::GetActTstInit> {
public:
    CMDDATA_MESSAGE(CGetActTstInitRcv)
    CCmdActTstDataItem item;
    std::uint32_t value = 0;
    std::uint8_t option = 0;  // version 2 and later
    std::uint16_t extra = 0;  // version 2 and later
};

/// Starts an active test: item id, the test value (SetValue) and a qualifier word.
class CMDDATA_API CStartActTstSnd
    : public CCmdSnd<cmddata::command::StartActTst, CCmdItemValueMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartActTstSnd)
    /// Turns value (display units) into the raw byte through the item's conversion table:
    /// (value - C) * B / A in signed 32-bit arithmetic (wrapping, division truncating toward
    /// zero), low 8 bits into the test value. A null item or A = 0 gives 0xC0080001 and
    /// changes nothing. INT32_MIN / -1 wraps to INT32_MIN (low byte 0) instead of trapping.
    cmddata::Result SetValue(const CCmdActTstDataItem* item, std::int32_t value);
};

/// Outcome of starting the test: a result word and a text.
class CMDDATA_API CStartActTstRcv
    : public CCmdRcv<cmddata::command::StartActTst, CCmdResultTextMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartActTstRcv)
};

/// Stops the active test; from version 2 (the default) a mode byte follows. The version does
/// not travel.
class CMDDATA_API CStopActTstSnd : public CCmdSnd<cmddata::command::StopActTst> {
public:
    CMDDATA_MESSAGE(CStopActTstSnd)
    std::uint8_t mode = 0;  // version 2 and later
};

/// Outcome of stopping the test (header only).
class CMDDATA_API CStopActTstRcv : public CCmdRcv<cmddata::command::StopActTst, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStopActTstRcv)
};

/// Asks for the ECU data of the listed items at repair time.
class CMDDATA_API CRepairGetEcuDataSnd
    : public CCmdSnd<cmddata::command::RepairGetEcuData, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CRepairGetEcuDataSnd)
};

/// The ECU data at repair time, as freeze-frame records.
class CMDDATA_API CRepairGetEcuDataRcv : public CCmdRcv<cmddata::command::RepairGetEcuData> {
public:
    CMDDATA_MESSAGE(CRepairGetEcuDataRcv)
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Runs an active test at repair time: item id, the test byte (SetValue) and an option byte.
class CMDDATA_API CRepairActTstSnd : public CCmdSnd<cmddata::command::RepairActTst> {
public:
    CMDDATA_MESSAGE(CRepairActTstSnd)
    /// Stores the raw byte for value in single precision: q = (value - zeroPoint) / divisor.
    /// Mode 0 stores the low 8 bits of q truncated toward zero; mode 1 does the same when value
    /// (the argument, not q) is above 0, else the low 8 bits of q + 256 truncated. A divisor of
    /// 0 (tested first) or another mode gives 0xC0080001 and changes nothing. Where q, or
    /// q + 256, is not finite the byte is 0; a finite value of 2^31 or more is a multiple of 256
    /// in single precision and gives 0 too.
    cmddata::Result SetValue(float value, float divisor, float zeroPoint, std::int32_t mode);
    std::uint16_t itemId = 0;
    std::uint8_t testByte = 0;
    std::uint8_t option = 0;
};

/// Outcome of the repair-time test: a result word.
class CMDDATA_API CRepairActTstRcv : public CCmdRcv<cmddata::command::RepairActTst> {
public:
    CMDDATA_MESSAGE(CRepairActTstRcv)
    std::uint32_t result = 0;
};

/// Request: stops the repair-time test (header only).
/// Answer: outcome of stopping the repair-time test (header only).
CMDDATA_HEADER_ONLY_COMMAND(RepairStopActTst);

/// Initialises several tests (the version does not travel).
class CMDDATA_API CGetMultiActTstInitSnd
    : public CCmdSnd<cmddata::command::GetMultiActTstInit, CCmdActTstInitRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMultiActTstInitSnd)
};

/// The initialised tests (the version does not travel).
class CMDDATA_API CGetMultiActTstInitRcv : public CCmdRcv<cmddata::command::GetMultiActTstInit> {
public:
    CMDDATA_MESSAGE(CGetMultiActTstInitRcv)
    CCmdList<CCmdActTstSignalDataInit> items;
};

/// Asks for the descriptions of the listed test items.
class CMDDATA_API CGetActTstSignalInfoSnd
    : public CCmdSnd<cmddata::command::GetActTstSignalInfo, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetActTstSignalInfoSnd)
};

/// The descriptions of the asked test items.
class CMDDATA_API CGetActTstSignalInfoRcv : public CCmdRcv<cmddata::command::GetActTstSignalInfo> {
public:
    CMDDATA_MESSAGE(CGetActTstSignalInfoRcv)
    CCmdList<CCmdActTstSignalInfoItem> items;
};

/// Asks for the customize list id of an active test (the version does not travel).
class CMDDATA_API CGetActiveTestCustomListIdSnd
    : public CCmdSnd<cmddata::command::GetActiveTestCustomListId, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetActiveTestCustomListIdSnd)
};

/// The customize list id: a byte and the id (the version does not travel).
class CMDDATA_API CGetActiveTestCustomListIdRcv
    : public CCmdRcv<cmddata::command::GetActiveTestCustomListId> {
public:
    CMDDATA_MESSAGE(CGetActiveTestCustomListIdRcv)
    std::uint8_t found = 0;
    std::uint16_t listId = 0;
};

/// Initialises a routine active test (the version does not travel).
class CMDDATA_API CGetRoutineActTstInitSnd
    : public CCmdSnd<cmddata::command::GetRoutineActTstInit, CCmdActTstInitRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRoutineActTstInitSnd)
};

/// The initialised routine test: status word 4 again, the routine description and two words
/// (the version does not travel).
class CMDDATA_API CGetRoutineActTstInitRcv
    : public CCmdRcv<cmddata::command::GetRoutineActTstInit> {
public:
    CMDDATA_MESSAGE(CGetRoutineActTstInitRcv)
    CCmdRoutineActTstDataItem item;
    std::uint32_t value = 0;
    std::uint32_t option = 0;
};

/// Asks for the descriptions of the listed routine tests (the version does not travel).
class CMDDATA_API CGetRoutineActTstSignalInfoSnd
    : public CCmdSnd<cmddata::command::GetRoutineActTstSignalInfo, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRoutineActTstSignalInfoSnd)
};

/// The descriptions of the asked routine tests (the version does not travel).
class CMDDATA_API CGetRoutineActTstSignalInfoRcv
    : public CCmdRcv<cmddata::command::GetRoutineActTstSignalInfo> {
public:
    CMDDATA_MESSAGE(CGetRoutineActTstSignalInfoRcv)
    CCmdList<CCmdRoutineActTstSignalInfoItem> items;
};

/// Starts a routine test: item id, a value and two byte lists (the version does not travel).
class CMDDATA_API CStartRoutineActTstSnd : public CCmdSnd<cmddata::command::StartRoutineActTst> {
public:
    CMDDATA_MESSAGE(CStartRoutineActTstSnd)
    std::uint16_t itemId = 0;
    std::uint32_t value = 0;
    CCmdList<CCmdByteData> firstData;
    CCmdList<CCmdByteData> secondData;
};

/// Outcome of starting a routine test: a result word and a text (the version does not travel).
class CMDDATA_API CStartRoutineActTstRcv
    : public CCmdRcv<cmddata::command::StartRoutineActTst, CCmdResultTextMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartRoutineActTstRcv)
};

/// Runs a single routine test (the version does not travel).
class CMDDATA_API CSingleRoutineActTstSnd
    : public CCmdSnd<cmddata::command::SingleRoutineActTst, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSingleRoutineActTstSnd)
};

/// Outcome of the single routine test (header only; the version does not travel).
class CMDDATA_API CSingleRoutineActTstRcv
    : public CCmdRcv<cmddata::command::SingleRoutineActTst, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSingleRoutineActTstRcv)
};
