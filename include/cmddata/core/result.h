// Result codes: the library's whole error vocabulary.
#pragma once

#include <cstdint>

#include "cmddata/platform/export.h"

namespace cmddata {

/// A transfer's or accessor's outcome; 0 is success.
using Result = std::uint32_t;

namespace result {
constexpr Result kOk = 0x00000000;
/// A null pointer or a byte count below 1 (also a buffer that would outgrow 32 bits).
constexpr Result kBadArgument = 0xC0080001;
/// A heap allocation failed.
constexpr Result kOutOfMemory = 0xA0080002;
/// The transfer would pass the end of the region; nothing moved.
constexpr Result kPastEnd = 0x80080003;
/// The stream has no mapped view.
constexpr Result kNotAttached = 0xA0080004;
/// The bytes differed when compared right after the copy.
constexpr Result kVerifyFailed = 0xA0080005;
/// An accessor's output pointer is null.
constexpr Result kNullOutput = 0xC0040001;
/// An accessor's wanted item is missing, or its text fails a check.
constexpr Result kItemMissing = 0xA0040004;
/// An accessor could not allocate its copy of the caller's bytes.
constexpr Result kAccessorOutOfMemory = 0xA0040002;
}  // namespace result

/// A short English name for a result code ("past end", ...); never null.
CMDDATA_API const char* ResultName(Result code);

}  // namespace cmddata
