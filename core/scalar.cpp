// Scalar wrappers: a bare number each, no version prefix (their field lists are in the header).
#include "cmddata/core/scalar.h"

#include "cmddata_internal/procs.h"

CMDDATA_DEFINE_FIELDS(CCmdByteData)
CMDDATA_DEFINE_FIELDS(CCmdWordId)

CMDDATA_DEFINE_FIELDS(CCmdDwordId)

// Only the member list's own form travels.
template <class P>
void CCmdByteDataList::Fields(P& p) {
    p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdByteDataList)
