// The demo's showcases: a few answers of invented, meaningful data and what the library computes
// from them (vehicle information codes, monitor conversions, freeze-frame values, active-test
// set values, multi-monitor recording time, trouble-code counts per ECU, a vehicle selection read
// through the vehicle-information accessors). Each answer
// has a number that the requesting side names in the control block; the vehicle side builds it
// here. Every other command is exchanged by the generic walk and needs nothing here.
#include <cstdio>
#include <map>
#include <string>

#include "cmddata/cmddata.h"
#include "demo.h"
#include "text.h"

namespace cmdtool {

namespace {

// Texts in and out of CCmdString (16-bit characters with the terminator, as the peers expect).
void SetText(CCmdString& target, const std::string& text) {
    const std::u16string wide = Ascii16(text);
    target = reinterpret_cast<const std::uint16_t*>(wide.c_str());
}
std::string TextOf(const CCmdString& text) {
    return Utf16ToUtf8(text.GetBytes(), text.GetSize(), nullptr);
}
std::string Quoted(const std::uint16_t* text) {
    return text != nullptr ? "\"" + Utf16ToUtf8(text) + "\"" : "(none)";
}

// A raw value as little-endian bytes of the given width (1 to 4), and back.
void SetRaw(CCmdBuffer& buffer, std::uint32_t raw, std::uint32_t width) {
    const unsigned char bytes[4] = {
        static_cast<unsigned char>(raw), static_cast<unsigned char>(raw >> 8),
        static_cast<unsigned char>(raw >> 16), static_cast<unsigned char>(raw >> 24)};
    buffer.SetAt(bytes, width > 4 ? 4 : width);
}
std::uint32_t RawOf(const CCmdBuffer& buffer) {
    std::uint32_t raw = 0;
    for (std::uint32_t i = 0; i < buffer.GetSize() && i < 4; ++i)
        raw |= static_cast<std::uint32_t>(buffer.GetAt()[i]) << (8 * i);
    return raw;
}

std::string Code(cmddata::Result r) { return HexWord(r, 4); }

enum Answer : std::uint32_t {
    kCarInfo = 1,
    kSignalInfo,
    kMonitorValues,
    kFreezeFrame,
    kActiveTest,
    kMeasureInfo,
    kMountEcus,
    kSelectByVin,
};

// --- Vehicle information: the coded items packed into numbers by the accessors.

struct CarItem {
    std::uint16_t id;
    const char* text;
};
const CarItem kCarItems[] = {{1, "QZX7DMO"}, {2, "9SIMV8"}, {3, "2031"}};

void AnswerCarInfo(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CGetCarInfoSnd&>(request);
    auto& out = dynamic_cast<CGetCarInfoRcv&>(answer);
    in.itemIds.ForEach([&](const CCmdWordId& wanted) {
        for (const CarItem& item : kCarItems) {
            if (item.id != static_cast<std::uint16_t>(wanted)) continue;
            CCmdCarInfo& info = out.carInfo.GetAt(out.carInfo.AddTail());
            info.itemId = item.id;
            SetText(info.text, item.text);
        }
    });
}

// Two packed words back to the characters they carry (big-endian, zero bytes end the text).
std::string Unpack(std::uint32_t high, std::uint32_t low) {
    std::string out;
    for (std::uint32_t word : {high, low})
        for (int shift = 24; shift >= 0; shift -= 8) {
            const char c = static_cast<char>((word >> shift) & 0xFF);
            if (c != 0) out += c;
        }
    return out;
}

void PlayVehicle(Session& s) {
    CGetCarInfoSnd request;
    for (const CarItem& item : kCarItems)
        request.itemIds.GetAt(request.itemIds.AddTail()) = item.id;
    CGetCarInfoRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::GetCarInfo], kCarInfo, request, answer))
        return;
    char line[160];
    std::uint32_t high = 0, low = 0, year = 0;
    const auto show = [&](const char* label, cmddata::Result r) {
        if (r == 0)
            std::snprintf(line, sizeof line, "       %s high 0x%08X low 0x%08X  \"%s\"\n", label,
                          static_cast<unsigned>(high), static_cast<unsigned>(low),
                          Unpack(high, low).c_str());
        else
            std::snprintf(line, sizeof line, "       %s -> %s\n", label, Code(r).c_str());
        s.Out() << line;
    };
    show("GetDwordCarInfo   ", answer.GetDwordCarInfo(&high, &low));
    show("GetDwordEngineType", answer.GetDwordEngineType(&high, &low));
    const cmddata::Result r = answer.GetDwordModelYear(&year);
    s.Out() << "       GetDwordModelYear  " << (r == 0 ? std::to_string(year) : "-> " + Code(r))
            << "\n";
}

// --- Data monitor: conversion tables, then raw samples converted through them.

struct Signal {
    std::uint16_t id;
    const char* name;
    const char* unit;
    std::uint16_t bits;
    std::uint8_t signMode;  // 1: two's complement
    std::int32_t numerator;
    std::uint32_t denominator;
    std::int32_t offset;
    std::uint32_t sample;  // the raw value sampled
    const char* offText;   // display entries 0 / 1, for a state signal
    const char* onText;
};
const Signal kSignals[] = {
    {0x0101, "Engine speed", "rpm", 16, 0, 1, 4, 0, 0x0C80, nullptr, nullptr},
    {0x0102, "Coolant temperature", "degC", 8, 0, 1, 1, -40, 0x78, nullptr, nullptr},
    {0x0104, "Cooling fan", "", 1, 0, 1, 1, 0, 1, "OFF", "ON"},
    {0x0105, "Ignition advance", "deg", 8, 1, 1, 2, 0, 0xF4, nullptr, nullptr},
};

void AnswerSignalInfo(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetDatMonSignalInfoRcv&>(answer);
    for (const Signal& s : kSignals) {
        CCmdDatMonSignalInfo& info = out.signals.GetAt(out.signals.AddTail());
        info.signalId = s.id;
        SetText(info.name, s.name);
        SetText(info.unit, s.unit);
        info.bitLength = s.bits;
        CCmdConversionTbl& c = info.conversion;
        c.scaleNumerator = static_cast<std::uint32_t>(s.numerator);
        c.scaleDenominator = s.denominator;
        c.offset = static_cast<std::uint32_t>(s.offset);
        c.signMode = s.signMode;
        c.bitWidth = s.bits;
        if (s.offText == nullptr) continue;
        const char* texts[2] = {s.offText, s.onText};
        for (std::uint32_t v = 0; v < 2; ++v) {
            CCmdDispInfo& entry = c.displayEntries.GetAt(c.displayEntries.AddTail());
            entry.entryId = v + 1;
            SetText(entry.displayText, texts[v]);
            entry.matchValue = v;
        }
    }
}

void AnswerMonitorValues(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetDatMonValueRcv&>(answer);
    for (const Signal& s : kSignals) {
        CCmdDatMonValue& v = out.values.GetAt(out.values.AddTail());
        v.itemId = s.id;
        SetRaw(v.sample, s.sample, (s.bits + 7u) / 8u);
    }
}

void PlayMonitor(Session& s) {
    char line[200];
    CGetDatMonSignalInfoSnd infoRequest;
    for (const Signal& sig : kSignals)
        infoRequest.itemIds.GetAt(infoRequest.itemIds.AddTail()) = sig.id;
    CGetDatMonSignalInfoRcv infos;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::GetDatMonSignalInfo], kSignalInfo,
                    infoRequest, infos))
        return;
    std::map<std::uint32_t, const CCmdDatMonSignalInfo*> byId;
    infos.signals.ForEach([&](const CCmdDatMonSignalInfo& info) { byId[info.signalId] = &info; });

    CGetDatMonValueSnd valueRequest;
    valueRequest.requestId = 1;
    valueRequest.sampleCount = 1;
    CGetDatMonValueRcv values;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::GetDatMonValue], kMonitorValues,
                    valueRequest, values))
        return;
    values.values.ForEach([&](const CCmdDatMonValue& v) {
        auto it = byId.find(v.itemId);
        if (it == byId.end()) return;
        const CCmdConversionTbl& c = it->second->conversion;
        const std::int32_t value = c.Convert(RawOf(v.sample));
        const std::uint16_t* text = c.FindText(static_cast<std::uint32_t>(value));
        std::snprintf(line, sizeof line, "       %-20s raw %-6s x %d / %u %+d -> %d %s%s%s\n",
                      TextOf(it->second->name).c_str(),
                      HexBytes(v.sample.GetAt(), v.sample.GetSize()).c_str(),
                      static_cast<int>(c.scaleNumerator), static_cast<unsigned>(c.scaleDenominator),
                      static_cast<int>(c.offset), static_cast<int>(value),
                      TextOf(it->second->unit).c_str(), text != nullptr ? " " : "",
                      text != nullptr ? Quoted(text).c_str() : "");
        s.Out() << line;
    });
}

// --- Freeze frames: the stored values looked up by item id, converted, or as display text.

struct FrameItem {
    std::uint16_t number;
    const char* name;
    const char* unit;
    std::uint16_t bits;
    std::uint8_t signMode;
    std::int32_t offset;
    std::uint32_t raw;
    const char* texts[3];  // display entries for values 0, 1, 2 (null: none)
};
const FrameItem kFrame[] = {
    {1, "Vehicle speed", "km/h", 8, 0, 0, 62, {nullptr, nullptr, nullptr}},
    {2, "Ambient temperature", "degC", 8, 1, 0, 0xFB, {nullptr, nullptr, nullptr}},
    {3, "Fuel system status", "", 8, 0, 0, 2, {"Off", "Open loop", "Closed loop"}},
};
constexpr char kItemId = 1;  // the stored item's identifier in each frame item

void AnswerFreezeFrame(CCmdCore& request, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetFrzFrmDatRcv&>(answer);
    out.diagCode = dynamic_cast<CGetFrzFrmDatSnd&>(request).diagCode;
    for (const FrameItem& f : kFrame) {
        CCmdFrzFrmDat& item = out.frames.GetAt(out.frames.AddTail());
        item.itemNumber = f.number;
        SetText(item.name, f.name);
        SetText(item.unit, f.unit);
        item.displayFlag = 1;
        item.validFlag = 1;
        CCmdConversionTbl& c = item.conversion;
        c.scaleNumerator = 1;
        c.scaleDenominator = 1;
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
}

void PlayFreezeFrame(Session& s) {
    CGetFrzFrmDatSnd request;
    request.frameNumber = 1;
    request.diagCode = 0x00D0E001;  // an invented trouble code number
    CGetFrzFrmDatRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::GetFrzFrmDat], kFreezeFrame, request,
                    answer))
        return;
    char line[200];
    answer.frames.ForEach([&](const CCmdFrzFrmDat& item) {
        std::snprintf(line, sizeof line, "       %-20s GetValue(%d) = %d %s, GetString(%d) = %s\n",
                      TextOf(item.name).c_str(), static_cast<int>(kItemId),
                      static_cast<int>(item.GetValue(kItemId)), TextOf(item.unit).c_str(),
                      static_cast<int>(kItemId), Quoted(item.GetString(kItemId)).c_str());
        s.Out() << line;
    });
}

// --- Active test: a value in display units turned into the test byte by SetValue.

void AnswerActiveTest(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CStartActTstSnd&>(request);
    auto& out = dynamic_cast<CStartActTstRcv&>(answer);
    out.result = in.value;
    SetText(out.text, "test byte " + HexWord(in.value & 0xFF, 1) + " applied");
}

void PlayActiveTest(Session& s) {
    CCmdActTstDataItem fan;  // duty in percent, sent as raw = (percent - 0) * 255 / 100
    fan.conversion.scaleNumerator = 100;
    fan.conversion.scaleDenominator = 255;
    fan.conversion.offset = 0;
    CStartActTstSnd request;
    request.itemId = 0x0104;
    const cmddata::Result r = request.SetValue(&fan, 60);
    CStartActTstRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::StartActTst], kActiveTest, request,
                    answer))
        return;
    s.Out() << "       cooling fan 60 % -> SetValue " << Code(r) << ", test byte "
            << HexWord(request.value & 0xFF, 1) << "; the vehicle side: \"" << TextOf(answer.text)
            << "\"\n";
    CRepairActTstSnd repair;
    const cmddata::Result q = repair.SetValue(-12.5f, 0.5f, 0.0f, 0);
    s.Out() << "       repair test -12.5 at 0.5 per step -> SetValue " << Code(q) << ", test byte "
            << HexWord(repair.testByte, 1) << "\n";
}

// --- Multi-monitor: how long a recording runs with the sizes the vehicle side reports.

void AnswerMeasureInfo(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CCheckDatMonCommFrmRcv&>(answer);
    out.frameCount = 4;
    out.frameSize = 12;
    out.measure.SetSamplePeriod(250);  // milliseconds per sample
    out.measure.SetSampleSize(48);     // bytes per sample
    out.measure.SetCapacity(1 << 20);  // bytes of recording memory
}

void PlayMeasure(Session& s) {
    CCheckDatMonCommFrmSnd request;
    for (const Signal& sig : kSignals) request.itemIds.GetAt(request.itemIds.AddTail()) = sig.id;
    CCheckDatMonCommFrmRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::CheckDatMonCommFrm], kMeasureInfo, request,
                    answer))
        return;
    const CCmdMultiMonMeasureInfo& m = answer.measure;
    s.Out() << "       " << m.GetCapacity() << " bytes / " << m.GetSampleSize() << " per sample x "
            << m.GetSamplePeriod() << " ms -> GetMeasureSecond " << m.GetMeasureSecond() << " s\n";
}

// --- ECU lists: the fitted ECUs, read under their lock, with their trouble-code counts.

struct EcuItem {
    std::uint32_t id;
    const char* name;
    int current, pending;  // counts of trouble-code kinds 1 and 2 (-1: not reported)
};
const EcuItem kEcus[] = {{0x10, "Engine", 2, 1}, {0x28, "Brakes", 0, -1}, {0x58, "Airbag", -1, -1}};

void AnswerMountEcus(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetMountEcuListRcv&>(answer);
    out.Lock();
    for (const EcuItem& e : kEcus) {
        CCmdEcuInfo& ecu = out.ecus.GetAt(out.ecus.AddTail());
        ecu.ecuId = e.id;
        SetText(ecu.name, e.name);
        const int counts[2] = {e.current, e.pending};
        for (std::uint16_t kind = 1; kind <= 2; ++kind) {
            if (counts[kind - 1] < 0) continue;
            CCmdDiagCodeCount& c = ecu.codeCounts.GetAt(ecu.codeCounts.AddTail());
            c.count = kind;
            c.flag = static_cast<std::uint8_t>(counts[kind - 1]);
        }
    }
    out.Unlock();
}

void PlayMountEcus(Session& s) {
    CGetMountEcuListSnd request;
    CGetMountEcuListRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::GetMountEcuList], kMountEcus, request,
                    answer))
        return;
    answer.Lock();
    answer.ecus.ForEach([&](const CCmdEcuInfo& ecu) {
        char line[160];
        std::snprintf(line, sizeof line,
                      "       ECU 0x%02X %-8s GetDiagCodeCount(1) = %d, GetDiagCodeCount(2) = %d\n",
                      static_cast<unsigned>(ecu.ecuId), TextOf(ecu.name).c_str(),
                      static_cast<int>(ecu.GetDiagCodeCount(1)),
                      static_cast<int>(ecu.GetDiagCodeCount(2)));
        s.Out() << line;
    });
    answer.Unlock();
}

// --- Vehicle selection: the answer carries vehicle information, read by the same accessors.

void AnswerSelectByVin(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CSelectCarTypeVinRcv&>(answer);
    for (const CarItem& item : kCarItems) {
        CCmdCarInfo& info = out.carInfo.GetAt(out.carInfo.AddTail());
        info.itemId = item.id;
        SetText(info.text, item.text);
    }
    SetText(out.text, "selected by VIN");
}

void PlaySelectByVin(Session& s) {
    CSelectCarTypeVinSnd request;
    CSelectCarTypeVinRcv answer;
    if (!s.Exchange(cmddata::kCommands[cmddata::command::SelectCarTypeVin], kSelectByVin, request,
                    answer))
        return;
    std::uint32_t high = 0, low = 0, year = 0;
    const cmddata::Result r = answer.GetDwordCarInfo(&high, &low);
    const cmddata::Result y = answer.GetDwordModelYear(&year);
    s.Out() << "       \"" << TextOf(answer.text) << "\": GetDwordCarInfo " << Code(r) << " \""
            << Unpack(high, low) << "\", GetDwordModelYear " << Code(y) << " " << year << "\n";
}

const Showcase kShowcases[] = {
    {"vehicle information: coded items packed into numbers", &PlayVehicle},
    {"data monitor: raw samples through their conversion tables", &PlayMonitor},
    {"freeze frames: stored values by item id", &PlayFreezeFrame},
    {"active test: set values through the item's conversion", &PlayActiveTest},
    {"multi-monitor: recording time from the reported sizes", &PlayMeasure},
    {"ECU lists: fitted ECUs and their trouble-code counts, under the list's lock", &PlayMountEcus},
    {"vehicle selection: the answer read through the vehicle-information accessors",
     &PlaySelectByVin},
};

}  // namespace

const Showcase* Showcases(std::size_t* count) {
    *count = sizeof kShowcases / sizeof kShowcases[0];
    return kShowcases;
}

ShowcaseAnswer FindShowcaseAnswer(std::uint32_t number) {
    switch (number) {
        case kCarInfo:
            return &AnswerCarInfo;
        case kSignalInfo:
            return &AnswerSignalInfo;
        case kMonitorValues:
            return &AnswerMonitorValues;
        case kFreezeFrame:
            return &AnswerFreezeFrame;
        case kActiveTest:
            return &AnswerActiveTest;
        case kMeasureInfo:
            return &AnswerMeasureInfo;
        case kMountEcus:
            return &AnswerMountEcus;
        case kSelectByVin:
            return &AnswerSelectByVin;
        default:
            return nullptr;
    }
}

}  // namespace cmdtool
