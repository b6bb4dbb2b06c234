// The fixed in-memory images that the event records move as one block (field operation Image;
// the mechanism is in procs.h, the conversion table's image in frz_frm_image.h).
// Library-internal.
//
// As there, each Image mirrors the layout a 32-bit build gives the object, with fixed-width
// fields and explicit padding; the static_asserts stop any build in which it drifts.
//
// CCmdFrzFrmDat, 152 bytes:
//   0  type-identity word (written 0, never read)   68  conversion table (64 bytes, as laid out
//   4  version, 6 reserved word                          in frz_frm_image.h)
//   8  item number (u16), 10 padding               132  items (list, 20 bytes)
//  12  working value (u32)
//  16  name, 32 unit, 48 value text (texts, 16 bytes each)
//  64  display flag, 65 valid flag, 66 padding
//
// CCmdDwordData, 12 bytes: 0 type-identity word, 4 version, 6 reserved word, 8 value (u32).
//
// What travels: the version prefixes and the scalars (the working value included), 0 in every
// type word, pointer, count and padding byte. The texts, display entries and items of a frame
// cannot travel in a block: a frame read from one has them empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "cmddata/core/scalar.h"
#include "cmddata/diagcode/freeze_frame.h"
#include "cmddata_internal/frz_frm_image.h"
#include "cmddata_internal/procs.h"

namespace cmddata {

template <>
struct ImageLayout<CCmdFrzFrmDat> {
    struct Image {
        image::Head head;
        std::uint16_t itemNumber;
        std::uint16_t pad0;
        std::uint32_t workingValue;
        image::Text name;
        image::Text unit;
        image::Text valueText;
        std::uint8_t displayFlag;
        std::uint8_t validFlag;
        std::uint16_t pad1;
        ImageLayout<CCmdConversionTbl>::Image conversion;
        image::List items;
    };
    template <class M>
    static void Map(M& m, Image& i, CCmdFrzFrmDat& o) {
        m.Head(i.head, o);
        m.Scalar(i.itemNumber, o.itemNumber);
        m.Scalar(i.workingValue, o.workingValue);
        m.Owned(i.name, o.name);
        m.Owned(i.unit, o.unit);
        m.Owned(i.valueText, o.valueText);
        m.Scalar(i.displayFlag, o.displayFlag);
        m.Scalar(i.validFlag, o.validFlag);
        m.Record(i.conversion, o.conversion);
        m.Owned(i.items, o.items);
    }
};

template <>
struct ImageLayout<CCmdDwordData> {
    struct Image {
        image::Head head;
        std::uint32_t value;
    };
    // The value is private to the wrapper: it is mapped through a local copy, taken with the
    // wrapper's conversion and given back with its assignment (a no-op when packing).
    template <class M>
    static void Map(M& m, Image& i, CCmdDwordData& o) {
        m.Head(i.head, o);
        std::uint32_t value = o;
        m.Scalar(i.value, value);
        o = value;
    }
};

namespace detail {
using FrzFrmDatImage = ImageLayout<CCmdFrzFrmDat>::Image;
using DwordDataImage = ImageLayout<CCmdDwordData>::Image;

static_assert(std::has_unique_object_representations_v<FrzFrmDatImage> &&
                  std::has_unique_object_representations_v<DwordDataImage>,
              "an image has no padding the compiler chose");
static_assert(sizeof(FrzFrmDatImage) == 152, "CCmdFrzFrmDat image: 152 bytes");
static_assert(
    offsetof(FrzFrmDatImage, head.version) == 4 && offsetof(FrzFrmDatImage, itemNumber) == 8 &&
        offsetof(FrzFrmDatImage, workingValue) == 12 && offsetof(FrzFrmDatImage, name) == 16 &&
        offsetof(FrzFrmDatImage, unit) == 32 && offsetof(FrzFrmDatImage, valueText) == 48 &&
        offsetof(FrzFrmDatImage, displayFlag) == 64 && offsetof(FrzFrmDatImage, validFlag) == 65 &&
        offsetof(FrzFrmDatImage, conversion) == 68 && offsetof(FrzFrmDatImage, items) == 132,
    "CCmdFrzFrmDat image offsets");
static_assert(sizeof(DwordDataImage) == 12 && offsetof(DwordDataImage, value) == 8,
              "CCmdDwordData image: 12 bytes, the value at 8");
}  // namespace detail

}  // namespace cmddata
