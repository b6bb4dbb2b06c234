// Raw frame records: the variable-length frames with their held bytes, CAN frames and CAN
// conversion results.
#include "cmddata/records/frame.h"

#include <cstring>

#include "cmddata_internal/procs.h"

using cmddata::detail::SharedBlock;

cmddata::Result CCmdFrameBytes::SetMsgData(const unsigned char* data, std::uint32_t length) {
    if (data == nullptr) return cmddata::result::kNullOutput;
    held_.RemoveAll();
    unsigned char* fresh = SharedBlock::Allocate(length);  // 0 bytes is an empty block
    if (fresh == nullptr) return cmddata::result::kAccessorOutOfMemory;
    if (length != 0) std::memcpy(fresh, data, length);
    held_.block.Reset(fresh);
    held_.size = length;
    length_ = length;
    return cmddata::result::kOk;
}

void CCmdFrameBytes::CopyFrame(const CCmdFrameBytes& source) {
    if (&source == this) return;
    length_ = source.length_;
    const Held& from = source.held_;
    held_.RemoveAll();
    if (from.block.get() == nullptr) return;
    // The block's own size: the count may have been changed since the bytes were set.
    unsigned char* fresh = SharedBlock::Allocate(from.size);
    if (fresh == nullptr) return;  // the bytes are lost; the count stays the source's
    if (from.size != 0) std::memcpy(fresh, from.block.get(), from.size);
    held_.block.Reset(fresh);
    held_.size = from.size;
}

SCmdIPMsg& SCmdIPMsg::operator=(const SCmdIPMsg& source) {
    identifier = source.identifier;
    firstWord = source.firstWord;
    secondWord = source.secondWord;
    CopyFrame(source);
    return *this;
}

template <class P>
void SCmdIPMsg::Fields(P& p) {
    p.Prefix(*this);
    p.U32("identifier", identifier);
    p.U16("first_word", firstWord);
    p.U16("second_word", secondWord);
    FrameFields(p);
}
CMDDATA_DEFINE_FIELDS(SCmdIPMsg)

CCmdFrameCtrlMessage& CCmdFrameCtrlMessage::operator=(const CCmdFrameCtrlMessage& source) {
    identifier = source.identifier;
    firstControl = source.firstControl;
    secondControl = source.secondControl;
    CopyFrame(source);
    return *this;
}

template <class P>
void CCmdFrameCtrlMessage::Fields(P& p) {
    p.Prefix(*this);
    p.U16("identifier", identifier);
    p.U8("first_control", firstControl);
    p.U8("second_control", secondControl);
    FrameFields(p);
}
CMDDATA_DEFINE_FIELDS(CCmdFrameCtrlMessage)

template <class P>
void SCmdCanMsg::Fields(P& p) {
    p.Prefix(*this);
    p.U32("can_id", canId);
    p.U16("first_word", firstWord);
    p.U16("second_word", secondWord);
    p.Array("data", data);
}
CMDDATA_DEFINE_FIELDS(SCmdCanMsg)

template <class P>
void CCmdCANCnvResult::Fields(P& p) {
    p.Prefix(*this);
    p.U16("first_value", firstValue);
    p.U8("second_value", secondValue);
    p.U32("result", result);
}
CMDDATA_DEFINE_FIELDS(CCmdCANCnvResult)
