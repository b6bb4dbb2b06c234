// Vehicle information: the support request's one-byte flag and the numeric accessors.
#include <gtest/gtest.h>

#include <string>

#include "helpers.h"

using cmddata::result::kItemMissing;
using cmddata::result::kNullOutput;
using namespace testing_cmddata;

namespace {

const std::uint16_t* U16(const char16_t* text) {
    return reinterpret_cast<const std::uint16_t*>(text);
}

void AddItem(CCmdList<CCmdCarInfo>& list, std::uint16_t id, const char16_t* text) {
    CCmdCarInfo& item = list.GetAt(list.AddTail());
    item.itemId = id;
    item.text = U16(text);
}

}  // namespace

TEST(VehicleMessages, SupportRequestSendsTheFlagsLowByteOnly) {
    CGetVehicleSupportInfoSnd m;
    m.flag = 0x123456C3;
    EXPECT_EQ(WireHex(m),
              "9d000000"
              "00000000000000000000000000000000"
              "c3"
              "01000000"
              "00000000");

    CGetVehicleSupportInfoSnd back;
    back.flag = 0xABCDEF00;  // the upper bytes are the reader's own
    EXPECT_EQ(Transfer(m, back), 29u);
    EXPECT_EQ(back.flag, 0xABCDEFC3u);
    back.RemoveAll();
    EXPECT_EQ(back.flag, 0u);
}

// The accessors.

namespace {

CGetCarInfoRcv WithItem(std::uint16_t id, const char16_t* text) {
    CGetCarInfoRcv m;
    AddItem(m.carInfo, id, text);
    return m;
}

constexpr std::uint32_t kUntouched = 0x5A5A5A5A;

// True when the narrow conversion maps U+00E9 to the byte 0xE9 (a Western code page).
bool WesternCodePage() {
    char out[2] = {};
    cmddata::platform::WideToAnsi(U16(u"\u00e9"), out, sizeof out);
    return static_cast<unsigned char>(out[0]) == 0xE9;
}

}  // namespace

TEST(CarInfoAccess, GetFindsTheFirstItemWithTheId) {
    CGetCarInfoRcv m;
    AddItem(m.carInfo, 2, u"ENG");
    AddItem(m.carInfo, 1, u"FIRST");
    AddItem(m.carInfo, 1, u"SECOND");
    const std::uint16_t* text = nullptr;
    ASSERT_EQ(m.Get(&text, 1), 0u);
    EXPECT_EQ(text, m.carInfo.GetAt(1).text.GetAt());  // the message's own buffer
    EXPECT_EQ(m.Get(&text, 0x10002), 0u);              // compared as 16 bits
    EXPECT_EQ(text, m.carInfo.GetAt(0).text.GetAt());

    std::uint32_t high = 0, low = 0;
    ASSERT_EQ(m.GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x46495253u);  // FIRS
    EXPECT_EQ(low, 0x54000000u);   // T

    text = nullptr;
    EXPECT_EQ(m.Get(&text, 3), kItemMissing);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(m.Get(nullptr, 1), kNullOutput);
}

// Car information packs seven characters, the engine type six, into two big-endian words; the
// model year takes one to four digits.
TEST(CarInfoAccess, PackedWordsAndModelYear) {
    struct Case {
        std::uint16_t id;
        const char16_t* text;
        std::uint32_t high, low;
    };
    const Case cases[] = {
        {1, u"ABCDEFG", 0x41424344u, 0x45464700u},
        {1, u"ABCDEFGHIJ", 0x41424344u, 0x45464700u},  // the eighth and later never count
        {1, u"AB", 0x41420000u, 0u},
        {1, u"", 0u, 0u},
        {2, u"1ZZFE", 0x315A5A46u, 0x45000000u},
        {2, u"1ZZFEXY", 0x315A5A46u, 0x45580000u},  // Y, the seventh, never reaches the result
        {3, u"2015", 2015u, 0u},
        {3, u"0999", 999u, 0u},
        {3, u"07", 7u, 0u},
        {3, u"9", 9u, 0u},
    };
    for (const Case& c : cases) {
        CGetCarInfoRcv m = WithItem(c.id, c.text);
        std::uint32_t high = kUntouched, low = 0;
        const cmddata::Result r = c.id == 1   ? m.GetDwordCarInfo(&high, &low)
                                  : c.id == 2 ? m.GetDwordEngineType(&high, &low)
                                              : m.GetDwordModelYear(&high);
        ASSERT_EQ(r, 0u);
        EXPECT_EQ(high, c.high);
        EXPECT_EQ(low, c.low);
    }
}

TEST(CarInfoAccess, ModelYearRejectsBadTextsAndLeavesTheOutputAlone) {
    for (const char16_t* bad : {u"12345", u"", u"20A1", u" 201", u"-1", u"1e3"}) {
        std::uint32_t year = kUntouched;
        EXPECT_EQ(WithItem(3, bad).GetDwordModelYear(&year), kItemMissing);
        EXPECT_EQ(year, kUntouched);
    }
}

TEST(CarInfoAccess, NullOutputsComeBeforeTheListTests) {
    CGetCarInfoRcv empty;
    std::uint32_t a = kUntouched, b = kUntouched;
    const std::uint16_t* text = nullptr;
    EXPECT_EQ(empty.Get(nullptr, 1), kNullOutput);
    EXPECT_EQ(empty.GetDwordCarInfo(nullptr, &b), kNullOutput);
    EXPECT_EQ(empty.GetDwordCarInfo(&a, nullptr), kNullOutput);
    EXPECT_EQ(empty.GetDwordEngineType(nullptr, &b), kNullOutput);
    EXPECT_EQ(empty.GetDwordEngineType(&a, nullptr), kNullOutput);
    EXPECT_EQ(empty.GetDwordModelYear(nullptr), kNullOutput);

    EXPECT_EQ(empty.Get(&text, 1), kItemMissing);
    EXPECT_EQ(empty.GetDwordCarInfo(&a, &b), kItemMissing);
    EXPECT_EQ(empty.GetDwordEngineType(&a, &b), kItemMissing);
    EXPECT_EQ(empty.GetDwordModelYear(&a), kItemMissing);
    EXPECT_EQ(a, kUntouched);
    EXPECT_EQ(b, kUntouched);
    EXPECT_EQ(text, nullptr);
}

TEST(CarInfoAccess, MissingItemOrMissingText) {
    std::uint32_t a = kUntouched, b = kUntouched;
    CGetCarInfoRcv other = WithItem(7, u"X");
    EXPECT_EQ(other.GetDwordCarInfo(&a, &b), kItemMissing);
    EXPECT_EQ(other.GetDwordEngineType(&a, &b), kItemMissing);
    EXPECT_EQ(other.GetDwordModelYear(&a), kItemMissing);

    CGetCarInfoRcv noText;
    noText.carInfo.GetAt(noText.carInfo.AddTail()).itemId = 1;  // text never set
    const std::uint16_t* text = U16(u"?");
    EXPECT_EQ(noText.Get(&text, 1), 0u);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(noText.GetDwordCarInfo(&a, &b), kItemMissing);
    EXPECT_EQ(a, kUntouched);
    EXPECT_EQ(b, kUntouched);
}

TEST(CarInfoAccess, TextWithoutTerminatorIsReadNoFurtherThanItsBytes) {
    const std::uint16_t year[] = {'2', '0', '1', '5'};
    CGetCarInfoRcv m;
    CCmdCarInfo& item = m.carInfo.GetAt(m.carInfo.AddTail());
    item.itemId = 3;
    item.text.SetAt(year, 4);
    std::uint32_t value = 0;
    ASSERT_EQ(m.GetDwordModelYear(&value), 0u);
    EXPECT_EQ(value, 2015u);

    item.itemId = 1;
    item.text.SetAt(year, 3);
    std::uint32_t high = 0, low = 0;
    ASSERT_EQ(m.GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x32303100u);
}

TEST(CarInfoAccess, HighBytesWidenWithTheirSign) {
    if (!WesternCodePage()) GTEST_SKIP() << "the narrow code page does not map U+00E9 to 0xE9";
    std::uint32_t high = 0, low = 0;
    // 0xE9 widened to 0xFFFFFFE9 sets every bit above it; later shifts push the lowest out.
    ASSERT_EQ(WithItem(1, u"A\u00e9").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0xFFE90000u);
    EXPECT_EQ(low, 0u);
    ASSERT_EQ(WithItem(1, u"\u00e9").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0xE9000000u);
    ASSERT_EQ(WithItem(1, u"ABCDEF\u00e9").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x41424344u);
    EXPECT_EQ(low, 0xFFFFE900u);
    ASSERT_EQ(WithItem(2, u"ABCDE\u00e9").GetDwordEngineType(&high, &low), 0u);
    EXPECT_EQ(low, 0xFFE90000u);
    ASSERT_EQ(WithItem(2, u"ABC\u00e9").GetDwordEngineType(&high, &low), 0u);
    EXPECT_EQ(high, 0xFFFFFFE9u);
    EXPECT_EQ(low, 0u);
}
