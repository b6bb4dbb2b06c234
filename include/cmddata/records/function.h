// Function-list records that several families use: the ECU's function list, help and option
// records, and the two request layouts that carry an item identifier or a selector.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// One detail of a diagnostic function: a detail number and its value.
class CMDDATA_API CCmdFuncDetail : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFuncDetail)
    CCmdFuncDetail() = default;
    std::uint16_t detailId = 0;
    std::uint32_t value = 0;
};

/// One diagnostic function of an ECU: number, name, attribute word and its details.
///
/// The attribute word is declared after the name but travels before it.
class CMDDATA_API CCmdFunc : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFunc)
    CCmdFunc() = default;
    std::uint16_t functionId = 0;
    CCmdString name;
    std::uint32_t attribute = 0;
    CCmdList<CCmdFuncDetail> details;
};

/// The functions of one ECU as a whole, behind a copy of the answer's header.
class CMDDATA_API CCmdEcuFuncListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdEcuFuncListInfo)
    explicit CCmdEcuFuncListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    CCmdList<CCmdFunc> functions;
};

/// A help entry: its kind and text.
class CMDDATA_API CCmdHelpInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdHelpInfo)
    explicit CCmdHelpInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint8_t kind = 0;
    CCmdString text;
};

/// An option: its name and number.
class CMDDATA_API CCmdOptionInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdOptionInfo)
    explicit CCmdOptionInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString name;
    std::uint16_t optionId = 0;
};

/// A message that carries its header, then the 16-bit identifier of what it asks about.
class CMDDATA_API CCmdItemIdMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdItemIdMessage)
    CCmdItemIdMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint16_t itemId = 0;
};

/// A message that carries its header, then one byte choosing what it asks for.
class CMDDATA_API CCmdSelectorMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdSelectorMessage)
    CCmdSelectorMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint8_t selector = 0;
};
