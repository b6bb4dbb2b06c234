// ECU records that several families use: one ECU with its trouble-code, freeze-frame and
// function lists, a connection entry and a candidate reference.
//
// The numeric words of these records are carried, not interpreted; their names say where they
// stand, their meaning belongs to the two processes.
#pragma once

#include <cstdint>

#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"
#include "cmddata/records/diag_code.h"
#include "cmddata/records/freeze_frame.h"
#include "cmddata/records/function.h"

/// One ECU: identifier, name, state byte, trouble-code counts and four words; from version 2 its
/// function list and its trouble-code, freeze-frame and detail lists.
///
/// A second word kept beside the identifier never travels (emptied and copied with the rest).
/// The state byte empties to 0xFF, not 0, and a new record starts so. Default version 1.
class CMDDATA_API CCmdEcuInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdEcuInfo)
    explicit CCmdEcuInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}

    /// The count of the first entry of trouble-code kind `kind`, from 0 to 255; -1 when the
    /// list is empty or holds no entry of that kind. In CCmdDiagCodeCount the kind is the u16
    /// (`count`) and the count the u8 (`flag`).
    std::int32_t GetDiagCodeCount(std::uint16_t kind) const;

    std::uint32_t ecuId = 0;
    std::uint32_t ecuIdPartner = 0;  // never travels
    CCmdString name;
    std::uint8_t state = 0xFF;
    CCmdList<CCmdDiagCodeCount> codeCounts;
    std::uint32_t firstWord = 0;
    std::uint32_t secondWord = 0;
    std::uint16_t thirdValue = 0;
    std::uint8_t fourthValue = 0;
    // version 2 and later
    CCmdEcuFuncListInfo functions;  // built with version 1
    CCmdList<CCmdDiagCodeListInfo> codeLists;
    CCmdList<CCmdFrzFrmDatListInfo> frzFrmLists;
    CCmdList<CCmdDiagDetailIdListInfo> detailIdLists;
    CCmdList<CCmdDiagDetailListInfo> detailLists;
    CCmdList<CCmdMultiFrzFrmDatListInfo> multiFrzFrmLists;
    CCmdList<CCmdDiagDetailFrzFrmDatListInfo> detailFrzFrmLists;
};

/// One ECU connection entry: identifier, name, then a word, a flag and two words.
/// Default version 1.
class CMDDATA_API CCmdConnectEcu : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdConnectEcu)
    explicit CCmdConnectEcu(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t ecuId = 0;
    CCmdString name;
    std::uint16_t firstValue = 0;
    std::uint8_t flag = 0;
    std::uint16_t secondValue = 0;
    std::uint16_t thirdValue = 0;
};

/// An ECU reference of a candidate list: identifier and a word. Default version 1.
class CMDDATA_API CCmdEcuSpecificInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdEcuSpecificInfo)
    explicit CCmdEcuSpecificInfo(std::uint16_t version = 1) : CCmdCore(version, 0) {}
    std::uint32_t ecuId = 0;
    std::uint16_t value = 0;
};
