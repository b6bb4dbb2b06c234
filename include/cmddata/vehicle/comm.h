// Communication set-up and caches: the communication configuration, the tester-present
// keep-alive, bus line and session changes, the cached communication frames and ECU
// connections, general requests with their responses, the remote protocol information, the
// automatic power-off and the log collection mode.
//
// Only the widths and order of the scalars are fixed; their names say where they stand, and
// their meaning (bus line, cache selectors, request addressing words) belongs to the two
// processes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/frame.h"

// --- records ---

/// One communication configuration entry: its identifier and value. Default version 1.
class CMDDATA_API CCmdCommConfig : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCommConfig)
    explicit CCmdCommConfig(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t configId = 0;
    std::uint32_t configValue = 0;
};

/// The remote protocol information: a word, a byte, then six words.
class CMDDATA_API CCmdRemoteProtInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdRemoteProtInfo)
    static constexpr int kWordCount = 6;
    CCmdRemoteProtInfo() = default;
    std::uint16_t protocol = 0;
    std::uint8_t kind = 0;
    std::uint16_t words[kWordCount] = {0, 0, 0, 0, 0, 0};
};

/// One response to a general request: its bytes.
class CMDDATA_API CCmdResponseData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdResponseData)
    CCmdResponseData() = default;
    CCmdList<CCmdByteData> bytes;
};

// --- messages ---

/// Request: starts the tester-present keep-alive (header only).
/// Answer: the outcome of starting the keep-alive, in the status words (header only).
CMDDATA_HEADER_ONLY_COMMAND(StartTesterPresent);

/// Request: stops the tester-present keep-alive (header only).
/// Answer: the outcome of stopping the keep-alive (header only).
CMDDATA_HEADER_ONLY_COMMAND(StopTesterPresent);

/// Selects an ECU's bus line.
class CMDDATA_API CSetEcuBuslineSnd : public CCmdSnd<cmddata::command::SetEcuBusline> {
public:
    CMDDATA_MESSAGE(CSetEcuBuslineSnd)
    std::uint16_t busLine = 0;
};

/// The outcome of selecting the bus line (header only).
class CMDDATA_API CSetEcuBuslineRcv
    : public CCmdRcv<cmddata::command::SetEcuBusline, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetEcuBuslineRcv)
};

/// Sends a general request: a kind, two addressing words and the request bytes.
class CMDDATA_API CGetGeneralCommResultSnd
    : public CCmdSnd<cmddata::command::GetGeneralCommResult> {
public:
    CMDDATA_MESSAGE(CGetGeneralCommResultSnd)
    std::uint8_t kind = 0;
    std::uint16_t firstAddress = 0;
    std::uint16_t secondAddress = 0;
    CCmdList<CCmdByteData> request;
};

/// The responses to a general request.
class CMDDATA_API CGetGeneralCommResultRcv
    : public CCmdRcv<cmddata::command::GetGeneralCommResult> {
public:
    CMDDATA_MESSAGE(CGetGeneralCommResultRcv)
    CCmdList<CCmdResponseData> responses;
};

/// Asks for the communication configuration. Right after the header it sends status word 4 a
/// second time and reads that copy back into the same word (26 bytes).
class CMDDATA_API CGetCommConfigSnd : public CCmdSnd<cmddata::command::GetCommConfig> {
public:
    CMDDATA_MESSAGE(CGetCommConfigSnd)
    std::uint16_t configKind = 0;
};

/// The communication configuration entries.
class CMDDATA_API CGetCommConfigRcv : public CCmdRcv<cmddata::command::GetCommConfig> {
public:
    CMDDATA_MESSAGE(CGetCommConfigRcv)
    CCmdList<CCmdCommConfig> configs;
};

/// Stores communication frames in the cache: the frames, then a cache selector.
class CMDDATA_API CSetCommFrameCacheSnd : public CCmdSnd<cmddata::command::SetCommFrameCache> {
public:
    CMDDATA_MESSAGE(CSetCommFrameCacheSnd)
    CCmdList<CCmdFrameCtrlMessage> frames;
    std::uint8_t cacheSelector = 0;
};

/// The outcome of storing frames (header only).
class CMDDATA_API CSetCommFrameCacheRcv
    : public CCmdRcv<cmddata::command::SetCommFrameCache, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetCommFrameCacheRcv)
};

/// Asks for the cached communication frames (header only).
class CMDDATA_API CGetCommFrameCacheSnd
    : public CCmdSnd<cmddata::command::GetCommFrameCache, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCommFrameCacheSnd)
};

/// The cached communication frames.
class CMDDATA_API CGetCommFrameCacheRcv : public CCmdRcv<cmddata::command::GetCommFrameCache> {
public:
    CMDDATA_MESSAGE(CGetCommFrameCacheRcv)
    CCmdList<CCmdFrameCtrlMessage> frames;
};

/// Asks for the remote protocol information (header only).
class CMDDATA_API CGetRemoteProtInfoSnd
    : public CCmdSnd<cmddata::command::GetRemoteProtInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRemoteProtInfoSnd)
};

/// The remote protocol information. It has no assignment of its own: the member-wise one
/// serves (the list copied deeply).
class CMDDATA_API CGetRemoteProtInfoRcv : public CCmdRcv<cmddata::command::GetRemoteProtInfo> {
public:
    CMDDATA_MESSAGE(CGetRemoteProtInfoRcv)
    CCmdList<CCmdRemoteProtInfo> infos;
};

/// Sends a general request whose response is not awaited: two addressing words and the bytes.
class CMDDATA_API CNoConfGeneralCommResponseSnd
    : public CCmdSnd<cmddata::command::NoConfGeneralCommResponse> {
public:
    CMDDATA_MESSAGE(CNoConfGeneralCommResponseSnd)
    std::uint16_t firstAddress = 0;
    std::uint16_t secondAddress = 0;
    CCmdList<CCmdByteData> request;
};

/// The outcome of the unconfirmed request (header only).
class CMDDATA_API CNoConfGeneralCommResponseRcv
    : public CCmdRcv<cmddata::command::NoConfGeneralCommResponse, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CNoConfGeneralCommResponseRcv)
};

/// Deletes cached ECU connections: a selector word and an ECU number (26 bytes).
class CMDDATA_API CDelEcuCnctCacheSnd : public CCmdSnd<cmddata::command::DelEcuCnctCache> {
public:
    CMDDATA_MESSAGE(CDelEcuCnctCacheSnd)
    std::uint32_t selector = 0;
    std::uint16_t ecuNumber = 0;
};

/// The outcome of deleting cached connections (header only).
class CMDDATA_API CDelEcuCnctCacheRcv
    : public CCmdRcv<cmddata::command::DelEcuCnctCache, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDelEcuCnctCacheRcv)
};

/// Request: returns to the default diagnostic session (header only; version argument, default 1).
/// Answer: the outcome of returning to the default session (header only).
CMDDATA_HEADER_ONLY_COMMAND(SetDefSession);

/// Moves the gateway session: one byte (21 bytes; version argument, default 1).
class CMDDATA_API CMoveSessionCGWDKSnd : public CCmdSnd<cmddata::command::MoveSessionCGWDK> {
public:
    CMDDATA_MESSAGE(CMoveSessionCGWDKSnd)
    std::uint8_t session = 0;
};

/// The outcome of moving the gateway session (header only).
class CMDDATA_API CMoveSessionCGWDKRcv
    : public CCmdRcv<cmddata::command::MoveSessionCGWDK, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CMoveSessionCGWDKRcv)
};

/// Deletes chosen caches: a selector and the items (version argument, default 1).
class CMDDATA_API CDelSpecifiedCacheSnd : public CCmdSnd<cmddata::command::DelSpecifiedCache> {
public:
    CMDDATA_MESSAGE(CDelSpecifiedCacheSnd)
    std::uint16_t selector = 0;
    CCmdList<CCmdWordId> itemIds;
};

/// The outcome of deleting the caches (header only).
class CMDDATA_API CDelSpecifiedCacheRcv
    : public CCmdRcv<cmddata::command::DelSpecifiedCache, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDelSpecifiedCacheRcv)
};

/// Switches the log collection mode.
class CMDDATA_API CChangeLogCollectionModeSnd
    : public CCmdSnd<cmddata::command::ChangeLogCollectionMode> {
public:
    CMDDATA_MESSAGE(CChangeLogCollectionModeSnd)
    std::uint32_t mode = 0;
};

/// The outcome of switching the mode (header only).
class CMDDATA_API CChangeLogCollectionModeRcv
    : public CCmdRcv<cmddata::command::ChangeLogCollectionMode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CChangeLogCollectionModeRcv)
};

/// Request: cancels the automatic power-off (header only; version argument, default 1).
/// Answer: the outcome of cancelling the power-off (header only).
CMDDATA_HEADER_ONLY_COMMAND(AutoPowerOffCansel);
