// Bare numbers shaped as objects, so they can be list items: no version prefix on the wire.
// Their default constructors are written out rather than defaulted: a list makes its items with
// T(), which fills an object of a defaulted constructor with zeros first and then sets every
// member again, several stores per item where the list's loop is bound by its stores.
#pragma once

#include <cstdint>

#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"

/// One unsigned byte (1 byte on the wire).
class CMDDATA_API CCmdByteData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdByteData)
    CCmdByteData() {}  // written out: see the note at the top
    std::uint8_t operator=(std::uint8_t value) { return value_ = value; }
    operator std::uint8_t() const { return value_; }

private:
    std::uint8_t value_ = 0;
};

/// One unsigned 16-bit identifier (2 bytes on the wire).
class CMDDATA_API CCmdWordId : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdWordId)
    CCmdWordId() {}  // written out: see the note at the top
    std::uint16_t operator=(std::uint16_t value) { return value_ = value; }
    operator std::uint16_t() const { return value_; }

private:
    std::uint16_t value_ = 0;
};

/// One unsigned 32-bit identifier (4 bytes on the wire).
class CMDDATA_API CCmdDwordId : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDwordId)
    CCmdDwordId() {}  // written out: see the note at the top
    std::uint32_t operator=(std::uint32_t value) { return value_ = value; }
    operator std::uint32_t() const { return value_; }

private:
    std::uint32_t value_ = 0;
};

/// One unsigned 32-bit data value (4 bytes on the wire); a type apart from identifiers.
class CMDDATA_API CCmdDwordData : public CCmdDwordId {
public:
    CMDDATA_SAME_LAYOUT(CCmdDwordData)
    CCmdDwordData() {}  // written out: see the note at the top
    std::uint32_t operator=(std::uint32_t value) { return CCmdDwordId::operator=(value); }
};

template <class P>
inline void CCmdByteData::Fields(P& p) {
    p.U8("value", value_);
}
template <class P>
inline void CCmdWordId::Fields(P& p) {
    p.U16("value", value_);
}
template <class P>
inline void CCmdDwordId::Fields(P& p) {
    p.U32("value", value_);
}
namespace cmddata {
namespace detail {
template <>
struct FieldsInHeader<CCmdByteData> : std::true_type {};
template <>
struct FieldsInHeader<CCmdWordId> : std::true_type {};
template <>
struct FieldsInHeader<CCmdDwordId> : std::true_type {};
template <>
struct FieldsInHeader<CCmdDwordData> : std::true_type {};
}  // namespace detail
}  // namespace cmddata

/// A list of bytes as one object; its own version never travels, only the list's form does.
class CMDDATA_API CCmdByteDataList : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdByteDataList)
    CCmdByteDataList() = default;
    CCmdList<CCmdByteData> bytes;
};
