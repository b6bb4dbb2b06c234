// ECU lists: the ECU record's version step, its state byte and unsent word, the trouble-code
// count look-up, the framings of the locked answers, the request orders, the conversions between
// storage records and answers, and the locks.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "helpers.h"

// The win32 thread model of some MinGW runtimes has no std::thread: the threaded tests are left
// out there.
#if !defined(__GLIBCXX__) || defined(_GLIBCXX_HAS_GTHREADS)
#define CMDDATA_TEST_THREADS 1
#include <thread>
#endif

using namespace testing_cmddata;

namespace {

void AddCount(CCmdEcuInfo& ecu, std::uint16_t kind, std::uint8_t count) {
    CCmdDiagCodeCount& entry = ecu.codeCounts.GetAt(ecu.codeCounts.AddTail());
    entry.count = kind;  // the u16 is the code kind
    entry.flag = count;  // the u8 is the count
}

CCmdEcuInfo& AddEcu(CCmdList<CCmdEcuInfo>& list, std::uint32_t id, std::uint16_t version = 1) {
    CCmdEcuInfo& ecu = list.GetAt(list.AddTail());
    ecu = CCmdEcuInfo(version);
    ecu.ecuId = id;
    return ecu;
}

// The bytes of an ECU record of version 1 as the tests below fill it: prefix and identifier,
// name, state byte, the count list (kind 7, count 9), the four words.
const std::string kEcuV1 = std::string("0100000044332211") + "0100000002004100" + "ff" +
                           "0100000001000000" + "01000000070009" + "0100000002000000030004";

CCmdEcuInfo FilledEcu(std::uint16_t version) {
    CCmdEcuInfo ecu(version);
    ecu.ecuId = 0x11223344;
    ecu.ecuIdPartner = 0xAABBCCDD;
    ecu.name = "A";
    AddCount(ecu, 7, 9);
    ecu.firstWord = 1;
    ecu.secondWord = 2;
    ecu.thirdValue = 3;
    ecu.fourthValue = 4;
    return ecu;
}

}  // namespace

// --- CCmdEcuInfo ---

TEST(EcuInfo, VersionTwoAddsTheListsAndThePartnerWordNeverTravels) {
    CCmdEcuInfo ecu = FilledEcu(1);
    EXPECT_EQ(WireHex(ecu), kEcuV1);
    CCmdEcuInfo received(1);
    received.ecuIdPartner = 5;
    Transfer(ecu, received);
    EXPECT_EQ(received.ecuIdPartner, 5u) << "never read";

    ecu = FilledEcu(2);
    const std::string funcList = "01000000" + std::string(40, '0') + kEmptyList;
    std::string lists;
    for (int i = 0; i < 6; ++i) lists += kEmptyList;
    EXPECT_EQ(WireHex(ecu), "02" + kEcuV1.substr(2) + funcList + lists);
}

TEST(EcuInfo, ReaderOfLowerVersionTakesVersionZeroAndFieldsOneToNine) {
    CCmdEcuInfo ecu = FilledEcu(2);
    ecu.detailLists.AddTail();
    CCmdEcuInfo received(1);
    const std::uint32_t read = Transfer(ecu, received);
    EXPECT_EQ(received.GetVersion(), 0);
    EXPECT_EQ(read, kEcuV1.size() / 2);
    EXPECT_EQ(received.detailLists.GetCount(), 0u);
    EXPECT_EQ(received.fourthValue, 4);
}

TEST(EcuInfo, RemoveAllSetsTheStateByteToFFAndAssignmentCopiesThePartner) {
    CCmdEcuInfo ecu = FilledEcu(2);
    CCmdEcuInfo copy;
    copy = ecu;
    EXPECT_EQ(copy.ecuIdPartner, 0xAABBCCDDu);
    ecu.state = 0x12;
    ecu.RemoveAll();
    EXPECT_EQ(ecu.state, 0xFF);
    EXPECT_EQ(ecu.ecuIdPartner, 0u);
    EXPECT_EQ(CCmdEcuInfo().state, 0xFF);
}

TEST(EcuInfo, GetDiagCodeCountFindsTheFirstEntryOfTheKind) {
    CCmdEcuInfo ecu;
    EXPECT_EQ(ecu.GetDiagCodeCount(1), -1) << "empty list";
    AddCount(ecu, 1, 3);
    AddCount(ecu, 2, 255);
    AddCount(ecu, 2, 7);
    EXPECT_EQ(ecu.GetDiagCodeCount(5), -1) << "no such kind";
    EXPECT_EQ(ecu.GetDiagCodeCount(1), 3);
    EXPECT_EQ(ecu.GetDiagCodeCount(2), 255) << "the first of two wins, unsigned";
}

// --- Locked answers: framing ---

TEST(EcuListAnswers, PrefixedAnswerReadAsPlainOneDoesNotLineUp) {
    CEcuEachConnectRcv each;
    AddEcu(each.ecus, 9);
    CGetConnectEcuListRcv connect;
    Transfer(each, connect);
    EXPECT_EQ(connect.GetCmdId(), 1u) << "the prefix taken for the identifier";
    EXPECT_EQ(connect.GetStatusWord(1), 122u) << "the identifier taken for status word 1";
    ASSERT_EQ(connect.ecus.GetCount(), 1u) << "the list prefix taken for the count";
    EXPECT_NE(connect.ecus[0].ecuId, 9u);
}

TEST(EcuListRequests, ConnectSendsFlagThenListMountListThenFlag) {
    const std::string oneId = "0100000001000000" + std::string("0201");  // list of one: 0x0102
    CGetConnectEcuListSnd connect;
    connect.flag = 0x5A;
    connect.ids.GetAt(connect.ids.AddTail()) = 0x0102;
    EXPECT_EQ(WireHex(connect), "03000000" + kNoStatus + "5a" + oneId);

    CGetMountEcuListSnd mount;
    mount.flag = 0x5A;
    mount.ids.GetAt(mount.ids.AddTail()) = 0x0102;
    EXPECT_EQ(WireHex(mount), "46000000" + kNoStatus + oneId + "5a");

    CGetMountEcuListNoCommSnd noComm;
    noComm.flag = 0x5A;
    EXPECT_EQ(WireHex(noComm), "0100000079000000" + kNoStatus + kEmptyList + "5a");

    CEcuEachConnectSnd each;
    each.firstValue = 1;
    each.secondValue = 2;
    EXPECT_EQ(WireHex(each), "010000007a000000" + kNoStatus + "01000200");
}

TEST(EcuListMessages, ShortCutAnswerCarriesAnEcuRecordOfVersionTwo) {
    EXPECT_EQ(CCheckConnectShortCutRcv().ecu.GetVersion(), 2);
}

// --- Conversions ---

TEST(EcuListConversion, AnswerIntoRecordKeepsTheRecordVersionAndEachEcuVersion) {
    CGetConnectEcuListRcv answer;
    answer.SetStatusWord(1, 0x11);
    answer.SetStatusWord(4, 0x44);
    answer.SetThreadId(77);
    AddEcu(answer.ecus, 1, 1).name = "A";
    AddEcu(answer.ecus, 2, 3);
    answer.firstWord = 5;
    answer.secondWord = 6;
    answer.thirdValue = 7;

    CCmdConnectEcuListInfo record(4);
    AddEcu(record.ecus, 99);
    record = answer;
    EXPECT_EQ(record.GetVersion(), 4);
    EXPECT_EQ(record.GetCmdId(), 3u);
    EXPECT_EQ(record.GetThreadId(), 77u);
    EXPECT_EQ(record.GetStatusWord(1), 0x11u);
    EXPECT_EQ(record.GetStatusWord(4), 0x44u);
    ASSERT_EQ(record.ecus.GetCount(), 2u);
    EXPECT_EQ(record.ecus[0].ecuId, 1u);
    EXPECT_EQ(record.ecus[0].GetVersion(), 1) << "the source's version replaces the 2";
    EXPECT_EQ(record.ecus[1].GetVersion(), 3);
    EXPECT_EQ(record.firstWord, 5u);
    EXPECT_EQ(record.secondWord, 6u);
    EXPECT_EQ(record.thirdValue, 7);

    answer.ecus[0].name = "B";  // a deep copy: the record keeps its own text
    EXPECT_EQ(WireHex(record.ecus[0].name), "010000000200" + std::string("4100"));
}

TEST(EcuListConversion, RecordIntoAnswerTakesStatusWordsButKeepsTheIdentifier) {
    CCmdMountEcuListInfo record;
    CGetMountEcuListRcv source;
    source.SetStatusWord(2, 0x22);
    AddEcu(source.ecus, 8);
    source.thirdValue = 9;
    record = source;
    record.secondWord = 4;

    CGetMountEcuListRcv answer;
    answer.SetThreadId(5);
    AddEcu(answer.ecus, 1);
    AddEcu(answer.ecus, 2);
    answer.firstWord = 3;
    answer = record;
    EXPECT_EQ(answer.GetCmdId(), 70u);
    EXPECT_EQ(answer.GetThreadId(), 5u);
    EXPECT_EQ(answer.GetStatusWord(2), 0x22u);
    ASSERT_EQ(answer.ecus.GetCount(), 1u);
    EXPECT_EQ(answer.ecus[0].ecuId, 8u);
    EXPECT_EQ(answer.firstWord, 0u);
    EXPECT_EQ(answer.secondWord, 4u);
    EXPECT_EQ(answer.thirdValue, 9);

    // The record's bytes are the answer's behind a version prefix.
    EXPECT_EQ(WireHex(record), "01000000" + WireHex(answer));
}

// --- Locks ---

TEST(EcuListLock, IsReentrantAndACopyGetsItsOwn) {
    CGetConnectEcuListRcv answer;
    AddEcu(answer.ecus, 1);
    answer.Lock();
    answer.Lock();  // the same thread again
    CGetConnectEcuListRcv copy(answer);
    answer.Unlock();
    answer.Unlock();
    EXPECT_EQ(copy.ecus.GetCount(), 1u);

#ifdef CMDDATA_TEST_THREADS
    // While this thread holds the source's lock, another thread takes and leaves the copy's.
    answer.Lock();
    bool took = false;
    std::thread other([&copy, &took] {
        copy.Lock();
        took = true;
        copy.Unlock();
    });
    other.join();
    answer.Unlock();
    EXPECT_TRUE(took);
#endif
}

#ifdef CMDDATA_TEST_THREADS
// One thread keeps refilling an answer under its lock while this one reads and writes it under
// the lock: every look sees a whole fill (ThreadSanitizer checks the accesses).
TEST(EcuListLock, ReaderUnderTheLockSeesOnlyWholeFills) {
    CEcuEachConnectRcv answer;
    std::atomic<bool> done{false};
    std::thread filler([&answer, &done] {
        for (std::uint32_t round = 1; round <= 300; ++round) {
            answer.Lock();
            answer.RemoveAll();
            for (std::uint32_t k = 0; k <= round % 4; ++k) AddEcu(answer.ecus, round);
            answer.firstWord = answer.ecus.GetCount();
            answer.secondWord = round;
            answer.Unlock();
        }
        done = true;
    });
    int looks = 0;
    while (!done.load() || looks == 0) {
        answer.Lock();
        answer.Lock();  // re-entrant, as a caller's nested helper would take it
        const std::uint32_t count = answer.ecus.GetCount();
        EXPECT_EQ(answer.firstWord, count);
        answer.ecus.ForEach(
            [&answer](const CCmdEcuInfo& ecu) { EXPECT_EQ(ecu.ecuId, answer.secondWord); });
        const std::string bytes = WireHex(answer, 4096);
        answer.Unlock();
        answer.Unlock();
        EXPECT_NE(bytes, "write failed");
        ++looks;
    }
    filler.join();
    EXPECT_EQ(answer.secondWord, 300u);
}
#endif
