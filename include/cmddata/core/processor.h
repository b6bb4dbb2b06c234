// The field-list vocabulary and the processors that run it.
//
// A class declares its wire fields once, in wire order (fields.h):
//
//     template <class P> void CCmdThing::Fields(P& p) {
//         p.Prefix(*this);
//         p.U16("item_id", itemId);
//         p.Array("values", values);             // a fixed array: its count and indexes derived
//         if (p.Since(*this, 2)) p.String("text", text);
//     }
//
// FieldOps is the vocabulary every processor shares: it maps the typed calls of a list onto a
// processor's few primitives (Fixed, Prefix, String, Buffer, List, Nested, Image, Dropped,
// Unsent). The library's stream processors (read, write, empty) are static and inlined; every
// other job is a FieldProcessor, one small class over one virtual interface, which each class
// runs through its Visit. A new job (a JSON codec, a schema) is one more FieldProcessor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "cmddata/core/core.h"

class CCmdString;
class CCmdBuffer;
template <class T>
class CCmdList;

namespace cmddata {

/// How a field travels.
enum class WireType : std::uint8_t {
    kU8,
    kU16,
    kU32,
    kU64,
    kIdent,   // the command identifier: a u32 naming a command of the catalogue
    kString,  // CCmdString: prefix, u16 byte count, bytes
    kBuffer,  // CCmdBuffer: prefix, u32 byte count, bytes
    kList,    // CCmdList<T>: prefix, u32 count, items
    kArray,   // a fixed number of items, back to back, nothing before them
    kRecord,  // a nested object through its own field list
    kImage,   // a fixed-size block moved as it lies in memory
    kUnsent,  // a member that never travels (shown for completeness, size 0)
};

/// Name of a wire type ("u16", "string", ...).
CMDDATA_API const char* WireTypeName(WireType type);

namespace detail {
/// The wire type of a scalar member of this width.
template <class V>
constexpr WireType ScalarType() {
    static_assert(std::is_integral_v<V> && sizeof(V) != 0 && (sizeof(V) & (sizeof(V) - 1)) == 0,
                  "a scalar field is an integer of 1, 2, 4 or 8 bytes");
    return sizeof(V) == 1   ? WireType::kU8
           : sizeof(V) == 2 ? WireType::kU16
           : sizeof(V) == 4 ? WireType::kU32
                            : WireType::kU64;
}
template <class T>
struct Same {
    using type = T;
};
template <class T>
struct IsList : std::false_type {};
template <class U>
struct IsList<CCmdList<U>> : std::true_type {};
}  // namespace detail

/// The vocabulary of a field list, shared by every processor D: each call names a field and
/// says its wire width; D supplies the primitives.
template <class D>
class FieldOps {
public:
    /// A byte; empty is what emptying the object gives it (0 for every field but a few).
    void U8(const char* n, std::uint8_t& v, std::uint8_t empty = 0) {
        Fixed<WireType::kU8>(n, v, empty);
    }
    void U16(const char* n, std::uint16_t& v) { Fixed<WireType::kU16>(n, v, 0); }
    void U32(const char* n, std::uint32_t& v) { Fixed<WireType::kU32>(n, v, 0); }
    void U32(const char* n, std::int32_t& v) { Fixed<WireType::kU32>(n, v, 0); }
    void U64(const char* n, std::uint64_t& v) { Fixed<WireType::kU64>(n, v, 0); }
    /// The command identifier of a header: a u32 that emptying and filling leave alone.
    void Ident(const char* n, std::uint32_t& v) { Fixed<WireType::kIdent>(n, v, 0); }
    /// One byte on the wire, held in the low byte of a wider member (its upper bytes stay).
    void U8Low(const char* n, std::uint32_t& v) {
        std::uint8_t low = static_cast<std::uint8_t>(v);
        U8(n, low);
        v = (v & ~std::uint32_t{0xFF}) | low;
    }

    /// A nested object through its own field list; texts, buffers and lists as themselves.
    template <class T>
    void Record(const char* n, T& o) {
        if constexpr (std::is_same_v<T, CCmdString>)
            self().String(n, o);
        else if constexpr (std::is_same_v<T, CCmdBuffer>)
            self().Buffer(n, o);
        else if constexpr (detail::IsList<T>::value)
            self().List(n, o);
        else
            self().Nested(n, o);
    }

    /// A fixed array of scalars or records: its items back to back, named name[0], name[1], ...
    template <class T, std::size_t N>
    void Array(const char* n, T (&items)[N]) {
        self().BeginArray(n, static_cast<std::uint32_t>(N));
        for (std::size_t i = 0; i < N; ++i) {
            self().SetIndex(static_cast<std::int32_t>(i));
            if constexpr (std::is_integral_v<T>)
                Fixed<detail::ScalarType<T>()>(nullptr, items[i], 0);
            else
                Record(nullptr, items[i]);
        }
        self().EndArray(n);
    }

    // What a processor that needs no reporting does with the frame of an array.
    void BeginArray(const char*, std::uint32_t) {}
    void EndArray(const char*) {}
    void SetIndex(std::int32_t) {}

private:
    template <WireType W, class V>
    void Fixed(const char* n, V& v, typename detail::Same<V>::type empty) {
        self().template Scalar<W>(n, v, empty);
    }
    D& self() { return static_cast<D&>(*this); }
};

class FieldProcessor;

/// A nested object as a processor sees it: the object, its class name and its field list.
struct RecordRef {
    CCmdCore& object;
    const char* type;
    void (*fields)(CCmdCore& object, FieldProcessor& p);  // runs the object's own field list
    void Visit(FieldProcessor& p) const { fields(object, p); }
};

/// Receives the items of a list, head to tail.
class CMDDATA_API ItemSink {
public:
    virtual ~ItemSink();
    /// item runs the item as a field (a record, a text, a buffer or a nested list).
    virtual void Item(std::uint32_t index, const RecordRef& item) = 0;
    /// Reading only: the count that came in, and whether the bytes left can hold it.
    virtual void Count(std::uint32_t count, bool fits);
};

/// A list as a processor sees it, whatever its item class.
class CMDDATA_API ListAccess {
public:
    virtual ~ListAccess();
    virtual const char* ItemType() const = 0;
    virtual std::uint32_t Count() const = 0;
    /// The list itself: its version prefix.
    virtual CCmdCore& Self() = 0;
    /// Heap bytes an item takes, about: what appending one costs.
    virtual std::uint32_t ItemBytes() const = 0;
    /// Empties the list.
    virtual void Clear() = 0;
    /// Appends n default items; returns how many memory allowed.
    virtual std::uint32_t Append(std::uint32_t n) = 0;
    virtual void ForEach(ItemSink& sink) = 0;
    /// The list's own reading (prefix, count, count check, items) with items read by the sink.
    virtual void Read(CCmdReader& reader, ItemSink& sink) = 0;
    /// The list's own writing (prefix, count, items) with items written by the sink.
    virtual void Write(CCmdWriter& writer, ItemSink& sink) = 0;
};

/// A block moved as an object's fixed in-memory image, as a processor sees it.
class CMDDATA_API ImageAccess {
public:
    virtual ~ImageAccess();
    virtual const char* Type() const = 0;
    virtual std::uint32_t Size() const = 0;
    /// The block the object gives (what Write sends).
    virtual void Pack(unsigned char* block) = 0;
    /// Reads the block and takes the object's members from what came in.
    virtual void Read(CCmdReader& reader) = 0;
    virtual void Write(CCmdWriter& writer) = 0;
    /// Gives every scalar the block carries a value from next(context).
    virtual void Fill(std::uint64_t (*next)(void* context), void* context) = 0;
};

/// A job over any object's field list, run through the object's Visit. Every primitive has a
/// default that a job overrides where it has something to do: scalars and texts do nothing,
/// nested records, list items and arrays are walked, and Since tests the object's version.
class CMDDATA_API FieldProcessor : public FieldOps<FieldProcessor> {
public:
    virtual ~FieldProcessor();

    /// True while the processor reads: a field list takes its read order from it.
    virtual bool Reading() const;
    /// The version test of a field list: fields present from version v on.
    virtual bool Since(const CCmdCore& self, std::uint16_t v);

    // The primitives.
    virtual void Prefix(CCmdCore& self);
    virtual void Scalar(const char* name, WireType type, void* value, std::uint32_t width);
    virtual void String(const char* name, CCmdString& text);
    virtual void Buffer(const char* name, CCmdBuffer& buffer);
    /// A u32 count (countName), then count bytes (name) that the object does not keep.
    virtual void Dropped(const char* countName, const char* name, std::uint32_t& count);
    virtual void Nested(const char* name, const RecordRef& record);
    virtual void List(const char* name, ListAccess& list);
    virtual void Image(const char* name, ImageAccess& image);
    virtual void Unsent(const char* name, std::uint64_t value);
    virtual void BeginArray(const char* name, std::uint32_t count);
    virtual void EndArray(const char* name);
    /// The position of the next field within its enclosing list or array.
    virtual void SetIndex(std::int32_t index);

    // The typed forms the field lists call.
    using FieldOps::Record;
    template <WireType W, class V>
    void Scalar(const char* n, V& v, V /*empty*/) {
        Scalar(n, W, &v, sizeof v);
    }
    template <class T>
    void Nested(const char* n, T& o) {
        Nested(n, RecordRef{o, T::TypeName(), &RunFields<T>});
    }
    template <class U>
    void List(const char* n, CCmdList<U>& list);
    /// Defined with the library's processors: only the library's field lists use images.
    template <class T>
    void Image(const char* n, T& o);
    template <class T>
    void Unsent(const char* n, T& v) {
        if constexpr (std::is_arithmetic_v<T>)
            Unsent(n, static_cast<std::uint64_t>(v));
        else
            Unsent(n, std::uint64_t{0});
    }

    /// Runs T's own field list (qualified: the class's, not an override's).
    template <class T>
    static void RunFields(CCmdCore& o, FieldProcessor& p) {
        static_cast<T&>(o).T::Visit(p);
    }
    /// Runs an item of class T as a field.
    template <class T>
    static void RunItem(CCmdCore& o, FieldProcessor& p) {
        p.Record(nullptr, static_cast<T&>(o));
    }
};

}  // namespace cmddata
