// Customize: the user-settable options of an ECU, their selectable values, setting them, and
// the remote customize commands that read current values and prepare the frames that set them.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/datmon_records.h"

/// One selectable value of a customize item: its number and text; from version 2 a display
/// order, from version 3 the value's bytes. Default version 3.
class CMDDATA_API CCmdCustomValue : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCustomValue)
    explicit CCmdCustomValue(std::uint16_t version = 3) : CCmdCore(version, 0) {}
    std::uint8_t valueNumber = 0;
    CCmdString text;
    std::uint16_t displayOrder = 0;  // version 2 and later
    CCmdList<CCmdByteData> bytes;    // version 3 and later
};

/// One customize item with its selectable values. Versions 2, 3 and 4 each add a group of
/// fields, tested independently in that order. Default version 4.
class CMDDATA_API CCmdCustomItem : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCustomItem)
    explicit CCmdCustomItem(std::uint16_t version = 4) : CCmdCore(version, 0) {}
    std::uint16_t itemId = 0;
    CCmdString name;
    std::uint8_t currentNumber = 0;
    CCmdList<CCmdCustomValue> values;
    // version 2 and later
    std::uint32_t dataId = 0;
    std::uint16_t bytePosition = 0;
    std::uint32_t bitMask = 0;
    // version 3 and later
    std::uint32_t ecuAddress = 0;
    std::uint16_t itemKind = 0;
    // version 4 and later
    CCmdList<CCmdByteData> currentBytes;
};

/// One item to set: identifier, list number and value number; from version 2 a display order,
/// from version 3 the value's bytes. Default version 3.
class CMDDATA_API CCmdSetCustomItem : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSetCustomItem)
    explicit CCmdSetCustomItem(std::uint16_t version = 3) : CCmdCore(version, 0) {}
    std::uint16_t itemId = 0;
    std::uint16_t listId = 0;
    std::uint8_t valueNumber = 0;
    std::uint16_t displayOrder = 0;  // version 2 and later
    CCmdList<CCmdByteData> bytes;    // version 3 and later
};

/// The result of setting one item.
class CMDDATA_API CCmdSuccessItem : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSuccessItem)
    CCmdSuccessItem() = default;
    std::uint16_t itemId = 0;
    std::uint16_t listId = 0;
    std::uint32_t result = 0;
};

/// One customize list: its two texts and identifiers; version 2 adds three more words.
/// Default version 2.
class CMDDATA_API CCmdCustomListInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCustomListInfo)
    explicit CCmdCustomListInfo(std::uint16_t version = 2) : CCmdCore(version, 0) {}
    CCmdString name;
    CCmdString note;
    std::uint16_t listId = 0;
    std::uint16_t ecuId = 0;
    std::uint8_t listKind = 0;
    // version 2 and later
    std::uint16_t groupId = 0;
    std::uint32_t options = 0;
    std::uint16_t displayOrder = 0;
};

/// Support information of a customize ECU.
class CMDDATA_API CCmdCustSupInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCustSupInfo)
    CCmdCustSupInfo() = default;
    std::uint8_t supportKind = 0;
    std::uint16_t ecuId = 0;
    std::uint32_t options = 0;
};

/// A support entry of the customize-support answer with its names (version argument,
/// default 1; no version tests).
class CMDDATA_API CCmdDedicatedLogic : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDedicatedLogic)
    explicit CCmdDedicatedLogic(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t logicId = 0;
    std::uint8_t logicKind = 0;
    CCmdList<CCmdItemName> names;
};

/// A remote customize value: item and value words.
class CMDDATA_API CCmdRmtCustomValue : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdRmtCustomValue)
    CCmdRmtCustomValue() = default;
    std::uint16_t itemId = 0;
    std::uint16_t value = 0;
};

/// The remote customize values of one ECU.
class CMDDATA_API CCmdRmtCustomValInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdRmtCustomValInfo)
    CCmdRmtCustomValInfo() = default;
    std::uint16_t ecuId = 0;
    CCmdList<CCmdRmtCustomValue> values;
};

/// A remotely settable item with its current and selectable values.
///
/// The frame identifier is declared last but travels right after the seven scalars, before
/// the current value.
class CMDDATA_API CCmdRmtCustomItem : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdRmtCustomItem)
    CCmdRmtCustomItem() = default;
    std::uint32_t itemId = 0;
    std::uint8_t itemKind = 0;
    std::uint8_t settable = 0;
    std::uint8_t valueCount = 0;
    std::uint16_t dataId = 0;
    std::uint16_t bytePosition = 0;
    std::uint16_t bitMask = 0;
    CCmdCustomValue current;
    CCmdList<CCmdCustomValue> values;
    std::uint32_t frameId = 0;
};

/// The remotely settable items of one ECU.
class CMDDATA_API CCmdRmtCustomSupport : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdRmtCustomSupport)
    CCmdRmtCustomSupport() = default;
    std::uint16_t ecuId = 0;
    CCmdList<CCmdRmtCustomItem> items;
};

/// The request of three remote customize commands: header, then the values per ECU.
class CMDDATA_API CCmdRmtCustomValInfoMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdRmtCustomValInfoMessage)
    CCmdRmtCustomValInfoMessage(std::uint32_t commandId, std::uint16_t version,
                                std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdRmtCustomValInfo> valueInfos;
};

/// The answer of the remote customize commands (and the request that sets values): header,
/// then the settable items per ECU.
class CMDDATA_API CCmdRmtCustomSupportMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdRmtCustomSupportMessage)
    CCmdRmtCustomSupportMessage(std::uint32_t commandId, std::uint16_t version,
                                std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdRmtCustomSupport> supports;
};

/// Asks for the items of one customize list of an ECU.
class CMDDATA_API CGetCustomItemListSnd : public CCmdSnd<cmddata::command::GetCustomItemList> {
public:
    CMDDATA_MESSAGE(CGetCustomItemListSnd)
    std::uint16_t listId = 0;
    std::uint32_t ecuAddress = 0;
};

/// The items of the list, and a result word.
class CMDDATA_API CGetCustomItemListRcv : public CCmdRcv<cmddata::command::GetCustomItemList> {
public:
    CMDDATA_MESSAGE(CGetCustomItemListRcv)
    CCmdList<CCmdCustomItem> items;
    std::uint32_t result = 0;
};

/// Sets the listed items.
class CMDDATA_API CSetCustomSnd : public CCmdSnd<cmddata::command::SetCustom> {
public:
    CMDDATA_MESSAGE(CSetCustomSnd)
    CCmdList<CCmdSetCustomItem> items;
};

/// The result of setting each item.
class CMDDATA_API CSetCustomRcv : public CCmdRcv<cmddata::command::SetCustom> {
public:
    CMDDATA_MESSAGE(CSetCustomRcv)
    CCmdList<CCmdSuccessItem> results;
};

/// Asks which ECUs support customizing (header only).
class CMDDATA_API CGetCustomSupportListSnd
    : public CCmdSnd<cmddata::command::GetCustomSupportList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCustomSupportListSnd)
};

/// The ECUs that support customizing, and their support entries.
class CMDDATA_API CGetCustomSupportListRcv
    : public CCmdRcv<cmddata::command::GetCustomSupportList> {
public:
    CMDDATA_MESSAGE(CGetCustomSupportListRcv)
    CCmdList<CCmdItemName> ecus;
    CCmdList<CCmdDedicatedLogic> logics;
};

/// Drops the communication cache of one customize ECU.
class CMDDATA_API CDelCommCacheCustomDopSnd
    : public CCmdSnd<cmddata::command::DelCommCacheCustomDop> {
public:
    CMDDATA_MESSAGE(CDelCommCacheCustomDopSnd)
    std::uint16_t ecuId = 0;
};

/// Outcome of dropping the cache (header only).
class CMDDATA_API CDelCommCacheCustomDopRcv
    : public CCmdRcv<cmddata::command::DelCommCacheCustomDop, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDelCommCacheCustomDopRcv)
};

/// Asks for the customize lists: the version prefix, then the header (version argument,
/// default 1; the version travels).
class CMDDATA_API CGetCustomListInfoSnd
    : public CCmdSnd<cmddata::command::GetCustomListInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCustomListInfoSnd)
};

/// The customize lists, behind the version prefix and the header.
class CMDDATA_API CGetCustomListInfoRcv : public CCmdRcv<cmddata::command::GetCustomListInfo> {
public:
    CMDDATA_MESSAGE(CGetCustomListInfoRcv)
    CCmdList<CCmdCustomListInfo> lists;
};

/// Asks for the customize lists without talking to the ECU; the list request under its own id.
CMDDATA_DERIVED_COMMAND(CGetCustomListInfoNoCommSnd, CGetCustomListInfoSnd,
                        GetCustomListInfoNoComm);

/// The customize lists known without talking to the ECU; the list answer under its own id.
CMDDATA_DERIVED_COMMAND(CGetCustomListInfoNoCommRcv, CGetCustomListInfoRcv,
                        GetCustomListInfoNoComm);

/// Asks which items may be set remotely.
class CMDDATA_API CGetAvailableSetCustItemListSnd
    : public CCmdSnd<cmddata::command::GetAvailableSetCustItemList, CCmdRmtCustomValInfoMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetAvailableSetCustItemListSnd)
};

/// The items that may be set remotely.
class CMDDATA_API CGetAvailableSetCustItemListRcv
    : public CCmdRcv<cmddata::command::GetAvailableSetCustItemList, CCmdRmtCustomSupportMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetAvailableSetCustItemListRcv)
};

/// Asks for the frames that read the current values.
class CMDDATA_API CGetSndFrmCustomizeCurValSnd
    : public CCmdSnd<cmddata::command::GetSndFrmCustomizeCurVal, CCmdRmtCustomValInfoMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSndFrmCustomizeCurValSnd)
};

/// The items with the frames that read their current values.
class CMDDATA_API CGetSndFrmCustomizeCurValRcv
    : public CCmdRcv<cmddata::command::GetSndFrmCustomizeCurVal, CCmdRmtCustomSupportMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSndFrmCustomizeCurValRcv)
};

/// Asks for the current values.
class CMDDATA_API CGetCustomizeCurValSnd
    : public CCmdSnd<cmddata::command::GetCustomizeCurVal, CCmdRmtCustomValInfoMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCustomizeCurValSnd)
};

/// The items with their current values.
class CMDDATA_API CGetCustomizeCurValRcv
    : public CCmdRcv<cmddata::command::GetCustomizeCurVal, CCmdRmtCustomSupportMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCustomizeCurValRcv)
};

/// Asks for the frames that would set the given values.
class CMDDATA_API CGetSndFrmSetCustomizeSnd
    : public CCmdSnd<cmddata::command::GetSndFrmSetCustomize, CCmdRmtCustomSupportMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSndFrmSetCustomizeSnd)
};

/// The items with the frames that would set them.
class CMDDATA_API CGetSndFrmSetCustomizeRcv
    : public CCmdRcv<cmddata::command::GetSndFrmSetCustomize, CCmdRmtCustomSupportMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSndFrmSetCustomizeRcv)
};
