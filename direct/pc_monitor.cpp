// PC monitor records and messages.
#include "cmddata/direct/pc_monitor.h"

#include "cmddata_internal/procs.h"

namespace {
// Status word 3 of an answer; reading then sets status word 2 from it (1 when word 3 is not 0).
// Writing never looks at status word 2.
template <class P>
void AnswerStatus(P& p, std::uint32_t (&status)[4]) {
    p.U32("status_word_3", status[2]);
    if (p.Reading()) status[1] = status[2] != 0 ? 1 : 0;
}
}  // namespace

template <class P>
void CCmdPcMonInfo::Fields(P& p) {
    WordsAndList(p);
}
CMDDATA_DEFINE_FIELDS(CCmdPcMonInfo)

template <class P>
void CCmdPcMonRcvSignInfo::Fields(P& p) {
    p.U16("word_1", words[0]);
    p.U16("word_2", words[1]);
    p.U16("word_3", words[2]);
}
CMDDATA_DEFINE_FIELDS(CCmdPcMonRcvSignInfo)

template <class P>
void CCmdPcMonRcvFrmInfo::Fields(P& p) {
    WordsAndList(p);
}
CMDDATA_DEFINE_FIELDS(CCmdPcMonRcvFrmInfo)

template <class P>
void CCmdPcMonRcvData::Fields(P& p) {
    p.U32("word", word);
    p.Buffer("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdPcMonRcvData)

// Header(p) puts nothing on the wire for these messages but the data request; the status
// words are written here.
template <class P>
void CPcMonStartSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.List("monitors", monitors);
}
CMDDATA_DEFINE_FIELDS(CPcMonStartSnd)

template <class P>
void CPcMonStartRcv::Fields(P& p) {
    Header(p);
    AnswerStatus(p, status_);
    p.U32("word", word);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CPcMonStartRcv)

template <class P>
void CPcMonGetDataSnd::Fields(P& p) {
    Header(p);  // the full header, identifier 0 first
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CPcMonGetDataSnd)

template <class P>
void CPcMonGetDataRcv::Fields(P& p) {
    Header(p);
    AnswerStatus(p, status_);
    p.List("blocks", blocks);
}
CMDDATA_DEFINE_FIELDS(CPcMonGetDataRcv)

template <class P>
void CPcMonStopSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
}
CMDDATA_DEFINE_FIELDS(CPcMonStopSnd)

template <class P>
void CPcMonStopRcv::Fields(P& p) {
    Header(p);
    AnswerStatus(p, status_);
}
CMDDATA_DEFINE_FIELDS(CPcMonStopRcv)
