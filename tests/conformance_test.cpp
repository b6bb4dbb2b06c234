// One suite over every class of the family class lists: identity and constructed version from
// the catalogue, the empty image, and filled objects at every version their field lists test.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "helpers.h"

using cmddata::ClassInfo;
using cmddata::ClassKind;
using cmddata::Side;
using cmddata::VersionRule;
using namespace testing_cmddata;

namespace {

using Object = std::unique_ptr<CCmdCore>;

std::vector<const ClassInfo*> AllClasses(bool messagesOnly = false) {
    std::size_t count = 0;
    const ClassInfo* all = cmddata::Classes(&count);
    std::vector<const ClassInfo*> v;
    for (std::size_t i = 0; i < count; ++i)
        if (!messagesOnly || all[i].kind == ClassKind::kMessage) v.push_back(&all[i]);
    return v;
}

// The versions to try: 0 up to the highest the field list tests, and never fewer than 0 to 7, so
// that a version test written beside the list's own helper is exercised too. Objects are put at
// each through CCmdCore's assignment, also where the constructor fixes the version: a record takes
// the sender's version from a region, and an assignment copies it.
std::vector<std::uint16_t> Versions(const ClassInfo& c) {
    Object probe(c.make(1));
    const std::uint16_t highest = std::max<std::uint16_t>(cmddata::HighestVersionTested(*probe), 7);
    std::vector<std::uint16_t> v;
    for (std::uint16_t n = 0; n <= highest; ++n) v.push_back(n);
    return v;
}

Object Make(const ClassInfo& c, std::uint16_t version) {
    Object object(c.make(version));
    SetVersion(*object, version);
    return object;
}

// The bytes an object writes, with its measured size checked against them.
std::string Written(CCmdCore& object) {
    const std::string hex = WireHex(object);
    EXPECT_EQ(cmddata::WireSize(object) * 2, hex.size()) << "measured size";
    return hex;
}

// Reads bytes (hex) into object and checks that exactly all of them were consumed.
void ReadAll(const std::string& hex, CCmdCore& object) {
    cmddata::Result error = 1;
    EXPECT_EQ(ReadHex(hex, object, &error) * 2, hex.size()) << "bytes consumed";
    EXPECT_EQ(error, cmddata::result::kOk);
}

class Conformance : public ::testing::TestWithParam<const ClassInfo*> {};
class MessageConformance : public ::testing::TestWithParam<const ClassInfo*> {};

TEST_P(MessageConformance, HasItsCatalogueIdentityAndVersion) {
    const ClassInfo& c = *GetParam();
    const cmddata::CommandInfo& command = *c.command;
    EXPECT_EQ(std::string(c.name),
              std::string("C") + command.name + (c.side == Side::kSend ? "Snd" : "Rcv"));
    Object object(c.make(cmddata::DefaultVersion(command, c.side)));
    auto* header = dynamic_cast<CCmdHeaderWords*>(object.get());
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->GetCmdId(), command.id);
    EXPECT_EQ(dynamic_cast<CCmdBase*>(object.get()) != nullptr, true) << "derives from CCmdBase";

    switch (command.Rule(c.side)) {
        case VersionRule::kFixed1:
        case VersionRule::kFixed2:
        case VersionRule::kDerived:
            EXPECT_FALSE(c.takesVersion);
            EXPECT_EQ(object->GetVersion(), cmddata::DefaultVersion(command, c.side));
            break;
        case VersionRule::kIgnored1:
            EXPECT_TRUE(c.takesVersion);
            EXPECT_EQ(Object(c.make(3))->GetVersion(), 1);
            break;
        default:
            EXPECT_TRUE(c.takesVersion);
            EXPECT_EQ(Object(c.make(7))->GetVersion(), 7);
            break;
    }
    // The header written carries the identifier where the framing puts it.
    const std::string bytes = WireHex(*object);
    char id[9];
    std::snprintf(id, sizeof id, "%02x%02x%02x%02x", command.id & 0xFF, command.id >> 8 & 0xFF,
                  command.id >> 16 & 0xFF, command.id >> 24);
    switch (command.FramingOf(c.side)) {
        case cmddata::Framing::kHeader:
            EXPECT_EQ(bytes.substr(0, 8), id);
            break;
        case cmddata::Framing::kVersionedHeader:
            EXPECT_EQ(bytes.substr(8, 8), id);
            break;
        case cmddata::Framing::kNone:
            break;
    }
}

TEST_P(Conformance, EmptyObjectReadsBackWhatItWrote) {
    const ClassInfo& c = *GetParam();
    for (std::uint16_t v : Versions(c)) {
        SCOPED_TRACE("version " + std::to_string(v));
        Object sent = Make(c, v);
        sent->RemoveAll();
        const std::string empty = Written(*sent);
        Object received = Make(c, v);
        ReadAll(empty, *received);
        EXPECT_EQ(WireHex(*received), empty);
    }
}

TEST_P(Conformance, FilledObjectSurvivesWriteReadAndCopies) {
    const ClassInfo& c = *GetParam();
    for (std::uint16_t v : Versions(c)) {
        SCOPED_TRACE("version " + std::to_string(v));
        Object sent = Make(c, v);
        cmddata::Fill(*sent);
        const std::string bytes = Written(*sent);
        Object received = Make(c, v);
        ReadAll(bytes, *received);
        if (!c.crossed) {
            EXPECT_EQ(WireHex(*received), bytes) << "written again after reading";
        }

        // Assignment copies deeply and a copy shares: both keep the content when the source
        // is emptied.
        Object assigned = Make(c, v);
        c.assign(*assigned, *sent);
        Object copied(c.copy(*sent));
        sent->RemoveAll();
        EXPECT_EQ(WireHex(*assigned), bytes) << "assigned";
        EXPECT_EQ(WireHex(*copied), bytes) << "copied";
    }
}

// Emptying resets every field, also those the object's current version leaves off the wire:
// filled at the highest version, emptied at version 0, then written at the highest again.
TEST_P(Conformance, RemoveAllEmptiesFieldsOfEveryVersion) {
    const ClassInfo& c = *GetParam();
    const std::uint16_t top = Versions(c).back();
    Object fresh = Make(c, top);
    fresh->RemoveAll();
    Object object = Make(c, top);
    cmddata::Fill(*object);
    SetVersion(*object, 0);
    object->RemoveAll();
    SetVersion(*object, top);
    EXPECT_EQ(WireHex(*object), WireHex(*fresh));
}

// A region cut short anywhere is read without a step outside it (AddressSanitizer watches).
TEST_P(Conformance, CutShortRegionIsReadWithinItsBounds) {
    const ClassInfo& c = *GetParam();
    const std::uint16_t top = Versions(c).back();
    Object sent = Make(c, top);
    cmddata::Fill(*sent);
    Region full(1 << 16);
    CCmdWriter writer = full.Writer();
    writer.Write(sent.get());
    const std::uint32_t size = writer.GetPosition();
    const std::uint32_t step = size < 400 ? 1 : size / 200;
    for (std::uint32_t cut = 0; cut < size; cut += step) {
        Region part(cut == 0 ? 1 : cut);
        std::copy(full.data(), full.data() + cut, part.data());
        CCmdReader reader;
        reader.AttachView(part.data(), cut);
        Object received = Make(c, top);
        reader.Read(received.get());
        EXPECT_LE(reader.GetPosition(), cut);
    }
}

std::string ClassName(const ::testing::TestParamInfo<const ClassInfo*>& info) {
    return info.param->name;
}

INSTANTIATE_TEST_SUITE_P(Classes, Conformance, ::testing::ValuesIn(AllClasses()), ClassName);
INSTANTIATE_TEST_SUITE_P(Messages, MessageConformance, ::testing::ValuesIn(AllClasses(true)),
                         ClassName);

// Every command of a family whose list names any of its commands is named with both sides, and
// the same class is never listed twice.
TEST(ClassLists, NameEachClassOnce) {
    std::vector<std::string> names;
    for (const ClassInfo* c : AllClasses()) names.push_back(c->name);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

}  // namespace
