// Damaged and hostile regions, and the describe processor over nested records.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "cmddata_internal/procs.h"
#include "helpers.h"

using namespace testing_cmddata;
namespace result = cmddata::result;

namespace hostile_records {
class Part;
class Assembly;
}  // namespace hostile_records
CMDDATA_UNLISTED(hostile_records::Part)
CMDDATA_UNLISTED(hostile_records::Assembly)

// Two nested records built with the library's field-list idiom (a named namespace: the
// macro defines members that an anonymous one would flag as unused).
namespace hostile_records {

class Part : public CCmdCore {
public:
    CMDDATA_FIELDS(Part)
    Part() = default;
    std::uint32_t id = 0;
    CCmdString name;
    CCmdList<CCmdWordId> codes;
    CCmdBuffer payload;
};
template <class P>
void Part::Fields(P& p) {
    p.Prefix(*this);
    p.U32("id", id);
    p.String("name", name);
    p.List("codes", codes);
    p.Buffer("payload", payload);
}
CMDDATA_DEFINE_FIELDS(Part)

class Assembly : public CCmdCore {
public:
    CMDDATA_FIELDS(Assembly)
    Assembly() = default;
    std::uint16_t kind = 0;
    Part main;
    CCmdList<Part> parts;
    CCmdString note;
};
template <class P>
void Assembly::Fields(P& p) {
    p.Prefix(*this);
    p.U16("kind", kind);
    p.Record("main", main);
    p.List("parts", parts);
    p.String("note", note);
}
CMDDATA_DEFINE_FIELDS(Assembly)
}  // namespace hostile_records

namespace {
using hostile_records::Assembly;
using hostile_records::Part;

void FillPart(Part& part, std::uint32_t id, const char* name, std::uint16_t code) {
    part.id = id;
    part.name = name;
    part.codes.GetAt(part.codes.AddTail()) = code;
    const unsigned char payload[3] = {0xAA, 0xBB, static_cast<unsigned char>(id)};
    part.payload.SetAt(payload, 3);
}

Assembly Sample() {
    Assembly a;
    a.kind = 0x0102;
    FillPart(a.main, 1, "M", 7);
    FillPart(a.parts.GetAt(a.parts.AddTail()), 2, "P", 8);
    FillPart(a.parts.GetAt(a.parts.AddTail()), 3, "Q", 9);
    a.note = "end";
    return a;
}

std::vector<unsigned char> Encode(CCmdCore& object) {
    Region region(1 << 12);
    CCmdWriter writer = region.Writer();
    writer.Write(&object);
    EXPECT_EQ(writer.GetLastError(), result::kOk);
    return std::vector<unsigned char>(region.data(), region.data() + writer.GetPosition());
}

// Reads object from a region holding exactly bytes; returns the reader's final last error.
cmddata::Result Decode(CCmdCore& object, const std::vector<unsigned char>& bytes) {
    Region region(static_cast<std::uint32_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), region.data());
    CCmdReader reader = region.Reader();
    reader.Read(&object);
    return reader.GetLastError();
}

// Records where each named field stands, and the failures of a decode.
struct Recorder : cmddata::FieldVisitor {
    std::vector<std::pair<std::string, std::uint32_t>> seen, failures;
    cmddata::Result failCode = 0;

    void Note(const cmddata::FieldInfo& f) {
        if (f.name != nullptr) seen.emplace_back(f.name, f.offset);
    }
    void Scalar(const cmddata::FieldInfo& f, std::uint64_t) override { Note(f); }
    void Text(const cmddata::FieldInfo& f, const CCmdString&) override { Note(f); }
    void Bytes(const cmddata::FieldInfo& f, const unsigned char*, std::uint32_t) override {
        Note(f);
    }
    void BeginList(const cmddata::FieldInfo& f, std::uint32_t, const char*) override { Note(f); }
    void Failure(const cmddata::FieldInfo& f, cmddata::Result code, const char*) override {
        failures.emplace_back(f.name != nullptr ? f.name : "", f.offset);
        failCode = code;
    }
    // Offset of the nth field of that name, in walk order.
    std::uint32_t Offset(const std::string& name, int nth = 0) const {
        for (const auto& field : seen)
            if (field.first == name && nth-- == 0) return field.second;
        ADD_FAILURE() << "no field " << name;
        return 0;
    }
};

Recorder Walk(CCmdCore& object) {
    Recorder r;
    cmddata::Describe(object, r);
    return r;
}

}  // namespace

TEST(CoreHostile, SizesTheRegionCannotHoldAreNotAllocatedFor) {
    Assembly sample = Sample();
    const std::vector<unsigned char> good = Encode(sample);
    const Recorder at = Walk(sample);
    const std::uint32_t partsCount = at.Offset("parts") + 4;
    const std::uint32_t payloadSize = at.Offset("payload") + 4;  // the main part's
    const std::uint32_t noteLength = at.Offset("note") + 4;
    const std::uint32_t partsLeft = static_cast<std::uint32_t>(good.size()) - (partsCount + 4);
    // Each Part takes at least 4 + 4 + 6 + 8 + 8 = 30 bytes.
    struct Case {
        const char* what;
        std::uint32_t at, value;
        bool wide;
    };
    const Case cases[] = {
        {"count 0xFFFFFFFF", partsCount, 0xFFFFFFFFu, true},
        {"count whose byte size wraps 32 bits", partsCount, 0x40000000u, true},
        {"count one past what fits", partsCount, partsLeft / 30 + 1, true},
        {"buffer size 0xFFFFFFF0", payloadSize, 0xFFFFFFF0u, true},
        {"buffer one byte too long", payloadSize,
         static_cast<std::uint32_t>(good.size()) - payloadSize - 3, true},
        {"string length 0xFFFF", noteLength, 0xFFFFu, false},
    };
    for (const Case& c : cases) {
        std::vector<unsigned char> bad = good;
        std::memcpy(&bad[c.at], &c.value, c.wide ? 4 : 2);  // little-endian host
        for (bool used : {false, true}) {
            Assembly target = used ? Sample() : Assembly();
            EXPECT_EQ(Decode(target, bad), result::kPastEnd) << c.what;
            if (c.at == partsCount) {
                EXPECT_TRUE(target.parts.IsEmpty()) << c.what;
            } else if (c.at == payloadSize) {
                EXPECT_EQ(target.main.payload.GetSize(), 0u) << c.what;
                EXPECT_EQ(target.main.payload.GetAt(), nullptr) << c.what;
                EXPECT_TRUE(target.parts.IsEmpty()) << c.what;  // nothing after it is read
            }
            EXPECT_EQ(target.note.GetSize(), 0) << c.what;
            EXPECT_EQ(target.note.GetAt(), nullptr) << c.what;
        }
    }
}

TEST(CoreHostile, CountThatFitsCreatesEveryItemEvenWhenTheBytesRunOut) {
    // Count 3, bytes for two 9-byte strings: 18 bytes left is room for three of the smallest.
    const std::vector<unsigned char> bytes = {1, 0, 0, 0, 3, 0, 0,   0,       //
                                              1, 0, 0, 0, 3, 0, 'a', 'b', 0,  //
                                              1, 0, 0, 0, 3, 0, 'c', 'd', 0};
    CCmdList<CCmdString> list;
    EXPECT_EQ(Decode(list, bytes), result::kPastEnd);
    ASSERT_EQ(list.GetCount(), 3u);
    EXPECT_EQ(Hex(list.GetAt(1).GetBytes(), list.GetAt(1).GetSize()), "636400");
    EXPECT_EQ(list.GetAt(2).GetSize(), 0);
    EXPECT_EQ(list.GetAt(2).GetVersion(), 0);  // its prefix transfer failed

    // A buffer whose size is exactly what is left is read whole.
    CCmdBuffer buffer;
    EXPECT_EQ(Decode(buffer, {1, 0, 0, 0, 2, 0, 0, 0, 0xCA, 0xFE}), result::kOk);
    EXPECT_EQ(Hex(buffer.GetAt(), buffer.GetSize()), "cafe");
}

TEST(CoreHostile, TruncatedAtEveryLengthFailsWithoutHarm) {
    Assembly sample = Sample();
    const std::vector<unsigned char> good = Encode(sample);
    const std::string wire = Hex(good.data(), good.size());
    Assembly used = Sample();
    for (std::size_t cut = 0; cut <= good.size(); ++cut) {
        const std::vector<unsigned char> part(good.begin(), good.begin() + cut);
        Assembly fresh;
        const cmddata::Result code = Decode(fresh, part);
        // Into an object that holds data: must not crash or leak. (Once a prefix transfer
        // fails its version is 0, and stays 0 by the version rule, so only the code is checked.)
        const cmddata::Result again = Decode(used, part);
        if (cut < good.size()) {
            EXPECT_NE(code, result::kOk) << "cut at " << cut;
            EXPECT_NE(again, result::kOk) << "cut at " << cut;
        } else {
            EXPECT_EQ(code, result::kOk);
            EXPECT_EQ(again, result::kOk);
            EXPECT_EQ(WireHex(fresh), wire);
        }
    }
}

namespace {
// Five numbers from first, cut at every length, read into a new list and into a used one.
template <class T, class V>
void CheckNumberListCuts(std::uint32_t width, V first) {
    SCOPED_TRACE(testing::Message() << "items of " << width << " bytes");
    EXPECT_EQ(cmddata::detail::MinWireSize<T>(), width);
    CCmdList<T> sample;
    for (V i = 0; i < 5; ++i) sample.GetAt(sample.AddTail()) = static_cast<V>(first + i);
    const std::vector<unsigned char> good = Encode(sample);
    ASSERT_EQ(good.size(), 8u + 5 * width);
    CCmdList<T> used;
    used = sample;
    for (std::size_t cut = 0; cut <= good.size(); ++cut) {
        const std::vector<unsigned char> part(good.begin(), good.begin() + cut);
        CCmdList<T> fresh;
        const cmddata::Result code = Decode(fresh, part);
        const cmddata::Result again = Decode(used, part);
        if (cut < good.size()) {
            EXPECT_NE(code, result::kOk) << "cut at " << cut;
            EXPECT_NE(again, result::kOk) << "cut at " << cut;
            EXPECT_EQ(fresh.GetCount(), 0u) << "cut at " << cut;
            EXPECT_EQ(used.GetCount(), 0u) << "cut at " << cut;
        } else {
            EXPECT_EQ(code, result::kOk);
            EXPECT_EQ(again, result::kOk);
            EXPECT_EQ(WireHex(fresh), Hex(good.data(), good.size()));
            // The used list's version is 0 since its first cut prefix (the version rule).
            EXPECT_EQ(WireHex(used).substr(8), Hex(good.data(), good.size()).substr(8));
        }
    }
}
}  // namespace

// The items of a list of bare numbers have no bound check each: the count check stands for all
// of them, so a region that ends anywhere before the last item's last byte reads none.
TEST(CoreHostile, ListsOfBareNumbersReadOnlyWhenEveryItemFits) {
    CheckNumberListCuts<CCmdByteData, std::uint8_t>(1, 0xF0);
    CheckNumberListCuts<CCmdWordId, std::uint16_t>(2, 0xBEEF);
    CheckNumberListCuts<CCmdDwordId, std::uint32_t>(4, 0xCAFEF00Du);
    CheckNumberListCuts<CCmdDwordData, std::uint32_t>(4, 7);
}

TEST(CoreHostile, RandomBytesIntoNestedListsNeverCrash) {
    Assembly sample = Sample();
    const std::vector<unsigned char> good = Encode(sample);
    std::mt19937 random(20240611u);
    for (int round = 0; round < 3000; ++round) {
        std::vector<unsigned char> bytes;
        if (round % 2 == 0) {  // a valid encoding with a few bytes changed
            bytes = good;
            for (int flips = 1 + static_cast<int>(random() % 4); flips > 0; --flips)
                bytes[random() % bytes.size()] = static_cast<unsigned char>(random());
        } else {  // noise, with small counts common
            bytes.resize(random() % 128);
            for (unsigned char& b : bytes)
                b = static_cast<unsigned char>(random() % 5 == 0 ? random() : random() % 4);
        }
        Assembly assembly;
        Decode(assembly, bytes);
        CCmdList<CCmdList<CCmdString>> lists;
        Decode(lists, bytes);
        // Whatever was read is a consistent object: it writes exactly its measured size.
        ASSERT_EQ(Encode(assembly).size(), cmddata::WireSize(assembly)) << "round " << round;
        ASSERT_EQ(Encode(lists).size(), cmddata::WireSize(lists)) << "round " << round;
    }
}

TEST(CoreDescribe, WireSizeEqualsTheBytesWritten) {
    Assembly full = Sample(), empty;
    CCmdList<CCmdList<CCmdString>> lists;
    lists.AddTail();
    lists.GetAt(lists.AddTail()).AddTail(full.note);
    CCmdByteDataList bytes;
    bytes.bytes.AddTail();
    CCmdWordId word;
    CCmdCore* objects[] = {&full, &empty, &full.main, &full.parts, &lists, &bytes, &word};
    for (CCmdCore* object : objects) EXPECT_EQ(cmddata::WireSize(*object), Encode(*object).size());
    EXPECT_EQ(cmddata::WireSize(word), 2u);
    EXPECT_EQ(cmddata::WireSize(empty), 4u + 2 + 30 + 8 + 6);
}

TEST(CoreDescribe, DecodeReportsTheFieldWhereATruncatedRegionEnds) {
    Assembly sample = Sample();
    const std::vector<unsigned char> good = Encode(sample);
    const Recorder at = Walk(sample);
    const std::uint32_t note = at.Offset("note");
    EXPECT_EQ(note, good.size() - cmddata::WireSize(sample.note));
    const std::uint32_t parts = at.Offset("parts");
    const std::uint32_t lastId = at.Offset("id", 2);            // the second list item's id
    const std::uint32_t lastPayload = at.Offset("payload", 2);  // and its buffer

    struct Case {
        std::uint32_t cut;
        const char* field;
        std::uint32_t offset;
    };
    // Cut inside the second item's id, the list's count asks for more than is left, so the
    // decode stops at the list itself.
    for (Case c : {Case{note + 7, "note", note}, Case{lastPayload + 6, "payload", lastPayload},
                   Case{lastId + 2, "parts", parts}}) {
        Region region(c.cut);
        std::copy(good.begin(), good.begin() + c.cut, region.data());
        CCmdReader reader = region.Reader();
        Assembly target;
        Recorder seen;
        EXPECT_EQ(cmddata::DecodeAndDescribe(target, reader, seen), result::kPastEnd);
        ASSERT_EQ(seen.failures.size(), 1u);
        EXPECT_EQ(seen.failCode, result::kPastEnd);
        EXPECT_EQ(seen.failures[0], std::make_pair(std::string(c.field), c.offset));
    }

    Region whole(static_cast<std::uint32_t>(good.size()));
    std::copy(good.begin(), good.end(), whole.data());
    CCmdReader reader = whole.Reader();
    Assembly target;
    Recorder seen;
    EXPECT_EQ(cmddata::DecodeAndDescribe(target, reader, seen), result::kOk);
    EXPECT_TRUE(seen.failures.empty());
    EXPECT_EQ(Encode(target), good);
}
