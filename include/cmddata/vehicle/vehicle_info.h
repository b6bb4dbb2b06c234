// The vehicle-identity commands: coded vehicle information, VIN, calibration ids and numbers,
// and the related option and support lists.
#pragma once

#include <cstdint>

#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/vehicle/car_info.h"

/// Asks for vehicle information items by id.
class CMDDATA_API CGetCarInfoSnd : public CCmdWordIdListMessage {
    CMDDATA_SAME_LAYOUT(CGetCarInfoSnd)
    CGetCarInfoSnd() : CCmdWordIdListMessage(cmddata::cmd::GetCarInfo) {}
};

/// The vehicle information items found, in the vehicle side's order, with their accessors.
class CMDDATA_API CGetCarInfoRcv : public CCmdBase, public CCmdCarInfoAccess<CGetCarInfoRcv> {
    CMDDATA_FIELDS(CGetCarInfoRcv)
public:
    CGetCarInfoRcv() : CCmdBase(cmddata::cmd::GetCarInfo) {}
    CCmdList<CCmdCarInfo> carInfo;
};

/// Asks for the vehicle identification number.
class CMDDATA_API CGetVINSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetVINSnd)
    explicit CGetVINSnd(std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetVIN))
        : CCmdHeaderOnly(cmddata::cmd::GetVIN, version) {}
};

/// The vehicle identification number.
class CMDDATA_API CGetVINRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetVINRcv)
public:
    explicit CGetVINRcv(std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetVIN))
        : CCmdBase(cmddata::cmd::GetVIN, version, 0) {}
    CCmdString vin;
};

/// Asks for the calibration identifiers.
class CMDDATA_API CGetCIDSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetCIDSnd)
    explicit CGetCIDSnd(std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetCID))
        : CCmdHeaderOnly(cmddata::cmd::GetCID, version) {}
};

/// The calibration identifiers, then how many ECUs answered and how many identifiers the
/// vehicle reported (the two words' values belong to the two processes).
class CMDDATA_API CGetCIDRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetCIDRcv)
public:
    explicit CGetCIDRcv(std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetCID))
        : CCmdBase(cmddata::cmd::GetCID, version, 0) {}
    CCmdList<CCmdString> calibrationIds;
    std::uint32_t ecuCount = 0;
    std::uint32_t reportedCount = 0;
};

/// Asks for the calibration verification numbers.
class CMDDATA_API CGetCVNSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetCVNSnd)
    explicit CGetCVNSnd(std::uint16_t version = cmddata::SndVersion(cmddata::cmd::GetCVN))
        : CCmdHeaderOnly(cmddata::cmd::GetCVN, version) {}
};

/// The calibration verification numbers.
class CMDDATA_API CGetCVNRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetCVNRcv)
public:
    explicit CGetCVNRcv(std::uint16_t version = cmddata::RcvVersion(cmddata::cmd::GetCVN))
        : CCmdBase(cmddata::cmd::GetCVN, version, 0) {}
    CCmdList<CCmdString> verificationNumbers;
};

/// Asks for the frames exchanged while the vehicle information was read from the VIN.
class CMDDATA_API CGetFrmCarInfoVinSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetFrmCarInfoVinSnd)
    CGetFrmCarInfoVinSnd() : CCmdHeaderOnly(cmddata::cmd::GetFrmCarInfoVin) {}
};

/// The frames exchanged while the vehicle information was read from the VIN: the ECU and frame
/// kind, the frames sent and the frames received (one byte list per frame, the form the other
/// frame commands use), then the outcome and its detail word.
class CMDDATA_API CGetFrmCarInfoVinRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetFrmCarInfoVinRcv)
public:
    CGetFrmCarInfoVinRcv() : CCmdBase(cmddata::cmd::GetFrmCarInfoVin) {}
    std::uint32_t ecuId = 0;
    std::uint8_t frameKind = 0;
    CCmdList<CCmdByteDataList> sentFrames;
    CCmdList<CCmdByteDataList> receivedFrames;
    std::uint32_t outcome = 0;
    std::uint32_t outcomeDetail = 0;
};

/// Asks for the car-identification option list.
class CMDDATA_API CGetCarIdOptListSnd : public CCmdHeaderOnly {
    CMDDATA_SAME_LAYOUT(CGetCarIdOptListSnd)
    CGetCarIdOptListSnd() : CCmdHeaderOnly(cmddata::cmd::GetCarIdOptList) {}
};

/// The car-identification option list.
class CMDDATA_API CGetCarIdOptListRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetCarIdOptListRcv)
public:
    CGetCarIdOptListRcv() : CCmdBase(cmddata::cmd::GetCarIdOptList) {}
    CCmdList<CCmdCarIdInf> options;
};

/// Asks what the vehicle supports: a flag (one byte on the wire, held in a 32-bit member) and
/// the vehicle information items that describe the vehicle.
class CMDDATA_API CGetVehicleSupportInfoSnd : public CCmdBase {
    CMDDATA_FIELDS(CGetVehicleSupportInfoSnd)
public:
    CGetVehicleSupportInfoSnd() : CCmdBase(cmddata::cmd::GetVehicleSupportInfo) {}
    std::uint32_t flag = 0;  // only the low byte travels
    CCmdList<CCmdCarInfo> requests;
};

/// What the vehicle supports: per support item id, the list of supported ids.
class CMDDATA_API CGetVehicleSupportInfoRcv : public CCmdBase {
    CMDDATA_FIELDS(CGetVehicleSupportInfoRcv)
public:
    CGetVehicleSupportInfoRcv() : CCmdBase(cmddata::cmd::GetVehicleSupportInfo) {}
    CCmdList<CCmdCarIdInf> answers;
};
