// Active test: records, messages and the conversion of a set value to the raw byte.
#include "cmddata/monitor/act_test.h"

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "cmddata_internal/procs.h"

namespace {

// The one field list of both item descriptions. valueQ, valueR and valueS travel before valueP;
// valueAA and valueAB travel from version 2, or always where the record says so.
template <class P>
void ActTstItemFields(P& p, CCmdCore& self, CCmdActTstItemMembers& m, bool tailAlways) {
    p.Prefix(self);
    p.U16("item_id", m.itemId);
    p.String("name", m.name);
    p.String("unit", m.unit);
    p.String("note", m.note);
    p.U8("value_q", m.valueQ);
    p.U8("value_r", m.valueR);
    p.U32("value_s", m.valueS);
    p.U8("value_p", m.valueP);
    p.U16("value_t", m.valueT);
    p.U16("value_u", m.valueU);
    p.U8("value_v", m.valueV);
    p.U32("value_w", m.valueW);
    p.U32("value_x", m.valueX);
    p.U32("value_y", m.valueY);
    p.U8("value_z", m.valueZ);
    p.Record("conversion", m.conversion);
    p.U32("lower_limit", m.lowerLimit);
    p.U32("upper_limit", m.upperLimit);
    if (tailAlways || p.Since(self, 2)) {
        p.U8("value_aa", m.valueAA);
        p.U16("value_ab", m.valueAB);
    }
}

// The one field list of both routine descriptions: the initialisation record sends valueAA and
// valueAB inside the scalar blocks, the signal-information record after the limits.
template <class P>
void RoutineItemFields(P& p, CCmdCore& self, CCmdRoutineActTstItemMembers& m,
                       bool tailAfterLimits) {
    p.Prefix(self);
    p.U16("item_id", m.itemId);
    p.U16("second_id", m.secondId);
    p.String("name", m.name);
    p.String("unit", m.unit);
    p.String("note", m.note);
    p.U8("value_q", m.valueQ);
    p.U8("value_r", m.valueR);
    if (!tailAfterLimits) p.U8("value_aa", m.valueAA);
    p.U8("value_p", m.valueP);
    p.U16("value_t", m.valueT);
    p.U16("value_u", m.valueU);
    if (!tailAfterLimits) p.U16("value_ab", m.valueAB);
    p.U32("value_w", m.valueW);
    p.U32("value_x", m.valueX);
    p.U32("value_y", m.valueY);
    p.U8("value_z", m.valueZ);
    p.Record("conversion", m.conversion);
    p.U32("lower_limit", m.lowerLimit);
    p.U32("upper_limit", m.upperLimit);
    if (tailAfterLimits) {
        p.U8("value_aa", m.valueAA);
        p.U16("value_ab", m.valueAB);
    }
    p.List("variable_entries", m.variableEntries);
    p.List("first_entries", m.firstEntries);
    p.List("second_entries", m.secondEntries);
    p.List("third_entries", m.thirdEntries);
}

// Two's-complement reading of 32 bits without implementation-defined conversion.
std::int32_t AsSigned(std::uint32_t v) {
    return v <= 0x7FFFFFFFu ? static_cast<std::int32_t>(v)
                            : static_cast<std::int32_t>(v - 0x80000000u) + INT32_MIN;
}

// Rounds to single precision also where the compiler would keep a wider intermediate (x87).
float Single(float v) {
    volatile float rounded = v;
    return rounded;
}

// The low 8 bits of t truncated toward zero. Not finite gives 0; so does a magnitude of 2^31 or
// more, which in single precision is a multiple of 256 anyway.
std::uint8_t LowByteTruncated(float t) {
    if (!std::isfinite(t)) return 0;
    const float whole = std::trunc(t);
    if (std::fabs(whole) >= 2147483648.0f) return 0;
    return static_cast<std::uint8_t>(static_cast<std::uint32_t>(static_cast<std::int32_t>(whole)) &
                                     0xFFu);
}

}  // namespace

// --- Records ---

template <class P>
void CCmdActTstDataItem::Fields(P& p) {
    ActTstItemFields(p, *this, *this, false);
}
CMDDATA_DEFINE_FIELDS(CCmdActTstDataItem)

// valueAA and valueAB travel although the record's version is 1.
template <class P>
void CCmdActTstSignalInfoItem::Fields(P& p) {
    ActTstItemFields(p, *this, *this, true);
}
CMDDATA_DEFINE_FIELDS(CCmdActTstSignalInfoItem)

template <class P>
void CCmdActTstSignalDataInit::Fields(P& p) {
    p.Prefix(*this);
    p.Record("item", item);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdActTstSignalDataInit)

template <class P>
void CCmdActTstData::Fields(P& p) {
    p.Prefix(*this);
    p.U16("test_id", testId);
    p.String("name", name);
    p.String("note", note);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdActTstData)

template <class P>
void CCmdRoutineActTstDataItem::Fields(P& p) {
    RoutineItemFields(p, *this, *this, false);
}
CMDDATA_DEFINE_FIELDS(CCmdRoutineActTstDataItem)

template <class P>
void CCmdRoutineActTstSignalInfoItem::Fields(P& p) {
    RoutineItemFields(p, *this, *this, true);
}
CMDDATA_DEFINE_FIELDS(CCmdRoutineActTstSignalInfoItem)

// --- Layouts ---

template <class P>
void CCmdActTstInitRequest::Fields(P& p) {
    Header(p);
    p.U32("status_word_4_again", status_[3]);
    p.U16("item_id", itemId);
}
CMDDATA_DEFINE_FIELDS(CCmdActTstInitRequest)

template <class P>
void CCmdResultTextMessage::Fields(P& p) {
    Header(p);
    p.U32("result", result);
    p.String("text", text);
}
CMDDATA_DEFINE_FIELDS(CCmdResultTextMessage)

// --- Messages ---

template <class P>
void CGetActTstListRcv::Fields(P& p) {
    Header(p);
    p.List("tests", tests);
    p.String("text", text);
    p.List("groups", groups);
}
CMDDATA_DEFINE_FIELDS(CGetActTstListRcv)

template <class P>
void CGetActTstInitRcv::Fields(P& p) {
    Header(p);
    p.U32("status_word_4_again", status_[3]);
    p.Record("item", item);
    p.U32("value", value);
    if (p.Since(*this, 2)) {
        p.U8("option", option);
        p.U16("extra", extra);
    }
}
CMDDATA_DEFINE_FIELDS(CGetActTstInitRcv)

cmddata::Result CStartActTstSnd::SetValue(const CCmdActTstDataItem* item, std::int32_t value) {
    if (item == nullptr) return cmddata::result::kBadArgument;
    const std::uint32_t a = item->conversion.scaleNumerator;
    const std::uint32_t b = item->conversion.scaleDenominator;
    const std::uint32_t c = item->conversion.offset;
    if (a == 0) return cmddata::result::kBadArgument;
    // Subtraction and multiplication wrap at 32 bits: done unsigned, where wrapping is defined.
    const std::uint32_t product = (static_cast<std::uint32_t>(value) - c) * b;
    // Division by -1 is a negation, which wraps for INT32_MIN instead of overflowing.
    const std::int32_t quotient =
        AsSigned(a) == -1 ? AsSigned(0u - product) : AsSigned(product) / AsSigned(a);
    this->value = static_cast<std::uint32_t>(quotient) & 0xFFu;
    return cmddata::result::kOk;
}

template <class P>
void CStopActTstSnd::Fields(P& p) {
    Header(p);
    if (p.Since(*this, 2)) p.U8("mode", mode);
}
CMDDATA_DEFINE_FIELDS(CStopActTstSnd)

template <class P>
void CRepairGetEcuDataRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CRepairGetEcuDataRcv)

template <class P>
void CRepairActTstSnd::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
    p.U8("test_byte", testByte);
    p.U8("option", option);
}
CMDDATA_DEFINE_FIELDS(CRepairActTstSnd)

cmddata::Result CRepairActTstSnd::SetValue(float value, float divisor, float zeroPoint,
                                           std::int32_t mode) {
    if (divisor == 0.0f) return cmddata::result::kBadArgument;
    if (mode != 0 && mode != 1) return cmddata::result::kBadArgument;
    float q = Single(Single(value - zeroPoint) / divisor);
    // Signed mode corrects by 256 unless the value itself (not q) is above 0; NaN is not.
    if (mode == 1 && !(value > 0.0f)) q = Single(q + 256.0f);
    testByte = LowByteTruncated(q);
    return cmddata::result::kOk;
}

template <class P>
void CRepairActTstRcv::Fields(P& p) {
    Header(p);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CRepairActTstRcv)

template <class P>
void CGetMultiActTstInitRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CGetMultiActTstInitRcv)

template <class P>
void CGetActTstSignalInfoRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CGetActTstSignalInfoRcv)

template <class P>
void CGetActiveTestCustomListIdRcv::Fields(P& p) {
    Header(p);
    p.U8("found", found);
    p.U16("list_id", listId);
}
CMDDATA_DEFINE_FIELDS(CGetActiveTestCustomListIdRcv)

template <class P>
void CGetRoutineActTstInitRcv::Fields(P& p) {
    Header(p);
    p.U32("status_word_4_again", status_[3]);
    p.Record("item", item);
    p.U32("value", value);
    p.U32("option", option);
}
CMDDATA_DEFINE_FIELDS(CGetRoutineActTstInitRcv)

template <class P>
void CGetRoutineActTstSignalInfoRcv::Fields(P& p) {
    Header(p);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CGetRoutineActTstSignalInfoRcv)

template <class P>
void CStartRoutineActTstSnd::Fields(P& p) {
    Header(p);
    p.U16("item_id", itemId);
    p.U32("value", value);
    p.List("first_data", firstData);
    p.List("second_data", secondData);
}
CMDDATA_DEFINE_FIELDS(CStartRoutineActTstSnd)
