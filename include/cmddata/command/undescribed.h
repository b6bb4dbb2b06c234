// The catalogue commands whose payload is not known: each keeps its identifier, its constructors'
// version rule and its framing (GetTirePressureInfo puts the version prefix before its header),
// and carries the header alone. The catalogue marks them (payloadKnown false), so that the tools
// can tell a user that whatever follows the header in a region is not decoded.
#pragma once

#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"

/// Each line: the request and the answer of a command of undefined payload, the header alone.
CMDDATA_HEADER_ONLY_COMMAND(GetVimInfo);
CMDDATA_HEADER_ONLY_COMMAND(SetVimSystemTime);
CMDDATA_HEADER_ONLY_COMMAND(SetCustomizeAllDefault);
CMDDATA_HEADER_ONLY_COMMAND(GetDischargeMonData);
CMDDATA_HEADER_ONLY_COMMAND(GetSupport);
CMDDATA_HEADER_ONLY_COMMAND(GetDescription);
CMDDATA_HEADER_ONLY_COMMAND(GetTranslationStr);
CMDDATA_HEADER_ONLY_COMMAND(GetDispMessage);
CMDDATA_HEADER_ONLY_COMMAND(GetTirePressureInfo);
CMDDATA_HEADER_ONLY_COMMAND(VINControl);
CMDDATA_HEADER_ONLY_COMMAND(GetImageFFD);
CMDDATA_HEADER_ONLY_COMMAND(GetMktMonRamData);
CMDDATA_HEADER_ONLY_COMMAND(GetVINCheckEcu);
CMDDATA_HEADER_ONLY_COMMAND(IsNonDisplayInfo);
CMDDATA_HEADER_ONLY_COMMAND(IsImageFFD);
CMDDATA_HEADER_ONLY_COMMAND(GetSupportMulti);
CMDDATA_HEADER_ONLY_COMMAND(GetImageSpecInfo);
CMDDATA_HEADER_ONLY_COMMAND(GetPartNumber);
CMDDATA_HEADER_ONLY_COMMAND(GetCBESTInfo);
CMDDATA_HEADER_ONLY_COMMAND(GetVimSupport);
CMDDATA_HEADER_ONLY_COMMAND(IsPCSSBRVehicle);
