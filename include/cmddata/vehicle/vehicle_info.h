// The vehicle-identity commands: coded vehicle information, VIN, calibration ids and numbers,
// and the related option and support lists.
#pragma once

#include <cstdint>

#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/car_info.h"

/// Asks for vehicle information items by id.
class CMDDATA_API CGetCarInfoSnd
    : public CCmdSnd<cmddata::command::GetCarInfo, CCmdWordIdListMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCarInfoSnd)
};

/// The vehicle information items found, in the vehicle side's order, with their accessors.
class CMDDATA_API CGetCarInfoRcv : public CCmdRcv<cmddata::command::GetCarInfo>,
                                   public CCmdCarInfoAccess<CGetCarInfoRcv> {
public:
    CMDDATA_MESSAGE(CGetCarInfoRcv)
    CCmdList<CCmdCarInfo> carInfo;
};

/// Asks for the vehicle identification number.
class CMDDATA_API CGetVINSnd : public CCmdSnd<cmddata::command::GetVIN, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVINSnd)
};

/// The vehicle identification number.
class CMDDATA_API CGetVINRcv : public CCmdRcv<cmddata::command::GetVIN> {
public:
    CMDDATA_MESSAGE(CGetVINRcv)
    CCmdString vin;
};

/// Asks for the calibration identifiers.
class CMDDATA_API CGetCIDSnd : public CCmdSnd<cmddata::command::GetCID, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCIDSnd)
};

/// The calibration identifiers, then how many ECUs answered and how many identifiers the
/// vehicle reported (the two words' values belong to the two processes).
class CMDDATA_API CGetCIDRcv : public CCmdRcv<cmddata::command::GetCID> {
public:
    CMDDATA_MESSAGE(CGetCIDRcv)
    CCmdList<CCmdString> calibrationIds;
    std::uint32_t ecuCount = 0;
    std::uint32_t reportedCount = 0;
};

/// Asks for the calibration verification numbers.
class CMDDATA_API CGetCVNSnd : public CCmdSnd<cmddata::command::GetCVN, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCVNSnd)
};

/// The calibration verification numbers.
class CMDDATA_API CGetCVNRcv : public CCmdRcv<cmddata::command::GetCVN> {
public:
    CMDDATA_MESSAGE(CGetCVNRcv)
    CCmdList<CCmdString> verificationNumbers;
};

/// Asks for the frames exchanged while the vehicle information was read from the VIN.
class CMDDATA_API CGetFrmCarInfoVinSnd
    : public CCmdSnd<cmddata::command::GetFrmCarInfoVin, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetFrmCarInfoVinSnd)
};

/// The frames exchanged while the vehicle information was read from the VIN: the ECU and frame
/// kind, the frames sent and the frames received (one byte list per frame, the form the other
/// frame commands use), then the outcome and its detail word.
class CMDDATA_API CGetFrmCarInfoVinRcv : public CCmdRcv<cmddata::command::GetFrmCarInfoVin> {
public:
    CMDDATA_MESSAGE(CGetFrmCarInfoVinRcv)
    std::uint32_t ecuId = 0;
    std::uint8_t frameKind = 0;
    CCmdList<CCmdByteDataList> sentFrames;
    CCmdList<CCmdByteDataList> receivedFrames;
    std::uint32_t outcome = 0;
    std::uint32_t outcomeDetail = 0;
};

/// Asks for the car-identification option list.
class CMDDATA_API CGetCarIdOptListSnd
    : public CCmdSnd<cmddata::command::GetCarIdOptList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCarIdOptListSnd)
};

/// The car-identification option list.
class CMDDATA_API CGetCarIdOptListRcv : public CCmdRcv<cmddata::command::GetCarIdOptList> {
public:
    CMDDATA_MESSAGE(CGetCarIdOptListRcv)
    CCmdList<CCmdCarIdInf> options;
};

/// Asks what the vehicle supports: a flag (one byte on the wire, held in a 32-bit member) and
/// the vehicle information items that describe the vehicle.
class CMDDATA_API CGetVehicleSupportInfoSnd
    : public CCmdSnd<cmddata::command::GetVehicleSupportInfo> {
public:
    CMDDATA_MESSAGE(CGetVehicleSupportInfoSnd)
    std::uint32_t flag = 0;  // only the low byte travels
    CCmdList<CCmdCarInfo> requests;
};

/// What the vehicle supports: per support item id, the list of supported ids.
class CMDDATA_API CGetVehicleSupportInfoRcv
    : public CCmdRcv<cmddata::command::GetVehicleSupportInfo> {
public:
    CMDDATA_MESSAGE(CGetVehicleSupportInfoRcv)
    CCmdList<CCmdCarIdInf> answers;
};
