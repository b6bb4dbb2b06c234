// The describe processor: walks, decodes or measures a field list and reports to a visitor.
#include "cmddata/core/describe.h"

#include <cstdio>
#include <cstring>

#include "cmddata/core/buffer.h"
#include "cmddata_internal/procs.h"
#include "cmddata_internal/transfer.h"

namespace cmddata {

const char* WireTypeName(WireType type) {
    switch (type) {
        case WireType::kU8:
            return "u8";
        case WireType::kU16:
            return "u16";
        case WireType::kU32:
            return "u32";
        case WireType::kU64:
            return "u64";
        case WireType::kString:
            return "string";
        case WireType::kBuffer:
            return "buffer";
        case WireType::kList:
            return "list";
        case WireType::kRecord:
            return "record";
        case WireType::kImage:
            return "image";
        case WireType::kUnsent:
            return "unsent";
    }
    return "?";
}

FieldVisitor::~FieldVisitor() = default;
void FieldVisitor::Scalar(const FieldInfo&, std::uint64_t) {}
void FieldVisitor::Text(const FieldInfo&, const CCmdString&) {}
void FieldVisitor::Bytes(const FieldInfo&, const unsigned char*, std::uint32_t) {}
void FieldVisitor::BeginRecord(const FieldInfo&, const char*) {}
void FieldVisitor::EndRecord(const FieldInfo&) {}
void FieldVisitor::BeginList(const FieldInfo&, std::uint32_t, const char*) {}
void FieldVisitor::EndList(const FieldInfo&) {}
void FieldVisitor::Failure(const FieldInfo&, Result, const char*) {}

DescribeProc::DescribeProc(FieldVisitor* visitor, CCmdReader* source, Mode mode)
    : visitor_(visitor), source_(source), mode_(mode) {}
DescribeProc::DescribeProc(FieldVisitor* visitor) : DescribeProc(visitor, nullptr, Mode::kWalk) {}
DescribeProc::DescribeProc(FieldVisitor* visitor, CCmdReader& source)
    : DescribeProc(visitor, &source, Mode::kDecode) {}
DescribeProc DescribeProc::Minimal() { return DescribeProc(nullptr, nullptr, Mode::kMinimal); }
DescribeProc DescribeProc::Filler(std::uint32_t seed) {
    DescribeProc proc(nullptr, nullptr, Mode::kFill);
    proc.seed_ = seed;
    return proc;
}
DescribeProc DescribeProc::Probe() { return DescribeProc(nullptr, nullptr, Mode::kProbe); }

// 0x0101.., 0x0202.., ...: every byte the same and never 0, so a field read from the wrong
// place or with the wrong width shows.
std::uint64_t DescribeProc::NextFill() {
    std::uint64_t x = seed_++ % 250 + 1;
    x |= x << 8;
    x |= x << 16;
    return x | x << 32;
}

FieldInfo DescribeProc::Info(const char* name, WireType type, std::uint32_t size) {
    FieldInfo info{name, type, offset_, size, nextIndex_};
    nextIndex_ = -1;
    return info;
}

void DescribeProc::Fail(const FieldInfo& info, Result code, const char* why) {
    if (failed_) return;
    failed_ = true;
    failureCode_ = code;
    if (visitor_ != nullptr) visitor_->Failure(info, code, why);
}

bool DescribeProc::CheckRead(const FieldInfo& info, const char* why) {
    const Result code = source_->GetLastError();
    if (code != result::kOk) Fail(info, code, why);
    return !failed_;
}

void DescribeProc::Fixed(const char* name, WireType type, void* value, std::uint32_t width) {
    if (failed_) return;
    const FieldInfo info = Info(name, type, width);
    if (mode_ == Mode::kDecode) {
        source_->Read(value, static_cast<std::int32_t>(width));
        if (!CheckRead(info, "field")) return;
    } else if (mode_ == Mode::kFill) {
        const std::uint64_t fill = NextFill();
        std::memcpy(value, &fill, width);  // little-endian: the low bytes
    }
    offset_ += width;
    if (visitor_ == nullptr) return;
    std::uint64_t v = 0;
    std::memcpy(&v, value, width);  // little-endian hosts: the low bytes are the value
    visitor_->Scalar(info, v);
}

void DescribeProc::Prefix(CCmdCore& self) {
    if (failed_) return;
    if (mode_ == Mode::kMinimal) detail::Access::Version(self) = 0;
    if (mode_ == Mode::kDecode) {
        // The reader's own prefix routine, version rule included; the sender's word is reported.
        const FieldInfo info = Info("version", WireType::kU16, 2);
        detail::ViaReader x{*source_};
        const std::uint16_t sender = detail::ReadPrefix(self, x);
        if (!CheckRead(info, "version prefix")) return;
        offset_ += 4;
        if (visitor_ == nullptr) return;
        visitor_->Scalar(info, sender);
        FieldInfo reserved = info;
        reserved.name = "reserved";
        reserved.offset += 2;
        visitor_->Scalar(reserved, self.GetReserved());
        return;
    }
    if (mode_ == Mode::kFill) {  // both words stay: the version chooses the layout filled
        offset_ += 4;
        return;
    }
    Fixed("version", WireType::kU16, &detail::Access::Version(self), 2);
    Fixed("reserved", WireType::kU16, &detail::Access::Reserved(self), 2);
}

void DescribeProc::Ident(const char* name, std::uint32_t& v) {
    if (mode_ != Mode::kFill) return U32(name, v);
    std::uint32_t kept = v;
    U32(name, kept);
}

void DescribeProc::U8(const char* name, std::uint8_t& v) { Fixed(name, WireType::kU8, &v, 1); }
void DescribeProc::U8Low(const char* name, std::uint32_t& v) {
    std::uint8_t low = static_cast<std::uint8_t>(v);
    Fixed(name, WireType::kU8, &low, 1);
    v = (v & ~std::uint32_t{0xFF}) | low;
}
void DescribeProc::U16(const char* name, std::uint16_t& v) { Fixed(name, WireType::kU16, &v, 2); }
void DescribeProc::U32(const char* name, std::uint32_t& v) { Fixed(name, WireType::kU32, &v, 4); }
void DescribeProc::U32(const char* name, std::int32_t& v) { Fixed(name, WireType::kU32, &v, 4); }
void DescribeProc::U64(const char* name, std::uint64_t& v) { Fixed(name, WireType::kU64, &v, 8); }

void DescribeProc::String(const char* name, CCmdString& text) { TextBody(name, text); }
void DescribeProc::Buffer(const char* name, CCmdBuffer& buffer) { BufferBody(name, buffer); }

void DescribeProc::Dropped(const char* countName, const char* name, std::uint32_t& count) {
    if (failed_) return;
    if (mode_ == Mode::kFill) {  // a short run, as the buffers have
        count = 3;
        offset_ += 4;
    } else {
        if (mode_ == Mode::kMinimal) count = 0;
        Fixed(countName, WireType::kU32, &count, 4);
        if (failed_) return;
    }
    FieldInfo info = Info(name, WireType::kImage, count);
    const unsigned char* seen = nullptr;  // the bytes in the region, when decoding
    if (mode_ == Mode::kDecode) {
        const bool fits = detail::CountFits(*source_, count, 1);
        if (fits) seen = source_->GetBase() + source_->GetPosition();
        detail::ViaReader x{*source_};
        detail::ReadDropped(count, *source_, x);
        if (!fits) return Fail(info, result::kPastEnd, "count larger than the region can hold");
        if (!CheckRead(info, "bytes")) return;
    }
    offset_ += count;
    if (visitor_ != nullptr) visitor_->Bytes(info, seen, count);
}

void DescribeProc::TextBody(const char* name, CCmdString& text) {
    if (failed_) return;
    FieldInfo info = Info(name, WireType::kString, 0);
    if (mode_ == Mode::kDecode) {
        const std::uint32_t start = source_->GetPosition();
        text.CCmdString::Read(*source_);
        offset_ += source_->GetPosition() - start;
        info.size = offset_ - info.offset;
        if (!CheckRead(info, "string")) return;
    } else {
        if (mode_ == Mode::kMinimal) text.Initial();
        if (mode_ == Mode::kFill) {
            char narrow[16];
            std::snprintf(narrow, sizeof narrow, "t%u", static_cast<unsigned>(seed_++));
            std::uint16_t wide[16] = {};
            for (int i = 0; narrow[i] != 0; ++i) wide[i] = static_cast<unsigned char>(narrow[i]);
            text = wide;
        }
        info.size = 6 + text.GetSize();
        offset_ += info.size;
    }
    if (visitor_ != nullptr) visitor_->Text(info, text);
}

void DescribeProc::BufferBody(const char* name, CCmdBuffer& buffer) {
    if (failed_) return;
    FieldInfo info = Info(name, WireType::kBuffer, 0);
    if (mode_ == Mode::kDecode) {
        const std::uint32_t start = source_->GetPosition();
        buffer.CCmdBuffer::Read(*source_);
        offset_ += source_->GetPosition() - start;
        info.size = offset_ - info.offset;
        if (!CheckRead(info, "buffer")) return;
    } else {
        if (mode_ == Mode::kMinimal) buffer.RemoveAll();
        if (mode_ == Mode::kFill) {
            const unsigned char bytes[3] = {static_cast<unsigned char>(NextFill()), 0xB2, 0xC3};
            buffer.SetAt(bytes, 3);
        }
        info.size = 8 + (buffer.GetAt() != nullptr ? buffer.GetSize() : 0);
        offset_ += info.size;
    }
    if (visitor_ != nullptr) visitor_->Bytes(info, buffer.GetAt(), buffer.GetSize());
}

void DescribeProc::UnsentInfo(const char* name) {
    if (visitor_ != nullptr && mode_ != Mode::kMinimal)
        visitor_->Scalar(Info(name, WireType::kUnsent, 0), 0);
}

void DescribeProc::BeginRecord(const char* name, const char* typeName, FieldInfo* info) {
    *info = Info(name, WireType::kRecord, 0);
    if (typeName != nullptr && visitor_ != nullptr) visitor_->BeginRecord(*info, typeName);
}

void DescribeProc::EndRecord(FieldInfo* info) {
    info->size = offset_ - info->offset;
    if (visitor_ != nullptr) visitor_->EndRecord(*info);
}

namespace {
// A writer that counts what would be written and touches no memory. Being a class of its own,
// the processors reach it through its virtual raw transfer.
class CountingWriter : public CCmdWriter {
public:
    using CCmdWriter::Write;
    Result Write(const void* source, std::int32_t count) override {
        if (source == nullptr || count < 1) return result::kBadArgument;
        total_ += static_cast<std::uint32_t>(count);
        return result::kOk;
    }
    std::uint32_t Total() const { return total_; }

private:
    std::uint32_t total_ = 0;
};
}  // namespace

std::uint32_t WireSize(CCmdCore& object) {
    CountingWriter counter;
    object.Write(counter);
    return counter.Total();
}

void Fill(CCmdCore& object, std::uint32_t seed) {
    DescribeProc proc = DescribeProc::Filler(seed);
    object.Describe(proc);
}

std::uint16_t HighestVersionTested(CCmdCore& object) {
    DescribeProc proc = DescribeProc::Probe();
    object.Describe(proc);
    return proc.Highest();
}

void Describe(CCmdCore& object, FieldVisitor& visitor) {
    DescribeProc proc(&visitor);
    object.Describe(proc);
}

Result DecodeAndDescribe(CCmdCore& object, CCmdReader& reader, FieldVisitor& visitor) {
    DescribeProc proc(&visitor, reader);
    object.Describe(proc);
    return proc.FailureCode();
}

std::uint32_t MinimalWireSize(CCmdCore& scratch) {
    DescribeProc proc = DescribeProc::Minimal();
    scratch.Describe(proc);
    return proc.Offset() == 0 ? 1 : proc.Offset();
}

}  // namespace cmddata
