// The content both demo processes expect of every message: its class filled by cmddata::Fill
// with a seed of the command and side, and the checks of what arrived against it.
#include <cstring>
#include <memory>

#include "cmddata/core/describe.h"
#include "cmddata/core/result.h"
#include "demo.h"
#include "text.h"

namespace cmdtool {

namespace {

std::string ResultText(cmddata::Result code) {
    return HexWord(code, 4) + " " + cmddata::ResultName(code);
}

// Offset of the first byte where the two differ, or -1 when they are equal.
long FirstDifference(const unsigned char* a, const std::vector<unsigned char>& b) {
    for (std::size_t i = 0; i < b.size(); ++i)
        if (a[i] != b[i]) return static_cast<long>(i);
    return -1;
}

}  // namespace

void Control::Store(unsigned char* block) const {
    std::memset(block, 0, kControlSize);
    const std::uint32_t words[4] = {command, showcase, static_cast<std::uint32_t>(recognised),
                                    answerSize};
    std::memcpy(block, words, sizeof words);
    std::memcpy(block + sizeof words, problem.data(),
                problem.size() < kControlSize - sizeof words - 1 ? problem.size()
                                                                 : kControlSize - sizeof words - 1);
}

Control Control::Load(const unsigned char* block) {
    std::uint32_t words[4];
    std::memcpy(words, block, sizeof words);
    Control c;
    c.command = words[0];
    c.showcase = words[1];
    c.recognised = static_cast<Recognised>(words[2]);
    c.answerSize = words[3];
    const char* text = reinterpret_cast<const char*>(block + sizeof words);
    const std::size_t room = kControlSize - sizeof words;
    const void* end = std::memchr(text, 0, room);
    c.problem.assign(text, end != nullptr ? static_cast<const char*>(end) - text : room);
    return c;
}

std::uint32_t DemoSeed(const cmddata::CommandInfo& command, cmddata::Side side, bool skew) {
    return cmddata::FillSeed(command, side) + (skew ? 100 : 0);
}

std::vector<unsigned char> WireBytes(CCmdCore& object, cmddata::Result* code) {
    *code = 0;
    std::vector<unsigned char> bytes(cmddata::WireSize(object));
    if (bytes.empty()) return bytes;
    CCmdWriter writer;
    writer.AttachView(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    writer.Write(&object);
    *code = writer.GetLastError();
    if (*code != 0 || writer.GetPosition() != bytes.size()) bytes.clear();
    return bytes;
}

std::string CheckFilled(const cmddata::ClassInfo& cls, std::uint16_t version, std::uint32_t seed,
                        const unsigned char* data, std::uint32_t size, std::uint32_t* messageSize) {
    std::unique_ptr<CCmdCore> expected(cls.make(version));
    std::unique_ptr<CCmdCore> received(cls.make(version));
    if (!expected || !received) return "out of memory";
    cmddata::Fill(*expected, seed);
    cmddata::Result code = 0;
    const std::vector<unsigned char> bytes = WireBytes(*expected, &code);
    *messageSize = static_cast<std::uint32_t>(bytes.size());
    if (code != 0) return "the expected fill does not write: result " + ResultText(code);
    if (bytes.size() > size) return "the expected fill is larger than the region";
    const long at = FirstDifference(data, bytes);
    if (at >= 0)
        return "differs from the expected fill at offset " + std::to_string(at) + " of " +
               std::to_string(bytes.size());

    CCmdReader reader;
    reader.AttachView(const_cast<unsigned char*>(data), size);
    reader.Read(received.get());
    if (reader.GetLastError() != 0)
        return "does not decode: result " + ResultText(reader.GetLastError());
    if (reader.GetPosition() != bytes.size())
        return "the decode takes " + std::to_string(reader.GetPosition()) + " of its " +
               std::to_string(bytes.size()) + " bytes";

    // Written again, the decoded object gives the bytes back; where the class reads some fields
    // crosswise, it gives what a decode of the expected bytes gives here.
    std::vector<unsigned char> again = bytes;
    if (cls.crossed) {
        std::unique_ptr<CCmdCore> local(cls.make(version));
        if (!local) return "out of memory";
        reader.AttachView(again.data(), static_cast<std::uint32_t>(again.size()));
        reader.Read(local.get());
        again = WireBytes(*local, &code);
    }
    const std::vector<unsigned char> rewritten = WireBytes(*received, &code);
    if (rewritten.size() != again.size())
        return "written again after decoding it takes " + std::to_string(rewritten.size()) +
               " bytes, not " + std::to_string(again.size());
    const long diff = FirstDifference(rewritten.data(), again);
    if (diff >= 0)
        return "written again after decoding it differs at offset " + std::to_string(diff);
    return std::string();
}

}  // namespace cmdtool
