// Function lists and utilities: records and messages.
#include "cmddata/monitor/function.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

namespace {}  // namespace

// --- Records ---

template <class P>
void CCmdFunction::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.Array("words", words);
    p.Array("values", values);
    if (p.Since(*this, 2)) p.U16("kind", kind);
    if (p.Since(*this, 3)) p.Array("links", links);
    if (p.Since(*this, 4)) p.Array("options", options);
    if (p.Since(*this, 5)) p.U32("extension", extension);
    if (p.Since(*this, 6)) {
        // The same member again: a reader keeps the second copy.
        p.U32("extension_again", extension);
        p.Array("settings", settings);
        p.U32("flags", flags);
    }
}
CMDDATA_DEFINE_FIELDS(CCmdFunction)

template <class P>
void CCmdIdCodeFunc::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U32("attribute", attribute);  // declared after the function id, sent before it
    p.U16("function_id", functionId);
    p.U32("option", option);
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
CMDDATA_DEFINE_FIELDS(CCmdIdCodeFunc)

template <class P>
void CCmdIdCodeFunction::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.Array("ids", ids);
    p.Array("values", values);
    p.U16("kind", kind);
    p.Array("options", options);
}
CMDDATA_DEFINE_FIELDS(CCmdIdCodeFunction)

template <class P>
void CCmdIdCodePart::Fields(P& p) {
    p.Prefix(*this);
    p.List("functions", functions);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdIdCodePart)

template <class P>
void CCmdShortCut::Fields(P& p) {
    p.Prefix(*this);
    p.U16("short_cut_id", shortCutId);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdShortCut)

template <class P>
void CCmdDiagMode::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U16("mode_id", modeId);
}
CMDDATA_DEFINE_FIELDS(CCmdDiagMode)

template <class P>
void CCmdStringName::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.String("second_name", secondName);
}
CMDDATA_DEFINE_FIELDS(CCmdStringName)

template <class P>
void CCmdDetailData::Fields(P& p) {
    p.Prefix(*this);
    p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdDetailData)

template <class P>
void CCmdIdSection::Fields(P& p) {
    p.Prefix(*this);
    p.List("functions", functions);
    p.String("name", name);
    p.U16("section_id", sectionId);
    p.U16("kind", kind);
}
CMDDATA_DEFINE_FIELDS(CCmdIdSection)

// --- Layouts ---

// --- Messages ---

template <class P>
void CGetEcuFuncListRcv::Fields(P& p) {
    Header(p);
    p.List("functions", functions);
}
CMDDATA_DEFINE_FIELDS(CGetEcuFuncListRcv)

template <class P>
void CGetIdCodeFuncListRcv::Fields(P& p) {
    Header(p);
    p.List("sections", sections);
}
CMDDATA_DEFINE_FIELDS(CGetIdCodeFuncListRcv)

template <class P>
void CGetIdCodeFuncListNoCarInfoRcv::Fields(P& p) {
    Header(p);
    p.List("parts", parts);
    p.String("text", text);
}
CMDDATA_DEFINE_FIELDS(CGetIdCodeFuncListNoCarInfoRcv)

template <class P>
void CGetWorkSupportListRcv::Fields(P& p) {
    Header(p);
    p.List("links", links);
    p.U16("second_word", secondWord);  // the two words travel in reverse order
    p.U16("first_word", firstWord);
}
CMDDATA_DEFINE_FIELDS(CGetWorkSupportListRcv)

template <class P>
void CGetWorkSupportSectionListRcv::Fields(P& p) {
    Header(p);
    p.U16("section_count", sectionCount);
    p.List("sections", sections);
}
CMDDATA_DEFINE_FIELDS(CGetWorkSupportSectionListRcv)

template <class P>
void CGetUtilFuncListSnd::Fields(P& p) {
    Header(p);
    p.U8("selector", selector);
    if (p.Since(*this, 2)) p.U8("second_selector", secondSelector);
}
CMDDATA_DEFINE_FIELDS(CGetUtilFuncListSnd)

template <class P>
void CGetUtilFuncListRcv::Fields(P& p) {
    Header(p);
    p.List("functions", functions);
}
CMDDATA_DEFINE_FIELDS(CGetUtilFuncListRcv)

template <class P>
void CGetShortCutListRcv::Fields(P& p) {
    Header(p);
    p.List("short_cuts", shortCuts);
}
CMDDATA_DEFINE_FIELDS(CGetShortCutListRcv)

template <class P>
void CGetDiagModeListRcv::Fields(P& p) {
    Header(p);
    p.List("modes", modes);
}
CMDDATA_DEFINE_FIELDS(CGetDiagModeListRcv)

template <class P>
void CChangeDiagModeSnd::Fields(P& p) {
    Header(p);
    p.U8("selector", selector);
    p.U16("mode_id", modeId);
    p.U8("option", option);
}
CMDDATA_DEFINE_FIELDS(CChangeDiagModeSnd)

template <class P>
void CWriteAfterSalesZoneSnd::Fields(P& p) {
    Header(p);
    p.List("data", data);
    p.U32("address", address);
    p.U32("option", option);
}
CMDDATA_DEFINE_FIELDS(CWriteAfterSalesZoneSnd)

template <class P>
void CWriteAfterSalesZoneRcv::Fields(P& p) {
    Header(p);
    p.U32("result", result);
    p.U8("state", state);
}
CMDDATA_DEFINE_FIELDS(CWriteAfterSalesZoneRcv)

template <class P>
void CGetSimpleOperationUtilityInfoRcv::Fields(P& p) {
    Header(p);
    p.U32("result", result);
    p.U16("kind", kind);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(CGetSimpleOperationUtilityInfoRcv)

template <class P>
void CGetSimpleOperationUtilityResultSnd::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
    p.U8("step", step);
}
CMDDATA_DEFINE_FIELDS(CGetSimpleOperationUtilityResultSnd)

template <class P>
void CGetSimpleOperationUtilityResultRcv::Fields(P& p) {
    Header(p);
    p.U32("result", result);
    p.List("data", data);
    p.U32("value", value);
    p.String("text", text);
    p.U32("state", state);
}
CMDDATA_DEFINE_FIELDS(CGetSimpleOperationUtilityResultRcv)

template <class P>
void CCheckUtilFuncRcv::Fields(P& p) {
    Header(p);
    p.U8("available", available);
    p.List("functions", functions);
}
CMDDATA_DEFINE_FIELDS(CCheckUtilFuncRcv)
