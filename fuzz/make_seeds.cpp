// Writes a seed corpus for the fuzz target into the directory named on the command line: a few
// filled containers, and the written form of every class, fresh and filled.
#include <cctype>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_classes.h"

namespace {

int written = 0;

bool Save(const std::string& dir, const std::string& name, CCmdCore& object) {
    std::vector<unsigned char> bytes(cmddata::WireSize(object) + 1);
    CCmdWriter writer;
    writer.AttachView(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    writer.Write(&object);
    if (writer.GetLastError() != 0) {
        std::fprintf(stderr, "make_seeds: writing %s failed\n", name.c_str());
        return false;
    }
    const std::string path = dir + "/" + name;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (f == nullptr) return false;
    const std::size_t n = writer.GetPosition();
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

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_seeds DIRECTORY\n");
        return 2;
    }
    const std::string dir = argv[1];

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
