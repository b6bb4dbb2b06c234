#include <gtest/gtest.h>

#include "helpers.h"

using testing_cmddata::WireHex;

TEST(Smoke, ListOfWordIds) {
    CCmdList<CCmdWordId> list;
    list.GetAt(list.AddTail()) = 0x0001;
    list.GetAt(list.AddTail()) = 0x0203;
    EXPECT_EQ(WireHex(list), "01000000" "02000000" "0100" "0302");
}
