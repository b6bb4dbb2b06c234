// Emission records and messages: sensor data, monitoring tests, readiness codes, monitor status
// and results, check modes and their frames, sleep-NG and Sp operate-control records.
#include "cmddata/diagcode/emission.h"

#include "cmddata_internal/procs.h"

// --- records ---

template <class P>
void CCmdO2SData::Fields(P& p) {
    p.Prefix(*this);
    p.Record("frame", frame);
    p.U32("value_1", values[0]);
    p.U16("number_1", numbers[0]);
    p.U32("value_2", values[1]);
    p.U16("number_2", numbers[1]);
    p.U32("value_3", values[2]);
}
CMDDATA_DEFINE_FIELDS(CCmdO2SData)

// Three numbers, then a value; the last two values each follow a number of their own.
template <class P>
void CCmdMonitoringTest::Fields(P& p) {
    p.Prefix(*this);
    p.Record("frame", frame);
    p.U16("number_1", numbers[0]);
    p.U16("number_2", numbers[1]);
    p.U16("number_3", numbers[2]);
    p.U32("value_1", values[0]);
    p.U16("number_4", numbers[3]);
    p.U32("value_2", values[1]);
    p.U16("number_5", numbers[4]);
    p.U32("value_3", values[2]);
}
CMDDATA_DEFINE_FIELDS(CCmdMonitoringTest)

template <class P>
void CCmdReadinessCodeData::Fields(P& p) {
    p.Prefix(*this);
    p.Record("frame", frame);
    p.U32("value", value);
    p.U16("number", number);
}
CMDDATA_DEFINE_FIELDS(CCmdReadinessCodeData)

template <class P>
void CCmdMonitorStatusData::Fields(P& p) {
    p.Prefix(*this);
    p.String("name", name);
    p.U32("first_word", firstWord);
    p.U16("number_1", numbers[0]);
    p.U16("number_2", numbers[1]);
    p.U16("number_3", numbers[2]);
    p.U32("second_word", secondWord);
    p.List("status_bytes", statusBytes);
}
CMDDATA_DEFINE_FIELDS(CCmdMonitorStatusData)

template <class P>
void CCmdSleepNgData::Fields(P& p) {
    p.Prefix(*this);
    p.String("first_text", firstText);
    p.U8("first_flag", firstFlag);
    p.String("second_text", secondText);
    p.U8("second_flag", secondFlag);
}
CMDDATA_DEFINE_FIELDS(CCmdSleepNgData)

template <class P>
void CCmdFrameInfo::Fields(P& p) {
    p.Prefix(*this);
    p.List("first_frame", firstFrame);
    p.List("second_frame", secondFrame);
    p.List("third_frame", thirdFrame);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CCmdFrameInfo)

// --- layouts ---

template <class P>
void CCmdEmissionWordMessage::Fields(P& p) {
    Header(p);
    p.U32("word", word);
}
CMDDATA_DEFINE_FIELDS(CCmdEmissionWordMessage)

// --- messages ---

template <class P>
void CConfCheckModeRcv::Fields(P& p) {
    Header(p);
    p.U8("check_mode", checkMode);
}
CMDDATA_DEFINE_FIELDS(CConfCheckModeRcv)

template <class P>
void CChangeCheckModeSnd::Fields(P& p) {
    Header(p);
    p.U8("check_mode", checkMode);
    p.U32("word", word);
    p.U16("number", number);
}
CMDDATA_DEFINE_FIELDS(CChangeCheckModeSnd)

template <class P>
void CGetSpOperateCtrlRecordGroupRcv::Fields(P& p) {
    Header(p);
    p.List("groups", groups);
}
CMDDATA_DEFINE_FIELDS(CGetSpOperateCtrlRecordGroupRcv)

template <class P>
void CGetSpOperateCtrlRecordRcv::Fields(P& p) {
    Header(p);
    p.List("records", records);
}
CMDDATA_DEFINE_FIELDS(CGetSpOperateCtrlRecordRcv)

// The word is declared before the records but travels after them.
template <class P>
void CGetSleepNgRcv::Fields(P& p) {
    Header(p);
    p.List("records", records);
    p.U32("word", word);
}
CMDDATA_DEFINE_FIELDS(CGetSleepNgRcv)

template <class P>
void CGetMilInfoRcv::Fields(P& p) {
    Header(p);
    p.U16("mil_state", milState);
}
CMDDATA_DEFINE_FIELDS(CGetMilInfoRcv)

template <class P>
void CGetO2SListRcv::Fields(P& p) {
    Header(p);
    p.List("sensors", sensors);
}
CMDDATA_DEFINE_FIELDS(CGetO2SListRcv)

template <class P>
void CGetO2SDataRcv::Fields(P& p) {
    Header(p);
    p.List("data", data);
}
CMDDATA_DEFINE_FIELDS(CGetO2SDataRcv)

template <class P>
void CGetMonitoringTestRcv::Fields(P& p) {
    Header(p);
    p.List("tests", tests);
}
CMDDATA_DEFINE_FIELDS(CGetMonitoringTestRcv)

template <class P>
void CGetReadinessCodeRcv::Fields(P& p) {
    Header(p);
    p.List("codes", codes);
}
CMDDATA_DEFINE_FIELDS(CGetReadinessCodeRcv)

// The header's version does not travel: the test is on the version this object was built with.
template <class P>
void CGetMonitorStatusInfoSnd::Fields(P& p) {
    Header(p);
    p.U32("word", word);
    if (p.Since(*this, 2)) {
        p.U16("number", number);
        p.U32("second_word", secondWord);
    }
}
CMDDATA_DEFINE_FIELDS(CGetMonitorStatusInfoSnd)

template <class P>
void CGetMonitorStatusInfoRcv::Fields(P& p) {
    Header(p);
    p.List("monitors", monitors);
}
CMDDATA_DEFINE_FIELDS(CGetMonitorStatusInfoRcv)

template <class P>
void CGetMonitorResultInfoSnd::Fields(P& p) {
    Header(p);
    p.U32("word", word);
    p.List("monitor_ids", monitorIds);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CGetMonitorResultInfoSnd)

template <class P>
void CGetMonitorResultInfoRcv::Fields(P& p) {
    Header(p);
    p.List("results", results);
}
CMDDATA_DEFINE_FIELDS(CGetMonitorResultInfoRcv)

template <class P>
void CStartDiagCARBSnd::Fields(P& p) {
    Header(p);
    p.U16("first_number", firstNumber);
    p.U16("second_number", secondNumber);
}
CMDDATA_DEFINE_FIELDS(CStartDiagCARBSnd)

template <class P>
void CGetFrmCheckModeRcv::Fields(P& p) {
    Header(p);
    p.List("first_frame", firstFrame);
    p.List("second_frame", secondFrame);
    p.List("third_frame", thirdFrame);
    p.U32("first_word", firstWord);
    p.U32("second_word", secondWord);
}
CMDDATA_DEFINE_FIELDS(CGetFrmCheckModeRcv)

template <class P>
void CGetFrmConfCheckModeRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetFrmConfCheckModeRcv)

template <class P>
void CGetPhysicalAddressCARBSnd::Fields(P& p) {
    Header(p);
    p.U16("number", number);
    p.U8("flag", flag);
}
CMDDATA_DEFINE_FIELDS(CGetPhysicalAddressCARBSnd)

template <class P>
void CGetPhysicalAddressCARBRcv::Fields(P& p) {
    Header(p);
    p.U32("address", address);
    p.U16("number", number);
}
CMDDATA_DEFINE_FIELDS(CGetPhysicalAddressCARBRcv)

template <class P>
void CCARBModeInitRcv::Fields(P& p) {
    Header(p);
    p.U16("number", number);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CCARBModeInitRcv)

// Prefix then header (the catalogue's framing); the selector is declared after the number but
// travels before it.
template <class P>
void CGetPIDSignalDataSnd::Fields(P& p) {
    Header(p);
    p.U8("selector", selector);
    p.U16("number", number);
    p.List("ecus", ecus);
}
CMDDATA_DEFINE_FIELDS(CGetPIDSignalDataSnd)

// Prefix then header; the word is declared after the ECUs but travels before them.
template <class P>
void CGetPIDSignalDataRcv::Fields(P& p) {
    Header(p);
    p.U32("word", word);
    p.List("ecus", ecus);
    p.Record("frame", frame);
}
CMDDATA_DEFINE_FIELDS(CGetPIDSignalDataRcv)
