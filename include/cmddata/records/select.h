// Vehicle-selection records that several families use: a selector name and the vehicle chosen
// by VIN.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/car_info.h"
#include "cmddata/records/function.h"

/// A candidate name of a selection: two words and the name.
class CMDDATA_API CCmdSelectName : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSelectName)
    CCmdSelectName() = default;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
    CCmdString name;
};

/// A VIN selection result kept in memory: a text, the candidate names, the vehicle information,
/// the options and two words. Built on the header (identifier 1, version 1), yet only its
/// version prefix and its own fields travel: no header word is sent.
class CMDDATA_API CCmdSelectCarTypeVin : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdSelectCarTypeVin)
    CCmdSelectCarTypeVin() : CCmdBase(1, 1, 0) {}
    CCmdString text;
    CCmdList<CCmdSelectName> names;
    CCmdList<CCmdCarInfo> carInfo;
    CCmdList<CCmdOptionInfo> options;
    std::uint16_t firstValue = 0;
    std::uint16_t secondValue = 0;
};
