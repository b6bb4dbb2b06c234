// Field-by-field view of any object, for tools: a visitor interface and the processor that
// walks an object's field list (or decodes a region) and reports to it.
#pragma once

#include <cstdint>

#include "cmddata/core/core.h"

class CCmdString;
class CCmdBuffer;
template <class T>
class CCmdList;

namespace cmddata {

/// How a field travels.
enum class WireType : std::uint8_t {
    kU8,
    kU16,
    kU32,
    kU64,
    kString,  // CCmdString: prefix, u16 byte count, bytes
    kBuffer,  // CCmdBuffer: prefix, u32 byte count, bytes
    kList,    // CCmdList<T>: prefix, u32 count, items
    kRecord,  // a nested object through its own field list
    kImage,   // a fixed-size block moved as it lies in memory
    kUnsent,  // a member that never travels (shown for completeness, size 0)
};

/// Name of a wire type ("u16", "string", ...).
CMDDATA_API const char* WireTypeName(WireType type);

/// Where a field stands: its name, wire type, byte offset from where the walk started, and size
/// in bytes on the wire (for records and lists, known at their end).
struct FieldInfo {
    const char* name;
    WireType type;
    std::uint32_t offset;
    std::uint32_t size;
    std::int32_t index;  // position within the enclosing list, or -1
};

/// Receives the fields of a walk. Every callback has an empty default.
class CMDDATA_API FieldVisitor {
public:
    virtual ~FieldVisitor();
    virtual void Scalar(const FieldInfo& field, std::uint64_t value);
    virtual void Text(const FieldInfo& field, const CCmdString& text);
    virtual void Bytes(const FieldInfo& field, const unsigned char* data, std::uint32_t size);
    virtual void BeginRecord(const FieldInfo& field, const char* typeName);
    virtual void EndRecord(const FieldInfo& field);
    virtual void BeginList(const FieldInfo& field, std::uint32_t count, const char* itemType);
    virtual void EndList(const FieldInfo& field);
    /// A decode stopped at this field: the stream's result code and a short reason.
    virtual void Failure(const FieldInfo& field, Result code, const char* why);
};

/// Runs a field list for description. Its modes: walk an object as it would be written; decode
/// it from a reader while reporting (stops at the first failed transfer); measure the smallest
/// wire form of a default object (every version prefix taken as version 0); fill every field
/// that travels at the object's version with deterministic content; or probe the highest version
/// the list tests.
class CMDDATA_API DescribeProc {
public:
    enum class Mode : std::uint8_t { kWalk, kDecode, kMinimal, kFill, kProbe };

    explicit DescribeProc(FieldVisitor* visitor);
    DescribeProc(FieldVisitor* visitor, CCmdReader& source);
    static DescribeProc Minimal();
    /// Fills with content derived from seed (see cmddata::Fill).
    static DescribeProc Filler(std::uint32_t seed);
    /// Takes every version branch and records the highest threshold.
    static DescribeProc Probe();

    bool Reading() const { return mode_ == Mode::kDecode; }
    /// The version test of a field list (as the streams' processors; a probe takes every branch).
    bool Since(const CCmdCore& self, std::uint16_t v) {
        if (mode_ != Mode::kProbe) return self.GetVersion() >= v;
        if (v > highest_) highest_ = v;
        return true;
    }
    /// The highest version threshold seen by a probe.
    std::uint16_t Highest() const { return highest_; }
    Mode GetMode() const { return mode_; }
    /// Bytes walked (or decoded) so far.
    std::uint32_t Offset() const { return offset_; }
    bool Failed() const { return failed_; }
    Result FailureCode() const { return failureCode_; }

    // Field operations, called by the field lists.
    void Prefix(CCmdCore& self);
    void U8(const char* name, std::uint8_t& value);
    /// One byte on the wire, held in the low byte of a wider member.
    void U8Low(const char* name, std::uint32_t& value);
    void U16(const char* name, std::uint16_t& value);
    void U32(const char* name, std::uint32_t& value);
    void U32(const char* name, std::int32_t& value);
    void U64(const char* name, std::uint64_t& value);
    /// The command identifier: never changed by a fill.
    void Ident(const char* name, std::uint32_t& value);
    void String(const char* name, CCmdString& text);
    void Buffer(const char* name, CCmdBuffer& buffer);
    /// A u32 count (countName), then count bytes (name) that the object does not keep: zeros
    /// when written, dropped when read. Reported as the count and an image of count bytes.
    void Dropped(const char* countName, const char* name, std::uint32_t& count);
    template <class T>
    void Record(const char* name, T& object);
    void Record(const char* name, CCmdString& text) { String(name, text); }
    void Record(const char* name, CCmdBuffer& buffer) { Buffer(name, buffer); }
    template <class U>
    void Record(const char* name, CCmdList<U>& list) {
        List(name, list);
    }
    template <class T>
    void List(const char* name, T& list);
    template <class T>
    void Unsent(const char* name, T& value);
    /// A nested object moved as its fixed in-memory image: one field of type kImage, reported
    /// through FieldVisitor::Bytes. Defined with the library's processors (field lists of the
    /// library only).
    template <class T>
    void Image(const char* name, T& object);

    // Used by the leaf classes and lists to report themselves.
    void TextBody(const char* name, CCmdString& text);
    void BufferBody(const char* name, CCmdBuffer& buffer);
    void BeginRecord(const char* name, const char* typeName, FieldInfo* info);
    void EndRecord(FieldInfo* info);
    void SetIndex(std::int32_t index) { nextIndex_ = index; }

private:
    DescribeProc(FieldVisitor* visitor, CCmdReader* source, Mode mode);
    void Fixed(const char* name, WireType type, void* value, std::uint32_t width);
    FieldInfo Info(const char* name, WireType type, std::uint32_t size);
    bool CheckRead(const FieldInfo& info, const char* why);
    void UnsentInfo(const char* name);
    void Fail(const FieldInfo& info, Result code, const char* why);
    std::uint64_t NextFill();

    FieldVisitor* visitor_;
    CCmdReader* source_;
    Mode mode_;
    bool failed_ = false;
    Result failureCode_ = 0;
    std::uint32_t offset_ = 0;
    std::int32_t nextIndex_ = -1;
    std::uint32_t seed_ = 0;
    std::uint16_t highest_ = 0;
};

/// Bytes that the object's Write would put into a region (its Write, run over a stream that
/// counts instead of copying).
CMDDATA_API std::uint32_t WireSize(CCmdCore& object);
/// Puts deterministic content in every field that travels at the object's version: distinct
/// non-zero scalars, short texts, three-byte buffers, two items in every list, nested records
/// filled in turn. The version prefix, the identifier and the fields that never travel stay. The
/// same seed on an equal fresh object gives the same content.
CMDDATA_API void Fill(CCmdCore& object, std::uint32_t seed = 1);
/// The highest version threshold the object's field list tests (0 when it tests none): the
/// versions up to it each choose a different layout.
CMDDATA_API std::uint16_t HighestVersionTested(CCmdCore& object);
/// Reports every field of the object, as it would be written.
CMDDATA_API void Describe(CCmdCore& object, FieldVisitor& visitor);
/// Reads the object from the reader while reporting each field; stops at the first failed
/// transfer. Returns the first failure's result code (0 when the whole object decoded).
CMDDATA_API Result DecodeAndDescribe(CCmdCore& object, CCmdReader& reader, FieldVisitor& visitor);
/// The smallest number of bytes any object of this class takes on the wire (a scratch object
/// of the class, measured with every version prefix taken as 0). At least 1.
CMDDATA_API std::uint32_t MinimalWireSize(CCmdCore& scratch);

}  // namespace cmddata

#include <type_traits>

namespace cmddata {

template <class T>
void DescribeProc::Record(const char* name, T& object) {
    if (failed_) return;
    FieldInfo info;
    BeginRecord(name, T::TypeName(), &info);
    object.T::Describe(*this);
    EndRecord(&info);
}

template <class T>
void DescribeProc::Unsent(const char* name, T& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        if (visitor_ != nullptr && mode_ != Mode::kMinimal)
            visitor_->Scalar(Info(name, WireType::kUnsent, 0), static_cast<std::uint64_t>(value));
    } else {
        (void)value;
        UnsentInfo(name);
    }
}

}  // namespace cmddata
