// Vehicle information items and their numeric accessors.
#include "cmddata/records/car_info.h"

#include <cstdlib>
#include <cstring>

#include "cmddata_internal/procs.h"

namespace {
// CCmdCarInfo and CCmdCarIdInf share one layout: version prefix, u16 id, then one nested
// object (a text or an id list).
template <class P, class Body>
void IdThenBody(P& p, CCmdCore& self, std::uint16_t& id, const char* bodyName, Body& body) {
    p.Prefix(self);
    p.U16("item_id", id);
    p.Record(bodyName, body);
}
}  // namespace

template <class P>
void CCmdCarInfo::Fields(P& p) {
    IdThenBody(p, *this, itemId, "text", text);
}
CMDDATA_DEFINE_FIELDS(CCmdCarInfo)

template <class P>
void CCmdCarIdInf::Fields(P& p) {
    IdThenBody(p, *this, itemId, "ids", ids);
}
CMDDATA_DEFINE_FIELDS(CCmdCarIdInf)

namespace cmddata {
namespace {

const CCmdCarInfo* Find(const CCmdList<CCmdCarInfo>& items, std::uint32_t itemId) {
    const CCmdCarInfo* found = nullptr;
    const std::uint16_t wanted = static_cast<std::uint16_t>(itemId);
    items.ForEach([&](const CCmdCarInfo& item) {
        if (found == nullptr && item.itemId == wanted) found = &item;
    });
    return found;
}

// An item's text, at most kUnits units, copied out and terminated. A text that came through a
// region need not carry its terminator, so nothing is read past the string's own bytes.
struct Text {
    static constexpr std::size_t kUnits = 9;  // more than any accessor looks at
    std::uint16_t units[kUnits + 1] = {};
    std::size_t length = 0;  // units before the first NUL (kUnits when there are more)
};

Result ItemText(const CCmdList<CCmdCarInfo>& items, std::uint16_t itemId, Text* out) {
    if (items.GetCount() == 0) return result::kItemMissing;
    const CCmdCarInfo* item = Find(items, itemId);
    if (item == nullptr || item->text.GetAt() == nullptr) return result::kItemMissing;
    std::size_t n = item->text.GetSize() / 2;
    if (n > Text::kUnits) n = Text::kUnits;
    std::memcpy(out->units, item->text.GetBytes(), n * 2);
    while (out->length < n && out->units[out->length] != 0) ++out->length;
    return result::kOk;
}

// Shifts the partial word left by 8 and ORs in the byte taken as a signed char: a byte of 0x80
// or more sets every higher bit of the partial word, as the packed codes have always had it.
std::uint32_t Pack(std::uint32_t partial, char byte) {
    const std::int32_t widened = static_cast<signed char>(byte);
    return (partial << 8) | static_cast<std::uint32_t>(widened);
}

std::uint32_t PackFour(const char* b) { return Pack(Pack(Pack(Pack(0, b[0]), b[1]), b[2]), b[3]); }

}  // namespace

Result GetCarInfoText(const CCmdList<CCmdCarInfo>& items, const std::uint16_t** text,
                      std::uint32_t itemId) {
    if (text == nullptr) return result::kNullOutput;
    if (items.GetCount() == 0) return result::kItemMissing;
    const CCmdCarInfo* item = Find(items, itemId);
    if (item == nullptr) return result::kItemMissing;
    *text = item->text.GetAt();
    return result::kOk;
}

Result GetCarInfoDwords(const CCmdList<CCmdCarInfo>& items, std::uint32_t* high,
                        std::uint32_t* low) {
    if (high == nullptr || low == nullptr) return result::kNullOutput;
    Text text;
    const Result r = ItemText(items, car_item::kCarInfoCode, &text);
    if (r != result::kOk) return r;
    char b[8] = {};
    platform::WideToAnsi(text.units, b, sizeof b);  // a cut-off text keeps what fitted
    *high = PackFour(b);
    *low = Pack(Pack(Pack(0, b[4]), b[5]), b[6]) << 8;  // b[7] never counts
    return result::kOk;
}

Result GetEngineTypeDwords(const CCmdList<CCmdCarInfo>& items, std::uint32_t* high,
                           std::uint32_t* low) {
    if (high == nullptr || low == nullptr) return result::kNullOutput;
    Text text;
    const Result r = ItemText(items, car_item::kEngineType, &text);
    if (r != result::kOk) return r;
    char b[7] = {};
    platform::WideToAnsi(text.units, b, sizeof b);
    *high = PackFour(b);
    *low = Pack(Pack(0, b[4]), b[5]) << 16;
    return result::kOk;
}

Result GetModelYear(const CCmdList<CCmdCarInfo>& items, std::uint32_t* year) {
    if (year == nullptr) return result::kNullOutput;
    Text text;
    const Result r = ItemText(items, car_item::kModelYear, &text);
    if (r != result::kOk) return r;
    if (text.length < 1 || text.length > 4) return result::kItemMissing;
    for (std::size_t i = 0; i < text.length; ++i)
        if (!platform::IsWideDigit(text.units[i])) return result::kItemMissing;
    char b[5] = {};  // four digits fill b[0..3]; b[4] ends them
    platform::WideToAnsi(text.units, b, 4);
    *year = static_cast<std::uint32_t>(std::atol(b));
    return result::kOk;
}

}  // namespace cmddata
