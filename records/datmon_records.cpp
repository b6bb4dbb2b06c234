// Data-monitor records.
#include "cmddata/records/datmon_records.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

namespace {}  // namespace

template <class P>
void CCmdDatMonData::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.String("name", name);
    p.String("unit", unit);
    p.String("note", note);
    p.Array("attributes", attributes);
    p.U8("display_kind", displayKind);
    p.U16("data_length", dataLength);
    p.Array("options", options);
}
CMDDATA_DEFINE_FIELDS(CCmdDatMonData)

template <class P>
void CCmdDatMonSignalInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("signal_id", signalId);
    p.String("name", name);
    p.String("unit", unit);
    p.String("note", note);
    p.U8("signal_kind", signalKind);
    p.U8("byte_order", byteOrder);
    p.U32("byte_position", bytePosition);
    p.U8("bit_position", bitPosition);
    p.U32("bit_length", bitLength);
    p.U8("display_kind", displayKind);
    p.Record("conversion", conversion);
}
CMDDATA_DEFINE_FIELDS(CCmdDatMonSignalInfo)

template <class P>
void CCmdDatMonValue::Fields(P& p) {
    p.Prefix(*this);
    p.U32("item_id", itemId);
    p.U32("status", status);  // declared after the sample, sent before it
    p.Buffer("sample", sample);
}
CMDDATA_DEFINE_FIELDS(CCmdDatMonValue)

template <class P>
void CCmdStandardValueInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U32("lower_value", lowerValue);
    p.U32("upper_value", upperValue);
}
CMDDATA_DEFINE_FIELDS(CCmdStandardValueInfo)

template <class P>
void CCmdDatMonStdValue::Fields(P& p) {
    p.Prefix(*this);
    p.U32("standard_value", standardValue);
    p.U32("lower_limit", lowerLimit);
    p.U32("upper_limit", upperLimit);
}
CMDDATA_DEFINE_FIELDS(CCmdDatMonStdValue)

// No version prefix: two bare words.
template <class P>
void CCmdStdValue::Fields(P& p) {
    p.U32("lower_value", lowerValue);
    p.U32("upper_value", upperValue);
}
CMDDATA_DEFINE_FIELDS(CCmdStdValue)

template <class P>
void CCmdItemName::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdItemName)

template <class P>
void CCmdItemNameDw::Fields(P& p) {
    p.Prefix(*this);
    p.U32("item_id", itemId);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdItemNameDw)

template <class P>
void CCmdGroupData::Fields(P& p) {
    p.Prefix(*this);
    p.String("group_name", groupName);
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CCmdGroupData)

template <class P>
void CCmdHighlightSignal::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U8("highlight_mode", highlightMode);
}
CMDDATA_DEFINE_FIELDS(CCmdHighlightSignal)

template <class P>
void CCmdLinkName::Fields(P& p) {
    p.Prefix(*this);
    p.String("link_name", linkName);
    p.U16("link_kind", linkKind);
    if (p.Since(*this, 2)) {
        p.U16("target_ecu_id", targetEcuId);
        p.U16("target_item_id", targetItemId);
        p.U32("target_address", targetAddress);
        p.U16("target_kind", targetKind);
        p.U32("target_flags", targetFlags);
    }
    if (p.Since(*this, 3)) p.U32("display_order", displayOrder);
    if (p.Since(*this, 4)) p.Array("options", options);
}
CMDDATA_DEFINE_FIELDS(CCmdLinkName)
