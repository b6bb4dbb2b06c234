// ECU records, the locked ECU-list answers with their storage records and conversions, and the
// ECU-list messages.
#include "cmddata/vehicle/ecu.h"

#include "cmddata_internal/procs.h"

namespace {

// The one conversion from a storage record into a locked answer, and back.
void IntoAnswer(CCmdEcuListInfo& record, CCmdEcuListAnswer& answer) {
    answer.RemoveAll();
    record.CopyTo(&answer);     // empties the answer again, then gives it the status words
    answer.ecus = record.ecus;  // a copy of each ECU, in order
    answer.firstWord = record.firstWord;
    answer.secondWord = record.secondWord;
    answer.thirdValue = record.thirdValue;
}

void IntoRecord(CCmdEcuListAnswer& answer, CCmdEcuListInfo& record) {
    record.RemoveAll();
    record.CCmdBaseInfo::operator=(answer);  // empties the record, takes the header words
    answer.ecus.ForEach([&record](const CCmdEcuInfo& source) {
        CCmdEcuInfo item(2);
        item = source;  // the source's version replaces the 2
        record.ecus.AddTail(item);
    });
    record.firstWord = answer.firstWord;
    record.secondWord = answer.secondWord;
    record.thirdValue = answer.thirdValue;
}

}  // namespace

// --- Records ---

template <class P>
void CCmdCanEcuInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("ecu_id", ecuId);
    p.String("name", name);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CCmdCanEcuInfo)

template <class P>
void CCmdEcuListInfo::Fields(P& p) {
    InfoHeader(p);
    p.List("ecus", ecus);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
    p.U16("third_value", thirdValue);
}
CMDDATA_DEFINE_FIELDS(CCmdEcuListInfo)

void CCmdConnectEcuListInfo::operator=(CGetConnectEcuListRcv& source) { IntoRecord(source, *this); }

void CCmdMountEcuListInfo::operator=(CGetMountEcuListRcv& source) { IntoRecord(source, *this); }

// --- Layouts ---

CCmdEcuListAnswer::CCmdEcuListAnswer(std::uint32_t commandId, std::uint16_t version,
                                     std::uint16_t reserved)
    : CCmdBase(commandId, version, reserved) {
    RemoveAll();  // the lock already exists here
}

CCmdEcuListAnswer::CCmdEcuListAnswer(const CCmdEcuListAnswer& source)
    : CCmdBase(source),
      ecus(source.ecus),
      firstWord(source.firstWord),
      secondWord(source.secondWord),
      thirdValue(source.thirdValue) {}  // lock_: a new one of its own

CCmdEcuListAnswer& CCmdEcuListAnswer::operator=(const CCmdEcuListAnswer& source) {
    if (&source == this) return *this;
    CCmdBase::operator=(source);
    ecus = source.ecus;
    firstWord = source.firstWord;
    secondWord = source.secondWord;
    thirdValue = source.thirdValue;
    return *this;
}

CCmdEcuListAnswer::~CCmdEcuListAnswer() = default;  // lock_ goes first, then the list

void CCmdEcuListAnswer::Lock() { lock_.Lock(); }
void CCmdEcuListAnswer::Unlock() { lock_.Unlock(); }

template <class P>
void CCmdEcuListAnswer::Fields(P& p) {
    Header(p);  // plain header, or the version prefix then the header, as the command has it
    p.List("ecus", ecus);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
    p.U16("third_value", thirdValue);
}
CMDDATA_DEFINE_FIELDS(CCmdEcuListAnswer)

template <class P>
void CCmdMountEcuRequest::Fields(P& p) {
    Header(p);
    p.List("ids", ids);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CCmdMountEcuRequest)

template <class P>
void CCmdItemNameListMessage::Fields(P& p) {
    Header(p);
    p.List("names", names);
}
CMDDATA_DEFINE_FIELDS(CCmdItemNameListMessage)

template <class P>
void CCmdEcuCandidateAnswer::Fields(P& p) {
    Header(p);
    p.List("candidates", candidates);
}
CMDDATA_DEFINE_FIELDS(CCmdEcuCandidateAnswer)

// --- Messages ---

template <class P>
void CGetConnectEcuListSnd::Fields(P& p) {
    Header(p);
    p.U8("flag", flag);  // flag before the list, unlike the fitted-ECU request
    p.List("ids", ids);
}
CMDDATA_DEFINE_FIELDS(CGetConnectEcuListSnd)

void CGetConnectEcuListRcv::operator=(CCmdConnectEcuListInfo& source) { IntoAnswer(source, *this); }

template <class P>
void CGetCanBusEcuListRcv::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CGetCanBusEcuListRcv)

void CGetMountEcuListRcv::operator=(CCmdMountEcuListInfo& source) { IntoAnswer(source, *this); }

template <class P>
void CEcuEachConnectSnd::Fields(P& p) {
    Header(p);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
}
CMDDATA_DEFINE_FIELDS(CEcuEachConnectSnd)

template <class P>
void CGetEcuNameIdRcv::Fields(P& p) {
    Header(p);
    p.U32("ecu_id", ecuId);
}
CMDDATA_DEFINE_FIELDS(CGetEcuNameIdRcv)

template <class P>
void CCheckConnectShortCutRcv::Fields(P& p) {
    Header(p);
    p.Record("ecu", ecu);
}
CMDDATA_DEFINE_FIELDS(CCheckConnectShortCutRcv)
