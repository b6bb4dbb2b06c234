// Multi-monitor records that several families use: the ECU entries of a recording and the
// trigger layouts.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// One ECU of a planned recording with the items to record (the transfer of CCmdMultiMonData,
/// with the item list in place of the name).
class CMDDATA_API CCmdCheckMultiMon : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCheckMultiMon)
    CCmdCheckMultiMon() = default;
    std::uint32_t ecuNumber = 0;
    CCmdList<CCmdWordId> itemIds;
};

/// One ECU of a recording to start with its items; the layout of CCmdCheckMultiMon.
class CMDDATA_API CCmdStartMultiMon : public CCmdCheckMultiMon {
public:
    CMDDATA_SAME_LAYOUT(CCmdStartMultiMon)
    CCmdStartMultiMon() = default;
};

/// Trigger settings: three words. Built on the header (identifier 5, version 1), yet only the
/// version prefix and the three words travel: no header word is sent (10 bytes).
class CMDDATA_API CCmdTriggerInfo : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdTriggerInfo)
    CCmdTriggerInfo() : CCmdBase(5, 1, 0) {}
    std::uint16_t triggerMode = 0;
    std::uint16_t preTrigger = 0;
    std::uint16_t postTrigger = 0;
};

/// One signal of a trigger parameter.
class CMDDATA_API CCmdParamSignalInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdParamSignalInfo)
    CCmdParamSignalInfo() = default;
    std::uint16_t itemId = 0;
    std::uint16_t comparison = 0;
    std::uint32_t value = 0;
    std::uint32_t lowerValue = 0;
    std::uint32_t upperValue = 0;
};

/// Trigger parameters: two words, the signals and the items. Built on the header (identifier
/// 6, version 1), yet only the version prefix and its own fields travel.
class CMDDATA_API CCmdTriggerParam : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdTriggerParam)
    CCmdTriggerParam() : CCmdBase(6, 1, 0) {}
    std::uint16_t triggerMode = 0;
    std::uint16_t combination = 0;
    CCmdList<CCmdParamSignalInfo> signals;
    CCmdList<CCmdWordId> itemIds;
};
