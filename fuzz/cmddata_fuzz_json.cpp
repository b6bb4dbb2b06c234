// The JSON reader's fuzz target: the input's first two bytes (little-endian) choose a class of
// the class table, the rest is JSON text for it. Whatever the text, the reader must end with an
// error or an object whose own JSON it takes back to the very same JSON.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "cmddata/cmddata.h"
#include "cmddata/table/classes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    static std::size_t count = 0;
    static const cmddata::ClassInfo* classes = cmddata::Classes(&count);
    const cmddata::ClassInfo& cls = classes[(data[0] | (data[1] << 8u)) % count];
    const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);
    std::string error;
    std::unique_ptr<CCmdCore> object(cmddata::MakeFromJson(cls, cls.defaultVersion, text, &error));
    if (object == nullptr) {
        if (error.empty()) std::abort();  // a refusal always says why
        return 0;
    }
    std::string first, second;
    if (!cmddata::ToJson(*object, &first)) return 0;
    std::unique_ptr<CCmdCore> again(cmddata::MakeFromJson(cls, cls.defaultVersion, first, &error));
    if (again == nullptr || !cmddata::ToJson(*again, &second) || second != first) std::abort();
    return 0;
}
