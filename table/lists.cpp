// Whole-list transfers of the library's item classes (declared in cmddata/core/list.h): the
// list's own algorithm run by the stream processors, so that each item moves through its field
// list directly, with no virtual call per item.
#include "cmddata/cmddata.h"
#include "cmddata_internal/procs.h"

#define CMDDATA_LIST_CODEC(Class)                                            \
    void CmdDataReadList(CCmdReader& reader, CCmdList<Class>& list) {        \
        cmddata::RunStream(reader, [&](auto& p) { p.List(nullptr, list); }); \
    }                                                                        \
    void CmdDataWriteList(CCmdWriter& writer, CCmdList<Class>& list) {       \
        cmddata::RunStream(writer, [&](auto& p) { p.List(nullptr, list); }); \
    }

#define CMDDATA_RECORD(Class) CMDDATA_LIST_CODEC(Class)
#include "cmddata/classes.def"
CMDDATA_LIST_CODEC(CCmdString)
CMDDATA_LIST_CODEC(CCmdBuffer)
