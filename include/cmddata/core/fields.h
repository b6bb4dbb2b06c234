// The one-field-list idiom. A class declares CMDDATA_FIELDS(Class) and defines, in its source,
//
//     template <class P> void Class::Fields(P& p) {
//         p.Prefix(*this);                 // u16 version + u16 reserved word
//         p.U16("item_id", itemId);
//         p.String("text", text);
//         if (GetVersion() >= 2) p.U32("flags", flags);
//     }
//     CMDDATA_DEFINE_FIELDS(Class)
//
// Read, Write, RemoveAll and Describe are then processors over that list. A field whose order
// differs between reading and writing is one local branch: if (p.Reading()) ... else ...
#pragma once

#include "cmddata/core/core.h"

namespace cmddata {
class ReadProc;
class WriteProc;
class ResetProc;
class DescribeProc;
}  // namespace cmddata

/// Declares the field list of Class and the operations that come from it.
#define CMDDATA_FIELDS(Class)                            \
public:                                                  \
    void Read(CCmdReader& reader) override;              \
    void Write(CCmdWriter& writer) override;             \
    void RemoveAll() override;                           \
    void Describe(cmddata::DescribeProc& proc) override; \
    void Visit(cmddata::ReadProc& proc);                 \
    void Visit(cmddata::WriteProc& proc);                \
    void Visit(cmddata::ResetProc& proc);                \
    static const char* TypeName() { return #Class; }     \
                                                         \
private:                                                 \
    friend class cmddata::ReadProc;                      \
    friend class cmddata::WriteProc;                     \
    friend class cmddata::ResetProc;                     \
    friend class cmddata::DescribeProc;                  \
    template <class P>                                   \
    void Fields(P& p);                                   \
                                                         \
public:

/// A class that shares its base's layout and code but is a type of its own (a list of it is a
/// different list type; the tools show its own name).
#define CMDDATA_SAME_LAYOUT(Class) \
public:                            \
    static const char* TypeName() { return #Class; }
