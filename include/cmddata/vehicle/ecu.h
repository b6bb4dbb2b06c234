// ECU lists and connection: the ECU records, the fitted and connected ECU lists with their locks,
// the two storage records that keep such a list, and the candidate, group and name commands.
//
// The numeric words of these records are carried, not interpreted; their names say where they
// stand, their meaning belongs to the two processes.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/ecu.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/platform/platform.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/diag_code.h"
#include "cmddata/records/ecu.h"
#include "cmddata/records/freeze_frame.h"
#include "cmddata/records/function.h"

// --- Records ---

/// One ECU on a CAN bus: identifier, name and a flag.
class CMDDATA_API CCmdCanEcuInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCanEcuInfo)
    CCmdCanEcuInfo() = default;
    std::uint32_t ecuId = 0;
    CCmdString name;
    std::uint8_t flag = 0;
};

/// The body the two storage records share: behind the header (with its version prefix), the
/// ECUs, two words and a value, as a locked ECU-list answer carries them, without the lock.
/// Default version 1.
class CMDDATA_API CCmdEcuListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdEcuListInfo)
    explicit CCmdEcuListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    CCmdList<CCmdEcuInfo> ecus;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
    std::uint16_t thirdValue = 0;
};

class CGetConnectEcuListRcv;
class CGetMountEcuListRcv;

/// Kept connected ECUs: the answer of GetConnectEcuList with its header behind a version prefix.
/// Converts to and from that answer (one routine with CCmdMountEcuListInfo).
class CMDDATA_API CCmdConnectEcuListInfo : public CCmdEcuListInfo {
public:
    CMDDATA_SAME_LAYOUT(CCmdConnectEcuListInfo)
    explicit CCmdConnectEcuListInfo(std::uint16_t version = 1) : CCmdEcuListInfo(version) {}
    using CCmdBaseInfo::operator=;
    /// Empties this record, takes the answer's header words (CCmdBaseInfo's assignment), then
    /// for each ECU a record built at version 2 and assigned from it (so it takes the ECU's
    /// version), then the two words and the value.
    void operator=(CGetConnectEcuListRcv& source);
};

/// Kept fitted ECUs: the answer of GetMountEcuList with its header behind a version prefix.
/// Converts to and from that answer (one routine with CCmdConnectEcuListInfo).
class CMDDATA_API CCmdMountEcuListInfo : public CCmdEcuListInfo {
public:
    CMDDATA_SAME_LAYOUT(CCmdMountEcuListInfo)
    explicit CCmdMountEcuListInfo(std::uint16_t version = 1) : CCmdEcuListInfo(version) {}
    using CCmdBaseInfo::operator=;
    /// As CCmdConnectEcuListInfo's.
    void operator=(CGetMountEcuListRcv& source);
};

// --- Layouts several commands share ---

/// The layout of the four locked ECU-list answers: the header (behind the message's version
/// prefix where its command's framing puts one), the ECUs, two words and a value, and a
/// recursive lock that never travels.
///
/// Lock()/Unlock() take and leave the lock; nothing else here takes it: reading, writing,
/// emptying, assignment and the conversions run unlocked, and a caller that shares the message
/// between threads holds the lock around them. The lock exists before the constructor empties
/// the message and goes before the list when it is destroyed.
///
/// A copy gets a lock of its own (never the source's, never a copy of its system object), and
/// shares the source's list items as every copy does; assignment copies the header words, the
/// list item by item and the words, and leaves both locks as they were.
class CMDDATA_API CCmdEcuListAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdEcuListAnswer)
    CCmdEcuListAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved);
    CCmdEcuListAnswer(const CCmdEcuListAnswer& source);
    CCmdEcuListAnswer& operator=(const CCmdEcuListAnswer& source);
    ~CCmdEcuListAnswer() override;

    void Lock();
    void Unlock();

    CCmdList<CCmdEcuInfo> ecus;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
    std::uint16_t thirdValue = 0;

private:
    cmddata::platform::RecursiveLock lock_;  // declared last: made before, gone before the list
};

/// A request for the fitted ECUs: the header, a list of word ids, then a flag (list before
/// flag).
class CMDDATA_API CCmdMountEcuRequest : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdMountEcuRequest)
    CCmdMountEcuRequest(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdWordId> ids;
    std::uint8_t flag = 0;
};

/// A message that carries its header, then a list of numbered names.
class CMDDATA_API CCmdItemNameListMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdItemNameListMessage)
    CCmdItemNameListMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdItemName> names;
};

/// An answer that carries its header, then a list of candidate ECUs.
class CMDDATA_API CCmdEcuCandidateAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdEcuCandidateAnswer)
    CCmdEcuCandidateAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdEcuSpecificInfo> candidates;
};

// --- Messages ---

/// Asks for the ECU groups (header only).
class CMDDATA_API CGetEcuGroupListSnd
    : public CCmdSnd<cmddata::command::GetEcuGroupList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetEcuGroupListSnd)
};

/// The ECU groups, numbered and named.
class CMDDATA_API CGetEcuGroupListRcv
    : public CCmdRcv<cmddata::command::GetEcuGroupList, CCmdItemNameListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetEcuGroupListRcv)
};

/// Asks for the connected ECUs: a flag, then a list of word ids (flag before list).
class CMDDATA_API CGetConnectEcuListSnd : public CCmdSnd<cmddata::command::GetConnectEcuList> {
public:
    CMDDATA_MESSAGE(CGetConnectEcuListSnd)
    std::uint8_t flag = 0;
    CCmdList<CCmdWordId> ids;
};

/// The connected ECUs, with a lock (see CCmdEcuListAnswer); plain header.
class CMDDATA_API CGetConnectEcuListRcv
    : public CCmdRcv<cmddata::command::GetConnectEcuList, CCmdEcuListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetConnectEcuListRcv)
    /// Empties this answer, takes the record's status words (CopyTo), a copy of each ECU in
    /// order, then the two words and the value; identifier and thread id stay.
    void operator=(CCmdConnectEcuListInfo& source);
};

/// Asks for the ECUs on the CAN bus (header only).
class CMDDATA_API CGetCanBusEcuListSnd
    : public CCmdSnd<cmddata::command::GetCanBusEcuList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCanBusEcuListSnd)
};

/// The ECUs on the CAN bus.
class CMDDATA_API CGetCanBusEcuListRcv : public CCmdRcv<cmddata::command::GetCanBusEcuList> {
public:
    CMDDATA_MESSAGE(CGetCanBusEcuListRcv)
    CCmdList<CCmdCanEcuInfo> ecus;
};

/// Asks for the fitted ECUs: a list of word ids, then a flag (list before flag). The version
/// does not travel.
class CMDDATA_API CGetMountEcuListSnd
    : public CCmdSnd<cmddata::command::GetMountEcuList, CCmdMountEcuRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMountEcuListSnd)
};

/// The fitted ECUs, with a lock (see CCmdEcuListAnswer); plain header.
class CMDDATA_API CGetMountEcuListRcv
    : public CCmdRcv<cmddata::command::GetMountEcuList, CCmdEcuListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMountEcuListRcv)
    /// As CGetConnectEcuListRcv's.
    void operator=(CCmdMountEcuListInfo& source);
};

/// Request: starts communication for the fitted-ECU list (header only).
/// Answer: outcome of starting communication for the fitted-ECU list (header only).
CMDDATA_HEADER_ONLY_COMMAND(CommInitMountEcuList);

/// Asks for the fitted ECUs without talking to them: version prefix, header, list, flag.
class CMDDATA_API CGetMountEcuListNoCommSnd
    : public CCmdSnd<cmddata::command::GetMountEcuListNoComm, CCmdMountEcuRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMountEcuListNoCommSnd)
};

/// The fitted ECUs known without talking to them, with a lock (see CCmdEcuListAnswer); the
/// version prefix comes before the header.
class CMDDATA_API CGetMountEcuListNoCommRcv
    : public CCmdRcv<cmddata::command::GetMountEcuListNoComm, CCmdEcuListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMountEcuListNoCommRcv)
};

/// Connects one ECU: version prefix, header, then two words.
class CMDDATA_API CEcuEachConnectSnd : public CCmdSnd<cmddata::command::EcuEachConnect> {
public:
    CMDDATA_MESSAGE(CEcuEachConnectSnd)
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
};

/// The ECUs after connecting one, with a lock (see CCmdEcuListAnswer); the version prefix comes
/// before the header.
class CMDDATA_API CEcuEachConnectRcv
    : public CCmdRcv<cmddata::command::EcuEachConnect, CCmdEcuListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CEcuEachConnectRcv)
};

/// Asks for the ECUs that can record on behaviour (header only; the version does not travel).
class CMDDATA_API CGetRoBCandidateEcuListSnd
    : public CCmdSnd<cmddata::command::GetRoBCandidateEcuList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRoBCandidateEcuListSnd)
};

/// The ECUs that can record on behaviour (the version does not travel).
class CMDDATA_API CGetRoBCandidateEcuListRcv
    : public CCmdRcv<cmddata::command::GetRoBCandidateEcuList, CCmdEcuCandidateAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRoBCandidateEcuListRcv)
};

/// Asks for the ECUs that offer one function (the version does not travel).
class CMDDATA_API CGetSelectFuncCandidateEcuListSnd
    : public CCmdSnd<cmddata::command::GetSelectFuncCandidateEcuList, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSelectFuncCandidateEcuListSnd)
};

/// The ECUs that offer the function (the version does not travel).
class CMDDATA_API CGetSelectFuncCandidateEcuListRcv
    : public CCmdRcv<cmddata::command::GetSelectFuncCandidateEcuList, CCmdEcuCandidateAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSelectFuncCandidateEcuListRcv)
};

/// Asks for the identifier behind an ECU name number.
class CMDDATA_API CGetEcuNameIdSnd
    : public CCmdSnd<cmddata::command::GetEcuNameId, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetEcuNameIdSnd)
};

/// The identifier behind the ECU name number.
class CMDDATA_API CGetEcuNameIdRcv : public CCmdRcv<cmddata::command::GetEcuNameId> {
public:
    CMDDATA_MESSAGE(CGetEcuNameIdRcv)
    std::uint32_t ecuId = 0;
};

/// Checks the connection of one shortcut.
class CMDDATA_API CCheckConnectShortCutSnd
    : public CCmdSnd<cmddata::command::CheckConnectShortCut, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CCheckConnectShortCutSnd)
};

/// The ECU the shortcut connects to (its record built with version 2).
class CMDDATA_API CCheckConnectShortCutRcv
    : public CCmdRcv<cmddata::command::CheckConnectShortCut> {
public:
    CMDDATA_MESSAGE(CCheckConnectShortCutRcv)
    CCmdEcuInfo ecu{2};
};
