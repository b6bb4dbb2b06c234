// Multi-monitor records and trigger layouts that several families use.
#include "cmddata/records/multi_mon.h"

#include <type_traits>

#include "cmddata_internal/ecu_entry.h"
#include "cmddata_internal/procs.h"

using cmddata::detail::EcuAndMember;

template <class P>
void CCmdCheckMultiMon::Fields(P& p) {
    EcuAndMember(p, *this, ecuNumber, "item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CCmdCheckMultiMon)

// The version prefix alone of the header travels.
template <class P>
void CCmdTriggerInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("trigger_mode", triggerMode);
    p.U16("pre_trigger", preTrigger);
    p.U16("post_trigger", postTrigger);
}
CMDDATA_DEFINE_FIELDS(CCmdTriggerInfo)

template <class P>
void CCmdParamSignalInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.U16("comparison", comparison);
    p.U32("value", value);
    p.U32("lower_value", lowerValue);
    p.U32("upper_value", upperValue);
}
CMDDATA_DEFINE_FIELDS(CCmdParamSignalInfo)

// The version prefix alone of the header travels.
template <class P>
void CCmdTriggerParam::Fields(P& p) {
    p.Prefix(*this);
    p.U16("trigger_mode", triggerMode);
    p.U16("combination", combination);
    p.List("signals", signals);
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CCmdTriggerParam)
