// Message layouts shared by several commands, and the constructor helpers every message uses.
#pragma once

#include <cstdint>

#include "cmddata/command/catalogue.h"
#include "cmddata/command/header.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

namespace cmddata {
/// The version a send message's constructor uses by default (from the catalogue).
constexpr std::uint16_t SndVersion(std::uint32_t id) { return DefaultVersion(id, Side::kSend); }
/// The version a receive message's constructor uses by default (from the catalogue).
constexpr std::uint16_t RcvVersion(std::uint32_t id) { return DefaultVersion(id, Side::kReceive); }
}  // namespace cmddata

/// A message that carries its header and nothing else (20 bytes on the wire).
class CMDDATA_API CCmdHeaderOnly : public CCmdBase {
    CMDDATA_FIELDS(CCmdHeaderOnly)
public:
    explicit CCmdHeaderOnly(std::uint32_t commandId, std::uint16_t version = 1)
        : CCmdBase(commandId, version, 0) {}
};

/// A message that carries its header, then a list of 16-bit item identifiers.
class CMDDATA_API CCmdWordIdListMessage : public CCmdBase {
    CMDDATA_FIELDS(CCmdWordIdListMessage)
public:
    explicit CCmdWordIdListMessage(std::uint32_t commandId, std::uint16_t version = 1)
        : CCmdBase(commandId, version, 0) {}
    CCmdList<CCmdWordId> itemIds;
};

/// A message that carries its header, then an item identifier (u16), the item's value (u32)
/// and a qualifying word (u32) whose meaning the two processes agree on per command.
class CMDDATA_API CCmdItemValueMessage : public CCmdBase {
    CMDDATA_FIELDS(CCmdItemValueMessage)
public:
    explicit CCmdItemValueMessage(std::uint32_t commandId, std::uint16_t version = 1)
        : CCmdBase(commandId, version, 0) {}
    std::uint16_t itemId = 0;
    std::uint32_t value = 0;
    std::uint32_t qualifier = 0;
};
