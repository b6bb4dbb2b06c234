// The raw transfer, inlined for fixed widths: bound check, copy, verification compare, advance;
// and the runs of numbers over it that a caller's own code may inline (RunInline). Everything
// here is the library's machinery, not an interface: it sits in a public header only so that a
// message of numbers alone is read and written without a call.
#pragma once

#include <cassert>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "cmddata/core/core.h"
#include "cmddata/core/processor.h"

// CMDDATA_ALWAYS_INLINE (export.h) for a lambda, written after its parameters.
#define CMDDATA_ALWAYS_INLINE_LAMBDA __attribute__((always_inline))

namespace cmddata {
namespace detail {

class SharedBlock;

/// Reaches the private state of cores and streams for the library's own processors.
struct Access {
    static std::uint16_t& Version(CCmdCore& c) { return c.version_; }
    static std::uint16_t& Reserved(CCmdCore& c) { return c.reserved_; }
    static std::uint32_t& LastError(CCmdStreamBase& s) { return s.lastError_; }
    static unsigned char*& Position(CCmdStreamBase& s) { return s.position_; }
    static unsigned char* Base(CCmdStreamBase& s) { return s.base_; }
    static std::uint32_t Size(CCmdStreamBase& s) { return s.size_; }
    // Texts and buffers (friends too): their block and their count.
    template <class T>
    static SharedBlock& Block(T& o) {
        return o.block_;
    }
    template <class T>
    static std::uint16_t& TextLength(T& text) {
        return text.length_;
    }
    template <class T>
    static std::uint32_t& ByteCount(T& buffer) {
        return buffer.size_;
    }
};

// Makes the compiler assume any memory may have changed: the compare after the copy must really
// re-read both sides, since another process may be writing the region at the same time. A memory
// clobber says exactly that; std::atomic_signal_fence (enough for AttachView, which only keeps
// two stores apart) orders atomics and promises nothing about plain bytes another process writes.
inline void Reload() { __asm__ __volatile__("" ::: "memory"); }

// Short runs (texts, small buffers) are copied and compared in 8-byte words, the last word
// overlapping the one before; a library call would cost more than the bytes themselves.
constexpr std::uint32_t kShortRun = 64;

inline std::uint64_t Load8(const unsigned char* p) {
    std::uint64_t v;
    std::memcpy(&v, p, 8);
    return v;
}
inline void CopyShort(unsigned char* to, const unsigned char* from, std::uint32_t n) {
    if (n >= 8) {
        std::uint32_t i = 0;
        for (; i + 8 < n; i += 8) {
            const std::uint64_t v = Load8(from + i);
            std::memcpy(to + i, &v, 8);
        }
        const std::uint64_t last = Load8(from + n - 8);
        std::memcpy(to + n - 8, &last, 8);
    } else if (n >= 4) {
        std::uint32_t a, b;
        std::memcpy(&a, from, 4);
        std::memcpy(&b, from + n - 4, 4);
        std::memcpy(to, &a, 4);
        std::memcpy(to + n - 4, &b, 4);
    } else {
        const unsigned char a = from[0], b = from[n / 2], c = from[n - 1];
        to[0] = a;
        to[n / 2] = b;
        to[n - 1] = c;
    }
}
// Compares word by word, as CopyShort stored them: a wider load across two of those stores (what
// the compiler makes of an accumulating loop) cannot take their bytes on the way and waits for
// both to reach the cache. The early exit keeps the loop from being widened.
inline bool EqualShort(const unsigned char* x, const unsigned char* y, std::uint32_t n) {
    if (n >= 8) {
        for (std::uint32_t i = 0; i + 8 < n; i += 8)
            if (Load8(x + i) != Load8(y + i)) return false;
        return Load8(x + n - 8) == Load8(y + n - 8);
    }
    if (n >= 4) {
        std::uint32_t a, b, c, d;
        std::memcpy(&a, x, 4);
        std::memcpy(&b, x + n - 4, 4);
        std::memcpy(&c, y, 4);
        std::memcpy(&d, y + n - 4, 4);
        return ((a ^ c) | (b ^ d)) == 0;
    }
    return x[0] == y[0] && x[n / 2] == y[n / 2] && x[n - 1] == y[n - 1];
}

// Bytes from base to at, unsigned: a pointer difference is a signed 32-bit value in a 32-bit
// process and goes negative in a view that reaches past 2 GB.
inline std::uint64_t Offset(const unsigned char* at, const unsigned char* base) {
    return static_cast<std::uintptr_t>(reinterpret_cast<std::uintptr_t>(at) -
                                       reinterpret_cast<std::uintptr_t>(base));
}

// A stream's moving state, held apart from the stream while a processor runs over it: in a local
// object the compiler keeps it in registers between fields instead of storing and reloading the
// position for every one. It holds the region's end rather than its base and size: a bound check
// is then one subtraction, and the stream's position and base, stored apart by AttachView, are
// never loaded together as one wide word (which would wait for both stores to reach the cache).
// The position never passes the end: it starts at the base and moves only within the region.
struct Cursor {
    unsigned char* pos;
    unsigned char* end;
    std::uint32_t last;

    static Cursor Of(CCmdStreamBase& s) {
        unsigned char* const base = Access::Base(s);
        return {Access::Position(s), base == nullptr ? nullptr : base + Access::Size(s),
                Access::LastError(s)};
    }
    void To(CCmdStreamBase& s) const {
        Access::Position(s) = pos;
        Access::LastError(s) = last;
    }
    /// Bytes from the position to the end of the region.
    std::uint64_t Left() const { return Offset(end, pos); }
    /// True when count items of at least minItemSize bytes can still lie in the region.
    bool Fits(std::uint32_t count, std::uint32_t minItemSize) const {
        if (pos == nullptr) return count == 0;  // nothing is left to hold anything
        return static_cast<std::uint64_t>(count) * (minItemSize == 0 ? 1 : minItemSize) <= Left();
    }
    /// Runs to the end of the region with kPastEnd, so that every later transfer fails too.
    void Exhaust() {
        if (pos == nullptr) return;
        pos = end;
        last = result::kPastEnd;
    }
};

// The copy and the compare of a transfer of count (>= 1) bytes at `at`; fromRegion says which
// way the bytes go. Out of line (it is long), and over values only: the caller's cursor never
// has its address taken, so that it stays in registers around it.
[[gnu::noinline]] inline Result CopyCompare(unsigned char* at, unsigned char* obj,
                                            std::uint32_t count, bool fromRegion) {
    bool same;
    if (count <= kShortRun) {
        if (fromRegion)
            CopyShort(obj, at, count);
        else
            CopyShort(at, obj, count);
        Reload();
        same = EqualShort(obj, at, count);
    } else {
        if (fromRegion)
            std::memcpy(obj, at, count);
        else
            std::memcpy(at, obj, count);
        Reload();
        same = std::memcmp(obj, at, count) == 0;
    }
    return same ? result::kOk : result::kVerifyFailed;
}

// A transfer of count (>= 1) bytes once its arguments are checked: a stream attached, room left,
// copy and compare, the position moved on, the result stored.
CMDDATA_ALWAYS_INLINE Result Transfer(Cursor& c, void* object, std::uint32_t count,
                                      bool fromRegion) {
    if (c.pos == nullptr) return c.last = result::kNotAttached;
    if (count > c.Left()) return c.last = result::kPastEnd;
    unsigned char* const at = c.pos;
    c.pos = at + count;
    return c.last = CopyCompare(at, static_cast<unsigned char*>(object), count, fromRegion);
}

// One word read again for the compare, through a volatile access so that the compiler cannot
// take the value it just copied instead. Unlike a memory barrier it pins nothing else: the
// processor's cursor and the object's other fields stay in registers.
template <std::uint32_t N>
using WordOf = std::conditional_t<
    N == 1, std::uint8_t,
    std::conditional_t<N == 2, std::uint16_t,
                       std::conditional_t<N == 4, std::uint32_t, std::uint64_t>>>;
template <std::uint32_t N>
CMDDATA_ALWAYS_INLINE WordOf<N> LoadAgain(const void* at) {
    static_assert(N == 1 || N == 2 || N == 4 || N == 8, "a number is 1, 2, 4 or 8 bytes");
    // A field may sit at any byte, and under any type.
    typedef WordOf<N> Unaligned __attribute__((aligned(1), may_alias));
    return *static_cast<const volatile Unaligned*>(at);
}

// The copy and compare of a number of a width known when compiling: one load and one store, then
// both words are read again and compared (the object's too: it may itself lie in shared memory).
template <std::uint32_t N>
CMDDATA_ALWAYS_INLINE Result MoveFixed(Cursor& c, void* object, bool fromRegion) {
    unsigned char* const at = c.pos;
    if (fromRegion)
        std::memcpy(object, at, N);
    else
        std::memcpy(at, object, N);
    // Equal is the usual outcome: said so, the compiler keeps it on the straight path (otherwise
    // it lays it out of line, two jumps per item in a list's loop).
    const bool same = __builtin_expect(LoadAgain<N>(object) == LoadAgain<N>(at), 1);
    c.pos = at + N;
    return c.last = same ? result::kOk : result::kVerifyFailed;
}
// The same behind a transfer's own checks: a stream attached, and room left for the number.
template <std::uint32_t N>
CMDDATA_ALWAYS_INLINE Result TransferFixed(Cursor& c, void* object, bool fromRegion) {
    if (c.pos == nullptr) return c.last = result::kNotAttached;
    if (N > c.Left()) return c.last = result::kPastEnd;
    return MoveFixed<N>(c, object, fromRegion);
}

template <std::uint32_t N>
CMDDATA_ALWAYS_INLINE Result ReadFixed(Cursor& c, void* destination) {
    return TransferFixed<N>(c, destination, true);
}
template <std::uint32_t N>
CMDDATA_ALWAYS_INLINE Result WriteFixed(Cursor& c, const void* source) {
    return TransferFixed<N>(c, const_cast<void*>(source), false);
}

// The whole raw transfers, argument checks included: the bodies of CCmdReader::Read(void*, n)
// and CCmdWriter::Write(const void*, n), inlined where the stream is known to be exactly one.
inline Result ReadRaw(Cursor& c, void* destination, std::int32_t count) {
    if (destination == nullptr || count < 1) return c.last = result::kBadArgument;
    return Transfer(c, destination, static_cast<std::uint32_t>(count), true);
}
inline Result WriteRaw(Cursor& c, const void* source, std::int32_t count) {
    // Deliberately not stored: a bad call leaves the writer's last error as it was.
    if (source == nullptr || count < 1) return result::kBadArgument;
    return Transfer(c, const_cast<void*>(source), static_cast<std::uint32_t>(count), false);
}
template <class Raw>
inline Result OnStream(CCmdStreamBase& s, Raw raw) {
    Cursor c = Cursor::Of(s);
    const Result r = raw(c);
    c.To(s);
    return r;
}

// The transfers of a stream processor over a cursor (the stream is exactly CCmdReader or
// CCmdWriter): the width-checked numbers and the raw runs, and the cursor's own checks.
template <bool Reading>
struct Direct {
    Cursor& c;
    template <std::uint32_t N>
    CMDDATA_ALWAYS_INLINE Result Fixed(const void* v) {
        if constexpr (Reading)
            return ReadFixed<N>(c, const_cast<void*>(v));
        else
            return WriteFixed<N>(c, v);
    }
    Result Bytes(const void* v, std::int32_t n) {
        if constexpr (Reading)
            return ReadRaw(c, const_cast<void*>(v), n);
        else
            return WriteRaw(c, v, n);
    }
    bool Fits(std::uint32_t count, std::uint32_t min) const { return c.Fits(count, min); }
    void Exhaust() { c.Exhaust(); }
    bool Attached() const { return c.pos != nullptr; }
    std::uint32_t Left() const { return static_cast<std::uint32_t>(c.Left()); }
    void Fail(Result r) { c.last = r; }
};
using DirectReader = Direct<true>;
using DirectWriter = Direct<false>;

// The version prefix: a sender version above ours makes ours 0.
// Returns the sender's word, for the describer to report. Inlined: a call would take the cursor's
// address and keep it on the stack for the whole message.
template <class X>
CMDDATA_ALWAYS_INLINE std::uint16_t ReadPrefix(CCmdCore& self, X& x) {
    std::uint16_t sender = 0;  // stays 0 when the transfer moves nothing
    x.template Fixed<2>(&sender);
    x.template Fixed<2>(&Access::Reserved(self));
    std::uint16_t& own = Access::Version(self);
    own = own < sender ? 0 : sender;
    return sender;
}
template <class X>
CMDDATA_ALWAYS_INLINE void WritePrefix(CCmdCore& self, X& x) {
    x.template Fixed<2>(&Access::Version(self));
    x.template Fixed<2>(&Access::Reserved(self));
}

// A run of numbers over a cursor of the caller's: the items of a list of bare numbers, and the
// whole field list of a message of numbers only (RunInline). In a local cursor the compiler keeps
// the position in registers from field to field, where a processor's own cursor would be stored
// and reloaded around every copy. With Within, no field is checked against the end: the caller
// has found the whole run in the region already (a list's read, by its count's Fits with the
// class's smallest wire size, each item being one number of that size; a message, by its
// NumberBound).
template <bool Reads, bool Within = false>
class NumberRun : public FieldOps<NumberRun<Reads, Within>> {
public:
    explicit NumberRun(Cursor& c) : c_(c) {}
    static constexpr bool Reading() { return Reads; }
    static bool Since(const CCmdCore& self, std::uint16_t v) { return self.GetVersion() >= v; }
    CMDDATA_ALWAYS_INLINE void Prefix(CCmdCore& self) {
        if constexpr (Reads)
            ReadPrefix(self, *this);
        else
            WritePrefix(self, *this);
    }
    template <WireType W, class V>
    CMDDATA_ALWAYS_INLINE void Scalar(const char*, V& v, V) {
        Fixed<sizeof(V)>(&v);
    }
    template <class T>
    void Unsent(const char*, T&) {}

    // Within, the check of the whole run stands for the number's own; the results and the
    // position are those of the checked transfer.
    template <std::uint32_t N>
    CMDDATA_ALWAYS_INLINE void Fixed(void* v) {
        if constexpr (Within) {
            assert(c_.pos != nullptr && N <= c_.Left());
            MoveFixed<N>(c_, v, Reads);
        } else {
            TransferFixed<N>(c_, v, Reads);
        }
    }

private:
    Cursor& c_;
};

// The most bytes a field list of numbers can take: every field that a version test may leave
// out is counted in. Version tests only ever add fields (the schema's walk, which lists every
// field, counts on it too), so that a run finding this many bytes left cannot pass the end.
template <bool Reads>
class NumberBound : public FieldOps<NumberBound<Reads>> {
public:
    static constexpr bool Reading() { return Reads; }
    static constexpr bool Since(const CCmdCore&, std::uint16_t) { return true; }
    void Prefix(CCmdCore&) { bytes += 4; }
    template <WireType W, class V>
    void Scalar(const char*, V&, V) {
        bytes += sizeof(V);
    }
    template <class T>
    void Unsent(const char*, T&) {}

    std::uint32_t bytes = 0;
};

// Read and Write of a message of numbers only (CMDDATA_NUMBER_FIELDS), inlined into the caller:
// the stream's state is taken into a local cursor, the field list runs over it and the state
// goes back, with no call. When the region holds the list's NumberBound, the run checks that
// once instead of once per field; otherwise each field is checked, and a region cut short gives
// what it gives every other class. Only a stream whose type_info is the library's CCmdReader /
// CCmdWriter itself is taken here; any other (a class of the caller's own, or a program's own
// copy of the type_info, as under the Windows DLL) goes to the class's out-of-line entry, which
// decides as every other class's Read does. The results, last errors and positions are those of
// the out-of-line path.
template <class Stream, class T>
CMDDATA_ALWAYS_INLINE void RunInline(Stream& stream, T& object) {
    constexpr bool reads = std::is_same_v<Stream, CCmdReader>;
    if (__builtin_expect(IsPlainAtOnce(stream), true)) {
        Cursor c = Cursor::Of(stream);
        NumberBound<reads> bound;
        object.Fields(bound);
        if (__builtin_expect(c.pos != nullptr && bound.bytes <= c.Left(), true)) {
            NumberRun<reads, true> p(c);
            object.Fields(p);
        } else {
            NumberRun<reads> p(c);
            object.Fields(p);
        }
        c.To(stream);
    } else if constexpr (reads) {
        object.ReadOther(stream);
    } else {
        object.WriteOther(stream);
    }
}

}  // namespace detail
}  // namespace cmddata
