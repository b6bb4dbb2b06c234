// Customize: the independent version groups of the items, default versions, the remote item's
// field order, and the versioned header of the list commands.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

CCmdCustomItem Item(std::uint16_t version) {
    CCmdCustomItem item(version);
    item.itemId = 1;
    item.currentNumber = 2;
    item.dataId = 3;
    item.bytePosition = 4;
    item.bitMask = 5;
    item.ecuAddress = 6;
    item.itemKind = 7;
    item.currentBytes.GetAt(item.currentBytes.AddTail()) = 0xAA;
    return item;
}

TEST(CustomItem, EachVersionAddsItsOwnGroup) {
    const std::string base = "0100" + kEmptyText + "02" + kEmptyList;
    const std::string v2 =
        "03000000"
        "0400"
        "05000000";
    const std::string v3 =
        "06000000"
        "0700";
    const std::string v4 =
        "0100000001000000"
        "aa";
    CCmdCustomItem i1 = Item(1), i2 = Item(2), i3 = Item(3), i4 = Item(4);
    EXPECT_EQ(WireHex(i1), "01000000" + base);
    EXPECT_EQ(WireHex(i2), "02000000" + base + v2);
    EXPECT_EQ(WireHex(i3), "03000000" + base + v2 + v3);
    EXPECT_EQ(WireHex(i4), "04000000" + base + v2 + v3 + v4);
    EXPECT_EQ(CCmdCustomItem().GetVersion(), 4);
}

TEST(CustomItem, NewerReaderTakesTheSendersVersionAndItsGroupsOnly) {
    CCmdCustomItem sent = Item(2);
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&sent);
    CCmdCustomItem received;  // version 4
    received.ecuAddress = 0x55;
    CCmdReader r = region.Reader();
    r.Read(&received);
    EXPECT_EQ(received.GetVersion(), 2);
    EXPECT_EQ(r.GetPosition(), w.GetPosition());
    EXPECT_EQ(received.bitMask, 5u);
    EXPECT_EQ(received.ecuAddress, 0x55u);  // not on the wire at version 2
}

TEST(CustomRecords, DefaultVersionsAndTheirThresholds) {
    EXPECT_EQ(CCmdCustomValue().GetVersion(), 3);
    EXPECT_EQ(CCmdSetCustomItem().GetVersion(), 3);
    EXPECT_EQ(CCmdCustomListInfo().GetVersion(), 2);
    EXPECT_EQ(CCmdDedicatedLogic().GetVersion(), 1);

    CCmdCustomValue value;
    value.valueNumber = 1;
    value.displayOrder = 2;
    EXPECT_EQ(WireHex(value),
              "03000000"
              "01" +
                  kEmptyText + "0200" + kEmptyList);
    CCmdCustomValue value1(1);
    value1.displayOrder = 2;
    EXPECT_EQ(WireHex(value1),
              "01000000"
              "00" +
                  kEmptyText);

    CCmdSetCustomItem set(2);
    set.itemId = 1;
    set.listId = 2;
    set.valueNumber = 3;
    set.displayOrder = 4;
    EXPECT_EQ(WireHex(set),
              "02000000"
              "0100"
              "0200"
              "03"
              "0400");

    CCmdCustomListInfo list(1);
    list.listKind = 9;
    list.options = 0xFF;
    EXPECT_EQ(WireHex(list), "01000000" + kEmptyText + kEmptyText +
                                 "0000"
                                 "0000"
                                 "09");
}

TEST(RmtCustomItem, FrameIdTravelsBeforeTheCurrentValue) {
    CCmdRmtCustomItem item;
    item.itemId = 1;
    item.itemKind = 2;
    item.settable = 3;
    item.valueCount = 4;
    item.dataId = 5;
    item.bytePosition = 6;
    item.bitMask = 7;
    item.frameId = 8;
    item.current.valueNumber = 9;
    EXPECT_EQ(WireHex(item),
              "01000000"
              "01000000"
              "02"
              "03"
              "04"
              "0500"
              "0600"
              "0700"
              "08000000"
              "03000000"
              "09" +
                  kEmptyText + "0000" + kEmptyList + kEmptyList);
}

TEST(CustomListInfo, VersionPrefixLeadsTheHeaderAndNoCommKeepsItsOwnId) {
    CGetCustomListInfoSnd request;
    EXPECT_EQ(WireHex(request),
              "01000000"
              "80000000" +
                  kNoStatus);
    CGetCustomListInfoSnd request3(3);
    EXPECT_EQ(WireHex(request3),
              "03000000"
              "80000000" +
                  kNoStatus);

    CGetCustomListInfoNoCommSnd noComm;
    EXPECT_EQ(noComm.GetCmdId(), 168u);
    EXPECT_EQ(WireHex(noComm),
              "01000000"
              "a8000000" +
                  kNoStatus);
    CGetCustomListInfoNoCommRcv noCommAnswer;
    noCommAnswer.lists.AddTail();
    EXPECT_EQ(WireHex(noCommAnswer).substr(0, 16),
              "01000000"
              "a8000000");

    // The sender's version reaches the reader, with the version rule.
    Region region;
    CCmdWriter w = region.Writer();
    w.Write(&request3);
    CGetCustomListInfoSnd reader;
    CCmdReader r = region.Reader();
    r.Read(&reader);
    EXPECT_EQ(reader.GetVersion(), 0);
    EXPECT_EQ(r.GetPosition(), 24u);
}

}  // namespace
