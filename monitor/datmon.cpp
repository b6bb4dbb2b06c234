// Data-monitor messages.
#include "cmddata/monitor/datmon.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

template <class P>
void CGetDatMonListRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
    p.List("groups", groups);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonListRcv)

template <class P>
void CGetDatMonSignalInfoRcv::Fields(P& p) {
    Header(p);
    p.List("signals", signals);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonSignalInfoRcv)

// The header alone travels; the list is the object's own.
template <class P>
void CGetDatMonSignalInfoListSnd::Fields(P& p) {
    Header(p);
    p.Unsent("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonSignalInfoListSnd)

template <class P>
void CGetDatMonSignalInfoListRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
    p.List("groups", groups);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonSignalInfoListRcv)

template <class P>
void CGetDatMonSndFrameSnd::Fields(P& p) {
    Header(p);
    p.U32("request_id", requestId);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonSndFrameSnd)

template <class P>
void CGetDatMonValueSnd::Fields(P& p) {
    Header(p);
    p.U32("request_id", requestId);
    if (p.Since(*this, 2)) {
        p.U16("item_id", itemId);
        p.U32("sample_count", sampleCount);
    }
}
CMDDATA_DEFINE_FIELDS(CGetDatMonValueSnd)

template <class P>
void CGetDatMonValueRcv::Fields(P& p) {
    Header(p);
    p.List("values", values);
}
CMDDATA_DEFINE_FIELDS(CGetDatMonValueRcv)

template <class P>
void CGetStandardValueInfoRcv::Fields(P& p) {
    Header(p);
    p.List("values", values);
}
CMDDATA_DEFINE_FIELDS(CGetStandardValueInfoRcv)
