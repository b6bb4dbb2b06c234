// The field processors of the library's own jobs: the reporting walk and decode, the fill, the
// minimal form, and the probes. Each is a small class over FieldProcessor's defaults.
#include <cstdio>
#include <cstring>
#include <string>

#include "cmddata/core/buffer.h"
#include "cmddata/core/describe.h"
#include "cmddata_internal/procs.h"
#include "cmddata/core/transfer.h"

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
        case WireType::kIdent:
            return "ident";
        case WireType::kString:
            return "string";
        case WireType::kBuffer:
            return "buffer";
        case WireType::kList:
            return "list";
        case WireType::kArray:
            return "array";
        case WireType::kRecord:
            return "record";
        case WireType::kImage:
            return "image";
        case WireType::kUnsent:
            return "unsent";
    }
    return "?";
}

// --- FieldProcessor's defaults: nothing moves, everything nested is walked ---

ItemSink::~ItemSink() = default;
void ItemSink::Count(std::uint32_t, bool) {}
ListAccess::~ListAccess() = default;
ImageAccess::~ImageAccess() = default;
FieldProcessor::~FieldProcessor() = default;
bool FieldProcessor::Reading() const { return false; }
bool FieldProcessor::Since(const CCmdCore& self, std::uint16_t v) { return self.GetVersion() >= v; }
void FieldProcessor::Prefix(CCmdCore&) {}
void FieldProcessor::Scalar(const char*, WireType, void*, std::uint32_t) {}
void FieldProcessor::String(const char*, CCmdString&) {}
void FieldProcessor::Buffer(const char*, CCmdBuffer&) {}
void FieldProcessor::Dropped(const char*, const char*, std::uint32_t&) {}
void FieldProcessor::Nested(const char*, const RecordRef& record) { record.Visit(*this); }
void FieldProcessor::List(const char*, ListAccess& list) {
    struct Walk : ItemSink {
        FieldProcessor& p;
        explicit Walk(FieldProcessor& proc) : p(proc) {}
        void Item(std::uint32_t index, const RecordRef& item) override {
            p.SetIndex(static_cast<std::int32_t>(index));
            item.Visit(p);
        }
    } walk(*this);
    list.ForEach(walk);
}
void FieldProcessor::Image(const char*, ImageAccess&) {}
void FieldProcessor::Unsent(const char*, std::uint64_t) {}
void FieldProcessor::BeginArray(const char*, std::uint32_t) {}
void FieldProcessor::EndArray(const char*) {}
void FieldProcessor::SetIndex(std::int32_t) {}

FieldVisitor::~FieldVisitor() = default;
void FieldVisitor::Scalar(const FieldInfo&, std::uint64_t) {}
void FieldVisitor::Text(const FieldInfo&, const CCmdString&) {}
void FieldVisitor::Bytes(const FieldInfo&, const unsigned char*, std::uint32_t) {}
void FieldVisitor::BeginRecord(const FieldInfo&, const char*) {}
void FieldVisitor::EndRecord(const FieldInfo&) {}
void FieldVisitor::BeginList(const FieldInfo&, std::uint32_t, const char*) {}
void FieldVisitor::EndList(const FieldInfo&) {}
void FieldVisitor::Failure(const FieldInfo&, Result, const char*) {}

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

// --- Reporting: each field moves through a stream and is reported to a visitor with the
// stream's position before and after it. The walk moves fields into a counting writer, the
// decode out of a reader; the two differ only in how a field moves. ---
class Reporter : public FieldProcessor {
public:
    void Prefix(CCmdCore& self) override {
        if (failed_) return;
        FieldInfo version = Open("version", WireType::kU16);
        const std::uint16_t sent = MovePrefix(self);
        if (!Moved(version, "version prefix")) return;
        version.size = 2;
        FieldInfo reserved{"reserved", WireType::kU16, version.offset + 2, 2, -1};
        if (visitor_ == nullptr) return;
        visitor_->Scalar(version, sent);
        visitor_->Scalar(reserved, self.GetReserved());
    }
    void Scalar(const char* name, WireType type, void* value, std::uint32_t width) override {
        if (failed_) return;
        FieldInfo info = Open(name, type);
        MoveFixed(value, width);
        if (!Close(info, "field") || visitor_ == nullptr) return;
        std::uint64_t v = 0;
        std::memcpy(&v, value, width);  // little-endian hosts: the low bytes are the value
        visitor_->Scalar(info, v);
    }
    void String(const char* name, CCmdString& text) override {
        if (failed_) return;
        FieldInfo info = Open(name, WireType::kString);
        MoveText(text);
        if (Close(info, "string") && visitor_ != nullptr) visitor_->Text(info, text);
    }
    void Buffer(const char* name, CCmdBuffer& buffer) override {
        if (failed_) return;
        FieldInfo info = Open(name, WireType::kBuffer);
        MoveBuffer(buffer);
        if (Close(info, "buffer") && visitor_ != nullptr)
            visitor_->Bytes(info, buffer.GetAt(), buffer.GetSize());
    }
    void Dropped(const char* countName, const char* name, std::uint32_t& count) override {
        Scalar(countName, WireType::kU32, &count, 4);
        if (failed_) return;
        FieldInfo info = Open(name, WireType::kImage);
        bool fits = true;
        const unsigned char* seen = MoveDropped(count, &fits);
        if (!fits) return Fail(info, result::kPastEnd, "count larger than the region can hold");
        if (Close(info, "bytes") && visitor_ != nullptr) visitor_->Bytes(info, seen, count);
    }
    void Nested(const char* name, const RecordRef& record) override {
        if (failed_) return;
        FieldInfo info = Open(name, WireType::kRecord);
        if (visitor_ != nullptr) visitor_->BeginRecord(info, record.type);
        record.Visit(*this);
        info.size = Position() - info.offset;
        if (visitor_ != nullptr) visitor_->EndRecord(info);
    }
    void List(const char* name, ListAccess& list) override {
        if (failed_) return;
        struct Items : ItemSink {
            Reporter& r;
            FieldInfo info;
            const char* type;
            bool opened = false;
            Items(Reporter& reporter, const FieldInfo& i, const char* t)
                : r(reporter), info(i), type(t) {}
            void Count(std::uint32_t count, bool fits) override {
                if (!fits)
                    return r.Fail(info, result::kPastEnd, "count larger than the region can hold");
                if (!r.Moved(info, "list prefix or count")) return;
                Open(count);
            }
            void Open(std::uint32_t count) {
                opened = r.visitor_ != nullptr;
                if (opened) r.visitor_->BeginList(info, count, type);
            }
            void Item(std::uint32_t index, const RecordRef& item) override {
                if (r.failed_) return;
                r.SetIndex(static_cast<std::int32_t>(index));
                item.Visit(r);
            }
        } items(*this, Open(name, WireType::kList), list.ItemType());
        if (!Reading()) items.Open(list.Count());  // a write knows its count before it moves
        MoveList(list, items);
        items.info.size = Position() - items.info.offset;
        if (items.opened) visitor_->EndList(items.info);
    }
    void BeginArray(const char* name, std::uint32_t count) override {
        if (failed_) return;
        arrays_[depth_ % kArrayDepth] = Open(name, WireType::kArray);
        if (visitor_ != nullptr) visitor_->BeginList(arrays_[depth_ % kArrayDepth], count, nullptr);
        ++depth_;
    }
    void EndArray(const char*) override {
        if (depth_ == 0) return;
        FieldInfo& info = arrays_[--depth_ % kArrayDepth];
        info.size = Position() - info.offset;
        if (visitor_ != nullptr && !failed_) visitor_->EndList(info);
    }
    void Image(const char* name, ImageAccess& image) override {
        if (failed_) return;
        FieldInfo info = Open(name, WireType::kImage);
        MoveImage(image);
        if (!Close(info, "image") || visitor_ == nullptr) return;
        unsigned char block[kLargestImage];
        const std::uint32_t size = image.Size() <= sizeof block ? image.Size() : 0;
        if (size != 0) image.Pack(block);
        visitor_->Bytes(info, block, size);
    }
    void Unsent(const char* name, std::uint64_t value) override {
        if (failed_ || visitor_ == nullptr) return;
        visitor_->Scalar(Open(name, WireType::kUnsent), value);
    }
    void SetIndex(std::int32_t index) override { index_ = index; }
    Result Failure() const { return failure_; }

protected:
    explicit Reporter(FieldVisitor* visitor) : visitor_(visitor) {}

    // How a field moves: out of a reader (decode) or into a counting writer (walk).
    virtual std::uint32_t Position() = 0;
    virtual Result LastError() = 0;
    virtual std::uint16_t MovePrefix(CCmdCore& self) = 0;  // returns the word to report
    virtual void MoveFixed(void* value, std::uint32_t width) = 0;
    virtual void MoveText(CCmdString& text) = 0;
    virtual void MoveBuffer(CCmdBuffer& buffer) = 0;
    virtual const unsigned char* MoveDropped(std::uint32_t count, bool* fits) = 0;
    virtual void MoveList(ListAccess& list, ItemSink& items) = 0;
    virtual void MoveImage(ImageAccess& image) = 0;

private:
    static constexpr std::uint32_t kLargestImage = 4096;
    static constexpr std::uint32_t kArrayDepth = 8;

    FieldInfo Open(const char* name, WireType type) {
        FieldInfo info{name, type, Position(), 0, index_};
        index_ = -1;
        return info;
    }
    // The field has moved: its size, and whether the stream took it.
    bool Close(FieldInfo& info, const char* why) {
        info.size = Position() - info.offset;
        return Moved(info, why);
    }
    bool Moved(const FieldInfo& info, const char* why) {
        const Result code = LastError();
        if (code != result::kOk) Fail(info, code, why);
        return !failed_;
    }
    void Fail(const FieldInfo& info, Result code, const char* why) {
        if (failed_) return;
        failed_ = true;
        failure_ = code;
        if (visitor_ != nullptr) visitor_->Failure(info, code, why);
    }

    FieldVisitor* visitor_;
    bool failed_ = false;
    Result failure_ = 0;
    std::int32_t index_ = -1;
    FieldInfo arrays_[kArrayDepth] = {};
    std::uint32_t depth_ = 0;
};

// Reports an object as it would be written.
class Walker final : public Reporter {
public:
    explicit Walker(FieldVisitor* visitor) : Reporter(visitor) {}

private:
    std::uint32_t Position() override { return counter_.Total(); }
    Result LastError() override { return result::kOk; }
    std::uint16_t MovePrefix(CCmdCore& self) override {
        self.CCmdCore::Write(counter_);
        return self.GetVersion();
    }
    void MoveFixed(void* value, std::uint32_t width) override {
        counter_.Write(value, static_cast<std::int32_t>(width));
    }
    void MoveText(CCmdString& text) override { text.CCmdString::Write(counter_); }
    void MoveBuffer(CCmdBuffer& buffer) override { buffer.CCmdBuffer::Write(counter_); }
    const unsigned char* MoveDropped(std::uint32_t count, bool*) override {
        detail::ViaWriter x{counter_};
        detail::WriteZeros(count, x);
        return nullptr;
    }
    void MoveList(ListAccess& list, ItemSink& items) override { list.Write(counter_, items); }
    void MoveImage(ImageAccess& image) override { image.Write(counter_); }

    CountingWriter counter_;
};

// Reads an object from a reader while reporting it; stops at the first failed transfer.
class Decoder final : public Reporter {
public:
    Decoder(FieldVisitor* visitor, CCmdReader& reader, bool writeOrder = false)
        : Reporter(visitor), r_(reader), writeOrder_(writeOrder) {}
    bool Reading() const override { return !writeOrder_; }

private:
    std::uint32_t Position() override { return r_.GetPosition(); }
    Result LastError() override { return r_.GetLastError(); }
    std::uint16_t MovePrefix(CCmdCore& self) override {
        detail::ViaReader x{r_};
        return detail::ReadPrefix(self, x);  // the reader's own rule; the sender's word reported
    }
    void MoveFixed(void* value, std::uint32_t width) override {
        r_.Read(value, static_cast<std::int32_t>(width));
    }
    void MoveText(CCmdString& text) override { text.CCmdString::Read(r_); }
    void MoveBuffer(CCmdBuffer& buffer) override { buffer.CCmdBuffer::Read(r_); }
    const unsigned char* MoveDropped(std::uint32_t count, bool* fits) override {
        *fits = detail::CountFits(r_, count, 1);
        const unsigned char* seen = *fits ? r_.GetBase() + r_.GetPosition() : nullptr;
        detail::ViaReader x{r_};
        detail::ReadDropped(count, x);
        return seen;
    }
    void MoveList(ListAccess& list, ItemSink& items) override { list.Read(r_, items); }
    void MoveImage(ImageAccess& image) override { image.Read(r_); }

    CCmdReader& r_;
    bool writeOrder_;
};

// Fills every field that travels at the object's version.
class Filler final : public FieldProcessor {
public:
    explicit Filler(std::uint32_t seed) : seed_(seed) {}
    void Scalar(const char*, WireType type, void* value, std::uint32_t width) override {
        const std::uint64_t fill = Next();  // the identifier keeps its value but takes its turn
        if (type == WireType::kIdent) return;
        std::memcpy(value, &fill, width);  // little-endian: the low bytes
    }
    void String(const char*, CCmdString& text) override {
        char narrow[16];
        std::snprintf(narrow, sizeof narrow, "t%u", static_cast<unsigned>(seed_++));
        std::uint16_t wide[16] = {};
        for (int i = 0; narrow[i] != 0; ++i) wide[i] = static_cast<unsigned char>(narrow[i]);
        text = wide;
    }
    void Buffer(const char*, CCmdBuffer& buffer) override {
        const unsigned char bytes[3] = {static_cast<unsigned char>(Next()), 0xB2, 0xC3};
        buffer.SetAt(bytes, 3);
    }
    void Dropped(const char*, const char*, std::uint32_t& count) override { count = 3; }
    void List(const char* name, ListAccess& list) override {
        list.Append(2);
        FieldProcessor::List(name, list);
    }
    void Image(const char*, ImageAccess& image) override {
        image.Fill([](void* self) { return static_cast<Filler*>(self)->Next(); }, this);
    }

private:
    // 0x0101.., 0x0202.., ...: every byte the same and never 0, so a field read from the wrong
    // place or with the wrong width shows.
    std::uint64_t Next() {
        std::uint64_t x = seed_++ % 250 + 1;
        x |= x << 8;
        x |= x << 16;
        return x | x << 32;
    }
    std::uint32_t seed_;
};

// Takes every version branch and keeps the highest threshold.
class Prober final : public FieldProcessor {
public:
    bool Since(const CCmdCore&, std::uint16_t v) override {
        if (v > highest_) highest_ = v;
        return true;
    }
    std::uint16_t Highest() const { return highest_; }

private:
    std::uint16_t highest_ = 0;
};

// Empties the object into its smallest form: every version prefix 0, no texts, bytes or items.
class Minimizer final : public FieldProcessor {
public:
    void Prefix(CCmdCore& self) override { detail::Access::Version(self) = 0; }
    void String(const char*, CCmdString& text) override { text.Initial(); }
    void Buffer(const char*, CCmdBuffer& buffer) override { buffer.RemoveAll(); }
    void Dropped(const char*, const char*, std::uint32_t& count) override { count = 0; }
    void List(const char*, ListAccess& list) override { list.Clear(); }
};

// The names of the fields in the order a reading or a writing list visits them, every version
// branch taken and one item in every list.
class Tracer final : public FieldProcessor {
public:
    explicit Tracer(bool reading) : reading_(reading) {}
    bool Reading() const override { return reading_; }
    bool Since(const CCmdCore&, std::uint16_t) override { return true; }
    void Prefix(CCmdCore&) override { Note("prefix"); }
    void Scalar(const char* name, WireType, void*, std::uint32_t) override { Note(name); }
    void String(const char* name, CCmdString&) override { Note(name); }
    void Buffer(const char* name, CCmdBuffer&) override { Note(name); }
    void Dropped(const char* countName, const char*, std::uint32_t&) override { Note(countName); }
    void Nested(const char* name, const RecordRef& record) override {
        Note(name);
        if (++depth_ < kDepth) record.Visit(*this);
        --depth_;
    }
    void List(const char* name, ListAccess& list) override {
        Note(name);
        if (list.Count() == 0) list.Append(1);
        if (++depth_ < kDepth) FieldProcessor::List(name, list);
        --depth_;
    }
    void Image(const char* name, ImageAccess&) override { Note(name); }
    const std::string& Trace() const { return trace_; }

private:
    static constexpr int kDepth = 16;  // a record that holds a list of itself ends here
    void Note(const char* name) {
        trace_ += name != nullptr ? name : "[]";
        trace_ += ',';
    }
    bool reading_;
    int depth_ = 0;
    std::string trace_;
};

}  // namespace

std::uint32_t WireSize(CCmdCore& object) {
    CountingWriter counter;
    object.Write(counter);
    return counter.Total();
}

void Fill(CCmdCore& object, std::uint32_t seed) {
    Filler filler(seed);
    object.Visit(filler);
}

std::uint16_t HighestVersionTested(CCmdCore& object) {
    Prober prober;
    object.Visit(prober);
    return prober.Highest();
}

bool CrossesFields(CCmdCore& scratch) {
    Tracer reading(true), writing(false);
    scratch.Visit(reading);
    scratch.Visit(writing);
    return reading.Trace() != writing.Trace();
}

void Describe(CCmdCore& object, FieldVisitor& visitor) {
    Walker walker(&visitor);
    object.Visit(walker);
}

Result DecodeAndDescribe(CCmdCore& object, CCmdReader& reader, FieldVisitor& visitor) {
    Decoder decoder(&visitor, reader);
    object.Visit(decoder);
    return decoder.Failure();
}

Result ReadAsWritten(CCmdCore& object, CCmdReader& reader) {
    Decoder decoder(nullptr, reader, true);
    object.Visit(decoder);
    return decoder.Failure();
}

std::uint32_t MinimalWireSize(CCmdCore& scratch) {
    Minimizer minimizer;
    scratch.Visit(minimizer);
    const std::uint32_t size = WireSize(scratch);
    return size == 0 ? 1 : size;
}

}  // namespace cmddata
