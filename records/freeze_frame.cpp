// Freeze-frame records that several families keep, and their value look-ups.
#include "cmddata/records/freeze_frame.h"

#include <type_traits>

#include "cmddata_internal/frz_frm_lookup.h"
#include "cmddata_internal/procs.h"

using cmddata::detail::LastMatchValue;
using cmddata::detail::MatchText;

template <class P>
void CCmdMultiData::Fields(P& p) {
    p.Prefix(*this);
    p.U32("raw_value", rawValue);
    p.U8("item_id", itemId);  // declared after the data, sent before it
    p.Buffer("data", data);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiData)

template <class P>
void CCmdFrzFrmDat::Fields(P& p) {
    p.Prefix(*this);
    p.Unsent("working_value", workingValue);
    p.U16("item_number", itemNumber);
    p.String("name", name);
    p.String("unit", unit);
    p.String("value_text", valueText);
    p.U8("display_flag", displayFlag);
    p.U8("valid_flag", validFlag);
    p.Record("conversion", conversion);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CCmdFrzFrmDat)
std::int32_t CCmdFrzFrmDat::GetValue(char id) const {
    return LastMatchValue(conversion, items, id);
}
const std::uint16_t* CCmdFrzFrmDat::GetString(char id) const {
    return MatchText(conversion, items, id);
}

template <class P>
void CCmdFrzFrmDatListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U8("frame_number", frameNumber);
    p.U16("record_number", recordNumber);
    p.U32("diag_code", diagCode);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdFrzFrmDatListInfo)

template <class P>
void CCmdMultiFrzFrmDatListInfo::Fields(P& p) {
    InfoHeader(p);
    p.U8("frame_number", frameNumber);
    p.U8("frame_count", frameCount);
    p.U8("frame_kind", frameKind);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiFrzFrmDatListInfo)

template <class P>
void CCmdAbsoluteTimeStampInfo::Fields(P& p) {
    p.Prefix(*this);
    p.Array("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdAbsoluteTimeStampInfo)
