// One round trip for every class of every family: fill with distinct non-zero values, write,
// read into a fresh object, write again. A family test lists, per class, the members to fill
// (TEST_FILL) and the classes under test (Case<Class, version>).
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

#include "helpers.h"

// Fill overloads are global functions, so that the templates find the family overloads, declared
// later, by argument lookup.
struct Seed {
    std::uint32_t n = 0;
    std::uint64_t Next() {  // 0x0101.., 0x0202.., ... never 0 in any byte
        std::uint64_t x = n++ % 250 + 1;
        x |= x << 8;
        x |= x << 16;
        return x | x << 32;
    }
};

template <class V>
std::enable_if_t<std::is_arithmetic_v<V>> Fill(Seed& s, V& v) {
    v = static_cast<V>(s.Next());
}
template <class V, std::size_t N>
void Fill(Seed& s, V (&a)[N]) {
    for (V& v : a) Fill(s, v);
}
inline void Fill(Seed& s, CCmdString& t) {
    char text[16];
    std::snprintf(text, sizeof text, "t%u", static_cast<unsigned>(s.n++));
    t = text;
}
inline void Fill(Seed& s, CCmdBuffer& b) {
    const unsigned char bytes[3] = {static_cast<unsigned char>(s.Next()), 0xB2, 0xC3};
    b.SetAt(bytes, 3);
}
inline void Fill(Seed& s, CCmdWordId& w) { w = static_cast<std::uint16_t>(s.Next()); }
inline void Fill(Seed& s, CCmdByteData& b) { b = static_cast<std::uint8_t>(s.Next()); }
inline void Fill(Seed& s, CCmdByteDataList& l);
template <class T>
void Fill(Seed& s, CCmdList<T>& list) {
    for (int i = 0; i < 2; ++i) Fill(s, list.GetAt(list.AddTail()));
}
inline void Fill(Seed& s, CCmdByteDataList& l) { Fill(s, l.bytes); }
template <class... V>
void FillAll(Seed& s, V&... v) {
    (Fill(s, v), ...);
}
inline void Fill(Seed& s, CCmdHeaderWords& h) {
    for (int n = 1; n <= 4; ++n) h.SetStatusWord(n, static_cast<std::uint32_t>(s.Next()));
}
inline CCmdHeaderWords& Words(CCmdHeaderWords& h) { return h; }

/// One line per class: the members to fill (Words(o) for the status words).
#define TEST_FILL(Class, ...) \
    inline void Fill(Seed& s, Class& o) { FillAll(s, __VA_ARGS__); }

// The shared message layouts.
TEST_FILL(CCmdHeaderOnly, Words(o))
TEST_FILL(CCmdWordIdListMessage, Words(o), o.itemIds)
TEST_FILL(CCmdItemValueMessage, Words(o), o.itemId, o.value, o.qualifier)

/// A class under test, built with version V (0: the default constructor).
template <class T, int V = 0>
struct Case {
    static std::unique_ptr<T> Make() {
        if constexpr (V == 0)
            return std::make_unique<T>();
        else
            return std::make_unique<T>(static_cast<std::uint16_t>(V));
    }
};

namespace testing_cmddata {

// Write, read into a fresh object, write again: the same bytes, all of them consumed, and the
// measured size agrees. Copies and assigned objects write the same bytes, also after the source
// has been emptied; RemoveAll gives back a fresh object's bytes.
template <class C>
void CheckRoundTrip() {
    auto sent = C::Make();
    Seed seed;
    Fill(seed, *sent);

    Region region(1 << 16);
    CCmdWriter writer = region.Writer();
    writer.Write(sent.get());
    ASSERT_EQ(writer.GetLastError(), cmddata::result::kOk);
    const std::uint32_t size = writer.GetPosition();
    const std::string bytes = Hex(region.data(), size);
    EXPECT_EQ(cmddata::WireSize(*sent), size);

    auto received = C::Make();
    CCmdReader reader = region.Reader();
    reader.Read(received.get());
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_EQ(reader.GetPosition(), size);
    EXPECT_EQ(WireHex(*received), bytes);

    auto assigned = C::Make();
    *assigned = *sent;
    auto copied = std::make_unique<std::remove_reference_t<decltype(*sent)>>(*sent);
    sent->RemoveAll();
    EXPECT_EQ(WireHex(*assigned), bytes);
    EXPECT_EQ(WireHex(*copied), bytes);

    received->RemoveAll();
    EXPECT_EQ(WireHex(*received), WireHex(*C::Make()));
}

// A cut-short region is read without a step outside it (the last error reports only the last
// transfer, so a short tail may end in success; the address checker watches the bounds).
template <class C>
void CheckTruncated() {
    auto sent = C::Make();
    Seed seed;
    Fill(seed, *sent);
    Region full(1 << 16);
    CCmdWriter writer = full.Writer();
    writer.Write(sent.get());
    const std::uint32_t size = writer.GetPosition();
    const std::uint32_t step = size < 400 ? 1 : size / 200;
    for (std::uint32_t cut = 0; cut < size; cut += step) {
        Region part(cut == 0 ? 1 : cut);
        std::copy(full.data(), full.data() + cut, part.data());
        CCmdReader reader;
        reader.AttachView(part.data(), cut);
        auto received = C::Make();
        reader.Read(received.get());
        EXPECT_LE(reader.GetPosition(), cut);
    }
}

}  // namespace testing_cmddata

/// The round-trip suite for one family: ROUND_TRIP_SUITE(Name, Case<...>, ...).
#define ROUND_TRIP_SUITE(Name, ...)                      \
    template <class C>                                   \
    class Name : public ::testing::Test {};              \
    using Name##Cases = ::testing::Types<__VA_ARGS__>;   \
    TYPED_TEST_SUITE(Name, Name##Cases);                 \
    TYPED_TEST(Name, FilledObjectSurvivesWriteAndRead) { \
        testing_cmddata::CheckRoundTrip<TypeParam>();    \
    }                                                    \
    TYPED_TEST(Name, TruncatedRegionFailsCleanly) { testing_cmddata::CheckTruncated<TypeParam>(); }
