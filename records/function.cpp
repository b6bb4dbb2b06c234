// Function-list records and request layouts that several families use.
#include "cmddata/records/function.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

template <class P>
void CCmdFuncDetail::Fields(P& p) {
    p.Prefix(*this);
    p.U16("detail_id", detailId);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdFuncDetail)

template <class P>
void CCmdFunc::Fields(P& p) {
    p.Prefix(*this);
    p.U16("function_id", functionId);
    p.U32("attribute", attribute);  // declared after the name, sent before it
    p.String("name", name);
    p.List("details", details);
}
CMDDATA_DEFINE_FIELDS(CCmdFunc)

template <class P>
void CCmdEcuFuncListInfo::Fields(P& p) {
    InfoHeader(p);
    p.List("functions", functions);
}
CMDDATA_DEFINE_FIELDS(CCmdEcuFuncListInfo)

template <class P>
void CCmdHelpInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U8("kind", kind);
    p.String("text", text);
}
CMDDATA_DEFINE_FIELDS(CCmdHelpInfo)

template <class P>
void CCmdOptionInfo::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U16("option_id", optionId);
}
CMDDATA_DEFINE_FIELDS(CCmdOptionInfo)

template <class P>
void CCmdItemIdMessage::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
}
CMDDATA_DEFINE_FIELDS(CCmdItemIdMessage)

template <class P>
void CCmdSelectorMessage::Fields(P& p) {
    Header(p);
    p.U8("selector", selector);
}
CMDDATA_DEFINE_FIELDS(CCmdSelectorMessage)
