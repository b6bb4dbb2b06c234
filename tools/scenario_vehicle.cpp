// Demo family: vehicle identification (coded information, VIN, calibration ids and numbers).
#include <cstdio>

#include "cmddata/cmddata.h"
#include "demo.h"
#include "scenario_util.h"

namespace cmdtool {

namespace {

// The simulated vehicle's identity; every value is invented for the demo.
struct CarItem {
    std::uint16_t id;
    const char* text;
};
const CarItem kCarItems[] = {{1, "QZX7DMO"}, {2, "9SIMV8"}, {3, "2031"}, {7, "DEMO-TRIM-B"}};
const char kVin[] = "DEMO0SIMVEHICLE42";
const char* const kCalibrationIds[] = {"SIMCAL-ENG-0001", "SIMCAL-TRN-0042"};
const char* const kVerificationNumbers[] = {"1A2B3C4D", "5E6F7A8B"};

// Vehicle side.

std::uint32_t AnswerCarInfo(CCmdCore& request, CCmdCore& answer) {
    auto& in = dynamic_cast<CGetCarInfoSnd&>(request);
    auto& out = dynamic_cast<CGetCarInfoRcv&>(answer);
    std::uint32_t missing = 0;
    in.itemIds.ForEach([&](const CCmdWordId& wanted) {
        for (const CarItem& item : kCarItems) {
            if (item.id != static_cast<std::uint16_t>(wanted)) continue;
            CCmdCarInfo& info = out.carInfo.GetAt(out.carInfo.AddTail());
            info.itemId = item.id;
            SetText(info.text, item.text);
            return;
        }
        ++missing;
    });
    out.SetStatusWord(2, out.carInfo.GetCount());
    return missing == 0 ? outcome::kDone : outcome::kNoSuchItem;
}

std::uint32_t AnswerVin(CCmdCore&, CCmdCore& answer) {
    SetText(dynamic_cast<CGetVINRcv&>(answer).vin, kVin);
    return outcome::kDone;
}

std::uint32_t AnswerCid(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetCIDRcv&>(answer);
    for (const char* id : kCalibrationIds)
        SetText(out.calibrationIds.GetAt(out.calibrationIds.AddTail()), id);
    out.ecuCount = 2;
    out.reportedCount = out.calibrationIds.GetCount();
    return outcome::kDone;
}

std::uint32_t AnswerCvn(CCmdCore&, CCmdCore& answer) {
    auto& out = dynamic_cast<CGetCVNRcv&>(answer);
    for (const char* n : kVerificationNumbers)
        SetText(out.verificationNumbers.GetAt(out.verificationNumbers.AddTail()), n);
    return outcome::kDone;
}

const ResponderEntry kResponders[] = {
    {cmddata::cmd::GetCarInfo, &AnswerCarInfo},
    {cmddata::cmd::GetVIN, &AnswerVin},
    {cmddata::cmd::GetCID, &AnswerCid},
    {cmddata::cmd::GetCVN, &AnswerCvn},
};

// Requesting side.

std::string Code(cmddata::Result r) {
    char buf[32];
    std::snprintf(buf, sizeof(buf), "0x%08X", static_cast<unsigned>(r));
    return buf;
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

bool Play(Session& s) {
    std::ostream& out = s.Out();
    char line[160];
    {
        CGetCarInfoSnd request;
        for (std::uint16_t id : {1, 2, 3}) AddWordId(request.itemIds, id);
        CGetCarInfoRcv answer;
        if (!s.Exchange(cmddata::cmd::GetCarInfo, request, answer)) return false;
        std::uint32_t high = 0, low = 0, year = 0;
        cmddata::Result r = answer.GetDwordCarInfo(&high, &low);
        if (r == 0)
            std::snprintf(
                line, sizeof(line),
                "       car information code  GetDwordCarInfo    high 0x%08X low 0x%08X  \"%s\"\n",
                static_cast<unsigned>(high), static_cast<unsigned>(low), Unpack(high, low).c_str());
        else
            std::snprintf(line, sizeof(line),
                          "       car information code  GetDwordCarInfo    -> %s\n",
                          Code(r).c_str());
        out << line;
        r = answer.GetDwordEngineType(&high, &low);
        if (r == 0)
            std::snprintf(
                line, sizeof(line),
                "       engine type           GetDwordEngineType high 0x%08X low 0x%08X  \"%s\"\n",
                static_cast<unsigned>(high), static_cast<unsigned>(low), Unpack(high, low).c_str());
        else
            std::snprintf(line, sizeof(line),
                          "       engine type           GetDwordEngineType -> %s\n",
                          Code(r).c_str());
        out << line;
        r = answer.GetDwordModelYear(&year);
        if (r == 0)
            std::snprintf(line, sizeof(line),
                          "       model year            GetDwordModelYear  %u\n",
                          static_cast<unsigned>(year));
        else
            std::snprintf(line, sizeof(line),
                          "       model year            GetDwordModelYear  -> %s\n",
                          Code(r).c_str());
        out << line;
    }
    {
        CGetVINSnd request;
        CGetVINRcv answer;
        if (!s.Exchange(cmddata::cmd::GetVIN, request, answer)) return false;
        out << "       vehicle identification number \"" << TextOf(answer.vin) << "\"\n";
    }
    {
        CGetCIDSnd request;
        CGetCIDRcv answer;
        if (!s.Exchange(cmddata::cmd::GetCID, request, answer)) return false;
        answer.calibrationIds.ForEach([&](const CCmdString& id) {
            out << "       calibration id \"" << TextOf(id) << "\"\n";
        });
        out << "       from " << answer.ecuCount << " ECUs, " << answer.reportedCount
            << " reported\n";
    }
    {
        CGetCVNSnd request;
        CGetCVNRcv answer;
        if (!s.Exchange(cmddata::cmd::GetCVN, request, answer)) return false;
        answer.verificationNumbers.ForEach([&](const CCmdString& n) {
            out << "       calibration verification number \"" << TextOf(n) << "\"\n";
        });
    }
    {
        // A catalogue command whose payload is not defined: its message is the header alone,
        // and the simulated vehicle declines it.
        CCmdHeaderOnly request(cmddata::cmd::GetVimInfo, 1, 0);
        CCmdHeaderOnly answer(cmddata::cmd::GetVimInfo, 1, 0);
        if (!s.Exchange(cmddata::cmd::GetVimInfo, request, answer)) return false;
    }
    return true;
}

}  // namespace

extern const Family kVehicleFamily = {"vehicle information", &Play, kResponders,
                                      sizeof(kResponders) / sizeof(kResponders[0])};

}  // namespace cmdtool
