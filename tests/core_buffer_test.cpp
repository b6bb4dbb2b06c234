// Byte buffers, strings and the scalar wrappers: stored bytes, wire forms, sharing and copying.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "helpers.h"

using namespace testing_cmddata;
namespace result = cmddata::result;

namespace {

const std::uint16_t* Wide(const char16_t* text) {
    return reinterpret_cast<const std::uint16_t*>(text);
}
std::string Bytes(const CCmdBuffer& b) { return Hex(b.GetAt(), b.GetSize()); }
std::string Bytes(const CCmdString& s) { return Hex(s.GetBytes(), s.GetSize()); }
const void* Block(const CCmdBuffer& b) { return b.GetAt(); }
const void* Block(const CCmdString& s) { return s.GetBytes(); }
void Fill(CCmdBuffer& b, const char* text) {
    b.SetAt(reinterpret_cast<const unsigned char*>(text), std::strlen(text));
}
void Fill(CCmdString& s, const char* text) { s = text; }

// Reads object from a region holding exactly bytes; returns the reader's last error.
cmddata::Result ReadFrom(CCmdCore& object, const std::vector<unsigned char>& bytes) {
    Region region(static_cast<std::uint32_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), region.data());
    CCmdReader reader = region.Reader();
    reader.Read(&object);
    return reader.GetLastError();
}

}  // namespace

TEST(CoreBuffer, EmptyBufferWritesPrefixAndZeroSizeOnly) {
    CCmdBuffer empty;
    EXPECT_EQ(WireHex(empty), Wire("01000000 00000000"));
    CCmdBuffer used;
    Fill(used, "xyz");
    EXPECT_EQ(ReadFrom(used, {1, 0, 0, 0, 0, 0, 0, 0}), result::kOk);
    EXPECT_EQ(used.GetSize(), 0u);
    EXPECT_EQ(used.GetAt(), nullptr);
}

TEST(CoreBuffer, SetAtSetSizeAndRoundTrip) {
    CCmdBuffer b;
    const unsigned char src[3] = {0xAA, 0xBB, 0xCC};
    EXPECT_EQ(b.SetAt(src, 3), result::kOk);
    EXPECT_EQ(WireHex(b), Wire("01000000 03000000 aabbcc"));
    CCmdBuffer back;
    EXPECT_EQ(ReadFrom(back, {1, 0, 0, 0, 3, 0, 0, 0, 0xAA, 0xBB, 0xCC}), result::kOk);
    EXPECT_EQ(Bytes(back), "aabbcc");

    EXPECT_EQ(b.SetAt(nullptr, 3), result::kOk);
    EXPECT_EQ(b.GetSize(), 0u);
    EXPECT_EQ(b.SetAt(src, 0), result::kOk);
    EXPECT_EQ(b.GetAt(), nullptr);
    EXPECT_EQ(b.SetSize(4), result::kOk);
    EXPECT_EQ(b.GetSize(), 4u);
    EXPECT_EQ(b.SetSize(0), result::kOk);
    EXPECT_EQ(b.GetAt(), nullptr);
    b.SetAt(src, 3);
    EXPECT_EQ(b.SetAt(b.GetAt() + 1, 2), result::kOk);  // from its own bytes
    EXPECT_EQ(Bytes(b), "bbcc");
}

TEST(CoreBuffer, AddAppendsAndRefusesBadArgumentsAndSizesPast32Bits) {
    CCmdBuffer b;
    const unsigned char ab[2] = {'a', 'b'}, cd[2] = {'c', 'd'};
    EXPECT_EQ(b.Add(nullptr, 1), result::kBadArgument);
    EXPECT_EQ(b.Add(ab, 0), result::kBadArgument);
    EXPECT_EQ(b.Add(ab, 2), result::kOk);
    EXPECT_EQ(b.Add(cd, 2), result::kOk);
    EXPECT_EQ(b.Add(b.GetAt() + 2, 2), result::kOk);  // from its own bytes
    EXPECT_EQ(Bytes(b), "616263646364");

    // 0x20 + 0xFFFFFFF0 passes 32 bits just as 0xFFFFFFF0 + 0x20 does; the source is never read.
    CCmdBuffer big;
    big.SetSize(0x20);
    big.GetAddr()[0] = 0x42;
    const unsigned char* before = big.GetAt();
    EXPECT_EQ(big.Add(ab, 0xFFFFFFF0u), result::kBadArgument);
    EXPECT_EQ(big.GetAt(), before);
    EXPECT_EQ(big.GetSize(), 0x20u);
    EXPECT_EQ(big.GetAt()[0], 0x42);
}

// Sizes within a block head of 4 GB: a 32-bit size_t cannot hold the block, and the request must
// fail before malloc sees a wrapped size (it would hand back a few bytes that are then overrun).
TEST(CoreBuffer, SizesNear4GBFailWhereTheAddressSpaceCannotHoldThem) {
    if (sizeof(std::size_t) > 4) GTEST_SKIP() << "64-bit: such a block may really exist";
    for (std::uint32_t size : {0xFFFFFFFFu, 0xFFFFFFF8u, 0xFFFFFFF1u}) {
        EXPECT_EQ(cmddata::detail::SharedBlock::Allocate(size), nullptr) << size;
        CCmdBuffer b;
        Fill(b, "kept");
        EXPECT_EQ(b.SetSize(size), result::kOutOfMemory) << size;
        EXPECT_EQ(b.GetSize(), 0u);
        Fill(b, "kept");
        EXPECT_EQ(b.SetAt(b.GetAt(), size), result::kOutOfMemory) << size;
    }
    CCmdBuffer grown;
    Fill(grown, "ab");
    EXPECT_EQ(grown.Add(grown.GetAt(), 0xFFFFFFF4u), result::kOutOfMemory);
    EXPECT_EQ(Bytes(grown), "6162");  // what the caller owns is kept
}

// The bytes keep the alignment malloc gives, and a 32-bit heap promises 8.
TEST(CoreBuffer, BlocksAreAlignedToEight) {
    for (std::uint32_t size : {1u, 7u, 24u, 1000u}) {
        cmddata::detail::SharedBlock owner;
        owner.Reset(cmddata::detail::SharedBlock::Allocate(size));
        ASSERT_NE(owner.get(), nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(owner.get()) % 8, 0u);
    }
}

TEST(CoreString, TextSettersStoreTheirBytes) {
    CCmdString s;
    s = "AB";  // narrow, terminator counted
    EXPECT_EQ(s.GetSize(), 3);
    EXPECT_EQ(WireHex(s), Wire("01000000 0300 414200"));
    s = Wide(u"AB");  // 16-bit, terminator counted
    EXPECT_EQ(s.GetSize(), 6);
    EXPECT_EQ(Bytes(s), "410042000000");
    EXPECT_EQ(s.GetAt()[1], u'B');
    s.SetAt("ABC", 2);  // exactly the count, no terminator
    EXPECT_EQ(Bytes(s), "4142");
    s.SetAt(Wide(u"XYZ"), 2);
    EXPECT_EQ(Bytes(s), "58005900");
    s = static_cast<const char*>(nullptr);
    EXPECT_EQ(s.GetAt(), nullptr);
    EXPECT_EQ(WireHex(s), Wire("01000000 0000"));
}

TEST(CoreString, ByteCountsWrapAt65536) {
    const std::uint16_t text[2] = {0x0102, 0x0304};
    CCmdString s;
    s.SetAt(text, 32768);  // 65536 bytes wrap to 0: an empty string, nothing read
    EXPECT_EQ(s.GetSize(), 0);
    EXPECT_EQ(s.GetAt(), nullptr);
    s.SetAt(text, 32769);  // wraps to 2 bytes
    EXPECT_EQ(Bytes(s), "0201");
    const std::string wrapsToZero(65535, 'x'), wrapsToOne(65536, 'y');
    s = wrapsToZero.c_str();
    EXPECT_EQ(s.GetSize(), 0);
    s = wrapsToOne.c_str();
    EXPECT_EQ(Bytes(s), "79");
}

TEST(CoreString, ReadingLengthZeroKeepsTheOldPointerBesideLengthZero) {
    CCmdString s;
    s = "XY";
    const unsigned char* old = s.GetBytes();
    EXPECT_EQ(ReadFrom(s, {1, 0, 0, 0, 0, 0}), result::kOk);
    EXPECT_EQ(s.GetSize(), 0);
    EXPECT_EQ(s.GetBytes(), old);
    EXPECT_EQ(WireHex(s), Wire("01000000 0000"));
    // A non-zero length replaces the old block (ASan would report a leak otherwise).
    EXPECT_EQ(ReadFrom(s, {1, 0, 0, 0, 2, 0, 'h', 'i'}), result::kOk);
    EXPECT_EQ(Bytes(s), "6869");
}

template <class T>
class CoreSharedBytes : public ::testing::Test {};
using ByteHolders = ::testing::Types<CCmdBuffer, CCmdString>;
TYPED_TEST_SUITE(CoreSharedBytes, ByteHolders);

TYPED_TEST(CoreSharedBytes, CopyConstructionSharesTheBlockEitherMayGoFirst) {
    for (bool sourceFirst : {true, false}) {
        auto* source = new TypeParam;
        Fill(*source, "shared");
        auto* copy = new TypeParam(*source);
        EXPECT_EQ(Block(*copy), Block(*source));
        delete (sourceFirst ? source : copy);
        EXPECT_EQ(Bytes(*(sourceFirst ? copy : source)).substr(0, 12), "736861726564");
        delete (sourceFirst ? copy : source);
    }
    for (bool sourceFirst : {true, false}) {
        TypeParam source;
        Fill(source, "kept");
        TypeParam copy(source);
        (sourceFirst ? source : copy).RemoveAll();
        EXPECT_EQ(Block(sourceFirst ? source : copy), nullptr);
        EXPECT_EQ(Bytes(sourceFirst ? copy : source).substr(0, 8), "6b657074");
    }
}

TYPED_TEST(CoreSharedBytes, AssignmentCopiesDeeplyAndSurvivesSelfAssignment) {
    TypeParam source, target;
    Fill(source, "deep");
    Fill(target, "old");
    target = source;
    EXPECT_NE(Block(target), Block(source));
    EXPECT_EQ(Bytes(target), Bytes(source));
    source.RemoveAll();
    EXPECT_EQ(Bytes(target).substr(0, 8), "64656570");
    auto& alias = target;
    target = alias;
    EXPECT_EQ(Bytes(target).substr(0, 8), "64656570");
    target = source;  // an empty source empties the target
    EXPECT_EQ(Block(target), nullptr);
}

// The wire forms of the wrappers are in the captured files; assigning a value yields the value.
static_assert(
    std::is_same<decltype(std::declval<CCmdByteData&>() = std::uint8_t{0}), std::uint8_t>::value,
    "assigning a value yields the value, not the object");

TYPED_TEST(CoreSharedBytes, ReadingWritesOverABlockOnlyWhenNobodySharesIt) {
    // Each region carries "abcd", then "xy": the second read fits in the first one's block.
    const std::string wide = std::is_same<TypeParam, CCmdBuffer>::value ? "04000000" : "0400";
    const std::string small = std::is_same<TypeParam, CCmdBuffer>::value ? "02000000" : "0200";
    TypeParam held;
    ASSERT_EQ(ReadFrom(held, Unhex("01000000" + wide + "61626364")), result::kOk);
    const void* block = Block(held);
    ASSERT_EQ(ReadFrom(held, Unhex("01000000" + small + "7879")), result::kOk);
    EXPECT_EQ(Block(held), block);  // written over, not allocated again
    EXPECT_EQ(Bytes(held), "7879");

    TypeParam copy(held);  // shares the block: the next read must leave the copy's bytes alone
    ASSERT_EQ(ReadFrom(held, Unhex("01000000" + small + "5a5a")), result::kOk);
    EXPECT_NE(Block(held), Block(copy));
    EXPECT_EQ(Bytes(copy), "7879");
    EXPECT_EQ(Bytes(held), "5a5a");

    // A block far larger than the new bytes is let go rather than kept.
    std::string big;
    for (int i = 0; i < 400; ++i) big += "41";
    const std::string bigCount = std::is_same<TypeParam, CCmdBuffer>::value ? "90010000" : "9001";
    ASSERT_EQ(ReadFrom(held, Unhex("01000000" + bigCount + big)), result::kOk);
    block = Block(held);
    ASSERT_EQ(ReadFrom(held, Unhex("01000000" + small + "7879")), result::kOk);
    EXPECT_NE(Block(held), block);
    EXPECT_EQ(Bytes(held), "7879");
}
