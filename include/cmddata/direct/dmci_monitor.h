// Direct data monitor and active test on a created interface: set-up, start, poll and stop, and
// the adjustments of the interface. Framed as the interface creation commands: requests carry
// their own fields alone, answers status word 3 first.
//
// The element records below carry what the two processes put in them; their fields are this
// library's choice (each with a version prefix, as most records have, so that a later layout
// can be told apart by its version).
#pragma once

#include <cstdint>

#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/direct/dmci_interface.h"
#include "cmddata/records/datmon_records.h"

/// One packed monitor request: its identifier and the request bytes sent as they are.
/// Fields chosen by this library: version prefix, u32 identifier, buffer.
class CMDDATA_API CCmdModeA1 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdModeA1)
    CCmdModeA1() = default;
    std::uint32_t requestId = 0;
    CCmdBuffer request;
};

/// One request pair: its identifier, the request bytes and the bytes of the expected answer.
/// Fields chosen by this library: version prefix, u32 identifier, two buffers.
class CMDDATA_API CCmdModePair : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdModePair)
    CCmdModePair() = default;
    std::uint32_t pairId = 0;
    CCmdBuffer request;
    CCmdBuffer answer;
};

/// One data identifier to monitor and the byte length of its value.
/// Fields chosen by this library: version prefix, u16 identifier, u32 length.
class CMDDATA_API CCmdDataIdInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDataIdInfo)
    CCmdDataIdInfo() = default;
    std::uint16_t dataId = 0;
    std::uint32_t dataLength = 0;
};

/// One monitored value: the item it belongs to, a status word and the raw bytes.
/// Fields chosen by this library: version prefix, u32 item, u32 status, buffer.
class CMDDATA_API CCmdDmciMonData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDmciMonData)
    CCmdDmciMonData() = default;
    std::uint32_t itemId = 0;
    std::uint32_t status = 0;
    CCmdBuffer data;
};

/// One additional frame: its identifier and the frame bytes.
/// Fields chosen by this library: version prefix, u32 identifier, buffer.
class CMDDATA_API CCmdMode21 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMode21)
    CCmdMode21() = default;
    std::uint32_t frameId = 0;
    CCmdBuffer frame;
};

/// An answer that carries status word 3 and one result word of its own (8 bytes).
class CMDDATA_API CCmdDmciStatusValue : public CCmdDmciLayout {
public:
    CMDDATA_FIELDS(CCmdDmciStatusValue)
    CCmdDmciStatusValue(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdDmciLayout(commandId, version, reserved) {}
    std::uint32_t result = 0;
};

/// A request that carries one 32-bit parameter and a run of bytes.
class CMDDATA_API CCmdDmciWordBuffer : public CCmdDmciLayout {
public:
    CMDDATA_FIELDS(CCmdDmciWordBuffer)
    CCmdDmciWordBuffer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdDmciLayout(commandId, version, reserved) {}
    std::uint32_t parameter = 0;
    CCmdBuffer bytes;
};

// The set-up requests put status word 4 of their own header first on the wire; reading puts it
// back there.

/// Sets the monitor up by packed requests, with standard values.
class CMDDATA_API CDmciDataMonitorSetupPackSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorSetupPack> {
public:
    CMDDATA_MESSAGE(CDmciDataMonitorSetupPackSnd)
    std::uint32_t parameter = 0;
    CCmdList<CCmdModeA1> requests;
    std::uint32_t standardParameter = 0;
    CCmdList<CCmdStdValue> standardValues;
    std::uint16_t option = 0;
};

/// Outcome of the packed set-up: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorSetupPackRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorSetupPack, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorSetupPackRcv)
};

/// Sets the monitor up by request pairs, with standard values.
class CMDDATA_API CDmciDataMonitorSetupPairSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorSetupPair> {
public:
    CMDDATA_MESSAGE(CDmciDataMonitorSetupPairSnd)
    std::uint32_t parameters[2] = {0, 0};
    CCmdList<CCmdModePair> pairs;
    std::uint32_t standardParameter = 0;
    CCmdList<CCmdStdValue> standardValues;
    std::uint32_t trailingParameters[2] = {0, 0};
};

/// Outcome of the pair set-up: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorSetupPairRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorSetupPair, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorSetupPairRcv)
};

/// Sets the monitor up by diagnostic codes (their bytes), with standard values.
class CMDDATA_API CDmciDataMonitorSetupDtcSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorSetupDtc> {
public:
    CMDDATA_MESSAGE(CDmciDataMonitorSetupDtcSnd)
    std::uint32_t parameters[2] = {0, 0};
    CCmdBuffer codes;
    std::uint32_t standardParameter = 0;
    CCmdList<CCmdStdValue> standardValues;
};

/// Outcome of the diagnostic-code set-up: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorSetupDtcRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorSetupDtc, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorSetupDtcRcv)
};

/// Starts the monitoring set up before (nothing on the wire).
class CMDDATA_API CDmciDataMonitorStartSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorStart, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorStartSnd)
};

/// Outcome of the start: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorStartRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorStart, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorStartRcv)
};

/// Asks for the monitored data of the listed items.
class CMDDATA_API CDmciGetMonitorDataSnd : public CCmdSnd<cmddata::command::DmciGetMonitorData> {
public:
    CMDDATA_MESSAGE(CDmciGetMonitorDataSnd)
    CCmdList<CCmdDwordId> itemIds;
};

/// The monitored data: status word 3, the values, five runs of raw bytes and a result word.
class CMDDATA_API CDmciGetMonitorDataRcv : public CCmdRcv<cmddata::command::DmciGetMonitorData> {
public:
    CMDDATA_MESSAGE(CDmciGetMonitorDataRcv)
    CCmdList<CCmdDmciMonData> values;
    CCmdBuffer rawData[5];
    std::uint32_t result = 0;
};

/// Stops the monitoring (nothing on the wire).
class CMDDATA_API CDmciDataMonitorStopSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorStop, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorStopSnd)
};

/// Outcome of the stop: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorStopRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorStop, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorStopRcv)
};

/// Starts an active test: a parameter, the request bytes and a 16-bit option.
class CMDDATA_API CDmciActiveTestStartSnd : public CCmdSnd<cmddata::command::DmciActiveTestStart> {
public:
    CMDDATA_MESSAGE(CDmciActiveTestStartSnd)
    std::uint32_t parameter = 0;
    CCmdBuffer request;
    std::uint16_t option = 0;
};

/// Outcome of the active-test start: status word 3 and a result word.
class CMDDATA_API CDmciActiveTestStartRcv
    : public CCmdRcv<cmddata::command::DmciActiveTestStart, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciActiveTestStartRcv)
};

/// Stops an active test: two parameters.
class CMDDATA_API CDmciActiveTestStopSnd : public CCmdSnd<cmddata::command::DmciActiveTestStop> {
public:
    CMDDATA_MESSAGE(CDmciActiveTestStopSnd)
    std::uint32_t parameters[2] = {0, 0};
};

/// Outcome of the active-test stop: status word 3 and a result word.
class CMDDATA_API CDmciActiveTestStopRcv
    : public CCmdRcv<cmddata::command::DmciActiveTestStop, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciActiveTestStopRcv)
};

/// Appends to the interface's identifier map: five parameters.
class CMDDATA_API CDmciIDMapAppendSnd : public CCmdSnd<cmddata::command::DmciIDMapAppend> {
public:
    CMDDATA_MESSAGE(CDmciIDMapAppendSnd)
    std::uint32_t parameters[5] = {0, 0, 0, 0, 0};
};

/// Outcome of the identifier-map append: status word 3 alone.
class CMDDATA_API CDmciIDMapAppendRcv
    : public CCmdRcv<cmddata::command::DmciIDMapAppend, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciIDMapAppendRcv)
};

/// Sets the pick-up data: a parameter and the bytes.
class CMDDATA_API CDmciSetPickupDataSnd
    : public CCmdSnd<cmddata::command::DmciSetPickupData, CCmdDmciWordBuffer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetPickupDataSnd)
};

/// Outcome of setting the pick-up data: status word 3 and a result word.
class CMDDATA_API CDmciSetPickupDataRcv
    : public CCmdRcv<cmddata::command::DmciSetPickupData, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetPickupDataRcv)
};

/// Sends a system frame on the monitor: a parameter and the frame bytes.
class CMDDATA_API CDmciMonitorSystemSendSnd
    : public CCmdSnd<cmddata::command::DmciMonitorSystemSend, CCmdDmciWordBuffer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciMonitorSystemSendSnd)
};

/// Outcome of the system send: status word 3 and a result word.
class CMDDATA_API CDmciMonitorSystemSendRcv
    : public CCmdRcv<cmddata::command::DmciMonitorSystemSend, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciMonitorSystemSendRcv)
};

/// Sets the negative-response count: three parameters.
class CMDDATA_API CDmciSetNegCountSnd : public CCmdSnd<cmddata::command::DmciSetNegCount> {
public:
    CMDDATA_MESSAGE(CDmciSetNegCountSnd)
    std::uint32_t parameters[3] = {0, 0, 0};
};

/// Outcome of setting the negative-response count: status word 3 and a result word.
class CMDDATA_API CDmciSetNegCountRcv
    : public CCmdRcv<cmddata::command::DmciSetNegCount, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetNegCountRcv)
};

/// Sets the interrupt send timing: one parameter.
class CMDDATA_API CDmciSetInterruptSendTimingSnd
    : public CCmdSnd<cmddata::command::DmciSetInterruptSendTiming, CCmdDmciWord> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetInterruptSendTimingSnd)
};

/// The answer to the interrupt send timing: nothing on the wire, not even a status word.
class CMDDATA_API CDmciSetInterruptSendTimingRcv
    : public CCmdRcv<cmddata::command::DmciSetInterruptSendTiming, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetInterruptSendTimingRcv)
};

/// Adds frames to the interface: a parameter and the frames.
class CMDDATA_API CDmciSetAdditionFrameSnd
    : public CCmdSnd<cmddata::command::DmciSetAdditionFrame> {
public:
    CMDDATA_MESSAGE(CDmciSetAdditionFrameSnd)
    std::uint32_t parameter = 0;
    CCmdList<CCmdMode21> frames;
};

/// Outcome of adding frames: status word 3 and a result word.
class CMDDATA_API CDmciSetAdditionFrameRcv
    : public CCmdRcv<cmddata::command::DmciSetAdditionFrame, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetAdditionFrameRcv)
};

/// Sets the monitor up by data identifiers, with standard values.
class CMDDATA_API CDmciDataidSetupSnd : public CCmdSnd<cmddata::command::DmciDataidSetup> {
public:
    CMDDATA_MESSAGE(CDmciDataidSetupSnd)
    std::uint32_t parameter = 0;
    CCmdList<CCmdDataIdInfo> dataIds;
    std::uint32_t standardParameter = 0;
    CCmdList<CCmdStdValue> standardValues;
    std::uint32_t trailingParameter = 0;
};

/// Outcome of the data-identifier set-up: status word 3 and a result word.
class CMDDATA_API CDmciDataidSetupRcv
    : public CCmdRcv<cmddata::command::DmciDataidSetup, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataidSetupRcv)
};

/// Clears dynamic data identifiers: a parameter and the identifiers.
class CMDDATA_API CDmciClearDynamicDataidSnd
    : public CCmdSnd<cmddata::command::DmciClearDynamicDataid> {
public:
    CMDDATA_MESSAGE(CDmciClearDynamicDataidSnd)
    std::uint32_t parameter = 0;
    CCmdList<CCmdWordId> dataIds;
};

/// Outcome of clearing dynamic data identifiers: status word 3 and a result word.
class CMDDATA_API CDmciClearDynamicDataidRcv
    : public CCmdRcv<cmddata::command::DmciClearDynamicDataid, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciClearDynamicDataidRcv)
};

/// Starts a later-generation active test: a parameter, two runs of request bytes, a 16-bit
/// option and a trailing parameter.
class CMDDATA_API CDmciActiveTestStartP5Snd
    : public CCmdSnd<cmddata::command::DmciActiveTestStartP5> {
public:
    CMDDATA_MESSAGE(CDmciActiveTestStartP5Snd)
    std::uint32_t parameter = 0;
    CCmdBuffer requests[2];
    std::uint16_t option = 0;
    std::uint32_t trailingParameter = 0;
};

/// Outcome of the later-generation active-test start: status word 3 and a result word.
class CMDDATA_API CDmciActiveTestStartP5Rcv
    : public CCmdRcv<cmddata::command::DmciActiveTestStartP5, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciActiveTestStartP5Rcv)
};

/// Sets the monitor up by routine identifiers.
///
/// Two of its four lists are 16-bit routine identifiers and standard values; the element types
/// of the other two are this library's choice: the raw option bytes of each routine (the most
/// general carrier) and 32-bit identifiers.
class CMDDATA_API CDmciDataMonitorSetupRidSnd
    : public CCmdSnd<cmddata::command::DmciDataMonitorSetupRid> {
public:
    CMDDATA_MESSAGE(CDmciDataMonitorSetupRidSnd)
    std::uint32_t parameter = 0;
    CCmdBuffer request;
    std::uint16_t option = 0;
    CCmdList<CCmdWordId> routineIds;
    CCmdList<CCmdBuffer> routineOptions;
    std::uint32_t standardParameter = 0;
    CCmdList<CCmdStdValue> standardValues;
    std::uint32_t trailingParameter = 0;
    CCmdList<CCmdDwordId> trailingIds;
};

/// Outcome of the routine-identifier set-up: status word 3 and a result word.
class CMDDATA_API CDmciDataMonitorSetupRidRcv
    : public CCmdRcv<cmddata::command::DmciDataMonitorSetupRid, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDataMonitorSetupRidRcv)
};

/// Defines dynamic data identifiers: a parameter and one run of bytes per definition. The
/// constructor takes a version (default 1); nothing on the wire depends on it.
class CMDDATA_API CDmciCommDefineDynamicDataidSetupSnd
    : public CCmdSnd<cmddata::command::DmciCommDefineDynamicDataidSetup> {
public:
    CMDDATA_MESSAGE(CDmciCommDefineDynamicDataidSetupSnd)
    std::uint32_t parameter = 0;
    CCmdList<CCmdBuffer> definitions;
};

/// Outcome of defining dynamic data identifiers: status word 3 and a result word. The
/// constructor takes a version (default 1); nothing on the wire depends on it.
class CMDDATA_API CDmciCommDefineDynamicDataidSetupRcv
    : public CCmdRcv<cmddata::command::DmciCommDefineDynamicDataidSetup, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCommDefineDynamicDataidSetupRcv)
};

/// Sets the routine information: one parameter.
class CMDDATA_API CDmciSetRoutineInfoSnd
    : public CCmdSnd<cmddata::command::DmciSetRoutineInfo, CCmdDmciWord> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetRoutineInfoSnd)
};

/// Outcome of setting the routine information: status word 3 and a result word.
class CMDDATA_API CDmciSetRoutineInfoRcv
    : public CCmdRcv<cmddata::command::DmciSetRoutineInfo, CCmdDmciStatusValue> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciSetRoutineInfoRcv)
};
