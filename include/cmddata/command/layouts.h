// Message layouts shared by several commands, and the constructor helpers every message uses.
#pragma once

#include <cstdint>

#include "cmddata/command/catalogue.h"
#include "cmddata/command/header.h"
#include "cmddata/core/fields.h"

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
