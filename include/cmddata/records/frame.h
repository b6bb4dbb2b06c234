// Raw frames between the two sides: frames of variable length with a 32-bit or a 16-bit
// identifier, classic CAN frames, and the result of a CAN conversion.
#pragma once

#include <cstdint>

#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/result.h"

/// The frame bytes a variable-length frame record holds, with their count, and the rule of
/// their transfer.
///
/// The count travels, followed by that many bytes; the bytes the record holds never do. On
/// writing, the run is zeros: the frame is not what it carries, and no address of this process
/// may reach a region. On reading, the run is dropped and the record holds no block. A count
/// that the region cannot hold is not read. SetMsgData keeps a heap copy of the caller's bytes
/// for this process's own use.
class CMDDATA_API CCmdFrameBytes : public CCmdCore {
public:
    /// Replaces the bytes held by a copy of length bytes of data (a length of 0 holds an empty
    /// block). kNullOutput for a null data, nothing changed; kAccessorOutOfMemory when the copy
    /// cannot be allocated: the old bytes are gone, the count keeps its old value.
    cmddata::Result SetMsgData(const unsigned char* data, std::uint32_t length);
    /// The bytes held (null when none are), GetMsgLength() of them after a successful SetMsgData.
    const unsigned char* GetMsgData() const { return held_.block.get(); }
    /// The count that travels.
    std::uint32_t GetMsgLength() const { return length_; }

protected:
    CCmdFrameBytes() = default;
    CCmdFrameBytes(const CCmdFrameBytes&) = default;
    /// Takes the source's count and a copy of its bytes; version and reserved word stay.
    void CopyFrame(const CCmdFrameBytes& source);
    /// The count and the run behind it; reading lets the block go.
    template <class P>
    void FrameFields(P& p) {
        if (p.Reading()) held_.RemoveAll();
        p.Dropped("data_length", "data", length_);
        p.Unsent("data_block", held_);
    }

private:
    /// The heap copy of the bytes, shared by copy construction. It never travels; reading and
    /// emptying let it go.
    struct Held {
        cmddata::detail::SharedBlock block;
        std::uint32_t size = 0;
        void RemoveAll() {
            block.Reset();
            size = 0;
        }
    };
    std::uint32_t length_ = 0;
    Held held_;
};

/// A frame with a 32-bit identifier, two 16-bit words and its bytes.
class CMDDATA_API SCmdIPMsg : public CCmdFrameBytes {
public:
    CMDDATA_FIELDS(SCmdIPMsg)
    SCmdIPMsg() = default;
    SCmdIPMsg(const SCmdIPMsg&) = default;
    /// Copies the words, the count and the bytes (a deep copy); version and reserved word stay.
    SCmdIPMsg& operator=(const SCmdIPMsg& source);
    std::uint32_t identifier = 0;
    std::uint16_t firstWord = 0;
    std::uint16_t secondWord = 0;
};

/// A frame with a 16-bit identifier, two control bytes and its bytes.
class CMDDATA_API CCmdFrameCtrlMessage : public CCmdFrameBytes {
public:
    CMDDATA_FIELDS(CCmdFrameCtrlMessage)
    CCmdFrameCtrlMessage() = default;
    CCmdFrameCtrlMessage(const CCmdFrameCtrlMessage&) = default;
    /// Copies the identifier, the control bytes, the count and the bytes (a deep copy); version
    /// and reserved word stay.
    CCmdFrameCtrlMessage& operator=(const CCmdFrameCtrlMessage& source);
    std::uint16_t identifier = 0;
    std::uint8_t firstControl = 0;
    std::uint8_t secondControl = 0;
};

/// A classic CAN frame: identifier, two 16-bit words and the 8 data bytes, always sent whole
/// (20 bytes).
class CMDDATA_API SCmdCanMsg : public CCmdCore {
public:
    CMDDATA_FIELDS(SCmdCanMsg)
    SCmdCanMsg() = default;
    std::uint32_t canId = 0;
    std::uint16_t firstWord = 0;
    std::uint16_t secondWord = 0;
    std::uint8_t data[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

/// The result of a CAN conversion: a 16-bit and an 8-bit value and a result word (11 bytes).
class CMDDATA_API CCmdCANCnvResult : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCANCnvResult)
    CCmdCANCnvResult() = default;
    std::uint16_t firstValue = 0;
    std::uint8_t secondValue = 0;
    std::uint32_t result = 0;
};
