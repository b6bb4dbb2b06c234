// Plain mirrors of the benchmarked messages (std::string, std::vector), the hand-written codec
// that moves exactly the library's wire bytes, and the cereal description of the same mirrors.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

namespace plain {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;

struct Prefix {
    u16 version = 1;
    u16 reserved = 0;
};
struct Header {
    u32 id = 0, s1 = 0, s2 = 0, s3 = 0, s4 = 0;
};
struct Text {  // u16 byte count
    Prefix p;
    std::string bytes;
};
struct Blob {  // u32 byte count
    Prefix p;
    std::vector<u8> bytes;
};
template <class T>
struct List {
    Prefix p;
    std::vector<T> items;
};

struct CarInfo {
    Prefix p;
    u16 itemId = 0;
    Text text;
};
struct DatMonData {
    Prefix p;
    u16 itemId = 0;
    Text name, unit, extra;
    u32 words[5] = {};
    u8 flag = 0;
    u16 value = 0;
    u32 more[4] = {};
};
struct GroupData {
    Prefix p;
    Text name;
    List<u16> ids;
};
struct DatMonList {
    Header h;
    List<DatMonData> items;
    List<GroupData> groups;
};
struct DispInfo {
    Prefix p{2, 0};
    u32 raw = 0;
    Text text;
    u32 v1 = 0, v2 = 0;
    u8 b = 0;
};
struct ConversionTbl {
    Prefix p;
    u32 a = 0, b = 0, c = 0;
    List<DispInfo> entries;
    u32 g = 0, h = 0, i = 0, j = 0;
    u16 d = 0;
    u8 e = 0;
    u16 f = 0;
};
struct MultiData {
    Prefix p;
    u32 raw = 0;
    u8 itemId = 0;
    Blob data;
};
struct FrzFrmDat {
    Prefix p;
    u16 item = 0;
    Text t1, t2, t3;
    u8 f1 = 0, f2 = 0;
    ConversionTbl table;
    List<MultiData> items;
};
struct FrzFrmList {
    Header h;
    u32 value = 0;
    List<FrzFrmDat> frames;
    List<u8> bytes;
};

// ---- hand-written codec ------------------------------------------------------------------------
// One bound check and one memcpy per field, nothing else: the copy limit. With Compare both
// sides are read again and compared after each copy, the way the library does it: a number by
// two volatile loads, a run of bytes by one memcmp behind a compiler barrier.

inline void Barrier() { __asm__ __volatile__("" ::: "memory"); }

template <class T>
T LoadAgain(const void* p) {
    typedef T Unaligned __attribute__((aligned(1), may_alias));
    return *static_cast<const volatile Unaligned*>(p);
}

template <bool Compare>
struct Out {
    unsigned char* pos;
    unsigned char* end;
    bool ok = true;
    void Put(const void* v, std::size_t n) {
        if (static_cast<std::size_t>(end - pos) < n) {
            ok = false;
            return;
        }
        std::memcpy(pos, v, n);
        if (Compare) {
            Barrier();
            if (std::memcmp(pos, v, n) != 0) ok = false;
        }
        pos += n;
    }
    template <class T>
    void Scalar(const T& v) {
        if (static_cast<std::size_t>(end - pos) < sizeof v) {
            ok = false;
            return;
        }
        std::memcpy(pos, &v, sizeof v);
        if (Compare && LoadAgain<T>(pos) != LoadAgain<T>(&v)) ok = false;
        pos += sizeof v;
    }
};

template <bool Compare>
struct In {
    const unsigned char* pos;
    const unsigned char* end;
    bool ok = true;
    std::size_t Left() const { return static_cast<std::size_t>(end - pos); }
    bool Get(void* v, std::size_t n) {
        if (Left() < n) {
            ok = false;
            return false;
        }
        std::memcpy(v, pos, n);
        if (Compare) {
            Barrier();
            if (std::memcmp(v, pos, n) != 0) ok = false;
        }
        pos += n;
        return true;
    }
    template <class T>
    void Scalar(T& v) {
        if (Left() < sizeof v) {
            ok = false;
            return;
        }
        std::memcpy(&v, pos, sizeof v);
        if (Compare && LoadAgain<T>(&v) != LoadAgain<T>(pos)) ok = false;
        pos += sizeof v;
    }
};

template <class S>
void Code(S& s, u8& v) {
    s.Scalar(v);
}
template <class S>
void Code(S& s, u16& v) {
    s.Scalar(v);
}
template <class S>
void Code(S& s, u32& v) {
    s.Scalar(v);
}
template <class S>
void Code(S& s, Prefix& p) {
    s.Scalar(p.version);
    s.Scalar(p.reserved);
}
template <class S>
void Code(S& s, Header& h) {
    s.Scalar(h.id);
    s.Scalar(h.s1);
    s.Scalar(h.s2);
    s.Scalar(h.s3);
    s.Scalar(h.s4);
}

template <bool C>
void Code(Out<C>& s, Text& t) {
    Code(s, t.p);
    u16 n = static_cast<u16>(t.bytes.size());
    s.Scalar(n);
    if (n != 0) s.Put(t.bytes.data(), n);
}
template <bool C>
void Code(In<C>& s, Text& t) {
    Code(s, t.p);
    u16 n = 0;
    s.Scalar(n);
    if (n > s.Left()) {
        s.ok = false;
        return;
    }
    t.bytes.resize(n);
    if (n != 0) s.Get(&t.bytes[0], n);
}
template <bool C>
void Code(Out<C>& s, Blob& b) {
    Code(s, b.p);
    u32 n = static_cast<u32>(b.bytes.size());
    s.Scalar(n);
    if (n != 0) s.Put(b.bytes.data(), n);
}
template <bool C>
void Code(In<C>& s, Blob& b) {
    Code(s, b.p);
    u32 n = 0;
    s.Scalar(n);
    if (n > s.Left()) {
        s.ok = false;
        return;
    }
    b.bytes.resize(n);
    if (n != 0) s.Get(b.bytes.data(), n);
}
template <bool C, class T>
void Code(Out<C>& s, List<T>& l) {
    Code(s, l.p);
    u32 n = static_cast<u32>(l.items.size());
    s.Scalar(n);
    for (T& item : l.items) Code(s, item);
}
template <bool C, class T>
void Code(In<C>& s, List<T>& l) {
    Code(s, l.p);
    u32 n = 0;
    s.Scalar(n);
    if (n > s.Left()) {  // every item takes at least one byte
        s.ok = false;
        return;
    }
    l.items.resize(n);
    for (T& item : l.items) Code(s, item);
}

template <class S>
void Code(S& s, CarInfo& c) {
    Code(s, c.p);
    s.Scalar(c.itemId);
    Code(s, c.text);
}
template <class S>
void Code(S& s, DatMonData& d) {
    Code(s, d.p);
    s.Scalar(d.itemId);
    Code(s, d.name);
    Code(s, d.unit);
    Code(s, d.extra);
    for (u32& w : d.words) s.Scalar(w);
    s.Scalar(d.flag);
    s.Scalar(d.value);
    for (u32& w : d.more) s.Scalar(w);
}
template <class S>
void Code(S& s, GroupData& g) {
    Code(s, g.p);
    Code(s, g.name);
    Code(s, g.ids);
}
template <class S>
void Code(S& s, DatMonList& m) {
    Code(s, m.h);
    Code(s, m.items);
    Code(s, m.groups);
}
template <class S>
void Code(S& s, DispInfo& d) {
    Code(s, d.p);
    s.Scalar(d.raw);
    Code(s, d.text);
    s.Scalar(d.v1);
    s.Scalar(d.v2);
    if (d.p.version >= 2) s.Scalar(d.b);
}
template <class S>
void Code(S& s, ConversionTbl& t) {
    Code(s, t.p);
    s.Scalar(t.a);
    s.Scalar(t.b);
    s.Scalar(t.c);
    Code(s, t.entries);
    s.Scalar(t.g);
    s.Scalar(t.h);
    s.Scalar(t.i);
    s.Scalar(t.j);
    s.Scalar(t.d);
    s.Scalar(t.e);
    s.Scalar(t.f);
}
template <class S>
void Code(S& s, MultiData& m) {
    Code(s, m.p);
    s.Scalar(m.raw);
    s.Scalar(m.itemId);
    Code(s, m.data);
}
template <class S>
void Code(S& s, FrzFrmDat& f) {
    Code(s, f.p);
    s.Scalar(f.item);
    Code(s, f.t1);
    Code(s, f.t2);
    Code(s, f.t3);
    s.Scalar(f.f1);
    s.Scalar(f.f2);
    Code(s, f.table);
    Code(s, f.items);
}
template <class S>
void Code(S& s, FrzFrmList& m) {
    Code(s, m.h);
    s.Scalar(m.value);
    Code(s, m.frames);
    Code(s, m.bytes);
}

// ---- cereal ------------------------------------------------------------------------------------

template <class A>
void serialize(A& a, Prefix& p) {
    a(p.version, p.reserved);
}
template <class A>
void serialize(A& a, Header& h) {
    a(h.id, h.s1, h.s2, h.s3, h.s4);
}
template <class A>
void serialize(A& a, Text& t) {
    a(t.p, t.bytes);
}
template <class A>
void serialize(A& a, Blob& b) {
    a(b.p, b.bytes);
}
template <class A, class T>
void serialize(A& a, List<T>& l) {
    a(l.p, l.items);
}
template <class A>
void serialize(A& a, CarInfo& c) {
    a(c.p, c.itemId, c.text);
}
template <class A>
void serialize(A& a, DatMonData& d) {
    a(d.p, d.itemId, d.name, d.unit, d.extra, d.words, d.flag, d.value, d.more);
}
template <class A>
void serialize(A& a, GroupData& g) {
    a(g.p, g.name, g.ids);
}
template <class A>
void serialize(A& a, DatMonList& m) {
    a(m.h, m.items, m.groups);
}
template <class A>
void serialize(A& a, DispInfo& d) {
    a(d.p, d.raw, d.text, d.v1, d.v2, d.b);
}
template <class A>
void serialize(A& a, ConversionTbl& t) {
    a(t.p, t.a, t.b, t.c, t.entries, t.g, t.h, t.i, t.j, t.d, t.e, t.f);
}
template <class A>
void serialize(A& a, MultiData& m) {
    a(m.p, m.raw, m.itemId, m.data);
}
template <class A>
void serialize(A& a, FrzFrmDat& f) {
    a(f.p, f.item, f.t1, f.t2, f.t3, f.f1, f.f2, f.table, f.items);
}
template <class A>
void serialize(A& a, FrzFrmList& m) {
    a(m.h, m.value, m.frames, m.bytes);
}

}  // namespace plain
