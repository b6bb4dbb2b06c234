// Event records and time stamps: the time-stamp records that accompany trouble codes and freeze
// frames, and the commands that read recorded events (absolute time stamps, current time,
// work-factor analysis, record on behaviour, drive-recorder information, the image and operation
// freeze frames).
//
// Only the widths and order of the scalars and texts are fixed; their names say where they
// stand, and their meaning belongs to the two processes. Records whose constructor takes no
// version are built with version 1.
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
#include "cmddata/records/ecu.h"
#include "cmddata/records/function.h"
#include "cmddata/records/multi_mon.h"
#include "cmddata/records/select.h"

// --- records ---

/// Three freeze frames with their times, kept as time stamps: two words, a frame, two words, a
/// frame, a word, a frame.
///
/// The frames travel as the fixed 152-byte in-memory image of a CCmdFrzFrmDat, not through its
/// own fields: only its scalars and version prefixes arrive; its texts, conversion entries and
/// items arrive empty (the layout is documented beside the library's image description). The
/// record is therefore 480 bytes on the wire, whatever its frames hold.
class CMDDATA_API CCmdTimeStampInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdTimeStampInfo)
    CCmdTimeStampInfo() = default;
    std::uint32_t firstTime = 0;
    std::uint32_t firstCounter = 0;
    CCmdFrzFrmDat firstFrame;  // image
    std::uint32_t secondTime = 0;
    std::uint32_t secondCounter = 0;
    CCmdFrzFrmDat secondFrame;  // image
    std::uint32_t thirdTime = 0;
    CCmdFrzFrmDat thirdFrame;  // image
};

/// A support word and the support data that goes with it. The data travels as the fixed
/// 12-byte in-memory image of a CCmdDwordData (type word 0, version prefix, value).
class CMDDATA_API CCmdDwordSupportInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDwordSupportInfo)
    CCmdDwordSupportInfo() = default;
    std::uint32_t supportWord = 0;
    CCmdDwordData supportData;  // image
};

/// One current-time entry: a name, the time, its unit text and an item number.
class CMDDATA_API CCmdCurrentTimeData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCurrentTimeData)
    CCmdCurrentTimeData() = default;
    CCmdString name;
    std::uint32_t time = 0;
    CCmdString unit;
    std::uint16_t itemNumber = 0;
};

/// A current-time entry of the Dcm generation. This library gives it the fields
/// of CCmdCurrentTimeData and shares that class's code, so both generations read alike.
class CMDDATA_API CCmdCurrentTimeDataDcm : public CCmdCurrentTimeData {
public:
    CMDDATA_SAME_LAYOUT(CCmdCurrentTimeDataDcm)
    CCmdCurrentTimeDataDcm() = default;
};

/// One work factor: its number, value and name. Its layout is this library's own:
/// version prefix, u16, u32, text.
class CMDDATA_API CCmdWrkFctData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdWrkFctData)
    CCmdWrkFctData() = default;
    std::uint16_t factorNumber = 0;
    std::uint32_t value = 0;
    CCmdString name;
};

/// One work-factor analysis: its number, result, kind, name and the factors found.
class CMDDATA_API CCmdAnlzWrkFctData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdAnlzWrkFctData)
    CCmdAnlzWrkFctData() = default;
    std::uint32_t analysisNumber = 0;
    std::uint32_t result = 0;
    std::uint8_t kind = 0;
    CCmdString name;
    CCmdList<CCmdWrkFctData> factors;
};

/// A work-factor analysis with its time stamp. This library lays it out as
/// CCmdAnlzWrkFctData followed by a u32 time stamp.
class CMDDATA_API CCmdAnlzWrkFctDataTS : public CCmdAnlzWrkFctData {
public:
    CMDDATA_FIELDS(CCmdAnlzWrkFctDataTS)
    CCmdAnlzWrkFctDataTS() = default;
    std::uint32_t timeStamp = 0;
};

/// A work-factor analysis of the Dcm generation. This library gives it the
/// fields of CCmdAnlzWrkFctData and shares that class's code.
class CMDDATA_API CCmdAnlzWrkFctDataDcm : public CCmdAnlzWrkFctData {
public:
    CMDDATA_SAME_LAYOUT(CCmdAnlzWrkFctDataDcm)
    CCmdAnlzWrkFctDataDcm() = default;
};

/// A work factor kept with the header of the answer that brought it (record on behaviour). This
/// library lays it out as the fields of CCmdWrkFctData behind the header with its version prefix.
class CMDDATA_API CCmdWrkFctDataRoB : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdWrkFctDataRoB)
    CCmdWrkFctDataRoB() : CCmdBaseInfo(1, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint16_t factorNumber = 0;
    std::uint32_t value = 0;
    CCmdString name;
};

/// A work factor of the Dcm P5 generation, kept with a header; it shares the layout and the code
/// of CCmdWrkFctDataRoB.
class CMDDATA_API CCmdWrkFctDataDcmP5 : public CCmdWrkFctDataRoB {
public:
    CMDDATA_SAME_LAYOUT(CCmdWrkFctDataDcmP5)
    CCmdWrkFctDataDcmP5() = default;
    using CCmdWrkFctDataRoB::operator=;
};

/// A work-factor analysis kept with a header (record on behaviour). This library lays it out as
/// the fields of CCmdAnlzWrkFctData behind the header, with factors of its own generation.
class CMDDATA_API CCmdAnlzWrkFctDataRoB : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdAnlzWrkFctDataRoB)
    CCmdAnlzWrkFctDataRoB() : CCmdBaseInfo(1, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t analysisNumber = 0;
    std::uint32_t result = 0;
    std::uint8_t kind = 0;
    CCmdString name;
    CCmdList<CCmdWrkFctDataRoB> factors;
};

/// A work-factor analysis of the Dcm P5 generation kept with a header; chosen as
/// CCmdAnlzWrkFctDataRoB with factors of its own generation.
class CMDDATA_API CCmdAnlzWrkFctDataDcmP5 : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdAnlzWrkFctDataDcmP5)
    CCmdAnlzWrkFctDataDcmP5() : CCmdBaseInfo(1, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t analysisNumber = 0;
    std::uint32_t result = 0;
    std::uint8_t kind = 0;
    CCmdString name;
    CCmdList<CCmdWrkFctDataDcmP5> factors;
};

/// A current-time entry kept with a header (record on behaviour); this library lays it out as the
/// fields of CCmdCurrentTimeData behind the header.
class CMDDATA_API CCmdCurrentTimeDataRoB : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdCurrentTimeDataRoB)
    CCmdCurrentTimeDataRoB() : CCmdBaseInfo(1, 0) {}
    using CCmdBaseInfo::operator=;
    CCmdString name;
    std::uint32_t time = 0;
    CCmdString unit;
    std::uint16_t itemNumber = 0;
};

/// A support word and its data kept with the header of the answer that brought it. This library
/// gives it the fields of CCmdDwordSupportInfo behind the header with its version prefix: the
/// support word, then the 12-byte image of the support data.
class CMDDATA_API CCmdSupport : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdSupport)
    CCmdSupport() : CCmdBaseInfo(1, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t supportWord = 0;
    CCmdDwordData supportData;  // image
};

/// One data record of a recorded behaviour: its number, a freeze frame, a word and help texts.
class CMDDATA_API CCmdBehaviorDataRecord : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdBehaviorDataRecord)
    CCmdBehaviorDataRecord() = default;
    std::uint16_t recordNumber = 0;
    CCmdFrzFrmDat frame;
    std::uint32_t recordWord = 0;
    CCmdList<CCmdHelpInfo> helps;
};

/// One recorded behaviour: code text, number and value, a description, flags and words, three
/// freeze frames with their times, the absolute time stamps and a data record.
///
/// The last nested record is the behaviour's CCmdBehaviorDataRecord, the record this library
/// pairs with the others. Every frame here travels through its own fields.
class CMDDATA_API CCmdBehaviorCode : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdBehaviorCode)
    CCmdBehaviorCode() = default;
    CCmdString codeText;
    std::uint16_t codeNumber = 0;
    std::uint32_t codeValue = 0;
    CCmdString description;
    std::uint8_t firstFlag = 0;
    std::uint32_t firstWords[2] = {0, 0};
    std::uint8_t secondFlag = 0;
    std::uint32_t secondWords[3] = {0, 0, 0};
    CCmdFrzFrmDat firstFrame;
    std::uint32_t secondFrameWords[2] = {0, 0};
    CCmdFrzFrmDat secondFrame;
    std::uint32_t timeStampWords[2] = {0, 0};
    CCmdAbsoluteTimeStampInfo timeStamps;
    CCmdFrzFrmDat thirdFrame;
    CCmdBehaviorDataRecord data;
};

/// One sub-function of record on behaviour: its number, whether it is supported and its name.
/// Its layout is this library's own: prefix, u16, u8, text.
class CMDDATA_API CCmdSubFunctionInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSubFunctionInfo)
    CCmdSubFunctionInfo() = default;
    std::uint16_t subFunction = 0;
    std::uint8_t supported = 0;
    CCmdString name;
};

/// One drive-recorder record: its number, time, trigger and name. Its layout is this library's
/// own: prefix, u32, u32, u8, text.
class CMDDATA_API CCmdDdrInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDdrInfo)
    CCmdDdrInfo() = default;
    std::uint32_t recordNumber = 0;
    std::uint32_t recordTime = 0;
    std::uint8_t trigger = 0;
    CCmdString name;
};

/// One drive-recorder record of the ADS generation; this library gives it the fields of
/// CCmdDdrInfo and shares that class's code.
class CMDDATA_API CCmdADSDdrInfo : public CCmdDdrInfo {
public:
    CMDDATA_SAME_LAYOUT(CCmdADSDdrInfo)
    CCmdADSDdrInfo() = default;
};

/// The drive-recorder data that depends on a management number: the number and its CSV text.
/// Its layout is this library's own: prefix, u32, text.
class CMDDATA_API CCmdDdrCSVDataDependSpecMngNo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdDdrCSVDataDependSpecMngNo)
    CCmdDdrCSVDataDependSpecMngNo() = default;
    std::uint32_t managementNumber = 0;
    CCmdString csvText;
};

/// The security access of one ECU: its number, the access level and the method. Its layout is
/// this library's own: prefix, u32, u8, u16.
class CMDDATA_API CCmdSecurityAccessInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSecurityAccessInfo)
    CCmdSecurityAccessInfo() = default;
    std::uint32_t ecuNumber = 0;
    std::uint8_t accessLevel = 0;
    std::uint16_t method = 0;
};

// --- layouts several commands share ---

/// The current-time answer (GetCurrentTimeInfo, GetCurrentTimeInfoEachEcu): a word and two
/// freeze frames; from version 2 four more words. The version does not travel: both sides
/// construct the answer with the same one.
class CMDDATA_API CCmdCurrentTimeAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdCurrentTimeAnswer)
    static constexpr int kExtraWords = 4;
    CCmdCurrentTimeAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint32_t timeWord = 0;
    CCmdFrzFrmDat firstFrame;
    CCmdFrzFrmDat secondFrame;
    std::uint32_t extraWords[kExtraWords] = {0, 0, 0, 0};  // version 2 and later
};

/// The drive-recorder answer (GetDdrInfo, GetDdrInfoSaveLog): the records, two data words, the
/// monitor items and the management-number data.
class CMDDATA_API CCmdDdrInfoAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdDdrInfoAnswer)
    CCmdDdrInfoAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdDdrInfo> records;
    CCmdDwordData firstData;
    CCmdDwordData secondData;
    CCmdList<CCmdDatMonData> items;
    CCmdDdrCSVDataDependSpecMngNo csvData;
};

/// The operation freeze-frame answer (LCS, ADS, Vela3): the freeze frames.
class CMDDATA_API CCmdFrzFrmDatListAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdFrzFrmDatListAnswer)
    CCmdFrzFrmDatListAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdFrzFrmDat> frames;
};

/// The image freeze-frame answer (PVM, ADS, Vela3, RC): the freeze frames, a word and the
/// echoed support record.
class CMDDATA_API CCmdImageFFDAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdImageFFDAnswer)
    CCmdImageFFDAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdFrzFrmDat> frames;
    std::uint32_t resultWord = 0;
    CCmdDwordSupportInfo support;
};

/// The absolute time-stamp answer (GetAbsoluteTimeStamp, GetAbsoluteTimeStampSaveLog, both
/// behind their version prefix): the time stamps and the ECUs they belong to.
class CMDDATA_API CCmdAbsTimeStampAnswer : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdAbsTimeStampAnswer)
    CCmdAbsTimeStampAnswer(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdAbsoluteTimeStampInfo> timeStamps;
    CCmdList<CCmdEcuSpecificInfo> ecus;
};

/// The image freeze-frame request of the ADS and RC generations: the items (as bytes), the
/// ECUs, a word and the support record.
class CMDDATA_API CCmdImageFFDRequest : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdImageFFDRequest)
    CCmdImageFFDRequest(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdByteData> items;
    CCmdList<CCmdEcuInfo> ecus;
    std::uint32_t requestWord = 0;
    CCmdDwordSupportInfo support;
};

// --- messages ---

/// Asks for a drive-recorder file: its name, the vehicle selection, the recording's ECUs with
/// their items, a comment, the trigger settings and parameters, and from version 2 (the default)
/// a further text. That text is declared first of all the members but travels last; the version
/// does not travel, so both sides construct the request with the same one.
class CMDDATA_API CCreateDrsFileSnd : public CCmdSnd<cmddata::command::CreateDrsFile> {
public:
    CMDDATA_MESSAGE(CCreateDrsFileSnd)
    CCmdString extraText;  // version 2 and later; travels last
    CCmdString fileName;
    CCmdSelectCarTypeVin carType;
    std::uint16_t firstWord = 0;
    CCmdList<CCmdStartMultiMon> ecus;
    std::uint16_t secondWord = 0;
    CCmdString comment;
    CCmdTriggerInfo trigger;
    CCmdTriggerParam triggerParam;
};

/// The outcome of creating a drive-recorder file: a word and a result.
class CMDDATA_API CCreateDrsFileRcv : public CCmdRcv<cmddata::command::CreateDrsFile> {
public:
    CMDDATA_MESSAGE(CCreateDrsFileRcv)
    std::uint16_t fileNumber = 0;
    std::uint32_t result = 0;
};

/// Asks for the work-factor analysis of a kind.
class CMDDATA_API CGetAnalyzeWorkFactorSnd
    : public CCmdSnd<cmddata::command::GetAnalyzeWorkFactor> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorSnd)
    std::uint32_t analysisKind = 0;
};

/// The work-factor analysis: analyses, current times, six words, a flag, the time-stamped
/// analyses and the time stamps (whose frames travel as images, see CCmdTimeStampInfo).
class CMDDATA_API CGetAnalyzeWorkFactorRcv
    : public CCmdRcv<cmddata::command::GetAnalyzeWorkFactor> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorRcv)
    static constexpr int kWordCount = 6;
    CCmdList<CCmdAnlzWrkFctData> analyses;
    CCmdList<CCmdCurrentTimeData> currentTimes;
    std::uint16_t words[kWordCount] = {0, 0, 0, 0, 0, 0};
    std::uint8_t flag = 0;
    CCmdList<CCmdAnlzWrkFctDataTS> stampedAnalyses;
    CCmdTimeStampInfo timeStamps;
};

/// Asks for the current time of a kind.
class CMDDATA_API CGetCurrentTimeInfoSnd : public CCmdSnd<cmddata::command::GetCurrentTimeInfo> {
public:
    CMDDATA_MESSAGE(CGetCurrentTimeInfoSnd)
    std::uint8_t timeKind = 0;
};

/// The current time (version argument, default 2: the four words from version 2 travel).
class CMDDATA_API CGetCurrentTimeInfoRcv
    : public CCmdRcv<cmddata::command::GetCurrentTimeInfo, CCmdCurrentTimeAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCurrentTimeInfoRcv)
};

/// Asks for the work-factor analysis of the Dcm generation (behind its version prefix).
class CMDDATA_API CGetAnalyzeWorkFactorDcmSnd
    : public CCmdSnd<cmddata::command::GetAnalyzeWorkFactorDcm> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorDcmSnd)
    std::uint32_t analysisKind = 0;
};

/// The work-factor analysis of the Dcm generation with its current times (behind its version
/// prefix).
class CMDDATA_API CGetAnalyzeWorkFactorDcmRcv
    : public CCmdRcv<cmddata::command::GetAnalyzeWorkFactorDcm> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorDcmRcv)
    CCmdList<CCmdAnlzWrkFctDataDcm> analyses;
    CCmdList<CCmdCurrentTimeDataDcm> currentTimes;
};

/// Asks for the recorded behaviours: a selector word and a kind.
class CMDDATA_API CGetRecordOnBehaviorSnd : public CCmdSnd<cmddata::command::GetRecordOnBehavior> {
public:
    CMDDATA_MESSAGE(CGetRecordOnBehaviorSnd)
    std::uint32_t selector = 0;
    std::uint8_t kind = 0;
};

/// The recorded behaviours and the sub-functions.
class CMDDATA_API CGetRecordOnBehaviorRcv : public CCmdRcv<cmddata::command::GetRecordOnBehavior> {
public:
    CMDDATA_MESSAGE(CGetRecordOnBehaviorRcv)
    CCmdList<CCmdBehaviorCode> behaviors;
    CCmdList<CCmdSubFunctionInfo> subFunctions;
};

/// Request: asks to clear the recorded behaviours (header only).
/// Answer: the outcome of clearing the recorded behaviours, in the status words (header only).
CMDDATA_HEADER_ONLY_COMMAND(DelRecordOnBehavior);

/// Asks for the drive-recorder information (version prefix, then the header alone).
class CMDDATA_API CGetDdrInfoSnd : public CCmdSnd<cmddata::command::GetDdrInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDdrInfoSnd)
};

/// The drive-recorder information (behind its version prefix).
class CMDDATA_API CGetDdrInfoRcv : public CCmdRcv<cmddata::command::GetDdrInfo, CCmdDdrInfoAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDdrInfoRcv)
};

/// Asks for the PCS operation freeze frames (header only).
class CMDDATA_API CGetPCSOperationFFDSnd
    : public CCmdSnd<cmddata::command::GetPCSOperationFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPCSOperationFFDSnd)
};

/// The PCS operation freeze frames: the object holds a frame list, yet nothing of it travels;
/// the answer is its header alone (20 bytes). Reading leaves the list as it was; RemoveAll
/// empties it.
class CMDDATA_API CGetPCSOperationFFDRcv : public CCmdRcv<cmddata::command::GetPCSOperationFFD> {
public:
    CMDDATA_MESSAGE(CGetPCSOperationFFDRcv)
    CCmdList<CCmdFrzFrmDat> frames;  // never travels
};

/// Asks for the drive-recorder information for the log (version prefix, then the header alone).
class CMDDATA_API CGetDdrInfoSaveLogSnd
    : public CCmdSnd<cmddata::command::GetDdrInfoSaveLog, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDdrInfoSaveLogSnd)
};

/// The drive-recorder information for the log, as GetDdrInfo's answer (behind its prefix).
class CMDDATA_API CGetDdrInfoSaveLogRcv
    : public CCmdRcv<cmddata::command::GetDdrInfoSaveLog, CCmdDdrInfoAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDdrInfoSaveLogRcv)
};

/// Asks for the LCS operation freeze frames (header only).
class CMDDATA_API CGetLCSOperationFFDSnd
    : public CCmdSnd<cmddata::command::GetLCSOperationFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetLCSOperationFFDSnd)
};

/// The LCS operation freeze frames.
class CMDDATA_API CGetLCSOperationFFDRcv
    : public CCmdRcv<cmddata::command::GetLCSOperationFFD, CCmdFrzFrmDatListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetLCSOperationFFDRcv)
};

/// Asks for the current time of one ECU's kind.
class CMDDATA_API CGetCurrentTimeInfoEachEcuSnd
    : public CCmdSnd<cmddata::command::GetCurrentTimeInfoEachEcu> {
public:
    CMDDATA_MESSAGE(CGetCurrentTimeInfoEachEcuSnd)
    std::uint8_t timeKind = 0;
};

/// The current time of one ECU, as GetCurrentTimeInfo's answer (version argument, default 1:
/// the four words travel only from version 2).
class CMDDATA_API CGetCurrentTimeInfoEachEcuRcv
    : public CCmdRcv<cmddata::command::GetCurrentTimeInfoEachEcu, CCmdCurrentTimeAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCurrentTimeInfoEachEcuRcv)
};

/// Asks for the work-factor analysis on record on behaviour: a kind and a selector word.
class CMDDATA_API CGetAnalyzeWorkFactorRoBSnd
    : public CCmdSnd<cmddata::command::GetAnalyzeWorkFactorRoB> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorRoBSnd)
    std::uint8_t kind = 0;
    std::uint32_t selector = 0;
};

/// The work-factor analysis on record on behaviour: analyses, three current times, six words.
class CMDDATA_API CGetAnalyzeWorkFactorRoBRcv
    : public CCmdRcv<cmddata::command::GetAnalyzeWorkFactorRoB> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorRoBRcv)
    static constexpr int kTimeCount = 3;
    static constexpr int kWordCount = 6;
    CCmdList<CCmdAnlzWrkFctDataRoB> analyses;
    CCmdCurrentTimeDataRoB currentTimes[kTimeCount];
    std::uint16_t words[kWordCount] = {0, 0, 0, 0, 0, 0};
};

/// Asks for the work-factor analysis of the Dcm P5 generation (header only).
class CMDDATA_API CGetAnalyzeWorkFactorDcmP5Snd
    : public CCmdSnd<cmddata::command::GetAnalyzeWorkFactorDcmP5, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetAnalyzeWorkFactorDcmP5Snd)
};

/// The work-factor analysis of the Dcm P5 generation.
class CMDDATA_API CGetAnalyzeWorkFactorDcmP5Rcv
    : public CCmdRcv<cmddata::command::GetAnalyzeWorkFactorDcmP5> {
public:
    CMDDATA_MESSAGE(CGetAnalyzeWorkFactorDcmP5Rcv)
    CCmdList<CCmdAnlzWrkFctDataDcmP5> analyses;
};

/// Asks for the current absolute time (header only).
class CMDDATA_API CGetCurrentAbsTimeInfoSnd
    : public CCmdSnd<cmddata::command::GetCurrentAbsTimeInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCurrentAbsTimeInfoSnd)
};

/// The current absolute time: a word and the absolute time stamps.
class CMDDATA_API CGetCurrentAbsTimeInfoRcv
    : public CCmdRcv<cmddata::command::GetCurrentAbsTimeInfo> {
public:
    CMDDATA_MESSAGE(CGetCurrentAbsTimeInfoRcv)
    std::uint32_t timeWord = 0;
    CCmdAbsoluteTimeStampInfo timeStamps;
};

/// Asks for the ADS operation freeze frames (header only).
class CMDDATA_API CGetADSOperationFFDSnd
    : public CCmdSnd<cmddata::command::GetADSOperationFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetADSOperationFFDSnd)
};

/// The ADS operation freeze frames.
class CMDDATA_API CGetADSOperationFFDRcv
    : public CCmdRcv<cmddata::command::GetADSOperationFFD, CCmdFrzFrmDatListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetADSOperationFFDRcv)
};

/// Asks for the read time of a kind.
class CMDDATA_API CGetReadTimeSnd : public CCmdSnd<cmddata::command::GetReadTime> {
public:
    CMDDATA_MESSAGE(CGetReadTimeSnd)
    std::uint8_t timeKind = 0;
};

/// The read time.
class CMDDATA_API CGetReadTimeRcv : public CCmdRcv<cmddata::command::GetReadTime> {
public:
    CMDDATA_MESSAGE(CGetReadTimeRcv)
    std::uint32_t readTime = 0;
};

/// Asks for the ADS drive-recorder information (version prefix, then the header alone).
class CMDDATA_API CGetADSDdrInfoSnd
    : public CCmdSnd<cmddata::command::GetADSDdrInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetADSDdrInfoSnd)
};

/// The ADS drive-recorder information: the records, a data word and the monitor items (behind
/// its version prefix).
class CMDDATA_API CGetADSDdrInfoRcv : public CCmdRcv<cmddata::command::GetADSDdrInfo> {
public:
    CMDDATA_MESSAGE(CGetADSDdrInfoRcv)
    CCmdList<CCmdADSDdrInfo> records;
    CCmdDwordData data;
    CCmdList<CCmdDatMonData> items;
};

/// Asks for the Vela3 operation freeze frames (header only).
class CMDDATA_API CGetVela3OperationFFDSnd
    : public CCmdSnd<cmddata::command::GetVela3OperationFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVela3OperationFFDSnd)
};

/// The Vela3 operation freeze frames.
class CMDDATA_API CGetVela3OperationFFDRcv
    : public CCmdRcv<cmddata::command::GetVela3OperationFFD, CCmdFrzFrmDatListAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVela3OperationFFDRcv)
};

// --- commands that name ECUs ---

/// Asks for the absolute time stamps of the given freeze frames and ECUs (behind its version
/// prefix): a kind, the frames and the ECUs.
class CMDDATA_API CGetAbsoluteTimeStampSnd
    : public CCmdSnd<cmddata::command::GetAbsoluteTimeStamp> {
public:
    CMDDATA_MESSAGE(CGetAbsoluteTimeStampSnd)
    std::uint8_t kind = 0;
    CCmdList<CCmdFrzFrmDat> frames;
    CCmdList<CCmdEcuSpecificInfo> ecus;
};

/// The absolute time stamps and their ECUs (behind its version prefix).
class CMDDATA_API CGetAbsoluteTimeStampRcv
    : public CCmdRcv<cmddata::command::GetAbsoluteTimeStamp, CCmdAbsTimeStampAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetAbsoluteTimeStampRcv)
};

/// Asks for the PCS functions (version prefix, then the header alone).
class CMDDATA_API CGetPCSFuncListSnd
    : public CCmdSnd<cmddata::command::GetPCSFuncList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPCSFuncListSnd)
};

/// The PCS functions: the ECUs and their security access (behind its version prefix).
class CMDDATA_API CGetPCSFuncListRcv : public CCmdRcv<cmddata::command::GetPCSFuncList> {
public:
    CMDDATA_MESSAGE(CGetPCSFuncListRcv)
    CCmdList<CCmdEcuInfo> ecus;
    CCmdList<CCmdSecurityAccessInfo> securityAccess;
};

/// Asks for the PCS read times: five lists, then two bytes. The ECU list travels first, then the
/// four byte lists in member order: the order this library keeps for them.
class CMDDATA_API CGetPCSReadTimeSnd : public CCmdSnd<cmddata::command::GetPCSReadTime> {
public:
    CMDDATA_MESSAGE(CGetPCSReadTimeSnd)
    static constexpr int kByteListCount = 4;
    CCmdList<CCmdEcuInfo> ecus;
    CCmdList<CCmdByteData> byteLists[kByteListCount];
    std::uint8_t firstKind = 0;
    std::uint8_t secondKind = 0;
};

/// The PCS read times: twelve words (version argument, default 3; no version tests).
class CMDDATA_API CGetPCSReadTimeRcv : public CCmdRcv<cmddata::command::GetPCSReadTime> {
public:
    CMDDATA_MESSAGE(CGetPCSReadTimeRcv)
    static constexpr int kTimeCount = 12;
    std::uint32_t times[kTimeCount] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
};

/// Asks for the absolute time stamps of the given freeze frames for the log (behind its version
/// prefix).
class CMDDATA_API CGetAbsoluteTimeStampSaveLogSnd
    : public CCmdSnd<cmddata::command::GetAbsoluteTimeStampSaveLog> {
public:
    CMDDATA_MESSAGE(CGetAbsoluteTimeStampSaveLogSnd)
    CCmdList<CCmdFrzFrmDat> frames;
};

/// The absolute time stamps for the log and their ECUs (behind its version prefix).
class CMDDATA_API CGetAbsoluteTimeStampSaveLogRcv
    : public CCmdRcv<cmddata::command::GetAbsoluteTimeStampSaveLog, CCmdAbsTimeStampAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetAbsoluteTimeStampSaveLogRcv)
};

/// Asks for the PCS header information of the given ECUs.
class CMDDATA_API CGetPCSHeaderInfoSnd : public CCmdSnd<cmddata::command::GetPCSHeaderInfo> {
public:
    CMDDATA_MESSAGE(CGetPCSHeaderInfoSnd)
    CCmdList<CCmdEcuInfo> ecus;
};

/// The PCS header information, as a text.
class CMDDATA_API CGetPCSHeaderInfoRcv : public CCmdRcv<cmddata::command::GetPCSHeaderInfo> {
public:
    CMDDATA_MESSAGE(CGetPCSHeaderInfoRcv)
    CCmdString headerText;
};

/// Asks for the PVM image freeze frames: two byte lists (frames and items), the ECUs, a word,
/// the support record and a kind (version argument, default 2; no version tests).
class CMDDATA_API CGetPVMImageFFDSnd : public CCmdSnd<cmddata::command::GetPVMImageFFD> {
public:
    CMDDATA_MESSAGE(CGetPVMImageFFDSnd)
    CCmdList<CCmdByteData> frameNumbers;
    CCmdList<CCmdByteData> items;
    CCmdList<CCmdEcuInfo> ecus;
    std::uint32_t requestWord = 0;
    CCmdDwordSupportInfo support;
    std::uint8_t kind = 0;
};

/// The PVM image freeze frames.
class CMDDATA_API CGetPVMImageFFDRcv
    : public CCmdRcv<cmddata::command::GetPVMImageFFD, CCmdImageFFDAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPVMImageFFDRcv)
};

/// Asks for the ADS image freeze frames.
class CMDDATA_API CGetADSImageFFDSnd
    : public CCmdSnd<cmddata::command::GetADSImageFFD, CCmdImageFFDRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetADSImageFFDSnd)
};

/// The ADS image freeze frames.
class CMDDATA_API CGetADSImageFFDRcv
    : public CCmdRcv<cmddata::command::GetADSImageFFD, CCmdImageFFDAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetADSImageFFDRcv)
};

/// Asks for the Vela3 image freeze frames: the items (as bytes), the ECUs and a kind.
class CMDDATA_API CGetVela3ImageFFDSnd : public CCmdSnd<cmddata::command::GetVela3ImageFFD> {
public:
    CMDDATA_MESSAGE(CGetVela3ImageFFDSnd)
    CCmdList<CCmdByteData> items;
    CCmdList<CCmdEcuInfo> ecus;
    std::uint8_t kind = 0;
};

/// The Vela3 image freeze frames.
class CMDDATA_API CGetVela3ImageFFDRcv
    : public CCmdRcv<cmddata::command::GetVela3ImageFFD, CCmdImageFFDAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVela3ImageFFDRcv)
};

/// Asks for the RC image freeze frames.
class CMDDATA_API CGetRCImageFFDSnd
    : public CCmdSnd<cmddata::command::GetRCImageFFD, CCmdImageFFDRequest> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRCImageFFDSnd)
};

/// The RC image freeze frames.
class CMDDATA_API CGetRCImageFFDRcv
    : public CCmdRcv<cmddata::command::GetRCImageFFD, CCmdImageFFDAnswer> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetRCImageFFDRcv)
};
