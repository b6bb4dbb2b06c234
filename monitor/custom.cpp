// Customize records and messages.
#include "cmddata/monitor/custom.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

template <class P>
void CCmdCustomValue::Fields(P& p) {
    p.Prefix(*this);
    p.U8("value_number", valueNumber);
    p.String("text", text);
    if (p.Since(*this, 2)) p.U16("display_order", displayOrder);
    if (p.Since(*this, 3)) p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdCustomValue)

// Three independent version tests, in this order.
template <class P>
void CCmdCustomItem::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.String("name", name);
    p.U8("current_number", currentNumber);
    p.List("values", values);
    if (p.Since(*this, 2)) {
        p.U32("data_id", dataId);
        p.U16("byte_position", bytePosition);
        p.U32("bit_mask", bitMask);
    }
    if (p.Since(*this, 3)) {
        p.U32("ecu_address", ecuAddress);
        p.U16("item_kind", itemKind);
    }
    if (p.Since(*this, 4)) p.List("current_bytes", currentBytes);
}
CMDDATA_DEFINE_FIELDS(CCmdCustomItem)

template <class P>
void CCmdSetCustomItem::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U16("list_id", listId);
    p.U8("value_number", valueNumber);
    if (p.Since(*this, 2)) p.U16("display_order", displayOrder);
    if (p.Since(*this, 3)) p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdSetCustomItem)

template <class P>
void CCmdSuccessItem::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U16("list_id", listId);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CCmdSuccessItem)

template <class P>
void CCmdCustomListInfo::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.String("note", note);
    p.U16("list_id", listId);
    p.U16("ecu_id", ecuId);
    p.U8("list_kind", listKind);
    if (p.Since(*this, 2)) {
        p.U16("group_id", groupId);
        p.U32("options", options);
        p.U16("display_order", displayOrder);
    }
}
CMDDATA_DEFINE_FIELDS(CCmdCustomListInfo)

template <class P>
void CCmdCustSupInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U8("support_kind", supportKind);
    p.U16("ecu_id", ecuId);
    p.U32("options", options);
}
CMDDATA_DEFINE_FIELDS(CCmdCustSupInfo)

template <class P>
void CCmdDedicatedLogic::Fields(P& p) {
    p.Prefix(*this);
    p.U16("logic_id", logicId);
    p.U8("logic_kind", logicKind);
    p.List("names", names);
}
CMDDATA_DEFINE_FIELDS(CCmdDedicatedLogic)

template <class P>
void CCmdRmtCustomValue::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U16("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomValue)

template <class P>
void CCmdRmtCustomValInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("ecu_id", ecuId);
    p.List("values", values);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomValInfo)

template <class P>
void CCmdRmtCustomItem::Fields(P& p) {
    p.Prefix(*this);
    p.U32("item_id", itemId);
    p.U8("item_kind", itemKind);
    p.U8("settable", settable);
    p.U8("value_count", valueCount);
    p.U16("data_id", dataId);
    p.U16("byte_position", bytePosition);
    p.U16("bit_mask", bitMask);
    p.U32("frame_id", frameId);  // declared last, sent before the current value
    p.Record("current", current);
    p.List("values", values);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomItem)

template <class P>
void CCmdRmtCustomSupport::Fields(P& p) {
    p.Prefix(*this);
    p.U16("ecu_id", ecuId);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomSupport)

template <class P>
void CCmdRmtCustomValInfoMessage::Fields(P& p) {
    Header(p);
    p.List("value_infos", valueInfos);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomValInfoMessage)

template <class P>
void CCmdRmtCustomSupportMessage::Fields(P& p) {
    Header(p);
    p.List("supports", supports);
}
CMDDATA_DEFINE_FIELDS(CCmdRmtCustomSupportMessage)

template <class P>
void CGetCustomItemListSnd::Fields(P& p) {
    Header(p);
    p.U16("list_id", listId);
    p.U32("ecu_address", ecuAddress);
}
CMDDATA_DEFINE_FIELDS(CGetCustomItemListSnd)

template <class P>
void CGetCustomItemListRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CGetCustomItemListRcv)

template <class P>
void CSetCustomSnd::Fields(P& p) {
    Header(p);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CSetCustomSnd)

template <class P>
void CSetCustomRcv::Fields(P& p) {
    Header(p);
    p.List("results", results);
}
CMDDATA_DEFINE_FIELDS(CSetCustomRcv)

template <class P>
void CGetCustomSupportListRcv::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
    p.List("logics", logics);
}
CMDDATA_DEFINE_FIELDS(CGetCustomSupportListRcv)

template <class P>
void CDelCommCacheCustomDopSnd::Fields(P& p) {
    Header(p);
    p.U16("ecu_id", ecuId);
}
CMDDATA_DEFINE_FIELDS(CDelCommCacheCustomDopSnd)

// The framing puts the version prefix in front of the header.
template <class P>
void CGetCustomListInfoRcv::Fields(P& p) {
    Header(p);
    p.List("lists", lists);
}
CMDDATA_DEFINE_FIELDS(CGetCustomListInfoRcv)
