// A list read into again reads as a new list would. The read keeps the records it held and makes
// them new again in place, so that their texts, buffers and lists keep their memory: whatever the
// kept items held (other texts, more or fewer items, other versions, fields their version left
// off the wire, a read cut short), the result must be that of the same bytes read into a new list.
// Every record class of the class table is read so, through a sequence of regions.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

// Which texts and buffers of a walk hold no block: a new one holds none, and one that a read left
// without bytes must not hold one either.
struct Blocks : cmddata::FieldVisitor {
    std::string marks;
    void Text(const cmddata::FieldInfo&, const CCmdString& text) override {
        marks += text.GetBytes() == nullptr ? 't' : 'T';
    }
    void Bytes(const cmddata::FieldInfo&, const unsigned char* data, std::uint32_t) override {
        marks += data == nullptr ? 'b' : 'B';
    }
};

// The header words an info record keeps beside its fields: the thread id never travels, and
// some records send none of them.
std::string Words(CCmdCore& item) {
    auto* words = dynamic_cast<CCmdHeaderWords*>(&item);
    if (words == nullptr) return "";
    std::string s = std::to_string(words->GetCmdId()) + "/" + std::to_string(words->GetThreadId());
    for (int i = 1; i <= 4; ++i) s += "/" + std::to_string(words->GetStatusWord(i));
    return s;
}
// What its owner may do to an item between reads: set the words that a read need not bring.
void Touch(CCmdCore& item) {
    if (auto* words = dynamic_cast<CCmdHeaderWords*>(&item)) {
        words->SetThreadId(0x77);
        for (int i = 1; i <= 4; ++i) words->SetStatusWord(i, 0x1000u + static_cast<unsigned>(i));
    }
}

// What a list shows: its bytes, the blocks of its texts and buffers, its items' header words, and
// its items' bytes once more at the highest version, where the fields the items' own versions
// left off show too.
template <class T>
std::string State(CCmdList<T>& list, std::uint16_t top) {
    Blocks blocks;
    cmddata::Describe(list, blocks);
    CCmdList<T> copy;
    copy = list;
    std::string words;
    list.ForEach([&words](T& item) { words += Words(item) + " "; });
    copy.ForEach([top](T& item) { SetVersion(item, top); });
    return WireHex(list, 1 << 20) + " " + blocks.marks + " " + words + WireHex(copy, 1 << 20);
}

// The bytes of a list of n items, each filled at version (none filled when seed is 0).
template <class T>
std::vector<unsigned char> ListBytes(std::uint32_t n, std::uint16_t version, std::uint32_t seed) {
    CCmdList<T> list;
    for (std::uint32_t i = 0; i < n; ++i) {
        T& item = list.GetAt(list.AddTail());
        SetVersion(item, version);
        if (seed != 0) cmddata::Fill(item, seed + i);
    }
    Region region(1 << 20);
    CCmdWriter writer = region.Writer();
    writer.Write(&list);
    return std::vector<unsigned char>(region.data(), region.data() + writer.GetPosition());
}

// Reads the first size bytes into list (a region of exactly that size); error and position.
template <class T>
std::string ReadInto(CCmdList<T>& list, const std::vector<unsigned char>& bytes, std::size_t size) {
    Region region(static_cast<std::uint32_t>(std::max<std::size_t>(size, 1)));
    std::copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size), region.data());
    CCmdReader reader;
    reader.AttachView(region.data(), static_cast<std::uint32_t>(size));
    reader.Read(&list);
    return std::to_string(reader.GetLastError()) + "@" + std::to_string(reader.GetPosition());
}

template <class T>
void ReadsAsNew() {
    T probe;
    const std::uint16_t top =
        std::max<std::uint16_t>(cmddata::HighestVersionTested(probe), probe.GetVersion());
    const auto many = ListBytes<T>(3, top, 1);
    const auto older = ListBytes<T>(1, 0, 7);
    const auto plain = ListBytes<T>(5, probe.GetVersion(), 0);
    const auto other = ListBytes<T>(2, top, 40);
    const auto none = ListBytes<T>(0, 0, 0);
    struct Step {
        const std::vector<unsigned char>& bytes;
        std::size_t size;
    };
    const Step steps[] = {
        {many, many.size()},       {older, older.size()},       {many, many.size()},
        {plain, plain.size()},     {other, other.size() / 2},   {many, many.size()},
        {none, none.size()},       {many, many.size() * 3 / 4}, {other, other.size()},
        {plain, plain.size() - 1}, {many, many.size()},
    };
    CCmdList<T> used;
    int n = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE("step " + std::to_string(n++));
        used.ForEach([](T& item) { Touch(item); });
        CCmdList<T> fresh;
        EXPECT_EQ(ReadInto(used, step.bytes, step.size), ReadInto(fresh, step.bytes, step.size));
        EXPECT_EQ(State(used, top), State(fresh, top));
    }
}

struct Case {
    const char* name;
    void (*check)();
};
void PrintTo(const Case& c, std::ostream* os) { *os << c.name; }

const Case kRecords[] = {
#define CMDDATA_RECORD(Class) {#Class, &ReadsAsNew<Class>},
#include "cmddata/classes.def"
#undef CMDDATA_RECORD
    {"CCmdString", &ReadsAsNew<CCmdString>},
    {"CCmdBuffer", &ReadsAsNew<CCmdBuffer>},
};

class ListReuse : public ::testing::TestWithParam<Case> {};

TEST_P(ListReuse, ReadingIntoAUsedListGivesWhatANewOneWould) { GetParam().check(); }

INSTANTIATE_TEST_SUITE_P(Records, ListReuse, ::testing::ValuesIn(kRecords),
                         [](const ::testing::TestParamInfo<Case>& info) {
                             return std::string(info.param.name);
                         });

// The point of keeping the items: a record read again from bytes of the same shape writes its
// texts and nested lists into the memory they hold.
TEST(ListReuseMemory, KeptRecordsReadIntoTheirOwnMemory) {
    const auto bytes = ListBytes<CCmdFrzFrmDat>(3, 1, 5);
    CCmdList<CCmdFrzFrmDat> list;
    ReadInto(list, bytes, bytes.size());
    ASSERT_EQ(list.GetCount(), 3u);
    CCmdFrzFrmDat* third = &list.GetAt(2);
    ASSERT_NE(third->items.GetCount(), 0u);
    CCmdMultiData* item = &third->items.GetAt(0);
    const unsigned char* block = item->data.GetAt();
    ASSERT_NE(block, nullptr);
    const std::string before = WireHex(list);
    ReadInto(list, bytes, bytes.size());
    EXPECT_EQ(&list.GetAt(2), third);
    EXPECT_EQ(&third->items.GetAt(0), item);
    EXPECT_EQ(item->data.GetAt(), block);
    EXPECT_EQ(WireHex(list), before);
}

}  // namespace
