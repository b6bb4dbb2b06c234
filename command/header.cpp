#include "cmddata/command/header.h"

#include "cmddata_internal/procs.h"

CCmdBase::CCmdBase(std::uint32_t commandId) : CCmdBase(commandId, 1, 0) {}

CCmdBase& CCmdBase::operator=(const CCmdBase& source) {
    CCmdCore::operator=(source);
    CCmdHeaderWords::operator=(source);
    return *this;
}

void CCmdBase::RemoveAll() { ClearStatus(); }

void CCmdBase::Read(CCmdReader& reader) {
    cmddata::RunStream(reader, [this](auto& p) { HeaderFields(p); });
}
void CCmdBase::Write(CCmdWriter& writer) {
    cmddata::RunStream(writer, [this](auto& p) { HeaderFields(p); });
}
void CCmdBase::Visit(cmddata::FieldProcessor& p) { HeaderFields(p); }

CCmdBaseInfo::CCmdBaseInfo(std::uint16_t version, std::uint16_t reserved)
    : CCmdCore(version, reserved) {}
CCmdBaseInfo::CCmdBaseInfo(std::uint32_t commandId) : CCmdBaseInfo(commandId, 1, 0) {}
CCmdBaseInfo::CCmdBaseInfo(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
    : CCmdCore(version, reserved), CCmdHeaderWords(commandId) {}

void CCmdBaseInfo::operator=(CCmdBase& source) {
    RemoveAll();  // virtual: a derived record empties its payload too
    for (int n = 1; n <= 4; ++n) status_[n - 1] = source.GetStatusWord(n);
    cmdId_ = source.GetCmdId();
    threadId_ = source.GetThreadId();
}

void CCmdBaseInfo::CopyTo(CCmdBase* target) {
    if (target == nullptr) return;
    target->RemoveAll();  // virtual: the target message empties its payload too
    for (int n = 1; n <= 4; ++n) target->SetStatusWord(n, status_[n - 1]);
}

void CCmdBaseInfo::RemoveAll() { ClearStatus(); }

void CCmdBaseInfo::Read(CCmdReader& reader) {
    cmddata::RunStream(reader, [this](auto& p) { InfoHeader(p); });
}
void CCmdBaseInfo::Write(CCmdWriter& writer) {
    cmddata::RunStream(writer, [this](auto& p) { InfoHeader(p); });
}
void CCmdBaseInfo::Visit(cmddata::FieldProcessor& p) { InfoHeader(p); }
