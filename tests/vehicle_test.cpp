// Vehicle information: every class's round trip, exact bytes, and the numeric accessors.
#include <gtest/gtest.h>

#include <string>

#include "helpers.h"

using cmddata::result::kItemMissing;
using cmddata::result::kNullOutput;
using testing_cmddata::Hex;
using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

const std::uint16_t* U16(const char16_t* text) {
    return reinterpret_cast<const std::uint16_t*>(text);
}

void AddItem(CCmdList<CCmdCarInfo>& list, std::uint16_t id, const char16_t* text) {
    CCmdCarInfo& item = list.GetAt(list.AddTail());
    item.itemId = id;
    item.text = U16(text);
}


void AddFrame(CCmdList<CCmdByteDataList>& list, std::uint8_t first, int count) {
    CCmdByteDataList& frame = list.GetAt(list.AddTail());
    for (int i = 0; i < count; ++i)
        frame.bytes.GetAt(frame.bytes.AddTail()) = static_cast<std::uint8_t>(first + i);
}

}  // namespace

TEST(VehicleRecords, CarInfoBytes) {
    CCmdCarInfo item;
    item.itemId = 3;
    item.text = U16(u"07");
    EXPECT_EQ(WireHex(item),
              "01000000"
              "0300"
              "01000000"
              "0600"
              "300037000000");
}

TEST(VehicleRecords, CarIdInfHasTheIdListWhereTheTextStands) {
    CCmdCarIdInf entry;
    entry.itemId = 0x0102;
    entry.ids.GetAt(entry.ids.AddTail()) = 0x0A0B;
    EXPECT_EQ(WireHex(entry),
              "01000000"
              "0201"
              "01000000"
              "01000000"
              "0b0a");
    entry.RemoveAll();
    EXPECT_EQ(WireHex(entry),
              "01000000"
              "0000"
              "01000000"
              "00000000");
}

TEST(VehicleMessages, GetCarInfoRequestAndAnswerBytes) {
    CGetCarInfoSnd snd;
    snd.itemIds.GetAt(snd.itemIds.AddTail()) = 2;
    EXPECT_EQ(WireHex(snd),
              "01000000"
              "00000000000000000000000000000000"
              "01000000"
              "01000000"
              "0200");

    CGetCarInfoRcv rcv;
    AddItem(rcv.carInfo, 1, u"A");
    EXPECT_EQ(WireHex(rcv),
              "01000000"
              "00000000000000000000000000000000"
              "01000000"
              "01000000"
              "01000000"
              "0100"
              "01000000"
              "0400"
              "41000000");
}



TEST(VehicleMessages, FrameAnswerFieldOrder) {
    CGetFrmCarInfoVinRcv m;
    m.ecuId = 0x01020304;
    m.frameKind = 0x05;
    AddFrame(m.sentFrames, 0xAA, 1);
    m.outcome = 6;
    m.outcomeDetail = 7;
    EXPECT_EQ(WireHex(m),
              "65000000"
              "00000000000000000000000000000000"
              "04030201"
              "05"
              "01000000"
              "01000000"
              "01000000"
              "01000000"
              "aa"
              "01000000"
              "00000000"
              "06000000"
              "07000000");
}

TEST(VehicleMessages, SupportRequestSendsTheFlagsLowByteOnly) {
    CGetVehicleSupportInfoSnd m;
    m.flag = 0x123456C3;
    EXPECT_EQ(WireHex(m),
              "9d000000"
              "00000000000000000000000000000000"
              "c3"
              "01000000"
              "00000000");

    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&m);
    CGetVehicleSupportInfoSnd back;
    back.flag = 0xABCDEF00;  // the upper bytes are the reader's own
    CCmdReader r = region.Reader();
    r.Read(&back);
    EXPECT_EQ(back.flag, 0xABCDEFC3u);
    EXPECT_EQ(r.GetPosition(), 29u);
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

TEST(CarInfoAccess, CarInfoPacksSevenCharacters) {
    std::uint32_t high = kUntouched, low = kUntouched;
    ASSERT_EQ(WithItem(1, u"ABCDEFG").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x41424344u);
    EXPECT_EQ(low, 0x45464700u);

    ASSERT_EQ(WithItem(1, u"ABCDEFGHIJ").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(low, 0x45464700u);  // the eighth and later never count

    ASSERT_EQ(WithItem(1, u"AB").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x41420000u);
    EXPECT_EQ(low, 0u);

    ASSERT_EQ(WithItem(1, u"").GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0u);
    EXPECT_EQ(low, 0u);
}

TEST(CarInfoAccess, EngineTypePacksSixCharacters) {
    std::uint32_t high = kUntouched, low = kUntouched;
    ASSERT_EQ(WithItem(2, u"1ZZFE").GetDwordEngineType(&high, &low), 0u);
    EXPECT_EQ(high, 0x315A5A46u);
    EXPECT_EQ(low, 0x45000000u);

    ASSERT_EQ(WithItem(2, u"1ZZFEXY").GetDwordEngineType(&high, &low), 0u);
    EXPECT_EQ(high, 0x315A5A46u);
    EXPECT_EQ(low, 0x45580000u);  // Y, the seventh, never reaches the result
}

TEST(CarInfoAccess, ModelYearAcceptsOneToFourDigits) {
    std::uint32_t year = kUntouched;
    ASSERT_EQ(WithItem(3, u"2015").GetDwordModelYear(&year), 0u);
    EXPECT_EQ(year, 2015u);
    ASSERT_EQ(WithItem(3, u"0999").GetDwordModelYear(&year), 0u);
    EXPECT_EQ(year, 999u);
    ASSERT_EQ(WithItem(3, u"07").GetDwordModelYear(&year), 0u);
    EXPECT_EQ(year, 7u);
    ASSERT_EQ(WithItem(3, u"9").GetDwordModelYear(&year), 0u);
    EXPECT_EQ(year, 9u);
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

TEST(CarInfoAccess, AccessorsWorkOnAnAnswerReadFromARegion) {
    CGetCarInfoRcv sent;
    AddItem(sent.carInfo, 1, u"ABCDEFG");
    AddItem(sent.carInfo, 2, u"1ZZFE");
    AddItem(sent.carInfo, 3, u"2031");
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&sent);
    CGetCarInfoRcv got;
    CCmdReader r = region.Reader();
    r.Read(&got);
    ASSERT_EQ(r.GetLastError(), 0u);
    std::uint32_t high = 0, low = 0, year = 0;
    EXPECT_EQ(got.GetDwordCarInfo(&high, &low), 0u);
    EXPECT_EQ(high, 0x41424344u);
    EXPECT_EQ(got.GetDwordEngineType(&high, &low), 0u);
    EXPECT_EQ(low, 0x45000000u);
    EXPECT_EQ(got.GetDwordModelYear(&year), 0u);
    EXPECT_EQ(year, 2031u);
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
