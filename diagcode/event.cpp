// Event records, time stamps and the commands that read recorded events.
#include "cmddata/diagcode/event.h"

#include "cmddata_internal/event_image.h"
#include "cmddata_internal/procs.h"

namespace {
// The fields the work-factor analyses of every generation carry after their own opening.
template <class P, class A>
void AnalysisFields(P& p, A& a) {
    p.U32("analysis_number", a.analysisNumber);
    p.U32("result", a.result);
    p.U8("kind", a.kind);
    p.String("name", a.name);
    p.List("factors", a.factors);
}
}  // namespace

// --- records ---

// The three frames travel as 152-byte images (event_image.h), never through their own fields.
template <class P>
void CCmdTimeStampInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("first_time", firstTime);
    p.U32("first_counter", firstCounter);
    p.Image("first_frame", firstFrame);
    p.U32("second_time", secondTime);
    p.U32("second_counter", secondCounter);
    p.Image("second_frame", secondFrame);
    p.U32("third_time", thirdTime);
    p.Image("third_frame", thirdFrame);
}
CMDDATA_DEFINE_FIELDS(CCmdTimeStampInfo)

// The support data travels as its 12-byte image: type word, version prefix, value.
template <class P>
void CCmdDwordSupportInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("support_word", supportWord);
    p.Image("support_data", supportData);
}
CMDDATA_DEFINE_FIELDS(CCmdDwordSupportInfo)

template <class P>
void CCmdCurrentTimeData::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U32("time", time);
    p.String("unit", unit);
    p.U16("item_number", itemNumber);
}
CMDDATA_DEFINE_FIELDS(CCmdCurrentTimeData)

template <class P>
void CCmdWrkFctData::Fields(P& p) {
    p.Prefix(*this);
    p.U16("factor_number", factorNumber);
    p.U32("value", value);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdWrkFctData)

template <class P>
void CCmdAnlzWrkFctData::Fields(P& p) {
    p.Prefix(*this);
    AnalysisFields(p, *this);
}
CMDDATA_DEFINE_FIELDS(CCmdAnlzWrkFctData)

template <class P>
void CCmdAnlzWrkFctDataTS::Fields(P& p) {
    CCmdAnlzWrkFctData::Fields(p);
    p.U32("time_stamp", timeStamp);
}
CMDDATA_DEFINE_FIELDS(CCmdAnlzWrkFctDataTS)

template <class P>
void CCmdWrkFctDataRoB::Fields(P& p) {
    InfoHeader(p);
    p.U16("factor_number", factorNumber);
    p.U32("value", value);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdWrkFctDataRoB)

template <class P>
void CCmdAnlzWrkFctDataRoB::Fields(P& p) {
    InfoHeader(p);
    AnalysisFields(p, *this);
}
CMDDATA_DEFINE_FIELDS(CCmdAnlzWrkFctDataRoB)

template <class P>
void CCmdAnlzWrkFctDataDcmP5::Fields(P& p) {
    InfoHeader(p);
    AnalysisFields(p, *this);
}
CMDDATA_DEFINE_FIELDS(CCmdAnlzWrkFctDataDcmP5)

template <class P>
void CCmdCurrentTimeDataRoB::Fields(P& p) {
    InfoHeader(p);
    p.String("name", name);
    p.U32("time", time);
    p.String("unit", unit);
    p.U16("item_number", itemNumber);
}
CMDDATA_DEFINE_FIELDS(CCmdCurrentTimeDataRoB)

template <class P>
void CCmdSupport::Fields(P& p) {
    InfoHeader(p);
    p.U32("support_word", supportWord);
    p.Image("support_data", supportData);
}
CMDDATA_DEFINE_FIELDS(CCmdSupport)

template <class P>
void CCmdBehaviorDataRecord::Fields(P& p) {
    p.Prefix(*this);
    p.U16("record_number", recordNumber);
    p.Record("frame", frame);
    p.U32("record_word", recordWord);
    p.List("helps", helps);
}
CMDDATA_DEFINE_FIELDS(CCmdBehaviorDataRecord)

template <class P>
void CCmdBehaviorCode::Fields(P& p) {
    p.Prefix(*this);
    p.String("code_text", codeText);
    p.U16("code_number", codeNumber);
    p.U32("code_value", codeValue);
    p.String("description", description);
    p.U8("first_flag", firstFlag);
    p.U32("first_word_1", firstWords[0]);
    p.U32("first_word_2", firstWords[1]);
    p.U8("second_flag", secondFlag);
    p.U32("second_word_1", secondWords[0]);
    p.U32("second_word_2", secondWords[1]);
    p.U32("second_word_3", secondWords[2]);
    p.Record("first_frame", firstFrame);
    p.U32("second_frame_word_1", secondFrameWords[0]);
    p.U32("second_frame_word_2", secondFrameWords[1]);
    p.Record("second_frame", secondFrame);
    p.U32("time_stamp_word_1", timeStampWords[0]);
    p.U32("time_stamp_word_2", timeStampWords[1]);
    p.Record("time_stamps", timeStamps);
    p.Record("third_frame", thirdFrame);
    p.Record("data", data);
}
CMDDATA_DEFINE_FIELDS(CCmdBehaviorCode)

template <class P>
void CCmdSubFunctionInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("sub_function", subFunction);
    p.U8("supported", supported);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdSubFunctionInfo)

template <class P>
void CCmdDdrInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("record_number", recordNumber);
    p.U32("record_time", recordTime);
    p.U8("trigger", trigger);
    p.String("name", name);
}
CMDDATA_DEFINE_FIELDS(CCmdDdrInfo)

template <class P>
void CCmdDdrCSVDataDependSpecMngNo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("management_number", managementNumber);
    p.String("csv_text", csvText);
}
CMDDATA_DEFINE_FIELDS(CCmdDdrCSVDataDependSpecMngNo)

template <class P>
void CCmdSecurityAccessInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U32("ecu_number", ecuNumber);
    p.U8("access_level", accessLevel);
    p.U16("method", method);
}
CMDDATA_DEFINE_FIELDS(CCmdSecurityAccessInfo)

// --- shared layouts ---

template <class P>
void CCmdCurrentTimeAnswer::Fields(P& p) {
    Header(p);
    p.U32("time_word", timeWord);
    p.Record("first_frame", firstFrame);
    p.Record("second_frame", secondFrame);
    if (p.Since(*this, 2)) p.Array("extra_words", extraWords);
}
CMDDATA_DEFINE_FIELDS(CCmdCurrentTimeAnswer)

template <class P>
void CCmdDdrInfoAnswer::Fields(P& p) {
    Header(p);
    p.List("records", records);
    p.Record("first_data", firstData);
    p.Record("second_data", secondData);
    p.List("items", items);
    p.Record("csv_data", csvData);
}
CMDDATA_DEFINE_FIELDS(CCmdDdrInfoAnswer)

template <class P>
void CCmdFrzFrmDatListAnswer::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CCmdFrzFrmDatListAnswer)

template <class P>
void CCmdImageFFDAnswer::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
    p.U32("result_word", resultWord);
    p.Record("support", support);
}
CMDDATA_DEFINE_FIELDS(CCmdImageFFDAnswer)

// --- messages ---

// The further text of version 2 is declared first but travels last.
template <class P>
void CCreateDrsFileSnd::Fields(P& p) {
    Header(p);
    p.String("file_name", fileName);
    p.Record("car_type", carType);
    p.U16("first_word", firstWord);
    p.List("ecus", ecus);
    p.U16("second_word", secondWord);
    p.String("comment", comment);
    p.Record("trigger", trigger);
    p.Record("trigger_param", triggerParam);
    if (p.Since(*this, 2)) p.String("extra_text", extraText);
}
CMDDATA_DEFINE_FIELDS(CCreateDrsFileSnd)

template <class P>
void CCreateDrsFileRcv::Fields(P& p) {
    Header(p);
    p.U16("file_number", fileNumber);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CCreateDrsFileRcv)

template <class P>
void CGetAnalyzeWorkFactorSnd::Fields(P& p) {
    Header(p);
    p.U32("analysis_kind", analysisKind);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorSnd)

template <class P>
void CGetAnalyzeWorkFactorRcv::Fields(P& p) {
    Header(p);
    p.List("analyses", analyses);
    p.List("current_times", currentTimes);
    p.Array("words", words);
    p.U8("flag", flag);
    p.List("stamped_analyses", stampedAnalyses);
    p.Record("time_stamps", timeStamps);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorRcv)

template <class P>
void CGetCurrentTimeInfoSnd::Fields(P& p) {
    Header(p);
    p.U8("time_kind", timeKind);
}
CMDDATA_DEFINE_FIELDS(CGetCurrentTimeInfoSnd)

template <class P>
void CGetAnalyzeWorkFactorDcmSnd::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.U32("analysis_kind", analysisKind);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorDcmSnd)

template <class P>
void CGetAnalyzeWorkFactorDcmRcv::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.List("analyses", analyses);
    p.List("current_times", currentTimes);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorDcmRcv)

template <class P>
void CGetRecordOnBehaviorSnd::Fields(P& p) {
    Header(p);
    p.U32("selector", selector);
    p.U8("kind", kind);
}
CMDDATA_DEFINE_FIELDS(CGetRecordOnBehaviorSnd)

template <class P>
void CGetRecordOnBehaviorRcv::Fields(P& p) {
    Header(p);
    p.List("behaviors", behaviors);
    p.List("sub_functions", subFunctions);
}
CMDDATA_DEFINE_FIELDS(CGetRecordOnBehaviorRcv)

// The frame list is the object's own: nothing of it is on the wire.
template <class P>
void CGetPCSOperationFFDRcv::Fields(P& p) {
    Header(p);
    p.Unsent("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetPCSOperationFFDRcv)

template <class P>
void CGetCurrentTimeInfoEachEcuSnd::Fields(P& p) {
    Header(p);
    p.U8("time_kind", timeKind);
}
CMDDATA_DEFINE_FIELDS(CGetCurrentTimeInfoEachEcuSnd)

template <class P>
void CGetAnalyzeWorkFactorRoBSnd::Fields(P& p) {
    Header(p);
    p.U8("kind", kind);
    p.U32("selector", selector);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorRoBSnd)

template <class P>
void CGetAnalyzeWorkFactorRoBRcv::Fields(P& p) {
    Header(p);
    p.List("analyses", analyses);
    p.Array("current_times", currentTimes);
    p.Array("words", words);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorRoBRcv)

template <class P>
void CGetAnalyzeWorkFactorDcmP5Rcv::Fields(P& p) {
    Header(p);
    p.List("analyses", analyses);
}
CMDDATA_DEFINE_FIELDS(CGetAnalyzeWorkFactorDcmP5Rcv)

template <class P>
void CGetCurrentAbsTimeInfoRcv::Fields(P& p) {
    Header(p);
    p.U32("time_word", timeWord);
    p.Record("time_stamps", timeStamps);
}
CMDDATA_DEFINE_FIELDS(CGetCurrentAbsTimeInfoRcv)

template <class P>
void CGetReadTimeSnd::Fields(P& p) {
    Header(p);
    p.U8("time_kind", timeKind);
}
CMDDATA_DEFINE_FIELDS(CGetReadTimeSnd)

template <class P>
void CGetReadTimeRcv::Fields(P& p) {
    Header(p);
    p.U32("read_time", readTime);
}
CMDDATA_DEFINE_FIELDS(CGetReadTimeRcv)

template <class P>
void CGetADSDdrInfoRcv::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.List("records", records);
    p.Record("data", data);
    p.List("items", items);
}
CMDDATA_DEFINE_FIELDS(CGetADSDdrInfoRcv)

// --- commands that name ECUs ---

template <class P>
void CCmdAbsTimeStampAnswer::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.List("time_stamps", timeStamps);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CCmdAbsTimeStampAnswer)

template <class P>
void CCmdImageFFDRequest::Fields(P& p) {
    Header(p);
    p.List("items", items);
    p.List("ecus", ecus);
    p.U32("request_word", requestWord);
    p.Record("support", support);
}
CMDDATA_DEFINE_FIELDS(CCmdImageFFDRequest)

template <class P>
void CGetAbsoluteTimeStampSnd::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.U8("kind", kind);
    p.List("frames", frames);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CGetAbsoluteTimeStampSnd)

template <class P>
void CGetPCSFuncListRcv::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.List("ecus", ecus);
    p.List("security_access", securityAccess);
}
CMDDATA_DEFINE_FIELDS(CGetPCSFuncListRcv)

template <class P>
void CGetPCSReadTimeSnd::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
    p.Array("byte_lists", byteLists);
    p.U8("first_kind", firstKind);
    p.U8("second_kind", secondKind);
}
CMDDATA_DEFINE_FIELDS(CGetPCSReadTimeSnd)

template <class P>
void CGetPCSReadTimeRcv::Fields(P& p) {
    Header(p);
    p.Array("times", times);
}
CMDDATA_DEFINE_FIELDS(CGetPCSReadTimeRcv)

template <class P>
void CGetAbsoluteTimeStampSaveLogSnd::Fields(P& p) {
    Header(p);  // version prefix, then the header
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetAbsoluteTimeStampSaveLogSnd)

template <class P>
void CGetPCSHeaderInfoSnd::Fields(P& p) {
    Header(p);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CGetPCSHeaderInfoSnd)

template <class P>
void CGetPCSHeaderInfoRcv::Fields(P& p) {
    Header(p);
    p.String("header_text", headerText);
}
CMDDATA_DEFINE_FIELDS(CGetPCSHeaderInfoRcv)

template <class P>
void CGetPVMImageFFDSnd::Fields(P& p) {
    Header(p);
    p.List("frame_numbers", frameNumbers);
    p.List("items", items);
    p.List("ecus", ecus);
    p.U32("request_word", requestWord);
    p.Record("support", support);
    p.U8("kind", kind);
}
CMDDATA_DEFINE_FIELDS(CGetPVMImageFFDSnd)

template <class P>
void CGetVela3ImageFFDSnd::Fields(P& p) {
    Header(p);
    p.List("items", items);
    p.List("ecus", ecus);
    p.U8("kind", kind);
}
CMDDATA_DEFINE_FIELDS(CGetVela3ImageFFDSnd)
