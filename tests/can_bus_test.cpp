// CAN bus categories: records that keep their own header words when read or emptied, and the two
// category look-ups.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

CCmdCanBusCategoryInfo Category(std::uint32_t id, std::uint32_t leadingWord) {
    CCmdCanBusCategoryInfo c;
    c.categoryId = id;
    c.leadingWord = leadingWord;
    return c;
}

// --- category records: the version prefix alone, not the header words ---

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

}  // namespace
