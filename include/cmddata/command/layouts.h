// Message layouts shared by several commands. A message that carries one names it as the layout
// of its base: class CStartDatMonSnd : public CCmdSnd<command::StartDatMon, CCmdWordIdListMessage>.
#pragma once

#include <cstdint>

#include "cmddata/command/catalogue.h"
#include "cmddata/command/header.h"
#include "cmddata/command/message.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// A message that carries its header and nothing else (20 bytes on the wire).
class CMDDATA_API CCmdHeaderOnly : public CCmdBase {
public:
    CMDDATA_NUMBER_FIELDS(CCmdHeaderOnly)
    CCmdHeaderOnly(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
};
template <class P>
inline void CCmdHeaderOnly::Fields(P& p) {
    Header(p);
}

/// Both messages of a command that carry the header alone, C<Command>Snd and C<Command>Rcv,
/// declared in one line: CMDDATA_HEADER_ONLY_COMMAND(GetVimInfo);
#define CMDDATA_HEADER_ONLY_COMMAND(Command)                          \
    class CMDDATA_API C##Command##Snd                                 \
        : public CCmdSnd<cmddata::command::Command, CCmdHeaderOnly> { \
    public:                                                           \
        CMDDATA_MESSAGE_LAYOUT(C##Command##Snd)                       \
    };                                                                \
    class CMDDATA_API C##Command##Rcv                                 \
        : public CCmdRcv<cmddata::command::Command, CCmdHeaderOnly> { \
    public:                                                           \
        CMDDATA_MESSAGE_LAYOUT(C##Command##Rcv)                       \
    }

/// A message that carries its header, then a list of 16-bit item identifiers.
class CMDDATA_API CCmdWordIdListMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdWordIdListMessage)
    CCmdWordIdListMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdWordId> itemIds;
};

/// A message that carries its header, then an item identifier (u16), the item's value (u32)
/// and a qualifying word (u32) whose meaning the two processes agree on per command.
class CMDDATA_API CCmdItemValueMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdItemValueMessage)
    CCmdItemValueMessage(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    std::uint16_t itemId = 0;
    std::uint32_t value = 0;
    std::uint32_t qualifier = 0;
};
