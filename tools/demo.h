// What the demo's two processes share: the region's layout with its control block, the fill that
// both sides expect of every message, and the showcases.
//
// The region holds one message at a time from its start; its last kControlSize bytes are the
// demo's own control block, never touched by a message. Through it the requesting side names the
// command of each request (a message without a header cannot be told from its bytes) and the
// showcase that answers it, and the vehicle side reports how it recognised the request and what
// it found wrong with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "cmddata/command/catalogue.h"
#include "cmddata/core/core.h"
#include "cmddata/table/classes.h"

namespace cmdtool {

constexpr std::uint32_t kRegionSize = 1024 * 1024;
constexpr std::uint32_t kControlSize = 128;
constexpr std::uint32_t kControlOffset = kRegionSize - kControlSize;
/// Before the control block, the history of recent messages that 'cmddata watch' follows
/// (history.h); only the requesting side writes it.
constexpr std::uint32_t kHistorySize = 512 * 1024;
constexpr std::uint32_t kHistoryOffset = kControlOffset - kHistorySize;
constexpr std::uint32_t kMessageArea = kHistoryOffset;

/// How the vehicle side recognised a request.
enum class Recognised : std::uint32_t {
    kNot = 0,         // its bytes do not name the command the control block names
    kPlainHeader,     // by the leading identifier
    kPrefixedHeader,  // by the identifier behind the version prefix
    kControlWord,     // the message has no header: by the control block alone
};

/// The control block at the end of the region.
struct Control {
    std::uint32_t command = 0;   // requesting side: position in the catalogue + 1
    std::uint32_t showcase = 0;  // requesting side: the showcase answer to give (0: the fill)
    Recognised recognised = Recognised::kNot;  // vehicle side
    std::uint32_t answerSize = 0;              // vehicle side: bytes of the answer it wrote
    std::string problem;  // vehicle side: what is wrong with the request (empty: nothing)

    void Store(unsigned char* block) const;
    static Control Load(const unsigned char* block);
};

/// The library's fill seed of a command's side (cmddata::FillSeed); skew shifts it, to test
/// that a difference is caught.
std::uint32_t DemoSeed(const cmddata::CommandInfo& command, cmddata::Side side, bool skew = false);

/// The object's bytes on the wire (empty with *code set when the write fails).
std::vector<unsigned char> WireBytes(CCmdCore& object, cmddata::Result* code);

/// Checks a message as it lies at data (size bytes available) against the class's object built
/// at version and filled with seed: the same bytes, a decode that takes exactly those bytes, and
/// the decoded object written again giving them back (for a class whose read order crosses its
/// write order, giving back what a decode of the expected bytes gives). Returns an empty string
/// when all hold, else what differs; *messageSize gets the expected size.
std::string CheckFilled(const cmddata::ClassInfo& cls, std::uint16_t version, std::uint32_t seed,
                        const unsigned char* data, std::uint32_t size, std::uint32_t* messageSize);

/// The requesting side's link to the vehicle side, as the showcases use it.
class Session {
public:
    virtual ~Session() = default;
    /// Exchanges request and answer for the command, answered on the vehicle side by the
    /// showcase answer of that number; prints the transcript line. False when the exchange broke
    /// or the answer did not decode (the reason is printed).
    virtual bool Exchange(const cmddata::CommandInfo& command, std::uint32_t answer,
                          CCmdCore& request, CCmdCore& response) = 0;
    virtual std::ostream& Out() = 0;
};

/// A short section that shows what the library computes from an answer of invented data.
struct Showcase {
    const char* title;
    void (*play)(Session& session);
};
const Showcase* Showcases(std::size_t* count);

/// The vehicle side's answer for a showcase (numbers from 1); null for an unknown number.
using ShowcaseAnswer = void (*)(CCmdCore& request, CCmdCore& answer);
ShowcaseAnswer FindShowcaseAnswer(std::uint32_t number);

}  // namespace cmdtool
