// The typed list: wire form, index rules, removal, reading, assignment and shared copies.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "helpers.h"

using namespace testing_cmddata;
namespace result = cmddata::result;

namespace {

// A prefix-only item that counts how many of its kind are alive.
class Tracked : public CCmdCore {
public:
    Tracked() { ++alive; }
    Tracked(const Tracked& other) : CCmdCore(other) { ++alive; }
    Tracked& operator=(const Tracked&) = default;
    ~Tracked() override { --alive; }
    static const char* TypeName() { return "Tracked"; }
    static int alive;
};
int Tracked::alive = 0;

CCmdList<CCmdWordId> Words(std::initializer_list<std::uint16_t> values) {
    CCmdList<CCmdWordId> list;
    for (std::uint16_t v : values) list.GetAt(list.AddTail()) = v;
    return list;
}

std::vector<std::uint16_t> Values(const CCmdList<CCmdWordId>& list) {
    std::vector<std::uint16_t> out;
    list.ForEach([&](CCmdWordId& w) { out.push_back(w); });
    return out;
}

CCmdList<CCmdString> Texts(std::initializer_list<const char*> texts) {
    CCmdList<CCmdString> list;
    for (const char* t : texts) list.GetAt(list.AddTail()) = t;
    return list;
}

template <class T>
void ReadFrom(T& object, const std::vector<unsigned char>& bytes) {
    Region region(static_cast<std::uint32_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), region.data());
    CCmdReader reader = region.Reader();
    object.Read(reader);
    EXPECT_EQ(reader.GetLastError(), result::kOk);
}

}  // namespace

TEST(CoreList, IndexPastTheEndYieldsTheFirstItem) {
    CCmdList<CCmdWordId> list = Words({10, 20, 30});
    EXPECT_EQ(&list.GetAt(5), &list.GetAt(0));
    EXPECT_EQ(&list.GetAt(3), &list.GetAt(0));
    EXPECT_EQ(static_cast<std::uint16_t>(list.GetAt(2)), 30);
    EXPECT_EQ(static_cast<std::uint16_t>(list[1]), 20);
    EXPECT_EQ(static_cast<std::uint16_t>(list[7]), 10);
}

TEST(CoreList, RemoveAtRules) {
    CCmdList<CCmdWordId> list = Words({1, 2, 3});
    EXPECT_FALSE(list.RemoveAt(3));
    EXPECT_EQ(Values(list), (std::vector<std::uint16_t>{1, 2, 3}));
    EXPECT_TRUE(list.RemoveAt(2));  // the second item becomes the tail
    EXPECT_EQ(list.AddTail(), 2u);
    list.GetAt(2) = 9;
    EXPECT_EQ(WireHex(list), Wire("01000000 03000000 0100 0200 0900"));
    EXPECT_TRUE(list.RemoveAt(1));
    EXPECT_TRUE(list.RemoveAt(0));
    EXPECT_EQ(Values(list), (std::vector<std::uint16_t>{9}));
    EXPECT_TRUE(list.RemoveAt(0));  // the only item: head and tail go
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_FALSE(list.RemoveAt(0));
    EXPECT_EQ(WireHex(list), Wire("01000000 00000000"));
    EXPECT_EQ(list.AddTail(), 0u);
    EXPECT_EQ(list.AddTail(), 1u);
    EXPECT_EQ(list.GetCount(), 2u);
}

TEST(CoreList, AddTailOfAnItemAssignsACopy) {
    CCmdList<CCmdString> list;
    CCmdString text;
    text = "x";
    EXPECT_EQ(list.AddTail(text), 0u);
    EXPECT_EQ(list.AddTail(list.GetAt(0)), 1u);
    EXPECT_NE(list.GetAt(1).GetBytes(), text.GetBytes());
    EXPECT_EQ(WireHex(list.GetAt(1)), WireHex(text));
}

TEST(CoreList, ReadingReplacesTheItemsHeldBefore) {
    {
        CCmdList<Tracked> list;
        list.AddTail();
        list.AddTail();
        list.AddTail();
        EXPECT_EQ(Tracked::alive, 3);
        ReadFrom(list, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
        EXPECT_EQ(list.GetCount(), 1u);
        EXPECT_EQ(Tracked::alive, 1);
    }
    EXPECT_EQ(Tracked::alive, 0);

    CCmdList<CCmdWordId> words = Words({5, 6, 7});
    ReadFrom(words, {1, 0, 0, 0, 1, 0, 0, 0, 0x34, 0x12});
    EXPECT_EQ(Values(words), (std::vector<std::uint16_t>{0x1234}));
}

TEST(CoreList, AssignmentCopiesDeeplyAndKeepsTheListsOwnVersion) {
    CCmdList<CCmdString> source = Texts({"one", "two"});
    CCmdList<CCmdString> target;
    ReadFrom(target, {3, 0, 0x34, 0x12, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 'z', 0});
    EXPECT_EQ(target.GetVersion(), 0);  // the data was newer than the list
    target = source;
    EXPECT_EQ(target.GetVersion(), 0);
    EXPECT_EQ(target.GetReserved(), 0x1234);
    EXPECT_EQ(target.GetCount(), 2u);
    EXPECT_NE(&target.GetAt(1), &source.GetAt(1));
    EXPECT_NE(target.GetAt(1).GetBytes(), source.GetAt(1).GetBytes());
    source.RemoveAll();
    EXPECT_EQ(WireHex(target.GetAt(1)), Wire("01000000 0400 74776f00"));

    auto& alias = target;
    target = alias;
    EXPECT_EQ(target.GetCount(), 2u);
}

TEST(CoreList, CopySharesNodesEitherMayGoFirst) {
    for (bool sourceFirst : {true, false}) {
        auto* source = new CCmdList<CCmdString>(Texts({"a", "b", "c"}));
        auto* copy = new CCmdList<CCmdString>(*source);
        EXPECT_EQ(&copy->GetAt(1), &source->GetAt(1));
        EXPECT_EQ(copy->GetAt(1).GetBytes(), source->GetAt(1).GetBytes());
        const std::string wire = WireHex(*source);
        auto*& first = sourceFirst ? source : copy;
        auto*& second = sourceFirst ? copy : source;
        delete first;
        EXPECT_EQ(WireHex(*second), wire);
        delete second;
    }
    for (bool sourceFirst : {true, false}) {
        CCmdList<CCmdString> source = Texts({"a", "b"});
        CCmdList<CCmdString> copy(source);
        const std::string wire = WireHex(source);
        (sourceFirst ? source : copy).RemoveAll();
        EXPECT_EQ(WireHex(sourceFirst ? copy : source), wire);
        EXPECT_TRUE((sourceFirst ? source : copy).IsEmpty());
    }
}

TEST(CoreList, ChangingASharedCopyLeavesTheOtherIntact) {
    CCmdList<CCmdWordId> source = Words({1, 2, 3});
    CCmdList<CCmdWordId> grown(source);
    grown.GetAt(grown.AddTail()) = 4;
    EXPECT_EQ(Values(source), (std::vector<std::uint16_t>{1, 2, 3}));
    EXPECT_EQ(Values(grown), (std::vector<std::uint16_t>{1, 2, 3, 4}));

    CCmdList<CCmdWordId> shrunk(source);
    EXPECT_TRUE(shrunk.RemoveAt(0));
    EXPECT_EQ(Values(source), (std::vector<std::uint16_t>{1, 2, 3}));
    EXPECT_EQ(Values(shrunk), (std::vector<std::uint16_t>{2, 3}));

    CCmdList<CCmdWordId> kept(source);
    EXPECT_TRUE(source.RemoveAt(2));
    source.AddTail();
    EXPECT_EQ(Values(kept), (std::vector<std::uint16_t>{1, 2, 3}));
    EXPECT_EQ(Values(source), (std::vector<std::uint16_t>{1, 2, 0}));

    CCmdList<CCmdWordId> assigned(source);
    assigned = source;  // assigning from the list whose nodes it shares
    EXPECT_EQ(Values(assigned), Values(source));
    EXPECT_NE(&assigned.GetAt(0), &source.GetAt(0));
}

// Appends and removals in any mix keep the list in step with a vector: indexes, visits, the
// wire form, copies and assignment, and every item destroyed once.
TEST(CoreList, RemovalsAndAppendsKeepTheOrder) {
    CCmdList<CCmdWordId> list;
    std::vector<std::uint16_t> model;
    auto wireOf = [](const std::vector<std::uint16_t>& values) {
        CCmdList<CCmdWordId> built;
        for (std::uint16_t v : values) built.GetAt(built.AddTail()) = v;
        return WireHex(built);
    };
    for (std::uint16_t v = 0; v < 100; ++v) {  // across several chunks before any removal
        list.GetAt(list.AddTail()) = v;
        model.push_back(v);
    }
    for (std::uint32_t i = 0; i < model.size(); ++i) ASSERT_EQ(list.GetAt(i), model[i]) << i;
    std::uint32_t seed = 7;
    auto next = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return seed >> 8;
    };
    for (std::uint16_t round = 100; round < 700; ++round) {
        if (model.empty() || next() % 3 == 0) {
            list.GetAt(list.AddTail()) = round;
            model.push_back(round);
        } else {
            const std::uint32_t at = next() % static_cast<std::uint32_t>(model.size());
            ASSERT_TRUE(list.RemoveAt(at));
            model.erase(model.begin() + at);
        }
        ASSERT_EQ(list.GetCount(), model.size());
        if (!model.empty()) {
            const std::uint32_t at = next() % static_cast<std::uint32_t>(model.size());
            ASSERT_EQ(list.GetAt(at), model[at]) << round;
        }
    }
    for (int i = 0; i < 20; ++i) {  // and back up, through the slots removed
        list.GetAt(list.AddTail()) = static_cast<std::uint16_t>(1000 + i);
        model.push_back(static_cast<std::uint16_t>(1000 + i));
    }
    EXPECT_EQ(Values(list), model);
    EXPECT_EQ(WireHex(list), wireOf(model));

    CCmdList<CCmdWordId> copy(list);  // shares the reordered items, then takes its own
    copy.GetAt(copy.AddTail()) = 9;
    CCmdList<CCmdWordId> assigned;
    assigned = list;
    EXPECT_EQ(Values(list), model);
    EXPECT_EQ(Values(assigned), model);
    model.push_back(9);
    EXPECT_EQ(Values(copy), model);

    const int before = Tracked::alive;
    {
        CCmdList<Tracked> tracked;
        for (int i = 0; i < 10; ++i) tracked.AddTail();
        ASSERT_TRUE(tracked.RemoveAt(3));
        ASSERT_TRUE(tracked.RemoveAt(0));
        tracked.AddTail();
        EXPECT_EQ(Tracked::alive - before, 9);
        tracked.RemoveAll();  // the removed slots hold no item to destroy again
        EXPECT_EQ(Tracked::alive, before);
        for (int i = 0; i < 6; ++i) tracked.AddTail();
        ASSERT_TRUE(tracked.RemoveAt(5));
        EXPECT_EQ(Tracked::alive - before, 5);
    }
    EXPECT_EQ(Tracked::alive, before);
}

// Reading must be linear in the count; a walk from the head per item would take minutes here.
TEST(CoreList, HundredThousandItemsRoundTrip) {
    const std::uint32_t n = 100000;
    CCmdList<CCmdDwordId> list;
    CCmdDwordId item;
    for (std::uint32_t i = 0; i < n; ++i) {
        item = i * 3;
        list.AddTail(item);
    }
    Region region(8 + 4 * n);
    CCmdWriter writer = region.Writer();
    writer.Write(&list);
    ASSERT_EQ(writer.GetLastError(), result::kOk);
    CCmdList<CCmdDwordId> back;
    CCmdReader reader = region.Reader();
    reader.Read(&back);
    EXPECT_EQ(reader.GetLastError(), result::kOk);
    ASSERT_EQ(back.GetCount(), n);
    std::uint32_t expected = 0;
    bool same = true;
    back.ForEach([&](CCmdDwordId& v) {
        same = same && static_cast<std::uint32_t>(v) == expected;
        expected += 3;
    });
    EXPECT_TRUE(same);
}

TEST(CoreList, NodesStayPutAndTheirMemoryIsUsedAgain) {
    CCmdList<CCmdWordId> list = Words({1, 2, 3, 4});
    CCmdWordId* second = &list.GetAt(1);
    CCmdWordId* fourth = &list.GetAt(3);
    for (int i = 0; i < 100; ++i) list.AddTail();  // growing moves no item
    EXPECT_EQ(&list.GetAt(1), second);
    EXPECT_EQ(&list.GetAt(3), fourth);
    ASSERT_TRUE(list.RemoveAt(1));
    EXPECT_EQ(&list.GetAt(2), fourth);
    list.GetAt(list.AddTail()) = 9;  // the removed item's slot is the next one used
    EXPECT_EQ(&list.GetAt(list.GetCount() - 1), second);
    const std::vector<std::uint16_t> values = Values(list);  // list order, not slot order
    ASSERT_EQ(values.size(), 104u);
    EXPECT_EQ(values[1], 3);
    EXPECT_EQ(values[2], 4);
    EXPECT_EQ(values[103], 9);

    // Emptying keeps the memory: the same number of items comes back at the same addresses.
    CCmdWordId* first = &list.GetAt(0);
    list.RemoveAll();
    list.AddTail();
    EXPECT_EQ(&list.GetAt(0), first);

    // Reading into the list again uses its nodes again, and reads them right.
    const std::vector<unsigned char> two = {1, 0, 0, 0, 2, 0, 0, 0, 7, 0, 8, 0};
    ReadFrom(list, two);
    first = &list.GetAt(0);
    ReadFrom(list, two);
    EXPECT_EQ(&list.GetAt(0), first);
    EXPECT_EQ(Values(list), (std::vector<std::uint16_t>{7, 8}));
}

TEST(CoreList, ANumberListReadAgainMakesItsKeptItemsNew) {
    // A read keeps a list's numbers in their slots: an item whose version its owner changed comes
    // back as a new item, and items kept past a shorter read come back right in a longer one.
    const std::vector<unsigned char> three = {1, 0, 0, 0, 3, 0, 0, 0, 1, 0, 2, 0, 3, 0};
    CCmdList<CCmdWordId> words;
    ReadFrom(words, three);
    CCmdWordId* second = &words.GetAt(1);
    SetVersion(words.GetAt(1), 9);
    SetVersion(words.GetAt(2), 9);
    ReadFrom(words, {1, 0, 0, 0, 2, 0, 0, 0, 5, 0, 6, 0});
    EXPECT_EQ(Values(words), (std::vector<std::uint16_t>{5, 6}));
    EXPECT_EQ(words.GetAt(1).GetVersion(), 1);
    ReadFrom(words, three);
    EXPECT_EQ(&words.GetAt(1), second);
    EXPECT_EQ(Values(words), (std::vector<std::uint16_t>{1, 2, 3}));
    EXPECT_EQ(words.GetAt(2).GetVersion(), 1);
    EXPECT_EQ(WireHex(words), Hex(three.data(), three.size()));
}

TEST(CoreList, ReadingAgainDestroysEveryOldItemAndSparesSharedCopies) {
    // Items with texts: every old text must go (ASan reports a leak otherwise), and a copy that
    // shares the nodes keeps its items while the list reads new ones.
    std::vector<unsigned char> texts = {1, 0, 0, 0, 2, 0, 0, 0};
    for (const char* t : {"ab", "cd"}) {
        const std::vector<unsigned char> one = {
            1, 0, 0, 0, 2, 0, static_cast<unsigned char>(t[0]), static_cast<unsigned char>(t[1])};
        texts.insert(texts.end(), one.begin(), one.end());
    }
    CCmdList<CCmdString> list = Texts({"x", "y", "z"});
    CCmdList<CCmdString> copy(list);
    ReadFrom(list, texts);
    ASSERT_EQ(list.GetCount(), 2u);
    EXPECT_EQ(Hex(list.GetAt(1).GetBytes(), 2), "6364");
    ASSERT_EQ(copy.GetCount(), 3u);
    EXPECT_EQ(Hex(copy.GetAt(2).GetBytes(), 2), "7a00");
    // Read again, the texts are written into the blocks they hold; one that comes empty holds
    // none, as a new text would.
    const unsigned char* block = list.GetAt(1).GetBytes();
    ReadFrom(list, texts);
    EXPECT_EQ(Hex(list.GetAt(0).GetBytes(), 2), "6162");
    EXPECT_EQ(list.GetAt(1).GetBytes(), block);
    ReadFrom(list, {1, 0, 0, 0, 3, 0, 0, 0, 1, 0, 0, 0, 0,    0,
                    1, 0, 0, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0x79, 0});
    ASSERT_EQ(list.GetCount(), 3u);
    EXPECT_EQ(list.GetAt(0).GetBytes(), nullptr);
    EXPECT_EQ(list.GetAt(1).GetBytes(), nullptr);
    EXPECT_EQ(list.GetAt(2).GetVersion(), 0);  // a newer sender's version, as for a new text
    EXPECT_EQ(Hex(list.GetAt(2).GetBytes(), 1), "79");

    // A huge read followed by a small one: the small one works from the kept memory or new,
    // and the items read are right either way.
    CCmdList<CCmdWordId> words;
    std::vector<unsigned char> many = {1, 0, 0, 0, 0x10, 0x27, 0, 0};  // 10,000 items
    many.resize(many.size() + 20000, 0x11);
    ReadFrom(words, many);
    EXPECT_EQ(words.GetCount(), 10000u);
    ReadFrom(words, {1, 0, 0, 0, 1, 0, 0, 0, 0x22, 0x11});
    EXPECT_EQ(Values(words), (std::vector<std::uint16_t>{0x1122}));
}
