// Multi-monitor: recording the data of several ECUs at once, its triggers and how long a planned
// recording runs; and the data monitor's frame check, whose answer carries the same measure.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/multi_mon.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/multi_mon.h"

/// The size of a planned recording: sample period (ms), size of one sample and the capacity
/// available, in the sample size's unit.
///
/// The three words travel as those of CCmdDatMonStdValue and share its code; in that record's
/// member names the period is standardValue, the sample size lowerLimit and the capacity
/// upperLimit, so use the accessors below. No version tests; the default version is 2.
class CMDDATA_API CCmdMultiMonMeasureInfo : public CCmdDatMonStdValue {
public:
    CMDDATA_SAME_LAYOUT(CCmdMultiMonMeasureInfo)
    explicit CCmdMultiMonMeasureInfo(std::uint16_t version = 2);

    std::uint32_t GetSamplePeriod() const { return standardValue; }
    std::uint32_t GetSampleSize() const { return lowerLimit; }
    std::uint32_t GetCapacity() const { return upperLimit; }
    void SetSamplePeriod(std::uint32_t milliseconds) { standardValue = milliseconds; }
    void SetSampleSize(std::uint32_t size) { lowerLimit = size; }
    void SetCapacity(std::uint32_t capacity) { upperLimit = capacity; }

    /// Seconds the recording runs: whole samples that fit (capacity / size), times the period
    /// with 32-bit wrap, divided by 1000. The sample count is truncated before it is scaled; a
    /// sample size of 0 gives 0.
    std::uint32_t GetMeasureSecond() const;
};

/// An ECU that can take part in a recording: its number and name.
class CMDDATA_API CCmdMultiMonData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMultiMonData)
    CCmdMultiMonData() = default;
    std::uint32_t ecuNumber = 0;
    CCmdString ecuName;
};

/// One item that can trigger a recording: identifier, name and its trigger settings.
class CMDDATA_API CCmdTrigger : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdTrigger)
    CCmdTrigger() = default;
    std::uint16_t itemId = 0;
    CCmdString name;
    std::uint16_t triggerKind = 0;
    std::uint32_t threshold = 0;
    std::uint8_t comparison = 0;
    std::uint32_t dataLength = 0;
    std::uint8_t flags = 0;
};

/// Fuel settings of the fuel variant (version argument, default 1; no version tests).
class CMDDATA_API CCmdFuelInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFuelInfo)
    explicit CCmdFuelInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t values[4] = {0, 0, 0, 0};
    std::uint16_t fuelKind = 0;
    std::uint8_t unit = 0;
    std::uint8_t flags = 0;
};

/// The answer to starting a recording (normal, DesMode and fuel): header, a result word and
/// the recording's handle.
class CMDDATA_API CCmdMultiMonStartAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdMultiMonStartAnswer)
    CCmdMultiMonStartAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint16_t result = 0;
    std::uint32_t recordingId = 0;
};

/// The answer to checking a recording (normal and fuel): header, a result word and the measure
/// information per ECU.
class CMDDATA_API CCmdMultiMonCheckAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdMultiMonCheckAnswer)
    CCmdMultiMonCheckAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint32_t result = 0;
    CCmdList<CCmdMultiMonMeasureInfo> measures;
};

/// Checks the frames a data monitor of the listed items would need. Right after the header it
/// sends status word 4 a second time and reads that copy back into the same word.
class CMDDATA_API CCheckDatMonCommFrmSnd : public CCmdSnd<cmddata::command::CheckDatMonCommFrm> {
public:
    CMDDATA_MESSAGE(CCheckDatMonCommFrmSnd)
    CCmdList<CCmdWordId> itemIds;
    std::uint32_t requestId = 0;
};

/// The frame check's answer with the measure information (version argument, default 2; it does
/// not travel).
class CMDDATA_API CCheckDatMonCommFrmRcv : public CCmdRcv<cmddata::command::CheckDatMonCommFrm> {
public:
    CMDDATA_MESSAGE(CCheckDatMonCommFrmRcv)
    std::uint16_t itemId = 0;
    std::uint32_t frameCount = 0;
    std::uint32_t frameSize = 0;
    CCmdMultiMonMeasureInfo measure;
};

/// Asks for the ECUs that can take part (header only).
class CMDDATA_API CGetMultiMonEcuListSnd
    : public CCmdSnd<cmddata::command::GetMultiMonEcuList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMultiMonEcuListSnd)
};

/// The ECUs that can take part.
class CMDDATA_API CGetMultiMonEcuListRcv : public CCmdRcv<cmddata::command::GetMultiMonEcuList> {
public:
    CMDDATA_MESSAGE(CGetMultiMonEcuListRcv)
    CCmdList<CCmdMultiMonData> ecus;
};

/// Starts a recording of the listed ECUs. From version 2 (the default) the trigger items follow;
/// the version does not travel, so both sides construct the message with the same one.
class CMDDATA_API CStartMultiMonSnd : public CCmdSnd<cmddata::command::StartMultiMon> {
public:
    CMDDATA_MESSAGE(CStartMultiMonSnd)
    std::uint16_t mode = 0;
    CCmdList<CCmdStartMultiMon> ecus;
    CCmdList<CCmdWordId> triggerItemIds;  // version 2 and later
};

/// The answer to starting a recording.
class CMDDATA_API CStartMultiMonRcv
    : public CCmdRcv<cmddata::command::StartMultiMon, CCmdMultiMonStartAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartMultiMonRcv)
};

/// Asks for the items that can trigger a recording (header only).
class CMDDATA_API CGetTriggerItemListSnd
    : public CCmdSnd<cmddata::command::GetTriggerItemList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetTriggerItemListSnd)
};

/// The items that can trigger a recording.
class CMDDATA_API CGetTriggerItemListRcv : public CCmdRcv<cmddata::command::GetTriggerItemList> {
public:
    CMDDATA_MESSAGE(CGetTriggerItemListRcv)
    CCmdList<CCmdTrigger> triggers;
};

/// Checks a planned recording. The trigger items follow only from version 3, above the default
/// 2: a default-constructed message sends no item list (the version does not travel).
class CMDDATA_API CCheckMultiMonSnd : public CCmdSnd<cmddata::command::CheckMultiMon> {
public:
    CMDDATA_MESSAGE(CCheckMultiMonSnd)
    CCmdList<CCmdCheckMultiMon> ecus;
    std::uint32_t mode = 0;
    CCmdList<CCmdWordId> triggerItemIds;  // version 3 and later
};

/// The measure information of a planned recording, per ECU.
class CMDDATA_API CCheckMultiMonRcv
    : public CCmdRcv<cmddata::command::CheckMultiMon, CCmdMultiMonCheckAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CCheckMultiMonRcv)
};

/// Starts a recording in DesMode, with standard values and trigger items (version 2, fixed).
class CMDDATA_API CStartMultiMonDesModeSnd
    : public CCmdSnd<cmddata::command::StartMultiMonDesMode> {
public:
    CMDDATA_MESSAGE(CStartMultiMonDesModeSnd)
    std::uint16_t mode = 0;
    CCmdList<CCmdStartMultiMon> ecus;
    CCmdList<CCmdDatMonStdValue> standardValues;
    std::uint16_t triggerMode = 0;
    std::uint32_t triggerValue = 0;
    CCmdList<CCmdWordId> triggerItemIds;
};

/// The answer to starting a DesMode recording.
class CMDDATA_API CStartMultiMonDesModeRcv
    : public CCmdRcv<cmddata::command::StartMultiMonDesMode, CCmdMultiMonStartAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartMultiMonDesModeRcv)
};

/// Starts a fuel recording of the listed ECUs with its fuel settings.
class CMDDATA_API CStartMultiMonFuelSnd : public CCmdSnd<cmddata::command::StartMultiMonFuel> {
public:
    CMDDATA_MESSAGE(CStartMultiMonFuelSnd)
    std::uint16_t mode = 0;
    CCmdList<CCmdStartMultiMon> ecus;
    CCmdFuelInfo fuel;
};

/// The answer to starting a fuel recording.
class CMDDATA_API CStartMultiMonFuelRcv
    : public CCmdRcv<cmddata::command::StartMultiMonFuel, CCmdMultiMonStartAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CStartMultiMonFuelRcv)
};

/// Checks a planned fuel recording with its fuel settings.
class CMDDATA_API CCheckMultiMonFuelSnd : public CCmdSnd<cmddata::command::CheckMultiMonFuel> {
public:
    CMDDATA_MESSAGE(CCheckMultiMonFuelSnd)
    CCmdList<CCmdCheckMultiMon> ecus;
    std::uint32_t mode = 0;
    CCmdFuelInfo fuel;
};

/// The measure information of a planned fuel recording, per ECU.
class CMDDATA_API CCheckMultiMonFuelRcv
    : public CCmdRcv<cmddata::command::CheckMultiMonFuel, CCmdMultiMonCheckAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CCheckMultiMonFuelRcv)
};
