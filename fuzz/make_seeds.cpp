// Writes a seed corpus for the fuzz target into the directory named on the command line: a few
// filled containers, and the written form of every class, fresh and filled.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "cmddata/core/json.h"
#include "cmddata/table/classes.h"
#include "fuzz_classes.h"

namespace {

int written = 0;

bool Save(const std::string& dir, const std::string& name, CCmdCore& object,
          const unsigned char* prefix = nullptr) {
    const std::size_t skip = prefix == nullptr ? 0 : 2;
    std::vector<unsigned char> bytes(skip + cmddata::WireSize(object) + 1);
    if (prefix != nullptr) std::copy(prefix, prefix + 2, bytes.begin());
    CCmdWriter writer;
    writer.AttachView(bytes.data() + skip, static_cast<std::uint32_t>(bytes.size() - skip));
    writer.Write(&object);
    if (writer.GetLastError() != 0) {
        std::fprintf(stderr, "make_seeds: writing %s failed\n", name.c_str());
        return false;
    }
    const std::string path = dir + "/" + name;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (f == nullptr) return false;
    const std::size_t n = skip + writer.GetPosition();
    const bool ok = std::fwrite(bytes.data(), 1, n, f) == n;
    return std::fclose(f) == 0 && ok && ++written > 0;
}

std::string FileName(const char* type) {
    std::string name;
    for (const char* c = type; *c != 0; ++c)
        name += (std::isalnum(static_cast<unsigned char>(*c)) != 0) ? *c : '_';
    return name;
}

struct SaveFreshAndFilled {
    std::string dir;
    template <class Make>
    void operator()(const char* type, Make make, bool /*crossed*/) const {
        std::unique_ptr<CCmdCore> object(make());
        if (!object) return;
        Save(dir, "fresh_" + FileName(type), *object);
        cmddata::Fill(*object);
        Save(dir, "filled_" + FileName(type), *object);
    }
};

// The one-class target's corpus: each class's seeds behind its two-byte number.
struct SaveNumbered {
    std::string dir;
    std::uint32_t number = 0;
    template <class Make>
    void operator()(const char* type, Make make, bool /*crossed*/) {
        const unsigned char prefix[2] = {static_cast<unsigned char>(number & 0xFF),
                                         static_cast<unsigned char>(number >> 8)};
        ++number;
        std::unique_ptr<CCmdCore> object(make());
        if (!object) return;
        Save(dir, "fresh_" + FileName(type), *object, prefix);
        cmddata::Fill(*object);
        Save(dir, "filled_" + FileName(type), *object, prefix);
    }
};

// The JSON target's corpus: each class's JSON, fresh and filled, behind its two-byte number.
bool SaveJson(const std::string& dir) {
    std::size_t count = 0;
    const cmddata::ClassInfo* classes = cmddata::Classes(&count);
    for (std::size_t i = 0; i < count; ++i) {
        std::unique_ptr<CCmdCore> object(classes[i].makeDefault());
        if (!object) return false;
        for (const char* kind : {"fresh_", "filled_"}) {
            if (kind[1] == 'i') cmddata::Fill(*object);
            std::string text(1, static_cast<char>(i & 0xFF));
            text += static_cast<char>(i >> 8);
            if (!cmddata::ToJson(*object, &text)) return false;
            const std::string path = dir + "/json_" + kind + FileName(classes[i].name);
            std::FILE* f = std::fopen(path.c_str(), "wb");
            if (f == nullptr) return false;
            const bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size();
            if (std::fclose(f) != 0 || !ok) return false;
            ++written;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--json") {
        if (!SaveJson(argv[2])) {
            std::fprintf(stderr, "make_seeds: cannot write the JSON seeds into %s\n", argv[2]);
            return 1;
        }
        std::printf("make_seeds: %d JSON seeds written\n", written);
        return 0;
    }
    const bool numbered = argc == 3 && std::string(argv[1]) == "--numbered";
    const bool names = argc == 2 && std::string(argv[1]) == "--names";
    if (argc != 2 && !numbered) {
        std::fprintf(stderr,
                     "usage: make_seeds DIRECTORY | make_seeds --numbered DIRECTORY | make_seeds "
                     "--json DIRECTORY | make_seeds --names\n");
        return 2;
    }
    if (names) {  // "number name" per class, for tools that number inputs of their own
        std::uint32_t number = 0;
        cmddata_fuzz::ForEachClass(
            [&number](const char* type, auto, bool) { std::printf("%u %s\n", number++, type); });
        return 0;
    }
    const std::string dir = argv[argc - 1];
    if (numbered) {
        cmddata_fuzz::ForEachClass(SaveNumbered{dir});
        std::printf("make_seeds: %d seeds in %s\n", written, dir.c_str());
        return written > 0 ? 0 : 1;
    }

    CCmdList<CCmdString> texts;
    texts.GetAt(texts.AddTail()) = "first";
    texts.GetAt(texts.AddTail()) = "";
    const std::uint16_t wide[] = {0x0041, 0x00e9, 0x4e2d, 0};
    texts.GetAt(texts.AddTail()) = wide;
    Save(dir, "texts", texts);

    CCmdList<CCmdBuffer> buffers;
    const unsigned char raw[] = {0x00, 0xff, 0x10, 0x20, 0x30};
    buffers.GetAt(buffers.AddTail()).SetAt(raw, sizeof raw);
    buffers.AddTail();
    Save(dir, "buffers", buffers);

    CCmdList<CCmdWordId> ids;
    for (std::uint16_t i = 1; i <= 4; ++i)
        ids.GetAt(ids.AddTail()) = static_cast<std::uint16_t>(i * 0x0101);
    Save(dir, "word_ids", ids);

    CCmdList<CCmdList<CCmdDwordData>> table;
    for (std::uint32_t row = 0; row < 3; ++row) {
        CCmdList<CCmdDwordData>& cells = table.GetAt(table.AddTail());
        for (std::uint32_t col = 0; col <= row; ++col)
            cells.GetAt(cells.AddTail()) = row * 16 + col;
    }
    Save(dir, "dword_table", table);

    CCmdByteDataList bytes;
    for (std::uint8_t b : {0x01, 0x7f, 0x80, 0xff}) bytes.bytes.GetAt(bytes.bytes.AddTail()) = b;
    Save(dir, "byte_list", bytes);

    cmddata_fuzz::ForEachClass(SaveFreshAndFilled{dir});
    std::printf("make_seeds: %d seeds in %s\n", written, dir.c_str());
    return written > 0 ? 0 : 1;
}
