// The demo's two roles and what a family brings to them. A family (one scenario_*.cpp file)
// plays its requests on the requesting side through a Session, and answers them on the vehicle
// side through its responders, from a small simulated vehicle with invented data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>

#include "cmddata/command/header.h"
#include "cmddata/core/core.h"

namespace cmdtool {

/// What the vehicle side puts in status word 1 of an answer (status word 2 carries a count or
/// detail that the command's family chooses).
namespace outcome {
constexpr std::uint32_t kDone = 0;
constexpr std::uint32_t kUnknownCommand = 1;  // the identifier names no command
constexpr std::uint32_t kBadRequest = 2;      // the request did not decode
constexpr std::uint32_t kNotSupported = 3;    // the simulated vehicle has no answer for it
constexpr std::uint32_t kNoSuchItem = 4;      // an asked item does not exist
}  // namespace outcome
const char* OutcomeName(std::uint32_t code);

/// The requesting side's link to the vehicle side.
class Session {
public:
    virtual ~Session() = default;
    /// Writes request into the region, signals, waits for the answer and reads it into answer.
    /// Prints one transcript line with both sizes on the wire and the outcome. False when the
    /// exchange broke (the reason is printed); the demo then stops.
    virtual bool Exchange(std::uint32_t command, CCmdCore& request, CCmdCore& answer) = 0;
    virtual std::ostream& Out() = 0;
};

/// Status word 1 of a message (0 for a message without header words).
std::uint32_t OutcomeOf(CCmdCore& message);

/// Fills answer for request; returns the outcome for status word 1.
using Responder = std::uint32_t (*)(CCmdCore& request, CCmdCore& answer);

struct ResponderEntry {
    std::uint32_t command;
    Responder answer;
};

struct Family {
    const char* title;
    bool (*play)(Session& session);  // false: the demo stops
    const ResponderEntry* responders;
    std::size_t responderCount;
};

/// The families of the demo, in the order they are played (scenarios.cpp).
const Family* const* Families(std::size_t* count);
/// The responder for a command, or null.
Responder FindResponder(std::uint32_t command);

}  // namespace cmdtool
