// Emission checks: MIL state, oxygen-sensor lists and data, monitoring tests, readiness codes,
// the emission mode with its start and physical-address requests, the evaporative leak test,
// monitor status and results, the check modes with their frame variants, sleep-NG records, the
// Sp operate-control records and the PID signal data of listed ECUs.
//
// Only the widths and order of the scalars and texts are fixed; their names say where they
// stand, and their meaning (units, check-mode codes, the MIL word) belongs to the two processes.
// Records are built with version 1 by default.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/diagcode/freeze_frame.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/ecu.h"
#include "cmddata/records/function.h"

/// The data of one oxygen sensor: a freeze frame, then three words with a number after each of
/// the first two (values[0], numbers[0], values[1], numbers[1], values[2] on the wire).
class CMDDATA_API CCmdO2SData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdO2SData)
    CCmdO2SData() = default;
    CCmdFrzFrmDat frame;
    std::uint32_t values[3] = {0, 0, 0};
    std::uint16_t numbers[2] = {0, 0};
};

/// One monitoring-test result: a freeze frame, then three numbers and three values, each of the
/// last two values after a number of its own. On the wire: numbers[0], numbers[1], numbers[2],
/// values[0], numbers[3], values[1], numbers[4], values[2]; whoever groups these words must
/// keep exactly that order.
class CMDDATA_API CCmdMonitoringTest : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMonitoringTest)
    CCmdMonitoringTest() = default;
    CCmdFrzFrmDat frame;
    std::uint16_t numbers[5] = {0, 0, 0, 0, 0};
    std::uint32_t values[3] = {0, 0, 0};
};

/// One readiness code: a freeze frame, a value and a number.
class CMDDATA_API CCmdReadinessCodeData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdReadinessCodeData)
    CCmdReadinessCodeData() = default;
    CCmdFrzFrmDat frame;
    std::uint32_t value = 0;
    std::uint16_t number = 0;
};

/// One monitor result: the layout of CCmdO2SData (a freeze frame, then values[0], numbers[0],
/// values[1], numbers[1], values[2]), a type of its own so that the two lists are distinct.
class CMDDATA_API CCmdMonitorResultData : public CCmdO2SData {
public:
    CMDDATA_SAME_LAYOUT(CCmdMonitorResultData)
    CCmdMonitorResultData() = default;
};

/// The status of one monitor: its name, a word, three numbers, a word and the status bytes.
class CMDDATA_API CCmdMonitorStatusData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMonitorStatusData)
    CCmdMonitorStatusData() = default;
    CCmdString name;
    std::uint32_t firstWord = 0;
    std::uint16_t numbers[3] = {0, 0, 0};
    std::uint32_t secondWord = 0;
    CCmdList<CCmdByteData> statusBytes;
};

/// One sleep-NG record: a first text with its flag, a second text with its flag.
class CMDDATA_API CCmdSleepNgData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSleepNgData)
    CCmdSleepNgData() = default;
    CCmdString firstText;
    std::uint8_t firstFlag = 0;
    CCmdString secondText;
    std::uint8_t secondFlag = 0;
};

/// The frames of one check mode: three frames as bytes, then two words.
class CMDDATA_API CCmdFrameInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFrameInfo)
    CCmdFrameInfo() = default;
    CCmdList<CCmdByteData> firstFrame;
    CCmdList<CCmdByteData> secondFrame;
    CCmdList<CCmdByteData> thirdFrame;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
};

/// A group of Sp operate-control records: its number (itemId) and name. The layout of
/// CCmdItemName, a type of its own.
class CMDDATA_API CCmdSpGroup : public CCmdItemName {
public:
    CMDDATA_SAME_LAYOUT(CCmdSpGroup)
    CCmdSpGroup() = default;
};

// --- Layouts several messages share ---

/// A message that carries its header, then one 32-bit word: a result, or the value a request
/// passes, per command.
class CMDDATA_API CCmdEmissionWordMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdEmissionWordMessage)
    CCmdEmissionWordMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint32_t word = 0;
};

// --- Messages ---

/// Asks for the current check mode (header only).
class CMDDATA_API CConfCheckModeSnd
    : public CCmdSnd<cmddata::command::ConfCheckMode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CConfCheckModeSnd)
};

/// The current check mode.
class CMDDATA_API CConfCheckModeRcv : public CCmdRcv<cmddata::command::ConfCheckMode> {
public:
    CMDDATA_MESSAGE(CConfCheckModeRcv)
    std::uint8_t checkMode = 0;
};

/// Asks to change the check mode: the mode, a word and a number.
class CMDDATA_API CChangeCheckModeSnd : public CCmdSnd<cmddata::command::ChangeCheckMode> {
public:
    CMDDATA_MESSAGE(CChangeCheckModeSnd)
    std::uint8_t checkMode = 0;
    std::uint32_t word = 0;
    std::uint16_t number = 0;
};

/// The outcome of changing the check mode (word).
class CMDDATA_API CChangeCheckModeRcv
    : public CCmdRcv<cmddata::command::ChangeCheckMode, CCmdEmissionWordMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CChangeCheckModeRcv)
};

/// Asks for the groups of Sp operate-control records (header only).
class CMDDATA_API CGetSpOperateCtrlRecordGroupSnd
    : public CCmdSnd<cmddata::command::GetSpOperateCtrlRecordGroup, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSpOperateCtrlRecordGroupSnd)
};

/// The groups of Sp operate-control records.
class CMDDATA_API CGetSpOperateCtrlRecordGroupRcv
    : public CCmdRcv<cmddata::command::GetSpOperateCtrlRecordGroup> {
public:
    CMDDATA_MESSAGE(CGetSpOperateCtrlRecordGroupRcv)
    CCmdList<CCmdSpGroup> groups;
};

/// Asks for the Sp operate-control records of one group (itemId is the group's number).
class CMDDATA_API CGetSpOperateCtrlRecordSnd
    : public CCmdSnd<cmddata::command::GetSpOperateCtrlRecord, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSpOperateCtrlRecordSnd)
};

/// The Sp operate-control records, as freeze frames.
class CMDDATA_API CGetSpOperateCtrlRecordRcv
    : public CCmdRcv<cmddata::command::GetSpOperateCtrlRecord> {
public:
    CMDDATA_MESSAGE(CGetSpOperateCtrlRecordRcv)
    CCmdList<CCmdFrzFrmDat> records;
};

/// Request: asks to delete the Sp operate-control records (header only).
/// Answer: the outcome of the deletion, in the status words (header only).
CMDDATA_HEADER_ONLY_COMMAND(DelSpOperateCtrlRecord);

/// Asks for the sleep-NG records (header only).
class CMDDATA_API CGetSleepNgSnd : public CCmdSnd<cmddata::command::GetSleepNg, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSleepNgSnd)
};

/// The sleep-NG records and a word. The word is declared before the records but travels after
/// them.
class CMDDATA_API CGetSleepNgRcv : public CCmdRcv<cmddata::command::GetSleepNg> {
public:
    CMDDATA_MESSAGE(CGetSleepNgRcv)
    std::uint32_t word = 0;  // travels after records
    CCmdList<CCmdSleepNgData> records;
};

/// Asks to delete the sleep-NG records (header only).
class CMDDATA_API CDelSleepNgSnd : public CCmdSnd<cmddata::command::DelSleepNg, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDelSleepNgSnd)
};

/// The outcome of deleting the sleep-NG records (word).
class CMDDATA_API CDelSleepNgRcv
    : public CCmdRcv<cmddata::command::DelSleepNg, CCmdEmissionWordMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDelSleepNgRcv)
};

/// Asks for the MIL state (header only).
class CMDDATA_API CGetMilInfoSnd : public CCmdSnd<cmddata::command::GetMilInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMilInfoSnd)
};

/// The MIL state word.
class CMDDATA_API CGetMilInfoRcv : public CCmdRcv<cmddata::command::GetMilInfo> {
public:
    CMDDATA_MESSAGE(CGetMilInfoRcv)
    std::uint16_t milState = 0;
};

/// Asks for the oxygen sensors (header only).
class CMDDATA_API CGetO2SListSnd : public CCmdSnd<cmddata::command::GetO2SList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetO2SListSnd)
};

/// The oxygen sensors, each a numbered name.
class CMDDATA_API CGetO2SListRcv : public CCmdRcv<cmddata::command::GetO2SList> {
public:
    CMDDATA_MESSAGE(CGetO2SListRcv)
    CCmdList<CCmdItemName> sensors;
};

/// Asks for the data of one oxygen sensor (itemId is the sensor's number).
class CMDDATA_API CGetO2SDataSnd : public CCmdSnd<cmddata::command::GetO2SData, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetO2SDataSnd)
};

/// The data of the oxygen sensor.
class CMDDATA_API CGetO2SDataRcv : public CCmdRcv<cmddata::command::GetO2SData> {
public:
    CMDDATA_MESSAGE(CGetO2SDataRcv)
    CCmdList<CCmdO2SData> data;
};

/// Asks for the monitoring-test results (header only).
class CMDDATA_API CGetMonitoringTestSnd
    : public CCmdSnd<cmddata::command::GetMonitoringTest, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMonitoringTestSnd)
};

/// The monitoring-test results.
class CMDDATA_API CGetMonitoringTestRcv : public CCmdRcv<cmddata::command::GetMonitoringTest> {
public:
    CMDDATA_MESSAGE(CGetMonitoringTestRcv)
    CCmdList<CCmdMonitoringTest> tests;
};

/// Asks for the readiness codes (header only).
class CMDDATA_API CGetReadinessCodeSnd
    : public CCmdSnd<cmddata::command::GetReadinessCode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetReadinessCodeSnd)
};

/// The readiness codes.
class CMDDATA_API CGetReadinessCodeRcv : public CCmdRcv<cmddata::command::GetReadinessCode> {
public:
    CMDDATA_MESSAGE(CGetReadinessCodeRcv)
    CCmdList<CCmdReadinessCodeData> codes;
};

/// Asks for the evaporative-system leak test (word).
class CMDDATA_API CTestEvapSystemLeakSnd
    : public CCmdSnd<cmddata::command::TestEvapSystemLeak, CCmdEmissionWordMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CTestEvapSystemLeakSnd)
};

/// The outcome of the leak test (word).
class CMDDATA_API CTestEvapSystemLeakRcv
    : public CCmdRcv<cmddata::command::TestEvapSystemLeak, CCmdEmissionWordMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CTestEvapSystemLeakRcv)
};

/// Asks for the status of the monitors: a word, and from version 2 on a number and a second
/// word. The header's version does not travel: both sides must construct this request with the
/// same version (the default is 2).
class CMDDATA_API CGetMonitorStatusInfoSnd
    : public CCmdSnd<cmddata::command::GetMonitorStatusInfo> {
public:
    CMDDATA_MESSAGE(CGetMonitorStatusInfoSnd)
    std::uint32_t word = 0;
    std::uint16_t number = 0;      // version 2 and later
    std::uint32_t secondWord = 0;  // version 2 and later
};

/// The status of the monitors.
class CMDDATA_API CGetMonitorStatusInfoRcv
    : public CCmdRcv<cmddata::command::GetMonitorStatusInfo> {
public:
    CMDDATA_MESSAGE(CGetMonitorStatusInfoRcv)
    CCmdList<CCmdMonitorStatusData> monitors;
};

/// Asks for monitor results: a word, the monitors wanted (as bytes) and a flag.
class CMDDATA_API CGetMonitorResultInfoSnd
    : public CCmdSnd<cmddata::command::GetMonitorResultInfo> {
public:
    CMDDATA_MESSAGE(CGetMonitorResultInfoSnd)
    std::uint32_t word = 0;
    CCmdList<CCmdByteData> monitorIds;
    std::uint8_t flag = 0;
};

/// The monitor results.
class CMDDATA_API CGetMonitorResultInfoRcv
    : public CCmdRcv<cmddata::command::GetMonitorResultInfo> {
public:
    CMDDATA_MESSAGE(CGetMonitorResultInfoRcv)
    CCmdList<CCmdMonitorResultData> results;
};

/// Asks to start the emission diagnosis: two numbers.
class CMDDATA_API CStartDiagCARBSnd : public CCmdSnd<cmddata::command::StartDiagCARB> {
public:
    CMDDATA_MESSAGE(CStartDiagCARBSnd)
    std::uint16_t firstNumber = 0;
    std::uint16_t secondNumber = 0;
};

/// The outcome of the start, in the status words (header only).
class CMDDATA_API CStartDiagCARBRcv
    : public CCmdRcv<cmddata::command::StartDiagCARB, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartDiagCARBRcv)
};

/// Asks for the frames of a check mode (the selector chooses it).
class CMDDATA_API CGetFrmCheckModeSnd
    : public CCmdSnd<cmddata::command::GetFrmCheckMode, CCmdSelectorMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetFrmCheckModeSnd)
};

/// The frames of the check mode: the fields of CCmdFrameInfo behind the header (no prefix of
/// their own).
class CMDDATA_API CGetFrmCheckModeRcv : public CCmdRcv<cmddata::command::GetFrmCheckMode> {
public:
    CMDDATA_MESSAGE(CGetFrmCheckModeRcv)
    CCmdList<CCmdByteData> firstFrame;
    CCmdList<CCmdByteData> secondFrame;
    CCmdList<CCmdByteData> thirdFrame;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
};

/// Asks for the frames of every check mode (header only).
class CMDDATA_API CGetFrmConfCheckModeSnd
    : public CCmdSnd<cmddata::command::GetFrmConfCheckMode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetFrmConfCheckModeSnd)
};

/// The frames of every check mode.
class CMDDATA_API CGetFrmConfCheckModeRcv : public CCmdRcv<cmddata::command::GetFrmConfCheckMode> {
public:
    CMDDATA_MESSAGE(CGetFrmConfCheckModeRcv)
    CCmdList<CCmdFrameInfo> frames;
};

/// Asks for the physical address of the emission ECU: a number and a flag.
class CMDDATA_API CGetPhysicalAddressCARBSnd
    : public CCmdSnd<cmddata::command::GetPhysicalAddressCARB> {
public:
    CMDDATA_MESSAGE(CGetPhysicalAddressCARBSnd)
    std::uint16_t number = 0;
    std::uint8_t flag = 0;
};

/// The physical address and a number.
class CMDDATA_API CGetPhysicalAddressCARBRcv
    : public CCmdRcv<cmddata::command::GetPhysicalAddressCARB> {
public:
    CMDDATA_MESSAGE(CGetPhysicalAddressCARBRcv)
    std::uint32_t address = 0;
    std::uint16_t number = 0;
};

/// Asks to initialise the emission mode (header only).
class CMDDATA_API CCARBModeInitSnd
    : public CCmdSnd<cmddata::command::CARBModeInit, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CCARBModeInitSnd)
};

/// The emission mode's initialisation: a number, then the ECUs connected.
class CMDDATA_API CCARBModeInitRcv : public CCmdRcv<cmddata::command::CARBModeInit> {
public:
    CMDDATA_MESSAGE(CCARBModeInitRcv)
    std::uint16_t number = 0;
    CCmdList<CCmdConnectEcu> ecus;
};

/// Asks for the PID signal data of the ECUs listed: a number, a selector byte and the ECUs. The
/// version prefix travels before the header; the selector is declared after the number but
/// travels before it.
class CMDDATA_API CGetPIDSignalDataSnd : public CCmdSnd<cmddata::command::GetPIDSignalData> {
public:
    CMDDATA_MESSAGE(CGetPIDSignalDataSnd)
    std::uint16_t number = 0;
    std::uint8_t selector = 0;  // travels before number
    CCmdList<CCmdEcuSpecificInfo> ecus;
};

/// The PID signal data: a word, the ECUs and the data as a freeze frame. The version prefix
/// travels before the header; the word is declared after the ECUs but travels before them.
class CMDDATA_API CGetPIDSignalDataRcv : public CCmdRcv<cmddata::command::GetPIDSignalData> {
public:
    CMDDATA_MESSAGE(CGetPIDSignalDataRcv)
    CCmdList<CCmdEcuSpecificInfo> ecus;
    std::uint32_t word = 0;  // travels before ecus
    CCmdFrzFrmDat frame;
};
