// The demo's families, in playing order. A new family adds its scenario file and one line here.
#include "demo.h"

namespace cmdtool {

extern const Family kVehicleFamily;
extern const Family kMonitorFamily;
extern const Family kFreezeFrameFamily;

namespace {
const Family* const kFamilies[] = {&kVehicleFamily, &kMonitorFamily, &kFreezeFrameFamily};
}

const Family* const* Families(std::size_t* count) {
    *count = sizeof(kFamilies) / sizeof(kFamilies[0]);
    return kFamilies;
}

Responder FindResponder(std::uint32_t command) {
    for (const Family* family : kFamilies)
        for (std::size_t i = 0; i < family->responderCount; ++i)
            if (family->responders[i].command == command) return family->responders[i].answer;
    return nullptr;
}

const char* OutcomeName(std::uint32_t code) {
    switch (code) {
        case outcome::kDone:
            return "done";
        case outcome::kUnknownCommand:
            return "unknown command";
        case outcome::kBadRequest:
            return "request did not decode";
        case outcome::kNotSupported:
            return "not supported by the vehicle";
        case outcome::kNoSuchItem:
            return "no such item";
        default:
            return "unknown outcome";
    }
}

std::uint32_t OutcomeOf(CCmdCore& message) {
    CCmdHeaderWords* words = dynamic_cast<CCmdHeaderWords*>(&message);
    return words != nullptr ? words->GetStatusWord(1) : 0;
}

}  // namespace cmdtool
