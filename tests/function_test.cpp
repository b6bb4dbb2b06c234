// Function lists and utilities: the version-6 double word and the fields that travel out of
// their declaration order.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

// Bytes of a CCmdFunction after its prefix and empty name, up to the version-5 word.
std::size_t FunctionBytesBeforeExtension() { return 4 + 6 + 3 * 2 + 2 * 4 + 2 + 2 * 4 + 4 * 4; }

TEST(Function, VersionSixSendsTheVersionFiveWordTwice) {
    CCmdFunction f;
    EXPECT_EQ(f.GetVersion(), 6);
    f.extension = 0x11223344;
    f.flags = 0x55;
    const std::string hex = WireHex(f);
    const std::size_t at = 2 * FunctionBytesBeforeExtension();
    EXPECT_EQ(hex.substr(at, 16), "4433221144332211");
    EXPECT_EQ(hex.size() / 2, FunctionBytesBeforeExtension() + 4 + 4 + 12 * 2 + 4);
    EXPECT_EQ(hex.substr(hex.size() - 8), "55000000");

    CCmdFunction v5(5);
    v5.extension = 0x11223344;
    const std::string hex5 = WireHex(v5);
    EXPECT_EQ(hex5.size() / 2, FunctionBytesBeforeExtension() + 4);
    EXPECT_EQ(hex5.substr(at), "44332211");

    CCmdFunction v1(1);
    EXPECT_EQ(WireHex(v1), "01000000" + kEmptyText + std::string(2 * (6 + 8), '0'));
}

TEST(Function, ReaderKeepsTheSecondCopyOfTheVersionFiveWord) {
    CCmdFunction sent;
    sent.extension = 1;
    Region region;
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    region.data()[FunctionBytesBeforeExtension() + 4] = 2;  // the second copy differs
    CCmdFunction received;
    CCmdReader reader = region.Reader();
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), 0u);
    EXPECT_EQ(reader.GetPosition(), writer.GetPosition());
    EXPECT_EQ(received.extension, 2u);
}

TEST(Function, VersionSixReaderOfAVersionFourObjectStopsAfterTheOptions) {
    CCmdFunction old(4);
    old.options[3] = 9;
    Region region;
    CCmdWriter writer = region.Writer();
    writer.Write(&old);
    EXPECT_EQ(writer.GetPosition(), FunctionBytesBeforeExtension());
    CCmdFunction received;
    received.extension = 7;
    CCmdReader reader = region.Reader();
    reader.Read(&received);
    EXPECT_EQ(received.GetVersion(), 4);
    EXPECT_EQ(reader.GetPosition(), writer.GetPosition());
    EXPECT_EQ(received.options[3], 9u);
    EXPECT_EQ(received.extension, 7u);  // not on the wire at version 4
}

TEST(FunctionRecords, WordsSentBeforeTheFieldsTheyAreDeclaredAfter) {
    CCmdFunc func;
    func.functionId = 0x0102;
    func.attribute = 0x03040506;
    func.name = "A";
    EXPECT_EQ(WireHex(func),
              "01000000"
              "0201"
              "06050403"
              "01000000"
              "0200"
              "4100" +
                  kEmptyList);

    CCmdIdCodeFunc id(1);
    id.functionId = 0x0102;
    id.attribute = 0x03040506;
    id.option = 0x0708090a;
    EXPECT_EQ(WireHex(id), "01000000" + kEmptyText +
                               "06050403"
                               "0201"
                               "0a090807");
    EXPECT_EQ(CCmdIdCodeFunc().GetVersion(), 4);
}

TEST(FunctionMessages, WorkSupportAnswerSendsListThenWordsInReverse) {
    CGetWorkSupportListRcv answer;
    answer.firstWord = 0x0102;
    answer.secondWord = 0x0304;
    EXPECT_EQ(WireHex(answer), "23000000" + kNoStatus + kEmptyList +
                                   "0403"
                                   "0201");
}

}  // namespace
