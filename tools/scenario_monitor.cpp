// Demo family: data monitor (item list, signal descriptions with conversion, start, sample, stop).
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "cmddata/cmddata.h"
#include "demo.h"
#include "scenario_util.h"

namespace cmdtool {

namespace {

// The simulated ECU's monitor signals; names, scales and values are invented for the demo.
struct Signal {
    std::uint16_t id;
    const char* name;
    const char* unit;
    std::uint16_t bits;
    std::uint8_t signMode;  // 1: two's complement
    std::int32_t numerator;
    std::uint32_t denominator;
    std::int32_t offset;
    std::uint32_t samples[2];  // raw values of the first and second sampling
    const char* offText;       // display entries 0 / 1, for a state signal
    const char* onText;
};
const Signal kSignals[] = {
    {0x0101, "Engine speed", "rpm", 16, 0, 1, 4, 0, {0x0C80, 0x0D48}, nullptr, nullptr},
    {0x0102, "Coolant temperature", "degC", 8, 0, 1, 1, -40, {0x78, 0x7A}, nullptr, nullptr},
    {0x0103, "Supply voltage", "mV", 8, 0, 100, 1, 0, {142, 139}, nullptr, nullptr},
    {0x0104, "Cooling fan", "", 1, 0, 1, 1, 0, {0, 1}, "OFF", "ON"},
    {0x0105, "Ignition advance", "deg", 8, 1, 1, 2, 0, {0xF4, 0x10}, nullptr, nullptr},
};
struct Group {
    const char* name;
    std::uint16_t ids[3];
};
const Group kGroups[] = {{"Engine", {0x0101, 0x0102, 0x0105}}, {"Electrical", {0x0103, 0x0104, 0}}};

const Signal* FindSignal(std::uint32_t id) {
    for (const Signal& s : kSignals)
        if (s.id == id) return &s;
    return nullptr;
}

std::uint32_t WidthBytes(const Signal& s) { return (s.bits + 7u) / 8u; }

// Vehicle side. The monitored set and the sampling round live for the vehicle side's run.
std::vector<std::uint16_t> gMonitored;
bool gRunning = false;

std::uint32_t AnswerList(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetDatMonListRcv&>(answer);
    for (const Signal& s : kSignals) {
        CCmdDatMonData& item = out.items.GetAt(out.items.AddTail());
        item.itemId = s.id;
        SetText(item.name, s.name);
        SetText(item.unit, s.unit);
        SetText(item.note, "simulated");
        item.dataLength = static_cast<std::uint16_t>(WidthBytes(s));
        item.displayKind = s.offText != nullptr ? 2 : 1;
    }
    for (const Group& g : kGroups) {
        CCmdGroupData& group = out.groups.GetAt(out.groups.AddTail());
        SetText(group.groupName, g.name);
        for (std::uint16_t id : g.ids)
            if (id != 0) AddWordId(group.itemIds, id);
    }
    out.SetStatusWord(2, out.items.GetCount());
    return outcome::kDone;
}

std::uint32_t AnswerSignalInfo(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CGetDatMonSignalInfoSnd&>(request);
    auto& out = dynamic_cast<CGetDatMonSignalInfoRcv&>(answer);
    std::uint32_t result = outcome::kDone;
    in.itemIds.ForEach([&](const CCmdWordId& id) {
        const Signal* s = FindSignal(static_cast<std::uint16_t>(id));
        if (s == nullptr) {
            result = outcome::kNoSuchItem;
            return;
        }
        CCmdDatMonSignalInfo& info = out.signals.GetAt(out.signals.AddTail());
        info.signalId = s->id;
        SetText(info.name, s->name);
        SetText(info.unit, s->unit);
        SetText(info.note, "simulated");
        info.bitLength = s->bits;
        info.bytePosition = 2;
        info.displayKind = s->offText != nullptr ? 2 : 1;
        CCmdConversionTbl& c = info.conversion;
        c.scaleNumerator = static_cast<std::uint32_t>(s->numerator);
        c.scaleDenominator = s->denominator;
        c.offset = static_cast<std::uint32_t>(s->offset);
        c.signMode = s->signMode;
        c.bitWidth = s->bits;
        if (s->offText != nullptr) {
            const char* texts[2] = {s->offText, s->onText};
            for (std::uint32_t v = 0; v < 2; ++v) {
                CCmdDispInfo& entry = c.displayEntries.GetAt(c.displayEntries.AddTail());
                entry.entryId = v + 1;
                SetText(entry.displayText, texts[v]);
                entry.matchValue = v;
            }
        }
    });
    out.SetStatusWord(2, out.signals.GetCount());
    return result;
}

std::uint32_t AnswerStart(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CStartDatMonSnd&>(request);
    auto& out = dynamic_cast<CStartDatMonRcv&>(answer);
    gMonitored.clear();
    in.itemIds.ForEach([&](const CCmdWordId& id) {
        if (FindSignal(static_cast<std::uint16_t>(id)) != nullptr) gMonitored.push_back(id);
    });
    gRunning = !gMonitored.empty();
    out.itemId = static_cast<std::uint16_t>(gMonitored.size());  // items started
    out.value = 100;                                             // sampling period, ms
    out.qualifier = 1;                                           // monitor session number
    return gRunning ? outcome::kDone : outcome::kNoSuchItem;
}

std::uint32_t AnswerValue(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CGetDatMonValueSnd&>(request);
    auto& out = dynamic_cast<CGetDatMonValueRcv&>(answer);
    if (!gRunning) return outcome::kNotSupported;
    const std::uint32_t round = in.requestId >= 2 ? 1 : 0;
    for (std::uint16_t id : gMonitored) {
        const Signal* s = FindSignal(id);
        CCmdDatMonValue& v = out.values.GetAt(out.values.AddTail());
        v.itemId = id;
        v.status = 0;
        SetRaw(v.sample, s->samples[round], WidthBytes(*s));
    }
    out.SetStatusWord(2, out.values.GetCount());
    return outcome::kDone;
}

std::uint32_t AnswerStop(CCmdCore&, CCmdCore&) {
    const bool was = gRunning;
    gRunning = false;
    return was ? outcome::kDone : outcome::kNotSupported;
}

const ResponderEntry kResponders[] = {
    {cmddata::cmd::GetDatMonList, &AnswerList},
    {cmddata::cmd::GetDatMonSignalInfo, &AnswerSignalInfo},
    {cmddata::cmd::StartDatMon, &AnswerStart},
    {cmddata::cmd::GetDatMonValue, &AnswerValue},
    {cmddata::cmd::StopDatMon, &AnswerStop},
};

// Requesting side.

void ShowSamples(Session& s, const CGetDatMonValueRcv& answer,
                 const std::map<std::uint32_t, const CCmdDatMonSignalInfo*>& infos) {
    char line[200];
    answer.values.ForEach([&](const CCmdDatMonValue& v) {
        auto it = infos.find(v.itemId);
        if (it == infos.end()) {
            s.Out() << "       item " << v.itemId << ": no description\n";
            return;
        }
        const CCmdDatMonSignalInfo& info = *it->second;
        const std::uint32_t raw = RawOf(v.sample);
        const std::int32_t value = info.conversion.Convert(raw);
        const std::uint16_t* text = info.conversion.FindText(static_cast<std::uint32_t>(value));
        std::snprintf(
            line, sizeof(line), "       %-20s raw %-12s -> %d %s%s%s\n", TextOf(info.name).c_str(),
            HexBytes(v.sample.GetAt(), v.sample.GetSize()).c_str(), static_cast<int>(value),
            TextOf(info.unit).c_str(), text != nullptr ? "  " : "",
            text != nullptr ? ("\"" + Utf16ToUtf8(text) + "\"").c_str() : "");
        s.Out() << line;
    });
}

bool Play(Session& s) {
    std::ostream& out = s.Out();
    char line[200];
    CGetDatMonListRcv list;
    {
        CGetDatMonListSnd request;
        if (!s.Exchange(cmddata::cmd::GetDatMonList, request, list)) return false;
        list.items.ForEach([&](const CCmdDatMonData& item) {
            std::snprintf(line, sizeof(line), "       item 0x%04X %-20s [%s]\n",
                          static_cast<unsigned>(item.itemId), TextOf(item.name).c_str(),
                          TextOf(item.unit).c_str());
            out << line;
        });
        list.groups.ForEach([&](const CCmdGroupData& g) {
            out << "       group \"" << TextOf(g.groupName) << "\":";
            g.itemIds.ForEach([&](const CCmdWordId& id) {
                std::snprintf(line, sizeof(line), " 0x%04X", static_cast<unsigned>(id));
                out << line;
            });
            out << "\n";
        });
    }
    CGetDatMonSignalInfoRcv signals;
    std::map<std::uint32_t, const CCmdDatMonSignalInfo*> infos;
    {
        CGetDatMonSignalInfoSnd request;
        list.items.ForEach(
            [&](const CCmdDatMonData& item) { AddWordId(request.itemIds, item.itemId); });
        if (!s.Exchange(cmddata::cmd::GetDatMonSignalInfo, request, signals)) return false;
        signals.signals.ForEach([&](const CCmdDatMonSignalInfo& info) {
            const CCmdConversionTbl& c = info.conversion;
            std::snprintf(
                line, sizeof(line),
                "       0x%04X %-20s %2u bits %-8s x %d / %u %+d %s (%u display entries)\n",
                static_cast<unsigned>(info.signalId), TextOf(info.name).c_str(),
                static_cast<unsigned>(c.bitWidth), c.signMode == 1 ? "signed" : "unsigned",
                static_cast<int>(c.scaleNumerator), static_cast<unsigned>(c.scaleDenominator),
                static_cast<int>(c.offset), TextOf(info.unit).c_str(),
                static_cast<unsigned>(c.displayEntries.GetCount()));
            out << line;
            infos[info.signalId] = &info;
        });
    }
    {
        CStartDatMonSnd request;
        list.items.ForEach(
            [&](const CCmdDatMonData& item) { AddWordId(request.itemIds, item.itemId); });
        CStartDatMonRcv answer;
        if (!s.Exchange(cmddata::cmd::StartDatMon, request, answer)) return false;
        out << "       " << answer.itemId << " items monitored every " << answer.value
            << " ms (session " << answer.qualifier << ")\n";
    }
    for (std::uint32_t round = 1; round <= 2; ++round) {
        CGetDatMonValueSnd request;  // version 3: request id, item and sample count travel
        request.requestId = round;
        request.itemId = 0;  // all monitored items
        request.sampleCount = 1;
        CGetDatMonValueRcv answer;
        if (!s.Exchange(cmddata::cmd::GetDatMonValue, request, answer)) return false;
        ShowSamples(s, answer, infos);
    }
    {
        CStopDatMonSnd request;
        CStopDatMonRcv answer;
        if (!s.Exchange(cmddata::cmd::StopDatMon, request, answer)) return false;
    }
    return true;
}

}  // namespace

extern const Family kMonitorFamily = {"data monitor", &Play, kResponders,
                                      sizeof(kResponders) / sizeof(kResponders[0])};

}  // namespace cmdtool
