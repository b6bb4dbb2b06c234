// The streams and the version prefix: result codes, bounds, last error and the version rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "helpers.h"

using namespace testing_cmddata;
namespace result = cmddata::result;

namespace {

// Nothing but the version prefix, constructed with any version.
class Versioned : public CCmdCore {
public:
    explicit Versioned(std::uint16_t version, std::uint16_t reserved = 0)
        : CCmdCore(version, reserved) {}
};

// A writer of the caller's own that records the width of every raw transfer it sees.
class WidthLog : public CCmdWriter {
public:
    using CCmdWriter::Write;
    cmddata::Result Write(const void* source, std::int32_t count) override {
        widths.push_back(count);
        return CCmdWriter::Write(source, count);
    }
    std::vector<std::int32_t> widths;
};

}  // namespace

TEST(CoreStream, UnattachedStreamsReportNotAttachedOrBadArgument) {
    unsigned char bytes[4] = {};
    CCmdReader reader;
    EXPECT_EQ(reader.GetLastError(), 0u);
    EXPECT_EQ(reader.Read(bytes, 4), result::kNotAttached);
    EXPECT_EQ(reader.GetLastError(), result::kNotAttached);
    EXPECT_EQ(reader.Read(nullptr, 4), result::kBadArgument);
    EXPECT_EQ(reader.Read(bytes, -1), result::kBadArgument);
    EXPECT_EQ(reader.GetLastError(), result::kBadArgument);

    CCmdWriter writer;
    EXPECT_EQ(writer.Write(bytes, 4), result::kNotAttached);
    EXPECT_EQ(writer.Write(bytes, 0), result::kBadArgument);
    EXPECT_EQ(writer.GetLastError(), result::kNotAttached);

    // A mapping that cannot be mapped leaves the stream unattached, last error still 0.
    CCmdReader unmapped(cmddata::platform::InvalidMapping(), 64);
    EXPECT_EQ(unmapped.GetLastError(), 0u);
    EXPECT_EQ(unmapped.Read(bytes, 1), result::kNotAttached);
}

TEST(CoreStream, WriterReturnsBadArgumentWithoutStoringItReaderStoresIt) {
    Region region(8);
    unsigned char bytes[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    CCmdWriter writer = region.Writer();
    EXPECT_EQ(writer.Write(bytes, 9), result::kPastEnd);
    EXPECT_EQ(writer.Write(nullptr, 1), result::kBadArgument);
    EXPECT_EQ(writer.GetLastError(), result::kPastEnd);
    EXPECT_EQ(writer.Write(bytes, 4), result::kOk);
    EXPECT_EQ(writer.Write(bytes, -5), result::kBadArgument);
    EXPECT_EQ(writer.GetLastError(), result::kOk);

    CCmdReader reader = region.Reader();
    EXPECT_EQ(reader.Read(bytes, 4), result::kOk);
    EXPECT_EQ(reader.Read(nullptr, 1), result::kBadArgument);
    EXPECT_EQ(reader.GetLastError(), result::kBadArgument);
}

TEST(CoreStream, TransferEndingAtTheSizeSucceedsOneByteMoreMovesNothing) {
    Region region(16);  // the streams see only the first 6 bytes
    unsigned char src[4] = {0xA1, 0xA2, 0xA3, 0xA4};
    CCmdWriter writer;
    writer.AttachView(region.data(), 6);
    EXPECT_EQ(writer.Write(src, 4), result::kOk);
    EXPECT_EQ(writer.Write(src, 3), result::kPastEnd);
    EXPECT_EQ(writer.GetPosition(), 4u);
    EXPECT_EQ(writer.Write(src, 2), result::kOk);
    EXPECT_EQ(writer.Write(src, 1), result::kPastEnd);
    EXPECT_EQ(writer.GetPosition(), 6u);
    EXPECT_EQ(Hex(region.data(), 8), "a1a2a3a4a1a2eeee");

    unsigned char dst[4] = {0, 0, 0, 0};
    CCmdReader reader;
    reader.AttachView(region.data(), 6);
    EXPECT_EQ(reader.Read(dst, 4), result::kOk);
    dst[0] = 0x55;
    EXPECT_EQ(reader.Read(dst, 3), result::kPastEnd);
    EXPECT_EQ(dst[0], 0x55);  // nothing copied
    EXPECT_EQ(reader.GetPosition(), 4u);
    // A count near the top of the signed range must not wrap the bound check.
    EXPECT_EQ(reader.Read(dst, INT_MAX), result::kPastEnd);
    EXPECT_EQ(reader.Read(dst, 2), result::kOk);
    EXPECT_EQ(Hex(dst, 2), "a1a2");
}

TEST(CoreStream, LastErrorReportsTheMostRecentTransferNotTheFirstFailure) {
    Region region(6);
    std::uint32_t word = 0x11223344;
    std::uint16_t half = 0x5566;
    CCmdWriter writer = region.Writer();
    writer.Write(&word, 4);
    EXPECT_EQ(writer.Write(&word, 4), result::kPastEnd);
    EXPECT_EQ(writer.Write(&half, 2), result::kOk);
    EXPECT_EQ(writer.GetLastError(), result::kOk);
    EXPECT_EQ(Hex(region.data(), 6), "443322116655");

    CCmdReader reader = region.Reader();
    reader.Read(&word, 4);
    EXPECT_EQ(reader.Read(&word, 4), result::kPastEnd);
    reader.Read(&half, 2);
    EXPECT_EQ(reader.GetLastError(), result::kOk);
}

TEST(CoreStream, VersionRuleKeepsSenderVersionUnlessItIsNewer) {
    Versioned sender(7, 0xBEEF);
    EXPECT_EQ(WireHex(sender), "0700efbe");  // version, then reserved word

    Region region(4);
    const unsigned char prefix[4] = {0x02, 0x00, 0x34, 0x12};  // version 2, reserved 0x1234
    std::copy(prefix, prefix + 4, region.data());
    const std::uint16_t cases[][2] = {{1, 0}, {2, 2}, {3, 2}, {0xFFFF, 2}, {0, 0}};
    for (const auto& c : cases) {
        Versioned object(c[0]);
        CCmdReader reader = region.Reader();
        object.Read(reader);
        EXPECT_EQ(object.GetVersion(), c[1]) << "own version " << c[0];
        EXPECT_EQ(object.GetReserved(), 0x1234) << "own version " << c[0];
    }
}

TEST(CoreStream, FailedFirstPrefixTransferGivesSenderVersionZero) {
    Region region(1);
    Versioned object(5, 9);
    CCmdReader reader = region.Reader();
    object.Read(reader);
    EXPECT_EQ(object.GetVersion(), 0);
    EXPECT_EQ(object.GetReserved(), 9);  // its transfer failed too
    EXPECT_EQ(reader.GetLastError(), result::kPastEnd);
}

TEST(CoreStream, CopiesMoveIndependentlyOverTheSameView) {
    Region region(8);
    CCmdWriter first = region.Writer();
    first.Write("ab", 2);
    CCmdWriter second(first);
    second.Write("ab", 2);
    second.Write("ab", 2);
    EXPECT_EQ(first.GetPosition(), 2u);
    EXPECT_EQ(first.Write("XYZ", 3), result::kOk);
    EXPECT_EQ(Hex(region.data(), 8), "616258595a62eeee");

    CCmdReader reader = region.Reader();
    char c = 0;
    reader.Read(&c);
    CCmdReader later;
    later = reader;
    later.Read(&c);
    EXPECT_EQ(c, 'b');
    EXPECT_EQ(reader.GetPosition(), 1u);
    EXPECT_EQ(later.GetPosition(), 2u);
}

TEST(CoreStream, TypedTransfersMoveTheirWidthLittleEndian) {
    Region region(15);
    CCmdWriter writer = region.Writer();
    EXPECT_EQ(writer.Write('A'), result::kOk);
    EXPECT_EQ(writer.Write(std::int16_t{0x1234}), result::kOk);
    EXPECT_EQ(writer.Write(std::int32_t{0x01020304}), result::kOk);
    EXPECT_EQ(writer.Write(std::uint64_t{0x1122334455667788}), result::kOk);
    EXPECT_EQ(writer.Write('B'), result::kPastEnd);
    EXPECT_EQ(Hex(region.data(), 15), Wire("41 3412 04030201 8877665544332211"));

    CCmdReader reader = region.Reader();
    char c = 0;
    std::int16_t s = 0;
    std::int32_t i = 0;
    std::uint64_t u = 0;
    EXPECT_EQ(reader.Read(&c), result::kOk);
    EXPECT_EQ(reader.Read(&s), result::kOk);
    EXPECT_EQ(reader.Read(&i), result::kOk);
    EXPECT_EQ(reader.Read(&u), result::kOk);
    EXPECT_EQ(c, 'A');
    EXPECT_EQ(s, 0x1234);
    EXPECT_EQ(i, 0x01020304);
    EXPECT_EQ(u, 0x1122334455667788u);
    EXPECT_EQ(reader.Read(&c), result::kPastEnd);
}

TEST(CoreStream, ObjectTransferRunsTheObjectsOwnReadAndWrite) {
    Region region(64);
    CCmdString text;
    text = "AB";
    CCmdWriter writer = region.Writer();
    writer.Write(&text);
    EXPECT_EQ(Hex(region.data(), writer.GetPosition()), Wire("01000000 0300 414200"));
    CCmdString back;
    CCmdReader reader = region.Reader();
    reader.Read(&back);
    EXPECT_EQ(reader.GetLastError(), result::kOk);
    EXPECT_EQ(Hex(back.GetBytes(), back.GetSize()), "414200");

    // Every field of a nested object goes through the stream's own raw transfer.
    CCmdList<CCmdString> list;
    list.AddTail(text);
    WidthLog log;
    log.AttachView(region.data(), 64);
    log.Write(&list);
    EXPECT_EQ(log.widths, (std::vector<std::int32_t>{2, 2, 4, 2, 2, 2, 3}));
    EXPECT_EQ(Hex(region.data(), log.GetPosition()), WireHex(list));
}
