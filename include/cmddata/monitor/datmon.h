// Messages of the data monitor: list the items, describe them, start, sample and stop.
#pragma once

#include <cstdint>

#include "cmddata/command/layouts.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/monitor/datmon_records.h"

/// Asks for the monitor items an ECU offers (header only).
class CMDDATA_API CGetDatMonListSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetDatMonListSnd)
    CGetDatMonListSnd() : CCmdHeaderOnly(cmddata::cmd::GetDatMonList) {}
};

/// The monitor items an ECU offers, and the groups they are shown in.
class CMDDATA_API CGetDatMonListRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonListRcv)
public:
    CGetDatMonListRcv() : CCmdBase(cmddata::cmd::GetDatMonList) {}
    CCmdList<CCmdDatMonData> items;
    CCmdList<CCmdGroupData> groups;
};

/// Asks for the monitor items without talking to the ECU; the list request under its own id.
class CMDDATA_API CGetDatMonListNoCommSnd : public CGetDatMonListSnd {
    CMDDATA_SAME_LAYOUT(CGetDatMonListNoCommSnd)
    CGetDatMonListNoCommSnd() {
        cmdId_ = cmddata::cmd::GetDatMonListNoComm;
        RemoveAll();
    }
};

/// The monitor items known without talking to the ECU; the list answer under its own id.
class CMDDATA_API CGetDatMonListNoCommRcv : public CGetDatMonListRcv {
    CMDDATA_SAME_LAYOUT(CGetDatMonListNoCommRcv)
    CGetDatMonListNoCommRcv() {
        cmdId_ = cmddata::cmd::GetDatMonListNoComm;
        RemoveAll();
    }
};

/// Asks for the monitor items shown beside an active test; the list request under its own id.
class CMDDATA_API CGetDatMonListForActTestSnd : public CGetDatMonListSnd {
    CMDDATA_SAME_LAYOUT(CGetDatMonListForActTestSnd)
    CGetDatMonListForActTestSnd() {
        cmdId_ = cmddata::cmd::GetDatMonListForActTest;
        RemoveAll();
    }
};

/// The monitor items shown beside an active test; the list answer under its own id.
class CMDDATA_API CGetDatMonListForActTestRcv : public CGetDatMonListRcv {
    CMDDATA_SAME_LAYOUT(CGetDatMonListForActTestRcv)
    CGetDatMonListForActTestRcv() {
        cmdId_ = cmddata::cmd::GetDatMonListForActTest;
        RemoveAll();
    }
};

/// Starts monitoring the listed items.
class CMDDATA_API CStartDatMonSnd : public CCmdWordIdListMessage {
    CMDDATA_SAME_LAYOUT(CStartDatMonSnd)
    CStartDatMonSnd() : CCmdWordIdListMessage(cmddata::cmd::StartDatMon) {}
};

/// Outcome of starting the monitor: item id, value and qualifier words (the layout of the
/// active-test start request).
class CMDDATA_API CStartDatMonRcv : public CCmdItemValueMessage {
    CMDDATA_SAME_LAYOUT(CStartDatMonRcv)
    CStartDatMonRcv() : CCmdItemValueMessage(cmddata::cmd::StartDatMon) {}
};

/// Stops the monitor (header only).
class CMDDATA_API CStopDatMonSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CStopDatMonSnd)
    CStopDatMonSnd() : CCmdHeaderOnly(cmddata::cmd::StopDatMon) {}
};

/// Outcome of stopping the monitor (header only).
class CMDDATA_API CStopDatMonRcv : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CStopDatMonRcv)
    CStopDatMonRcv() : CCmdHeaderOnly(cmddata::cmd::StopDatMon) {}
};

/// Asks for the full description of the listed signals.
class CMDDATA_API CGetDatMonSignalInfoSnd : public CCmdWordIdListMessage {
    CMDDATA_SAME_LAYOUT(CGetDatMonSignalInfoSnd)
    CGetDatMonSignalInfoSnd() : CCmdWordIdListMessage(cmddata::cmd::GetDatMonSignalInfo) {}
};

/// The full descriptions of the asked signals.
class CMDDATA_API CGetDatMonSignalInfoRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonSignalInfoRcv)
public:
    CGetDatMonSignalInfoRcv() : CCmdBase(cmddata::cmd::GetDatMonSignalInfo) {}
    CCmdList<CCmdDatMonSignalInfo> signals;
};

/// Asks for every item description with its groups. The item list it holds never travels: the
/// request is the header alone, so filling it has no effect on the wire.
class CMDDATA_API CGetDatMonSignalInfoListSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonSignalInfoListSnd)
public:
    CGetDatMonSignalInfoListSnd() : CCmdBase(cmddata::cmd::GetDatMonSignalInfoList) {}
    CCmdList<CCmdWordId> itemIds;  // kept by the object, never sent
};

/// Every item description with the groups they are shown in.
class CMDDATA_API CGetDatMonSignalInfoListRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonSignalInfoListRcv)
public:
    CGetDatMonSignalInfoListRcv() : CCmdBase(cmddata::cmd::GetDatMonSignalInfoList) {}
    CCmdList<CCmdDatMonInfoData> items;
    CCmdList<CCmdGroupData> groups;
};

/// Asks for the frame the monitor sends to the ECU for one request.
class CMDDATA_API CGetDatMonSndFrameSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonSndFrameSnd)
public:
    CGetDatMonSndFrameSnd() : CCmdBase(cmddata::cmd::GetDatMonSndFrame) {}
    std::uint32_t requestId = 0;
};

/// Outcome of the send-frame request (header only).
class CMDDATA_API CGetDatMonSndFrameRcv : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetDatMonSndFrameRcv)
    CGetDatMonSndFrameRcv() : CCmdHeaderOnly(cmddata::cmd::GetDatMonSndFrame) {}
};

/// Asks for sampled values. From version 2 it names one item and a sample count as well; the
/// version does not travel, so both sides construct the message with the same one.
class CMDDATA_API CGetDatMonValueSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonValueSnd)
public:
    explicit CGetDatMonValueSnd(
        std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetDatMonValue))
        : CCmdBase(cmddata::cmd::GetDatMonValue, version, 0) {}
    std::uint32_t requestId = 0;
    std::uint16_t itemId = 0;       // version 2 and later
    std::uint32_t sampleCount = 0;  // version 2 and later
};

/// The sampled values.
class CMDDATA_API CGetDatMonValueRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetDatMonValueRcv)
public:
    CGetDatMonValueRcv() : CCmdBase(cmddata::cmd::GetDatMonValue) {}
    CCmdList<CCmdDatMonValue> values;
};

/// Asks for the standard values of the listed items (the version does not travel).
class CMDDATA_API CGetStandardValueInfoSnd : public CCmdWordIdListMessage {
    CMDDATA_SAME_LAYOUT(CGetStandardValueInfoSnd)
    explicit CGetStandardValueInfoSnd(
        std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetStandardValueInfo))
        : CCmdWordIdListMessage(cmddata::cmd::GetStandardValueInfo, version) {}
};

/// The standard values of the asked items (the version does not travel).
class CMDDATA_API CGetStandardValueInfoRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetStandardValueInfoRcv)
public:
    explicit CGetStandardValueInfoRcv(
        std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetStandardValueInfo))
        : CCmdBase(cmddata::cmd::GetStandardValueInfo, version, 0) {}
    CCmdList<CCmdStandardValueInfo> values;
};
