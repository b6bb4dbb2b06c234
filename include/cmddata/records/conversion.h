// Conversion tables: how a raw monitor or freeze-frame value becomes the number or text shown.
#pragma once

#include <cstdint>

#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// One display entry of a conversion table: an entry number, the text shown, and the value the
/// converted number must equal for the text to be chosen.
///
/// The trailing highlight byte travels only when the entry's version is 2 or more (after the
/// prefix was read, so an older or newer peer's entry drops it).
class CMDDATA_API CCmdDispInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDispInfo)
    explicit CCmdDispInfo(std::uint16_t version = 2) : CCmdCore(version, 0) {}
    std::uint32_t entryId = 0;
    CCmdString displayText;
    std::uint32_t matchValue = 0;  // GetString picks the first entry whose value equals this
    std::uint32_t matchUpper = 0;  // upper end where the peer matches a range; carried only
    std::uint8_t highlight = 0;    // version 2 and later
};

/// A display entry matched against raw bytes of variable length: entry number, text, the bytes
/// to compare, a mask for them and a highlight byte.
class CMDDATA_API CCmdDispVariableInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDispVariableInfo)
    explicit CCmdDispVariableInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t entryId = 0;
    CCmdString displayText;
    CCmdList<CCmdByteData> matchBytes;
    CCmdList<CCmdByteData> maskBytes;
    std::uint8_t highlight = 0;
};

/// How a raw value is turned into what is displayed: value = raw (sign-extended by signMode and
/// bitWidth) x scaleNumerator / scaleDenominator + offset, then a text from the display entries.
///
/// Wire order differs from the member order on purpose: decimalPlaces, signMode and bitWidth
/// travel last, after the display entries and the four range words.
class CMDDATA_API CCmdConversionTbl : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdConversionTbl)
    CCmdConversionTbl() = default;

    std::uint32_t scaleNumerator = 0;    // multiplier, taken as signed 32-bit
    std::uint32_t scaleDenominator = 0;  // divisor; 0 and 1 both mean "no division"
    std::uint32_t offset = 0;            // zero point, added last with 32-bit wrap
    std::uint16_t decimalPlaces = 0;     // digits the display shows after the point
    std::uint8_t signMode = 0;           // 1 two's complement, 3 sign and magnitude, else unsigned
    std::uint16_t bitWidth = 0;          // width of the raw value; its top bit is the sign
    CCmdList<CCmdDispInfo> displayEntries;
    std::uint32_t rangeLow = 0;  // display range the peer shows the value in
    std::uint32_t rangeHigh = 0;
    std::uint32_t graphLow = 0;  // scale of the value's graph
    std::uint32_t graphHigh = 0;

    /// The displayed number for a raw value. The sign bit is bit (bitWidth - 1) modulo 32, so a
    /// width of 0 tests bit 31. Arithmetic is 64-bit; the result is the low 32 bits plus offset.
    std::int32_t Convert(std::uint32_t raw) const;
    /// Text of the first display entry whose match value equals value; null when none does.
    const std::uint16_t* FindText(std::uint32_t value) const;
};

/// The conversion table with display entries of variable length; otherwise as CCmdConversionTbl
/// (same members, same wire order, one shared field list).
class CMDDATA_API CCmdConversionVariableTbl : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdConversionVariableTbl)
    explicit CCmdConversionVariableTbl(std::uint16_t version = 1) : CCmdCore(version, 0) {}

    std::uint32_t scaleNumerator = 0;
    std::uint32_t scaleDenominator = 0;
    std::uint32_t offset = 0;
    std::uint16_t decimalPlaces = 0;
    std::uint8_t signMode = 0;
    std::uint16_t bitWidth = 0;
    CCmdList<CCmdDispVariableInfo> displayEntries;
    std::uint32_t rangeLow = 0;
    std::uint32_t rangeHigh = 0;
    std::uint32_t graphLow = 0;
    std::uint32_t graphHigh = 0;
};
