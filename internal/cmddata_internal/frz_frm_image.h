// The fixed in-memory images of the freeze-frame records, for the fields that move a whole
// freeze frame as one block (field operation Image; the mechanism is in procs.h).
// Library-internal.
//
// Both ends agree on the layout a 32-bit build gives the objects: 4-byte pointers and type
// words, members at their natural alignment. Each Image below mirrors it with fixed-width
// fields and explicit padding, so it is the same on every platform; the static_asserts stop
// any build, 32- or 64-bit, in which it drifts.
//
// CCmdFrzFrmDatP5, 144 bytes:
//   0  type-identity word (written 0, never read)   60  conversion table (64 bytes):
//   4  version, 6 reserved word                         60 type word, 64 version, 66 reserved,
//   8  item number (u16), 10 padding                    68 A, 72 B, 76 C (u32),
//  12  working value (u32)                              80 D (u16), 82 E (u8), 83 padding,
//  16  name (text, 16 bytes)                            84 F (u16), 86 padding,
//  32  extra value (u32)                                88 display entries (list, 20 bytes),
//  36  extra flag (u8), 37 padding                     108 G, 112 H, 116 I, 120 J (u32)
//  40  unit (text, 16 bytes)                       124  items (list, 20 bytes)
//  56  display flag, 57 valid flag, 58 padding
// A text is type word, version, reserved, data pointer, byte count (u16), padding; a list is
// type word, version, reserved, first node, last node, count.
//
// What travels: the version prefixes, the scalars (the working value included: it lies in the
// image even though the record's own fields never send it), and 0 in every type word, pointer,
// count and padding byte. Texts, display entries and items cannot travel in a block: a slot
// read from one has them empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "cmddata/diagcode/freeze_frame.h"
#include "cmddata/records/conversion.h"
#include "cmddata_internal/procs.h"

namespace cmddata {

template <>
struct ImageLayout<CCmdConversionTbl> {
    struct Image {
        image::Head head;
        std::uint32_t scaleNumerator;
        std::uint32_t scaleDenominator;
        std::uint32_t offset;
        std::uint16_t decimalPlaces;
        std::uint8_t signMode;
        std::uint8_t pad0;
        std::uint16_t bitWidth;
        std::uint16_t pad1;
        image::List displayEntries;
        std::uint32_t rangeLow;
        std::uint32_t rangeHigh;
        std::uint32_t graphLow;
        std::uint32_t graphHigh;
    };
    template <class M>
    static void Map(M& m, Image& i, CCmdConversionTbl& o) {
        m.Head(i.head, o);
        m.Scalar(i.scaleNumerator, o.scaleNumerator);
        m.Scalar(i.scaleDenominator, o.scaleDenominator);
        m.Scalar(i.offset, o.offset);
        m.Scalar(i.decimalPlaces, o.decimalPlaces);
        m.Scalar(i.signMode, o.signMode);
        m.Scalar(i.bitWidth, o.bitWidth);
        m.Owned(i.displayEntries, o.displayEntries);
        m.Scalar(i.rangeLow, o.rangeLow);
        m.Scalar(i.rangeHigh, o.rangeHigh);
        m.Scalar(i.graphLow, o.graphLow);
        m.Scalar(i.graphHigh, o.graphHigh);
    }
};

template <>
struct ImageLayout<CCmdFrzFrmDatP5> {
    struct Image {
        image::Head head;
        std::uint16_t itemNumber;
        std::uint16_t pad0;
        std::uint32_t workingValue;
        image::Text name;
        std::uint32_t extraValue;
        std::uint8_t extraFlag;
        std::uint8_t pad1[3];
        image::Text unit;
        std::uint8_t displayFlag;
        std::uint8_t validFlag;
        std::uint16_t pad2;
        ImageLayout<CCmdConversionTbl>::Image conversion;
        image::List items;
    };
    template <class M>
    static void Map(M& m, Image& i, CCmdFrzFrmDatP5& o) {
        m.Head(i.head, o);
        m.Scalar(i.itemNumber, o.itemNumber);
        m.Scalar(i.workingValue, o.workingValue);
        m.Owned(i.name, o.name);
        m.Scalar(i.extraValue, o.extraValue);
        m.Scalar(i.extraFlag, o.extraFlag);
        m.Owned(i.unit, o.unit);
        m.Scalar(i.displayFlag, o.displayFlag);
        m.Scalar(i.validFlag, o.validFlag);
        m.Record(i.conversion, o.conversion);
        m.Owned(i.items, o.items);
    }
};

namespace detail {
using ConversionImage = ImageLayout<CCmdConversionTbl>::Image;
using FrzFrmDatP5Image = ImageLayout<CCmdFrzFrmDatP5>::Image;

// No hidden padding (every byte is a named field), and the offsets of the table above.
static_assert(std::has_unique_object_representations_v<ConversionImage> &&
                  std::has_unique_object_representations_v<FrzFrmDatP5Image>,
              "an image has no padding the compiler chose");
static_assert(sizeof(ConversionImage) == 64, "conversion table image: 64 bytes");
static_assert(offsetof(ConversionImage, scaleNumerator) == 8 &&
                  offsetof(ConversionImage, decimalPlaces) == 20 &&
                  offsetof(ConversionImage, signMode) == 22 &&
                  offsetof(ConversionImage, bitWidth) == 24 &&
                  offsetof(ConversionImage, displayEntries) == 28 &&
                  offsetof(ConversionImage, rangeLow) == 48 &&
                  offsetof(ConversionImage, graphHigh) == 60,
              "conversion table image offsets");
static_assert(sizeof(FrzFrmDatP5Image) == 144, "CCmdFrzFrmDatP5 image: 144 bytes");
static_assert(
    offsetof(FrzFrmDatP5Image, head.version) == 4 && offsetof(FrzFrmDatP5Image, itemNumber) == 8 &&
        offsetof(FrzFrmDatP5Image, workingValue) == 12 && offsetof(FrzFrmDatP5Image, name) == 16 &&
        offsetof(FrzFrmDatP5Image, extraValue) == 32 &&
        offsetof(FrzFrmDatP5Image, extraFlag) == 36 && offsetof(FrzFrmDatP5Image, unit) == 40 &&
        offsetof(FrzFrmDatP5Image, displayFlag) == 56 &&
        offsetof(FrzFrmDatP5Image, validFlag) == 57 &&
        offsetof(FrzFrmDatP5Image, conversion) == 60 && offsetof(FrzFrmDatP5Image, items) == 124,
    "CCmdFrzFrmDatP5 image offsets");
}  // namespace detail

}  // namespace cmddata
