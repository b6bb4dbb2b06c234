// Write and read benchmarks of the library against the copy limit and two peer serializers, all
// over the same data, ending in tables of ratios and of heap blocks. See bench/README.md.
#include <benchmark/benchmark.h>
#include <google/protobuf/arena.h>

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <streambuf>
#include <string>
#include <type_traits>
#include <vector>

#include "cmddata/cmddata.h"
#include "peers.pb.h"
#include "plain.h"
#include "shapes.h"

// ---- heap blocks counted -----------------------------------------------------------------------

// Counts every block taken from the heap, so that a message's allocations can be told apart from
// its copying. A plain counter: the benchmarks run on one thread, and one add per allocation is
// nothing next to the allocation, in the timed runs too.
namespace {
std::uint64_t g_heapBlocks = 0;
}

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
// glibc lets a program define malloc itself: these count and forward to glibc's own, so that the
// blocks taken with std::malloc (the library's texts and buffers, and inside the peers) count too.
// glibc's free takes them back as they are. noexcept lets the forwarding be a plain jump.
extern "C" {
void* __libc_malloc(std::size_t) noexcept;
void* __libc_calloc(std::size_t, std::size_t) noexcept;
void* __libc_realloc(void*, std::size_t) noexcept;
void __libc_free(void*) noexcept;

void* malloc(std::size_t n) noexcept {
    ++g_heapBlocks;
    return __libc_malloc(n);
}
void* calloc(std::size_t count, std::size_t n) noexcept {
    ++g_heapBlocks;
    return __libc_calloc(count, n);
}
void* realloc(void* p, std::size_t n) noexcept {
    ++g_heapBlocks;
    return __libc_realloc(p, n);
}
}

namespace {
// operator new counts its blocks itself, so it goes past the counting malloc.
void* RawTake(std::size_t n) noexcept { return __libc_malloc(n); }
void RawGive(void* p) noexcept { __libc_free(p); }
}  // namespace
#else
namespace {
// Elsewhere only the blocks of operator new are counted. Out of line, free is not taken for the
// wrong partner of an inlined operator new.
void* RawTake(std::size_t n) noexcept { return std::malloc(n); }
[[gnu::noinline]] void RawGive(void* p) noexcept { std::free(p); }
}  // namespace
#endif

namespace {
void* Take(std::size_t n) noexcept {
    ++g_heapBlocks;
    return RawTake(n == 0 ? 1 : n);
}
void* TakeAligned(std::size_t n, std::align_val_t align) noexcept {
    ++g_heapBlocks;
    const auto a = static_cast<std::size_t>(align);
    return std::aligned_alloc(a, (std::max<std::size_t>(n, 1) + a - 1) / a * a);
}
void* OrThrow(void* p) {
    if (p == nullptr) throw std::bad_alloc();
    return p;
}
}  // namespace

void* operator new(std::size_t n) { return OrThrow(Take(n)); }
void* operator new[](std::size_t n) { return OrThrow(Take(n)); }
void* operator new(std::size_t n, const std::nothrow_t&) noexcept { return Take(n); }
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept { return Take(n); }
void* operator new(std::size_t n, std::align_val_t a) { return OrThrow(TakeAligned(n, a)); }
void* operator new[](std::size_t n, std::align_val_t a) { return OrThrow(TakeAligned(n, a)); }
void* operator new(std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept {
    return TakeAligned(n, a);
}
void* operator new[](std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept {
    return TakeAligned(n, a);
}
void operator delete(void* p) noexcept { RawGive(p); }
void operator delete[](void* p) noexcept { RawGive(p); }
void operator delete(void* p, std::size_t) noexcept { RawGive(p); }
void operator delete[](void* p, std::size_t) noexcept { RawGive(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { RawGive(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { RawGive(p); }
void operator delete(void* p, std::align_val_t) noexcept { RawGive(p); }
void operator delete[](void* p, std::align_val_t) noexcept { RawGive(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { RawGive(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { RawGive(p); }
void operator delete(void* p, std::align_val_t, const std::nothrow_t&) noexcept { RawGive(p); }
void operator delete[](void* p, std::align_val_t, const std::nothrow_t&) noexcept { RawGive(p); }

namespace {

using Bytes = std::vector<unsigned char>;

// ---- what each shape is --------------------------------------------------------------------

struct Meta {
    std::uint32_t fields = 0;  // raw transfers our writer makes (= memcpy calls of the limit)
    std::uint32_t items = 0;   // list items, for the scaling shape
    std::map<std::string, std::size_t> wire;  // bytes on the wire per implementation
};
std::map<std::string, Meta> g_meta;
std::vector<std::string> g_shapes;          // in registration order
std::map<std::string, std::size_t> g_json;  // the JSON text's size of each shape that has one
std::deque<Bytes> g_regions;                // keeps every benchmark's region alive

Bytes& NewRegion(std::size_t size) {
    g_regions.emplace_back(size + 64, 0);
    return g_regions.back();
}

// Counts the raw transfers: a stream class of its own takes the virtual path for every field.
class CountingWriter : public CCmdWriter {
public:
    using CCmdWriter::Write;
    cmddata::Result Write(const void* source, std::int32_t count) override {
        ++calls;
        return CCmdWriter::Write(source, count);
    }
    std::uint32_t calls = 0;
};

// A stream buffer over a fixed byte range, so that cereal's cost is its own, not a stringstream's.
class SpanBuf : public std::streambuf {
public:
    SpanBuf(unsigned char* p, std::size_t n) : p_(reinterpret_cast<char*>(p)), n_(n) { Reset(n); }
    void Reset(std::size_t readable) {
        setp(p_, p_ + n_);
        setg(p_, p_, p_ + readable);
    }
    std::size_t Written() const { return static_cast<std::size_t>(pptr() - pbase()); }

protected:
    std::streamsize xsputn(const char* s, std::streamsize n) override {
        if (epptr() - pptr() < n) return 0;
        std::memcpy(pptr(), s, static_cast<std::size_t>(n));
        pbump(static_cast<int>(n));
        return n;
    }
    std::streamsize xsgetn(char* s, std::streamsize n) override {
        if (egptr() - gptr() < n) return 0;
        std::memcpy(s, gptr(), static_cast<std::size_t>(n));
        gbump(static_cast<int>(n));
        return n;
    }

private:
    char* p_;
    std::size_t n_;
};

template <class Plain>
std::size_t PlainSize(Plain& p) {
    static Bytes scratch(64u << 20);
    plain::Out<false> out{scratch.data(), scratch.data() + scratch.size()};
    plain::Code(out, p);
    if (!out.ok) {
        std::fprintf(stderr, "bench: scratch region too small\n");
        std::exit(2);
    }
    return static_cast<std::size_t>(out.pos - scratch.data());
}

void Fail(const std::string& what) {
    std::fprintf(stderr, "bench: %s\n", what.c_str());
    std::exit(1);
}

// Stands in for benchmark::State to run a benchmark's body twice, untimed, and count the heap
// blocks of the second run alone: one message in the steady state, where a reused object has
// been read into once already.
class BlockCount {
public:
    struct [[maybe_unused]] Value {};
    struct Iterator {
        BlockCount* count;
        bool operator!=(const Iterator&) const { return count->Next(); }
        void operator++() {}
        Value operator*() const { return {}; }
    };
    Iterator begin() { return {this}; }
    Iterator end() { return {this}; }
    void SkipWithError(const char*) {}  // the timed run reports it, and no count is shown then

    std::uint64_t blocks = 0;

private:
    bool Next() {
        benchmark::ClobberMemory();  // the compiler must not keep the counter across the body
        if (pass_ == 1) blocks = g_heapBlocks;
        if (pass_ == 2) blocks = g_heapBlocks - blocks;
        return pass_++ < 2;
    }
    int pass_ = 0;
};

std::map<std::string, std::function<std::uint64_t()>> g_blockCounts;  // by benchmark name

// Registers a benchmark; one whose body also takes a BlockCount gets its allocations counted.
template <class Body>
void Add(const std::string& name, Body body) {
    benchmark::RegisterBenchmark(name.c_str(), [body](benchmark::State& s) {
        body(s);
    })->Unit(benchmark::kNanosecond);
    if constexpr (std::is_invocable_v<Body, BlockCount&>)
        g_blockCounts[name] = [body] {
            BlockCount count;
            body(count);
            return count.blocks;
        };
}

// The JSON codec over a shape's filled object: its text made (json-out) and taken into a new
// object (json-in). Shapes whose text is longer than the JSON reader takes have none.
template <class Ours, class Make>
void AddJson(const std::string& shape, std::shared_ptr<Ours> ours, Make make) {
    auto text = std::make_shared<std::string>();
    if (!cmddata::ToJson(*ours, text.get())) Fail(shape + ": no JSON");
    if (text->size() > cmddata::kJsonMaxText) return;
    {
        Ours back(make());
        std::string error;
        if (!cmddata::FromJson(back, *text, &error)) Fail(shape + ": JSON not taken: " + error);
    }
    g_json[shape] = text->size();
    const auto bytes = static_cast<std::int64_t>(text->size());
    Add(shape + "/json-out/cmddata", [=](benchmark::State& s) {
        std::string out;
        for (auto _ : s) {
            out.clear();
            cmddata::ToJson(*ours, &out);
            benchmark::DoNotOptimize(out.data());
        }
        s.SetBytesProcessed(s.iterations() * bytes);
    });
    Add(shape + "/json-in/cmddata", [=](benchmark::State& s) {
        for (auto _ : s) {
            Ours back(make());
            std::string error;
            const bool ok = cmddata::FromJson(back, *text, &error);
            benchmark::DoNotOptimize(ok);
        }
        s.SetBytesProcessed(s.iterations() * bytes);
    });
}

// The limit's loops, with everything they call inlined whatever the compiler's estimate. Left to
// the inliner, the choice changed with unrelated code in this file, and a codec called out of
// line reads its cursor back from the caller's store of it (two fields as one wide store, which
// the loads wait for): that stall alone made the small shapes' limit three times slower between
// two builds. The cursor's result is copied out, so that its address goes nowhere.
template <bool Compare, class State, class Plain>
[[gnu::flatten]] void LimitWrite(State& s, unsigned char* region, std::uint32_t size,
                                 Plain& mirror) {
    for (auto _ : s) {
        plain::Out<Compare> o{region, region + size};
        plain::Code(o, mirror);
        const bool ok = o.ok;
        benchmark::DoNotOptimize(ok);
    }
}
template <bool Compare, class State, class Plain>
[[gnu::flatten]] void LimitReadInto(State& s, const unsigned char* region, std::uint32_t size,
                                    Plain& p) {
    for (auto _ : s) {
        plain::In<Compare> in{region, region + size};
        plain::Code(in, p);
        benchmark::DoNotOptimize(&p);
        const bool ok = in.ok;
        benchmark::DoNotOptimize(ok);  // else the compares are dead code
    }
}
template <bool Compare, class Plain, class State>
[[gnu::flatten]] void LimitReadFresh(State& s, const unsigned char* region, std::uint32_t size) {
    for (auto _ : s) {
        Plain p;
        plain::In<Compare> in{region, region + size};
        plain::Code(in, p);
        benchmark::DoNotOptimize(&p);
        const bool ok = in.ok;
        benchmark::DoNotOptimize(ok);
    }
}

// Registers every benchmark of one shape. make() returns a fresh, empty library object; fill()
// fills one with the plain mirror's values.
template <class Ours, class Plain, class Proto, class Make, class Fill>
void AddShape(const std::string& shape, std::shared_ptr<Plain> mirror, Make make, Fill fill,
              std::uint32_t items = 0) {
    g_shapes.push_back(shape);
    Meta& meta = g_meta[shape];
    meta.items = items;

    // The library's bytes, checked against the hand-written codec's, byte for byte.
    std::shared_ptr<Ours> ours(new Ours(make()));
    fill(*ours);
    const std::size_t size = PlainSize(*mirror);
    Bytes& oursRegion = NewRegion(size);
    {
        CountingWriter w;
        w.AttachView(oursRegion.data(), static_cast<std::uint32_t>(oursRegion.size()));
        w.Write(ours.get());
        if (w.GetLastError() != 0 || w.GetPosition() != size) Fail(shape + ": write failed");
        meta.fields = w.calls;
        Bytes limitBytes(size + 64);
        plain::Out<false> out{limitBytes.data(), limitBytes.data() + limitBytes.size()};
        plain::Code(out, *mirror);
        if (!std::equal(limitBytes.begin(), limitBytes.begin() + static_cast<long>(size),
                        oursRegion.begin()))
            Fail(shape + ": the library and the hand-written codec disagree");
        Ours back(make());
        CCmdReader r;
        r.AttachView(oursRegion.data(), static_cast<std::uint32_t>(size));
        r.Read(&back);
        if (r.GetLastError() != 0 || r.GetPosition() != size) Fail(shape + ": read failed");
    }
    meta.wire["cmddata"] = meta.wire["limit"] = meta.wire["limit+cmp"] = size;
    const std::uint32_t ourSize = static_cast<std::uint32_t>(size);
    unsigned char* const region = oursRegion.data();
    const std::uint32_t capacity = static_cast<std::uint32_t>(oursRegion.size());

    // cereal's bytes.
    Bytes& cerealRegion = NewRegion(size * 2 + 4096);
    std::size_t cerealSize = 0;
    {
        SpanBuf sb(cerealRegion.data(), cerealRegion.size());
        std::ostream os(&sb);
        cereal::BinaryOutputArchive ar(os);
        ar(*mirror);
        cerealSize = sb.Written();
    }
    meta.wire["cereal"] = cerealSize;

    // protobuf's bytes.
    auto proto = std::make_shared<Proto>();
    shapes::ToProto(*mirror, proto.get());
    const std::size_t protoSize = proto->ByteSizeLong();
    Bytes& protoRegion = NewRegion(protoSize);
    if (!proto->SerializeToArray(protoRegion.data(), static_cast<int>(protoRegion.size())))
        Fail(shape + ": protobuf write failed");
    meta.wire["protobuf"] = meta.wire["pb-arena"] = protoSize;

    const std::string w = shape + "/write/", f = shape + "/read-fresh/",
                      u = shape + "/read-reused/";
    AddJson(shape, ours, make);

    // ---- write ----
    Add(w + "cmddata", [=](auto& s) {
        // A message of a class the caller's code knows, as a caller writes one and as the reads
        // below read one (a copy: equal, its texts and buffers shared). Through a pointer of an
        // unknown class the same code is reached by one more call.
        Ours message(*ours);
        CCmdWriter wr;
        for (auto _ : s) {
            wr.AttachView(region, capacity);
            wr.Write(&message);
        }
        if (wr.GetLastError() != 0 || wr.GetPosition() != ourSize) s.SkipWithError("write failed");
    });
    auto limitWrite = [=](auto compare) {
        return [=](auto& s) { LimitWrite<decltype(compare)::value>(s, region, capacity, *mirror); };
    };
    Add(w + "limit", limitWrite(std::false_type()));
    Add(w + "limit+cmp", limitWrite(std::true_type()));
    unsigned char* const cr = cerealRegion.data();
    const std::size_t crCap = cerealRegion.size();
    Add(w + "cereal", [=](auto& s) {
        Bytes scratch(crCap);
        SpanBuf sb(scratch.data(), crCap);
        std::ostream os(&sb);
        for (auto _ : s) {
            sb.Reset(0);
            cereal::BinaryOutputArchive ar(os);
            ar(*mirror);
            benchmark::ClobberMemory();
        }
    });
    Add(w + "protobuf", [=](auto& s) {
        Bytes scratch(protoSize + 64);
        for (auto _ : s) {
            bool ok = proto->SerializeToArray(scratch.data(), static_cast<int>(scratch.size()));
            benchmark::DoNotOptimize(ok);
        }
    });

    // ---- read into a fresh object ----
    Add(f + "cmddata", [=](auto& s) {
        std::uint32_t errors = 0;
        for (auto _ : s) {
            CCmdReader rd;
            rd.AttachView(region, ourSize);
            Ours obj(make());
            rd.Read(&obj);
            errors |= rd.GetLastError();
            benchmark::DoNotOptimize(&obj);
        }
        if (errors != 0) s.SkipWithError("read failed");
    });
    auto limitFresh = [=](auto compare) {
        return
            [=](auto& s) { LimitReadFresh<decltype(compare)::value, Plain>(s, region, ourSize); };
    };
    Add(f + "limit", limitFresh(std::false_type()));
    Add(f + "limit+cmp", limitFresh(std::true_type()));
    Add(f + "cereal", [=](auto& s) {
        SpanBuf sb(cr, crCap);
        std::istream is(&sb);
        for (auto _ : s) {
            sb.Reset(cerealSize);
            cereal::BinaryInputArchive ar(is);
            Plain p;
            ar(p);
            benchmark::DoNotOptimize(&p);
        }
    });
    const unsigned char* const pr = protoRegion.data();
    Add(f + "protobuf", [=](auto& s) {
        for (auto _ : s) {
            Proto m;
            bool ok = m.ParseFromArray(pr, static_cast<int>(protoSize));
            benchmark::DoNotOptimize(ok);
        }
    });
    Add(f + "pb-arena", [=](auto& s) {
        // One arena per message, its first block handed in: the arena's best case.
        std::vector<char> block(protoSize * 8 + 4096);
        google::protobuf::ArenaOptions options;
        options.initial_block = block.data();
        options.initial_block_size = block.size();
        for (auto _ : s) {
            google::protobuf::Arena arena(options);
            Proto* m = google::protobuf::Arena::CreateMessage<Proto>(&arena);
            bool ok = m->ParseFromArray(pr, static_cast<int>(protoSize));
            benchmark::DoNotOptimize(ok);
        }
    });

    // ---- read into a reused object ----
    Add(u + "cmddata", [=](auto& s) {
        Ours obj(make());
        std::uint32_t errors = 0;
        for (auto _ : s) {
            CCmdReader rd;
            rd.AttachView(region, ourSize);
            rd.Read(&obj);
            errors |= rd.GetLastError();
            benchmark::DoNotOptimize(&obj);
        }
        if (errors != 0) s.SkipWithError("read failed");
    });
    auto limitReused = [=](auto compare) {
        return [=](auto& s) {
            Plain p;
            LimitReadInto<decltype(compare)::value>(s, region, ourSize, p);
        };
    };
    Add(u + "limit", limitReused(std::false_type()));
    Add(u + "limit+cmp", limitReused(std::true_type()));
    Add(u + "cereal", [=](auto& s) {
        SpanBuf sb(cr, crCap);
        std::istream is(&sb);
        Plain p;
        for (auto _ : s) {
            sb.Reset(cerealSize);
            cereal::BinaryInputArchive ar(is);
            ar(p);
            benchmark::DoNotOptimize(&p);
        }
    });
    Add(u + "protobuf", [=](auto& s) {
        Proto m;
        for (auto _ : s) {
            bool ok = m.ParseFromArray(pr, static_cast<int>(protoSize));
            benchmark::DoNotOptimize(ok);
        }
    });
}

// ---- the shapes --------------------------------------------------------------------------------

void RegisterAll() {
    using shapes::SetHeader;
    using shapes::SetText;

    // S1 and S2 come first: they are the shapes the goals are about.
#ifdef CMDDATA_BENCH_S1
    {
        auto m = std::make_shared<plain::DatMonList>(shapes::MakeDatMonList());
        AddShape<CGetDatMonListRcv, plain::DatMonList, cmddata_bench::DatMonList>(
            "S1-datmon", m, [] { return CGetDatMonListRcv(); },
            [m](CGetDatMonListRcv& o) { shapes::ToOurs(*m, o); });
    }
#endif
#ifdef CMDDATA_BENCH_S2
    {
        auto m = std::make_shared<plain::FrzFrmList>(shapes::MakeFrzFrmList());
        AddShape<CGetFrzFrmDatRcv, plain::FrzFrmList, cmddata_bench::FrzFrmList>(
            "S2-frzfrm", m, [] { return CGetFrzFrmDatRcv(); },
            [m](CGetFrzFrmDatRcv& o) { shapes::ToOurs(*m, o); });
    }
#endif
    {
        auto h = std::make_shared<plain::Header>(shapes::MakeHeader(cmddata::cmd::GetVIN));
        AddShape<CCmdHeaderOnly, plain::Header, cmddata_bench::HeaderOnly>(
            "S3-header", h, [] { return CCmdHeaderOnly(cmddata::cmd::GetVIN, 1, 0); },
            [h](CCmdHeaderOnly& o) { SetHeader(o, *h); });
    }
#ifdef CMDDATA_BENCH_CARINFO
    {
        auto c = std::make_shared<plain::CarInfo>(shapes::MakeCarInfo());
        AddShape<CCmdCarInfo, plain::CarInfo, cmddata_bench::CarInfo>(
            "S3-carinfo", c, [] { return CCmdCarInfo(); },
            [c](CCmdCarInfo& o) { shapes::ToOurs(*c, o); });
    }
#endif
    {
        auto b = std::make_shared<plain::Blob>(shapes::MakeBulk());
        AddShape<CCmdBuffer, plain::Blob, cmddata_bench::Bulk>(
            "S4-bulk", b, [] { return CCmdBuffer(); },
            [b](CCmdBuffer& o) {
                o.SetAt(b->bytes.data(), static_cast<std::uint32_t>(b->bytes.size()));
            });
    }
    for (std::uint32_t n : {1000u, 10000u, 100000u, 1000000u}) {
        const std::string suffix = "/n=" + std::to_string(n);
        auto w = std::make_shared<plain::List<std::uint16_t>>(shapes::MakeWords(n));
        AddShape<CCmdList<CCmdWordId>, plain::List<std::uint16_t>, cmddata_bench::WordList>(
            "S5-words" + suffix, w, [] { return CCmdList<CCmdWordId>(); },
            [w](CCmdList<CCmdWordId>& o) { shapes::ToOurs(*w, o); }, n);
    }
    for (std::uint32_t n : {1000u, 10000u, 100000u, 1000000u}) {
        const std::string suffix = "/n=" + std::to_string(n);
        auto t = std::make_shared<plain::List<plain::Text>>(shapes::MakeTexts(n));
        AddShape<CCmdList<CCmdString>, plain::List<plain::Text>, cmddata_bench::TextList>(
            "S5-texts" + suffix, t, [] { return CCmdList<CCmdString>(); },
            [t](CCmdList<CCmdString>& o) { shapes::ToOurs(*t, o); }, n);
    }
}

// ---- the table ---------------------------------------------------------------------------------

// Keeps the fastest repetition of each benchmark, in CPU time: on a shared machine the time a
// benchmark waits for a core is not its own, and the minimum is the least disturbed measurement.
class Collector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
            const double ns = run.GetAdjustedCPUTime();
            auto it = best.find(run.benchmark_name());
            if (it == best.end() || ns < it->second) best[run.benchmark_name()] = ns;
        }
        ConsoleReporter::ReportRuns(runs);
    }
    double Get(const std::string& name) const {
        auto it = best.find(name);
        return it == best.end() ? 0.0 : it->second;
    }
    std::map<std::string, double> best;
};

const char* const kImpls[] = {"cmddata", "limit", "limit+cmp", "cereal", "protobuf", "pb-arena"};
const char* const kOps[] = {"write", "read-fresh", "read-reused"};

// A measured value with the given decimals, or "-" where nothing was measured (a benchmark
// filtered out of the run reads as 0).
std::string Cell(double v, int decimals = 2) {
    if (!(v > 0)) return "-";
    char s[32];
    std::snprintf(s, sizeof s, "%.*f", decimals, v);
    return s;
}

std::string Ratio(double a, double b) { return a > 0 && b > 0 ? Cell(a / b) : "-"; }

void PrintTables(const Collector& c) {
    std::printf(
        "\n== Per implementation: CPU ns per message, ns per field, bytes on the wire ==\n");
    std::printf("%-20s %-12s %-10s %14s %10s %10s\n", "shape", "op", "impl", "ns/msg", "ns/field",
                "wire B");
    for (const std::string& shape : g_shapes) {
        const Meta& m = g_meta[shape];
        if (m.items != 0) continue;  // the scaling shape has its own table
        for (const char* op : kOps)
            for (const char* impl : kImpls) {
                const double ns = c.Get(shape + "/" + op + "/" + impl);
                if (ns <= 0) continue;
                std::printf("%-20s %-12s %-10s %14.1f %10.2f %10zu\n", shape.c_str(), op, impl, ns,
                            ns / m.fields, m.wire.at(impl));
            }
    }

    std::printf("\n== Ratios: our time / theirs (below 1 = we are faster) ==\n");
    std::printf("%-20s %-12s %8s %8s %10s %10s %10s %9s\n", "shape", "op", "fields", "/limit",
                "/limit+cmp", "/cereal", "/protobuf", "/pb-arena");
    for (const std::string& shape : g_shapes) {
        const Meta& m = g_meta[shape];
        for (const char* op : kOps) {
            const std::string base = shape + "/" + op + "/";
            const double ours = c.Get(base + "cmddata");
            if (ours <= 0) continue;
            std::printf("%-20s %-12s %8u %8s %10s %10s %10s %9s\n", shape.c_str(), op, m.fields,
                        Ratio(ours, c.Get(base + "limit")).c_str(),
                        Ratio(ours, c.Get(base + "limit+cmp")).c_str(),
                        Ratio(ours, c.Get(base + "cereal")).c_str(),
                        Ratio(ours, c.Get(base + "protobuf")).c_str(),
                        Ratio(ours, c.Get(base + "pb-arena")).c_str());
        }
    }

    std::printf("\n== Scaling: ns per item (cmddata | limit) ==\n");
    for (const char* list : {"S5-words", "S5-texts"})
        for (const char* op : kOps) {
            std::string row;
            char cell[96];
            double first = 0, last = 0, lo = 0, hi = 0;
            for (const std::string& shape : g_shapes) {
                if (shape.compare(0, std::strlen(list), list) != 0) continue;
                const Meta& m = g_meta[shape];
                const double ours = c.Get(shape + "/" + op + "/cmddata") / m.items;
                const double limit = c.Get(shape + "/" + op + "/limit") / m.items;
                if (ours <= 0) continue;
                std::snprintf(cell, sizeof cell, "  %s: %.2f | %s",
                              shape.substr(shape.find('=') + 1).c_str(), ours, Cell(limit).c_str());
                row += cell;
                if (first == 0) first = ours;
                last = ours;
                lo = lo == 0 ? ours : std::min(lo, ours);
                hi = std::max(hi, ours);
            }
            if (row.empty()) continue;  // filtered out of this run
            std::printf("%-9s %-12s%s  max/min %s, last/first %s\n", list, op, row.c_str(),
                        Ratio(hi, lo).c_str(), Ratio(last, first).c_str());
        }

    std::printf("\n== JSON codec, MB of JSON text per second (cmddata::ToJson / FromJson) ==\n");
    for (const std::string& shape : g_shapes) {
        const auto it = g_json.find(shape);
        if (it == g_json.end()) continue;
        const double out = c.Get(shape + "/json-out/cmddata");
        const double in = c.Get(shape + "/json-in/cmddata");
        if (out <= 0 && in <= 0) continue;  // filtered out of this run
        // MB per s = bytes / 1e6 / (ns / 1e9); a direction that did not run shows "-".
        const double mbs = static_cast<double>(it->second) * 1e3;
        std::printf("%-20s %10zu B   out %8s MB/s   in %8s MB/s\n", shape.c_str(), it->second,
                    Cell(out > 0 ? mbs / out : 0, 1).c_str(),
                    Cell(in > 0 ? mbs / in : 0, 1).c_str());
    }

    const double bulk = c.Get("S4-bulk/write/limit+cmp");
    if (bulk > 0) {
        const double mib =
            1.0 / (1u << 20) * static_cast<double>(g_meta["S4-bulk"].wire["cmddata"]);
        std::printf("\n== Bulk bandwidth, MiB/s (1 MiB = memcpy + memcmp of the limit+cmp) ==\n");
        for (const char* op : kOps)
            std::printf("%-12s cmddata %8.0f   limit+cmp %8.0f   ratio %s\n", op,
                        mib / c.Get(std::string("S4-bulk/") + op + "/cmddata") * 1e9,
                        mib / c.Get(std::string("S4-bulk/") + op + "/limit+cmp") * 1e9,
                        Ratio(c.Get(std::string("S4-bulk/") + op + "/limit+cmp"),
                              c.Get(std::string("S4-bulk/") + op + "/cmddata"))
                            .c_str());
    }
}

// Heap blocks per message of every benchmark that ran without error, outside the timed runs.
std::map<std::string, std::uint64_t> CountBlocks(const Collector& c) {
    std::map<std::string, std::uint64_t> blocks;
    for (const auto& [name, count] : g_blockCounts)
        if (c.best.count(name) != 0) blocks[name] = count();
    return blocks;
}

void PrintBlocks(const std::map<std::string, std::uint64_t>& blocks) {
    std::printf(
        "\n== Allocations per message (heap blocks; read-reused after one warm-up read) ==\n");
    std::printf("%-20s %-12s", "shape", "op");
    for (const char* impl : kImpls) std::printf(" %10s", impl);
    std::printf("\n");
    for (const std::string& shape : g_shapes)
        for (const char* op : kOps) {
            const std::string base = shape + "/" + op + "/";
            if (std::none_of(std::begin(kImpls), std::end(kImpls),
                             [&](const char* impl) { return blocks.count(base + impl) != 0; }))
                continue;
            std::printf("%-20s %-12s", shape.c_str(), op);
            for (const char* impl : kImpls) {
                const auto it = blocks.find(base + impl);
                if (it == blocks.end())
                    std::printf(" %10s", "-");
                else
                    std::printf(" %10" PRIu64, it->second);
            }
            std::printf("\n");
        }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RegisterAll();
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    const auto blocks = CountBlocks(collector);
    PrintTables(collector);
    PrintBlocks(blocks);
    benchmark::Shutdown();
    google::protobuf::ShutdownProtobufLibrary();
    return 0;
}
