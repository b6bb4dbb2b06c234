// Vehicle selection: the VIN result record that keeps its header off the wire, the detailed
// field orders of the 10th-digit VIN command and of the vehicle-identifier answer, and the
// vehicle-information accessors on the selection answers.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "helpers.h"

using cmddata::result::kItemMissing;
using cmddata::result::kNullOutput;
using testing_cmddata::Region;
using testing_cmddata::WireHex;

namespace {

const std::string kNoStatus = "00000000000000000000000000000000";
const std::string kEmptyList = "0100000000000000";
const std::string kEmptyText = "010000000000";

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

// --- Field orders ---

TEST(SelectMessages, Vin10RequestSendsItemsThreeSelectorsAndTexts) {
    CSelectCarTypeVin10Snd request;
    request.itemIds.GetAt(request.itemIds.AddTail()) = 3;
    request.firstSelector = 1;
    request.secondSelector = 2;
    request.thirdSelector = 4;
    request.texts.GetAt(request.texts.AddTail()) = "T";
    // items (one id, 3), the three selectors, texts (one text, "T")
    EXPECT_EQ(WireHex(request), "7d000000" + kNoStatus + "01000000010000000300" + "010002000400" +
                                    "0100000001000000" + "0100000002005400");
}

TEST(SelectMessages, Vin10AnswerSendsItsTenFieldsInOrder) {
    CSelectCarTypeVin10Rcv answer;
    EXPECT_EQ(answer.GetVersion(), 2);
    answer.firstValue = 1;
    answer.secondValue = 2;
    answer.text = "A";
    answer.firstWord = 0x11223344;
    answer.flag = 0x55;
    answer.secondText = "B";
    answer.secondWord = 0x66778899;
    // information, options, two values, names, text, word, flag, second text, second word
    EXPECT_EQ(WireHex(answer), "7d000000" + kNoStatus + kEmptyList + kEmptyList + "01000200" +
                                   kEmptyList + "0100000002004100" + "44332211" + "55" +
                                   "0100000002004200" + "99887766");
}

TEST(SelectMessages, VehicleIdAnswerTravelsAsTheFirstEightFieldsOfTheVin10Answer) {
    CSelectCarTypeVin10Rcv vin10;
    CSetVehicleInfoForVehicleIdRcv byId;
    AddItem(vin10.carInfo, 1, u"X");
    AddItem(byId.carInfo, 1, u"X");
    vin10.options.AddTail();
    byId.options.AddTail();
    vin10.firstValue = byId.firstValue = 7;
    vin10.secondValue = byId.secondValue = 8;
    AddName(vin10.names, 9, "N");
    AddName(byId.names, 9, "N");
    vin10.text = "T";
    byId.text = "T";
    vin10.firstWord = byId.word = 0xA1B2C3D4;
    vin10.flag = byId.flag = 0xE5;

    const std::string ofId = WireHex(byId).substr(8);  // past the identifier
    const std::string ofVin10 = WireHex(vin10).substr(8);
    const std::string vin10Tail = kEmptyText + "00000000";  // second text and second word
    ASSERT_EQ(ofVin10.size(), ofId.size() + vin10Tail.size());
    EXPECT_EQ(ofVin10, ofId + vin10Tail);
}

TEST(SelectMessages, NewerRecordsInAVin10AnswerTakeVersionZeroButEveryFieldStillTravels) {
    CSelectCarTypeVin10Rcv sent(5);
    AddName(sent.names, 1, "N");
    AddName(sent.names, 2, "M");
    static_cast<CCmdCore&>(sent.names[1]) = VersionThree();  // a sender's newer record
    sent.secondWord = 0x01020304;

    Region region(1 << 12);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    CSelectCarTypeVin10Rcv received;
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), 0u);
    EXPECT_EQ(reader.GetPosition(), writer.GetPosition());
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
