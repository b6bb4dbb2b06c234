// Conversion tables and their display entries.
#include "cmddata/records/conversion.h"

#include <cstdint>

#include <type_traits>

#include "cmddata_internal/procs.h"

template <class P>
void CCmdDispInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("entry_id", entryId);
    p.String("display_text", displayText);
    p.U32("match_value", matchValue);
    p.U32("match_upper", matchUpper);
    if (p.Since(*this, 2)) p.U8("highlight", highlight);
}
CMDDATA_DEFINE_FIELDS(CCmdDispInfo)

template <class P>
void CCmdDispVariableInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("entry_id", entryId);
    p.String("display_text", displayText);
    p.List("match_bytes", matchBytes);
    p.List("mask_bytes", maskBytes);
    p.U8("highlight", highlight);
}
CMDDATA_DEFINE_FIELDS(CCmdDispVariableInfo)

namespace {
// The one field list of both tables: they differ only in the type of their display entries.
// Decimal places, sign mode and bit width are declared before the entries but travel last.
template <class P, class Table>
void ConversionTableFields(P& p, Table& t) {
    p.Prefix(t);
    p.U32("scale_numerator", t.scaleNumerator);
    p.U32("scale_denominator", t.scaleDenominator);
    p.U32("offset", t.offset);
    p.List("display_entries", t.displayEntries);
    p.U32("range_low", t.rangeLow);
    p.U32("range_high", t.rangeHigh);
    p.U32("graph_low", t.graphLow);
    p.U32("graph_high", t.graphHigh);
    p.U16("decimal_places", t.decimalPlaces);
    p.U8("sign_mode", t.signMode);
    p.U16("bit_width", t.bitWidth);
}

// Two's-complement reading of 32 bits without relying on implementation-defined conversion.
std::int32_t AsSigned(std::uint32_t v) {
    return v <= 0x7FFFFFFFu ? static_cast<std::int32_t>(v)
                            : static_cast<std::int32_t>(v - 0x80000000u) + INT32_MIN;
}
}  // namespace

template <class P>
void CCmdConversionTbl::Fields(P& p) {
    ConversionTableFields(p, *this);
}
CMDDATA_DEFINE_FIELDS(CCmdConversionTbl)

template <class P>
void CCmdConversionVariableTbl::Fields(P& p) {
    ConversionTableFields(p, *this);
}
CMDDATA_DEFINE_FIELDS(CCmdConversionVariableTbl)

std::int32_t CCmdConversionTbl::Convert(std::uint32_t raw) const {
    // Sign bit position: width - 1, taken modulo 32 so that a width of 0 tests bit 31 and no
    // shift ever reaches 32.
    const std::uint32_t n = (static_cast<std::uint32_t>(bitWidth) - 1u) & 31u;
    const std::uint32_t below = (n == 0 ? 0u : (0xFFFFFFFFu >> (32u - n)));  // bits under n
    const bool negative = ((raw >> n) & 1u) != 0;
    std::int64_t value = static_cast<std::int64_t>(raw);
    if (negative && signMode == 1)  // every bit from n upward set: raw's low bits minus 2^n
        value = static_cast<std::int64_t>(raw & below) - (std::int64_t{1} << n);
    else if (negative && signMode == 3)  // magnitude in the bits under n
        value = -static_cast<std::int64_t>(raw & below);
    // |value| <= 2^32 and |numerator| <= 2^31: the product stays inside 64 bits.
    if (scaleNumerator != 1) value *= static_cast<std::int64_t>(AsSigned(scaleNumerator));
    if (scaleDenominator > 1) value /= static_cast<std::int64_t>(scaleDenominator);
    const std::uint32_t low = static_cast<std::uint32_t>(static_cast<std::uint64_t>(value));
    return AsSigned(low + offset);
}

const std::uint16_t* CCmdConversionTbl::FindText(std::uint32_t value) const {
    const std::uint16_t* text = nullptr;
    bool found = false;
    displayEntries.ForEach([&](const CCmdDispInfo& entry) {
        if (found || entry.matchValue != value) return;
        found = true;
        text = entry.displayText.GetAt();
    });
    return text;
}
