// Freeze-frame records that several families keep: the frame with its items and conversion
// table, the lists of frames kept with the header of their answer, and the absolute time stamps.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/conversion.h"

/// One stored item of a freeze frame: raw value, item identifier and the raw data bytes.
///
/// The data bytes are declared before the identifier but travel after it.
class CMDDATA_API CCmdMultiData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMultiData)
    CCmdMultiData() = default;
    std::uint32_t rawValue = 0;
    CCmdBuffer data;
    std::uint8_t itemId = 0;
};

/// One freeze-frame item: number, name/unit/value texts, flags, conversion table and the stored
/// items. GetValue/GetString convert the item with a given identifier through the table.
class CMDDATA_API CCmdFrzFrmDat : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFrzFrmDat)
    CCmdFrzFrmDat() = default;
    std::uint16_t itemNumber = 0;
    std::uint32_t workingValue = 0;  // the owner's scratch value; never travels
    CCmdString name;
    CCmdString unit;
    CCmdString valueText;  // text the ECU side already formatted, if any
    std::uint8_t displayFlag = 0;
    std::uint8_t validFlag = 0;
    CCmdConversionTbl conversion;
    CCmdList<CCmdMultiData> items;

    /// The converted value of the item whose identifier is id; the last such item wins. 0 when
    /// there is no such item (indistinguishable from a value that converts to 0).
    std::int32_t GetValue(char id) const;
    /// The display text whose match value equals GetValue(id) (the first such entry), or null.
    /// The text belongs to this record and lives until it changes.
    const std::uint16_t* GetString(char id) const;
};

/// The freeze frames of one trouble code, with the header of the answer that brought them.
class CMDDATA_API CCmdFrzFrmDatListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdFrzFrmDatListInfo)
    explicit CCmdFrzFrmDatListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    std::uint32_t diagCode = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Freeze frames of several records, with the header of the answer that brought them.
class CMDDATA_API CCmdMultiFrzFrmDatListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdMultiFrzFrmDatListInfo)
    explicit CCmdMultiFrzFrmDatListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t frameNumber = 0;
    std::uint8_t frameCount = 0;
    std::uint8_t frameKind = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Twelve freeze-frame items, one per absolute time stamp.
class CMDDATA_API CCmdAbsoluteTimeStampInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdAbsoluteTimeStampInfo)
    static constexpr int kFrameCount = 12;
    explicit CCmdAbsoluteTimeStampInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdFrzFrmDat frames[kFrameCount];
};
