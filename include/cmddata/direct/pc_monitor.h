// PC monitor: start monitoring signals and frames on the vehicle side, fetch what was
// monitored, stop. All six messages bear identifier 0. Only the data request carries its
// header; the others carry status word 4 (requests) or status word 3 (answers) alone, and the
// answers set status word 2 while reading: 1 when status word 3 is not 0, else 0. Status
// word 2 itself never travels.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/message.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// Two words and a list, the shared shape of the monitor set-up records (no version prefix).
template <class Item>
class CCmdPcMonWordsAndList : public CCmdCore {
public:
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
    CCmdList<Item> items;

protected:
    template <class P>
    void WordsAndList(P& p) {
        p.U32("first_word", firstWord);
        p.U32("second_word", secondWord);
        p.List("items", items);
    }
};

/// What to monitor: two words and the 16-bit identifiers of the signals.
class CMDDATA_API CCmdPcMonInfo : public CCmdPcMonWordsAndList<CCmdWordId> {
public:
    CMDDATA_FIELDS(CCmdPcMonInfo)
    CCmdPcMonInfo() = default;
};

/// One signal of a monitored frame: three 16-bit words (6 bytes, no version prefix).
class CMDDATA_API CCmdPcMonRcvSignInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdPcMonRcvSignInfo)
    CCmdPcMonRcvSignInfo() = default;
    std::uint16_t words[3] = {0, 0, 0};
};

/// One monitored frame: two words and its signals.
class CMDDATA_API CCmdPcMonRcvFrmInfo : public CCmdPcMonWordsAndList<CCmdPcMonRcvSignInfo> {
public:
    CMDDATA_FIELDS(CCmdPcMonRcvFrmInfo)
    CCmdPcMonRcvFrmInfo() = default;
};

/// One block of monitored data: a word and the monitored bytes (no version prefix).
class CMDDATA_API CCmdPcMonRcvData : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdPcMonRcvData)
    CCmdPcMonRcvData() = default;
    std::uint32_t word = 0;
    CCmdBuffer bytes;
};

/// Starts the monitor: status word 4, then what to monitor.
class CMDDATA_API CPcMonStartSnd : public CCmdSnd<cmddata::command::PcMonStart> {
public:
    CMDDATA_MESSAGE(CPcMonStartSnd)
    CCmdList<CCmdPcMonInfo> monitors;
};

/// Outcome of the start: status word 3, a word and the frames monitored.
class CMDDATA_API CPcMonStartRcv : public CCmdRcv<cmddata::command::PcMonStart> {
public:
    CMDDATA_MESSAGE(CPcMonStartRcv)
    std::uint32_t word = 0;
    CCmdList<CCmdPcMonRcvFrmInfo> frames;
};

/// Asks for the monitored data of the listed items; the one PC monitor message with its header.
class CMDDATA_API CPcMonGetDataSnd : public CCmdSnd<cmddata::command::PcMonGetData> {
public:
    CMDDATA_MESSAGE(CPcMonGetDataSnd)
    CCmdList<CCmdDwordId> itemIds;
};

/// The monitored data: status word 3, then the blocks.
class CMDDATA_API CPcMonGetDataRcv : public CCmdRcv<cmddata::command::PcMonGetData> {
public:
    CMDDATA_MESSAGE(CPcMonGetDataRcv)
    CCmdList<CCmdPcMonRcvData> blocks;
};

/// Stops the monitor: status word 4 alone (4 bytes).
class CMDDATA_API CPcMonStopSnd : public CCmdSnd<cmddata::command::PcMonStop> {
public:
    CMDDATA_MESSAGE(CPcMonStopSnd)
};

/// Outcome of the stop: status word 3 alone (4 bytes).
class CMDDATA_API CPcMonStopRcv : public CCmdRcv<cmddata::command::PcMonStop> {
public:
    CMDDATA_MESSAGE(CPcMonStopRcv)
};
