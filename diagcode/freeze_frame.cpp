// Freeze-frame records, their value look-ups, and the freeze-frame messages.
#include "cmddata/diagcode/freeze_frame.h"

#include <type_traits>

#include "cmddata_internal/frz_frm_lookup.h"
#include "cmddata_internal/procs.h"

using cmddata::detail::LastMatchValue;
using cmddata::detail::MatchText;

// --- items ---

template <class P>
void CCmdMultiDataEx::Fields(P& p) {
    p.Prefix(*this);
    p.U64("raw_value", rawValue);
    p.U8("item_id", itemId);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiDataEx)

template <class P>
void CCmdMultiDataP5::Fields(P& p) {
    p.Prefix(*this);
    p.U32("raw_value", rawValue);
    p.U8("item_id", itemId);
    p.U32("status", status);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiDataP5)

// --- freeze-frame items ---

// The extra value and flag are declared among the texts but travel after the items.
template <class P>
void CCmdFrzFrmDatP5::Fields(P& p) {
    p.Prefix(*this);
    p.Unsent("working_value", workingValue);
    p.U16("item_number", itemNumber);
    p.String("name", name);
    p.String("unit", unit);
    p.U8("display_flag", displayFlag);
    p.U8("valid_flag", validFlag);
    p.Record("conversion", conversion);
    p.List("items", items);
    p.U32("extra_value", extraValue);
    p.U8("extra_flag", extraFlag);
}
CMDDATA_DEFINE_FIELDS(CCmdFrzFrmDatP5)

std::int32_t CCmdFrzFrmDatP5::GetValue(char id) const {
    return LastMatchValue(conversion, items, id);
}
const std::uint16_t* CCmdFrzFrmDatP5::GetString(char id) const {
    return MatchText(conversion, items, id);
}

// --- other records ---

template <class P>
void CCmdFrzFrmDatNo::Fields(P& p) {
    p.Prefix(*this);
    p.U8("frame_number", frameNumber);
    p.U16("record_number", recordNumber);
    p.String("label", label);
}
CMDDATA_DEFINE_FIELDS(CCmdFrzFrmDatNo)

template <class P>
void CCmdIsAbsFrzFrmDat::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U8("is_absolute", isAbsolute);
    p.U8("frame_count", frameCount);
}
CMDDATA_DEFINE_FIELDS(CCmdIsAbsFrzFrmDat)

template <class P>
void CCmdAbsoluteTimeStampInfoP5::Fields(P& p) {
    p.Prefix(*this);
    p.Array("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdAbsoluteTimeStampInfoP5)

template <class P>
void CCmdOperationFrzFrmDat::Fields(P& p) {
    p.Prefix(*this);
    p.String("operation_name", operationName);
    p.U32("operation_code", operationCode);
    p.U8("operation_kind", operationKind);
    p.U8("result", result);
    p.U8("frame_count", frameCount);
    p.U32("start_time", startTime);
    p.U32("end_time", endTime);
    p.Record("first_frame", firstFrame);
    p.U32("second_frame_time", secondFrameTime);
    p.U32("second_frame_counter", secondFrameCounter);
    p.Record("second_frame", secondFrame);
    p.U32("third_frame_time", thirdFrameTime);
    p.Record("third_frame", thirdFrame);
    p.List("further_frames", furtherFrames);
    p.U32("total_time", totalTime);
    p.Record("time_stamps", timeStamps);
}
CMDDATA_DEFINE_FIELDS(CCmdOperationFrzFrmDat)

// --- messages ---

template <class P>
void CGetFrzFrmDatSnd::Fields(P& p) {
    Header(p);
    p.U8("frame_number", frameNumber);
    p.U16("record_number", recordNumber);
    p.U32("diag_code", diagCode);
}
CMDDATA_DEFINE_FIELDS(CGetFrzFrmDatSnd)

template <class P>
void CGetFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.U32("diag_code", diagCode);
    p.List("frames", frames);
    p.List("frame_numbers", frameNumbers);
}
CMDDATA_DEFINE_FIELDS(CGetFrzFrmDatRcv)

// The item numbers are declared first but travel last.
template <class P>
void CGetMultiFrzFrmDatSnd::Fields(P& p) {
    Header(p);
    p.U8("diag_code_index", diagCodeIndex);
    p.List("frame_numbers", frameNumbers);
    p.List("item_numbers", itemNumbers);
}
CMDDATA_DEFINE_FIELDS(CGetMultiFrzFrmDatSnd)

template <class P>
void CGetMultiFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.U8("diag_code_index", diagCodeIndex);
    p.U8("frame_count", frameCount);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetMultiFrzFrmDatRcv)

template <class P>
void CGetDiagDetailFrzFrmDatSnd::Fields(P& p) {
    Header(p);
    p.U8("detail_number", detailNumber);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailFrzFrmDatSnd)

template <class P>
void CGetDiagDetailFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetDiagDetailFrzFrmDatRcv)

template <class P>
void CIsAbsFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.U32("diag_code", diagCode);
    p.U8("is_absolute", isAbsolute);
    p.String("name", name);
    if (p.Since(*this, 2)) p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CIsAbsFrzFrmDatRcv)

template <class P>
void CIsMultiFrzFrmDatSnd::Fields(P& p) {
    Header(p);
    p.U8("frame_number", frameNumber);
    p.U16("record_number", recordNumber);
}
CMDDATA_DEFINE_FIELDS(CIsMultiFrzFrmDatSnd)

template <class P>
void CIsMultiFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.U32("diag_code", diagCode);
    p.List("frame_numbers", frameNumbers);
}
CMDDATA_DEFINE_FIELDS(CIsMultiFrzFrmDatRcv)

template <class P>
void CSeekFFDNoRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CSeekFFDNoRcv)

template <class P>
void CGetOperationFrzFrmDatRcv::Fields(P& p) {
    Header(p);
    p.List("operations", operations);
}
CMDDATA_DEFINE_FIELDS(CGetOperationFrzFrmDatRcv)

template <class P>
void CGetOperationFrzFrmDat2Rcv::Fields(P& p) {
    Header(p);
    p.List("operations", operations);
    p.U32("operation_total", operationTotal);
}
CMDDATA_DEFINE_FIELDS(CGetOperationFrzFrmDat2Rcv)
