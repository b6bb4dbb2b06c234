// Vehicle selection: records and messages.
#include "cmddata/vehicle/select.h"

#include "cmddata_internal/procs.h"

namespace {}  // namespace

// --- Records ---

template <class P>
void CCmdSelectCategoryId::Fields(P& p) {
    p.Prefix(*this);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
}
CMDDATA_DEFINE_FIELDS(CCmdSelectCategoryId)

template <class P>
void CCmdCategoryItem::Fields(P& p) {
    p.Prefix(*this);
    p.List("items", items);
    p.String("name", name);
    p.U16("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdCategoryItem)

// --- Messages ---

template <class P>
void CSelectCarTypeSnd::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
    p.U16("first_selector", firstSelector);
    p.U16("second_selector", secondSelector);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeSnd)

template <class P>
void CSelectCarTypeRcv::Fields(P& p) {
    Header(p);
    p.List("car_info", carInfo);
    p.List("options", options);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeRcv)

template <class P>
void CSelectCarCategorySnd::Fields(P& p) {
    Header(p);
    p.List("categories", categories);
    p.U8("flag", flag);
    p.List("texts", texts);
}
CMDDATA_DEFINE_FIELDS(CSelectCarCategorySnd)

template <class P>
void CSelectCarCategoryRcv::Fields(P& p) {
    Header(p);
    p.List("categories", categories);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CSelectCarCategoryRcv)

template <class P>
void CSelectCarTypeVinSnd::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
    p.U16("first_selector", firstSelector);
    p.U16("second_selector", secondSelector);
    p.U16("third_selector", thirdSelector);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeVinSnd)

template <class P>
void CSelectCarTypeVinRcv::Fields(P& p) {
    Header(p);
    p.List("car_info", carInfo);
    p.List("options", options);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
    p.List("names", names);
    p.String("text", text);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeVinRcv)

template <class P>
void CSelectCarTypeVin10Snd::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
    p.U16("first_selector", firstSelector);
    p.U16("second_selector", secondSelector);
    p.U16("third_selector", thirdSelector);
    p.List("texts", texts);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeVin10Snd)

template <class P>
void CSelectCarTypeVin10Rcv::Fields(P& p) {
    Header(p);
    p.List("car_info", carInfo);
    p.List("options", options);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
    p.List("names", names);
    p.String("text", text);
    p.U32("first_word", firstWord);
    p.U8("flag", flag);
    p.String("second_text", secondText);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeVin10Rcv)

template <class P>
void CSelectCarTypeRemoteRcv::Fields(P& p) {
    Header(p);
    p.U16("value", value);
    p.List("ids", ids);
}
CMDDATA_DEFINE_FIELDS(CSelectCarTypeRemoteRcv)

template <class P>
void CSetVehicleInfoForVehicleIdSnd::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
    p.Array("selectors", selectors);
}
CMDDATA_DEFINE_FIELDS(CSetVehicleInfoForVehicleIdSnd)

template <class P>
void CSetVehicleInfoForVehicleIdRcv::Fields(P& p) {
    Header(p);  // the order of the first eight fields of the VIN-with-10th-digit answer
    p.List("car_info", carInfo);
    p.List("options", options);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
    p.List("names", names);
    p.String("text", text);
    p.U32("word", word);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CSetVehicleInfoForVehicleIdRcv)

template <class P>
void CGetCarInfoExceptionRcv::Fields(P& p) {
    Header(p);
    p.List("car_info", carInfo);
}
CMDDATA_DEFINE_FIELDS(CGetCarInfoExceptionRcv)
