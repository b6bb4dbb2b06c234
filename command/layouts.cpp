#include "cmddata/command/layouts.h"

#include "../core/procs.h"

template <class P>
void CCmdHeaderOnly::Fields(P& p) {
    Header(p);
}
CMDDATA_DEFINE_FIELDS(CCmdHeaderOnly)
