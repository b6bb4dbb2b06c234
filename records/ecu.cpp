// ECU records that several families use.
#include "cmddata/records/ecu.h"

#include "cmddata_internal/procs.h"

template <class P>
void CCmdEcuInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("ecu_id", ecuId);
    p.Unsent("ecu_id_partner", ecuIdPartner);
    p.String("name", name);
    p.U8("state", state, 0xFF);  // the one field whose empty value is not 0
    p.List("code_counts", codeCounts);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
    p.U16("third_value", thirdValue);
    p.U8("fourth_value", fourthValue);
    if (p.Since(*this, 2)) {
        p.Record("functions", functions);
        p.List("code_lists", codeLists);
        p.List("frz_frm_lists", frzFrmLists);
        p.List("detail_id_lists", detailIdLists);
        p.List("detail_lists", detailLists);
        p.List("multi_frz_frm_lists", multiFrzFrmLists);
        p.List("detail_frz_frm_lists", detailFrzFrmLists);
    }
}
CMDDATA_DEFINE_FIELDS(CCmdEcuInfo)
std::int32_t CCmdEcuInfo::GetDiagCodeCount(std::uint16_t kind) const {
    std::int32_t found = -1;
    codeCounts.ForEach([&found, kind](const CCmdDiagCodeCount& entry) {
        if (found < 0 && entry.count == kind) found = entry.flag;  // the first match wins
    });
    return found;
}

template <class P>
void CCmdConnectEcu::Fields(P& p) {
    p.Prefix(*this);
    p.U32("ecu_id", ecuId);
    p.String("name", name);
    p.U16("first_value", firstValue);
    p.U8("flag", flag);
    p.U16("second_value", secondValue);
    p.U16("third_value", thirdValue);
}
CMDDATA_DEFINE_FIELDS(CCmdConnectEcu)

template <class P>
void CCmdEcuSpecificInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("ecu_id", ecuId);
    p.U16("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdEcuSpecificInfo)
