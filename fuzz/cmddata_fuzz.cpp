// libFuzzer target: the input is a region, read into every class in turn. Each object is then
// written back, measured, described, and its input decoded again while described. Any step
// outside memory is AddressSanitizer's to catch; a disagreement between the size measured and
// the bytes written, or a written form that does not read back to itself, aborts.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "fuzz_classes.h"

namespace {

/// A heap block of exactly size bytes, so any step past either end is seen.
struct Block {
    explicit Block(std::size_t n)
        : size(static_cast<std::uint32_t>(n)), bytes(new unsigned char[n]) {}
    std::uint32_t size;
    std::unique_ptr<unsigned char[]> bytes;
};

cmddata::FieldVisitor& Silent() {
    static cmddata::FieldVisitor visitor;
    return visitor;
}

[[noreturn]] void Fail(const char* type, const char* what) {
    std::fprintf(stderr, "cmddata_fuzz: %s: %s\n", type, what);
    std::abort();
}

/// Writes object into a block of exactly its measured size; the block, or null on failure.
std::unique_ptr<Block> WriteExact(CCmdCore& object, const char* type) {
    const std::uint32_t wire = cmddata::WireSize(object);
    auto out = std::make_unique<Block>(wire);
    CCmdWriter writer;
    writer.AttachView(out->bytes.get(), out->size);
    writer.Write(&object);
    if (writer.GetLastError() != 0) Fail(type, "writing into a block of the measured size failed");
    if (writer.GetPosition() != wire) Fail(type, "bytes written differ from the measured size");
    return out;
}

struct Exercise {
    const std::uint8_t* data;
    std::size_t size;

    template <class Make>
    void operator()(const char* type, Make make, bool crossed) const {
        std::unique_ptr<CCmdCore> object(make());
        if (!object) return;

        Block input(size);
        if (size != 0) std::memcpy(input.bytes.get(), data, size);
        CCmdReader reader;
        reader.AttachView(input.bytes.get(), input.size);
        reader.Read(object.get());
        if (reader.GetPosition() > input.size) Fail(type, "reader moved past its region");

        // What was read, whole or in part, must write as measured and read back to itself.
        std::unique_ptr<Block> first = WriteExact(*object, type);
        cmddata::Describe(*object, Silent());
        std::unique_ptr<CCmdCore> again(make());
        CCmdReader back;
        back.AttachView(first->bytes.get(), first->size);
        back.Read(again.get());
        if (back.GetLastError() != 0) Fail(type, "its own written form does not read back");
        std::unique_ptr<Block> second = WriteExact(*again, type);
        // A class that reads some fields in another order than it writes them keeps its size
        // but not its bytes.
        if (second->size != first->size ||
            (!crossed && std::memcmp(second->bytes.get(), first->bytes.get(), first->size) != 0))
            Fail(type, "written, read back and written again, the bytes changed");

        // A region too small for the object: the writer must stop at its end.
        if (first->size > 1) {
            Block small(first->size / 2);
            CCmdWriter writer;
            writer.AttachView(small.bytes.get(), small.size);
            writer.Write(object.get());
            if (writer.GetPosition() > small.size) Fail(type, "writer moved past its region");
        }

        // Decoding while describing, over the same input, on a fresh object.
        std::unique_ptr<CCmdCore> described(make());
        CCmdReader decode;
        decode.AttachView(input.bytes.get(), input.size);
        cmddata::DecodeAndDescribe(*described, decode, Silent());
        cmddata::WireSize(*described);
    }
};

}  // namespace

#if defined(CMDDATA_FUZZ_ONE_CLASS)
// The first two bytes (little-endian) choose one class, the rest is its region: each class gets
// every execution the fuzzer spends on its inputs instead of one in ~650.
struct OneClass {
    Exercise exercise;
    std::uint32_t chosen;
    std::uint32_t seen = 0;
    template <class Make>
    void operator()(const char* type, Make make, bool crossed) {
        if (seen++ == chosen) exercise(type, make, crossed);
    }
};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > (1u << 20) + 2) return 0;
    static const std::uint32_t classes = cmddata_fuzz::ClassCount();
    cmddata_fuzz::ForEachClass(
        OneClass{Exercise{data + 2, size - 2}, (data[0] | (data[1] << 8u)) % classes});
    return 0;
}
#else
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > (1u << 20)) return 0;
    cmddata_fuzz::ForEachClass(Exercise{data, size});
    return 0;
}
#endif
