// JSON in and out of any object: a bounded parser into a flat node array, a field processor that
// prints the field list, and one that takes the fields back by name (json.h gives the form).
#include "cmddata/core/json.h"

#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "cmddata/core/buffer.h"
#include "cmddata/core/processor.h"
#include "cmddata/core/transfer.h"

namespace cmddata {

namespace {

using detail::Access;

// --- Text helpers ---

constexpr char kHex[] = "0123456789abcdef";

void AppendHex(std::string& out, const unsigned char* data, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        out += kHex[data[i] >> 4];
        out += kHex[data[i] & 15];
    }
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

void AppendUtf8(std::string& out, std::uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// A code point as JSON string content: quotes, backslashes and control characters escaped.
void AppendEscaped(std::string& out, std::uint32_t cp) {
    switch (cp) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    if (cp < 0x20) {
        out += "\\u00";
        out += kHex[cp >> 4];
        out += kHex[cp & 15];
        return;
    }
    AppendUtf8(out, cp);
}

std::uint16_t Unit(const unsigned char* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

// True when size bytes are clean 16-bit text ending in its one terminator: an even count of
// at least 2, the last unit 0 and every surrogate in a pair.
bool IsCleanText(const unsigned char* data, std::size_t size) {
    if (size < 2 || size % 2 != 0 || Unit(data + size - 2) != 0) return false;
    const std::size_t units = size / 2 - 1;
    for (std::size_t i = 0; i < units; ++i) {
        const std::uint16_t u = Unit(data + 2 * i);
        if (u >= 0xD800 && u <= 0xDBFF) {
            if (i + 1 >= units) return false;
            const std::uint16_t low = Unit(data + 2 * (i + 1));
            if (low < 0xDC00 || low > 0xDFFF) return false;
            ++i;
        } else if (u >= 0xDC00 && u <= 0xDFFF) {
            return false;
        }
    }
    return true;
}

void AppendText(std::string& out, const unsigned char* data, std::size_t size) {
    out += '"';
    const std::size_t units = size / 2 - 1;
    for (std::size_t i = 0; i < units; ++i) {
        std::uint32_t cp = Unit(data + 2 * i);
        if (cp >= 0xD800 && cp <= 0xDBFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (Unit(data + 2 * (i + 1)) - 0xDC00);
            ++i;
        }
        AppendEscaped(out, cp);
    }
    out += '"';
}

// --- The parsed document: one flat array of nodes ---

enum class Kind : std::uint8_t { kNull, kFalse, kTrue, kNumber, kString, kArray, kObject };

constexpr std::uint32_t kNone = 0xFFFFFFFFu;
// Field names are short; a longer key cannot name one.
constexpr std::uint32_t kMaxKey = 255;

struct Node {
    std::uint32_t a = 0;  // scalars: start of the span; containers: first child
    std::uint32_t b = 0;  // scalars: end of the span; containers: child count
    std::uint32_t next = kNone;
    std::uint32_t key = 0;  // object members: start of the key's span (inside its quotes)
    std::uint8_t keyLength = 0;
    Kind kind = Kind::kNull;
    bool keyEscaped = false;
    bool used = false;  // object members: taken by a field
};

const char* KindName(Kind k) {
    switch (k) {
        case Kind::kNull:
            return "null";
        case Kind::kFalse:
        case Kind::kTrue:
            return "a boolean";
        case Kind::kNumber:
            return "a number";
        case Kind::kString:
            return "a string";
        case Kind::kArray:
            return "an array";
        case Kind::kObject:
            return "an object";
    }
    return "?";
}

class Document {
public:
    Document(const char* text, std::size_t size) : t_(text), n_(size) {}

    // Parses the whole text; false with error set on the first fault.
    bool Parse(std::string* error) {
        if (n_ > kJsonMaxText) {
            *error = "the JSON text is longer than " + std::to_string(kJsonMaxText) + " bytes";
            return false;
        }
        std::uint32_t root = Value(0);
        if (failed_) return Report(error);
        Space();
        if (at_ != n_) {
            Fail("more after the JSON value");
            return Report(error);
        }
        root_ = root;
        return true;
    }

    const Node& operator[](std::uint32_t i) const { return nodes_[i]; }
    Node& operator[](std::uint32_t i) { return nodes_[i]; }
    std::uint32_t Root() const { return root_; }
    const char* Text() const { return t_; }

    // The decoded key of an object member.
    std::string Key(const Node& node) const {
        std::string key;
        if (!node.keyEscaped) return std::string(t_ + node.key, node.keyLength);
        DecodeString(node.key, node.key + node.keyLength, &key);
        return key;
    }
    bool KeyIs(const Node& node, const char* name) const {
        if (!node.keyEscaped) {
            const std::size_t length = std::strlen(name);
            return length == node.keyLength && std::memcmp(t_ + node.key, name, length) == 0;
        }
        return Key(node) == name;
    }
    // The decoded content of a string node (validated by the parse).
    void String(const Node& node, std::string* out) const { DecodeString(node.a, node.b, out); }
    std::string_view Span(const Node& node) const {
        return std::string_view(t_ + node.a, node.b - node.a);
    }

private:
    void Fail(const char* why) {
        if (failed_) return;
        failed_ = true;
        why_ = why;
        failAt_ = at_;
    }
    bool Report(std::string* error) {
        std::size_t line = 1, column = 1;
        for (std::size_t i = 0; i < failAt_ && i < n_; ++i) {
            if (t_[i] == '\n') {
                ++line;
                column = 1;
            } else {
                ++column;
            }
        }
        *error = "JSON syntax, line " + std::to_string(line) + " column " + std::to_string(column) +
                 ": " + why_;
        return false;
    }
    void Space() {
        while (at_ < n_ &&
               (t_[at_] == ' ' || t_[at_] == '\t' || t_[at_] == '\n' || t_[at_] == '\r'))
            ++at_;
    }
    std::uint32_t Add(Kind kind) {
        Node node;
        node.kind = kind;
        nodes_.push_back(node);
        return static_cast<std::uint32_t>(nodes_.size() - 1);
    }

    std::uint32_t Value(std::uint32_t depth) {
        Space();
        if (at_ >= n_) {
            Fail("a value was expected");
            return kNone;
        }
        const char c = t_[at_];
        if (c == '{' || c == '[') {
            if (depth >= kJsonMaxDepth) {
                Fail("nested deeper than the reader takes");
                return kNone;
            }
            return c == '{' ? Object(depth + 1) : Array(depth + 1);
        }
        if (c == '"') {
            const std::uint32_t node = Add(Kind::kString);
            std::uint32_t begin = 0, end = 0;
            bool escaped = false;
            if (!StringSpan(&begin, &end, &escaped)) return kNone;
            nodes_[node].a = begin;
            nodes_[node].b = end;
            return node;
        }
        if (c == '-' || (c >= '0' && c <= '9')) return Number();
        for (const auto& literal : {std::pair<const char*, Kind>{"null", Kind::kNull},
                                    {"true", Kind::kTrue},
                                    {"false", Kind::kFalse}}) {
            const std::size_t length = std::strlen(literal.first);
            if (n_ - at_ >= length && std::memcmp(t_ + at_, literal.first, length) == 0) {
                at_ += length;
                return Add(literal.second);
            }
        }
        Fail("not a JSON value");
        return kNone;
    }

    std::uint32_t Number() {
        const std::size_t begin = at_;
        if (t_[at_] == '-') ++at_;
        const auto digits = [this] {
            const std::size_t from = at_;
            while (at_ < n_ && t_[at_] >= '0' && t_[at_] <= '9') ++at_;
            return at_ - from;
        };
        const std::size_t first = at_;
        if (digits() == 0) {
            Fail("a digit was expected");
            return kNone;
        }
        if (t_[first] == '0' && at_ - first > 1) {
            at_ = first;
            Fail("a number does not start with 0");
            return kNone;
        }
        if (at_ < n_ && t_[at_] == '.') {
            ++at_;
            if (digits() == 0) {
                Fail("a digit was expected after the point");
                return kNone;
            }
        }
        if (at_ < n_ && (t_[at_] == 'e' || t_[at_] == 'E')) {
            ++at_;
            if (at_ < n_ && (t_[at_] == '+' || t_[at_] == '-')) ++at_;
            if (digits() == 0) {
                Fail("a digit was expected in the exponent");
                return kNone;
            }
        }
        const std::uint32_t node = Add(Kind::kNumber);
        nodes_[node].a = static_cast<std::uint32_t>(begin);
        nodes_[node].b = static_cast<std::uint32_t>(at_);
        return node;
    }

    // Checks a string from its opening quote on and steps past it; begin and end frame its
    // content. Escapes and UTF-8 are validated here, so decoding later cannot fail.
    bool StringSpan(std::uint32_t* begin, std::uint32_t* end, bool* escaped) {
        ++at_;
        *begin = static_cast<std::uint32_t>(at_);
        while (true) {
            if (at_ >= n_) {
                Fail("the string does not end");
                return false;
            }
            const unsigned char c = static_cast<unsigned char>(t_[at_]);
            if (c == '"') break;
            if (c < 0x20) {
                Fail("a control character in a string");
                return false;
            }
            if (c == '\\') {
                *escaped = true;
                if (!Escape()) return false;
                continue;
            }
            if (c < 0x80) {
                ++at_;
                continue;
            }
            if (!Utf8()) return false;
        }
        *end = static_cast<std::uint32_t>(at_);
        ++at_;
        return true;
    }

    bool Hex4(std::uint32_t* value) {
        if (n_ - at_ < 4) return false;
        *value = 0;
        for (int i = 0; i < 4; ++i) {
            const int d = HexDigit(t_[at_ + i]);
            if (d < 0) return false;
            *value = (*value << 4) | static_cast<std::uint32_t>(d);
        }
        at_ += 4;
        return true;
    }

    bool Escape() {
        ++at_;  // the backslash
        if (at_ >= n_) {
            Fail("the string does not end");
            return false;
        }
        const char e = t_[at_++];
        if (std::strchr("\"\\/bfnrt", e) != nullptr && e != '\0') return true;
        if (e != 'u') {
            --at_;
            Fail("not a JSON escape");
            return false;
        }
        std::uint32_t unit = 0;
        if (!Hex4(&unit)) {
            Fail("\\u takes four hex digits");
            return false;
        }
        if (unit >= 0xDC00 && unit <= 0xDFFF) {
            Fail("a low surrogate without its high one");
            return false;
        }
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            std::uint32_t low = 0;
            if (n_ - at_ < 2 || t_[at_] != '\\' || t_[at_ + 1] != 'u') {
                Fail("a high surrogate without its low one");
                return false;
            }
            at_ += 2;
            if (!Hex4(&low) || low < 0xDC00 || low > 0xDFFF) {
                Fail("a high surrogate without its low one");
                return false;
            }
        }
        return true;
    }

    bool Utf8() {
        const unsigned char c = static_cast<unsigned char>(t_[at_]);
        std::size_t extra = 0;
        std::uint32_t cp = 0, least = 0;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
            cp = c & 0x1F;
            least = 0x80;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            cp = c & 0x0F;
            least = 0x800;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            cp = c & 0x07;
            least = 0x10000;
        } else {
            Fail("invalid UTF-8");
            return false;
        }
        if (n_ - at_ <= extra) {
            Fail("invalid UTF-8");
            return false;
        }
        for (std::size_t i = 1; i <= extra; ++i) {
            const unsigned char k = static_cast<unsigned char>(t_[at_ + i]);
            if ((k & 0xC0) != 0x80) {
                Fail("invalid UTF-8");
                return false;
            }
            cp = (cp << 6) | (k & 0x3F);
        }
        if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            Fail("invalid UTF-8");
            return false;
        }
        at_ += extra + 1;
        return true;
    }

    // Links the children of a container as they come; count and first child at the end.
    struct Chain {
        std::uint32_t first = kNone, last = kNone, count = 0;
    };
    void Link(Chain& chain, std::uint32_t child) {
        if (chain.last == kNone)
            chain.first = child;
        else
            nodes_[chain.last].next = child;
        chain.last = child;
        ++chain.count;
    }

    std::uint32_t Array(std::uint32_t depth) {
        const std::uint32_t node = Add(Kind::kArray);
        ++at_;
        Chain chain;
        Space();
        if (at_ < n_ && t_[at_] == ']') {
            ++at_;
        } else {
            while (true) {
                const std::uint32_t child = Value(depth);
                if (failed_) return kNone;
                Link(chain, child);
                Space();
                if (at_ < n_ && t_[at_] == ',') {
                    ++at_;
                    continue;
                }
                if (at_ < n_ && t_[at_] == ']') {
                    ++at_;
                    break;
                }
                Fail("',' or ']' was expected");
                return kNone;
            }
        }
        nodes_[node].a = chain.first;
        nodes_[node].b = chain.count;
        return node;
    }

    std::uint32_t Object(std::uint32_t depth) {
        const std::uint32_t node = Add(Kind::kObject);
        ++at_;
        Chain chain;
        Space();
        if (at_ < n_ && t_[at_] == '}') {
            ++at_;
        } else {
            while (true) {
                Space();
                if (at_ >= n_ || t_[at_] != '"') {
                    Fail("a field name in quotes was expected");
                    return kNone;
                }
                const std::size_t keyAt = at_;
                std::uint32_t begin = 0, end = 0;
                bool escaped = false;
                if (!StringSpan(&begin, &end, &escaped)) return kNone;
                if (end - begin > kMaxKey) {
                    at_ = keyAt;
                    Fail("a field name longer than any field's");
                    return kNone;
                }
                Space();
                if (at_ >= n_ || t_[at_] != ':') {
                    Fail("':' was expected");
                    return kNone;
                }
                ++at_;
                const std::uint32_t child = Value(depth);
                if (failed_) return kNone;
                nodes_[child].key = begin;
                nodes_[child].keyLength = static_cast<std::uint8_t>(end - begin);
                nodes_[child].keyEscaped = escaped;
                Link(chain, child);
                Space();
                if (at_ < n_ && t_[at_] == ',') {
                    ++at_;
                    continue;
                }
                if (at_ < n_ && t_[at_] == '}') {
                    ++at_;
                    break;
                }
                Fail("',' or '}' was expected");
                return kNone;
            }
        }
        nodes_[node].a = chain.first;
        nodes_[node].b = chain.count;
        return node;
    }

    void DecodeString(std::uint32_t begin, std::uint32_t end, std::string* out) const {
        out->clear();
        for (std::uint32_t i = begin; i < end;) {
            const char c = t_[i];
            if (c != '\\') {
                *out += c;
                ++i;
                continue;
            }
            const char e = t_[i + 1];
            i += 2;
            switch (e) {
                case 'b':
                    *out += '\b';
                    break;
                case 'f':
                    *out += '\f';
                    break;
                case 'n':
                    *out += '\n';
                    break;
                case 'r':
                    *out += '\r';
                    break;
                case 't':
                    *out += '\t';
                    break;
                case 'u': {
                    std::uint32_t cp = Hex(i);
                    i += 4;
                    if (cp >= 0xD800 && cp <= 0xDBFF) {
                        cp = 0x10000 + ((cp - 0xD800) << 10) + (Hex(i + 2) - 0xDC00);
                        i += 6;
                    }
                    AppendUtf8(*out, cp);
                    break;
                }
                default:
                    *out += e;
                    break;
            }
        }
    }
    std::uint32_t Hex(std::uint32_t at) const {
        std::uint32_t v = 0;
        for (int k = 0; k < 4; ++k) v = (v << 4) | static_cast<std::uint32_t>(HexDigit(t_[at + k]));
        return v;
    }

    const char* t_;
    std::size_t n_;
    std::size_t at_ = 0;
    std::vector<Node> nodes_;
    std::uint32_t root_ = kNone;
    bool failed_ = false;
    const char* why_ = "";
    std::size_t failAt_ = 0;
};

// --- Out: the field list printed as JSON ---

bool IsDefaultPrefix(const CCmdCore& o) { return o.GetVersion() == 1 && o.GetReserved() == 0; }

class JsonWriter : public FieldProcessor {
public:
    explicit JsonWriter(std::string& out) : out_(out) {}

    // An object of fields; a text, buffer or list on its own is its value alone.
    void Root(CCmdCore& object) {
        const std::size_t start = out_.size();
        Open('{');
        object.Visit(*this);
        if (bare_) {
            out_.erase(start, 1);
            first_.pop_back();
        } else {
            Close('}');
        }
    }

    void Prefix(CCmdCore& self) override {
        Key("version");
        Number(self.GetVersion());
        if (self.GetReserved() != 0) {
            Key("reserved");
            Number(self.GetReserved());
        }
    }
    void Scalar(const char* name, WireType, void* value, std::uint32_t width) override {
        std::uint64_t v = 0;
        std::memcpy(&v, value, width);  // little-endian hosts: the low bytes are the value
        Key(name);
        Number(v);
    }
    void String(const char* name, CCmdString& text) override {
        Key(name);
        const unsigned char* data = text.GetBytes();
        const std::uint16_t size = data != nullptr ? text.GetSize() : 0;
        if (IsDefaultPrefix(text) && size == 0) {
            out_ += "null";
        } else if (IsDefaultPrefix(text) && IsCleanText(data, size)) {
            AppendText(out_, data, size);
        } else {
            PrefixedBytes(text, data, size);
        }
    }
    void Buffer(const char* name, CCmdBuffer& buffer) override {
        Key(name);
        const unsigned char* data = buffer.GetAt();
        const std::uint32_t size = data != nullptr ? buffer.GetSize() : 0;
        if (IsDefaultPrefix(buffer)) {
            out_ += '"';
            AppendHex(out_, data, size);
            out_ += '"';
        } else {
            PrefixedBytes(buffer, data, size);
        }
    }
    void Dropped(const char* countName, const char*, std::uint32_t& count) override {
        Key(countName);
        Number(count);
    }
    void Nested(const char* name, const RecordRef& record) override {
        Key(name);
        Open('{');
        record.Visit(*this);
        Close('}');
    }
    void List(const char* name, ListAccess& list) override {
        Key(name);
        const bool plain = IsDefaultPrefix(list.Self());
        if (!plain) {
            Open('{');
            Prefix(list.Self());
            Key("items");
        }
        Open('[');
        struct Items : ItemSink {
            JsonWriter& w;
            explicit Items(JsonWriter& writer) : w(writer) {}
            void Item(std::uint32_t, const RecordRef& item) override { item.Visit(w); }
        } items(*this);
        list.ForEach(items);
        Close(']');
        if (!plain) Close('}');
    }
    void Image(const char* name, ImageAccess& image) override {
        Key(name);
        std::vector<unsigned char> block(image.Size());
        image.Pack(block.data());
        out_ += '"';
        AppendHex(out_, block.data(), block.size());
        out_ += '"';
    }
    void Unsent(const char*, std::uint64_t) override {}
    void BeginArray(const char* name, std::uint32_t) override {
        Key(name);
        Open('[');
    }
    void EndArray(const char*) override { Close(']'); }

private:
    // A member's name (or, for an item, nothing) after the comma that separates it.
    void Key(const char* name) {
        if (!first_.empty()) {
            if (!first_.back()) out_ += ',';
            first_.back() = false;
        }
        if (name == nullptr) {
            if (first_.size() == 1) bare_ = true;  // the root's one unnamed field
            return;
        }
        out_ += '"';
        for (const char* p = name; *p != '\0'; ++p)
            AppendEscaped(out_, static_cast<unsigned char>(*p));
        out_ += "\":";
    }
    void Open(char c) {
        out_ += c;
        first_.push_back(true);
    }
    void Close(char c) {
        out_ += c;
        first_.pop_back();
    }
    void Number(std::uint64_t v) { out_ += std::to_string(v); }
    void PrefixedBytes(CCmdCore& self, const unsigned char* data, std::uint32_t size) {
        Open('{');
        Prefix(self);
        Key("bytes");
        out_ += '"';
        AppendHex(out_, data, size);
        out_ += '"';
        Close('}');
    }

    std::string& out_;
    std::vector<bool> first_;
    bool bare_ = false;
};

// --- In: the field list taking its values from the document ---

// The names a record's list gives at any version, at its own level: tells a field that exists
// at another version from one that does not exist at all.
class NameProbe : public FieldProcessor {
public:
    explicit NameProbe(const char* wanted) : wanted_(wanted) {}
    bool found = false;
    bool Since(const CCmdCore&, std::uint16_t) override { return true; }
    void Prefix(CCmdCore&) override {}
    void Scalar(const char* n, WireType, void*, std::uint32_t) override { See(n); }
    void String(const char* n, CCmdString&) override { See(n); }
    void Buffer(const char* n, CCmdBuffer&) override { See(n); }
    void Dropped(const char* n, const char*, std::uint32_t&) override { See(n); }
    void Nested(const char* n, const RecordRef&) override { See(n); }
    void List(const char* n, ListAccess&) override { See(n); }
    void Image(const char* n, ImageAccess&) override { See(n); }
    void BeginArray(const char* n, std::uint32_t) override { See(n); }

private:
    void See(const char* n) {
        if (n != nullptr && std::strcmp(n, wanted_) == 0) found = true;
    }
    const char* wanted_;
};

class JsonReader : public FieldProcessor {
public:
    JsonReader(Document& doc, std::size_t textSize, std::string& error)
        : doc_(doc),
          error_(error),
          itemBudget_(static_cast<std::uint64_t>(textSize) * kJsonItemBytesPerChar + 65536) {}

    // An object of fields; for a text, buffer or list on its own, its value alone.
    bool Root(CCmdCore& object) {
        const std::uint32_t root = doc_.Root();
        const bool fields = doc_[root].kind == Kind::kObject;
        Frame frame = Frame::Object(fields ? root : kNone);
        frame.element = root;
        frames_.push_back(frame);
        object.Visit(*this);
        frames_.pop_back();
        if (!failed_ && !rootTaken_ && !fields) {
            error_ = std::string("the JSON value is ") + KindName(doc_[root].kind) +
                     ", not an object of fields";
            return false;
        }
        if (!failed_ && !rootTaken_)
            CheckAllTaken(root, [&](FieldProcessor& p) { object.Visit(p); });
        return !failed_;
    }

    /// Values come into the object as from a read: working values that reading derives are
    /// derived here too.
    bool Reading() const override { return true; }

    void Prefix(CCmdCore& self) override { TakePrefix(self, Take("version"), Take("reserved")); }
    void Scalar(const char* name, WireType type, void* value, std::uint32_t width) override {
        const std::uint32_t n = Take(name);
        if (n == kNone) return;
        std::uint64_t v = 0;
        const std::uint64_t most =
            width == 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * width)) - 1;
        if (!Unsigned(n, name, type == WireType::kIdent ? "u32" : WidthName(width), most, &v))
            return;
        std::memcpy(value, &v, width);  // little-endian hosts: the low bytes are the value
    }
    void String(const char* name, CCmdString& text) override {
        const std::uint32_t n = Take(name);
        if (n == kNone) return;
        const Node& node = doc_[n];
        if (node.kind == Kind::kNull) {
            text.RemoveAll();
            PlainPrefix(text);
            return;
        }
        if (node.kind == Kind::kString) return TakeText(n, name, text);
        if (node.kind != Kind::kObject) {
            Expect(n, name, Kind::kString);
            return;
        }
        std::vector<unsigned char> bytes;
        if (!PrefixedBytes(n, name, text, 0xFFFF, &bytes)) return;
        text.SetAt(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::uint16_t>(bytes.size()));
        if (!bytes.empty() && text.GetBytes() == nullptr) OutOfMemory(name);
    }
    void Buffer(const char* name, CCmdBuffer& buffer) override {
        const std::uint32_t n = Take(name);
        if (n == kNone) return;
        std::vector<unsigned char> bytes;
        if (doc_[n].kind != Kind::kObject) {
            if (!Hex(n, name, 0xFFFFFFFFu, &bytes)) return;
            PlainPrefix(buffer);
        } else if (!PrefixedBytes(n, name, buffer, 0xFFFFFFFFu, &bytes)) {
            return;
        }
        if (buffer.SetAt(bytes.data(), static_cast<std::uint32_t>(bytes.size())) != result::kOk)
            OutOfMemory(name);
    }
    void Dropped(const char* countName, const char*, std::uint32_t& count) override {
        Scalar(countName, WireType::kU32, &count, 4);
    }
    void Nested(const char* name, const RecordRef& record) override {
        const std::uint32_t n = Take(name);
        if (n == kNone || !Expect(n, name, Kind::kObject)) return;
        Enter(name, Frame::Object(n));
        record.Visit(*this);
        if (!failed_) CheckAllTaken(n, [&](FieldProcessor& p) { record.Visit(p); });
        Leave();
    }
    void List(const char* name, ListAccess& list) override {
        const std::uint32_t n = Take(name);
        if (n == kNone) return;
        Enter(name, Frame::Object(n));
        std::uint32_t items = n;
        if (doc_[n].kind == Kind::kObject) {
            TakePrefix(list.Self(), Take("version"), Take("reserved"));
            items = Take("items");
            if (!failed_) CheckAllTaken(n, nullptr);
        } else {
            PlainPrefix(list.Self());
        }
        if (items != kNone && Expect(items, nullptr, Kind::kArray)) TakeItems(items, list);
        Leave();
    }
    void Image(const char* name, ImageAccess& image) override {
        const std::uint32_t n = Take(name);
        if (n == kNone) return;
        std::vector<unsigned char> block;
        if (!Hex(n, name, image.Size(), &block)) return;
        if (block.size() != image.Size()) {
            Fail(name, "a block of " + std::to_string(block.size()) +
                           " bytes where the image has " + std::to_string(image.Size()));
            return;
        }
        CCmdReader reader;
        reader.AttachView(block.data(), image.Size());
        image.Read(reader);
    }
    void BeginArray(const char* name, std::uint32_t count) override {
        const std::uint32_t n = Take(name);
        Frame frame = Frame::Items(kNone);
        if (n != kNone && Expect(n, name, Kind::kArray)) {
            if (doc_[n].b == count)
                frame.first = doc_[n].a;
            else
                Fail(name, "has " + std::to_string(doc_[n].b) + " items; the array holds exactly " +
                               std::to_string(count));
        }
        Enter(name, frame);
    }
    void EndArray(const char*) override { Leave(); }
    void SetIndex(std::int32_t index) override {
        Frame& f = frames_.back();
        if (!f.items) return;
        // Items come in order: each steps from the one before.
        f.element = index == 0 || f.element == kNone ? f.first : doc_[f.element].next;
        path_.back().index = index;
    }

private:
    // Where fields take their values: the members of an object, or the items of an array.
    struct Frame {
        std::uint32_t object = kNone;
        std::uint32_t element = kNone;  // items: the current one
        std::uint32_t first = kNone;    // items: the first one
        bool items = false;
        static Frame Object(std::uint32_t node) {
            Frame f;
            f.object = node;
            return f;
        }
        static Frame Items(std::uint32_t first) {
            Frame f;
            f.first = first;
            f.items = true;
            return f;
        }
    };
    // One step of the JSON path: a field's name, then the index of the item in it.
    struct PathPart {
        const char* name;
        std::int32_t index;
    };

    static const char* WidthName(std::uint32_t width) {
        return width == 1 ? "u8" : width == 2 ? "u16" : width == 4 ? "u32" : "u64";
    }

    void Enter(const char* name, const Frame& frame) {
        frames_.push_back(frame);
        path_.push_back({name, -1});
    }
    void Leave() {
        frames_.pop_back();
        path_.pop_back();
    }

    // The node a field takes its value from: the object member of that name, or the current
    // item where the field is an item. kNone when the JSON does not give it.
    std::uint32_t Take(const char* name) {
        if (failed_ || frames_.empty()) return kNone;
        Frame& f = frames_.back();
        if (f.items) return name == nullptr ? f.element : kNone;
        if (name == nullptr && frames_.size() == 1) {  // the root's one unnamed field
            rootTaken_ = true;
            return f.element;
        }
        if (name == nullptr || f.object == kNone) return kNone;
        for (std::uint32_t c = doc_[f.object].a; c != kNone; c = doc_[c].next) {
            Node& node = doc_[c];
            if (!node.used && doc_.KeyIs(node, name)) {
                node.used = true;
                return c;
            }
        }
        return kNone;
    }

    void TakeItems(std::uint32_t items, ListAccess& list) {
        const std::uint32_t count = doc_[items].b;
        const std::uint64_t cost = static_cast<std::uint64_t>(count) * list.ItemBytes();
        if (cost > itemBudget_) {
            Fail(nullptr,
                 std::to_string(count) +
                     " items need more memory than a JSON text of this length may ask for");
            return;
        }
        itemBudget_ -= cost;
        list.Clear();
        if (list.Append(count) != count) return OutOfMemory(nullptr);
        struct Items : ItemSink {
            JsonReader& r;
            explicit Items(JsonReader& reader) : r(reader) {}
            void Item(std::uint32_t index, const RecordRef& item) override {
                if (r.failed_) return;
                r.SetIndex(static_cast<std::int32_t>(index));
                item.Visit(r);
            }
        } sink(*this);
        frames_.push_back(Frame::Items(doc_[items].a));
        path_.push_back({nullptr, -1});
        list.ForEach(sink);
        Leave();
    }

    template <class Visit>
    void CheckAllTaken(std::uint32_t object, Visit visit) {
        for (std::uint32_t c = doc_[object].a; c != kNone; c = doc_[c].next) {
            if (doc_[c].used) continue;
            const std::string key = doc_.Key(doc_[c]);
            bool twice = false;
            for (std::uint32_t d = doc_[object].a; d != c; d = doc_[d].next)
                if (doc_[d].used && doc_.KeyIs(doc_[d], key.c_str())) twice = true;
            std::string why = "no such field";
            if (twice) {
                why = "given twice";
            } else if constexpr (!std::is_same_v<Visit, std::nullptr_t>) {
                NameProbe probe(key.c_str());
                visit(probe);
                if (probe.found) why = "not present at this object's version";
            }
            Fail(key.c_str(), why);
            return;
        }
    }

    bool Expect(std::uint32_t n, const char* name, Kind kind) {
        if (doc_[n].kind == kind) return true;
        Fail(name,
             std::string(KindName(doc_[n].kind)) + " where " + KindName(kind) + " was expected");
        return false;
    }

    bool Unsigned(std::uint32_t n, const char* name, const char* typeName, std::uint64_t most,
                  std::uint64_t* value) {
        if (!Expect(n, name, Kind::kNumber)) return false;
        std::string_view span = doc_.Span(doc_[n]);
        std::string shown(span.substr(0, 40));
        if (span.size() > 40) shown += "...";
        if (span.find_first_of(".eE") != std::string_view::npos) {
            Fail(name, shown + " is not a whole number");
            return false;
        }
        if (span == "-0") span = "0";
        if (span[0] == '-') {
            Fail(name, shown + " does not fit " + typeName);
            return false;
        }
        std::uint64_t v = 0;
        for (char c : span) {
            const std::uint64_t d = static_cast<std::uint64_t>(c - '0');
            if (v > (most - d) / 10) {
                Fail(name, shown + " does not fit " + typeName);
                return false;
            }
            v = v * 10 + d;
        }
        *value = v;
        return true;
    }

    // A record's version and reserved word: an absent version stays, an absent reserved word
    // is 0. A version above the object's own cannot be taken: reading it would make it 0.
    void TakePrefix(CCmdCore& self, std::uint32_t version, std::uint32_t reserved) {
        std::uint64_t v = self.GetVersion(), r = 0;
        if (version != kNone) {
            if (!Unsigned(version, "version", "u16", 0xFFFF, &v)) return;
            if (v > self.GetVersion()) {
                Fail("version", "version " + std::to_string(v) + " is above the " +
                                    std::to_string(self.GetVersion()) + " this object takes");
                return;
            }
        }
        if (reserved != kNone && !Unsigned(reserved, "reserved", "u16", 0xFFFF, &r)) return;
        Access::Version(self) = static_cast<std::uint16_t>(v);
        Access::Reserved(self) = static_cast<std::uint16_t>(r);
    }
    // The prefix that the plain forms of texts, buffers and lists stand for.
    static void PlainPrefix(CCmdCore& self) {
        Access::Version(self) = 1;
        Access::Reserved(self) = 0;
    }

    // Texts and buffers in their object form: {"version", "reserved", "bytes"}.
    bool PrefixedBytes(std::uint32_t n, const char* name, CCmdCore& self, std::uint32_t most,
                       std::vector<unsigned char>* bytes) {
        if (!Expect(n, name, Kind::kObject)) return false;
        Enter(name, Frame::Object(n));
        TakePrefix(self, Take("version"), Take("reserved"));
        const std::uint32_t hex = Take("bytes");
        if (!failed_) CheckAllTaken(n, nullptr);
        if (!failed_ && hex != kNone) Hex(hex, "bytes", most, bytes);
        Leave();
        return !failed_;
    }

    bool Hex(std::uint32_t n, const char* name, std::uint32_t most,
             std::vector<unsigned char>* bytes) {
        if (!Expect(n, name, Kind::kString)) return false;
        const std::string_view span = doc_.Span(doc_[n]);
        if (span.size() % 2 != 0) {
            Fail(name, "hex of an odd number of digits");
            return false;
        }
        if (span.size() / 2 > most) {
            Fail(name, std::to_string(span.size() / 2) + " bytes where at most " +
                           std::to_string(most) + " fit");
            return false;
        }
        bytes->resize(span.size() / 2);
        for (std::size_t i = 0; i < bytes->size(); ++i) {
            const int hi = HexDigit(span[2 * i]), lo = HexDigit(span[2 * i + 1]);
            if (hi < 0 || lo < 0) {
                Fail(name, "not hex at digit " + std::to_string(2 * i + (hi < 0 ? 0 : 1)));
                return false;
            }
            (*bytes)[i] = static_cast<unsigned char>(hi << 4 | lo);
        }
        return true;
    }

    // A JSON string as 16-bit text with its terminator (the parse has checked its UTF-8).
    void TakeText(std::uint32_t n, const char* name, CCmdString& text) {
        std::string utf8;
        doc_.String(doc_[n], &utf8);
        std::vector<std::uint16_t> units;
        units.reserve(utf8.size() + 1);
        for (std::size_t i = 0; i < utf8.size();) {
            const unsigned char c = static_cast<unsigned char>(utf8[i]);
            const std::size_t extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
            std::uint32_t cp = extra == 0 ? c : c & (0x3Fu >> extra);
            for (std::size_t k = 1; k <= extra; ++k)
                cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
            i += extra + 1;
            if (cp >= 0x10000) {
                units.push_back(static_cast<std::uint16_t>(0xD800 + ((cp - 0x10000) >> 10)));
                units.push_back(static_cast<std::uint16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
            } else {
                units.push_back(static_cast<std::uint16_t>(cp));
            }
        }
        units.push_back(0);
        if (units.size() * 2 > 0xFFFF) {
            Fail(name, "a text of " + std::to_string(units.size() * 2) +
                           " bytes with its terminator does not fit the u16 count");
            return;
        }
        PlainPrefix(text);
        text.SetAt(units.data(), static_cast<std::uint16_t>(units.size()));
        if (text.GetBytes() == nullptr) OutOfMemory(name);
    }

    void OutOfMemory(const char* name) { Fail(name, "out of memory"); }

    void Fail(const char* name, const std::string& why) {
        if (failed_) return;
        failed_ = true;
        std::string path;
        const auto add = [&path](const char* n, std::int32_t index) {
            if (n != nullptr) {
                if (!path.empty()) path += '.';
                path += n;
            }
            if (index >= 0) path += "[" + std::to_string(index) + "]";
        };
        for (const PathPart& part : path_) add(part.name, part.index);
        add(name, -1);
        error_ = (path.empty() ? std::string("the message") : path) + ": " + why;
    }

    Document& doc_;
    std::string& error_;
    std::vector<Frame> frames_;
    std::vector<PathPart> path_;
    std::uint64_t itemBudget_;
    bool failed_ = false;
    bool rootTaken_ = false;
};

}  // namespace

bool ToJson(CCmdCore& object, std::string* out) {
    if (out == nullptr) return false;
    try {
        JsonWriter writer(*out);
        writer.Root(object);
        return true;
    } catch (...) {  // std::bad_alloc: nothing else is thrown here
        return false;
    }
}

bool FromJson(CCmdCore& object, std::string_view text, std::string* error) {
    std::string scratch;
    std::string& why = error != nullptr ? *error : scratch;
    try {
        Document doc(text.data(), text.size());
        if (!doc.Parse(&why)) return false;
        JsonReader reader(doc, text.size(), why);
        return reader.Root(object);
    } catch (...) {
        why = "out of memory";
        return false;
    }
}

}  // namespace cmddata
