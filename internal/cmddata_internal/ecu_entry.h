// The field run that the multi-monitor's ECU records, in the records layer and in the family,
// share.
#pragma once

#include <cstdint>

#include "cmddata/core/core.h"

namespace cmddata {
namespace detail {

// An ECU number, then one member through its own transfer, whatever its type: the ECU records
// that carry a name and those that carry item identifiers share this.
template <class P, class Member>
void EcuAndMember(P& p, CCmdCore& self, std::uint32_t& ecuNumber, const char* name,
                  Member& member) {
    p.Prefix(self);
    p.U32("ecu_number", ecuNumber);
    p.Record(name, member);
}

}  // namespace detail
}  // namespace cmddata
