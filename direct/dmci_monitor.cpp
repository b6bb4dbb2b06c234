// Direct data monitor and active test: element records, requests and answers.
#include "cmddata/direct/dmci_monitor.h"

#include "cmddata_internal/procs.h"

namespace {}  // namespace

template <class P>
void CCmdModeA1::Fields(P& p) {
    p.Prefix(*this);
    p.U32("request_id", requestId);
    p.Buffer("request", request);
}
CMDDATA_DEFINE_FIELDS(CCmdModeA1)

template <class P>
void CCmdModePair::Fields(P& p) {
    p.Prefix(*this);
    p.U32("pair_id", pairId);
    p.Buffer("request", request);
    p.Buffer("answer", answer);
}
CMDDATA_DEFINE_FIELDS(CCmdModePair)

template <class P>
void CCmdDataIdInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("data_id", dataId);
    p.U32("data_length", dataLength);
}
CMDDATA_DEFINE_FIELDS(CCmdDataIdInfo)

template <class P>
void CCmdDmciMonData::Fields(P& p) {
    p.Prefix(*this);
    p.U32("item_id", itemId);
    p.U32("status", status);
    p.Buffer("data", data);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciMonData)

template <class P>
void CCmdMode21::Fields(P& p) {
    p.Prefix(*this);
    p.U32("frame_id", frameId);
    p.Buffer("frame", frame);
}
CMDDATA_DEFINE_FIELDS(CCmdMode21)

// Header(p) puts nothing on the wire for these commands; the status words are written here.
template <class P>
void CCmdDmciStatusValue::Fields(P& p) {
    Header(p);
    p.U32("status_word_3", status_[2]);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciStatusValue)

template <class P>
void CCmdDmciWordBuffer::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.Buffer("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciWordBuffer)

// The set-up requests: status word 4 of their own header leads.
template <class P>
void CDmciDataMonitorSetupPackSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.U32("parameter", parameter);
    p.List("requests", requests);
    p.U32("standard_parameter", standardParameter);
    p.List("standard_values", standardValues);
    p.U16("option", option);
}
CMDDATA_DEFINE_FIELDS(CDmciDataMonitorSetupPackSnd)

template <class P>
void CDmciDataMonitorSetupPairSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.Array("parameters", parameters);
    p.List("pairs", pairs);
    p.U32("standard_parameter", standardParameter);
    p.List("standard_values", standardValues);
    p.U32("trailing_parameter_1", trailingParameters[0]);
    p.U32("trailing_parameter_2", trailingParameters[1]);
}
CMDDATA_DEFINE_FIELDS(CDmciDataMonitorSetupPairSnd)

template <class P>
void CDmciDataMonitorSetupDtcSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.Array("parameters", parameters);
    p.Buffer("codes", codes);
    p.U32("standard_parameter", standardParameter);
    p.List("standard_values", standardValues);
}
CMDDATA_DEFINE_FIELDS(CDmciDataMonitorSetupDtcSnd)

template <class P>
void CDmciDataidSetupSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.U32("parameter", parameter);
    p.List("data_ids", dataIds);
    p.U32("standard_parameter", standardParameter);
    p.List("standard_values", standardValues);
    p.U32("trailing_parameter", trailingParameter);
}
CMDDATA_DEFINE_FIELDS(CDmciDataidSetupSnd)

template <class P>
void CDmciDataMonitorSetupRidSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4", status_[3]);
    p.U32("parameter", parameter);
    p.Buffer("request", request);
    p.U16("option", option);
    p.List("routine_ids", routineIds);
    p.List("routine_options", routineOptions);
    p.U32("standard_parameter", standardParameter);
    p.List("standard_values", standardValues);
    p.U32("trailing_parameter", trailingParameter);
    p.List("trailing_ids", trailingIds);
}
CMDDATA_DEFINE_FIELDS(CDmciDataMonitorSetupRidSnd)

template <class P>
void CDmciGetMonitorDataSnd::Fields(P& p) {
    Header(p);
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CDmciGetMonitorDataSnd)

template <class P>
void CDmciGetMonitorDataRcv::Fields(P& p) {
    Header(p);
    p.U32("status_word_3", status_[2]);
    p.List("values", values);
    p.Array("raw_data", rawData);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CDmciGetMonitorDataRcv)

template <class P>
void CDmciActiveTestStartSnd::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.Buffer("request", request);
    p.U16("option", option);
}
CMDDATA_DEFINE_FIELDS(CDmciActiveTestStartSnd)

template <class P>
void CDmciActiveTestStopSnd::Fields(P& p) {
    Header(p);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciActiveTestStopSnd)

template <class P>
void CDmciIDMapAppendSnd::Fields(P& p) {
    Header(p);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciIDMapAppendSnd)

template <class P>
void CDmciSetNegCountSnd::Fields(P& p) {
    Header(p);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciSetNegCountSnd)

template <class P>
void CDmciSetAdditionFrameSnd::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CDmciSetAdditionFrameSnd)

template <class P>
void CDmciClearDynamicDataidSnd::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.List("data_ids", dataIds);
}
CMDDATA_DEFINE_FIELDS(CDmciClearDynamicDataidSnd)

template <class P>
void CDmciActiveTestStartP5Snd::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.Buffer("request_1", requests[0]);
    p.Buffer("request_2", requests[1]);
    p.U16("option", option);
    p.U32("trailing_parameter", trailingParameter);
}
CMDDATA_DEFINE_FIELDS(CDmciActiveTestStartP5Snd)

template <class P>
void CDmciCommDefineDynamicDataidSetupSnd::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
    p.List("definitions", definitions);
}
CMDDATA_DEFINE_FIELDS(CDmciCommDefineDynamicDataidSetupSnd)
