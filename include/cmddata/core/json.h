// Any object's wire fields as JSON text and back: two field processors over the one field list.
//
// The form, in the object's wire order:
//   - a record or message is an object of its fields by name; a record with a version prefix
//     carries "version" (and "reserved" where it is not 0) before its fields;
//   - scalars and the command identifier are unsigned integers of their wire width;
//   - a text is a JSON string (its 16-bit characters without the terminator the library stores);
//     no bytes at all is null; a text that is not clean 16-bit text with one terminator, or whose
//     prefix is not version 1 and reserved 0, is {"version", "reserved", "bytes": hex};
//   - a buffer is its bytes in hex; with a prefix other than version 1, reserved 0 it is
//     {"version", "reserved", "bytes"};
//   - a list is an array of its items; with another prefix {"version", "reserved", "items"};
//   - a fixed array is an array of exactly its count of items;
//   - a block moved as a fixed image is its bytes in hex; a dropped run is its count alone;
//     members that never travel are not shown.
// Reading JSON: a field that is absent keeps its empty value, so {} is the empty object. Unknown
// names, wrong JSON types, numbers that do not fit their width, texts that cannot be stored, hex
// that is not hex, versions above the object's own and fields absent at the object's version
// are errors naming the JSON path ("items[2].conversion.scale_numerator: 70000 does not fit u16").
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "cmddata/core/core.h"

namespace cmddata {

/// The longest JSON text the reader takes.
constexpr std::size_t kJsonMaxText = 16u * 1024 * 1024;
/// The deepest nesting of arrays and objects the reader takes.
constexpr std::uint32_t kJsonMaxDepth = 64;
/// List items a JSON text may make: at most this many bytes of items per byte of text, so that
/// a short text cannot ask for a huge allocation.
constexpr std::uint32_t kJsonItemBytesPerChar = 16;

/// Appends the object's fields as one line of JSON to out. False only when memory ran out.
CMDDATA_API bool ToJson(CCmdCore& object, std::string* out);

/// Takes the object's fields from JSON text. The object should be new or emptied: on failure
/// it holds what was taken before the error, which error describes (JSON path: what is wrong).
/// Never throws; false on any error, out of memory included.
CMDDATA_API bool FromJson(CCmdCore& object, std::string_view text, std::string* error);

}  // namespace cmddata
