// CAN bus checks: the category records that send their version prefix without the header words,
// the two category look-ups, and the gateway records that send their full header.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

const std::string kEmptyText = "010000000000";
const std::string kEmptyList = "0100000000000000";

void Transfer(CCmdCore& sent, CCmdCore& received) {
    Region region(1 << 16);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_EQ(reader.GetPosition(), writer.GetPosition());
}

CCmdCanBusCategoryInfo Category(std::uint32_t id, std::uint32_t leadingWord) {
    CCmdCanBusCategoryInfo c;
    c.categoryId = id;
    c.leadingWord = leadingWord;
    return c;
}

// --- category records: the version prefix alone, not the header words ---

TEST(CanBusCategoryLayout, CategorySendsItsPrefixButNotItsHeaderWords) {
    CCmdCanBusCategoryInfo c(2);
    c.SetStatusWord(1, 0xAAAAAAAA);
    c.leadingWord = 0x11223344;
    c.name = "B";
    c.categoryId = 0x55667788;
    c.flag = 0x99;
    c.trailingWord = 0x01020304;
    EXPECT_EQ(WireHex(c),
              "02000000"
              "44332211"
              "01000000"
              "0200"
              "4200"
              "88776655"
              "99"
              "04030201");
}

TEST(CanBusCategoryLayout, ListSendsItsPrefixThenTheCategories) {
    CCmdCanBusCategoryList list;
    list.SetStatusWord(2, 0xBBBBBBBB);
    EXPECT_EQ(WireHex(list), "01000000" + kEmptyList);
    list.categories.AddTail(Category(7, 0));
    EXPECT_EQ(WireHex(list),
              "01000000"
              "01000000"
              "01000000"
              "01000000"
              "00000000" +
                  kEmptyText + "07000000" + "00" + "00000000");
}

TEST(CanBusCategoryLayout, ReceivedCategoriesKeepTheirOwnHeaderWords) {
    CCmdCanBusCategoryList sent;
    sent.SetStatusWord(1, 1);
    sent.categories.AddTail(Category(3, 4));
    CCmdCanBusCategoryList received;
    received.SetStatusWord(1, 0x77);
    received.SetStatusWord(4, 0x88);
    Transfer(sent, received);
    EXPECT_EQ(received.GetStatusWord(1), 0x77u);
    EXPECT_EQ(received.GetStatusWord(4), 0x88u);
    EXPECT_EQ(received.GetCategoryId(), 3u);

    CCmdCanBusCategoryInfo one;
    one.SetStatusWord(3, 0x99);
    Transfer(sent.categories[0], one);
    EXPECT_EQ(one.GetStatusWord(3), 0x99u);
    EXPECT_EQ(one.leadingWord, 4u);
}

TEST(CanBusCategoryLayout, RemoveAllEmptiesTheCategoriesButLeavesTheHeaderWords) {
    CCmdCanBusCategoryList list;
    list.SetStatusWord(2, 5);
    list.categories.AddTail(Category(1, 1));
    list.RemoveAll();
    EXPECT_EQ(list.categories.GetCount(), 0u);
    EXPECT_EQ(list.GetStatusWord(2), 5u);

    CCmdCanBusCategoryInfo c = Category(1, 2);
    c.SetStatusWord(4, 6);
    c.RemoveAll();
    EXPECT_EQ(c.categoryId, 0u);
    EXPECT_EQ(c.GetStatusWord(4), 6u);
}

// --- look-ups ---

TEST(CanBusCategoryLookup, EmptyListGivesZeroAndNull) {
    CCmdCanBusCategoryList list;
    EXPECT_EQ(list.GetCategoryId(), 0u);
    EXPECT_EQ(list.GetSelCategoryInfo(0), nullptr);
    EXPECT_EQ(list.GetSelCategoryInfo(5), nullptr);
}

TEST(CanBusCategoryLookup, FirstCategoryStandsForTheListAndFirstMatchWins) {
    CCmdCanBusCategoryList list;
    list.categories.AddTail(Category(9, 1));
    list.categories.AddTail(Category(4, 2));
    list.categories.AddTail(Category(4, 3));
    EXPECT_EQ(list.GetCategoryId(), 9u);

    CCmdCanBusCategoryInfo* found = list.GetSelCategoryInfo(4);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->leadingWord, 2u);
    EXPECT_EQ(found, &list.categories[1]);  // a pointer into the list, not a copy
    EXPECT_EQ(list.GetSelCategoryInfo(9), &list.categories[0]);
    EXPECT_EQ(list.GetSelCategoryInfo(0), nullptr);
}

// --- gateway records: the full header behind the prefix ---

TEST(CGWCanBusLayout, CategoryInfoSendsItsFullHeader) {
    CCmdCGWCanBusCtgrInfo c;
    c.SetStatusWord(1, 0x0A);
    c.SetStatusWord(4, 0x0D);
    c.leadingWords[2] = 3;
    c.word = 0x44;
    c.flag = 0x55;
    EXPECT_EQ(WireHex(c),
              "01000000"
              "00000000"
              "0a000000"
              "00000000"
              "00000000"
              "0d000000"
              "00000000"
              "00000000"
              "03000000" +
                  kEmptyText + "44000000" + kEmptyText + "55");

    CCmdCGWCanBusCtgrInfo received;
    Transfer(c, received);
    EXPECT_EQ(received.GetStatusWord(4), 0x0Du);
}

TEST(CGWCanBusLayout, CheckInfoSendsItsHeaderThenTheFieldsInOrder) {
    CCmdCGWCanBusCheckInfo c;
    c.leadingWords[0] = 1;
    c.middleWords[2] = 2;
    c.firstWord = 3;
    c.firstFlag = 4;
    c.secondWord = 5;
    c.secondFlag = 6;
    c.thirdWord = 7;
    c.number = 0x0808;
    c.lastWord = 9;
    CCmdFrzFrmDat emptyFrame;
    const std::string hex = WireHex(c);
    EXPECT_EQ(hex.substr(0, 48), "01000000" + std::string(40, '0'));
    EXPECT_EQ(hex.substr(48),
              "01000000"
              "00000000" +
                  kEmptyText +
                  "00000000"
                  "00000000"
                  "02000000" +
                  kEmptyText +
                  "03000000"
                  "04"
                  "05000000"
                  "06"
                  "07000000"
                  "0808"
                  "09000000" +
                  WireHex(emptyFrame));
}

}  // namespace
