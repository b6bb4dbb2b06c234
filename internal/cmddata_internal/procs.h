// The stream processors that run a field list (read, write, empty), the image machinery, and
// CMDDATA_DEFINE_FIELDS. Library-internal; the field processors of every other job are public
// (processor.h) and defined in processors.cpp.
#pragma once

#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

#include "cmddata/core/buffer.h"
#include "cmddata/core/describe.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/transfer.h"
#include "cmddata_internal/listed.h"

namespace cmddata {
namespace detail {
// True in the library's own sources, where every class's field list is at hand.
#ifdef CMDDATA_BUILDING
constexpr bool kInLibrary = true;
#else
constexpr bool kInLibrary = false;
#endif
}  // namespace detail
}  // namespace cmddata

/// Messages reset their header words in RemoveAll (the header overload lives with CCmdBase).
inline void CmdDataResetHeader(CCmdCore*) {}
class CCmdHeaderWords;
/// Words a record keeps beside its field list (the header words of info records, of which only
/// some travel): a list read that keeps the record gives it those of a new one (overloads beside
/// CCmdBaseInfo).
inline void CmdDataCopyKeptWords(CCmdCore*, const CCmdCore*) {}

namespace cmddata {
namespace detail {

// Raw transfers as the algorithms below see them: through the stream's virtual slot (a stream
// class of the caller's own), or inlined over a cursor where the stream is exactly CCmdReader /
// CCmdWriter. Both give the same results, last errors and positions. Besides the transfers:
// Fits (count items of at least min bytes can still lie in the region), Exhaust (run to the end
// with kPastEnd), Attached and Fail (store a result).
template <class S>
struct Via {
    S& s;
    template <std::uint32_t N>
    Result Fixed(void* v) {
        return Raw(v, static_cast<std::int32_t>(N));
    }
    template <std::uint32_t N>
    Result Fixed(const void* v) {
        return Raw(v, static_cast<std::int32_t>(N));
    }
    Result Bytes(void* v, std::int32_t n) { return Raw(v, n); }
    Result Bytes(const void* v, std::int32_t n) { return Raw(v, n); }
    bool Fits(std::uint32_t count, std::uint32_t min) { return Cursor::Of(s).Fits(count, min); }
    void Exhaust() {
        Change([](Cursor& c) { c.Exhaust(); });
    }
    bool Attached() const { return s.IsAttached(); }
    std::uint32_t Left() const { return s.GetSize() - s.GetPosition(); }
    void Fail(Result r) {
        Change([r](Cursor& c) { c.last = r; });
    }

private:
    Result Raw(void* v, std::int32_t n) {
        if constexpr (std::is_same_v<S, CCmdReader>)
            return s.Read(v, n);
        else
            return s.Write(v, n);
    }
    Result Raw(const void* v, std::int32_t n) { return Raw(const_cast<void*>(v), n); }
    template <class F>
    void Change(F f) {
        Cursor c = Cursor::Of(s);
        f(c);
        c.To(s);
    }
};
using ViaReader = Via<CCmdReader>;
using ViaWriter = Via<CCmdWriter>;

// CCmdString's reading: prefix, count, bytes. The block held before is let go only when a new
// one replaces it; a count larger than the bytes left is not allocated for.
template <class X>
CMDDATA_ALWAYS_INLINE void ReadText(CCmdString& s, X& x) {
    ReadPrefix(s, x);
    std::uint16_t& length = Access::TextLength(s);
    x.template Fixed<2>(&length);  // a transfer that moves nothing leaves the old length
    if (length == 0) return;       // the old block stays beside a length of 0
    if (!x.Fits(length, 1)) {
        s.Initial();
        x.Exhaust();
        return;
    }
    // The block held is written over when nobody shares it and the text fits.
    unsigned char* into = Access::Block(s).Refill(length);
    if (into == nullptr) {
        s.Initial();
        return;
    }
    x.Bytes(into, length);
}
template <class X>
CMDDATA_ALWAYS_INLINE void WriteText(CCmdString& s, X& x) {
    WritePrefix(s, x);
    std::uint16_t& length = Access::TextLength(s);
    x.template Fixed<2>(&length);
    unsigned char* data = Access::Block(s).get();
    if (length != 0 && data != nullptr) x.Bytes(data, length);
}

// CCmdBuffer's reading: prefix, count, bytes. The old bytes go; their block is written over when
// nobody shares it and the new bytes fit.
template <class X>
CMDDATA_ALWAYS_INLINE void ReadBytes(CCmdBuffer& b, X& x) {
    ReadPrefix(b, x);
    SharedBlock& block = Access::Block(b);
    std::uint32_t& size = Access::ByteCount(b);
    x.template Fixed<4>(&size);  // a transfer that moves nothing leaves the old size
    if (size == 0) return block.Reset();
    if (!x.Fits(size, 1)) {
        block.Reset();
        size = 0;
        x.Exhaust();
        return;
    }
    unsigned char* data = block.Refill(size);
    if (data == nullptr) {  // the bytes stay unread: later fields read from here
        size = 0;
        return;
    }
    // A size past 2^31 is a negative count to the raw transfer: nothing comes in then.
    if (x.Bytes(data, static_cast<std::int32_t>(size)) == result::kBadArgument)
        std::memset(data, 0, size);
}
template <class X>
CMDDATA_ALWAYS_INLINE void WriteBytes(CCmdBuffer& b, X& x) {
    WritePrefix(b, x);
    std::uint32_t& size = Access::ByteCount(b);
    x.template Fixed<4>(&size);
    unsigned char* data = Access::Block(b).get();
    if (size != 0 && data != nullptr) x.Bytes(data, static_cast<std::int32_t>(size));
}

// A counted run of bytes that the object does not keep: its count travels, and the bytes are
// zeros on writing and dropped on reading. They move in slices of a small block on the stack,
// so nothing is allocated for them and nothing but that block is read or written.
constexpr std::uint32_t kDroppedSlice = 256;

// Reads count bytes and drops them. A count the region cannot hold is not read: it becomes 0
// and the reader is run to its end with kPastEnd.
template <class X>
void ReadDropped(std::uint32_t& count, X& x) {
    if (count == 0) return;
    if (!x.Fits(count, 1)) {
        count = 0;
        x.Exhaust();
        return;
    }
    unsigned char scratch[kDroppedSlice];
    for (std::uint32_t left = count; left != 0;) {
        const std::uint32_t n = left < kDroppedSlice ? left : kDroppedSlice;
        x.Bytes(scratch, static_cast<std::int32_t>(n));
        left -= n;
    }
}
// Writes count zero bytes. A run longer than the room left fails as one transfer of it would:
// kPastEnd, nothing moved.
template <class X>
void WriteZeros(std::uint32_t count, X& x) {
    if (count == 0) return;
    if (x.Attached() && count > x.Left()) {
        x.Fail(result::kPastEnd);
        return;
    }
    static const unsigned char zeros[kDroppedSlice] = {};
    for (std::uint32_t left = count; left != 0;) {
        const std::uint32_t n = left < kDroppedSlice ? left : kDroppedSlice;
        if (x.Bytes(zeros, static_cast<std::int32_t>(n)) != result::kOk) return;
        left -= n;
    }
}

}  // namespace detail

// --- Images: a nested object moved as its fixed in-memory image ---
//
// A few fields move a nested object not through its own field list but as one fixed block, the
// object's whole in-memory image as a 32-bit build lays it out (type-identity word, version
// prefix, members at their offsets). The block is built and taken apart member by member, never
// copied over the object: reading one never changes the object's type and never stores a pointer
// into it. Each class that travels so has a description, a specialisation
//
//     template <> struct cmddata::ImageLayout<CCmdThing> {
//         struct Image {                  // the 32-bit layout, fixed-width fields only
//             image::Head head;           // type word, version, reserved word (offsets 0, 4, 6)
//             std::uint32_t value;        // offset 8
//             image::Text name;           // offset 12, 16 bytes
//         };
//         template <class M> static void Map(M& m, Image& i, CCmdThing& o) {
//             m.Head(i.head, o);
//             m.Scalar(i.value, o.value);
//             m.Owned(i.name, o.name);
//         }
//     };
//
// with static_asserts on sizeof(Image) and its offsets beside it; the field list names the
// member with p.Image("name", member). What the block holds:
// - the scalars of the object and of its nested records (Record) at their offsets;
// - the version prefix of the object and of every nested object, as it stands;
// - 0 in every other byte: the type-identity words, padding, and the pointers and counts of
//   texts, buffers and lists (Owned), whose memory cannot travel in a block. A block therefore
//   never holds an address of the writing process, and the same object always gives the same
//   bytes.
// Reading takes the scalars and version prefixes, ignores the type words, and empties every
// Owned member (their counts in the block are never trusted).
template <class T>
struct ImageLayout;

namespace image {
/// The start of every object image: type-identity word, version, reserved word.
struct Head {
    std::uint32_t typeWord;
    std::uint16_t version;
    std::uint16_t reserved;
};
/// A CCmdString: head, data pointer, byte count (u16), padding.
struct Text {
    Head head;
    std::uint32_t data;
    std::uint16_t length;
    std::uint16_t pad;
};
/// A CCmdBuffer: head, data pointer, byte count.
struct Bytes {
    Head head;
    std::uint32_t data;
    std::uint32_t size;
};
/// A CCmdList<T>: head, first node, last node, count.
struct List {
    Head head;
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t count;
};
static_assert(sizeof(Head) == 8 && sizeof(Text) == 16 && sizeof(Bytes) == 16 && sizeof(List) == 20,
              "object images follow the 32-bit layout");
}  // namespace image

namespace detail {

// The mappers an image description runs with: build the block from the object, or take the
// object's members from it.
struct ImagePack {
    void Head(image::Head& h, CCmdCore& o) {
        h.version = Access::Version(o);
        h.reserved = Access::Reserved(o);
    }
    template <class S, class V>
    void Scalar(S& slot, V& member) {
        static_assert(sizeof(S) == sizeof(V) && std::is_integral_v<S> && std::is_integral_v<V>,
                      "an image slot has the width of its member");
        std::memcpy(&slot, &member, sizeof slot);
    }
    template <class S, class C>
    void Owned(S& slot, C& member) {
        Head(slot.head, member);
    }
    template <class S, class C>
    void Record(S& slot, C& member) {
        static_assert(std::is_same_v<S, typename ImageLayout<C>::Image>, "image of the member");
        ImageLayout<C>::Map(*this, slot, member);
    }
};
struct ImageUnpack {
    void Head(image::Head& h, CCmdCore& o) {  // the type word is never taken
        Access::Version(o) = h.version;
        Access::Reserved(o) = h.reserved;
    }
    template <class S, class V>
    void Scalar(S& slot, V& member) {
        static_assert(sizeof(S) == sizeof(V) && std::is_integral_v<S> && std::is_integral_v<V>,
                      "an image slot has the width of its member");
        std::memcpy(&member, &slot, sizeof slot);
    }
    template <class S, class C>
    void Owned(S& slot, C& member) {
        Head(slot.head, member);
        member.RemoveAll();
    }
    template <class S, class C>
    void Record(S& slot, C& member) {
        static_assert(std::is_same_v<S, typename ImageLayout<C>::Image>, "image of the member");
        ImageLayout<C>::Map(*this, slot, member);
    }
};

// Fills the scalars an image carries with distinct non-zero values from next(); version
// prefixes and owned members stay.
template <class Next>
struct ImageFill {
    Next next;
    void Head(image::Head&, CCmdCore&) {}
    template <class S, class V>
    void Scalar(S&, V& member) {
        const std::uint64_t value = next();
        std::memcpy(&member, &value, sizeof member);  // little-endian: the low bytes
    }
    template <class S, class C>
    void Owned(S&, C&) {}
    template <class S, class C>
    void Record(S& slot, C& member) {
        ImageLayout<C>::Map(*this, slot, member);
    }
};

// Reads a block; the object takes it only where bytes actually came in (a transfer that moved
// nothing leaves the object as it was).
template <class T, class X>
void ReadImage(T& object, X& x) {
    typename ImageLayout<T>::Image block{};
    const Result r = x.Bytes(&block, static_cast<std::int32_t>(sizeof block));
    if (r != result::kOk && r != result::kVerifyFailed) return;
    ImageUnpack m;
    ImageLayout<T>::Map(m, block, object);
}
template <class T, class X>
void WriteImage(T& object, X& x) {
    typename ImageLayout<T>::Image block{};  // every byte not mapped stays 0
    ImagePack m;
    ImageLayout<T>::Map(m, block, object);
    x.Bytes(&block, static_cast<std::int32_t>(sizeof block));
}

}  // namespace detail

namespace detail {

// The stream a static processor moves its fields through: inlined over a cursor where the stream
// is exactly CCmdReader or CCmdWriter (Direct), through its virtual raw transfer where it is a
// class of the caller's own. Both give the same results, last errors and positions. The choice is
// made once per object (RunStream), so that no field tests it. The cursor takes the stream's
// state when the processor starts and gives it back at its end (and, outside the library, before
// a nested object is moved through the stream itself): nothing can look at the stream between.
template <class D, class S, bool Reading, bool IsDirect>
class StreamOps : public FieldOps<D> {
public:
    explicit StreamOps(S& stream) : s_(stream) {
        if constexpr (IsDirect) {
            c_ = Cursor::Of(s_);
            live_ = true;
        }
    }
    StreamOps(const StreamOps&) = delete;
    StreamOps& operator=(const StreamOps&) = delete;
    ~StreamOps() { Sync(); }
    static bool Since(const CCmdCore& self, std::uint16_t v) { return self.GetVersion() >= v; }

    template <WireType W, class V>
    CMDDATA_ALWAYS_INLINE void Scalar(const char*, V& v, V) {
        With([&v](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { x.template Fixed<sizeof(V)>(&v); });
    }
    template <class T>
    void Unsent(const char*, T&) {}

protected:
    template <class F>
    CMDDATA_ALWAYS_INLINE void With(F&& f) {
        if constexpr (IsDirect) {
            if (!kInLibrary && !live_) {
                c_ = Cursor::Of(s_);
                live_ = true;
            }
            Direct<Reading> x{c_};
            f(x);
        } else {
            Via<S> x{s_};
            f(x);
        }
    }
    void Sync() {
        if (!live_) return;
        c_.To(s_);
        live_ = false;
    }
    S& s_;

private:
    bool live_ = false;
    Cursor c_{};
};

// A list's prefix and count as a stream processor moves them (CCmdList::ReadThrough). Inlined,
// so that the cursor's address goes nowhere and the items' loop keeps it in registers.
template <class X>
struct ListIn {
    X& x;
    CMDDATA_ALWAYS_INLINE void Prefix(CCmdCore& self) { ReadPrefix(self, x); }
    CMDDATA_ALWAYS_INLINE void Count(std::uint32_t* n) { x.template Fixed<4>(n); }
    CMDDATA_ALWAYS_INLINE bool Fits(std::uint32_t count, std::uint32_t min) {
        return x.Fits(count, min);
    }
    CMDDATA_ALWAYS_INLINE void Exhaust() { x.Exhaust(); }
};
template <class X>
struct ListOut {
    X& x;
    CMDDATA_ALWAYS_INLINE void Prefix(CCmdCore& self) { WritePrefix(self, x); }
    CMDDATA_ALWAYS_INLINE void Count(const std::uint32_t* n) { x.template Fixed<4>(n); }
};

}  // namespace detail

namespace detail {

template <class L>
constexpr bool kInlineItems = FieldsInHeader<typename L::ItemType>::value;

// How a list of bare numbers read over an inline run keeps its items from one read to the next: a
// kept item gets a new one's version and reserved word back, and its number is left to the read,
// which always writes it (see NumberRun). One store (the two words) where making the item anew
// takes three (vtable pointer, words, a zero number). A read of the same list by any other path
// empties it first (NoRenewal), kept items included.
template <class T>
struct NumberRenewal {
    static constexpr bool kOn = true;
    static CMDDATA_ALWAYS_INLINE void Renew(T& item) {
        const T blank;
        static_cast<CCmdCore&>(item) = static_cast<const CCmdCore&>(blank);
    }
    static void Settle(T&) {}
};

// Hands walk a transfer over the run's own cursor, for the list's prefix and count, and the
// per-item transfer: the run's cursor takes over from x's before the list and hands back after
// it. The item is generic, so a list of other items never checks this branch. Only a read runs
// its items Within: its count has passed Fits, where nothing has measured a write's room.
template <bool Reading, class X, class Walk>
CMDDATA_ALWAYS_INLINE void OverRun(X& x, Walk&& walk) {
    Cursor run = x.c;
    Direct<Reading> rx{run};
    walk(rx, [&run](auto& item) CMDDATA_ALWAYS_INLINE_LAMBDA {
        NumberRun<Reading, /*Within=*/Reading> r(run);
        item.Fields(r);
    });
    x.c = run;
}

// --- Renewing the items a list read keeps ---
//
// A list read keeps the records it held and makes each new again before reading into it, so that
// its texts, buffers and lists keep their memory. "New again" is taken from a new object of the
// class, not from what emptying gives: the values of every scalar and version prefix of one new
// object, in field-list order, are taken once per class (SnapProc) and put back over the kept
// item (RenewProc); texts and buffers lose their bytes but keep their blocks, and lists keep
// their items for the next read in turn. A text or buffer that the read leaves without bytes lets
// its block go afterwards (SettleProc), as a new one holds none; words a record keeps beside its
// field list come from a new object (CmdDataCopyKeptWords). A class whose new objects hold texts,
// list items or members that never travel other than numbers, or whose field list does not walk
// the same way twice, is renewed by destroying the item and constructing it anew.

// The values a new object of a class starts with, in the order its field list walks them.
struct Snapshot {
    std::vector<std::uint64_t> values;
    bool exact = true;  // false: renew by construction
};

class SnapProc : public FieldOps<SnapProc> {
public:
    static constexpr bool Reading() { return false; }
    static constexpr bool Since(const CCmdCore&, std::uint16_t) { return true; }
    explicit SnapProc(Snapshot& s) : s_(s) {}
    void Header(CCmdCore& o) {
        Put(Access::Version(o));
        Put(Access::Reserved(o));
    }
    void Prefix(CCmdCore&) {}
    template <WireType W, class V>
    void Scalar(const char*, V& v, V) {
        Put(v);
    }
    void U8Low(const char*, std::uint32_t& v) { Put(v); }
    void String(const char*, CCmdString& s) {
        Header(s);
        if (s.GetSize() != 0) s_.exact = false;
    }
    void Buffer(const char*, CCmdBuffer& b) {
        Header(b);
        if (b.GetSize() != 0) s_.exact = false;
    }
    void Dropped(const char*, const char*, std::uint32_t& count) { Put(count); }
    template <class T>
    void Nested(const char*, T& o);
    template <class L>
    void List(const char*, L& l) {
        Header(l);
        if (l.GetCount() != 0) s_.exact = false;
    }
    template <class T>
    void Image(const char* n, T& o) {
        Nested(n, o);
    }
    template <class T>
    void Unsent(const char*, T& v) {
        if constexpr (std::is_arithmetic_v<T>)
            Put(v);
        else
            s_.exact = false;
    }

private:
    template <class V>
    void Put(const V& v) {
        s_.values.push_back(static_cast<std::uint64_t>(v));
    }
    Snapshot& s_;
};

class RenewProc : public FieldOps<RenewProc> {
public:
    static constexpr bool Reading() { return false; }
    static constexpr bool Since(const CCmdCore&, std::uint16_t) { return true; }
    explicit RenewProc(const Snapshot& s)
        : at_(s.values.data()), end_(s.values.data() + s.values.size()) {}
    /// True when the walk took exactly the values of the snapshot.
    bool Whole() const { return !short_ && at_ == end_; }
    void Header(CCmdCore& o) {
        Access::Version(o) = Take<std::uint16_t>();
        Access::Reserved(o) = Take<std::uint16_t>();
    }
    void Prefix(CCmdCore&) {}
    template <WireType W, class V>
    void Scalar(const char*, V& v, V) {
        v = Take<V>();
    }
    void U8Low(const char*, std::uint32_t& v) { v = Take<std::uint32_t>(); }
    void String(const char*, CCmdString& s) {
        Header(s);
        Access::TextLength(s) = 0;
    }
    void Buffer(const char*, CCmdBuffer& b) {
        Header(b);
        Access::ByteCount(b) = 0;
    }
    void Dropped(const char*, const char*, std::uint32_t& count) { count = Take<std::uint32_t>(); }
    template <class T>
    void Nested(const char*, T& o);
    template <class L>
    void List(const char*, L& l);
    template <class T>
    void Image(const char* n, T& o) {
        Nested(n, o);
    }
    template <class T>
    void Unsent(const char*, T& v) {
        if constexpr (std::is_arithmetic_v<T>) v = Take<T>();
    }

private:
    template <class V>
    V Take() {
        if (at_ == end_) {
            short_ = true;
            return V{};
        }
        return static_cast<V>(*at_++);
    }
    const std::uint64_t* at_;
    const std::uint64_t* end_;
    bool short_ = false;
};

class SettleProc : public FieldOps<SettleProc> {
public:
    static constexpr bool Reading() { return false; }
    static constexpr bool Since(const CCmdCore&, std::uint16_t) { return true; }
    void Prefix(CCmdCore&) {}
    template <WireType W, class V>
    void Scalar(const char*, V&, V) {}
    void String(const char*, CCmdString& s) {
        if (s.GetSize() == 0) s.CCmdString::RemoveAll();
    }
    void Buffer(const char*, CCmdBuffer& b) {
        if (b.GetSize() == 0) b.CCmdBuffer::RemoveAll();
    }
    void Dropped(const char*, const char*, std::uint32_t&) {}
    template <class T>
    void Nested(const char*, T& o);
    template <class L>
    void List(const char*, L&) {}  // its own read settled its items
    template <class T>
    void Image(const char* n, T& o) {
        Nested(n, o);
    }
    template <class T>
    void Unsent(const char*, T&) {}
};

// Runs a renewal processor over a record's field list, in place or through the class's entry.
template <class P, class T>
void RunFields(P& p, T& o) {
    if constexpr (FieldsInHeader<T>::value)
        o.Fields(p);
    else
        CmdDataFields(p, o);
}

template <class T>
void SnapProc::Nested(const char*, T& o) {
    Header(o);
    RunFields(*this, o);
}
template <class T>
void RenewProc::Nested(const char*, T& o) {
    Header(o);
    RunFields(*this, o);
}
template <class T>
void SettleProc::Nested(const char*, T& o) {
    RunFields(*this, o);
}

template <class T>
const Snapshot& SnapshotOf() {
    static const Snapshot snapshot = [] {
        Snapshot s;
        T fresh;
        SnapProc p(s);
        p.Header(fresh);
        RunFields(p, fresh);
        return s;
    }();
    return snapshot;
}

// A record kept by a list read: renewed from its class's snapshot, or constructed anew.
template <class T>
struct RecordRenewal {
    static constexpr bool kOn = true;
    static void Renew(T& item) {
        const Snapshot& s = SnapshotOf<T>();
        if (s.exact) {
            RenewProc p(s);
            p.Header(item);
            RunFields(p, item);
            if (p.Whole()) {
                if constexpr (std::is_base_of_v<CCmdHeaderWords, T>) {
                    const T fresh;  // made here: a new record's thread id is the reading thread's
                    CmdDataCopyKeptWords(&item, &fresh);
                }
                return;
            }
        }
        item.~T();
        new (&item) T();
    }
    static void Settle(T& item) {
        SettleProc p;
        RunFields(p, item);
    }
};

// How a list read by the library renews its items: texts and buffers as every list does, records
// through their field lists. Bare numbers read here, where a transfer may leave an item unwritten,
// are constructed anew (the inline run of a plain reader keeps them: NumberRenewal). Outside the
// library (a field list of the caller's own) the records' field lists are not at hand: they are
// constructed too.
template <class T>
using ListRenewal =
    std::conditional_t<DefaultRenewal<T>::kOn || FieldsInHeader<T>::value || !kInLibrary,
                       DefaultRenewal<T>, RecordRenewal<T>>;

// A list of bare numbers keeps its items for the read that follows: over an inline run it renews
// them (NumberRenewal), by any other path it empties the list first.
template <class L>
void RenewProc::List(const char*, L& l) {
    using T = typename L::ItemType;
    Header(l);
    l.template Retire<
        std::conditional_t<FieldsInHeader<T>::value, NumberRenewal<T>, ListRenewal<T>>>();
}

}  // namespace detail

/// Reads each field from a reader, in list order, whatever failed before. D is ReadProc (a
/// CCmdReader itself) or ReadViaProc (a reader class of the caller's own).
template <class D, bool IsDirect>
class ReadOps : public detail::StreamOps<D, CCmdReader, true, IsDirect> {
    using Base = detail::StreamOps<D, CCmdReader, true, IsDirect>;
    using Base::With;

public:
    using Base::Base;
    static constexpr bool Reading() { return true; }

    CMDDATA_ALWAYS_INLINE void Prefix(CCmdCore& self) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::ReadPrefix(self, x); });
    }
    CMDDATA_ALWAYS_INLINE void String(const char*, CCmdString& s) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::ReadText(s, x); });
    }
    CMDDATA_ALWAYS_INLINE void Buffer(const char*, CCmdBuffer& b) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::ReadBytes(b, x); });
    }
    /// A u32 count, then count bytes the object does not keep: read and dropped.
    void Dropped(const char*, const char*, std::uint32_t& count) {
        With([&](auto& x) {
            x.template Fixed<4>(&count);
            detail::ReadDropped(count, x);
        });
    }
    template <class T>
    void Nested(const char*, T& o) {
#ifdef CMDDATA_BUILDING
        if constexpr (detail::FieldsInHeader<T>::value)
            o.Fields(self());
        else
            CmdDataFields(self(), o);
#else
        this->Sync();
        o.T::Read(this->s_);  // a field list outside the library: through the exported operation
#endif
    }
    template <class L>
    void List(const char*, L& l) {
        With([&](auto& x) {
            using X = std::remove_reference_t<decltype(x)>;
            if constexpr (detail::kInlineItems<L> && std::is_same_v<X, detail::DirectReader>) {
                detail::OverRun<true>(x, [&](X& rx, auto&& each) CMDDATA_ALWAYS_INLINE_LAMBDA {
                    detail::ListIn<X> in{rx};
                    l.template ReadRenewing<detail::NumberRenewal<typename L::ItemType>>(
                        in, [](std::uint32_t, bool) {}, each);
                });
            } else {
                detail::ListIn<X> in{x};
                l.template ReadRenewing<detail::ListRenewal<typename L::ItemType>>(
                    in, [](std::uint32_t, bool) {},
                    [this](typename L::ItemType& item) { self().Record(nullptr, item); });
            }
        });
    }
    /// A nested object as its fixed in-memory image (see ImageLayout).
    template <class T>
    void Image(const char*, T& o) {
        With([&](auto& x) { detail::ReadImage(o, x); });
    }

private:
    D& self() { return static_cast<D&>(*this); }
};
class ReadProc final : public ReadOps<ReadProc, true> {
public:
    using ReadOps::ReadOps;
};
class ReadViaProc final : public ReadOps<ReadViaProc, false> {
public:
    using ReadOps::ReadOps;
};

/// Writes each field to a writer, in list order. D is WriteProc or WriteViaProc.
template <class D, bool IsDirect>
class WriteOps : public detail::StreamOps<D, CCmdWriter, false, IsDirect> {
    using Base = detail::StreamOps<D, CCmdWriter, false, IsDirect>;
    using Base::With;

public:
    using Base::Base;
    static constexpr bool Reading() { return false; }

    CMDDATA_ALWAYS_INLINE void Prefix(CCmdCore& self) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::WritePrefix(self, x); });
    }
    CMDDATA_ALWAYS_INLINE void String(const char*, CCmdString& s) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::WriteText(s, x); });
    }
    CMDDATA_ALWAYS_INLINE void Buffer(const char*, CCmdBuffer& b) {
        With([&](auto& x) CMDDATA_ALWAYS_INLINE_LAMBDA { detail::WriteBytes(b, x); });
    }
    /// A u32 count, then count zero bytes.
    void Dropped(const char*, const char*, std::uint32_t& count) {
        With([&](auto& x) {
            x.template Fixed<4>(&count);
            detail::WriteZeros(count, x);
        });
    }
    template <class T>
    void Nested(const char*, T& o) {
#ifdef CMDDATA_BUILDING
        if constexpr (detail::FieldsInHeader<T>::value)
            o.Fields(self());
        else
            CmdDataFields(self(), o);
#else
        this->Sync();
        o.T::Write(this->s_);
#endif
    }
    template <class L>
    void List(const char*, L& l) {
        With([&](auto& x) {
            using X = std::remove_reference_t<decltype(x)>;
            if constexpr (detail::kInlineItems<L> && std::is_same_v<X, detail::DirectWriter>) {
                detail::OverRun<false>(x, [&](X& rx, auto&& each) {
                    detail::ListOut<X> out{rx};
                    l.WriteThrough(out, each);
                });
            } else {
                detail::ListOut<X> out{x};
                l.WriteThrough(
                    out, [this](typename L::ItemType& item) { self().Record(nullptr, item); });
            }
        });
    }
    template <class T>
    void Image(const char*, T& o) {
        With([&](auto& x) { detail::WriteImage(o, x); });
    }

private:
    D& self() { return static_cast<D&>(*this); }
};
class WriteProc final : public WriteOps<WriteProc, true> {
public:
    using WriteOps::WriteOps;
};
class WriteViaProc final : public WriteOps<WriteViaProc, false> {
public:
    using WriteOps::WriteOps;
};

/// Runs fields(p) with the read or write processor the stream calls for: the direct one for a
/// CCmdReader / CCmdWriter itself, else the one through the stream's own raw transfer. Only the
/// library's own type_info is tested inline; everything else is decided in a function of its own,
/// out of the way: with it inline, the usual path saved and restored the registers that its
/// calls need, about a seventh of a 20-byte header's read. A stream made in a program linked to
/// the DLL carries the program's copy of the type_info and takes that function (its direct path
/// is the same code).
template <class Direct, class Via, class Stream, class F>
[[gnu::noinline, gnu::cold]] void RunOther(Stream& stream, F& fields) {
    if (detail::IsPlain(stream)) {
        Direct p(stream);
        fields(p);
    } else {
        Via p(stream);
        fields(p);
    }
}
template <class Direct, class Via, class Stream, class F>
CMDDATA_ALWAYS_INLINE void RunWith(Stream& stream, F& fields) {
    if (__builtin_expect(detail::IsPlainAtOnce(stream), true)) {
        Direct p(stream);
        fields(p);
    } else {
        RunOther<Direct, Via>(stream, fields);
    }
}
template <class F>
CMDDATA_ALWAYS_INLINE void RunStream(CCmdReader& reader, F&& fields) {
    RunWith<ReadProc, ReadViaProc>(reader, fields);
}
template <class F>
CMDDATA_ALWAYS_INLINE void RunStream(CCmdWriter& writer, F&& fields) {
    RunWith<WriteProc, WriteViaProc>(writer, fields);
}

/// Empties every field: scalars to their empty value, texts, buffers, lists and records through
/// RemoveAll. The version prefix and the command identifier stay.
class ResetProc : public FieldOps<ResetProc> {
public:
    static constexpr bool Reading() { return false; }
    /// Every field is emptied, whatever the object's version.
    static constexpr bool Since(const CCmdCore&, std::uint16_t) { return true; }
    void Prefix(CCmdCore&) {}
    template <WireType W, class V>
    void Scalar(const char*, V& v, V empty) {
        if constexpr (W != WireType::kIdent) v = empty;
    }
    /// The whole member, not only the byte that travels.
    void U8Low(const char*, std::uint32_t& v) { v = 0; }
    void String(const char*, CCmdString& s) { s.CCmdString::RemoveAll(); }
    void Buffer(const char*, CCmdBuffer& b) { b.CCmdBuffer::RemoveAll(); }
    void Dropped(const char*, const char*, std::uint32_t& count) { count = 0; }
    template <class T>
    void Nested(const char*, T& o) {
        o.T::RemoveAll();
    }
    template <class L>
    void List(const char*, L& l) {
        l.RemoveAll();
    }
    /// An image member is emptied through its own RemoveAll, like a nested record.
    template <class T>
    void Image(const char*, T& o) {
        o.T::RemoveAll();
    }
    template <class T>
    void Unsent(const char*, T& v) {
        if constexpr (std::is_arithmetic_v<T>)
            v = 0;
        else
            v.RemoveAll();
    }
};

namespace detail {

// An image member as the field processors see it.
template <class T>
class ImageOf final : public ImageAccess {
public:
    explicit ImageOf(T& object) : o_(object) {}
    const char* Type() const override { return T::TypeName(); }
    std::uint32_t Size() const override { return sizeof(Block); }
    void Pack(unsigned char* block) override {
        Block b{};
        ImagePack m;
        ImageLayout<T>::Map(m, b, o_);
        std::memcpy(block, &b, sizeof b);
    }
    void Read(CCmdReader& reader) override {
        ViaReader x{reader};
        ReadImage(o_, x);
    }
    void Write(CCmdWriter& writer) override {
        ViaWriter x{writer};
        WriteImage(o_, x);
    }
    void Fill(std::uint64_t (*next)(void*), void* context) override {
        auto source = [next, context] { return next(context); };
        ImageFill<decltype(source)> filler{source};
        Block b{};
        ImageLayout<T>::Map(filler, b, o_);
    }

private:
    using Block = typename ImageLayout<T>::Image;
    T& o_;
};

}  // namespace detail

template <class T>
inline void FieldProcessor::Image(const char* name, T& object) {
    detail::ImageOf<T> access(object);
    Image(name, static_cast<ImageAccess&>(access));
}

}  // namespace cmddata

/// Defines Read, Write, RemoveAll, Visit and the processor entry points of Class from its
/// one field list. Put it after the definition of Class::Fields. Visit calls the listed
/// check (listed.h): Class must be in its family's class list.
#define CMDDATA_DEFINE_FIELDS(Class)                                \
    void Class::Read(CCmdReader& reader) {                          \
        cmddata::RunStream(reader, [this](auto& p) { Fields(p); }); \
    }                                                               \
    void Class::Write(CCmdWriter& writer) {                         \
        cmddata::RunStream(writer, [this](auto& p) { Fields(p); }); \
    }                                                               \
    CMDDATA_DEFINE_FIELD_JOBS(Class)

/// The same for a class declared with CMDDATA_NUMBER_FIELDS, whose Read and Write are inline:
/// its entries for the streams that those leave out.
#define CMDDATA_DEFINE_NUMBER_FIELDS(Class)                                           \
    void Class::ReadOther(CCmdReader& reader) {                                       \
        auto fields = [this](auto& p) { Fields(p); };                                 \
        cmddata::RunOther<cmddata::ReadProc, cmddata::ReadViaProc>(reader, fields);   \
    }                                                                                 \
    void Class::WriteOther(CCmdWriter& writer) {                                      \
        auto fields = [this](auto& p) { Fields(p); };                                 \
        cmddata::RunOther<cmddata::WriteProc, cmddata::WriteViaProc>(writer, fields); \
    }                                                                                 \
    CMDDATA_DEFINE_FIELD_JOBS(Class)

/// What both define besides Read and Write.
#define CMDDATA_DEFINE_FIELD_JOBS(Class)                                         \
    void Class::RemoveAll() {                                                    \
        CmdDataResetHeader(this);                                                \
        cmddata::ResetProc p;                                                    \
        Fields(p);                                                               \
    }                                                                            \
    void Class::Visit(cmddata::FieldProcessor& p) {                              \
        cmddata::detail::ListedInItsFamilyList<Class>();                         \
        Fields(p);                                                               \
    }                                                                            \
    void CmdDataFields(cmddata::ReadProc& p, Class& o) { o.Fields(p); }          \
    void CmdDataFields(cmddata::WriteProc& p, Class& o) { o.Fields(p); }         \
    void CmdDataFields(cmddata::ReadViaProc& p, Class& o) { o.Fields(p); }       \
    void CmdDataFields(cmddata::WriteViaProc& p, Class& o) { o.Fields(p); }      \
    void CmdDataFields(cmddata::detail::SnapProc& p, Class& o) { o.Fields(p); }  \
    void CmdDataFields(cmddata::detail::RenewProc& p, Class& o) { o.Fields(p); } \
    void CmdDataFields(cmddata::detail::SettleProc& p, Class& o) { o.Fields(p); }
