#include "cmddata/command/layouts.h"

#include "cmddata_internal/procs.h"

CMDDATA_DEFINE_NUMBER_FIELDS(CCmdHeaderOnly)

template <class P>
void CCmdWordIdListMessage::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CCmdWordIdListMessage)

template <class P>
void CCmdItemValueMessage::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
    p.U32("value", value);
    p.U32("qualifier", qualifier);
}
CMDDATA_DEFINE_FIELDS(CCmdItemValueMessage)
