// Vehicle-selection records that several families use.
#include "cmddata/records/select.h"

#include <type_traits>

#include "cmddata_internal/procs.h"

template <class P>
void CCmdSelectName::Fields(P& p) {
    p.Prefix(*this);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdSelectName)

template <class P>
void CCmdSelectCarTypeVin::Fields(P& p) {
    p.Prefix(*this);  // the header is never sent
    p.String("text", text);
    p.List("names", names);
    p.List("car_info", carInfo);
    p.List("options", options);
    p.U16("first_value", firstValue);
    p.U16("second_value", secondValue);
}
CMDDATA_DEFINE_FIELDS(CCmdSelectCarTypeVin)
