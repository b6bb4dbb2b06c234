// Freeze frames: the values an ECU stored when a trouble code was set, the records that hold
// them, the look-ups that turn an item into a number or a text, and the messages that fetch them.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/freeze_frame.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/conversion.h"
#include "cmddata/records/freeze_frame.h"

/// A stored item with a 64-bit raw value.
class CMDDATA_API CCmdMultiDataEx : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMultiDataEx)
    CCmdMultiDataEx() = default;
    std::uint64_t rawValue = 0;
    std::uint8_t itemId = 0;
};

/// A stored item of the newer freeze frame: raw value, item identifier and its status word.
class CMDDATA_API CCmdMultiDataP5 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdMultiDataP5)
    CCmdMultiDataP5() = default;
    std::uint32_t rawValue = 0;
    std::uint8_t itemId = 0;
    std::uint32_t status = 0;
};

/// The newer freeze-frame item: as CCmdFrzFrmDat with two texts, an extra value and flag (which
/// travel last, after the items) and items that carry a status word.
class CMDDATA_API CCmdFrzFrmDatP5 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdFrzFrmDatP5)
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
public:
    CMDDATA_FIELDS(CCmdFrzFrmDatNo)
    explicit CCmdFrzFrmDatNo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    CCmdString label;
};

/// Whether a named freeze frame carries absolute time stamps, and how many frames it holds.
class CMDDATA_API CCmdIsAbsFrzFrmDat : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdIsAbsFrzFrmDat)
    CCmdIsAbsFrzFrmDat() = default;
    CCmdString name;
    std::uint8_t isAbsolute = 0;
    std::uint8_t frameCount = 0;
};

/// Six newer freeze-frame items, one per absolute time stamp.
class CMDDATA_API CCmdAbsoluteTimeStampInfoP5 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdAbsoluteTimeStampInfoP5)
    static constexpr int kFrameCount = 6;
    explicit CCmdAbsoluteTimeStampInfoP5(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdFrzFrmDatP5 frames[kFrameCount];
};

/// The freeze frames recorded for one operation: its name and timing, three leading frames with
/// their times, further frames, and the absolute time stamps.
class CMDDATA_API CCmdOperationFrzFrmDat : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdOperationFrzFrmDat)
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
class CMDDATA_API CGetFrzFrmDatSnd : public CCmdSnd<cmddata::command::GetFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetFrzFrmDatSnd)
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
    std::uint32_t diagCode = 0;
};

/// The freeze frame of one trouble code and the numbers of the frames stored for it.
class CMDDATA_API CGetFrzFrmDatRcv : public CCmdRcv<cmddata::command::GetFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetFrzFrmDatRcv)
    std::uint32_t diagCode = 0;
    CCmdList<CCmdFrzFrmDat> frames;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Asks for several freeze frames of one trouble code. The item numbers are declared first but
/// travel last.
class CMDDATA_API CGetMultiFrzFrmDatSnd : public CCmdSnd<cmddata::command::GetMultiFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetMultiFrzFrmDatSnd)
    CCmdList<CCmdWordId> itemNumbers;
    std::uint8_t diagCodeIndex = 0;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Several freeze frames of one trouble code.
class CMDDATA_API CGetMultiFrzFrmDatRcv : public CCmdRcv<cmddata::command::GetMultiFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetMultiFrzFrmDatRcv)
    std::uint8_t diagCodeIndex = 0;
    std::uint8_t frameCount = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Asks for the freeze frame of one detail record.
class CMDDATA_API CGetDiagDetailFrzFrmDatSnd
    : public CCmdSnd<cmddata::command::GetDiagDetailFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailFrzFrmDatSnd)
    std::uint8_t detailNumber = 0;
};

/// The freeze frame of one detail record.
class CMDDATA_API CGetDiagDetailFrzFrmDatRcv
    : public CCmdRcv<cmddata::command::GetDiagDetailFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailFrzFrmDatRcv)
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Asks whether the freeze frames carry absolute time stamps (header only).
class CMDDATA_API CIsAbsFrzFrmDatSnd
    : public CCmdSnd<cmddata::command::IsAbsFrzFrmDat, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsAbsFrzFrmDatSnd)
};

/// Whether the freeze frames carry absolute time stamps; from version 2 also per frame. The
/// version does not travel: both sides construct the answer with the same one.
class CMDDATA_API CIsAbsFrzFrmDatRcv : public CCmdRcv<cmddata::command::IsAbsFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CIsAbsFrzFrmDatRcv)
    std::uint32_t diagCode = 0;
    std::uint8_t isAbsolute = 0;
    CCmdString name;
    CCmdList<CCmdIsAbsFrzFrmDat> frames;  // version 2 and later
};

/// Asks whether a trouble code has several freeze frames.
class CMDDATA_API CIsMultiFrzFrmDatSnd : public CCmdSnd<cmddata::command::IsMultiFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CIsMultiFrzFrmDatSnd)
    std::uint8_t frameNumber = 0;
    std::uint16_t recordNumber = 0;
};

/// The trouble code and the numbers of its stored freeze frames.
class CMDDATA_API CIsMultiFrzFrmDatRcv : public CCmdRcv<cmddata::command::IsMultiFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CIsMultiFrzFrmDatRcv)
    std::uint32_t diagCode = 0;
    CCmdList<CCmdByteData> frameNumbers;
};

/// Asks where the stored freeze frames lie (header only).
class CMDDATA_API CSeekFFDNoSnd : public CCmdSnd<cmddata::command::SeekFFDNo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSeekFFDNoSnd)
};

/// Where the stored freeze frames lie.
class CMDDATA_API CSeekFFDNoRcv : public CCmdRcv<cmddata::command::SeekFFDNo> {
public:
    CMDDATA_MESSAGE(CSeekFFDNoRcv)
    CCmdList<CCmdFrzFrmDatNo> frames;
};

/// Asks for the freeze frames recorded per operation (header only).
class CMDDATA_API CGetOperationFrzFrmDatSnd
    : public CCmdSnd<cmddata::command::GetOperationFrzFrmDat, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetOperationFrzFrmDatSnd)
};

/// The freeze frames recorded per operation.
class CMDDATA_API CGetOperationFrzFrmDatRcv
    : public CCmdRcv<cmddata::command::GetOperationFrzFrmDat> {
public:
    CMDDATA_MESSAGE(CGetOperationFrzFrmDatRcv)
    CCmdList<CCmdOperationFrzFrmDat> operations;
};

/// Asks for the freeze frames recorded per operation, with their total (header only).
class CMDDATA_API CGetOperationFrzFrmDat2Snd
    : public CCmdSnd<cmddata::command::GetOperationFrzFrmDat2, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetOperationFrzFrmDat2Snd)
};

/// The freeze frames recorded per operation, then the number of operations the ECU holds.
class CMDDATA_API CGetOperationFrzFrmDat2Rcv
    : public CCmdRcv<cmddata::command::GetOperationFrzFrmDat2> {
public:
    CMDDATA_MESSAGE(CGetOperationFrzFrmDat2Rcv)
    CCmdList<CCmdOperationFrzFrmDat> operations;
    std::uint32_t operationTotal = 0;
};
