// The processors that run a field list: read, write and reset. Library-internal; the describe
// processor is public (describe.h) since the tools build on it.
#pragma once

#include <typeinfo>
#include <type_traits>

#include "cmddata/core/buffer.h"
#include "cmddata/core/describe.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "transfer.h"

/// Messages reset their header words in RemoveAll (the header overload lives with CCmdBase).
inline void CmdDataResetHeader(CCmdCore*) {}

namespace cmddata {

/// Reads each field from a reader, in list order, whatever failed before.
class ReadProc {
public:
    explicit ReadProc(CCmdReader& reader)
        : r_(reader), direct_(typeid(reader) == typeid(CCmdReader)) {}
    static constexpr bool Reading() { return true; }

    void Prefix(CCmdCore& self) {
        std::uint16_t sender = 0;  // stays 0 when the transfer moves nothing
        Raw<2>(&sender);
        Raw<2>(&detail::Access::Reserved(self));
        std::uint16_t& own = detail::Access::Version(self);
        own = own < sender ? 0 : sender;
    }
    void U8(const char*, std::uint8_t& v) { Raw<1>(&v); }
    /// One byte into the low byte of a wider member; its upper bytes stay.
    void U8Low(const char*, std::uint32_t& v) {
        std::uint8_t low = static_cast<std::uint8_t>(v);
        Raw<1>(&low);
        v = (v & ~std::uint32_t{0xFF}) | low;
    }
    void U16(const char*, std::uint16_t& v) { Raw<2>(&v); }
    void U32(const char*, std::uint32_t& v) { Raw<4>(&v); }
    void U32(const char*, std::int32_t& v) { Raw<4>(&v); }
    void U64(const char*, std::uint64_t& v) { Raw<8>(&v); }
    void Ident(const char*, std::uint32_t& v) { Raw<4>(&v); }
    void String(const char*, CCmdString& s) { s.CCmdString::Read(r_); }
    void Buffer(const char*, CCmdBuffer& b) { b.CCmdBuffer::Read(r_); }
    template <class T>
    void Record(const char*, T& o) {
        o.T::Visit(*this);
    }
    void Record(const char* n, CCmdString& s) { String(n, s); }
    void Record(const char* n, CCmdBuffer& b) { Buffer(n, b); }
    template <class U>
    void Record(const char* n, CCmdList<U>& l) {
        List(n, l);
    }
    template <class L>
    void List(const char*, L& l) {
        l.ReadWith(
            r_, [](std::uint32_t, bool) {}, [this](typename L::ItemType& item) { Record(nullptr, item); });
    }
    template <class T>
    void Unsent(const char*, T&) {}

private:
    template <std::uint32_t N>
    void Raw(void* v) {
        if (direct_)
            detail::ReadFixed<N>(r_, v);
        else
            r_.Read(v, static_cast<std::int32_t>(N));  // a stream class of the caller's own
    }
    CCmdReader& r_;
    bool direct_;
};

/// Writes each field to a writer, in list order.
class WriteProc {
public:
    explicit WriteProc(CCmdWriter& writer)
        : w_(writer), direct_(typeid(writer) == typeid(CCmdWriter)) {}
    static constexpr bool Reading() { return false; }

    void Prefix(CCmdCore& self) {
        Raw<2>(&detail::Access::Version(self));
        Raw<2>(&detail::Access::Reserved(self));
    }
    void U8(const char*, std::uint8_t& v) { Raw<1>(&v); }
    /// The low byte of a wider member alone.
    void U8Low(const char*, std::uint32_t& v) {
        const std::uint8_t low = static_cast<std::uint8_t>(v);
        Raw<1>(&low);
    }
    void U16(const char*, std::uint16_t& v) { Raw<2>(&v); }
    void U32(const char*, std::uint32_t& v) { Raw<4>(&v); }
    void U32(const char*, std::int32_t& v) { Raw<4>(&v); }
    void U64(const char*, std::uint64_t& v) { Raw<8>(&v); }
    void Ident(const char*, std::uint32_t& v) { Raw<4>(&v); }
    void String(const char*, CCmdString& s) { s.CCmdString::Write(w_); }
    void Buffer(const char*, CCmdBuffer& b) { b.CCmdBuffer::Write(w_); }
    template <class T>
    void Record(const char*, T& o) {
        o.T::Visit(*this);
    }
    void Record(const char* n, CCmdString& s) { String(n, s); }
    void Record(const char* n, CCmdBuffer& b) { Buffer(n, b); }
    template <class U>
    void Record(const char* n, CCmdList<U>& l) {
        List(n, l);
    }
    template <class L>
    void List(const char*, L& l) {
        l.WriteWith(w_, [this](typename L::ItemType& item) { Record(nullptr, item); });
    }
    template <class T>
    void Unsent(const char*, T&) {}

private:
    template <std::uint32_t N>
    void Raw(const void* v) {
        if (direct_)
            detail::WriteFixed<N>(w_, v);
        else
            w_.Write(v, static_cast<std::int32_t>(N));
    }
    CCmdWriter& w_;
    bool direct_;
};

/// Empties every field: scalars to 0, texts, buffers, lists and records through RemoveAll. The
/// version prefix and the command identifier stay.
class ResetProc {
public:
    static constexpr bool Reading() { return false; }
    void Prefix(CCmdCore&) {}
    template <class V>
    void U8(const char*, V& v) { v = 0; }
    void U8Low(const char*, std::uint32_t& v) { v = 0; }
    template <class V>
    void U16(const char*, V& v) { v = 0; }
    template <class V>
    void U32(const char*, V& v) { v = 0; }
    template <class V>
    void U64(const char*, V& v) { v = 0; }
    void Ident(const char*, std::uint32_t&) {}
    void String(const char*, CCmdString& s) { s.CCmdString::RemoveAll(); }
    void Buffer(const char*, CCmdBuffer& b) { b.CCmdBuffer::RemoveAll(); }
    template <class T>
    void Record(const char*, T& o) {
        o.T::RemoveAll();
    }
    template <class L>
    void List(const char*, L& l) {
        l.RemoveAll();
    }
    template <class T>
    void Unsent(const char*, T& v) {
        if constexpr (std::is_arithmetic_v<T>)
            v = 0;
        else
            v.RemoveAll();
    }
};

}  // namespace cmddata

/// Defines Read, Write, RemoveAll, Describe and the processor entry points of Class from its
/// one field list. Put it after the definition of Class::Fields.
#define CMDDATA_DEFINE_FIELDS(Class)                                                      \
    void Class::Read(CCmdReader& reader) {                                                \
        cmddata::ReadProc p(reader);                                                      \
        Fields(p);                                                                        \
    }                                                                                     \
    void Class::Write(CCmdWriter& writer) {                                               \
        cmddata::WriteProc p(writer);                                                     \
        Fields(p);                                                                        \
    }                                                                                     \
    void Class::RemoveAll() {                                                             \
        CmdDataResetHeader(this);                                                         \
        cmddata::ResetProc p;                                                             \
        Fields(p);                                                                        \
    }                                                                                     \
    void Class::Describe(cmddata::DescribeProc& p) { Fields(p); }                         \
    void Class::Visit(cmddata::ReadProc& p) { Fields(p); }                                \
    void Class::Visit(cmddata::WriteProc& p) { Fields(p); }                               \
    void Class::Visit(cmddata::ResetProc& p) { Fields(p); }
