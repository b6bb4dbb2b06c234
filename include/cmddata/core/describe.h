// Field-by-field views of any object for tools, and the library's own jobs over field lists:
// the size measure, the generic fill and the probes. Each is a field processor (processor.h).
#pragma once

#include <cstdint>

#include "cmddata/core/core.h"
#include "cmddata/core/processor.h"

class CCmdString;

namespace cmddata {

/// Where a field stands: its name, wire type, byte offset from where the walk started, and size
/// in bytes on the wire (for records, lists and arrays, known at their end). Offsets and sizes
/// are stream positions before and after the field.
struct FieldInfo {
    const char* name;  // null for the items of a list or an array
    WireType type;
    std::uint32_t offset;
    std::uint32_t size;
    std::int32_t index;  // position within the enclosing list or array, or -1
};

/// Receives the fields of a walk. Every callback has an empty default.
class CMDDATA_API FieldVisitor {
public:
    virtual ~FieldVisitor();
    virtual void Scalar(const FieldInfo& field, std::uint64_t value);
    virtual void Text(const FieldInfo& field, const CCmdString& text);
    virtual void Bytes(const FieldInfo& field, const unsigned char* data, std::uint32_t size);
    virtual void BeginRecord(const FieldInfo& field, const char* typeName);
    virtual void EndRecord(const FieldInfo& field);
    /// A list (itemType its item class) or an array (itemType null).
    virtual void BeginList(const FieldInfo& field, std::uint32_t count, const char* itemType);
    virtual void EndList(const FieldInfo& field);
    /// A decode stopped at this field: the stream's result code and a short reason.
    virtual void Failure(const FieldInfo& field, Result code, const char* why);
};

/// Bytes that the object's Write would put into a region (its Write, run over a stream that
/// counts instead of copying).
CMDDATA_API std::uint32_t WireSize(CCmdCore& object);
/// Puts deterministic content in every field that travels at the object's version: distinct
/// non-zero scalars, short texts, three-byte buffers, two items in every list, nested records
/// filled in turn. The version prefix, the identifier and the fields that never travel stay. The
/// same seed on an equal fresh object gives the same content.
CMDDATA_API void Fill(CCmdCore& object, std::uint32_t seed = 1);
/// The highest version threshold the object's field list tests (0 when it tests none): the
/// versions up to it each choose a different layout.
CMDDATA_API std::uint16_t HighestVersionTested(CCmdCore& object);
/// True when the object's field list (or that of a record or list item in it) reads some fields
/// in another order than it writes them, so that bytes read and written back differ. The object
/// is used as scratch: an item is added to each empty list.
CMDDATA_API bool CrossesFields(CCmdCore& scratch);
/// Reports every field of the object, as it would be written.
CMDDATA_API void Describe(CCmdCore& object, FieldVisitor& visitor);
/// Reads the object from the reader while reporting each field; stops at the first failed
/// transfer. Returns the first failure's result code (0 when the whole object decoded).
CMDDATA_API Result DecodeAndDescribe(CCmdCore& object, CCmdReader& reader, FieldVisitor& visitor);
/// Reads the object taking every field where its Write puts it, so that writing it again gives
/// the very bytes read: the sender's object. (Read takes a few fields of the classes that cross
/// them in another order; for every other class the two agree.) Stops at the first failed
/// transfer; returns its result code, 0 when the whole object came in.
CMDDATA_API Result ReadAsWritten(CCmdCore& object, CCmdReader& reader);
/// The smallest number of bytes any object of this class takes on the wire: the scratch object
/// emptied, with every version prefix taken as 0, then measured. At least 1.
CMDDATA_API std::uint32_t MinimalWireSize(CCmdCore& scratch);

}  // namespace cmddata
