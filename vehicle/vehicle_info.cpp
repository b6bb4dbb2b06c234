// The vehicle-identity commands' field lists.
#include "cmddata/vehicle/vehicle_info.h"

#include "cmddata_internal/procs.h"

template <class P>
void CGetCarInfoRcv::Fields(P& p) {
    Header(p);
    p.List("car_info", carInfo);
}
CMDDATA_DEFINE_FIELDS(CGetCarInfoRcv)

template <class P>
void CGetVINRcv::Fields(P& p) {
    Header(p);
    p.String("vin", vin);
}
CMDDATA_DEFINE_FIELDS(CGetVINRcv)

template <class P>
void CGetCIDRcv::Fields(P& p) {
    Header(p);
    p.List("calibration_ids", calibrationIds);
    p.U32("ecu_count", ecuCount);
    p.U32("reported_count", reportedCount);
}
CMDDATA_DEFINE_FIELDS(CGetCIDRcv)

template <class P>
void CGetCVNRcv::Fields(P& p) {
    Header(p);
    p.List("verification_numbers", verificationNumbers);
}
CMDDATA_DEFINE_FIELDS(CGetCVNRcv)

template <class P>
void CGetFrmCarInfoVinRcv::Fields(P& p) {
    Header(p);
    p.U32("ecu_id", ecuId);
    p.U8("frame_kind", frameKind);
    p.List("sent_frames", sentFrames);
    p.List("received_frames", receivedFrames);
    p.U32("outcome", outcome);
    p.U32("outcome_detail", outcomeDetail);
}
CMDDATA_DEFINE_FIELDS(CGetFrmCarInfoVinRcv)

template <class P>
void CGetCarIdOptListRcv::Fields(P& p) {
    Header(p);
    p.List("options", options);
}
CMDDATA_DEFINE_FIELDS(CGetCarIdOptListRcv)

template <class P>
void CGetVehicleSupportInfoSnd::Fields(P& p) {
    Header(p);
    p.U8Low("flag", flag);
    p.List("requests", requests);
}
CMDDATA_DEFINE_FIELDS(CGetVehicleSupportInfoSnd)

template <class P>
void CGetVehicleSupportInfoRcv::Fields(P& p) {
    Header(p);
    p.List("answers", answers);
}
CMDDATA_DEFINE_FIELDS(CGetVehicleSupportInfoRcv)
