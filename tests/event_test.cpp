// Event records: the freeze frames and support data moved as fixed images (exact blocks, hostile
// blocks), the version prefix before the header, the version-2 words of the current-time answer,
// the answer whose list never travels and the request whose first member travels last.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <typeinfo>

#include "helpers.h"

using namespace testing_cmddata;

namespace {

const std::string kEmptyObject = "00000000010000000000000000000000";  // a text or list image head
constexpr std::size_t kFrameImage = 152;

// A frame whose every scalar is distinct and which owns texts, a display entry and an item.
void FillFrame(CCmdFrzFrmDat& f) {
    f.itemNumber = 0x0102;
    f.workingValue = 0x03040506;
    f.name = "N";
    f.unit = "U";
    f.valueText = "V";
    f.displayFlag = 0x0C;
    f.validFlag = 0x0D;
    testing_cmddata::FillImageTable(f.conversion);
    f.items.AddTail();
}

// The 152-byte image of FillFrame's frame: scalars at their offsets, no address, no count.
const std::string kFilledFrameBlock =
    "00000000"
    "01000000"  // type word, version prefix
    "0201"
    "0000"
    "06050403" +
    kEmptyObject + kEmptyObject + kEmptyObject +  // texts
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
    kEmptyObject + "00000000" +  // its display entries
    "17000000"
    "18000000"
    "19000000"
    "1a000000" +
    kEmptyObject + "00000000";  // items

// --- CCmdTimeStampInfo ---

TEST(TimeStampImage, RecordIs480BytesWhateverItsFramesHold) {
    CCmdTimeStampInfo empty;
    CCmdTimeStampInfo full;
    FillFrame(full.firstFrame);
    FillFrame(full.secondFrame);
    FillFrame(full.thirdFrame);
    full.thirdFrame.items.AddTail();
    EXPECT_EQ(cmddata::WireSize(empty), 4u + 8 + 152 + 8 + 152 + 4 + 152);
    EXPECT_EQ(WireHex(full).size() / 2, 480u);
}

TEST(TimeStampImage, FramesTravelAsTheirImageAndArriveWithoutOwnedParts) {
    ASSERT_EQ(kFilledFrameBlock.size(), kFrameImage * 2);
    CCmdTimeStampInfo sent;
    sent.firstTime = 0xA1;
    sent.firstCounter = 0xA2;
    FillFrame(sent.firstFrame);
    sent.secondTime = 0xB1;
    sent.thirdTime = 0xC1;
    const std::string hex = WireHex(sent);
    EXPECT_EQ(hex.substr(0, 24),
              "01000000"
              "a1000000"
              "a2000000");
    EXPECT_EQ(hex.substr(24, kFrameImage * 2), kFilledFrameBlock);
    EXPECT_EQ(hex.substr((12 + kFrameImage) * 2, 8), "b1000000");
    EXPECT_EQ(hex.substr((12 + 2 * kFrameImage + 8) * 2, 8), "c1000000");

    CCmdTimeStampInfo received;
    received.firstFrame.name = "OLD";
    received.firstFrame.items.AddTail();
    cmddata::Result error = 1;
    EXPECT_EQ(Transfer(sent, received, &error), 480u);
    EXPECT_EQ(error, cmddata::result::kOk);
    const CCmdFrzFrmDat& got = received.firstFrame;
    EXPECT_EQ(got.itemNumber, 0x0102);
    EXPECT_EQ(got.workingValue, 0x03040506u);  // in the image, though its own fields never send it
    EXPECT_EQ(got.validFlag, 0x0D);
    EXPECT_EQ(got.conversion.bitWidth, 0x16);
    EXPECT_EQ(got.conversion.graphHigh, 0x1Au);
    EXPECT_EQ(got.name.GetAt(), nullptr);
    EXPECT_EQ(got.valueText.GetSize(), 0);
    EXPECT_EQ(got.items.GetCount(), 0u);
    EXPECT_EQ(got.conversion.displayEntries.GetCount(), 0u);
    EXPECT_EQ(received.thirdTime, 0xC1u);
    EXPECT_EQ(WireHex(received), hex);
}

// Every byte of the first block hostile: type word, pointers, counts. The frame keeps its type,
// takes no pointer and stays usable; written again, its image is clean.
TEST(TimeStampImage, HostileBlockNeverChangesTypeOrStoresPointers) {
    CCmdTimeStampInfo sent;
    Region region(1024);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    const std::uint32_t size = writer.GetPosition();
    for (std::size_t i = 0; i < kFrameImage; ++i) region.data()[12 + i] = 0xA5;

    CCmdTimeStampInfo received;
    received.firstFrame.unit = "kept?";
    received.firstFrame.conversion.displayEntries.AddTail();
    CCmdReader reader;
    reader.AttachView(region.data(), size);
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_EQ(reader.GetPosition(), size);

    CCmdFrzFrmDat& frame = received.firstFrame;
    EXPECT_TRUE(typeid(frame) == typeid(CCmdFrzFrmDat));
    EXPECT_EQ(frame.GetVersion(), 0xA5A5);
    EXPECT_EQ(frame.itemNumber, 0xA5A5);
    EXPECT_EQ(frame.conversion.scaleNumerator, 0xA5A5A5A5u);
    EXPECT_EQ(frame.unit.GetAt(), nullptr);
    EXPECT_EQ(frame.items.GetCount(), 0u);
    EXPECT_EQ(frame.conversion.displayEntries.GetCount(), 0u);
    EXPECT_EQ(frame.GetValue(1), 0);
    const std::string image = WireHex(received).substr(24, kFrameImage * 2);
    EXPECT_EQ(image.substr(0, 16), "00000000a5a5a5a5");
    EXPECT_EQ(image.substr(16 * 2 + 8 * 2, 16), std::string(16, '0'));   // name pointer, count
    EXPECT_EQ(image.substr(132 * 2 + 8 * 2, 24), std::string(24, '0'));  // items
    frame.RemoveAll();
    EXPECT_EQ(frame.itemNumber, 0);
}

// --- CCmdDwordSupportInfo ---

TEST(DwordSupportImage, DataTravelsAsTwelveByteImage) {
    CCmdDwordSupportInfo sent;
    sent.supportWord = 0x11223344;
    sent.supportData = 0x55667788;
    EXPECT_EQ(WireHex(sent),
              "01000000"
              "44332211"
              "00000000"  // type word
              "01000000"  // the data's version prefix
              "88776655");
    EXPECT_EQ(WireHex(sent.supportData), "88776655");  // its own form has no prefix

    // A hostile type word is ignored; the version prefix and value are taken.
    Region region(64);
    CCmdWriter writer = region.Writer();
    writer.Write(&sent);
    for (int i = 8; i < 12; ++i) region.data()[i] = 0xFF;
    region.data()[12] = 0x03;
    CCmdDwordSupportInfo received;
    CCmdReader reader;
    reader.AttachView(region.data(), writer.GetPosition());
    reader.Read(&received);
    EXPECT_EQ(reader.GetLastError(), cmddata::result::kOk);
    EXPECT_TRUE(typeid(received.supportData) == typeid(CCmdDwordData));
    EXPECT_EQ(received.supportData.GetVersion(), 3);
    EXPECT_EQ(static_cast<std::uint32_t>(received.supportData), 0x55667788u);
    EXPECT_EQ(WireHex(received).substr(16, 8), "00000000");
}

TEST(DwordSupportImage, SupportRecordCarriesThemBehindPrefixAndHeader) {
    CCmdSupport sent;
    sent.supportWord = 0x11223344;
    sent.supportData = 0x55667788;
    EXPECT_EQ(WireHex(sent), "01000000" + std::string(40, '0') +  // prefix, header words
                                 "44332211"
                                 "00000000"
                                 "01000000"
                                 "88776655");
    CCmdSupport received;
    EXPECT_EQ(Transfer(sent, received), 40u);
    EXPECT_EQ(received.supportWord, 0x11223344u);
    EXPECT_EQ(static_cast<std::uint32_t>(received.supportData), 0x55667788u);
}

// --- messages ---

TEST(EventMessages, DrsFileRequestSendsItsFirstDeclaredTextLastFromVersionTwo) {
    CCreateDrsFileSnd v2;  // default version 2
    CCreateDrsFileSnd v1(1);
    for (CCreateDrsFileSnd* r : {&v2, &v1}) {
        r->extraText = "Z";
        r->fileName = "A";
        r->comment = "C";
    }
    const std::string hex1 = WireHex(v1);
    const std::string hex2 = WireHex(v2);
    const std::string fileName =
        "01000000"
        "0200"
        "4100";
    EXPECT_EQ(hex2.substr(0, 40 + fileName.size()), "58000000" + kNoStatus + fileName);
    ASSERT_EQ(hex2.size(), hex1.size() + 16);
    EXPECT_EQ(hex2.substr(0, hex1.size()), hex1);
    EXPECT_EQ(hex2.substr(hex1.size()),
              "01000000"
              "0200"
              "5a00");

    CCreateDrsFileSnd received;
    EXPECT_EQ(Transfer(v2, received), hex2.size() / 2);
    EXPECT_EQ(received.extraText.GetSize(), 2);
    EXPECT_EQ(received.extraText.GetAt()[0], u'Z');
}

TEST(EventMessages, CurrentTimeAnswerCarriesFourWordsFromVersionTwo) {
    CGetCurrentTimeInfoRcv v1(1);
    CGetCurrentTimeInfoRcv v2;              // default version 2
    CGetCurrentTimeInfoEachEcuRcv eachEcu;  // default version 1
    EXPECT_EQ(v2.GetVersion(), 2);
    const std::uint32_t base = 20 + 4 + 2 * cmddata::WireSize(v1.firstFrame);
    EXPECT_EQ(cmddata::WireSize(v1), base);
    EXPECT_EQ(cmddata::WireSize(eachEcu), base);
    for (int i = 0; i < 4; ++i) v2.extraWords[i] = static_cast<std::uint32_t>(i + 1);
    const std::string hex = WireHex(v2);
    ASSERT_EQ(hex.size() / 2, base + 16);
    EXPECT_EQ(hex.substr(base * 2),
              "01000000"
              "02000000"
              "03000000"
              "04000000");
}

TEST(EventMessages, PcsOperationAnswerKeepsItsListOffTheWire) {
    CGetPCSOperationFFDRcv sent;
    sent.frames.AddTail();
    sent.frames.AddTail();
    EXPECT_EQ(WireHex(sent), "ba000000" + kNoStatus);

    CGetPCSOperationFFDRcv received;
    received.frames.GetAt(received.frames.AddTail()).itemNumber = 7;
    EXPECT_EQ(Transfer(sent, received), 20u);
    ASSERT_EQ(received.frames.GetCount(), 1u);  // reading leaves the list as it was
    EXPECT_EQ(received.frames.GetAt(0).itemNumber, 7);
    received.RemoveAll();
    EXPECT_EQ(received.frames.GetCount(), 0u);
}

}  // namespace
