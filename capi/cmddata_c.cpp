// The C interface: opaque handles over the class table, the streams and the JSON processors.
// Every entry point catches what the standard library may throw (only std::bad_alloc can come
// out of the code below), so that nothing crosses into a C caller.
#include "cmddata/cmddata_c.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "cmddata/cmddata.h"
#include "cmddata/core/json.h"
#include "cmddata/table/classes.h"

struct cmddata_message {
    const cmddata::ClassInfo* cls;
    std::unique_ptr<CCmdCore> object;
};

struct cmddata_region {
    cmddata::SharedRegion region;
};

namespace {

using cmddata::Result;

constexpr std::size_t kLargestRegion = 0xFFFFFFFFu;

// Streams that remember the first transfer that failed: the last error alone tells only of the
// most recent one, and a later small field that fits would hide an earlier failure.
class FirstErrorReader : public CCmdReader {
public:
    using CCmdReader::Read;
    Result Read(void* destination, std::int32_t count) override {
        const Result r = CCmdReader::Read(destination, count);
        if (first_ == cmddata::result::kOk) first_ = r;
        return r;
    }
    Result First() const { return first_ != cmddata::result::kOk ? first_ : GetLastError(); }

private:
    Result first_ = cmddata::result::kOk;
};

class FirstErrorWriter : public CCmdWriter {
public:
    using CCmdWriter::Write;
    Result Write(const void* source, std::int32_t count) override {
        const Result r = CCmdWriter::Write(source, count);
        if (first_ == cmddata::result::kOk) first_ = r;
        return r;
    }
    Result First() const { return first_ != cmddata::result::kOk ? first_ : GetLastError(); }

private:
    Result first_ = cmddata::result::kOk;
};

// The object of a message: its methods are not const, but writing and showing change nothing.
CCmdCore& Object(const cmddata_message* m) { return *m->object; }

template <class F>
std::uint32_t Guard(F&& f) {
    try {
        return f();
    } catch (...) {
        return cmddata::result::kOutOfMemory;
    }
}

}  // namespace

extern "C" {

size_t cmddata_class_count(void) {
    std::size_t count = 0;
    cmddata::Classes(&count);
    return count;
}

const char* cmddata_class_name(size_t index) {
    std::size_t count = 0;
    const cmddata::ClassInfo* all = cmddata::Classes(&count);
    return index < count ? all[index].name : nullptr;
}

cmddata_message* cmddata_new(const char* class_name, int version) {
    if (class_name == nullptr || version > 0xFFFF) return nullptr;
    const cmddata::ClassInfo* cls = cmddata::FindClass(class_name);
    if (cls == nullptr) return nullptr;
    std::unique_ptr<cmddata_message> m(new (std::nothrow) cmddata_message{cls, nullptr});
    if (m == nullptr) return nullptr;
    m->object.reset(version < 0 ? cls->makeDefault()
                                : cls->make(static_cast<std::uint16_t>(version)));
    if (m->object == nullptr) return nullptr;
    return m.release();
}

void cmddata_free(cmddata_message* m) { delete m; }

const char* cmddata_message_class(const cmddata_message* m) {
    return m != nullptr ? m->cls->name : nullptr;
}

int cmddata_message_version(const cmddata_message* m) {
    return m != nullptr ? m->object->GetVersion() : -1;
}

uint32_t cmddata_read(cmddata_message* m, const void* bytes, size_t size, size_t* consumed) {
    if (consumed != nullptr) *consumed = 0;
    if (m == nullptr || (bytes == nullptr && size != 0) || size > kLargestRegion)
        return cmddata::result::kBadArgument;
    return Guard([&] {
        FirstErrorReader reader;
        // The reader only reads the view: the caller's bytes are never written.
        unsigned char none = 0;
        void* view = size != 0 ? const_cast<void*>(bytes) : &none;
        reader.AttachView(view, static_cast<std::uint32_t>(size));
        reader.Read(m->object.get());
        if (consumed != nullptr) *consumed = reader.GetPosition();
        return reader.First();
    });
}

uint32_t cmddata_write(const cmddata_message* m, void* bytes, size_t capacity, size_t* written) {
    if (written != nullptr) *written = 0;
    if (m == nullptr || (bytes == nullptr && capacity != 0)) return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        const std::uint32_t size = cmddata::WireSize(Object(m));
        if (written != nullptr) *written = size;
        if (capacity < size) return CMDDATA_E_BUFFER_TOO_SMALL;
        if (size == 0) return cmddata::result::kOk;
        FirstErrorWriter writer;
        writer.AttachView(bytes, static_cast<std::uint32_t>(
                                     capacity < kLargestRegion ? capacity : kLargestRegion));
        writer.Write(&Object(m));
        return writer.First();
    });
}

uint32_t cmddata_to_json(const cmddata_message* m, char* out, size_t capacity, size_t* needed) {
    if (needed != nullptr) *needed = 0;
    if (m == nullptr || (out == nullptr && capacity != 0)) return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        std::string text;
        if (!cmddata::ToJson(Object(m), &text)) return cmddata::result::kOutOfMemory;
        if (needed != nullptr) *needed = text.size() + 1;
        if (capacity < text.size() + 1) return CMDDATA_E_BUFFER_TOO_SMALL;
        std::memcpy(out, text.c_str(), text.size() + 1);
        return cmddata::result::kOk;
    });
}

uint32_t cmddata_from_json(cmddata_message* m, const char* json, char* error,
                           size_t error_capacity) {
    if (error != nullptr && error_capacity != 0) error[0] = '\0';
    if (m == nullptr || json == nullptr || (error == nullptr && error_capacity != 0))
        return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        // The text is read no further than the longest the JSON reader takes, and one more.
        const void* end = std::memchr(json, '\0', cmddata::kJsonMaxText + 1);
        const std::size_t length =
            end != nullptr ? static_cast<const char*>(end) - json : cmddata::kJsonMaxText + 1;
        std::string why;
        // A new object takes the text; the caller's is replaced only once it has all of it.
        std::unique_ptr<CCmdCore> fresh(
            cmddata::MakeFromJson(*m->cls, m->object->GetVersion(), {json, length}, &why));
        if (fresh == nullptr) {
            if (error != nullptr && error_capacity != 0) {
                const std::size_t n =
                    why.size() < error_capacity - 1 ? why.size() : error_capacity - 1;
                std::memcpy(error, why.data(), n);
                error[n] = '\0';
            }
            return why == "out of memory" ? cmddata::result::kOutOfMemory : CMDDATA_E_BAD_JSON;
        }
        m->object = std::move(fresh);
        return cmddata::result::kOk;
    });
}

uint32_t cmddata_decode(const void* bytes, size_t size, cmddata_message** out) {
    if (out != nullptr) *out = nullptr;
    if (out == nullptr || (bytes == nullptr && size != 0) || size > kLargestRegion)
        return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        const unsigned char* data = static_cast<const unsigned char*>(bytes);
        std::unique_ptr<cmddata_message> whole;  // the first that takes all bytes
        using cmddata::Framing;
        using cmddata::Side;
        for (Framing framing : {Framing::kHeader, Framing::kVersionedHeader}) {
            const std::size_t at = framing == Framing::kHeader ? 0 : 4;
            if (size < at + 4) continue;
            const std::uint32_t id = static_cast<std::uint32_t>(data[at]) |
                                     static_cast<std::uint32_t>(data[at + 1]) << 8 |
                                     static_cast<std::uint32_t>(data[at + 2]) << 16 |
                                     static_cast<std::uint32_t>(data[at + 3]) << 24;
            const cmddata::CommandInfo* command = cmddata::FindCommand(id);
            if (command == nullptr) continue;
            for (Side side : {Side::kSend, Side::kReceive}) {
                if (command->FramingOf(side) != framing) continue;
                const cmddata::ClassInfo* cls = cmddata::FindMessageClass(*command, side);
                if (cls == nullptr) continue;
                std::unique_ptr<cmddata_message> m(new (std::nothrow)
                                                       cmddata_message{cls, nullptr});
                if (m == nullptr) return cmddata::result::kOutOfMemory;
                m->object.reset(cls->make(cmddata::DefaultVersion(*command, side)));
                if (m->object == nullptr) return cmddata::result::kOutOfMemory;
                CCmdReader reader;
                reader.AttachView(const_cast<unsigned char*>(data),
                                  static_cast<std::uint32_t>(size));
                if (cmddata::ReadAsWritten(*m->object, reader) != cmddata::result::kOk ||
                    reader.GetPosition() != size)
                    continue;
                // The side whose object writes the bytes again as they are wins outright.
                std::vector<unsigned char> again(size + 1);
                std::size_t written = 0;
                if (cmddata_write(m.get(), again.data(), again.size(), &written) ==
                        cmddata::result::kOk &&
                    written == size && std::equal(data, data + size, again.begin())) {
                    *out = m.release();
                    return cmddata::result::kOk;
                }
                if (whole == nullptr) whole = std::move(m);
            }
        }
        if (whole == nullptr) return CMDDATA_E_NOT_DECODED;
        *out = whole.release();
        return cmddata::result::kOk;
    });
}

const char* cmddata_result_name(uint32_t code) {
    switch (code) {
        case CMDDATA_E_UNKNOWN_CLASS:
            return "unknown class";
        case CMDDATA_E_BAD_JSON:
            return "not JSON of the class";
        case CMDDATA_E_BUFFER_TOO_SMALL:
            return "buffer too small";
        case CMDDATA_E_NOT_DECODED:
            return "no class takes the bytes whole";
        case CMDDATA_E_NO_REGION:
            return "no such region";
        default:
            return cmddata::ResultName(code);
    }
}

uint32_t cmddata_region_create(const char* name, uint32_t size, cmddata_region** out) {
    if (out != nullptr) *out = nullptr;
    if (name == nullptr || out == nullptr || size == 0) return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        std::unique_ptr<cmddata_region> r(
            new (std::nothrow) cmddata_region{cmddata::SharedRegion::CreateNamed(name, size)});
        if (r == nullptr) return cmddata::result::kOutOfMemory;
        if (!r->region.IsValid()) return CMDDATA_E_NO_REGION;
        *out = r.release();
        return cmddata::result::kOk;
    });
}

uint32_t cmddata_region_open(const char* name, cmddata_region** out) {
    if (out != nullptr) *out = nullptr;
    if (name == nullptr || out == nullptr) return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        std::unique_ptr<cmddata_region> r(
            new (std::nothrow) cmddata_region{cmddata::SharedRegion::OpenNamed(name)});
        if (r == nullptr) return cmddata::result::kOutOfMemory;
        if (!r->region.IsValid()) return CMDDATA_E_NO_REGION;
        *out = r.release();
        return cmddata::result::kOk;
    });
}

void cmddata_region_close(cmddata_region* r) { delete r; }

uint32_t cmddata_region_size(const cmddata_region* r) {
    return r != nullptr ? r->region.size() : 0;
}

uint32_t cmddata_region_write(cmddata_region* r, const cmddata_message* m, size_t* written) {
    if (written != nullptr) *written = 0;
    if (r == nullptr || m == nullptr) return cmddata::result::kBadArgument;
    return Guard([&]() -> std::uint32_t {
        const std::uint32_t size = cmddata::WireSize(Object(m));
        if (written != nullptr) *written = size;
        if (r->region.size() < size) return CMDDATA_E_BUFFER_TOO_SMALL;
        FirstErrorWriter writer;
        writer.Attach(r->region.handle(), r->region.size());
        writer.Write(&Object(m));
        return size == 0 ? cmddata::result::kOk : writer.First();
    });
}

uint32_t cmddata_region_read(cmddata_region* r, cmddata_message* m, size_t* consumed) {
    if (consumed != nullptr) *consumed = 0;
    if (r == nullptr || m == nullptr) return cmddata::result::kBadArgument;
    return Guard([&] {
        FirstErrorReader reader;
        reader.Attach(r->region.handle(), r->region.size());
        reader.Read(m->object.get());
        if (consumed != nullptr) *consumed = reader.GetPosition();
        return reader.First();
    });
}

}  // extern "C"
