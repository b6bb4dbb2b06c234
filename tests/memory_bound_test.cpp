// What reading a region may cost in heap memory: reading N bytes into any class allocates at most
// kPerByte * N + kConstant bytes, counted as the heap's own footprint (the block malloc hands
// out plus its header). Every class of the class table is read from its written forms, fresh
// and filled, and from hostile regions: each list of the filled form given the largest count
// the rest of the region can hold, the rest zeros, so that every item is its smallest form, and
// given a count larger than that.
//
// Allocations are counted by a malloc of this program that forwards to the C library's own; the
// library's operator new and its byte blocks both end there. Where that cannot be done (other C
// libraries, the sanitizers' own malloc, a library linked with its own runtime) the test skips.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "helpers.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || \
    __has_feature(memory_sanitizer)
#define CMDDATA_OWN_MALLOC 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define CMDDATA_OWN_MALLOC 1
#endif
#if defined(__GLIBC__) && !defined(CMDDATA_OWN_MALLOC)
#define CMDDATA_COUNT_MALLOC 1
#endif

namespace {
// Footprint of the allocations made while counting is on.
bool counting = false;
std::uint64_t counted = 0;
std::uint64_t calls = 0;
}  // namespace

#if defined(CMDDATA_COUNT_MALLOC)
#include <malloc.h>
extern "C" void* __libc_malloc(std::size_t size) noexcept;
extern "C" void* malloc(std::size_t size) noexcept {
    void* block = __libc_malloc(size);
    if (counting && block != nullptr) {
        counted += malloc_usable_size(block) + sizeof(std::size_t);  // the chunk's header
        ++calls;
    }
    return block;
}
#endif

namespace {
using testing_cmddata::Region;

// The bound this test holds every read to (README, "Memory a read may take"). The worst is a list
// of trouble codes: an item is 29 bytes on the wire at version 0 but a whole record in memory,
// three freeze frames included (3.5 KB on a 64-bit system: 122 bytes per byte read). Next come
// byte lists: one item of 16 bytes per byte, in a chunk of items sized to the count.
constexpr std::uint64_t kPerByte = 128;
constexpr std::uint64_t kConstant = 4096;  // measured: 0

struct Cost {
    std::uint64_t bytes = 0, allocations = 0;
};

struct Counting {
    Counting() {
        counted = 0;
        calls = 0;
        counting = true;
    }
    ~Counting() { counting = false; }
};

/// The heap footprint of reading bytes into object.
Cost ReadCost(CCmdCore& object, const std::vector<unsigned char>& bytes) {
    Region region(static_cast<std::uint32_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), region.data());
    CCmdReader reader = region.Reader();
    {
        Counting on;
        reader.Read(&object);
    }
    return Cost{counted, calls};
}

std::vector<unsigned char> Written(CCmdCore& object) {
    Region region(cmddata::WireSize(object));
    CCmdWriter writer = region.Writer();
    writer.Write(&object);
    return std::vector<unsigned char>(region.data(), region.data() + writer.GetPosition());
}

/// Where the lists of a walk start, and the size of a list that ended at a given offset.
struct Lists : cmddata::FieldVisitor {
    std::vector<std::uint32_t> starts;
    std::uint32_t watched = 0, watchedSize = 0;
    void BeginList(const cmddata::FieldInfo& f, std::uint32_t, const char* itemType) override {
        if (itemType != nullptr) starts.push_back(f.offset);
    }
    void EndList(const cmddata::FieldInfo& f) override {
        if (f.offset == watched && watchedSize == 0) watchedSize = f.size;
    }
};

/// The bytes before the list at offset, then count, then zeros up to size bytes in all.
std::vector<unsigned char> WithCount(const std::vector<unsigned char>& filled, std::uint32_t at,
                                     std::uint32_t count, std::size_t size) {
    std::vector<unsigned char> bytes(filled.begin(), filled.begin() + at + 4);
    bytes.resize(size, 0);
    for (int i = 0; i < 4; ++i) bytes[at + 4 + i] = static_cast<unsigned char>(count >> (8 * i));
    return bytes;
}

struct Worst {
    double perByte = 0;
    std::int64_t overLinear = 0;  // the largest allocation beyond kPerByte * N
    std::string what;
    std::uint64_t bytes = 0, allocations = 0, size = 0;
};

/// One class's inputs, each read into a fresh object: written fresh, written filled, and for
/// each list of the filled form the count that fills room more bytes with smallest items, and
/// a count that room cannot hold.
/// Returns the first read that breaks the bound (empty when none does).
template <class Make>
std::string CheckClass(const char* name, Make make, std::uint32_t room, Worst& worst) {
    std::unique_ptr<CCmdCore> sample(make());
    if (!sample) return std::string(name) + ": not built";
    std::vector<std::pair<std::string, std::vector<unsigned char>>> inputs;
    inputs.emplace_back("fresh", Written(*sample));
    cmddata::Fill(*sample);
    const std::vector<unsigned char> filled = Written(*sample);
    inputs.emplace_back("filled", filled);
    Lists lists;
    cmddata::Describe(*sample, lists);
    for (std::uint32_t at : lists.starts) {
        if (at + 8 > filled.size()) continue;
        // Its smallest item, from a count of 1 and zeros.
        Lists one;
        one.watched = at;
        std::vector<unsigned char> probe = WithCount(filled, at, 1, at + 8 + 4096);
        Region region(static_cast<std::uint32_t>(probe.size()));
        std::copy(probe.begin(), probe.end(), region.data());
        CCmdReader reader = region.Reader();
        std::unique_ptr<CCmdCore> target(make());
        cmddata::DecodeAndDescribe(*target, reader, one);
        if (one.watchedSize <= 8) continue;
        const std::uint32_t smallest = one.watchedSize - 8;
        inputs.emplace_back(
            "list at " + std::to_string(at) + ", items of " + std::to_string(smallest) + " bytes",
            WithCount(filled, at, room / smallest, at + 8 + room));
        // A count of one-byte items, which that room cannot hold: nothing may be made for it.
        if (smallest > 1)
            inputs.emplace_back("list at " + std::to_string(at) + ", count too large",
                                WithCount(filled, at, room, at + 8 + room));
    }
    for (const auto& input : inputs) {
        std::unique_ptr<CCmdCore> target(make());
        const Cost cost = ReadCost(*target, input.second);
        const std::uint64_t n = input.second.size();
        const double perByte = n > 1024 ? static_cast<double>(cost.bytes) / n : 0;
        if (perByte > worst.perByte)
            worst =
                Worst{perByte,    worst.overLinear, std::string(name) + " (" + input.first + ")",
                      cost.bytes, cost.allocations, n};
        const std::int64_t over = static_cast<std::int64_t>(cost.bytes - kPerByte * n);
        if (over > worst.overLinear) worst.overLinear = over;
        if (cost.bytes > kPerByte * n + kConstant)
            return std::string(name) + " (" + input.first + "): " + std::to_string(n) +
                   " bytes read, " + std::to_string(cost.bytes) + " bytes allocated";
    }
    return {};
}

template <class T>
CCmdCore* MakeOne() {
    return new T();
}

// Every class of the class table, each made at the version its constructor is given by default.
template <class F>
void ForEachClass(F&& visit) {
    std::size_t count = 0;
    const cmddata::ClassInfo* all = cmddata::Classes(&count);
    for (std::size_t i = 0; i < count; ++i) visit(all[i]);
}
CCmdCore* MakeAtDefault(const cmddata::ClassInfo& c) {
    return c.make(c.command != nullptr ? cmddata::DefaultVersion(*c.command, c.side)
                                       : std::uint16_t{1});
}

bool Measurable() {
#if defined(CMDDATA_COUNT_MALLOC)
    // The library's allocations must reach this program's malloc.
    CCmdBuffer buffer;
    {
        Counting on;
        buffer.SetSize(1000);
    }
    return counted >= 1000;
#else
    return false;
#endif
}

}  // namespace

TEST(MemoryBound, ReadingNBytesAllocatesAtMostLinearlyInN) {
    if (!Measurable())
        GTEST_SKIP() << "allocations cannot be counted here (counted through the GNU C library's "
                        "malloc, which a sanitizer or another C library replaces)";
    // Room of 64 KiB after each list count: the constant is then small beside the items.
    constexpr std::uint32_t kRoom = 64 * 1024;
    Worst worst;
    std::vector<std::string> broken;
    auto check = [&](const char* name, auto make) {
        std::string failure = CheckClass(name, make, kRoom, worst);
        if (!failure.empty()) broken.push_back(failure);
    };
    check("CCmdList<CCmdString>", &MakeOne<CCmdList<CCmdString>>);
    check("CCmdList<CCmdBuffer>", &MakeOne<CCmdList<CCmdBuffer>>);
    check("CCmdList<CCmdList<CCmdDwordData>>", &MakeOne<CCmdList<CCmdList<CCmdDwordData>>>);
    ForEachClass(
        [&](const cmddata::ClassInfo& c) { check(c.name, [&c] { return MakeAtDefault(c); }); });
    // The measured worst, for the record in the README.
    std::printf(
        "[ memory   ] worst: %s: %llu bytes read, %llu allocations, %llu bytes (%.1f per "
        "byte read); most beyond %llu * N: %lld bytes\n",
        worst.what.c_str(), static_cast<unsigned long long>(worst.size),
        static_cast<unsigned long long>(worst.allocations),
        static_cast<unsigned long long>(worst.bytes), worst.perByte,
        static_cast<unsigned long long>(kPerByte), static_cast<long long>(worst.overLinear));
    EXPECT_TRUE(broken.empty()) << broken.size() << " reads over " << kPerByte << " * N + "
                                << kConstant << ", the first: " << broken.front();
}

// An object that answers the same command again and again reads into the memory it already
// holds: once it has been read into twice, reading the same bytes allocates nothing.
TEST(MemoryBound, ReadingTheSameBytesAgainAllocatesNothing) {
    if (!Measurable())
        GTEST_SKIP() << "allocations cannot be counted here (counted through the GNU C library's "
                        "malloc, which a sanitizer or another C library replaces)";
    std::vector<std::string> allocating;
    ForEachClass([&](const cmddata::ClassInfo& c) {
        std::unique_ptr<CCmdCore> sample(MakeAtDefault(c));
        cmddata::Fill(*sample);
        const std::vector<unsigned char> bytes = Written(*sample);
        std::unique_ptr<CCmdCore> target(MakeAtDefault(c));
        ReadCost(*target, bytes);
        ReadCost(*target, bytes);  // the first read into kept items takes what a class starts with
        const Cost again = ReadCost(*target, bytes);
        if (again.allocations != 0)
            allocating.push_back(std::string(c.name) + " (" + std::to_string(again.allocations) +
                                 ")");
    });
    std::string names;
    for (const std::string& n : allocating) names += " " + n;
    EXPECT_TRUE(allocating.empty()) << allocating.size() << " classes allocate:" << names;
}
