// Freeze frames: the values an ECU stored when a trouble code was set, the records that hold
// them, the look-ups that turn an item into a number or a text, and the messages that fetch them.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/monitor/conversion.h"

/// One stored item of a freeze frame: raw value, item identifier and the raw data bytes.
///
/// The data bytes are declared before the identifier but travel after it.
class CMDDATA_API CCmdMultiData : public CCmdCore {
    CMDDATA_FIELDS(CCmdMultiData)
public:
    CCmdMultiData() = default;
    std::uint32_t rawValue = 0;
    CCmdBuffer data;
    std::uint8_t itemId = 0;
};

/// A stored item with a 64-bit raw value.
class CMDDATA_API CCmdMultiDataEx : public CCmdCore {
    CMDDATA_FIELDS(CCmdMultiDataEx)
public:
    CCmdMultiDataEx() = default;
    std::uint64_t rawValue = 0;
    std::uint8_t itemId = 0;
};

/// A stored item of the newer freeze frame: raw value, item identifier and its status word.
class CMDDATA_API CCmdMultiDataP5 : public CCmdCore {
    CMDDATA_FIELDS(CCmdMultiDataP5)
public:
    CCmdMultiDataP5() = default;
    std::uint32_t rawValue = 0;
    std::uint8_t itemId = 0;
    std::uint32_t status = 0;
};

/// One freeze-frame item: number, name/unit/value texts, flags, conversion table and the stored
/// items. GetValue/GetString convert the item with a given identifier through the table.
class CMDDATA_API CCmdFrzFrmDat : public CCmdCore {
    CMDDATA_FIELDS(CCmdFrzFrmDat)
public:
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

/// The newer freeze-frame item: as CCmdFrzFrmDat with two texts, an extra value and flag (which
/// travel last, after the items) and items that carry a status word.
class CMDDATA_API CCmdFrzFrmDatP5 : public CCmdCore {
    CMDDATA_FIELDS(CCmdFrzFrmDatP5)
public:
    explicit CCmdFrzFrmDatP5(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t itemNumber = 0;
    std::uint32_t workingValue = 0;  // the owner's scratch value; never travels
    CCmdString name;
    std::uint32_t extraValue = 0;  // travels after the items
    std::uint8_t extraFlag = 0;    // travels after extraValue
    CCmdString unit;
    std::uint8_t displayFlag = 0;
    std::uint8_t validFlag = 0;
    CCmdConversionTbl conversion;
    CCmdList<CCmdMultiDataP5> items;

    /// As CCmdFrzFrmDat::GetValue, over the P5 items.
    std::int32_t GetValue(char id) const;
    /// As CCmdFrzFrmDat::GetString, over the P5 items.
    const std::uint16_t* GetString(char id) const;
};

/// Where a freeze frame lies: frame number, record number and the frame's label.
class CMDDATA_API CCmdFrzFrmDatNo : public CCmdCore {
    CMDDATA_FIELDS(CCmdFrzFrmDatNo)
public:
    explicit CCmdFrzFrmDatNo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    CCmdString label;
};

/// Whether a named freeze frame carries absolute time stamps, and how many frames it holds.
class CMDDATA_API CCmdIsAbsFrzFrmDat : public CCmdCore {
    CMDDATA_FIELDS(CCmdIsAbsFrzFrmDat)
public:
    CCmdIsAbsFrzFrmDat() = default;
    CCmdString name;
    std::uint8_t isAbsolute = 0;
    std::uint8_t frameCount = 0;
};

/// The freeze frames of one trouble code, with the header of the answer that brought them.
class CMDDATA_API CCmdFrzFrmDatListInfo : public CCmdBaseInfo {
    CMDDATA_FIELDS(CCmdFrzFrmDatListInfo)
public:
    explicit CCmdFrzFrmDatListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    std::uint32_t diagCode = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Freeze frames of several records, with the header of the answer that brought them.
class CMDDATA_API CCmdMultiFrzFrmDatListInfo : public CCmdBaseInfo {
    CMDDATA_FIELDS(CCmdMultiFrzFrmDatListInfo)
public:
    explicit CCmdMultiFrzFrmDatListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t frameNumber = 0;
    std::uint8_t frameCount = 0;
    std::uint8_t frameKind = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Twelve freeze-frame items, one per absolute time stamp.
class CMDDATA_API CCmdAbsoluteTimeStampInfo : public CCmdCore {
    CMDDATA_FIELDS(CCmdAbsoluteTimeStampInfo)
public:
    static constexpr int kFrameCount = 12;
    explicit CCmdAbsoluteTimeStampInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdFrzFrmDat frames[kFrameCount];
};

/// Six newer freeze-frame items, one per absolute time stamp.
class CMDDATA_API CCmdAbsoluteTimeStampInfoP5 : public CCmdCore {
    CMDDATA_FIELDS(CCmdAbsoluteTimeStampInfoP5)
public:
    static constexpr int kFrameCount = 6;
    explicit CCmdAbsoluteTimeStampInfoP5(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdFrzFrmDatP5 frames[kFrameCount];
};

/// The freeze frames recorded for one operation: its name and timing, three leading frames with
/// their times, further frames, and the absolute time stamps.
class CMDDATA_API CCmdOperationFrzFrmDat : public CCmdCore {
    CMDDATA_FIELDS(CCmdOperationFrzFrmDat)
public:
    explicit CCmdOperationFrzFrmDat(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString operationName;
    std::uint32_t operationCode = 0;
    std::uint8_t operationKind = 0;
    std::uint8_t result = 0;
    std::uint8_t frameCount = 0;
    std::uint32_t startTime = 0;
    std::uint32_t endTime = 0;
    CCmdFrzFrmDat firstFrame;
    std::uint32_t secondFrameTime = 0;
    std::uint32_t secondFrameCounter = 0;
    CCmdFrzFrmDat secondFrame;
    std::uint32_t thirdFrameTime = 0;
    CCmdFrzFrmDat thirdFrame;
    CCmdList<CCmdFrzFrmDat> furtherFrames;
    std::uint32_t totalTime = 0;
    CCmdAbsoluteTimeStampInfo timeStamps;
};

/// Asks for the freeze frame of one trouble code.
class CMDDATA_API CGetFrzFrmDatSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetFrzFrmDatSnd)
public:
    CGetFrzFrmDatSnd() : CCmdBase(cmddata::cmd::GetFrzFrmDat) {}
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    std::uint32_t diagCode = 0;
};

/// The freeze frame of one trouble code and the numbers of the frames stored for it.
class CMDDATA_API CGetFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetFrzFrmDatRcv)
public:
    CGetFrzFrmDatRcv() : CCmdBase(cmddata::cmd::GetFrzFrmDat) {}
    std::uint32_t diagCode = 0;
    CCmdList<CCmdFrzFrmDat> frames;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Asks for several freeze frames of one trouble code. The item numbers are declared first but
/// travel last.
class CMDDATA_API CGetMultiFrzFrmDatSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetMultiFrzFrmDatSnd)
public:
    CGetMultiFrzFrmDatSnd() : CCmdBase(cmddata::cmd::GetMultiFrzFrmDat) {}
    CCmdList<CCmdWordId> itemNumbers;
    std::uint8_t diagCodeIndex = 0;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Several freeze frames of one trouble code.
class CMDDATA_API CGetMultiFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetMultiFrzFrmDatRcv)
public:
    CGetMultiFrzFrmDatRcv() : CCmdBase(cmddata::cmd::GetMultiFrzFrmDat) {}
    std::uint8_t diagCodeIndex = 0;
    std::uint8_t frameCount = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Asks for the freeze frame of one detail record.
class CMDDATA_API CGetDiagDetailFrzFrmDatSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetDiagDetailFrzFrmDatSnd)
public:
    CGetDiagDetailFrzFrmDatSnd() : CCmdBase(cmddata::cmd::GetDiagDetailFrzFrmDat) {}
    std::uint8_t detailNumber = 0;
};

/// The freeze frame of one detail record.
class CMDDATA_API CGetDiagDetailFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetDiagDetailFrzFrmDatRcv)
public:
    CGetDiagDetailFrzFrmDatRcv() : CCmdBase(cmddata::cmd::GetDiagDetailFrzFrmDat) {}
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Asks whether the freeze frames carry absolute time stamps (header only).
class CMDDATA_API CIsAbsFrzFrmDatSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CIsAbsFrzFrmDatSnd)
    CIsAbsFrzFrmDatSnd() : CCmdHeaderOnly(cmddata::cmd::IsAbsFrzFrmDat) {}
};

/// Whether the freeze frames carry absolute time stamps; from version 2 also per frame. The
/// version does not travel: both sides construct the answer with the same one.
class CMDDATA_API CIsAbsFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CIsAbsFrzFrmDatRcv)
public:
    explicit CIsAbsFrzFrmDatRcv(
        std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::IsAbsFrzFrmDat))
        : CCmdBase(cmddata::cmd::IsAbsFrzFrmDat, version, 0) {}
    std::uint32_t diagCode = 0;
    std::uint8_t isAbsolute = 0;
    CCmdString name;
    CCmdList<CCmdIsAbsFrzFrmDat> frames;  // version 2 and later
};

/// Asks whether a trouble code has several freeze frames.
class CMDDATA_API CIsMultiFrzFrmDatSnd : public CCmdBase {
    CMDDATA_FIELDS(CIsMultiFrzFrmDatSnd)
public:
    explicit CIsMultiFrzFrmDatSnd(
        std::uint16_t version = cmddata::SndVersion(cmddata::cmd::IsMultiFrzFrmDat))
        : CCmdBase(cmddata::cmd::IsMultiFrzFrmDat, version, 0) {}
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
};

/// The trouble code and the numbers of its stored freeze frames.
class CMDDATA_API CIsMultiFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CIsMultiFrzFrmDatRcv)
public:
    explicit CIsMultiFrzFrmDatRcv(
        std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::IsMultiFrzFrmDat))
        : CCmdBase(cmddata::cmd::IsMultiFrzFrmDat, version, 0) {}
    std::uint32_t diagCode = 0;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Asks where the stored freeze frames lie (header only).
class CMDDATA_API CSeekFFDNoSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CSeekFFDNoSnd)
    CSeekFFDNoSnd() : CCmdHeaderOnly(cmddata::cmd::SeekFFDNo) {}
};

/// Where the stored freeze frames lie.
class CMDDATA_API CSeekFFDNoRcv : public CCmdBase {
    CMDDATA_FIELDS(CSeekFFDNoRcv)
public:
    CSeekFFDNoRcv() : CCmdBase(cmddata::cmd::SeekFFDNo) {}
    CCmdList<CCmdFrzFrmDatNo> frames;
};

/// Asks for the freeze frames recorded per operation (header only).
class CMDDATA_API CGetOperationFrzFrmDatSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetOperationFrzFrmDatSnd)
    explicit CGetOperationFrzFrmDatSnd(
        std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetOperationFrzFrmDat))
        : CCmdHeaderOnly(cmddata::cmd::GetOperationFrzFrmDat, version) {}
};

/// The freeze frames recorded per operation.
class CMDDATA_API CGetOperationFrzFrmDatRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetOperationFrzFrmDatRcv)
public:
    explicit CGetOperationFrzFrmDatRcv(
        std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetOperationFrzFrmDat))
        : CCmdBase(cmddata::cmd::GetOperationFrzFrmDat, version, 0) {}
    CCmdList<CCmdOperationFrzFrmDat> operations;
};

/// Asks for the freeze frames recorded per operation, with their total (header only).
class CMDDATA_API CGetOperationFrzFrmDat2Snd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetOperationFrzFrmDat2Snd)
    explicit CGetOperationFrzFrmDat2Snd(
        std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetOperationFrzFrmDat2))
        : CCmdHeaderOnly(cmddata::cmd::GetOperationFrzFrmDat2, version) {}
};

/// The freeze frames recorded per operation, then the number of operations the ECU holds.
class CMDDATA_API CGetOperationFrzFrmDat2Rcv : public CCmdBase {
    CMDDATA_FIELDS(CGetOperationFrzFrmDat2Rcv)
public:
    explicit CGetOperationFrzFrmDat2Rcv(
        std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetOperationFrzFrmDat2))
        : CCmdBase(cmddata::cmd::GetOperationFrzFrmDat2, version, 0) {}
    CCmdList<CCmdOperationFrzFrmDat> operations;
    std::uint32_t operationTotal = 0;
};
