// Shared regions seen through streams, and the narrow-text conversion of the platform layer.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "helpers.h"

using cmddata::SharedRegion;
using namespace testing_cmddata;
namespace result = cmddata::result;

namespace {

// Page-sized regions, so the view is exactly the region on every platform.
constexpr std::uint32_t kPage = 4096;

std::string UniqueName() {
    std::random_device device;
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    return "cmddata-core-test-" + std::to_string(device()) + "-" +
           std::to_string(static_cast<unsigned long long>(ticks) % 1000000007ull);
}

// This process's mapped address space in kB, where the system tells (Linux), else 0.
std::uint64_t MappedKb() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.compare(0, 7, "VmSize:") == 0) return std::stoull(line.substr(7));
    return 0;
}

std::size_t ToAnsi(const char16_t* text, char* out, std::size_t outSize) {
    return cmddata::platform::WideToAnsi(reinterpret_cast<const std::uint16_t*>(text), out,
                                         outSize);
}

}  // namespace

TEST(CoreRegion, StreamsOnTheHandleWriteBytesVisibleThroughData) {
    SharedRegion region = SharedRegion::Create(kPage);
    ASSERT_TRUE(region.IsValid());
    EXPECT_EQ(region.size(), kPage);
    EXPECT_EQ(Hex(region.data(), 4), "00000000");

    CCmdWordId id;
    id = 0x1234;
    CCmdWriter writer(region.handle(), region.size());
    ASSERT_TRUE(writer.IsAttached());
    writer.Write(&id);
    EXPECT_EQ(writer.GetLastError(), result::kOk);
    EXPECT_EQ(Hex(region.data(), 2), "3412");

    region.data()[2] = 0x56;
    region.data()[3] = 0x78;
    CCmdReader reader(region.handle(), region.size());
    std::int32_t value = 0;
    EXPECT_EQ(reader.Read(&value), result::kOk);
    EXPECT_EQ(value, 0x78561234);
}

// Without a shared view, a 32-bit process runs out of address space after about 1,900 streams
// over a 1 MiB region, and every later stream is silently not attached.
TEST(CoreRegion, StreamsOverOneMappingShareOneView) {
    SharedRegion region = SharedRegion::Create(1u << 20);
    ASSERT_TRUE(region.IsValid());
    const CCmdWriter first(region.handle(), region.size());
    ASSERT_TRUE(first.IsAttached());
    const std::uint64_t before = MappedKb();
    for (int i = 0; i < 20000; ++i) {
        const CCmdWriter writer(region.handle(), region.size());
        const CCmdReader reader(region.handle(), region.size());
        ASSERT_EQ(writer.GetBase(), first.GetBase()) << "stream " << i;
        ASSERT_EQ(reader.GetBase(), first.GetBase()) << "stream " << i;
    }
    if (before != 0) {
        EXPECT_LT(MappedKb(), before + 4096);
    }
}

// A closed handle's value is soon given to the next mapping; the shared view of the old one
// must not be handed to streams over the new one, even at the same size.
TEST(CoreRegion, AReusedHandleValueNeverReachesTheClosedRegionsView) {
    const unsigned char* oldView = nullptr;
    {
        SharedRegion closed = SharedRegion::Create(kPage);
        ASSERT_TRUE(closed.IsValid());
        const CCmdWriter writer(closed.handle(), closed.size());
        oldView = writer.GetBase();
    }
    for (int round = 0; round < 3; ++round) {
        SharedRegion region = SharedRegion::Create(kPage);
        ASSERT_TRUE(region.IsValid());
        CCmdWriter writer(region.handle(), region.size());
        ASSERT_TRUE(writer.IsAttached());
        EXPECT_NE(writer.GetBase(), oldView);
        const std::int32_t value = 0x12345678 + round;
        EXPECT_EQ(writer.Write(&value, 4), result::kOk);
        EXPECT_EQ(Hex(region.data(), 4), Hex(reinterpret_cast<const unsigned char*>(&value), 4));
        oldView = writer.GetBase();
    }
}

TEST(CoreRegion, StreamSizeLargerThanTheMappingIsCutToTheView) {
    SharedRegion region = SharedRegion::Create(kPage);
    ASSERT_TRUE(region.IsValid());
    CCmdWriter writer(region.handle(), 2 * kPage);
    EXPECT_EQ(writer.GetSize(), kPage);
    std::vector<unsigned char> page(kPage, 0x33);
    EXPECT_EQ(writer.Write(page.data(), kPage), result::kOk);
    EXPECT_EQ(writer.Write('x'), result::kPastEnd);
    EXPECT_EQ(region.data()[kPage - 1], 0x33);
}

TEST(CoreRegion, NamedRegionIsSharedWithItsOpener) {
    const std::string name = UniqueName();
    SharedRegion created = SharedRegion::CreateNamed(name, kPage);
    ASSERT_TRUE(created.IsValid()) << name;
    SharedRegion opened = SharedRegion::OpenNamed(name);
    ASSERT_TRUE(opened.IsValid());
    EXPECT_GE(opened.size(), kPage);
    created.data()[10] = 0x5A;
    EXPECT_EQ(opened.data()[10], 0x5A);

    CCmdWriter writer(opened.handle(), opened.size());
    writer.Write(std::int32_t{0x0A0B0C0D});
    EXPECT_EQ(Hex(created.data(), 4), "0d0c0b0a");

    EXPECT_FALSE(SharedRegion::CreateNamed(name, kPage).IsValid());  // the name is taken
}

TEST(CoreRegion, BadNamesAndSizesGiveAnInvalidRegion) {
    for (const std::string& name : {std::string(), std::string("a/b"), std::string("a b"),
                                    std::string("back\\slash"), std::string(61, 'n')}) {
        EXPECT_FALSE(SharedRegion::CreateNamed(name, kPage).IsValid()) << name;
        EXPECT_FALSE(SharedRegion::OpenNamed(name).IsValid()) << name;
    }
    EXPECT_FALSE(SharedRegion::OpenNamed(UniqueName()).IsValid());
    EXPECT_FALSE(SharedRegion::Create(0).IsValid());
    EXPECT_FALSE(CCmdReader(SharedRegion().handle(), 64).IsAttached());
}

TEST(CoreRegion, MovingHandsOverTheMapping) {
    SharedRegion first = SharedRegion::Create(kPage);
    ASSERT_TRUE(first.IsValid());
    unsigned char* view = first.data();
    view[0] = 0x11;
    SharedRegion second(std::move(first));
    EXPECT_FALSE(first.IsValid());
    EXPECT_EQ(second.data(), view);
    EXPECT_EQ(second.size(), kPage);

    SharedRegion third = SharedRegion::Create(kPage);
    third = std::move(second);  // lets go of third's own mapping
    EXPECT_FALSE(second.IsValid());
    EXPECT_EQ(third.data(), view);
    EXPECT_EQ(third.data()[0], 0x11);
}

TEST(CorePlatform, WideToAnsiConvertsAsciiWithItsTerminator) {
    char out[8] = {};
    EXPECT_EQ(ToAnsi(u"AB", out, sizeof out), 3u);
    EXPECT_EQ(std::string(out, 3), std::string("AB\0", 3));

    char small[3] = {'-', '-', '-'};
    EXPECT_EQ(ToAnsi(u"ABCD", small, 2), 0u);  // too small: the first bytes stay, result 0
    EXPECT_EQ(small[0], 'A');
    EXPECT_EQ(small[1], 'B');
    EXPECT_EQ(small[2], '-');
}

TEST(CorePlatform, WideToAnsiUsesTheWesternCodePage) {
    char out[4] = {};
    if (ToAnsi(u"\u00e9", out, sizeof out) != 2 || static_cast<unsigned char>(out[0]) != 0xE9)
        GTEST_SKIP() << "the system's ANSI code page is not the Western one";
    EXPECT_EQ(ToAnsi(u"\u20ac", out, sizeof out), 2u);
    EXPECT_EQ(static_cast<unsigned char>(out[0]), 0x80);
    EXPECT_EQ(ToAnsi(u"\u0416", out, sizeof out), 2u);  // outside the page
    EXPECT_EQ(out[0], '?');
}
