// The header every message carries, and the header-with-prefix that info records keep.
#pragma once

#include <cstdint>

#include "cmddata/command/catalogue.h"
#include "cmddata/core/core.h"
#include "cmddata/core/fields.h"

/// The header words shared by CCmdBase and CCmdBaseInfo: command identifier, thread id (never
/// sent) and four status words whose meaning belongs to the two processes.
class CMDDATA_API CCmdHeaderWords {
public:
    std::uint32_t GetCmdId() const { return cmdId_; }
    std::uint32_t GetThreadId() const { return threadId_; }
    void SetThreadId(std::uint32_t id) { threadId_ = id; }
    /// Status word n (1 to 4); 0 for any other n.
    std::uint32_t GetStatusWord(int n) const { return n >= 1 && n <= 4 ? status_[n - 1] : 0; }
    /// Sets status word n (1 to 4); any other n is ignored.
    void SetStatusWord(int n, std::uint32_t value) {
        if (n >= 1 && n <= 4) status_[n - 1] = value;
    }

protected:
    CCmdHeaderWords() = default;
    /// Inline, as CCmdBase's constructor and destructor: a message made for each exchange costs
    /// no calls to make and end.
    explicit CCmdHeaderWords(std::uint32_t cmdId)
        : threadId_(cmddata::platform::CurrentThreadId()), cmdId_(cmdId) {}
    void ClearStatus() { status_[0] = status_[1] = status_[2] = status_[3] = 0; }
    /// The 20 header bytes: identifier, then status words 1 to 4.
    template <class P>
    void HeaderFields(P& p) {
        p.Ident("command_id", cmdId_);
        p.U32("status_word_1", status_[0]);
        p.U32("status_word_2", status_[1]);
        p.U32("status_word_3", status_[2]);
        p.U32("status_word_4", status_[3]);
    }

    // The order keeps the constructor's stores inside cache lines. The identifier and the status
    // words, constants as a rule, are set by wide stores the compiler merges; behind CCmdCore's
    // 12 bytes and the thread id they start on a 16-byte boundary. With the thread id between
    // them, the status words began at 20: an 8-byte store of theirs crossed a line wherever a
    // message sat 32 bytes into one, and making and reading it there took about 40% longer.
    std::uint32_t threadId_ = 0;
    std::uint32_t cmdId_ = 0;
    std::uint32_t status_[4] = {0, 0, 0, 0};
};

/// Base of every message: the 20-byte header (identifier and status words 1-4), no prefix.
class CMDDATA_API CCmdBase : public CCmdCore, public CCmdHeaderWords {
public:
    explicit CCmdBase(std::uint32_t commandId);
    CCmdBase(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdCore(version, reserved), CCmdHeaderWords(commandId) {}
    CCmdBase(const CCmdBase&) = default;
    /// Copies version, reserved word, identifier, thread id and status words; the framing is
    /// the class's own and stays.
    CCmdBase& operator=(const CCmdBase& source);
    ~CCmdBase() override = default;

    /// Zeroes the status words; identifier, thread id, version and reserved word stay.
    void RemoveAll() override;
    /// Reads the header; the identifier in the region replaces ours, unchecked.
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdBase"; }

protected:
    /// Opens a message's field list with its framing: the 20-byte header; the version prefix,
    /// then the header; or nothing (the headerless messages put their status words in their own
    /// lists).
    template <class P>
    void Header(P& p) {
        if (framing_ == cmddata::Framing::kVersionedHeader) p.Prefix(*this);
        if (framing_ != cmddata::Framing::kNone) HeaderFields(p);
    }

    /// The framing of the message's command and side, set by its message base from the
    /// catalogue (a layout shared by commands of different framings is one implementation).
    cmddata::Framing framing_ = cmddata::Framing::kHeader;
};

/// The same header words behind a version prefix (24 bytes); base of records that keep a copy
/// of a message's header.
class CMDDATA_API CCmdBaseInfo : public CCmdCore, public CCmdHeaderWords {
public:
    /// Version and reserved word given; identifier and thread id 0.
    CCmdBaseInfo(std::uint16_t version, std::uint16_t reserved);
    explicit CCmdBaseInfo(std::uint32_t commandId);
    CCmdBaseInfo(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved);
    CCmdBaseInfo(const CCmdBaseInfo&) = default;
    CCmdBaseInfo& operator=(const CCmdBaseInfo&) = default;
    ~CCmdBaseInfo() override = default;

    /// Empties this record (through RemoveAll, payload included), then takes the source's
    /// status words, identifier and thread id; version and reserved word stay.
    void operator=(CCmdBase& source);
    /// Empties the target message (through its RemoveAll), then gives it these status words.
    void CopyTo(CCmdBase* target);

    void RemoveAll() override;
    void Read(CCmdReader& reader) override;
    void Write(CCmdWriter& writer) override;
    void Visit(cmddata::FieldProcessor& p) override;
    static const char* TypeName() { return "CCmdBaseInfo"; }

protected:
    /// Version prefix then the header words, for derived records to open their lists with.
    template <class P>
    void InfoHeader(P& p) {
        p.Prefix(*this);
        HeaderFields(p);
    }
};

/// Messages and info records reset their header words in RemoveAll, whatever their framing.
inline void CmdDataResetHeader(CCmdBase* message) { message->CCmdBase::RemoveAll(); }
inline void CmdDataResetHeader(CCmdBaseInfo* record) { record->CCmdBaseInfo::RemoveAll(); }
/// A kept record with header words takes a new one's: identifier, thread id and status words.
inline void CmdDataCopyKeptWords(CCmdBase* to, const CCmdBase* from) {
    static_cast<CCmdHeaderWords&>(*to) = *from;
}
inline void CmdDataCopyKeptWords(CCmdBaseInfo* to, const CCmdBaseInfo* from) {
    static_cast<CCmdHeaderWords&>(*to) = *from;
}
