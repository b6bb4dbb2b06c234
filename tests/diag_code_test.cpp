// Trouble codes: the wire orders that differ from the member order, the version steps, the
// crossed pair, the freeze-frame images and the conversions between a kept list and the answers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <typeinfo>
#include <vector>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

// --- CCmdDiagCode ---

TEST(DiagCodeLayout, CodeNumberTravelsAfterTheThirdTextAndWorkingValueNever) {
    CCmdDiagCode code;
    code.codeNumber = 0x1234;
    code.codeText = "A";
    code.workingValue = 0xDEADBEEF;
    code.codeValue = 0x11223344;
    code.flag = 0x55;
    EXPECT_EQ(WireHex(code),
              "01000000"
              "01000000"
              "0200"
              "4100" +
                  kEmptyText +
                  "44332211"
                  "55" +
                  kEmptyText + "3412");

    CCmdDiagCode received;
    Transfer(code, received);
    EXPECT_EQ(received.workingValue, 0u);
    EXPECT_EQ(received.codeNumber, 0x1234);
}

// Each version adds its own fields: 2 two words, a frame, two words, a frame; 3 a word; 4 a
// frame; 5 a word and the time stamps. The tests are separate, not nested.
TEST(DiagCodeLayout, EachVersionAddsItsOwnFields) {
    CCmdFrzFrmDat frame;
    CCmdAbsoluteTimeStampInfo stamps;
    const std::uint32_t f = cmddata::WireSize(frame);
    const std::uint32_t t = cmddata::WireSize(stamps);
    const std::uint32_t base = 4 + 3 * 6 + 4 + 1 + 2;
    const std::uint32_t sizes[6] = {base,
                                    base,
                                    base + 8 + f + 8 + f,
                                    base + 8 + f + 8 + f + 4,
                                    base + 8 + f + 8 + f + 4 + f,
                                    base + 8 + f + 8 + f + 4 + f + 4 + t};
    for (std::uint16_t v = 0; v <= 5; ++v) {
        CCmdDiagCode code(v);
        EXPECT_EQ(cmddata::WireSize(code), sizes[v]) << "version " << v;
    }

    // At version 3 the word follows the second frame directly, without a third frame.
    CCmdDiagCode v3(3);
    v3.extraWord = 0xA1B2C3D4;
    const std::string hex = WireHex(v3);
    EXPECT_EQ(hex.substr(hex.size() - 8), "d4c3b2a1");
}

TEST(DiagCodeLayout, NewerSenderIsReadAsVersionZeroUpToTheCodeNumber) {
    CCmdDiagCode sent(5);
    sent.codeNumber = 0x0A0B;
    sent.extraWord = 7;
    CCmdDiagCode received(4);
    received.extraWord = 9;
    cmddata::Result error = 1;
    const std::uint32_t end = Transfer(sent, received, &error);
    EXPECT_EQ(error, cmddata::result::kOk);
    EXPECT_EQ(received.GetVersion(), 0);
    EXPECT_EQ(end, 4u + 3 * 6 + 4 + 1 + 2);  // right after the code number
    EXPECT_EQ(received.codeNumber, 0x0A0B);
    EXPECT_EQ(received.extraWord, 9u);  // not a field of version 0
}

// --- CCmdDiagCodeP5 ---

// Offset of the first slot in an otherwise empty record: prefix, three words, three empty texts
// with two words, the crossed pair, two empty byte lists, a word, the empty frame list, a word.
constexpr std::size_t kFirstSlot = 4 + 12 + 6 + 4 + 6 + 4 + 6 + 5 + 8 + 8 + 4 + 8 + 4;
constexpr std::size_t kSlotSize = 144;

TEST(DiagCodeP5Layout, ClassValueAndFlagCrossOnReading) {
    CCmdDiagCodeP5 sent;
    sent.classValue = 0x11223344;
    sent.flag = 0x55;
    const std::string hex = WireHex(sent);
    const std::size_t at = (4 + 12 + 6 + 4 + 6 + 4 + 6) * 2;
    EXPECT_EQ(hex.substr(at, 10), "4433221155");

    CCmdDiagCodeP5 received;
    cmddata::Result error = 1;
    EXPECT_EQ(Transfer(sent, received, &error), hex.size() / 2);
    EXPECT_EQ(error, cmddata::result::kOk);
    EXPECT_EQ(received.flag, 0x44);
    EXPECT_EQ(received.classValue, 0x55112233u);
    EXPECT_EQ(WireHex(received).substr(at, 10), "3322115544");
}

// A slot travels as the 32-bit image of a CCmdFrzFrmDatP5: version prefixes and scalars at their
// offsets (the working value among them), 0 in type words, pointers, counts and padding.
TEST(DiagCodeP5Image, SlotIsItsFixedImageWithoutAddresses) {
    CCmdDiagCodeP5 code;
    CCmdFrzFrmDatP5& slot = code.slots[0];
    slot.itemNumber = 0x0102;
    slot.workingValue = 0x03040506;
    slot.name = "N";
    slot.extraValue = 0x0708090A;
    slot.extraFlag = 0x0B;
    slot.unit = "U";
    slot.displayFlag = 0x0C;
    slot.validFlag = 0x0D;
    testing_cmddata::FillImageTable(slot.conversion);
    slot.items.AddTail();
    const std::string emptyObject =
        "00000000"
        "01000000"
        "00000000"
        "00000000";
    const std::string block =
        "00000000"
        "01000000"  // type word, version prefix
        "02010000"
        "06050403" +
        emptyObject +  // name: no pointer, no count
        "0a090807"
        "0b000000" +
        emptyObject +  // unit
        "0c0d0000"
        "00000000"
        "01000000"  // conversion table
        "11000000"
        "12000000"
        "13000000"
        "1400"
        "15"
        "00"
        "1600"
        "0000" +
        emptyObject + "00000000" +  // its display entries
        "17000000"
        "18000000"
        "19000000"
        "1a000000" +
        emptyObject + "00000000";  // items
    ASSERT_EQ(block.size(), kSlotSize * 2);
    const std::string hex = WireHex(code);
    EXPECT_EQ(hex.substr(kFirstSlot * 2, kSlotSize * 2), block);
    EXPECT_EQ(hex.size() / 2,
              kFirstSlot + 4 * kSlotSize + 4 + 8 + cmddata::WireSize(code.timeStamps));

    // The scalars arrive; texts, entries and items cannot travel in a block and arrive empty.
    CCmdDiagCodeP5 received;
    received.slots[0].name = "OLD";
    received.slots[0].items.AddTail();
    Transfer(code, received);
    const CCmdFrzFrmDatP5& got = received.slots[0];
    EXPECT_EQ(got.itemNumber, 0x0102);
    EXPECT_EQ(got.workingValue, 0x03040506u);
    EXPECT_EQ(got.extraValue, 0x0708090Au);
    EXPECT_EQ(got.extraFlag, 0x0B);
    EXPECT_EQ(got.validFlag, 0x0D);
    EXPECT_EQ(got.conversion.bitWidth, 0x16);
    EXPECT_EQ(got.conversion.graphHigh, 0x1Au);
    EXPECT_EQ(got.name.GetAt(), nullptr);
    EXPECT_EQ(got.name.GetSize(), 0);
    EXPECT_EQ(got.items.GetCount(), 0u);
    EXPECT_EQ(got.conversion.displayEntries.GetCount(), 0u);
    EXPECT_EQ(WireHex(received).substr(kFirstSlot * 2, kSlotSize * 2), block);
}

// Hostile bytes in a block: every type word, pointer and count of the image set. The slot keeps
// its own type, stores no foreign pointer and is usable afterwards.
TEST(DiagCodeP5Image, HostileBlockNeverChangesTypeOrStoresPointers) {
    CCmdDiagCodeP5 sent;
    Region region(1 << 16);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    const std::uint32_t size = writer.GetPosition();
    for (std::size_t i = 0; i < kSlotSize; ++i) region.data()[kFirstSlot + i] = 0xA5;

    CCmdDiagCodeP5 received;
    received.slots[0].unit = "kept?";
    received.slots[0].conversion.displayEntries.AddTail();
    CCmdReader reader;
    reader.AttachView(region.data(), size);
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_EQ(reader.GetPosition(), size);

    CCmdFrzFrmDatP5& slot = received.slots[0];
    EXPECT_TRUE(typeid(slot) == typeid(CCmdFrzFrmDatP5));
    EXPECT_EQ(slot.GetVersion(), 0xA5A5);
    EXPECT_EQ(slot.itemNumber, 0xA5A5);
    EXPECT_EQ(slot.conversion.scaleNumerator, 0xA5A5A5A5u);
    EXPECT_EQ(slot.name.GetAt(), nullptr);
    EXPECT_EQ(slot.unit.GetAt(), nullptr);
    EXPECT_EQ(slot.items.GetCount(), 0u);
    EXPECT_EQ(slot.conversion.displayEntries.GetCount(), 0u);
    EXPECT_EQ(slot.GetValue(1), 0);
    // Still a working object through its own virtual operations; its image is clean again.
    const std::string own = WireHex(slot);
    EXPECT_EQ(own.substr(0, 8), "a5a5a5a5");
    const std::string hex = WireHex(received);
    const std::string image = hex.substr(kFirstSlot * 2, kSlotSize * 2);
    EXPECT_EQ(image.substr(0, 16), "00000000a5a5a5a5");
    EXPECT_EQ(image.substr(16 * 2 + 8 * 2, 16), "0000000000000000");     // name pointer, count
    EXPECT_EQ(image.substr(124 * 2 + 8 * 2, 24), std::string(24, '0'));  // items
    slot.RemoveAll();
    EXPECT_EQ(slot.itemNumber, 0);
}

// The describer shows each slot as one field of kImage, 144 bytes, as it travels.
TEST(DiagCodeP5Image, DescribedAsOneImageFieldPerSlot) {
    struct Images : cmddata::FieldVisitor {
        std::vector<std::string> names;
        std::vector<std::uint32_t> sizes;
        std::string first;
        void Bytes(const cmddata::FieldInfo& f, const unsigned char* data,
                   std::uint32_t size) override {
            if (f.type != cmddata::WireType::kImage) return;
            names.push_back(f.name);
            sizes.push_back(f.size);
            if (first.empty()) first = Hex(data, size);
        }
    } images;
    CCmdDiagCodeP5 code;
    code.slots[0].itemNumber = 0x0102;
    cmddata::Describe(code, images);
    EXPECT_EQ(images.names, (std::vector<std::string>{"slot_1", "slot_2", "slot_3", "slot_4"}));
    EXPECT_EQ(images.sizes, std::vector<std::uint32_t>(4, kSlotSize));
    EXPECT_EQ(images.first, WireHex(code).substr(kFirstSlot * 2, kSlotSize * 2));
}

// --- conversions between a kept list and the answers ---

void AddCode(CCmdList<CCmdDiagCode>& codes, std::uint16_t number) {
    codes.GetAt(codes.AddTail()).codeNumber = number;
}

TEST(DiagCodeConversion, KeptListTakesAnAnswersHeaderCodesAndStatus) {
    CGetDiagCodeRcv answer;
    answer.SetThreadId(0x77);
    answer.SetStatusWord(1, 0x11);
    answer.SetStatusWord(4, 0x44);
    AddCode(answer.codes, 0x0A01);
    AddCode(answer.codes, 0x0A02);
    answer.codeStatus = 0x5A;

    CCmdDiagCodeListInfo info(3);
    info.codeKind = 9;
    AddCode(info.codes, 0x0B01);
    info = answer;
    EXPECT_EQ(info.GetVersion(), 3);
    EXPECT_EQ(info.GetCmdId(), 20u);
    EXPECT_EQ(info.GetThreadId(), 0x77u);
    EXPECT_EQ(info.GetStatusWord(1), 0x11u);
    EXPECT_EQ(info.GetStatusWord(4), 0x44u);
    EXPECT_EQ(info.codeKind, 0u);  // no answer carries it
    EXPECT_EQ(info.codeStatus, 0x5Au);
    ASSERT_EQ(info.codes.GetCount(), 2u);
    EXPECT_EQ(info.codes.GetAt(1).codeNumber, 0x0A02);
    answer.codes.RemoveAll();  // a deep copy: the kept codes stay
    EXPECT_EQ(info.codes.GetCount(), 2u);

    CGetPendingCodeRcv pending;
    AddCode(pending.codes, 0x0C01);
    pending.SetStatusWord(2, 0x22);
    info = pending;  // no status word in a pending answer: it is emptied
    EXPECT_EQ(info.GetCmdId(), 52u);
    EXPECT_EQ(info.codeStatus, 0u);
    EXPECT_EQ(info.GetStatusWord(1), 0u);
    EXPECT_EQ(info.GetStatusWord(2), 0x22u);
    ASSERT_EQ(info.codes.GetCount(), 1u);
    EXPECT_EQ(info.codes.GetAt(0).codeNumber, 0x0C01);
}

TEST(DiagCodeConversion, TheThreeAnswersTakeAKeptList) {
    CCmdDiagCodeListInfo info;
    info.SetStatusWord(3, 0x33);
    info.codeStatus = 0x66;
    AddCode(info.codes, 0x0D01);

    CGetDiagCodeRcv codes;
    CGetPendingCodeRcv pending;
    CGetPermanentCodeRcv permanent;
    CCmdDiagCodeAnswer* answers[3] = {&codes, &pending, &permanent};
    for (CCmdDiagCodeAnswer* a : answers) {
        AddCode(a->codes, 0x0E01);  // emptied first
        a->SetStatusWord(1, 0x99);
        a->SetThreadId(0x42);
    }
    codes = info;
    pending = info;
    permanent = info;
    const std::uint32_t ids[3] = {20, 52, 116};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(answers[i]->GetCmdId(), ids[i]);  // identifier and thread id stay
        EXPECT_EQ(answers[i]->GetThreadId(), 0x42u);
        EXPECT_EQ(answers[i]->GetStatusWord(1), 0u);
        EXPECT_EQ(answers[i]->GetStatusWord(3), 0x33u);
        ASSERT_EQ(answers[i]->codes.GetCount(), 1u);
        EXPECT_EQ(answers[i]->codes.GetAt(0).codeNumber, 0x0D01);
    }
    EXPECT_EQ(codes.codeStatus, 0x66u);
    info.codes.RemoveAll();
    EXPECT_EQ(permanent.codes.GetCount(), 1u);
}

}  // namespace
