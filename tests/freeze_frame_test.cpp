// Freeze frames: the value and text look-ups, and the byte layouts that differ from the
// member order.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

CCmdConversionTbl Table(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint8_t e,
                        std::uint16_t f) {
    CCmdConversionTbl t;
    t.scaleNumerator = a;
    t.scaleDenominator = b;
    t.offset = c;
    t.signMode = e;
    t.bitWidth = f;
    return t;
}

template <class Frame>
void AddItem(Frame& frame, std::uint8_t id, std::uint32_t raw) {
    auto& item = frame.items.GetAt(frame.items.AddTail());
    item.itemId = id;
    item.rawValue = raw;
}

std::int32_t Convert(std::uint32_t raw, std::uint32_t a, std::uint32_t b, std::uint32_t c,
                     std::uint8_t e, std::uint16_t f) {
    return Table(a, b, c, e, f).Convert(raw);
}

void AddText(CCmdConversionTbl& t, std::uint32_t match, const char* text) {
    CCmdDispInfo& entry = t.displayEntries.GetAt(t.displayEntries.AddTail());
    entry.matchValue = match;
    entry.displayText = text;
}

std::string Narrow(const std::uint16_t* text) {
    // The texts of these tests are narrow bytes stored with a terminator.
    return text == nullptr ? "(null)" : std::string(reinterpret_cast<const char*>(text));
}

TEST(FreezeFrameValue, LastMatchingItemWinsAndAbsenceIsZero) {
    CCmdFrzFrmDat frame;
    frame.conversion = Table(1, 1, 5, 0, 8);
    EXPECT_EQ(frame.GetValue(5), 0);  // no items: the offset is never applied
    AddItem(frame, 5, 10);
    AddItem(frame, 7, 99);
    AddItem(frame, 5, 20);
    EXPECT_EQ(frame.GetValue(5), 25);
    EXPECT_EQ(frame.GetValue(7), 104);
    EXPECT_EQ(frame.GetValue(6), 0);  // no such item

    CCmdFrzFrmDatP5 p5;  // the same look-up over the newer items
    p5.conversion = Table(1, 1, 0, 0, 8);
    AddItem(p5, 5, 10);
    AddItem(p5, 5, 20);
    EXPECT_EQ(p5.GetValue(5), 20);
    EXPECT_EQ(p5.GetValue(4), 0);

    CCmdFrzFrmDat high;  // an identifier above 127 still matches through a negative char
    high.conversion = Table(1, 1, 0, 0, 8);
    AddItem(high, 0xF0, 3);
    EXPECT_EQ(high.GetValue(static_cast<char>(0xF0)), 3);
}

TEST(FreezeFrameValue, SignModesFromTheBitWidth) {
    EXPECT_EQ(Convert(0xFF, 1, 1, 0, 1, 8), -1);           // two's complement
    EXPECT_EQ(Convert(0xFF, 10, 4, 100, 1, 8), 98);        // -10 / 4 truncates to -2
    EXPECT_EQ(Convert(0x81, 1, 1, 0, 3, 8), -1);           // sign and magnitude
    EXPECT_EQ(Convert(0x7F, 1, 1, 0, 1, 8), 127);          // sign bit clear
    EXPECT_EQ(Convert(0x18000, 1, 1, 0, 1, 16), -32768);   // bits above the width ignored
    EXPECT_EQ(Convert(0x10001, 1, 1, 0, 1, 16), 0x10001);  // ... unless the sign bit is clear
    EXPECT_EQ(Convert(0xF9, 1, 2, 0, 1, 8), -3);           // -7 / 2 truncates toward zero
    for (std::uint8_t e : {0, 2, 4, 255}) EXPECT_EQ(Convert(0xFF, 1, 1, 0, e, 8), 255) << int(e);
    EXPECT_EQ(Convert(1, 1, 1, 0, 1, 1), -1);  // width 1: the only bit is the sign
    EXPECT_EQ(Convert(1, 1, 1, 0, 3, 1), 0);   // ... and a negative zero
}

TEST(FreezeFrameValue, WidthsOfZeroAndThirtyTwoAndBeyond) {
    // Width 32: bit 31 is the sign.
    EXPECT_EQ(Convert(0x80000000u, 1, 1, 0, 1, 32), kMin);
    EXPECT_EQ(Convert(0x7FFFFFFFu, 1, 1, 0, 1, 32), kMax);
    EXPECT_EQ(Convert(0x80000005u, 1, 1, 0, 3, 32), -5);
    // Width 0 takes the sign position modulo 32: bit 31, as width 32 does.
    EXPECT_EQ(Convert(0x80000001u, 1, 1, 0, 1, 0), -2147483647);
    EXPECT_EQ(Convert(0x80000001u, 1, 1, 0, 3, 0), -1);
    EXPECT_EQ(Convert(0x7FFFFFFFu, 1, 1, 0, 1, 0), kMax);
    // Width 33 wraps to bit 0.
    EXPECT_EQ(Convert(1, 1, 1, 0, 1, 33), -1);
    EXPECT_EQ(Convert(0x40000000u, 1, 1, 0, 1, 0xFFFF), -0x40000000);  // 65534 & 31 = bit 30
    EXPECT_EQ(Convert(0x0000FFFFu, 1, 1, 0, 1, 0xFFFF), 0xFFFF);
}

TEST(FreezeFrameValue, ScaleAndOffsetAtTheLimits) {
    EXPECT_EQ(Convert(7, 1, 0, 0, 0, 8), 7);  // divisors 0 and 1 leave the value alone
    EXPECT_EQ(Convert(7, 1, 1, 0, 0, 8), 7);
    EXPECT_EQ(Convert(7, 1, 2, 0, 0, 8), 3);
    EXPECT_EQ(Convert(7, 0, 1, 0, 0, 8), 0);                          // a multiplier of 0 applies
    EXPECT_EQ(Convert(0xFFFFFFFFu, 2, 1, 0, 0, 32), -2);              // 64-bit product, low word
    EXPECT_EQ(Convert(0x80000000u, 0xFFFFFFFFu, 1, 0, 1, 32), kMin);  // -(-2^31) wraps back
    EXPECT_EQ(Convert(1, 0x80000000u, 1, 0, 0, 32), kMin);            // multiplier is signed
    EXPECT_EQ(Convert(2, 0x80000000u, 1, 0, 0, 32), 0);
    EXPECT_EQ(Convert(0xFFFFFFFFu, 0x80000000u, 1, 0, 0, 32), kMin);
    EXPECT_EQ(Convert(0xFFFFFFFFu, 1, 0x80000000u, 0, 0, 32), 1);  // divisor is unsigned
    EXPECT_EQ(Convert(0xFFFFFFFFu, 1, 0xFFFFFFFFu, 0, 0, 32), 1);
    EXPECT_EQ(Convert(0x7FFFFFFFu, 1, 1, 1, 0, 32), kMin);  // offset wraps
    EXPECT_EQ(Convert(0, 1, 1, 0xFFFFFFFFu, 0, 32), -1);
    EXPECT_EQ(Convert(0xFFFFFFFFu, 0xFFFFFFFFu, 3, 0, 0, 32),
              static_cast<std::int32_t>(-(0xFFFFFFFFLL / 3)));  // signed division of -(2^32-1)
}

TEST(FreezeFrameText, FirstMatchingEntryWinsAndNoneIsNull) {
    CCmdFrzFrmDat frame;
    frame.conversion = Table(1, 1, 0, 1, 8);
    EXPECT_EQ(frame.GetString(5), nullptr);  // no items, no entries
    AddItem(frame, 5, 20);
    EXPECT_EQ(frame.GetString(5), nullptr);  // no entries
    AddText(frame.conversion, 10, "ten");
    AddText(frame.conversion, 20, "first");
    AddText(frame.conversion, 20, "second");
    AddText(frame.conversion, 0xFFFFFFFFu, "minus one");
    EXPECT_EQ(Narrow(frame.GetString(5)), "first");
    EXPECT_EQ(Narrow(frame.GetString(9)), "(null)");  // absent item converts to 0: no entry
    AddItem(frame, 6, 0xFF);                          // -1 matches the entry 0xFFFFFFFF
    EXPECT_EQ(Narrow(frame.GetString(6)), "minus one");

    CCmdFrzFrmDatP5 p5;
    p5.conversion = frame.conversion;
    AddItem(p5, 6, 10);
    EXPECT_EQ(Narrow(p5.GetString(6)), "ten");
    EXPECT_EQ(p5.GetString(7), nullptr);
}

// --- Wire orders that differ from the member order ---

TEST(FreezeFrameLayout, ItemsSendIdentifierBeforeData) {
    CCmdMultiData item;
    item.rawValue = 0x01020304;
    item.itemId = 0x55;
    const unsigned char data[1] = {0xAB};
    item.data.SetAt(data, 1);
    EXPECT_EQ(WireHex(item),
              "01000000"
              "04030201"
              "55"
              "01000000"
              "01000000"
              "ab");
}

TEST(FreezeFrameLayout, NewerFrameSendsExtraValueAndFlagAfterItems) {
    CCmdFrzFrmDatP5 frame;
    frame.itemNumber = 0x0102;
    frame.workingValue = 0xDEAD;  // never travels
    frame.extraValue = 0x11223344;
    frame.extraFlag = 0x55;
    frame.displayFlag = 0x66;
    frame.validFlag = 0x77;
    const std::string table = WireHex(frame.conversion);
    EXPECT_EQ(WireHex(frame),
              "01000000"
              "0201"
              "010000000000"
              "010000000000"
              "66"
              "77" +
                  table +
                  "0100000000000000"
                  "44332211"
                  "55");
}

TEST(FreezeFrameLayout, MultiRequestSendsItemNumbersLast) {
    CGetMultiFrzFrmDatSnd request;
    request.itemNumbers.GetAt(request.itemNumbers.AddTail()) = 0x0102;
    request.diagCodeIndex = 7;
    request.frameNumbers.GetAt(request.frameNumbers.AddTail()) = 9;
    EXPECT_EQ(WireHex(request), "16000000" + kNoStatus +
                                    "07"
                                    "01000000"
                                    "01000000"
                                    "09"
                                    "01000000"
                                    "01000000"
                                    "0201");
}

TEST(FreezeFrameLayout, AbsoluteAnswerCarriesItsListFromVersionTwo) {
    CIsAbsFrzFrmDatRcv v2;  // the catalogue's default
    CIsAbsFrzFrmDatRcv v1(1);
    for (CIsAbsFrzFrmDatRcv* m : {&v2, &v1}) {
        m->diagCode = 0x0A0B0C0D;
        m->isAbsolute = 1;
        m->frames.GetAt(m->frames.AddTail()).frameCount = 3;
    }
    const std::string head = "30000000" + kNoStatus +
                             "0d0c0b0a"
                             "01"
                             "010000000000";
    EXPECT_EQ(v2.GetVersion(), 2);
    EXPECT_EQ(WireHex(v1), head);
    EXPECT_EQ(WireHex(v2), head +
                               "01000000"
                               "01000000"
                               "01000000"
                               "010000000000"
                               "00"
                               "03");
    v1.RemoveAll();
    EXPECT_EQ(v1.frames.GetCount(), 0u);  // emptied even though it never travels at version 1
}

TEST(FreezeFrameLayout, ListInfoKeepsAHeaderAndTakesOneFromAMessage) {
    CCmdFrzFrmDatListInfo info;
    info.frameNumber = 1;
    info.recordNumber = 0x0203;
    info.diagCode = 0x04050607;
    EXPECT_EQ(WireHex(info),
              "01000000"
              "00000000" +
                  kNoStatus +
                  "01"
                  "0302"
                  "07060504" +
                  "0100000000000000");

    info.frames.AddTail();
    CGetFrzFrmDatRcv answer;
    answer.SetStatusWord(1, 0x11);
    answer.SetStatusWord(4, 0x44);
    info = answer;  // empties the record, then takes the message's header
    EXPECT_EQ(info.frames.GetCount(), 0u);
    EXPECT_EQ(info.frameNumber, 0);
    EXPECT_EQ(info.GetCmdId(), 21u);
    EXPECT_EQ(info.GetStatusWord(1), 0x11u);
    EXPECT_EQ(info.GetStatusWord(4), 0x44u);

    CCmdMultiFrzFrmDatListInfo multi(3);
    multi.frameKind = 0x22;
    EXPECT_EQ(WireHex(multi),
              "03000000"
              "00000000" +
                  kNoStatus +
                  "00"
                  "00"
                  "22" +
                  "0100000000000000");
}

}  // namespace
