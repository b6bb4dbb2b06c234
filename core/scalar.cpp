// Scalar wrappers: a bare number each, no version prefix.
#include "cmddata/core/scalar.h"

#include "cmddata_internal/procs.h"

template <class P>
void CCmdByteData::Fields(P& p) {
    p.U8("value", value_);
}
CMDDATA_DEFINE_FIELDS(CCmdByteData)

template <class P>
void CCmdWordId::Fields(P& p) {
    p.U16("value", value_);
}
CMDDATA_DEFINE_FIELDS(CCmdWordId)

template <class P>
void CCmdDwordId::Fields(P& p) {
    p.U32("value", value_);
}
CMDDATA_DEFINE_FIELDS(CCmdDwordId)

// Only the member list's own form travels.
template <class P>
void CCmdByteDataList::Fields(P& p) {
    p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdByteDataList)
