// JSON in and out of every class: bytes -> object -> JSON -> object -> bytes over the whole
// class table, the errors that name their JSON path, and hostile texts.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "helpers.h"

using cmddata::ClassInfo;
using namespace testing_cmddata;

namespace {

using Object = std::unique_ptr<CCmdCore>;

Object Make(const ClassInfo& c, std::uint16_t version) {
    Object object(c.make(version));
    SetVersion(*object, version);
    return object;
}

std::string Json(CCmdCore& object) {
    std::string text;
    EXPECT_TRUE(cmddata::ToJson(object, &text));
    return text;
}

// The error FromJson gives for text on a fresh object of the class ("" when it takes it).
std::string ErrorOf(const char* className, const std::string& text, std::uint16_t version = 0) {
    const ClassInfo* c = cmddata::FindClass(className);
    if (c == nullptr) return std::string("no class ") + className;
    Object object(c->make(version == 0 ? c->defaultVersion : version));
    std::string error;
    return cmddata::FromJson(*object, text, &error) ? "" : error;
}

std::vector<const ClassInfo*> AllClasses() {
    std::size_t count = 0;
    const ClassInfo* all = cmddata::Classes(&count);
    std::vector<const ClassInfo*> v;
    for (std::size_t i = 0; i < count; ++i) v.push_back(&all[i]);
    return v;
}

class JsonConformance : public ::testing::TestWithParam<const ClassInfo*> {};

// What a region holds, taken in write order and shown as JSON, comes back to the very same bytes,
// also for the classes whose Read crosses fields.
TEST_P(JsonConformance, BytesSurviveJsonAtEveryVersionEmptyAndFilled) {
    const ClassInfo& c = *GetParam();
    Object probe(c.make(1));
    const std::uint16_t top = std::max<std::uint16_t>(cmddata::HighestVersionTested(*probe), 2);
    for (std::uint16_t v = 0; v <= top; ++v) {
        for (bool filled : {false, true}) {
            SCOPED_TRACE("version " + std::to_string(v) + (filled ? ", filled" : ", empty"));
            Object sent = Make(c, v);
            sent->RemoveAll();
            if (filled) cmddata::Fill(*sent, 7 + v);
            const std::string bytes = WireHex(*sent);
            Object received = Make(c, v);
            HexRegion region(bytes);
            CCmdReader reader = region.Reader();
            ASSERT_EQ(cmddata::ReadAsWritten(*received, reader), cmddata::result::kOk);
            ASSERT_EQ(reader.GetPosition() * 2, bytes.size());
            const std::string again = bytes;

            const std::string json = Json(*received);
            Object taken = Make(c, v);
            taken->RemoveAll();
            std::string error;
            ASSERT_TRUE(cmddata::FromJson(*taken, json, &error)) << error << "\n" << json;
            EXPECT_EQ(WireHex(*taken), again) << json;
            EXPECT_EQ(Json(*taken), json);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, JsonConformance, ::testing::ValuesIn(AllClasses()),
                         [](const ::testing::TestParamInfo<const ClassInfo*>& info) {
                             return std::string(info.param->name);
                         });

TEST(JsonForm, ShowsFieldsInWireOrderWithTextsHexAndVersions) {
    CGetVINRcv answer;
    answer.vin = "JT\xC3\xA9";  // narrow bytes: not 16-bit text, so shown as bytes
    answer.SetStatusWord(1, 5);
    EXPECT_EQ(Json(answer),
              "{\"command_id\":81,\"status_word_1\":5,\"status_word_2\":0,\"status_word_3\":0,"
              "\"status_word_4\":0,\"vin\":{\"version\":1,\"bytes\":\"4a54c3a900\"}}");
    const std::uint16_t text[] = {'J', 0xE9, 0xD83D, 0xDE97, '"', 0};
    answer.vin = text;
    EXPECT_NE(Json(answer).find("\"vin\":\"J\xC3\xA9\xF0\x9F\x9A\x97\\\"\""), std::string::npos)
        << Json(answer);

    CCmdDatMonData item;
    cmddata::Fill(item);
    const std::string json = Json(item);
    EXPECT_EQ(json.rfind("{\"version\":1,", 0), 0u) << json;
}

TEST(JsonForm, AbsentFieldsKeepTheirEmptyValueAndTheTextIsTakenWhole) {
    EXPECT_EQ(ErrorOf("CGetVINRcv", "{}"), "");
    EXPECT_EQ(
        ErrorOf("CGetVINRcv", " {\"vin\": \"JT\\u00e9\\ud83d\\ude97\", \"status_word_2\": 7}\n"),
        "");
    const ClassInfo* c = cmddata::FindClass("CGetVINRcv");
    std::string error;
    Object object(cmddata::MakeFromJson(*c, 1, "{\"vin\":\"AB\",\"status_word_4\":9}", &error));
    ASSERT_NE(object, nullptr) << error;
    EXPECT_EQ(WireHex(*object), Wire("51000000 00000000 00000000 00000000 09000000"
                                     "0100 0000 0600 410042000000"));
    EXPECT_EQ(cmddata::MakeFromJson(*c, 1, "{\"vin\":3}", &error), nullptr);
    EXPECT_EQ(error, "vin: a number where a string was expected");
}

// A text, buffer or list on its own is its value alone, both ways.
TEST(JsonForm, ContainersOnTheirOwnAreTheirValue) {
    CCmdBuffer buffer;
    const unsigned char bytes[] = {1, 0xAB};
    buffer.SetAt(bytes, 2);
    EXPECT_EQ(Json(buffer), "\"01ab\"");
    CCmdList<CCmdWordId> words;
    std::string error;
    ASSERT_TRUE(cmddata::FromJson(words, "[{\"value\":7},{}]", &error)) << error;
    EXPECT_EQ(words.GetCount(), 2u);
    EXPECT_EQ(Json(words), "[{\"value\":7},{\"value\":0}]");
    CCmdString text;
    EXPECT_FALSE(cmddata::FromJson(text, "{\"bytes\":\"00\",\"x\":1}", &error));
    EXPECT_EQ(error, "x: no such field");
    ASSERT_TRUE(cmddata::FromJson(text, "\"ok\"", &error)) << error;
    EXPECT_EQ(Json(text), "\"ok\"");
}

TEST(JsonErrors, NameTheJsonPathAndWhatIsWrong) {
    const char* rcv = "CGetDatMonListRcv";
    EXPECT_EQ(ErrorOf(rcv, "{\"items\":[{},{\"item_id\":70000}]}"),
              "items[1].item_id: 70000 does not fit u16");
    EXPECT_EQ(ErrorOf(rcv, "{\"items\":[{\"bogus\":1}]}"), "items[0].bogus: no such field");
    EXPECT_EQ(ErrorOf(rcv, "{\"status_word_1\":1,\"status_word_1\":2}"),
              "status_word_1: given twice");
    EXPECT_EQ(ErrorOf(rcv, "{\"items\":[{\"version\":2}]}"),
              "items[0].version: version 2 is above the 1 this object takes");
    EXPECT_EQ(ErrorOf(rcv, "{\"items\":[{\"name\":{\"bytes\":\"4x\"}}]}"),
              "items[0].name.bytes: not hex at digit 1");
    EXPECT_EQ(ErrorOf(rcv, "{\"items\":{\"version\":0,\"items\":[{}],\"x\":1}}"),
              "items.x: no such field");
    EXPECT_EQ(ErrorOf(rcv, "{\"status_word_1\":-1}"), "status_word_1: -1 does not fit u32");
    EXPECT_EQ(ErrorOf(rcv, "{\"status_word_1\":1e999}"),
              "status_word_1: 1e999 is not a whole number");
    EXPECT_EQ(ErrorOf(rcv, "{\"status_word_1\":18446744073709551616}"),
              "status_word_1: 18446744073709551616 does not fit u32");
    EXPECT_EQ(ErrorOf(rcv, "[]"), "the JSON value is an array, not an object of fields");
    // A field the object's version leaves off the wire is not taken.
    const ClassInfo* c = cmddata::FindClass("CCmdFunction");
    ASSERT_NE(c, nullptr);
    Object probe(c->make(c->defaultVersion));
    std::string full = Json(*probe);
    const std::string version = "\"version\":" + std::to_string(c->defaultVersion) + ",";
    ASSERT_EQ(full.find(version), 1u) << full;
    full.erase(1, version.size());
    Object old(c->make(1));
    std::string error;
    EXPECT_FALSE(cmddata::FromJson(*old, full, &error));
    EXPECT_NE(error.find("not present at this object's version"), std::string::npos) << error;
}

TEST(JsonErrors, HostileTextsAreRefusedWithinBounds) {
    const char* cls = "CGetDatMonListRcv";
    EXPECT_EQ(ErrorOf(cls, std::string(100, '[') + std::string(100, ']')),
              "JSON syntax, line 1 column 65: nested deeper than the reader takes");
    EXPECT_EQ(ErrorOf(cls, "{\"items\":[{\"name\":\"\xC3\x28\"}]}"),
              "JSON syntax, line 1 column 20: invalid UTF-8");
    EXPECT_EQ(ErrorOf(cls, "{\"a\":\"\\ud800\"}"),
              "JSON syntax, line 1 column 13: a high surrogate without its low one");
    EXPECT_EQ(ErrorOf(cls, "{\"a\":1} x"),
              "JSON syntax, line 1 column 9: more after the JSON value");
    EXPECT_EQ(ErrorOf(cls, ""), "JSON syntax, line 1 column 1: a value was expected");
    EXPECT_EQ(ErrorOf(cls, "{\"a\":01}"),
              "JSON syntax, line 1 column 6: a number does not start with 0");
    // Ten megabytes of text in one string: more than a 16-bit count holds.
    const std::string big = "{\"items\":[{\"name\":\"" + std::string(10 << 20, 'x') + "\"}]}";
    EXPECT_EQ(
        ErrorOf(cls, big),
        "items[0].name: a text of 20971522 bytes with its terminator does not fit the u16 count");
    // A million empty items ask for more than their text justifies; a long text is refused.
    std::string many = "{\"items\":[";
    for (int i = 0; i < 1000000; ++i) many += i == 0 ? "{}" : ",{}";
    many += "]}";
    EXPECT_NE(ErrorOf(cls, many).find("items: 1000000 items need more memory"), std::string::npos);
    EXPECT_NE(ErrorOf(cls, std::string(cmddata::kJsonMaxText + 1, ' ')).find("longer than"),
              std::string::npos);
}

}  // namespace
