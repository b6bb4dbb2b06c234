// Vehicle selection: choosing the connected vehicle by coded vehicle information, by VIN (with
// or without its 10th digit), remotely or by a vehicle identifier; the vehicle categories and the
// lists of vehicles excepted from normal handling.
//
// The selectors, values, flags and words are carried, not interpreted; their names say where
// they stand, their meaning belongs to the two processes. No class here tests its version: a
// version only travels in version prefixes.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/select.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/car_info.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/function.h"
#include "cmddata/records/select.h"
#include "cmddata/vehicle/ecu.h"

// --- Records ---

/// A category asked for: two words.
class CMDDATA_API CCmdSelectCategoryId : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSelectCategoryId)
    CCmdSelectCategoryId() = default;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
};

/// A vehicle category: its numbered items, its name and a word.
class CMDDATA_API CCmdCategoryItem : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCategoryItem)
    CCmdCategoryItem() = default;
    CCmdList<CCmdItemName> items;
    CCmdString name;
    std::uint16_t value = 0;
};

// --- Messages ---
// The four selection answers hold their vehicle information as their first member and share
// the vehicle-information accessors (CCmdCarInfoAccess). Versions do not travel: both sides
// construct a message with the same one.

/// Selects the vehicle type by vehicle information items: the item ids, then two selectors.
class CMDDATA_API CSelectCarTypeSnd : public CCmdSnd<cmddata::command::SelectCarType> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeSnd)
    CCmdList<CCmdWordId> itemIds;
    std::uint16_t firstSelector = 0;
    std::uint16_t secondSelector = 0;
};

/// The selected vehicle: its information, the options and two values.
class CMDDATA_API CSelectCarTypeRcv : public CCmdRcv<cmddata::command::SelectCarType>,
                                      public CCmdCarInfoAccess<CSelectCarTypeRcv> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeRcv)
    CCmdList<CCmdCarInfo> carInfo;
    CCmdList<CCmdOptionInfo> options;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
};

/// Selects vehicle categories: the categories asked for, a flag and texts.
class CMDDATA_API CSelectCarCategorySnd : public CCmdSnd<cmddata::command::SelectCarCategory> {
public:
    CMDDATA_MESSAGE(CSelectCarCategorySnd)
    CCmdList<CCmdSelectCategoryId> categories;
    std::uint8_t flag = 0;
    CCmdList<CCmdString> texts;
};

/// The vehicle categories found, and a flag.
class CMDDATA_API CSelectCarCategoryRcv : public CCmdRcv<cmddata::command::SelectCarCategory> {
public:
    CMDDATA_MESSAGE(CSelectCarCategoryRcv)
    CCmdList<CCmdCategoryItem> categories;
    std::uint8_t flag = 0;
};

/// Selects the vehicle type by VIN: the item ids, then three selectors.
class CMDDATA_API CSelectCarTypeVinSnd : public CCmdSnd<cmddata::command::SelectCarTypeVin> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeVinSnd)
    CCmdList<CCmdWordId> itemIds;
    std::uint16_t firstSelector = 0;
    std::uint16_t secondSelector = 0;
    std::uint16_t thirdSelector = 0;
};

/// The vehicle selected by VIN: its information, the options, two values, the candidate names
/// and a text.
class CMDDATA_API CSelectCarTypeVinRcv : public CCmdRcv<cmddata::command::SelectCarTypeVin>,
                                         public CCmdCarInfoAccess<CSelectCarTypeVinRcv> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeVinRcv)
    CCmdList<CCmdCarInfo> carInfo;
    CCmdList<CCmdOptionInfo> options;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
    CCmdList<CCmdSelectName> names;
    CCmdString text;
};

/// Selects the vehicle type by VIN with its 10th digit: the item ids, three selectors and texts.
class CMDDATA_API CSelectCarTypeVin10Snd : public CCmdSnd<cmddata::command::SelectCarTypeVin10> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeVin10Snd)
    CCmdList<CCmdWordId> itemIds;
    std::uint16_t firstSelector = 0;
    std::uint16_t secondSelector = 0;
    std::uint16_t thirdSelector = 0;
    CCmdList<CCmdString> texts;
};

/// The vehicle selected by VIN with its 10th digit: its information, the options, two values,
/// the candidate names, a text, a word, a flag, a second text and a second word. The default
/// version is 2.
class CMDDATA_API CSelectCarTypeVin10Rcv : public CCmdRcv<cmddata::command::SelectCarTypeVin10>,
                                           public CCmdCarInfoAccess<CSelectCarTypeVin10Rcv> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeVin10Rcv)
    CCmdList<CCmdCarInfo> carInfo;
    CCmdList<CCmdOptionInfo> options;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
    CCmdList<CCmdSelectName> names;
    CCmdString text;
    std::uint32_t firstWord = 0;
    std::uint8_t flag = 0;
    CCmdString secondText;
    std::uint32_t secondWord = 0;
};

/// Selects the vehicle type remotely by one selector.
class CMDDATA_API CSelectCarTypeRemoteSnd
    : public CCmdSnd<cmddata::command::SelectCarTypeRemote, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSelectCarTypeRemoteSnd)
};

/// The remote selection: a value, then a list of word ids.
class CMDDATA_API CSelectCarTypeRemoteRcv : public CCmdRcv<cmddata::command::SelectCarTypeRemote> {
public:
    CMDDATA_MESSAGE(CSelectCarTypeRemoteRcv)
    std::uint16_t value = 0;
    CCmdList<CCmdWordId> ids;
};

/// Sets the vehicle information for a vehicle identifier: the item ids, then four selectors.
class CMDDATA_API CSetVehicleInfoForVehicleIdSnd
    : public CCmdSnd<cmddata::command::SetVehicleInfoForVehicleId> {
public:
    CMDDATA_MESSAGE(CSetVehicleInfoForVehicleIdSnd)
    CCmdList<CCmdWordId> itemIds;
    std::uint16_t selectors[4] = {0, 0, 0, 0};
};

/// The vehicle for the identifier. Its wire order is that of the first eight fields of
/// CSelectCarTypeVin10Rcv (information, options, two values, names, text, word, flag), not the
/// order of the members here.
class CMDDATA_API CSetVehicleInfoForVehicleIdRcv
    : public CCmdRcv<cmddata::command::SetVehicleInfoForVehicleId>,
      public CCmdCarInfoAccess<CSetVehicleInfoForVehicleIdRcv> {
public:
    CMDDATA_MESSAGE(CSetVehicleInfoForVehicleIdRcv)
    CCmdList<CCmdCarInfo> carInfo;
    CCmdList<CCmdSelectName> names;
    CCmdList<CCmdOptionInfo> options;
    CCmdString text;
    std::uint32_t word = 0;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
    std::uint8_t flag = 0;
};

/// Asks for the list of excepted vehicles (header only).
class CMDDATA_API CGetCarExceptionListSnd
    : public CCmdSnd<cmddata::command::GetCarExceptionList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCarExceptionListSnd)
};

/// The excepted vehicles, numbered and named.
class CMDDATA_API CGetCarExceptionListRcv
    : public CCmdRcv<cmddata::command::GetCarExceptionList, CCmdItemNameListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCarExceptionListRcv)
};

/// Sets the exception of one vehicle by its number.
class CMDDATA_API CSetCarExceptionSnd
    : public CCmdSnd<cmddata::command::SetCarException, CCmdItemIdMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetCarExceptionSnd)
};

/// Outcome of setting the exception (header only).
class CMDDATA_API CSetCarExceptionRcv
    : public CCmdRcv<cmddata::command::SetCarException, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetCarExceptionRcv)
};

/// Asks for the default list of excepted vehicles (header only).
class CMDDATA_API CGetDefaultCarExceptListSnd
    : public CCmdSnd<cmddata::command::GetDefaultCarExceptList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDefaultCarExceptListSnd)
};

/// The default excepted vehicles, numbered and named.
class CMDDATA_API CGetDefaultCarExceptListRcv
    : public CCmdRcv<cmddata::command::GetDefaultCarExceptList, CCmdItemNameListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDefaultCarExceptListRcv)
};

/// Asks for the vehicle information of the excepted vehicle by item ids.
class CMDDATA_API CGetCarInfoExceptionSnd
    : public CCmdSnd<cmddata::command::GetCarInfoException, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCarInfoExceptionSnd)
};

/// The vehicle information of the excepted vehicle.
class CMDDATA_API CGetCarInfoExceptionRcv : public CCmdRcv<cmddata::command::GetCarInfoException> {
public:
    CMDDATA_MESSAGE(CGetCarInfoExceptionRcv)
    CCmdList<CCmdCarInfo> carInfo;
};

/// Asks for the excepted vehicle types (header only).
class CMDDATA_API CGetExceptionListCarTypeSnd
    : public CCmdSnd<cmddata::command::GetExceptionListCarType, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetExceptionListCarTypeSnd)
};

/// The excepted vehicle types, numbered and named.
class CMDDATA_API CGetExceptionListCarTypeRcv
    : public CCmdRcv<cmddata::command::GetExceptionListCarType, CCmdItemNameListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetExceptionListCarTypeRcv)
};
