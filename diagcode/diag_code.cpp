// Trouble-code records, the conversions between a kept code list and the answers, and the
// trouble-code messages.
#include "cmddata/diagcode/diag_code.h"

#include "cmddata_internal/frz_frm_image.h"
#include "cmddata_internal/procs.h"

namespace {
const char* const kSlotNames[CCmdDiagCodeP5::kSlotCount] = {"slot_1", "slot_2", "slot_3", "slot_4"};

// The one conversion between a kept code list and the answers that carry codes: the header
// words as CCmdBaseInfo takes and gives them, a deep copy of the codes, and the status word
// behind the codes where the answer has one (status is null for the others).
void ConvertCodes(CCmdDiagCodeListInfo& info, CCmdDiagCodeAnswer& answer, std::uint32_t* status,
                  bool intoInfo) {
    if (intoInfo) {
        info.CCmdBaseInfo::operator=(answer);  // empties info first
        info.codes = answer.codes;
        if (status != nullptr) info.codeStatus = *status;
    } else {
        info.CopyTo(&answer);  // empties the answer first
        answer.codes = info.codes;
        if (status != nullptr) *status = info.codeStatus;
    }
}
}  // namespace

// --- records ---

// The class value and flag cross: written u32 then u8, read u8 then u32, on purpose. The slots
// travel as images of CCmdFrzFrmDatP5 (frz_frm_image.h), the fourth after its own word.
template <class P>
void CCmdDiagCodeP5::Fields(P& p) {
    p.Prefix(*this);
    p.U32("code_word_1", codeWords[0]);
    p.U32("code_word_2", codeWords[1]);
    p.U32("code_word_3", codeWords[2]);
    p.String("code_text", codeText);
    p.U32("code_text_word", codeTextWord);
    p.String("description", description);
    p.U32("description_word", descriptionWord);
    p.String("status_text", statusText);
    if (p.Reading()) {
        p.U8("flag", flag);
        p.U32("class_value", classValue);
    } else {
        p.U32("class_value", classValue);
        p.U8("flag", flag);
    }
    p.List("first_bytes", firstBytes);
    p.List("second_bytes", secondBytes);
    p.U32("frames_word", framesWord);
    p.List("frames", frames);
    p.U32("slots_word", slotsWord);
    for (int i = 0; i < kSlotCount - 1; ++i) p.Image(kSlotNames[i], slots[i]);
    p.U32("last_slot_word", lastSlotWord);
    p.Image(kSlotNames[kSlotCount - 1], slots[kSlotCount - 1]);
    p.U8("trailer_byte", trailerByte);
    p.U16("trailer_word", trailerWord);
    p.U8("trailer_flag", trailerFlag);
    p.U32("trailer_value", trailerValue);
    p.Record("time_stamps", timeStamps);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCodeP5)

template <class P>
void CCmdDiagCodeInfo::Fields(P& p) {
    p.Prefix(*this);
    p.String("code_text", codeText);
    p.U32("code_value", codeValue);
    p.String("description", description);
    p.U8("kind", kind);
    p.U32("status", status);
    p.U8("flag", flag);
    p.U16("item_number", itemNumber);
    p.U32("extra_word", extraWord);
    p.List("highlights", highlights);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCodeInfo)

void CCmdDiagCodeListInfo::operator=(CGetDiagCodeRcv& source) {
    ConvertCodes(*this, source, &source.codeStatus, true);
}
void CCmdDiagCodeListInfo::operator=(CGetPendingCodeRcv& source) {
    ConvertCodes(*this, source, nullptr, true);
}

// --- messages ---

template <class P>
void CCmdDiagCodeAnswer::Fields(P& p) {
    Header(p);
    p.List("codes", codes);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagCodeAnswer)

void CCmdDiagCodeAnswer::operator=(CCmdDiagCodeListInfo& source) {
    ConvertCodes(source, *this, nullptr, false);
}

template <class P>
void CGetDiagCodeCountSnd::Fields(P& p) {
    Header(p);
    p.U16("code_kind", codeKind);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeCountSnd)

template <class P>
void CGetDiagCodeCountRcv::Fields(P& p) {
    Header(p);
    p.U16("count", count);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeCountRcv)

template <class P>
void CGetDiagCodeSnd::Fields(P& p) {
    Header(p);
    p.U32("code_kind", codeKind);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeSnd)

template <class P>
void CGetDiagCodeRcv::Fields(P& p) {
    CCmdDiagCodeAnswer::Fields(p);  // header and codes
    p.U32("code_status", codeStatus);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeRcv)

void CGetDiagCodeRcv::operator=(CCmdDiagCodeListInfo& source) {
    ConvertCodes(source, *this, &codeStatus, false);
}

template <class P>
void CDelDiagCodeSnd::Fields(P& p) {
    Header(p);
    p.U8("code_kind", codeKind);
}
CMDDATA_DEFINE_FIELDS(CDelDiagCodeSnd)

template <class P>
void CDelDiagCodeRcv::Fields(P& p) {
    Header(p);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CDelDiagCodeRcv)

template <class P>
void CJudgeDiagStatusSnd::Fields(P& p) {
    Header(p);
    p.String("code_text", codeText);
}
CMDDATA_DEFINE_FIELDS(CJudgeDiagStatusSnd)

// The judgement is declared after both texts but travels between them.
template <class P>
void CJudgeDiagStatusRcv::Fields(P& p) {
    Header(p);
    p.String("code_text", codeText);
    p.U8("judgement", judgement);
    p.String("status_text", statusText);
}
CMDDATA_DEFINE_FIELDS(CJudgeDiagStatusRcv)

template <class P>
void CGetDiagDetailIdListSnd::Fields(P& p) {
    Header(p);
    p.U8("detail_kind", detailKind);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailIdListSnd)

template <class P>
void CGetDiagDetailIdListRcv::Fields(P& p) {
    Header(p);
    p.List("details", details);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailIdListRcv)

template <class P>
void CGetDiagDetailSnd::Fields(P& p) {
    Header(p);
    p.U32("detail_id", detailId);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailSnd)

template <class P>
void CGetDiagDetailRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailRcv)

template <class P>
void CGetDiagCodeInfoSnd::Fields(P& p) {
    Header(p);
    p.U16("code_kind", codeKind);
    p.String("code_text", codeText);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeInfoSnd)

template <class P>
void CGetDiagCodeInfoRcv::Fields(P& p) {
    Header(p);
    p.List("infos", infos);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeInfoRcv)

template <class P>
void CGetDiagCodeP5Snd::Fields(P& p) {
    Header(p);
    p.U32("request_word_1", requestWords[0]);
    p.U32("request_word_2", requestWords[1]);
    p.U32("request_word_3", requestWords[2]);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeP5Snd)

template <class P>
void CGetDiagCodeP5Rcv::Fields(P& p) {
    Header(p);
    p.List("codes", codes);
}
CMDDATA_DEFINE_FIELDS(CGetDiagCodeP5Rcv)

template <class P>
void CGetEachFrzFrmDatP5Snd::Fields(P& p) {
    Header(p);
    p.U32("code_word", codeWord);
    p.List("frame_numbers", frameNumbers);
    p.List("item_numbers", itemNumbers);
    p.U32("extra_word", extraWord);
}
CMDDATA_DEFINE_FIELDS(CGetEachFrzFrmDatP5Snd)

template <class P>
void CGetEachFrzFrmDatP5Rcv::Fields(P& p) {
    Header(p);
    p.Record("code", code);
}
CMDDATA_DEFINE_FIELDS(CGetEachFrzFrmDatP5Rcv)
