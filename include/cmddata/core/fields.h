// The one-field-list idiom. A class declares CMDDATA_FIELDS(Class) among its public members and
// defines, in its family's source,
//
//     template <class P> void Class::Fields(P& p) {
//         p.Prefix(*this);                 // u16 version + u16 reserved word
//         p.U16("item_id", itemId);
//         p.String("text", text);
//         if (p.Since(*this, 2)) p.U32("flags", flags);
//     }
//     CMDDATA_DEFINE_FIELDS(Class)
//
// Read, Write and RemoveAll are processors over that list, and so is every other job (the
// tools' walks, the fill, the probes), run through Visit (processor.h). Since() is the one
// version test: true while the object is being emptied, so that RemoveAll resets every field
// whatever the version. A field whose order differs
// between reading and writing is one local branch: if (p.Reading()) ... else ...
//
// Every class that defines its field list so is named in its family's class list (classes.def):
// CMDDATA_DEFINE_FIELDS calls a function that only the class table defines, for the classes of
// the lists, so the library does not link with a class that is not.
#pragma once

#include <type_traits>

#include "cmddata/core/core.h"
#include "cmddata/core/transfer.h"

namespace cmddata {
namespace detail {
/// True for a class whose field list is defined in its header: the stream processors run it in
/// place rather than through the class's out-of-line entry, which is what a list of bare numbers
/// needs to move at the speed of its bytes.
template <class T>
struct FieldsInHeader : std::false_type {};
}  // namespace detail
class ReadProc;
class WriteProc;
class ReadViaProc;
class WriteViaProc;
class ResetProc;
class FieldProcessor;
namespace detail {
class SnapProc;
class RenewProc;
class SettleProc;
}  // namespace detail
}  // namespace cmddata

/// Names the class.
#define CMDDATA_CLASS_NAME(Class) \
    static const char* TypeName() { return #Class; }

/// Declares the field list of Class and the operations that come from it. It changes no access:
/// put it among the public members. The processors reach nested records through the friends,
/// which are the library's own and not exported.
#define CMDDATA_FIELDS(Class)                \
    void Read(CCmdReader& reader) override;  \
    void Write(CCmdWriter& writer) override; \
    CMDDATA_FIELD_JOBS(Class)

/// CMDDATA_FIELDS for a message whose field list holds numbers only and is defined in its header,
/// after the class: Read and Write run it in the caller's own code (RunInline, transfer.h), so
/// that a small message costs no call. ReadOther and WriteOther are the out-of-line entries for
/// every other stream; the library defines them with CMDDATA_DEFINE_NUMBER_FIELDS.
#define CMDDATA_NUMBER_FIELDS(Class)                                                       \
    void Read(CCmdReader& reader) override { cmddata::detail::RunInline(reader, *this); }  \
    void Write(CCmdWriter& writer) override { cmddata::detail::RunInline(writer, *this); } \
    void ReadOther(CCmdReader& reader);                                                    \
    void WriteOther(CCmdWriter& writer);                                                   \
    CMDDATA_FIELD_JOBS(Class)

/// What both declare besides Read and Write.
#define CMDDATA_FIELD_JOBS(Class)                                        \
    void RemoveAll() override;                                           \
    void Visit(cmddata::FieldProcessor& p) override;                     \
    template <class P>                                                   \
    CMDDATA_LOCAL void Fields(P& p);                                     \
    friend void CmdDataFields(cmddata::ReadProc& p, Class& o);           \
    friend void CmdDataFields(cmddata::WriteProc& p, Class& o);          \
    friend void CmdDataFields(cmddata::ReadViaProc& p, Class& o);        \
    friend void CmdDataFields(cmddata::WriteViaProc& p, Class& o);       \
    friend void CmdDataFields(cmddata::detail::SnapProc& p, Class& o);   \
    friend void CmdDataFields(cmddata::detail::RenewProc& p, Class& o);  \
    friend void CmdDataFields(cmddata::detail::SettleProc& p, Class& o); \
    CMDDATA_CLASS_NAME(Class)

/// A class that shares its base's layout and code but is a type of its own (a list of it is a
/// different list type; the tools show its own name).
#define CMDDATA_SAME_LAYOUT(Class) CMDDATA_CLASS_NAME(Class)
