// Records of the data monitor: the items an ECU offers, their descriptions, sampled values,
// standard values, and the small named records other families share.
#pragma once

#include <cstdint>

#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/conversion.h"

/// One monitor item of an ECU: identifier, name, unit and note texts, and its display settings.
///
/// The numeric words are carried, not interpreted; their names are the meaning both processes
/// give them.
class CMDDATA_API CCmdDatMonData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDatMonData)
    CCmdDatMonData() = default;
    std::uint16_t itemId = 0;
    CCmdString name;
    CCmdString unit;
    CCmdString note;
    std::uint32_t attributes[5] = {0, 0, 0, 0, 0};  // item attribute words, in order
    std::uint8_t displayKind = 0;                   // how the value is shown (number, text, ...)
    std::uint16_t dataLength = 0;                   // bytes of raw data behind the item
    std::uint32_t options[4] = {0, 0, 0, 0};        // further option words, in order
};

/// The item description returned by the signal-information list; the layout of CCmdDatMonData,
/// a type of its own so that the two item lists are distinct.
class CMDDATA_API CCmdDatMonInfoData : public CCmdDatMonData {
public:
    CMDDATA_SAME_LAYOUT(CCmdDatMonInfoData)
    CCmdDatMonInfoData() = default;
};

/// The full description of one monitor signal: texts, where its raw bits lie, and its table.
class CMDDATA_API CCmdDatMonSignalInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDatMonSignalInfo)
    CCmdDatMonSignalInfo() = default;
    std::uint16_t signalId = 0;
    CCmdString name;
    CCmdString unit;
    CCmdString note;
    std::uint8_t signalKind = 0;
    std::uint8_t byteOrder = 0;
    std::uint32_t bytePosition = 0;  // where the raw value starts in the answer frame
    std::uint8_t bitPosition = 0;
    std::uint32_t bitLength = 0;
    std::uint8_t displayKind = 0;
    CCmdConversionTbl conversion;
};

/// One sampled value: the item it belongs to, a status word, and the raw sample bytes.
///
/// The status word is declared after the sample but travels before it.
class CMDDATA_API CCmdDatMonValue : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDatMonValue)
    CCmdDatMonValue() = default;
    std::uint32_t itemId = 0;
    CCmdBuffer sample;
    std::uint32_t status = 0;
};

/// A standard (reference) range of one item: item identifier, lower and upper value.
class CMDDATA_API CCmdStandardValueInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdStandardValueInfo)
    explicit CCmdStandardValueInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t itemId = 0;
    std::uint32_t lowerValue = 0;
    std::uint32_t upperValue = 0;
};

/// A standard value triple: the reference value and the lower and upper limit around it.
class CMDDATA_API CCmdDatMonStdValue : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDatMonStdValue)
    CCmdDatMonStdValue() = default;
    std::uint32_t standardValue = 0;
    std::uint32_t lowerLimit = 0;
    std::uint32_t upperLimit = 0;
};

/// A lower and upper value: exactly 8 bytes on the wire, with no version prefix (the peer reads
/// it so; a prefix would put the stream out of step).
class CMDDATA_API CCmdStdValue : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdStdValue)
    CCmdStdValue() = default;
    std::uint32_t lowerValue = 0;
    std::uint32_t upperValue = 0;
};

/// A numbered name: 16-bit item identifier and its name.
class CMDDATA_API CCmdItemName : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdItemName)
    CCmdItemName() = default;
    std::uint16_t itemId = 0;
    CCmdString name;
};

/// A numbered name with a 32-bit item identifier.
class CMDDATA_API CCmdItemNameDw : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdItemNameDw)
    CCmdItemNameDw() = default;
    std::uint32_t itemId = 0;
    CCmdString name;
};

/// A group of monitor items: the group's name and the identifiers of its members.
class CMDDATA_API CCmdGroupData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdGroupData)
    CCmdGroupData() = default;
    CCmdString groupName;
    CCmdList<CCmdWordId> itemIds;
};

/// An item to be shown highlighted, and how.
class CMDDATA_API CCmdHighlightSignal : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdHighlightSignal)
    explicit CCmdHighlightSignal(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t itemId = 0;
    std::uint8_t highlightMode = 0;
};

/// A link from an item to a named target. After the name and the link kind, version 2 adds the
/// target's position (five words), version 3 a display order, version 4 four option words; the
/// three tests are independent (2 / 16 / 20 / 36 bytes after the name for versions 1 to 4).
class CMDDATA_API CCmdLinkName : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdLinkName)
    explicit CCmdLinkName(std::uint16_t version = 4) : CCmdCore(version, 0) {}
    CCmdString linkName;
    std::uint16_t linkKind = 0;
    // version 2 and later
    std::uint16_t targetEcuId = 0;
    std::uint16_t targetItemId = 0;
    std::uint32_t targetAddress = 0;
    std::uint16_t targetKind = 0;
    std::uint32_t targetFlags = 0;
    // version 3 and later
    std::uint32_t displayOrder = 0;
    // version 4 and later
    std::uint32_t options[4] = {0, 0, 0, 0};
};
