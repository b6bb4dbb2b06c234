// CAN bus and gateway check records, the category look-ups, and the bus-check messages.
#include "cmddata/diagcode/can_bus.h"

#include "cmddata_internal/procs.h"

// The category record and the category list keep CCmdBaseInfo's header words but send only the
// version prefix, and their RemoveAll leaves those words alone: these overloads are the better
// match for them than the info records' one, which zeroes the status words.
inline void CmdDataResetHeader(CCmdCanBusCategoryInfo*) {}
inline void CmdDataResetHeader(CCmdCanBusCategoryList*) {}

// --- category records ---

// Only the version prefix of the header travels (the CCmdCore prefix, not InfoHeader).
template <class P>
void CCmdCanBusCategoryInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("leading_word", leadingWord);
    p.String("name", name);
    p.U32("category_id", categoryId);
    p.U8("flag", flag);
    p.U32("trailing_word", trailingWord);
}
CMDDATA_DEFINE_FIELDS(CCmdCanBusCategoryInfo)

template <class P>
void CCmdCanBusCategoryList::Fields(P& p) {
    p.Prefix(*this);
    p.List("categories", categories);
}
CMDDATA_DEFINE_FIELDS(CCmdCanBusCategoryList)

std::uint32_t CCmdCanBusCategoryList::GetCategoryId() const {
    if (static_cast<std::int32_t>(categories.GetCount()) <= 0) return 0;
    return categories.GetAt(0).categoryId;
}

// The first match wins; the walk is one pass, head to tail.
CCmdCanBusCategoryInfo* CCmdCanBusCategoryList::GetSelCategoryInfo(std::uint32_t id) {
    CCmdCanBusCategoryInfo* found = nullptr;
    if (static_cast<std::int32_t>(categories.GetCount()) <= 0) return found;
    categories.ForEach([&](CCmdCanBusCategoryInfo& category) {
        if (found == nullptr && category.categoryId == id) found = &category;
    });
    return found;
}

// --- gateway and CAN trouble-code records ---

template <class P>
void CCmdCGWCanBusCheckInfo::Fields(P& p) {
    InfoHeader(p);
    p.U32("leading_word_1", leadingWords[0]);
    p.U32("leading_word_2", leadingWords[1]);
    p.String("first_text", firstText);
    p.U32("middle_word_1", middleWords[0]);
    p.U32("middle_word_2", middleWords[1]);
    p.U32("middle_word_3", middleWords[2]);
    p.String("second_text", secondText);
    p.U32("first_word", firstWord);
    p.U8("first_flag", firstFlag);
    p.U32("second_word", secondWord);
    p.U8("second_flag", secondFlag);
    p.U32("third_word", thirdWord);
    p.U16("number", number);
    p.U32("last_word", lastWord);
    p.Record("frame", frame);
}
CMDDATA_DEFINE_FIELDS(CCmdCGWCanBusCheckInfo)

template <class P>
void CCmdCGWCanBusCtgrInfo::Fields(P& p) {
    InfoHeader(p);
    p.U32("leading_word_1", leadingWords[0]);
    p.U32("leading_word_2", leadingWords[1]);
    p.U32("leading_word_3", leadingWords[2]);
    p.String("name", name);
    p.U32("word", word);
    p.String("second_text", secondText);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CCmdCGWCanBusCtgrInfo)

template <class P>
void CCmdCGWOptionInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("option_id", optionId);
    p.U32("value", value);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdCGWOptionInfo)

template <class P>
void CCmdCanDiagCode::Fields(P& p) {
    p.Prefix(*this);
    p.String("code_text", codeText);
    p.String("description", description);
}
CMDDATA_DEFINE_FIELDS(CCmdCanDiagCode)

template <class P>
void CCmdCanDiagList::Fields(P& p) {
    p.Prefix(*this);
    p.U32("bus_word", busWord);
    p.String("bus_name", busName);
    p.List("codes", codes);
}
CMDDATA_DEFINE_FIELDS(CCmdCanDiagList)

// --- layouts ---

template <class P>
void CCmdCanBusCategoriesMessage::Fields(P& p) {
    Header(p);
    p.List("categories", categories);
}
CMDDATA_DEFINE_FIELDS(CCmdCanBusCategoriesMessage)

// --- messages ---

template <class P>
void CGetCanBusDiagRcv::Fields(P& p) {
    Header(p);
    p.List("buses", buses);
}
CMDDATA_DEFINE_FIELDS(CGetCanBusDiagRcv)

template <class P>
void CGetCanBusCheckListRcv::Fields(P& p) {
    Header(p);
    p.List("categories", categories);
    p.List("first_lists", firstLists);
    p.List("second_lists", secondLists);
}
CMDDATA_DEFINE_FIELDS(CGetCanBusCheckListRcv)

template <class P>
void CSelectCGWCanBusOptionSnd::Fields(P& p) {
    Header(p);
    p.U16("first_word", firstWord);
    p.U16("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CSelectCGWCanBusOptionSnd)

template <class P>
void CSelectCGWCanBusOptionRcv::Fields(P& p) {
    Header(p);
    p.List("options", options);
    p.U16("number", number);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CSelectCGWCanBusOptionRcv)

template <class P>
void CGetCGWCanBusCtgrListSnd::Fields(P& p) {
    Header(p);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CGetCGWCanBusCtgrListSnd)

template <class P>
void CGetCGWCanBusCtgrListRcv::Fields(P& p) {
    Header(p);
    p.List("categories", categories);
}
CMDDATA_DEFINE_FIELDS(CGetCGWCanBusCtgrListRcv)

template <class P>
void CGetCGWCanBusChkListSnd::Fields(P& p) {
    Header(p);
    p.U32("word", word);
    p.List("categories", categories);
}
CMDDATA_DEFINE_FIELDS(CGetCGWCanBusChkListSnd)

template <class P>
void CGetCGWCanBusChkListRcv::Fields(P& p) {
    Header(p);
    p.List("results", results);
}
CMDDATA_DEFINE_FIELDS(CGetCGWCanBusChkListRcv)
