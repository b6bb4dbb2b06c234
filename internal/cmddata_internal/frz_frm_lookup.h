// What the freeze-frame records of the records layer and of the trouble-code family share: the
// item look-up through a conversion table.
#pragma once

#include <cstdint>

#include "cmddata/records/conversion.h"

namespace cmddata {
namespace detail {

// The one look-up of both freeze-frame records: every item whose identifier is id is converted,
// and the last one wins (deliberately, the walk never stops early).
template <class Items>
std::int32_t LastMatchValue(const CCmdConversionTbl& table, const Items& items, char id) {
    std::int32_t value = 0;
    const auto wanted = static_cast<std::uint8_t>(id);
    items.ForEach([&](const auto& item) {
        if (item.itemId == wanted) value = table.Convert(item.rawValue);
    });
    return value;
}

template <class Items>
const std::uint16_t* MatchText(const CCmdConversionTbl& table, const Items& items, char id) {
    return table.FindText(static_cast<std::uint32_t>(LastMatchValue(table, items, id)));
}

}  // namespace detail
}  // namespace cmddata
