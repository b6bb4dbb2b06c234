// Demo family: freeze frames (the values stored with a trouble code, looked up by item id).
#include <cstdio>

#include "cmddata/cmddata.h"
#include "demo.h"
#include "scenario_util.h"

namespace cmdtool {

namespace {

// The stored frame of the simulated ECU; every value is invented for the demo.
struct FrameItem {
    std::uint16_t number;
    const char* name;
    const char* unit;
    std::uint16_t bits;
    std::uint8_t signMode;
    std::int32_t numerator;
    std::uint32_t denominator;
    std::int32_t offset;
    std::uint32_t raw;
    const char* texts[3];  // display entries for values 0, 1, 2 (null: none)
};
const FrameItem kFrame[] = {
    {1, "Vehicle speed", "km/h", 8, 0, 1, 1, 0, 62, {nullptr, nullptr, nullptr}},
    {2, "Engine speed", "rpm", 16, 0, 1, 4, 0, 0x0C80, {nullptr, nullptr, nullptr}},
    {3, "Coolant temperature", "degC", 8, 0, 1, 1, -40, 0x78, {nullptr, nullptr, nullptr}},
    {4, "Ambient temperature", "degC", 8, 1, 1, 1, 0, 0xFB, {nullptr, nullptr, nullptr}},
    {5, "Fuel system status", "", 8, 0, 1, 1, 0, 2, {"Off", "Open loop", "Closed loop"}},
};
constexpr std::uint32_t kDiagCode = 0x00D0E001;  // an invented trouble code number
constexpr char kItemId = 1;                      // the stored item's identifier in each frame item

std::uint32_t AnswerFrame(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CGetFrzFrmDatSnd&>(request);
    auto& out = dynamic_cast<CGetFrzFrmDatRcv&>(answer);
    out.diagCode = in.diagCode;
    if (in.diagCode != kDiagCode) return outcome::kNoSuchItem;
    for (const FrameItem& f : kFrame) {
        CCmdFrzFrmDat& item = out.frames.GetAt(out.frames.AddTail());
        item.itemNumber = f.number;
        SetText(item.name, f.name);
        SetText(item.unit, f.unit);
        item.displayFlag = 1;
        item.validFlag = 1;
        CCmdConversionTbl& c = item.conversion;
        c.scaleNumerator = static_cast<std::uint32_t>(f.numerator);
        c.scaleDenominator = f.denominator;
        c.offset = static_cast<std::uint32_t>(f.offset);
        c.signMode = f.signMode;
        c.bitWidth = f.bits;
        for (std::uint32_t v = 0; v < 3; ++v) {
            if (f.texts[v] == nullptr) continue;
            CCmdDispInfo& entry = c.displayEntries.GetAt(c.displayEntries.AddTail());
            entry.entryId = v + 1;
            SetText(entry.displayText, f.texts[v]);
            entry.matchValue = v;
        }
        CCmdMultiData& stored = item.items.GetAt(item.items.AddTail());
        stored.itemId = kItemId;
        stored.rawValue = f.raw;
        SetRaw(stored.data, f.raw, (f.bits + 7u) / 8u);
    }
    AddByte(out.frameNumbers, in.frameNumber);
    AddByte(out.frameNumbers, static_cast<std::uint8_t>(in.frameNumber + 1));
    out.SetStatusWord(2, out.frames.GetCount());
    return outcome::kDone;
}

const ResponderEntry kResponders[] = {
    {cmddata::cmd::GetFrzFrmDat, &AnswerFrame},
};

bool Play(Session& s) {
    std::ostream& out = s.Out();
    char line[200];
    CGetFrzFrmDatSnd request;
    request.frameNumber = 1;
    request.recordNumber = 0;
    request.diagCode = kDiagCode;
    CGetFrzFrmDatRcv answer;
    if (!s.Exchange(cmddata::cmd::GetFrzFrmDat, request, answer)) return false;
    std::snprintf(line, sizeof(line), "       trouble code 0x%08X, %u items, frames stored:",
                  static_cast<unsigned>(answer.diagCode),
                  static_cast<unsigned>(answer.frames.GetCount()));
    out << line;
    answer.frameNumbers.ForEach(
        [&](const CCmdByteData& n) { out << " " << static_cast<unsigned>(n); });
    out << "\n";
    answer.frames.ForEach([&](const CCmdFrzFrmDat& item) {
        const std::int32_t value = item.GetValue(kItemId);
        const std::uint16_t* text = item.GetString(kItemId);
        std::snprintf(line, sizeof(line),
                      "       %2u %-20s GetValue(%d) = %d %s, GetString(%d) = %s\n",
                      static_cast<unsigned>(item.itemNumber), TextOf(item.name).c_str(),
                      static_cast<int>(kItemId), static_cast<int>(value), TextOf(item.unit).c_str(),
                      static_cast<int>(kItemId),
                      text != nullptr ? ("\"" + Utf16ToUtf8(text) + "\"").c_str() : "(none)");
        out << line;
    });
    return true;
}

}  // namespace

extern const Family kFreezeFrameFamily = {"freeze frames", &Play, kResponders,
                                          sizeof(kResponders) / sizeof(kResponders[0])};

}  // namespace cmdtool
