// The benchmarked data: one deterministic plain mirror per shape, and its copies as library
// objects and as protobuf messages, all holding the same values.
#pragma once

#include <cstdint>
#include <string>

#include "cmddata/cmddata.h"
#if __has_include("cmddata/monitor/datmon.h")
#include "cmddata/monitor/datmon.h"
#define CMDDATA_BENCH_S1 1
#endif
#if __has_include("cmddata/diagcode/freeze_frame.h")
#include "cmddata/diagcode/freeze_frame.h"
#define CMDDATA_BENCH_S2 1
#endif
#if __has_include("cmddata/vehicle/car_info.h")
#include "cmddata/vehicle/car_info.h"
#define CMDDATA_BENCH_CARINFO 1
#endif
#include "peers.pb.h"
#include "plain.h"

namespace shapes {

// A 16-bit text of n characters with its terminator, as the library stores one (2n + 2 bytes).
inline plain::Text Wide(const std::string& narrow) {
    plain::Text t;
    for (char c : narrow) {
        t.bytes.push_back(c);
        t.bytes.push_back('\0');
    }
    t.bytes.append(2, '\0');
    return t;
}
// n characters (8 to 24 in the field-heavy shape), varied by seed.
inline std::string Chars(std::uint32_t seed, std::uint32_t n) {
    std::string s;
    for (std::uint32_t i = 0; i < n; ++i) s += static_cast<char>('A' + (seed * 7 + i * 3) % 26);
    return s;
}

inline plain::Header MakeHeader(std::uint32_t id) {
    plain::Header h;
    h.id = id;
    h.s1 = 1;
    h.s2 = 0x20;
    h.s3 = 0x300;
    h.s4 = 0x4000;
    return h;
}

inline plain::DatMonList MakeDatMonList() {
    plain::DatMonList m;
    m.h = MakeHeader(cmddata::cmd::GetDatMonList);
    for (std::uint32_t i = 0; i < 1000; ++i) {
        plain::DatMonData d;
        d.itemId = static_cast<std::uint16_t>(i + 1);
        d.name = Wide(Chars(i, 8 + i % 17));
        d.unit = Wide(Chars(i + 1, 8 + (i * 5) % 17));
        d.extra = Wide(Chars(i + 2, 8 + (i * 11) % 17));
        for (std::uint32_t k = 0; k < 5; ++k) d.words[k] = i * 100 + k;
        d.flag = static_cast<std::uint8_t>(i & 1);
        d.value = static_cast<std::uint16_t>(i * 3);
        for (std::uint32_t k = 0; k < 4; ++k) d.more[k] = 0x10000 + i + k;
        m.items.items.push_back(d);
    }
    for (std::uint32_t g = 0; g < 50; ++g) {
        plain::GroupData group;
        group.name = Wide("GROUP" + Chars(g, 5));
        for (std::uint32_t k = 0; k < 20; ++k)
            group.ids.items.push_back(static_cast<std::uint16_t>(g * 20 + k + 1));
        m.groups.items.push_back(group);
    }
    return m;
}

inline plain::FrzFrmList MakeFrzFrmList() {
    plain::FrzFrmList m;
    m.h = MakeHeader(cmddata::cmd::GetFrzFrmDat);
    m.value = 7;
    for (std::uint32_t f = 0; f < 100; ++f) {
        plain::FrzFrmDat d;
        d.item = static_cast<std::uint16_t>(f);
        d.t1 = Wide(Chars(f, 10));
        d.t2 = Wide(Chars(f + 3, 12));
        d.t3 = Wide(Chars(f + 5, 8));
        d.f1 = 1;
        d.f2 = static_cast<std::uint8_t>(f & 3);
        d.table.a = 1;
        d.table.b = 4;
        d.table.c = 100;
        for (std::uint32_t e = 0; e < 10; ++e) {
            plain::DispInfo di;
            di.raw = e;
            di.text = Wide(Chars(e + f, 8 + e));
            di.v1 = e * 2;
            di.v2 = e * 3;
            di.b = static_cast<std::uint8_t>(e);
            d.table.entries.items.push_back(di);
        }
        d.table.g = 5;
        d.table.h = 6;
        d.table.i = 7;
        d.table.j = 8;
        d.table.d = 9;
        d.table.e = 1;
        d.table.f = 16;
        for (std::uint32_t k = 0; k < 20; ++k) {
            plain::MultiData md;
            md.raw = f * 1000 + k;
            md.itemId = static_cast<std::uint8_t>(k);
            md.data.bytes = {static_cast<std::uint8_t>(k), 1, 2, 3};
            d.items.items.push_back(md);
        }
        m.frames.items.push_back(d);
    }
    for (std::uint8_t b = 0; b < 16; ++b) m.bytes.items.push_back(b);
    return m;
}

inline plain::CarInfo MakeCarInfo() {
    plain::CarInfo c;
    c.itemId = 1;
    c.text = Wide("ITEM-0815");
    return c;
}

inline plain::Blob MakeBulk() {
    plain::Blob b;
    b.bytes.resize(1u << 20);
    for (std::size_t i = 0; i < b.bytes.size(); ++i)
        b.bytes[i] = static_cast<std::uint8_t>(i * 131 + 7);
    return b;
}

inline plain::List<std::uint16_t> MakeWords(std::uint32_t n) {
    plain::List<std::uint16_t> l;
    l.items.reserve(n);
    for (std::uint32_t i = 0; i < n; ++i) l.items.push_back(static_cast<std::uint16_t>(i * 7));
    return l;
}

inline plain::List<plain::Text> MakeTexts(std::uint32_t n) {
    plain::List<plain::Text> l;
    l.items.reserve(n);
    for (std::uint32_t i = 0; i < n; ++i) l.items.push_back(Wide(Chars(i, 8)));
    return l;
}

// ---- library objects ---------------------------------------------------------------------------

inline void SetText(CCmdString& s, const plain::Text& t) {
    s.SetAt(t.bytes.data(), static_cast<std::uint16_t>(t.bytes.size()));
}
inline void SetHeader(CCmdBase& m, const plain::Header& h) {
    m.SetStatusWord(1, h.s1);
    m.SetStatusWord(2, h.s2);
    m.SetStatusWord(3, h.s3);
    m.SetStatusWord(4, h.s4);
}

inline void ToOurs(const plain::List<std::uint16_t>& p, CCmdList<CCmdWordId>& l) {
    CCmdWordId w;
    for (std::uint16_t v : p.items) {
        w = v;
        l.AddTail(w);  // appends at the tail: linear, unlike AddTail() + GetAt(index)
    }
}
inline void ToOurs(const plain::List<plain::Text>& p, CCmdList<CCmdString>& l) {
    CCmdString s;
    for (const plain::Text& t : p.items) {
        SetText(s, t);
        l.AddTail(s);
    }
}

#ifdef CMDDATA_BENCH_S1
inline void ToOurs(const plain::DatMonList& m, CGetDatMonListRcv& o) {
    SetHeader(o, m.h);
    CCmdDatMonData d;
    for (const plain::DatMonData& p : m.items.items) {
        d.itemId = p.itemId;
        SetText(d.name, p.name);
        SetText(d.unit, p.unit);
        SetText(d.note, p.extra);
        for (int k = 0; k < 5; ++k) d.attributes[k] = p.words[k];
        d.displayKind = p.flag;
        d.dataLength = p.value;
        for (int k = 0; k < 4; ++k) d.options[k] = p.more[k];
        o.items.AddTail(d);
    }
    for (const plain::GroupData& p : m.groups.items) {
        CCmdGroupData g;
        SetText(g.groupName, p.name);
        ToOurs(p.ids, g.itemIds);
        o.groups.AddTail(g);
    }
}
#endif

#ifdef CMDDATA_BENCH_S2
inline void ToOurs(const plain::FrzFrmList& m, CGetFrzFrmDatRcv& o) {
    SetHeader(o, m.h);
    o.diagCode = m.value;
    for (const plain::FrzFrmDat& p : m.frames.items) {
        CCmdFrzFrmDat f;
        f.itemNumber = p.item;
        SetText(f.name, p.t1);
        SetText(f.unit, p.t2);
        SetText(f.valueText, p.t3);
        f.displayFlag = p.f1;
        f.validFlag = p.f2;
        CCmdConversionTbl& t = f.conversion;
        t.scaleNumerator = p.table.a;
        t.scaleDenominator = p.table.b;
        t.offset = p.table.c;
        for (const plain::DispInfo& e : p.table.entries.items) {
            CCmdDispInfo d;
            d.entryId = e.raw;
            SetText(d.displayText, e.text);
            d.matchValue = e.v1;
            d.matchUpper = e.v2;
            d.highlight = e.b;
            t.displayEntries.AddTail(d);
        }
        t.rangeLow = p.table.g;
        t.rangeHigh = p.table.h;
        t.graphLow = p.table.i;
        t.graphHigh = p.table.j;
        t.decimalPlaces = p.table.d;
        t.signMode = p.table.e;
        t.bitWidth = p.table.f;
        for (const plain::MultiData& md : p.items.items) {
            CCmdMultiData item;
            item.rawValue = md.raw;
            item.itemId = md.itemId;
            item.data.SetAt(md.data.bytes.data(), static_cast<std::uint32_t>(md.data.bytes.size()));
            f.items.AddTail(item);
        }
        o.frames.AddTail(f);
    }
    CCmdByteData b;
    for (std::uint8_t v : m.bytes.items) {
        b = v;
        o.frameNumbers.AddTail(b);
    }
}
#endif

#ifdef CMDDATA_BENCH_CARINFO
inline void ToOurs(const plain::CarInfo& c, CCmdCarInfo& o) {
    o.itemId = c.itemId;
    SetText(o.text, c.text);
}
#endif

// ---- protobuf messages -------------------------------------------------------------------------

inline void ToProto(const plain::Header& h, cmddata_bench::Header* out) {
    out->set_id(h.id);
    out->set_s1(h.s1);
    out->set_s2(h.s2);
    out->set_s3(h.s3);
    out->set_s4(h.s4);
}
template <class M>
void ToProto(const plain::Text& t, M* out) {
    out->set_version(t.p.version);
    out->set_reserved(t.p.reserved);
    out->set_bytes(t.bytes);
}
inline void ToProto(const plain::Blob& b, cmddata_bench::Blob* out) {
    out->set_version(b.p.version);
    out->set_reserved(b.p.reserved);
    out->set_bytes(b.bytes.data(), b.bytes.size());
}
inline void ToProto(const plain::Header& h, cmddata_bench::HeaderOnly* out) {
    ToProto(h, out->mutable_h());
}
inline void ToProto(const plain::Blob& b, cmddata_bench::Bulk* out) {
    ToProto(b, out->mutable_data());
}
inline void ToProto(const plain::CarInfo& c, cmddata_bench::CarInfo* out) {
    out->set_version(c.p.version);
    out->set_reserved(c.p.reserved);
    out->set_item_id(c.itemId);
    ToProto(c.text, out->mutable_text());
}
inline void ToProto(const plain::DatMonList& m, cmddata_bench::DatMonList* out) {
    ToProto(m.h, out->mutable_h());
    out->set_items_version(m.items.p.version);
    out->set_items_reserved(m.items.p.reserved);
    for (const plain::DatMonData& d : m.items.items) {
        cmddata_bench::DatMonData* o = out->add_items();
        o->set_version(d.p.version);
        o->set_reserved(d.p.reserved);
        o->set_item_id(d.itemId);
        ToProto(d.name, o->mutable_name());
        ToProto(d.unit, o->mutable_unit());
        ToProto(d.extra, o->mutable_extra());
        for (std::uint32_t w : d.words) o->add_words(w);
        o->set_flag(d.flag);
        o->set_value(d.value);
        for (std::uint32_t w : d.more) o->add_more(w);
    }
    out->set_groups_version(m.groups.p.version);
    out->set_groups_reserved(m.groups.p.reserved);
    for (const plain::GroupData& g : m.groups.items) {
        cmddata_bench::GroupData* o = out->add_groups();
        o->set_version(g.p.version);
        o->set_reserved(g.p.reserved);
        ToProto(g.name, o->mutable_name());
        o->set_ids_version(g.ids.p.version);
        o->set_ids_reserved(g.ids.p.reserved);
        for (std::uint16_t id : g.ids.items) o->add_ids(id);
    }
}
inline void ToProto(const plain::FrzFrmList& m, cmddata_bench::FrzFrmList* out) {
    ToProto(m.h, out->mutable_h());
    out->set_value(m.value);
    out->set_frames_version(m.frames.p.version);
    out->set_frames_reserved(m.frames.p.reserved);
    for (const plain::FrzFrmDat& f : m.frames.items) {
        cmddata_bench::FrzFrmDat* o = out->add_frames();
        o->set_version(f.p.version);
        o->set_reserved(f.p.reserved);
        o->set_item(f.item);
        ToProto(f.t1, o->mutable_t1());
        ToProto(f.t2, o->mutable_t2());
        ToProto(f.t3, o->mutable_t3());
        o->set_f1(f.f1);
        o->set_f2(f.f2);
        cmddata_bench::ConversionTbl* t = o->mutable_table();
        t->set_version(f.table.p.version);
        t->set_reserved(f.table.p.reserved);
        t->set_a(f.table.a);
        t->set_b(f.table.b);
        t->set_c(f.table.c);
        t->set_entries_version(f.table.entries.p.version);
        t->set_entries_reserved(f.table.entries.p.reserved);
        for (const plain::DispInfo& d : f.table.entries.items) {
            cmddata_bench::DispInfo* e = t->add_entries();
            e->set_version(d.p.version);
            e->set_reserved(d.p.reserved);
            e->set_raw(d.raw);
            ToProto(d.text, e->mutable_text());
            e->set_v1(d.v1);
            e->set_v2(d.v2);
            e->set_b(d.b);
        }
        t->set_g(f.table.g);
        t->set_h(f.table.h);
        t->set_i(f.table.i);
        t->set_j(f.table.j);
        t->set_d(f.table.d);
        t->set_e(f.table.e);
        t->set_f(f.table.f);
        o->set_items_version(f.items.p.version);
        o->set_items_reserved(f.items.p.reserved);
        for (const plain::MultiData& md : f.items.items) {
            cmddata_bench::MultiData* i = o->add_items();
            i->set_version(md.p.version);
            i->set_reserved(md.p.reserved);
            i->set_raw(md.raw);
            i->set_item_id(md.itemId);
            ToProto(md.data, i->mutable_data());
        }
    }
    out->set_bytes_version(m.bytes.p.version);
    out->set_bytes_reserved(m.bytes.p.reserved);
    out->set_bytes(std::string(m.bytes.items.begin(), m.bytes.items.end()));
}
inline void ToProto(const plain::List<std::uint16_t>& l, cmddata_bench::WordList* out) {
    out->set_version(l.p.version);
    out->set_reserved(l.p.reserved);
    for (std::uint16_t v : l.items) out->add_items(v);
}
inline void ToProto(const plain::List<plain::Text>& l, cmddata_bench::TextList* out) {
    out->set_version(l.p.version);
    out->set_reserved(l.p.reserved);
    for (const plain::Text& t : l.items) ToProto(t, out->add_items());
}

}  // namespace shapes
