// Trouble-code records that several families keep.
#include "cmddata/records/diag_code.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

// The code number is declared first but travels after the status text; the four version tests
// are separate and taken in this order, each against the version the prefix settled.
template <class P>
void CCmdDiagCode::Fields(P& p) {
    p.Prefix(*this);
    p.String("code_text", codeText);
    p.Unsent("working_value", workingValue);
    p.String("description", description);
    p.U32("code_value", codeValue);
    p.U8("flag", flag);
    p.String("status_text", statusText);
    p.U16("code_number", codeNumber);
    if (p.Since(*this, 2)) {
        p.U32("first_frame_word_1", firstFrameWords[0]);
        p.U32("first_frame_word_2", firstFrameWords[1]);
        p.Record("first_frame", firstFrame);
        p.U32("second_frame_word_1", secondFrameWords[0]);
        p.U32("second_frame_word_2", secondFrameWords[1]);
        p.Record("second_frame", secondFrame);
    }
    if (p.Since(*this, 3)) p.U32("extra_word", extraWord);
    if (p.Since(*this, 4)) p.Record("third_frame", thirdFrame);
    if (p.Since(*this, 5)) {
        p.U32("time_stamp_word", timeStampWord);
        p.Record("time_stamps", timeStamps);
    }
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCode)

template <class P>
void CCmdDiagCodeCount::Fields(P& p) {
    p.Prefix(*this);
    p.U16("count", count);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCodeCount)

template <class P>
void CCmdDiagDetail::Fields(P& p) {
    p.Prefix(*this);
    p.U32("detail_id", detailId);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagDetail)

template <class P>
void CCmdDiagCodeListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U32("code_kind", codeKind);
    p.List("codes", codes);
    p.U32("code_status", codeStatus);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCodeListInfo)

template <class P>
void CCmdDiagDetailIdListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U8("detail_kind", detailKind);
    p.List("details", details);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagDetailIdListInfo)

template <class P>
void CCmdDiagDetailListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U32("detail_id", detailId);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagDetailListInfo)

template <class P>
void CCmdDiagDetailFrzFrmDatListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U8("detail_number", detailNumber);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagDetailFrzFrmDatListInfo)
