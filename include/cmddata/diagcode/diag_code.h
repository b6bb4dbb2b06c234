// Trouble codes: the code records (stored, pending, permanent, with their freeze frames), code
// information and detail records, and the messages that read, count and clear codes.
//
// Only the widths and order of the scalars and texts are fixed; their names say where they
// stand, and their meaning belongs to the two processes.
//
// The records of this family that other families use too live in the records layer,
// cmddata/records/diag_code.h, which this header includes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/diagcode/freeze_frame.h"
#include "cmddata/records/datmon_records.h"
#include "cmddata/records/diag_code.h"

/// The newer trouble code: three code words, three texts with a word after the first two, a
/// class value and flag, two byte lists, the freeze frames as a list and as four fixed slots,
/// a trailer of four scalars and the absolute time stamps. No version tests: every field always
/// travels.
///
/// Two quirks are kept on purpose, as deployed processes have them. The class value and flag cross:
/// writing sends the class value (u32) then the flag (u8), reading takes one byte into the flag and
/// then four into the class value, so a record written and read back does not reproduce them. The
/// four slots travel as the 144-byte in-memory image of a CCmdFrzFrmDatP5, not through its own
/// fields: only its scalars and version prefixes arrive, its texts, conversion entries and items
/// arrive empty (the layout is documented beside the library's image description). Default version
/// 1.
class CMDDATA_API CCmdDiagCodeP5 : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagCodeP5)
    static constexpr int kSlotCount = 4;
    explicit CCmdDiagCodeP5(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t codeWords[3] = {0, 0, 0};
    CCmdString codeText;
    std::uint32_t codeTextWord = 0;
    CCmdString description;
    std::uint32_t descriptionWord = 0;
    CCmdString statusText;
    std::uint32_t classValue = 0;  // crossed with flag on reading
    std::uint8_t flag = 0;
    CCmdList<CCmdByteData> firstBytes;
    CCmdList<CCmdByteData> secondBytes;
    std::uint32_t framesWord = 0;
    CCmdList<CCmdFrzFrmDatP5> frames;
    std::uint32_t slotsWord = 0;
    CCmdFrzFrmDatP5 slots[kSlotCount];  // images; the fourth travels after lastSlotWord
    std::uint32_t lastSlotWord = 0;
    std::uint8_t trailerByte = 0;
    std::uint16_t trailerWord = 0;
    std::uint8_t trailerFlag = 0;
    std::uint32_t trailerValue = 0;
    CCmdAbsoluteTimeStampInfoP5 timeStamps;
};

/// What is known about one trouble code: code text, value, description, kind, status, flag,
/// item number, a further word and the signals to highlight. Default version 1.
class CMDDATA_API CCmdDiagCodeInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDiagCodeInfo)
    explicit CCmdDiagCodeInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString codeText;
    std::uint32_t codeValue = 0;
    CCmdString description;
    std::uint8_t kind = 0;
    std::uint32_t status = 0;
    std::uint8_t flag = 0;
    std::uint16_t itemNumber = 0;
    std::uint32_t extraWord = 0;
    CCmdList<CCmdHighlightSignal> highlights;
};

/// The body the trouble-code answers share: the header, then the codes. The answers of
/// GetPendingCode and GetPermanentCode are exactly this; GetDiagCode's adds a status word.
class CMDDATA_API CCmdDiagCodeAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdDiagCodeAnswer)
    CCmdDiagCodeAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    /// Empties this answer (RemoveAll), then takes the kept record's status words and a deep
    /// copy of its codes; identifier and thread id stay.
    void operator=(CCmdDiagCodeListInfo& source);
    CCmdList<CCmdDiagCode> codes;
};

/// Asks how many trouble codes there are of a kind.
class CMDDATA_API CGetDiagCodeCountSnd : public CCmdSnd<cmddata::command::GetDiagCodeCount> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeCountSnd)
    std::uint16_t codeKind = 0;
};

/// How many trouble codes there are, and a flag.
class CMDDATA_API CGetDiagCodeCountRcv : public CCmdRcv<cmddata::command::GetDiagCodeCount> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeCountRcv)
    std::uint16_t count = 0;
    std::uint8_t flag = 0;
};

/// Asks for the stored trouble codes of a kind.
class CMDDATA_API CGetDiagCodeSnd : public CCmdSnd<cmddata::command::GetDiagCode> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeSnd)
    std::uint32_t codeKind = 0;
};

/// The stored trouble codes, then a status word.
class CMDDATA_API CGetDiagCodeRcv
    : public CCmdRcv<cmddata::command::GetDiagCode, CCmdDiagCodeAnswer> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeRcv)
    /// The shared conversion (CCmdDiagCodeAnswer), the status word included.
    void operator=(CCmdDiagCodeListInfo& source);
    std::uint32_t codeStatus = 0;
};

/// Asks to clear the trouble codes of a kind.
class CMDDATA_API CDelDiagCodeSnd : public CCmdSnd<cmddata::command::DelDiagCode> {
public:
    CMDDATA_MESSAGE(CDelDiagCodeSnd)
    std::uint8_t codeKind = 0;
};

/// The outcome of clearing trouble codes.
class CMDDATA_API CDelDiagCodeRcv : public CCmdRcv<cmddata::command::DelDiagCode> {
public:
    CMDDATA_MESSAGE(CDelDiagCodeRcv)
    std::uint32_t result = 0;
};

/// Asks for the judgement of a trouble code.
class CMDDATA_API CJudgeDiagStatusSnd : public CCmdSnd<cmddata::command::JudgeDiagStatus> {
public:
    CMDDATA_MESSAGE(CJudgeDiagStatusSnd)
    CCmdString codeText;
};

/// The judgement of a trouble code. The judgement byte is declared after both texts but travels
/// between them.
class CMDDATA_API CJudgeDiagStatusRcv : public CCmdRcv<cmddata::command::JudgeDiagStatus> {
public:
    CMDDATA_MESSAGE(CJudgeDiagStatusRcv)
    CCmdString codeText;
    CCmdString statusText;
    std::uint8_t judgement = 0;
};

/// Asks for the detail records of a kind.
class CMDDATA_API CGetDiagDetailIdListSnd : public CCmdSnd<cmddata::command::GetDiagDetailIdList> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailIdListSnd)
    std::uint8_t detailKind = 0;
};

/// The detail records.
class CMDDATA_API CGetDiagDetailIdListRcv : public CCmdRcv<cmddata::command::GetDiagDetailIdList> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailIdListRcv)
    CCmdList<CCmdDiagDetail> details;
};

/// Asks for the freeze frames of one detail record.
class CMDDATA_API CGetDiagDetailSnd : public CCmdSnd<cmddata::command::GetDiagDetail> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailSnd)
    std::uint32_t detailId = 0;
};

/// The freeze frames of one detail record.
class CMDDATA_API CGetDiagDetailRcv : public CCmdRcv<cmddata::command::GetDiagDetail> {
public:
    CMDDATA_MESSAGE(CGetDiagDetailRcv)
    CCmdList<CCmdFrzFrmDat> frames;
};

/// Asks for the pending trouble codes (header only).
class CMDDATA_API CGetPendingCodeSnd
    : public CCmdSnd<cmddata::command::GetPendingCode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPendingCodeSnd)
};

/// The pending trouble codes.
class CMDDATA_API CGetPendingCodeRcv
    : public CCmdRcv<cmddata::command::GetPendingCode, CCmdDiagCodeAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPendingCodeRcv)
    using CCmdDiagCodeAnswer::operator=;
};

/// Asks for the permanent trouble codes (header only).
class CMDDATA_API CGetPermanentCodeSnd
    : public CCmdSnd<cmddata::command::GetPermanentCode, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPermanentCodeSnd)
};

/// The permanent trouble codes.
class CMDDATA_API CGetPermanentCodeRcv
    : public CCmdRcv<cmddata::command::GetPermanentCode, CCmdDiagCodeAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPermanentCodeRcv)
    using CCmdDiagCodeAnswer::operator=;
};

/// Asks what is known about a trouble code of a kind.
class CMDDATA_API CGetDiagCodeInfoSnd : public CCmdSnd<cmddata::command::GetDiagCodeInfo> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeInfoSnd)
    std::uint16_t codeKind = 0;
    CCmdString codeText;
};

/// What is known about the trouble codes asked for.
class CMDDATA_API CGetDiagCodeInfoRcv : public CCmdRcv<cmddata::command::GetDiagCodeInfo> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeInfoRcv)
    CCmdList<CCmdDiagCodeInfo> infos;
};

/// Asks for the newer trouble codes: three request words.
class CMDDATA_API CGetDiagCodeP5Snd : public CCmdSnd<cmddata::command::GetDiagCodeP5> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeP5Snd)
    std::uint32_t requestWords[3] = {0, 0, 0};
};

/// The newer trouble codes (their class value and flag cross on reading, see CCmdDiagCodeP5).
class CMDDATA_API CGetDiagCodeP5Rcv : public CCmdRcv<cmddata::command::GetDiagCodeP5> {
public:
    CMDDATA_MESSAGE(CGetDiagCodeP5Rcv)
    CCmdList<CCmdDiagCodeP5> codes;
};

/// Request: asks to clear the trouble codes, the second clearing command (header only).
/// Answer: the outcome of the second clearing command, in the status words (header only).
CMDDATA_HEADER_ONLY_COMMAND(DelDiagCodeForMazdaVehicle);

/// Asks for one newer trouble code with its freeze frames: a code word, the frame numbers and
/// item numbers wanted (as bytes), and a further word.
class CMDDATA_API CGetEachFrzFrmDatP5Snd : public CCmdSnd<cmddata::command::GetEachFrzFrmDatP5> {
public:
    CMDDATA_MESSAGE(CGetEachFrzFrmDatP5Snd)
    std::uint32_t codeWord = 0;
    CCmdList<CCmdByteData> frameNumbers;
    CCmdList<CCmdByteData> itemNumbers;
    std::uint32_t extraWord = 0;
};

/// One newer trouble code with its freeze frames (its class value and flag cross on reading).
class CMDDATA_API CGetEachFrzFrmDatP5Rcv : public CCmdRcv<cmddata::command::GetEachFrzFrmDatP5> {
public:
    CMDDATA_MESSAGE(CGetEachFrzFrmDatP5Rcv)
    CCmdDiagCodeP5 code;
};

/// GetDiagCodeWOTS's request: the stored-code request under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeWOTSSnd, CGetDiagCodeSnd, GetDiagCodeWOTS);

/// GetDiagCodeWOTS's answer: the stored-code answer under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeWOTSRcv, CGetDiagCodeRcv, GetDiagCodeWOTS);

/// GetPendingCodeWOTS's request: the pending-code request under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetPendingCodeWOTSSnd, CGetPendingCodeSnd, GetPendingCodeWOTS);

/// GetPendingCodeWOTS's answer: the pending-code answer under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetPendingCodeWOTSRcv, CGetPendingCodeRcv, GetPendingCodeWOTS);

/// Asks for the codes found by the CAN bus check: the stored-code request under its own
/// identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeCanBusDiagSnd, CGetDiagCodeSnd, GetDiagCodeCanBusDiag);

/// The codes found by the CAN bus check: the stored-code answer under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeCanBusDiagRcv, CGetDiagCodeRcv, GetDiagCodeCanBusDiag);

/// Asks for the newer codes found by the CAN bus check: the newer code request under its own
/// identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeCanBusDiagP5Snd, CGetDiagCodeP5Snd, GetDiagCodeCanBusDiagP5);

/// The newer codes found by the CAN bus check: the newer code answer under its own identifier.
CMDDATA_DERIVED_COMMAND(CGetDiagCodeCanBusDiagP5Rcv, CGetDiagCodeP5Rcv, GetDiagCodeCanBusDiagP5);
