// Captured wire bytes of every class of the table, filled as the demo fills them: a message at
// its command's default version with the demo's seed, a record or layout at the highest version
// its field list tests. A change to any class's wire form fails here. The files are rewritten
// only by scripts/update-golden.sh, and a commit that changes them says why.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "helpers.h"

namespace {

using cmddata::ClassInfo;

std::string GoldenPath(const ClassInfo& c) {
    return std::string(CMDDATA_GOLDEN_DIR) + "/" + c.name + ".bin";
}

// The object as the capture makes it.
std::unique_ptr<CCmdCore> Captured(const ClassInfo& c) {
    if (c.command != nullptr) {
        std::unique_ptr<CCmdCore> m(c.make(cmddata::DefaultVersion(*c.command, c.side)));
        cmddata::Fill(*m, cmddata::FillSeed(*c.command, c.side));
        return m;
    }
    std::unique_ptr<CCmdCore> probe(c.make(1));
    const std::uint16_t version = std::max<std::uint16_t>(cmddata::HighestVersionTested(*probe), 1);
    std::unique_ptr<CCmdCore> r(c.make(version));
    cmddata::Fill(*r, 1);
    return r;
}

std::vector<unsigned char> Bytes(CCmdCore& object) {
    testing_cmddata::Region region(1 << 16);
    CCmdWriter w = region.Writer();
    w.Write(&object);
    EXPECT_EQ(w.GetLastError(), cmddata::result::kOk);
    return {region.data(), region.data() + w.GetPosition()};
}

std::vector<unsigned char> Load(const std::string& path, bool* found) {
    std::vector<unsigned char> bytes;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    *found = f != nullptr;
    if (f == nullptr) return bytes;
    unsigned char chunk[4096];
    for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, f)) > 0;)
        bytes.insert(bytes.end(), chunk, chunk + n);
    std::fclose(f);
    return bytes;
}

class Golden : public ::testing::TestWithParam<const ClassInfo*> {};

TEST_P(Golden, WireBytesMatchTheCapture) {
    const ClassInfo& c = *GetParam();
    const std::vector<unsigned char> now = Bytes(*Captured(c));
    if (std::getenv("CMDDATA_GOLDEN_WRITE") != nullptr) {  // scripts/update-golden.sh
        std::FILE* f = std::fopen(GoldenPath(c).c_str(), "wb");
        ASSERT_NE(f, nullptr) << GoldenPath(c);
        if (!now.empty()) std::fwrite(now.data(), 1, now.size(), f);
        std::fclose(f);
        return;
    }
    bool found = false;
    const std::vector<unsigned char> captured = Load(GoldenPath(c), &found);
    ASSERT_TRUE(found) << GoldenPath(c) << " is missing: a new class is captured by "
                       << "scripts/update-golden.sh";
    EXPECT_EQ(testing_cmddata::Hex(now.data(), now.size()),
              testing_cmddata::Hex(captured.data(), captured.size()))
        << c.name << ": its wire form differs from the captured bytes";
}

std::vector<const ClassInfo*> All() {
    std::size_t count = 0;
    const ClassInfo* all = cmddata::Classes(&count);
    std::vector<const ClassInfo*> v;
    for (std::size_t i = 0; i < count; ++i) v.push_back(&all[i]);
    return v;
}

INSTANTIATE_TEST_SUITE_P(EveryClass, Golden, ::testing::ValuesIn(All()),
                         [](const auto& info) { return std::string(info.param->name); });

}  // namespace
