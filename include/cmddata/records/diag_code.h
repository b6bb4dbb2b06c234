// Trouble-code records that several families keep: the code with its freeze frames, the code
// counts and detail records, and the lists of them kept with the header of their answer.
//
// The conversions between CCmdDiagCodeListInfo and the trouble-code answers are defined with
// those answers, in the trouble-code family.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/freeze_frame.h"

class CGetDiagCodeRcv;
class CGetPendingCodeRcv;

/// One trouble code: number, code text, description, value, flag and status text; from version
/// 2 two freeze frames with two words each, version 3 one more word, version 4 a third frame,
/// version 5 a word and the absolute time stamps.
///
/// The four version tests are separate (2, 3, 4, 5, each "at least"); a record read as version
/// 0 carries the first seven fields only. The code number is declared first but travels after
/// the status text. The working value never travels: it is the owner's, 0 in a fresh or emptied
/// record. Default version 1.
class CMDDATA_API CCmdDiagCode : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagCode)
    explicit CCmdDiagCode(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t codeNumber = 0;  // travels after statusText
    CCmdString codeText;
    std::uint32_t workingValue = 0;  // never travels
    CCmdString description;
    std::uint32_t codeValue = 0;
    std::uint8_t flag = 0;
    CCmdString statusText;
    std::uint32_t firstFrameWords[2] = {0, 0};  // version 2 and later
    CCmdFrzFrmDat firstFrame;
    std::uint32_t secondFrameWords[2] = {0, 0};
    CCmdFrzFrmDat secondFrame;
    std::uint32_t extraWord = 0;      // version 3 and later
    CCmdFrzFrmDat thirdFrame;         // version 4 and later
    std::uint32_t timeStampWord = 0;  // version 5 and later, with timeStamps
    CCmdAbsoluteTimeStampInfo timeStamps;
};

/// How many trouble codes an ECU holds, and a flag.
class CMDDATA_API CCmdDiagCodeCount : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagCodeCount)
    CCmdDiagCodeCount() = default;
    std::uint16_t count = 0;
    std::uint8_t flag = 0;
};

/// One detail record of a trouble code: its identifier and two words.
class CMDDATA_API CCmdDiagDetail : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagDetail)
    CCmdDiagDetail() = default;
    std::uint32_t detailId = 0;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
};

/// Trouble codes kept with the header of the answer that brought them: the kind asked for, the
/// codes and the answer's status word.
///
/// Converts from the answers of GetDiagCode and GetPendingCode (and CGetDiagCodeRcv,
/// CGetPendingCodeRcv and CGetPermanentCodeRcv convert back) through one routine: the header
/// words as CCmdBaseInfo takes and gives them, a deep copy of the codes, and the status word
/// where the answer carries one (GetDiagCode's). The kind is not in any answer: taking an
/// answer leaves it 0. Default version 1.
class CMDDATA_API CCmdDiagCodeListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdDiagCodeListInfo)
    explicit CCmdDiagCodeListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    /// Empties this record, then takes the answer's status words, identifier and thread id, its
    /// codes (deep copy) and its status word; version and reserved word stay.
    void operator=(CGetDiagCodeRcv& source);
    /// As above; a pending-code answer has no status word, so it stays 0.
    void operator=(CGetPendingCodeRcv& source);
    std::uint32_t codeKind = 0;
    CCmdList<CCmdDiagCode> codes;
    std::uint32_t codeStatus = 0;
};

/// Detail identifiers of a trouble code, with the header of the answer that brought them.
/// Default version 1.
class CMDDATA_API CCmdDiagDetailIdListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdDiagDetailIdListInfo)
    explicit CCmdDiagDetailIdListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t detailKind = 0;
    CCmdList<CCmdDiagDetail> details;
};

/// The freeze frames of one detail record, with the header of the answer that brought them.
/// Default version 1.
class CMDDATA_API CCmdDiagDetailListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdDiagDetailListInfo)
    explicit CCmdDiagDetailListInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t detailId = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};

/// The freeze frames of one detail number, with the header of the answer that brought them.
/// Default version 1.
class CMDDATA_API CCmdDiagDetailFrzFrmDatListInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdDiagDetailFrzFrmDatListInfo)
    explicit CCmdDiagDetailFrzFrmDatListInfo(std::uint16_t version = 1)
        : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint8_t detailNumber = 0;
    CCmdList<CCmdFrzFrmDat> frames;
};
