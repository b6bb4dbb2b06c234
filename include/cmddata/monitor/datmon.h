// Messages of the data monitor: list the items, describe them, start, sample and stop.
#pragma once

#include <cstdint>

#include "cmddata/command/layouts.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/datmon_records.h"

/// Asks for the monitor items an ECU offers (header only).
class CMDDATA_API CGetDatMonListSnd
    : public CCmdSnd<cmddata::command::GetDatMonList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDatMonListSnd)
};

/// The monitor items an ECU offers, and the groups they are shown in.
class CMDDATA_API CGetDatMonListRcv : public CCmdRcv<cmddata::command::GetDatMonList> {
public:
    CMDDATA_MESSAGE(CGetDatMonListRcv)
    CCmdList<CCmdDatMonData> items;
    CCmdList<CCmdGroupData> groups;
};

/// Asks for the monitor items without talking to the ECU; the list request under its own id.
CMDDATA_DERIVED_COMMAND(CGetDatMonListNoCommSnd, CGetDatMonListSnd, GetDatMonListNoComm);

/// The monitor items known without talking to the ECU; the list answer under its own id.
CMDDATA_DERIVED_COMMAND(CGetDatMonListNoCommRcv, CGetDatMonListRcv, GetDatMonListNoComm);

/// Asks for the monitor items shown beside an active test; the list request under its own id.
CMDDATA_DERIVED_COMMAND(CGetDatMonListForActTestSnd, CGetDatMonListSnd, GetDatMonListForActTest);

/// The monitor items shown beside an active test; the list answer under its own id.
CMDDATA_DERIVED_COMMAND(CGetDatMonListForActTestRcv, CGetDatMonListRcv, GetDatMonListForActTest);

/// Starts monitoring the listed items.
class CMDDATA_API CStartDatMonSnd
    : public CCmdSnd<cmddata::command::StartDatMon, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartDatMonSnd)
};

/// Outcome of starting the monitor: item id, value and qualifier words (the layout of the
/// active-test start request).
class CMDDATA_API CStartDatMonRcv
    : public CCmdRcv<cmddata::command::StartDatMon, CCmdItemValueMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartDatMonRcv)
};

/// Request: stops the monitor (header only).
/// Answer: outcome of stopping the monitor (header only).
CMDDATA_HEADER_ONLY_COMMAND(StopDatMon);

/// Asks for the full description of the listed signals.
class CMDDATA_API CGetDatMonSignalInfoSnd
    : public CCmdSnd<cmddata::command::GetDatMonSignalInfo, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDatMonSignalInfoSnd)
};

/// The full descriptions of the asked signals.
class CMDDATA_API CGetDatMonSignalInfoRcv : public CCmdRcv<cmddata::command::GetDatMonSignalInfo> {
public:
    CMDDATA_MESSAGE(CGetDatMonSignalInfoRcv)
    CCmdList<CCmdDatMonSignalInfo> signals;
};

/// Asks for every item description with its groups. The item list it holds never travels: the
/// request is the header alone, so filling it has no effect on the wire.
class CMDDATA_API CGetDatMonSignalInfoListSnd
    : public CCmdSnd<cmddata::command::GetDatMonSignalInfoList> {
public:
    CMDDATA_MESSAGE(CGetDatMonSignalInfoListSnd)
    CCmdList<CCmdWordId> itemIds;  // kept by the object, never sent
};

/// Every item description with the groups they are shown in.
class CMDDATA_API CGetDatMonSignalInfoListRcv
    : public CCmdRcv<cmddata::command::GetDatMonSignalInfoList> {
public:
    CMDDATA_MESSAGE(CGetDatMonSignalInfoListRcv)
    CCmdList<CCmdDatMonInfoData> items;
    CCmdList<CCmdGroupData> groups;
};

/// Asks for the frame the monitor sends to the ECU for one request.
class CMDDATA_API CGetDatMonSndFrameSnd : public CCmdSnd<cmddata::command::GetDatMonSndFrame> {
public:
    CMDDATA_MESSAGE(CGetDatMonSndFrameSnd)
    std::uint32_t requestId = 0;
};

/// Outcome of the send-frame request (header only).
class CMDDATA_API CGetDatMonSndFrameRcv
    : public CCmdRcv<cmddata::command::GetDatMonSndFrame, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDatMonSndFrameRcv)
};

/// Asks for sampled values. From version 2 it names one item and a sample count as well; the
/// version does not travel, so both sides construct the message with the same one.
class CMDDATA_API CGetDatMonValueSnd : public CCmdSnd<cmddata::command::GetDatMonValue> {
public:
    CMDDATA_MESSAGE(CGetDatMonValueSnd)
    std::uint32_t requestId = 0;
    std::uint16_t itemId = 0;       // version 2 and later
    std::uint32_t sampleCount = 0;  // version 2 and later
};

/// The sampled values.
class CMDDATA_API CGetDatMonValueRcv : public CCmdRcv<cmddata::command::GetDatMonValue> {
public:
    CMDDATA_MESSAGE(CGetDatMonValueRcv)
    CCmdList<CCmdDatMonValue> values;
};

/// Asks for the standard values of the listed items (the version does not travel).
class CMDDATA_API CGetStandardValueInfoSnd
    : public CCmdSnd<cmddata::command::GetStandardValueInfo, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetStandardValueInfoSnd)
};

/// The standard values of the asked items (the version does not travel).
class CMDDATA_API CGetStandardValueInfoRcv
    : public CCmdRcv<cmddata::command::GetStandardValueInfo> {
public:
    CMDDATA_MESSAGE(CGetStandardValueInfoRcv)
    CCmdList<CCmdStandardValueInfo> values;
};
