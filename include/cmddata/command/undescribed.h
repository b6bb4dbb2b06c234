// The catalogue commands whose payload is not known: each keeps its identifier, its constructors'
// version rule and its framing (GetTirePressureInfo puts the version prefix before its header),
// and carries the header alone. The catalogue marks them (payloadKnown false), so that the tools
// can tell a user that whatever follows the header in a region is not decoded.
#pragma once

#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"

/// The GetVimInfo request: payload undefined, the header alone travels.
class CMDDATA_API CGetVimInfoSnd : public CCmdSnd<cmddata::command::GetVimInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVimInfoSnd)
};

/// The GetVimInfo answer: payload undefined, the header alone travels.
class CMDDATA_API CGetVimInfoRcv : public CCmdRcv<cmddata::command::GetVimInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVimInfoRcv)
};

/// The SetVimSystemTime request: payload undefined, the header alone travels.
class CMDDATA_API CSetVimSystemTimeSnd
    : public CCmdSnd<cmddata::command::SetVimSystemTime, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetVimSystemTimeSnd)
};

/// The SetVimSystemTime answer: payload undefined, the header alone travels.
class CMDDATA_API CSetVimSystemTimeRcv
    : public CCmdRcv<cmddata::command::SetVimSystemTime, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetVimSystemTimeRcv)
};

/// The SetCustomizeAllDefault request: payload undefined, the header alone travels.
class CMDDATA_API CSetCustomizeAllDefaultSnd
    : public CCmdSnd<cmddata::command::SetCustomizeAllDefault, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetCustomizeAllDefaultSnd)
};

/// The SetCustomizeAllDefault answer: payload undefined, the header alone travels.
class CMDDATA_API CSetCustomizeAllDefaultRcv
    : public CCmdRcv<cmddata::command::SetCustomizeAllDefault, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CSetCustomizeAllDefaultRcv)
};

/// The GetDischargeMonData request: payload undefined, the header alone travels.
class CMDDATA_API CGetDischargeMonDataSnd
    : public CCmdSnd<cmddata::command::GetDischargeMonData, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDischargeMonDataSnd)
};

/// The GetDischargeMonData answer: payload undefined, the header alone travels.
class CMDDATA_API CGetDischargeMonDataRcv
    : public CCmdRcv<cmddata::command::GetDischargeMonData, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDischargeMonDataRcv)
};

/// The GetSupport request: payload undefined, the header alone travels.
class CMDDATA_API CGetSupportSnd : public CCmdSnd<cmddata::command::GetSupport, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSupportSnd)
};

/// The GetSupport answer: payload undefined, the header alone travels.
class CMDDATA_API CGetSupportRcv : public CCmdRcv<cmddata::command::GetSupport, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSupportRcv)
};

/// The GetDescription request: payload undefined, the header alone travels.
class CMDDATA_API CGetDescriptionSnd
    : public CCmdSnd<cmddata::command::GetDescription, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDescriptionSnd)
};

/// The GetDescription answer: payload undefined, the header alone travels.
class CMDDATA_API CGetDescriptionRcv
    : public CCmdRcv<cmddata::command::GetDescription, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDescriptionRcv)
};

/// The GetTranslationStr request: payload undefined, the header alone travels.
class CMDDATA_API CGetTranslationStrSnd
    : public CCmdSnd<cmddata::command::GetTranslationStr, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetTranslationStrSnd)
};

/// The GetTranslationStr answer: payload undefined, the header alone travels.
class CMDDATA_API CGetTranslationStrRcv
    : public CCmdRcv<cmddata::command::GetTranslationStr, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetTranslationStrRcv)
};

/// The GetDispMessage request: payload undefined, the header alone travels.
class CMDDATA_API CGetDispMessageSnd
    : public CCmdSnd<cmddata::command::GetDispMessage, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDispMessageSnd)
};

/// The GetDispMessage answer: payload undefined, the header alone travels.
class CMDDATA_API CGetDispMessageRcv
    : public CCmdRcv<cmddata::command::GetDispMessage, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetDispMessageRcv)
};

/// The GetTirePressureInfo request: payload undefined, the header alone travels.
class CMDDATA_API CGetTirePressureInfoSnd
    : public CCmdSnd<cmddata::command::GetTirePressureInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetTirePressureInfoSnd)
};

/// The GetTirePressureInfo answer: payload undefined, the header alone travels.
class CMDDATA_API CGetTirePressureInfoRcv
    : public CCmdRcv<cmddata::command::GetTirePressureInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetTirePressureInfoRcv)
};

/// The VINControl request: payload undefined, the header alone travels.
class CMDDATA_API CVINControlSnd : public CCmdSnd<cmddata::command::VINControl, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CVINControlSnd)
};

/// The VINControl answer: payload undefined, the header alone travels.
class CMDDATA_API CVINControlRcv : public CCmdRcv<cmddata::command::VINControl, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CVINControlRcv)
};

/// The GetImageFFD request: payload undefined, the header alone travels.
class CMDDATA_API CGetImageFFDSnd : public CCmdSnd<cmddata::command::GetImageFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetImageFFDSnd)
};

/// The GetImageFFD answer: payload undefined, the header alone travels.
class CMDDATA_API CGetImageFFDRcv : public CCmdRcv<cmddata::command::GetImageFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetImageFFDRcv)
};

/// The GetMktMonRamData request: payload undefined, the header alone travels.
class CMDDATA_API CGetMktMonRamDataSnd
    : public CCmdSnd<cmddata::command::GetMktMonRamData, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMktMonRamDataSnd)
};

/// The GetMktMonRamData answer: payload undefined, the header alone travels.
class CMDDATA_API CGetMktMonRamDataRcv
    : public CCmdRcv<cmddata::command::GetMktMonRamData, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetMktMonRamDataRcv)
};

/// The GetVINCheckEcu request: payload undefined, the header alone travels.
class CMDDATA_API CGetVINCheckEcuSnd
    : public CCmdSnd<cmddata::command::GetVINCheckEcu, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVINCheckEcuSnd)
};

/// The GetVINCheckEcu answer: payload undefined, the header alone travels.
class CMDDATA_API CGetVINCheckEcuRcv
    : public CCmdRcv<cmddata::command::GetVINCheckEcu, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVINCheckEcuRcv)
};

/// The IsNonDisplayInfo request: payload undefined, the header alone travels.
class CMDDATA_API CIsNonDisplayInfoSnd
    : public CCmdSnd<cmddata::command::IsNonDisplayInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsNonDisplayInfoSnd)
};

/// The IsNonDisplayInfo answer: payload undefined, the header alone travels.
class CMDDATA_API CIsNonDisplayInfoRcv
    : public CCmdRcv<cmddata::command::IsNonDisplayInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsNonDisplayInfoRcv)
};

/// The IsImageFFD request: payload undefined, the header alone travels.
class CMDDATA_API CIsImageFFDSnd : public CCmdSnd<cmddata::command::IsImageFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsImageFFDSnd)
};

/// The IsImageFFD answer: payload undefined, the header alone travels.
class CMDDATA_API CIsImageFFDRcv : public CCmdRcv<cmddata::command::IsImageFFD, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsImageFFDRcv)
};

/// The GetSupportMulti request: payload undefined, the header alone travels.
class CMDDATA_API CGetSupportMultiSnd
    : public CCmdSnd<cmddata::command::GetSupportMulti, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSupportMultiSnd)
};

/// The GetSupportMulti answer: payload undefined, the header alone travels.
class CMDDATA_API CGetSupportMultiRcv
    : public CCmdRcv<cmddata::command::GetSupportMulti, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetSupportMultiRcv)
};

/// The GetImageSpecInfo request: payload undefined, the header alone travels.
class CMDDATA_API CGetImageSpecInfoSnd
    : public CCmdSnd<cmddata::command::GetImageSpecInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetImageSpecInfoSnd)
};

/// The GetImageSpecInfo answer: payload undefined, the header alone travels.
class CMDDATA_API CGetImageSpecInfoRcv
    : public CCmdRcv<cmddata::command::GetImageSpecInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetImageSpecInfoRcv)
};

/// The GetPartNumber request: payload undefined, the header alone travels.
class CMDDATA_API CGetPartNumberSnd
    : public CCmdSnd<cmddata::command::GetPartNumber, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPartNumberSnd)
};

/// The GetPartNumber answer: payload undefined, the header alone travels.
class CMDDATA_API CGetPartNumberRcv
    : public CCmdRcv<cmddata::command::GetPartNumber, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetPartNumberRcv)
};

/// The GetCBESTInfo request: payload undefined, the header alone travels.
class CMDDATA_API CGetCBESTInfoSnd
    : public CCmdSnd<cmddata::command::GetCBESTInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCBESTInfoSnd)
};

/// The GetCBESTInfo answer: payload undefined, the header alone travels.
class CMDDATA_API CGetCBESTInfoRcv
    : public CCmdRcv<cmddata::command::GetCBESTInfo, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCBESTInfoRcv)
};

/// The GetVimSupport request: payload undefined, the header alone travels.
class CMDDATA_API CGetVimSupportSnd
    : public CCmdSnd<cmddata::command::GetVimSupport, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVimSupportSnd)
};

/// The GetVimSupport answer: payload undefined, the header alone travels.
class CMDDATA_API CGetVimSupportRcv
    : public CCmdRcv<cmddata::command::GetVimSupport, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetVimSupportRcv)
};

/// The IsPCSSBRVehicle request: payload undefined, the header alone travels.
class CMDDATA_API CIsPCSSBRVehicleSnd
    : public CCmdSnd<cmddata::command::IsPCSSBRVehicle, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsPCSSBRVehicleSnd)
};

/// The IsPCSSBRVehicle answer: payload undefined, the header alone travels.
class CMDDATA_API CIsPCSSBRVehicleRcv
    : public CCmdRcv<cmddata::command::IsPCSSBRVehicle, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CIsPCSSBRVehicleRcv)
};
