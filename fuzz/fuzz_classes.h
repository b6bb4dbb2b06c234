// The classes the fuzz target and its seed maker work through: the containers named here, then
// every class of the library's class table (expanded from the family class lists).
#pragma once

#include <cstdint>
#include <memory>
#include <new>

#include "cmddata/cmddata.h"

namespace cmddata_fuzz {

using Factory = CCmdCore* (*)();

template <class T>
CCmdCore* MakeContainer() {
    return new (std::nothrow) T();
}

/// Calls visit(name, make, crossed) for every class, in a fixed order (crossed: the class reads
/// some fields in another order than it writes them); make() builds a fresh object at
/// the class's default version (delete it through CCmdCore).
template <class V>
void ForEachClass(V&& visit) {
    visit(
        "CCmdList<CCmdString>", [] { return MakeContainer<CCmdList<CCmdString>>(); }, false);
    visit(
        "CCmdList<CCmdBuffer>", [] { return MakeContainer<CCmdList<CCmdBuffer>>(); }, false);
    visit(
        "CCmdList<CCmdWordId>", [] { return MakeContainer<CCmdList<CCmdWordId>>(); }, false);
    visit(
        "CCmdList<CCmdList<CCmdDwordData>>",
        [] { return MakeContainer<CCmdList<CCmdList<CCmdDwordData>>>(); }, false);
    visit(
        "CCmdString", [] { return MakeContainer<CCmdString>(); }, false);
    visit(
        "CCmdBuffer", [] { return MakeContainer<CCmdBuffer>(); }, false);
    std::size_t count = 0;
    const cmddata::ClassInfo* all = cmddata::Classes(&count);
    for (std::size_t i = 0; i < count; ++i) {
        const cmddata::ClassInfo& c = all[i];
        const std::uint16_t version =
            c.command != nullptr ? cmddata::DefaultVersion(*c.command, c.side) : std::uint16_t{1};
        visit(
            c.name, [&c, version] { return c.make(version); }, c.crossed);
    }
}

/// How many classes ForEachClass visits; a class's number is its place in that order.
inline std::uint32_t ClassCount() {
    std::uint32_t n = 0;
    ForEachClass([&n](const char*, auto, bool) { ++n; });
    return n;
}

}  // namespace cmddata_fuzz
