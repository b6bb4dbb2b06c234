// Multi-monitor records and messages, and the data monitor's frame check.
#include "cmddata/monitor/multi_mon.h"

#include <type_traits>

#include "cmddata_internal/ecu_entry.h"
#include "cmddata_internal/procs.h"

namespace {

// Gives a record the version its base's constructor does not take.
class VersionPrefix : public CCmdCore {
public:
    explicit VersionPrefix(std::uint16_t version) : CCmdCore(version, 0) {}
};

}  // namespace

using cmddata::detail::EcuAndMember;

CCmdMultiMonMeasureInfo::CCmdMultiMonMeasureInfo(std::uint16_t version) {
    CCmdCore::operator=(VersionPrefix(version));
}

std::uint32_t CCmdMultiMonMeasureInfo::GetMeasureSecond() const {
    const std::uint32_t size = GetSampleSize();
    if (size == 0) return 0;
    const std::uint32_t samples = GetCapacity() / size;
    // Unsigned 32-bit arithmetic on both targets: the product wraps, it is never widened.
    static_assert(std::is_same_v<decltype(samples * samples), std::uint32_t>,
                  "the product must stay unsigned 32-bit");
    const std::uint32_t milliseconds = samples * GetSamplePeriod();
    return milliseconds / 1000;
}

template <class P>
void CCmdMultiMonData::Fields(P& p) {
    EcuAndMember(p, *this, ecuNumber, "ecu_name", ecuName);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiMonData)

template <class P>
void CCmdTrigger::Fields(P& p) {
    p.Prefix(*this);
    p.U16("item_id", itemId);
    p.String("name", name);
    p.U16("trigger_kind", triggerKind);
    p.U32("threshold", threshold);
    p.U8("comparison", comparison);
    p.U32("data_length", dataLength);
    p.U8("flags", flags);
}
CMDDATA_DEFINE_FIELDS(CCmdTrigger)

template <class P>
void CCmdFuelInfo::Fields(P& p) {
    p.Prefix(*this);
    p.Array("values", values);
    p.U16("fuel_kind", fuelKind);
    p.U8("unit", unit);
    p.U8("flags", flags);
}
CMDDATA_DEFINE_FIELDS(CCmdFuelInfo)

template <class P>
void CCmdMultiMonStartAnswer::Fields(P& p) {
    Header(p);
    p.U16("result", result);
    p.U32("recording_id", recordingId);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiMonStartAnswer)

template <class P>
void CCmdMultiMonCheckAnswer::Fields(P& p) {
    Header(p);
    p.U32("result", result);
    p.List("measures", measures);
}
CMDDATA_DEFINE_FIELDS(CCmdMultiMonCheckAnswer)

// Status word 4 travels twice: in the header and again as the first field.
template <class P>
void CCheckDatMonCommFrmSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4_again", status_[3]);
    p.List("item_ids", itemIds);
    p.U32("request_id", requestId);
}
CMDDATA_DEFINE_FIELDS(CCheckDatMonCommFrmSnd)

template <class P>
void CCheckDatMonCommFrmRcv::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
    p.U32("frame_count", frameCount);
    p.U32("frame_size", frameSize);
    p.Record("measure", measure);
}
CMDDATA_DEFINE_FIELDS(CCheckDatMonCommFrmRcv)

template <class P>
void CGetMultiMonEcuListRcv::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CGetMultiMonEcuListRcv)

template <class P>
void CStartMultiMonSnd::Fields(P& p) {
    Header(p);
    p.U16("mode", mode);
    p.List("ecus", ecus);
    if (p.Since(*this, 2)) p.List("trigger_item_ids", triggerItemIds);
}
CMDDATA_DEFINE_FIELDS(CStartMultiMonSnd)

template <class P>
void CGetTriggerItemListRcv::Fields(P& p) {
    Header(p);
    p.List("triggers", triggers);
}
CMDDATA_DEFINE_FIELDS(CGetTriggerItemListRcv)

template <class P>
void CCheckMultiMonSnd::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
    p.U32("mode", mode);
    if (p.Since(*this, 3)) p.List("trigger_item_ids", triggerItemIds);
}
CMDDATA_DEFINE_FIELDS(CCheckMultiMonSnd)

template <class P>
void CStartMultiMonDesModeSnd::Fields(P& p) {
    Header(p);
    p.U16("mode", mode);
    p.List("ecus", ecus);
    p.List("standard_values", standardValues);
    p.U16("trigger_mode", triggerMode);
    p.U32("trigger_value", triggerValue);
    p.List("trigger_item_ids", triggerItemIds);
}
CMDDATA_DEFINE_FIELDS(CStartMultiMonDesModeSnd)

template <class P>
void CStartMultiMonFuelSnd::Fields(P& p) {
    Header(p);
    p.U16("mode", mode);
    p.List("ecus", ecus);
    p.Record("fuel", fuel);
}
CMDDATA_DEFINE_FIELDS(CStartMultiMonFuelSnd)

template <class P>
void CCheckMultiMonFuelSnd::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
    p.U32("mode", mode);
    p.Record("fuel", fuel);
}
CMDDATA_DEFINE_FIELDS(CCheckMultiMonFuelSnd)
