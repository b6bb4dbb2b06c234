// Decoding a region's bytes as one message: shared by dump and the demo's transcript.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cmddata/command/catalogue.h"
#include "field_tree.h"

namespace cmdtool {

/// One attempt to decode bytes as a command's side.
struct Decoded {
    const cmddata::CommandInfo* command = nullptr;
    cmddata::Side side = cmddata::Side::kSend;
    std::uint16_t version = 1;
    bool standIn = false;  // decoded with a header-only stand-in (classes not built)
    std::string className;
    cmddata::Result code = 0;
    std::uint32_t consumed = 0;  // bytes taken by a complete decode
    std::uint32_t extent = 0;    // end of the furthest field that decoded
    FieldNode root;
    DecodeFailure failure;
    std::string message;  // a complete decode: the object's JSON (cmddata/core/json.h)
    bool exact = false;   // that object writes the bytes decoded as they are

    bool Complete() const { return !failure.failed && code == 0; }
};

/// Decodes data[0..size) as the command's side, built with version. False when there is nothing
/// that could decode it (a command without header whose classes are not built).
bool DecodeAs(const unsigned char* data, std::uint32_t size, const cmddata::CommandInfo& command,
              cmddata::Side side, std::uint16_t version, Decoded* out);

}  // namespace cmdtool
