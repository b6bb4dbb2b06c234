// CAN bus checks, by categories of the vehicle's bus, and the gateway variant with its options:
// the category records and lists, the gateway check records, the CAN trouble-code records and
// the messages that carry them. The codes found on the bus travel with the derived commands
// GetDiagCodeCanBusDiag and GetDiagCodeCanBusDiagP5 of the trouble-code family.
//
// Only the widths and order of the scalars and texts are fixed; their names say where they
// stand, and their meaning belongs to the two processes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/diagcode/freeze_frame.h"

/// One category of the bus check: a leading word, its name, its identifier, a flag and a
/// trailing word.
///
/// It keeps the header words of CCmdBaseInfo, but only the version prefix travels: the
/// identifier and status words of a category never reach the region, so a category read from a
/// peer keeps the ones it held. RemoveAll empties the payload and leaves the header words, as
/// the category list does (nothing states otherwise for the category itself, and its header words
/// are no part of what it carries). Default version 1.
class CMDDATA_API CCmdCanBusCategoryInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdCanBusCategoryInfo)
    explicit CCmdCanBusCategoryInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t leadingWord = 0;
    CCmdString name;
    std::uint32_t categoryId = 0;  // what GetCategoryId and GetSelCategoryInfo look at
    std::uint8_t flag = 0;
    std::uint32_t trailingWord = 0;
};

/// The categories of one check.
///
/// Like the category record, only the version prefix of its header travels, then the
/// categories; RemoveAll frees the categories and leaves the header words. Default version 1.
class CMDDATA_API CCmdCanBusCategoryList : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdCanBusCategoryList)
    explicit CCmdCanBusCategoryList(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    /// The identifier of the first category, which stands for the list; 0 when it is empty.
    std::uint32_t GetCategoryId() const;
    /// The first category whose identifier is id (owned by the list, valid until the list
    /// changes); null when the list is empty or none matches.
    CCmdCanBusCategoryInfo* GetSelCategoryInfo(std::uint32_t id);
    CCmdList<CCmdCanBusCategoryInfo> categories;
};

/// One result of the gateway bus check: two words, a first text, three words, a second text, a
/// word, a flag, a word, a second flag, a word, a number, a last word and a freeze frame, with
/// the header of the answer that brought it. Default version 1.
class CMDDATA_API CCmdCGWCanBusCheckInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdCGWCanBusCheckInfo)
    explicit CCmdCGWCanBusCheckInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t leadingWords[2] = {0, 0};
    CCmdString firstText;
    std::uint32_t middleWords[3] = {0, 0, 0};
    CCmdString secondText;
    std::uint32_t firstWord = 0;
    std::uint8_t firstFlag = 0;
    std::uint32_t secondWord = 0;
    std::uint8_t secondFlag = 0;
    std::uint32_t thirdWord = 0;
    std::uint16_t number = 0;
    std::uint32_t lastWord = 0;
    CCmdFrzFrmDat frame;
};

/// One category of the gateway bus check: three words, a name, a word, a second text and a
/// flag, with the header of the answer that brought it. Default version 1.
class CMDDATA_API CCmdCGWCanBusCtgrInfo : public CCmdBaseInfo {
public:
    CMDDATA_FIELDS(CCmdCGWCanBusCtgrInfo)
    explicit CCmdCGWCanBusCtgrInfo(std::uint16_t version = 1) : CCmdBaseInfo(version, 0) {}
    using CCmdBaseInfo::operator=;
    std::uint32_t leadingWords[3] = {0, 0, 0};
    CCmdString name;
    std::uint32_t word = 0;
    CCmdString secondText;
    std::uint8_t flag = 0;
};

/// One selectable option of the gateway check: its number, a value and its name. Default
/// version 1.
class CMDDATA_API CCmdCGWOptionInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCGWOptionInfo)
    explicit CCmdCGWOptionInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint16_t optionId = 0;
    std::uint32_t value = 0;
    CCmdString name;
};

/// One trouble code found on the bus: code text and description. Default version 1.
class CMDDATA_API CCmdCanDiagCode : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCanDiagCode)
    explicit CCmdCanDiagCode(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    CCmdString codeText;
    CCmdString description;
};

/// The trouble codes of one bus: a word, the bus's name and its codes. Default version 1.
class CMDDATA_API CCmdCanDiagList : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCanDiagList)
    explicit CCmdCanDiagList(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t busWord = 0;
    CCmdString busName;
    CCmdList<CCmdCanDiagCode> codes;
};

// --- Layouts several messages share ---

/// A message that carries its header, then a list of bus-check categories (the categories
/// answered, or those asked about).
class CMDDATA_API CCmdCanBusCategoriesMessage : public CCmdBase {
public:
    CMDDATA_FIELDS(CCmdCanBusCategoriesMessage)
    CCmdCanBusCategoriesMessage(std::uint32_t commandId, std::uint16_t version,
                                std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {}
    CCmdList<CCmdCanBusCategoryInfo> categories;
};

// --- Messages ---

/// Asks for the trouble codes of the buses (header only).
class CMDDATA_API CGetCanBusDiagSnd
    : public CCmdSnd<cmddata::command::GetCanBusDiag, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCanBusDiagSnd)
};

/// The trouble codes, bus by bus.
class CMDDATA_API CGetCanBusDiagRcv : public CCmdRcv<cmddata::command::GetCanBusDiag> {
public:
    CMDDATA_MESSAGE(CGetCanBusDiagRcv)
    CCmdList<CCmdCanDiagList> buses;
};

/// Asks for the categories of the bus check (header only).
class CMDDATA_API CGetCanBusCategoryListSnd
    : public CCmdSnd<cmddata::command::GetCanBusCategoryList, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCanBusCategoryListSnd)
};

/// The categories of the bus check.
class CMDDATA_API CGetCanBusCategoryListRcv
    : public CCmdRcv<cmddata::command::GetCanBusCategoryList, CCmdCanBusCategoriesMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCanBusCategoryListRcv)
};

/// Asks for the bus check of the categories given.
class CMDDATA_API CGetCanBusCheckListSnd
    : public CCmdSnd<cmddata::command::GetCanBusCheckList, CCmdCanBusCategoriesMessage> {
public:
    CMDDATA_MESSAGE_LAYOUT(CGetCanBusCheckListSnd)
};

/// The bus check: the categories checked, then two lists of category lists whose meaning the
/// two processes agree on.
class CMDDATA_API CGetCanBusCheckListRcv : public CCmdRcv<cmddata::command::GetCanBusCheckList> {
public:
    CMDDATA_MESSAGE(CGetCanBusCheckListRcv)
    CCmdList<CCmdCanBusCategoryInfo> categories;
    CCmdList<CCmdCanBusCategoryList> firstLists;
    CCmdList<CCmdCanBusCategoryList> secondLists;
};

/// Asks for the options of the gateway check: two words.
class CMDDATA_API CSelectCGWCanBusOptionSnd
    : public CCmdSnd<cmddata::command::SelectCGWCanBusOption> {
public:
    CMDDATA_MESSAGE(CSelectCGWCanBusOptionSnd)
    std::uint16_t firstWord = 0;
    std::uint16_t secondWord = 0;
};

/// The options of the gateway check, then a number and two words.
class CMDDATA_API CSelectCGWCanBusOptionRcv
    : public CCmdRcv<cmddata::command::SelectCGWCanBusOption> {
public:
    CMDDATA_MESSAGE(CSelectCGWCanBusOptionRcv)
    CCmdList<CCmdCGWOptionInfo> options;
    std::uint16_t number = 0;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
};

/// Asks for the categories of the gateway check: two words.
class CMDDATA_API CGetCGWCanBusCtgrListSnd
    : public CCmdSnd<cmddata::command::GetCGWCanBusCtgrList> {
public:
    CMDDATA_MESSAGE(CGetCGWCanBusCtgrListSnd)
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
};

/// The categories of the gateway check.
class CMDDATA_API CGetCGWCanBusCtgrListRcv
    : public CCmdRcv<cmddata::command::GetCGWCanBusCtgrList> {
public:
    CMDDATA_MESSAGE(CGetCGWCanBusCtgrListRcv)
    CCmdList<CCmdCGWCanBusCtgrInfo> categories;
};

/// Asks for the gateway check of the categories given, with a leading word.
class CMDDATA_API CGetCGWCanBusChkListSnd : public CCmdSnd<cmddata::command::GetCGWCanBusChkList> {
public:
    CMDDATA_MESSAGE(CGetCGWCanBusChkListSnd)
    std::uint32_t word = 0;
    CCmdList<CCmdCGWCanBusCtgrInfo> categories;
};

/// The results of the gateway check.
class CMDDATA_API CGetCGWCanBusChkListRcv : public CCmdRcv<cmddata::command::GetCGWCanBusChkList> {
public:
    CMDDATA_MESSAGE(CGetCGWCanBusChkListRcv)
    CCmdList<CCmdCGWCanBusCheckInfo> results;
};

/// Request: asks to connect to the ECUs on the bus (header only).
/// Answer: the outcome of the connection, in the status words (header only).
CMDDATA_HEADER_ONLY_COMMAND(GetCanBusEcuConnect);
