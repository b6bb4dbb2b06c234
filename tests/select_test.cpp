// Vehicle selection: the VIN result record that keeps its header off the wire, newer records
// inside an answer, and the vehicle-information accessors on the selection answers.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "helpers.h"

using cmddata::result::kItemMissing;
using cmddata::result::kNullOutput;
using namespace testing_cmddata;

namespace {

void AddItem(CCmdList<CCmdCarInfo>& list, std::uint16_t id, const char16_t* text) {
    CCmdCarInfo& item = list.GetAt(list.AddTail());
    item.itemId = id;
    item.text = reinterpret_cast<const std::uint16_t*>(text);
}

void AddName(CCmdList<CCmdSelectName>& list, std::uint16_t first, const char* name) {
    CCmdSelectName& item = list.GetAt(list.AddTail());
    item.firstValue = first;
    item.name = name;
}

// Carries version 3 into a record through CCmdCore's assignment.
class VersionThree : public CCmdCore {
public:
    VersionThree() : CCmdCore(3, 0) {}
};

// The accessors' results on one answer, as text, for comparing answers.
template <class Answer>
std::string AccessorResults(const Answer& answer) {
    const std::uint16_t* text = nullptr;
    std::uint32_t high = 0, low = 0, engineHigh = 0, engineLow = 0, year = 0;
    const cmddata::Result get = answer.Get(&text, 1);
    const cmddata::Result car = answer.GetDwordCarInfo(&high, &low);
    const cmddata::Result engine = answer.GetDwordEngineType(&engineHigh, &engineLow);
    const cmddata::Result model = answer.GetDwordModelYear(&year);
    char out[160];
    std::snprintf(out, sizeof out, "%x %x %x:%x %x %x:%x %x %x:%u", get,
                  text != nullptr ? text[0] : 0, car, high, low, engine, engineHigh, engineLow,
                  model, year);
    return out;
}

template <class Answer>
void FillItems(Answer& answer) {
    AddItem(answer.carInfo, 1, u"ABCDEFG");
    AddItem(answer.carInfo, 2, u"1ZZFE");
    AddItem(answer.carInfo, 3, u"0999");
}

}  // namespace

// --- The VIN result record ---

TEST(SelectRecords, CarTypeVinSendsItsPrefixAndFieldsButNoHeaderWord) {
    CCmdSelectCarTypeVin result;
    EXPECT_EQ(result.GetCmdId(), 1u);
    EXPECT_EQ(result.GetVersion(), 1);
    result.SetStatusWord(1, 0x77);
    result.text = "V";
    result.firstValue = 0x0102;
    result.secondValue = 0x0304;
    // prefix, text, names, information, options, two values: no header word
    EXPECT_EQ(WireHex(result), "01000000" + std::string("0100000002005600") + kEmptyList +
                                   kEmptyList + kEmptyList + "02010403");
    result.RemoveAll();
    EXPECT_EQ(result.GetStatusWord(1), 0u);
    EXPECT_EQ(result.GetCmdId(), 1u);
}

TEST(SelectMessages, NewerRecordsInAVin10AnswerTakeVersionZeroButEveryFieldStillTravels) {
    CSelectCarTypeVin10Rcv sent(5);
    AddName(sent.names, 1, "N");
    AddName(sent.names, 2, "M");
    static_cast<CCmdCore&>(sent.names[1]) = VersionThree();  // a sender's newer record
    sent.secondWord = 0x01020304;

    CSelectCarTypeVin10Rcv received;
    cmddata::Result error = 1;
    EXPECT_EQ(Transfer(sent, received, &error), cmddata::WireSize(sent));
    EXPECT_EQ(error, cmddata::result::kOk);
    EXPECT_EQ(received.GetVersion(), 2) << "a message's version does not travel";
    ASSERT_EQ(received.names.GetCount(), 2u);
    EXPECT_EQ(received.names[1].GetVersion(), 0);
    EXPECT_EQ(WireHex(received.names[1].name),
              "01000000"
              "0200"
              "4d00");
    EXPECT_EQ(received.secondWord, 0x01020304u);
}

// --- Accessors ---

TEST(SelectAccessors, EmptyVehicleInformationAnswersItemMissing) {
    CSelectCarTypeRcv answer;
    const std::uint16_t* text = nullptr;
    std::uint32_t high = 0, low = 0;
    EXPECT_EQ(answer.Get(&text, 1), kItemMissing);
    EXPECT_EQ(answer.GetDwordCarInfo(&high, &low), kItemMissing);
    EXPECT_EQ(answer.GetDwordEngineType(&high, &low), kItemMissing);
    EXPECT_EQ(answer.GetDwordModelYear(&high), kItemMissing);
    EXPECT_EQ(answer.GetDwordModelYear(nullptr), kNullOutput);
}

TEST(SelectAccessors, EverySelectionAnswerGivesTheSameResults) {
    CSelectCarTypeRcv type;
    CSelectCarTypeVinRcv vin;
    CSelectCarTypeVin10Rcv vin10;
    CSetVehicleInfoForVehicleIdRcv byId;
    FillItems(type);
    FillItems(vin);
    FillItems(vin10);
    FillItems(byId);
    const std::string expected = "0 41 0:41424344 45464700 0:315a5a46 45000000 0:999";
    EXPECT_EQ(AccessorResults(type), expected);
    EXPECT_EQ(AccessorResults(vin), expected);
    EXPECT_EQ(AccessorResults(vin10), expected);
    EXPECT_EQ(AccessorResults(byId), expected);
}
