// Communication configuration, remote protocol and response records, and the communication
// set-up and cache messages.
#include "cmddata/vehicle/comm.h"

#include "cmddata_internal/procs.h"

namespace {}  // namespace

// --- records ---

template <class P>
void CCmdCommConfig::Fields(P& p) {
    p.Prefix(*this);
    p.U32("config_id", configId);
    p.U32("config_value", configValue);
}
CMDDATA_DEFINE_FIELDS(CCmdCommConfig)

template <class P>
void CCmdRemoteProtInfo::Fields(P& p) {
    p.Prefix(*this);
    p.U16("protocol", protocol);
    p.U8("kind", kind);
    p.Array("words", words);
}
CMDDATA_DEFINE_FIELDS(CCmdRemoteProtInfo)

template <class P>
void CCmdResponseData::Fields(P& p) {
    p.Prefix(*this);
    p.List("bytes", bytes);
}
CMDDATA_DEFINE_FIELDS(CCmdResponseData)

// --- messages ---

template <class P>
void CSetEcuBuslineSnd::Fields(P& p) {
    Header(p);
    p.U16("bus_line", busLine);
}
CMDDATA_DEFINE_FIELDS(CSetEcuBuslineSnd)

template <class P>
void CGetGeneralCommResultSnd::Fields(P& p) {
    Header(p);
    p.U8("kind", kind);
    p.U16("first_address", firstAddress);
    p.U16("second_address", secondAddress);
    p.List("request", request);
}
CMDDATA_DEFINE_FIELDS(CGetGeneralCommResultSnd)

template <class P>
void CGetGeneralCommResultRcv::Fields(P& p) {
    Header(p);
    p.List("responses", responses);
}
CMDDATA_DEFINE_FIELDS(CGetGeneralCommResultRcv)

// Status word 4 travels twice: in the header and again as the first field; reading stores the
// copy back into the same word.
template <class P>
void CGetCommConfigSnd::Fields(P& p) {
    Header(p);
    p.U32("status_word_4_again", status_[3]);
    p.U16("config_kind", configKind);
}
CMDDATA_DEFINE_FIELDS(CGetCommConfigSnd)

template <class P>
void CGetCommConfigRcv::Fields(P& p) {
    Header(p);
    p.List("configs", configs);
}
CMDDATA_DEFINE_FIELDS(CGetCommConfigRcv)

template <class P>
void CSetCommFrameCacheSnd::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
    p.U8("cache_selector", cacheSelector);
}
CMDDATA_DEFINE_FIELDS(CSetCommFrameCacheSnd)

template <class P>
void CGetCommFrameCacheRcv::Fields(P& p) {
    Header(p);
    p.List("frames", frames);
}
CMDDATA_DEFINE_FIELDS(CGetCommFrameCacheRcv)

template <class P>
void CGetRemoteProtInfoRcv::Fields(P& p) {
    Header(p);
    p.List("infos", infos);
}
CMDDATA_DEFINE_FIELDS(CGetRemoteProtInfoRcv)

template <class P>
void CNoConfGeneralCommResponseSnd::Fields(P& p) {
    Header(p);
    p.U16("first_address", firstAddress);
    p.U16("second_address", secondAddress);
    p.List("request", request);
}
CMDDATA_DEFINE_FIELDS(CNoConfGeneralCommResponseSnd)

template <class P>
void CDelEcuCnctCacheSnd::Fields(P& p) {
    Header(p);
    p.U32("selector", selector);
    p.U16("ecu_number", ecuNumber);
}
CMDDATA_DEFINE_FIELDS(CDelEcuCnctCacheSnd)

template <class P>
void CMoveSessionCGWDKSnd::Fields(P& p) {
    Header(p);
    p.U8("session", session);
}
CMDDATA_DEFINE_FIELDS(CMoveSessionCGWDKSnd)

template <class P>
void CDelSpecifiedCacheSnd::Fields(P& p) {
    Header(p);
    p.U16("selector", selector);
    p.List("item_ids", itemIds);
}
CMDDATA_DEFINE_FIELDS(CDelSpecifiedCacheSnd)

template <class P>
void CChangeLogCollectionModeSnd::Fields(P& p) {
    Header(p);
    p.U32("mode", mode);
}
CMDDATA_DEFINE_FIELDS(CChangeLogCollectionModeSnd)
