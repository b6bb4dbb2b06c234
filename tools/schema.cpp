// cmddata schema: every class of the class table with its wire fields, from the field lists. A
// field processor collects one class's fields at each version its list tests; the versions at
// which a field appears give the version it is present from.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cmddata/core/buffer.h"
#include "cmddata/core/describe.h"
#include "cmddata/core/processor.h"
#include "registry.h"
#include "schema.h"
#include "tool.h"

namespace cmdtool {
namespace {

using nlohmann::ordered_json;

constexpr int kSchemaVersion = 1;

// Carries a version into any object through CCmdCore's own assignment: records whose
// constructor takes none get theirs this way, as they do from a region.
class VersionCarrier : public CCmdCore {
public:
    explicit VersionCarrier(std::uint16_t version) : CCmdCore(version, 0) {}
};

ordered_json Field(const char* name, const char* type) {
    ordered_json f;
    f["name"] = name != nullptr ? name : "";
    f["type"] = type;
    return f;
}

ordered_json Counted(const char* name, cmddata::WireType type, const char* count) {
    ordered_json f = Field(name, cmddata::WireTypeName(type));
    f["prefix"] = 4;
    f["count"] = count;
    return f;
}

// Collects the fields of one object's own list in the order it visits them. Nested records are
// named by class (they are entries of their own); a list or an array describes one item.
class Collector final : public cmddata::FieldProcessor {
public:
    explicit Collector(bool reading) : reading_(reading) { slots_.push_back({&fields_, nullptr}); }

    bool Reading() const override { return reading_; }
    void Prefix(CCmdCore&) override {
        for (const char* name : {"version", "reserved"}) {
            ordered_json f = Field(name, "u16");
            f["width"] = 2;
            f["prefix"] = true;
            Emit(std::move(f));
        }
    }
    void Scalar(const char* name, cmddata::WireType type, void*, std::uint32_t width) override {
        ordered_json f = Field(name, cmddata::WireTypeName(type));
        f["width"] = type == cmddata::WireType::kU8 ? 1 : width;
        Emit(std::move(f));
    }
    void String(const char* name, CCmdString&) override {
        Emit(Counted(name, cmddata::WireType::kString, "u16"));
    }
    void Buffer(const char* name, CCmdBuffer&) override {
        Emit(Counted(name, cmddata::WireType::kBuffer, "u32"));
    }
    void Dropped(const char* countName, const char* name, std::uint32_t&) override {
        ordered_json count = Field(countName, "u32");
        count["width"] = 4;
        Emit(std::move(count));
        ordered_json bytes = Field(name, "bytes");
        bytes["count_field"] = countName;
        bytes["dropped"] = true;
        Emit(std::move(bytes));
    }
    void Nested(const char* name, const cmddata::RecordRef& record) override {
        ordered_json f = Field(name, "record");
        f["class"] = record.type;
        Emit(std::move(f));
    }
    void List(const char* name, cmddata::ListAccess& list) override {
        ordered_json f = Counted(name, cmddata::WireType::kList, "u32");
        f["item_class"] = list.ItemType();
        if (list.Count() == 0) list.Append(1);
        ordered_json item;
        slots_.push_back({nullptr, &item});
        FieldProcessor::List(name, list);  // each item runs as a field; the first is kept
        slots_.pop_back();
        if (!item.is_null()) f["item"] = std::move(item);
        Emit(std::move(f));
    }
    void Image(const char* name, cmddata::ImageAccess& image) override {
        ordered_json f = Field(name, "image");
        f["width"] = image.Size();
        f["class"] = image.Type();
        Emit(std::move(f));
    }
    void Unsent(const char* name, std::uint64_t) override {
        ordered_json f = Field(name, "unsent");
        f["width"] = 0;
        Emit(std::move(f));
    }
    void BeginArray(const char*, std::uint32_t count) override {
        arrays_.push_back(std::make_unique<Array>());
        arrays_.back()->count = count;
        slots_.push_back({nullptr, &arrays_.back()->item});
    }
    void EndArray(const char* name) override {
        slots_.pop_back();
        const std::unique_ptr<Array> array = std::move(arrays_.back());
        arrays_.pop_back();
        ordered_json f = Field(name, "array");
        f["items"] = array->count;
        f["item"] = std::move(array->item);
        Emit(std::move(f));
    }

    ordered_json& Fields() { return fields_; }

private:
    struct Slot {
        ordered_json* list;  // a field list, or
        ordered_json* item;  // the one item of a list or an array (later items are the same)
    };
    void Emit(ordered_json f) {
        Slot& s = slots_.back();
        if (s.list != nullptr)
            s.list->push_back(std::move(f));
        else if (s.item->is_null())
            *s.item = std::move(f);
    }

    bool reading_;
    ordered_json fields_ = ordered_json::array();
    std::vector<Slot> slots_;
    struct Array {
        ordered_json item;
        std::uint32_t count = 0;
    };
    std::vector<std::unique_ptr<Array>> arrays_;  // stable addresses: slots point into them
};

// An object of the class at this version; null when memory runs out.
std::unique_ptr<CCmdCore> Make(const cmddata::ClassInfo& c, std::uint16_t version) {
    std::unique_ptr<CCmdCore> object(c.make(version));
    if (object != nullptr) static_cast<CCmdCore&>(*object) = VersionCarrier(version);
    return object;
}

ordered_json Collect(const cmddata::ClassInfo& c, std::uint16_t version, bool reading) {
    const std::unique_ptr<CCmdCore> object = Make(c, version);
    if (object == nullptr) return ordered_json::array();
    Collector collector(reading);
    object->Visit(collector);
    return std::move(collector.Fields());
}

// A field's key within its list: the name and how many fields of that name came before it.
std::vector<std::string> Keys(const ordered_json& fields) {
    std::map<std::string, int> seen;
    std::vector<std::string> keys;
    for (const ordered_json& f : fields) {
        const std::string name = f["name"].get<std::string>();
        keys.push_back(name + "#" + std::to_string(seen[name]++));
    }
    return keys;
}

// The fields of every version merged in wire order: each with the lowest version it is present
// at ("since"), and the highest where a later version drops it ("until").
ordered_json MergeVersions(const cmddata::ClassInfo& c, std::uint16_t highest) {
    std::vector<std::string> order;  // merged keys in wire order
    std::map<std::string, ordered_json> fields;
    std::map<std::string, std::vector<std::uint16_t>> present;
    for (int v = highest; v >= 0; --v) {
        const ordered_json list = Collect(c, static_cast<std::uint16_t>(v), false);
        const std::vector<std::string> keys = Keys(list);
        std::size_t at = 0;  // where a field new at this version goes: after the last one known
        for (std::size_t i = 0; i < keys.size(); ++i) {
            auto known = std::find(order.begin(), order.end(), keys[i]);
            if (known == order.end()) {
                order.insert(order.begin() + static_cast<std::ptrdiff_t>(at), keys[i]);
                fields[keys[i]] = list[i];
                ++at;
            } else {
                at = static_cast<std::size_t>(known - order.begin()) + 1;
            }
            present[keys[i]].push_back(static_cast<std::uint16_t>(v));
        }
    }
    ordered_json merged = ordered_json::array();
    for (const std::string& key : order) {
        ordered_json f = fields[key];
        const std::vector<std::uint16_t>& in = present[key];  // descending
        if (in.back() > 0) f["since"] = in.back();
        if (in.front() < highest) f["until"] = in.front();
        merged.push_back(std::move(f));
    }
    return merged;
}

std::vector<std::string> Names(const ordered_json& fields) {
    std::vector<std::string> names;
    for (const ordered_json& f : fields) names.push_back(f["name"].get<std::string>());
    return names;
}

const char* KindName(cmddata::ClassKind kind) {
    switch (kind) {
        case cmddata::ClassKind::kRecord:
            return "record";
        case cmddata::ClassKind::kLayout:
            return "layout";
        case cmddata::ClassKind::kMessage:
            return "message";
    }
    return "?";
}

const char* RuleToken(cmddata::VersionRule rule) {
    switch (rule) {
        case cmddata::VersionRule::kFixed1:
            return "fixed1";
        case cmddata::VersionRule::kFixed2:
            return "fixed2";
        case cmddata::VersionRule::kArg1:
            return "arg1";
        case cmddata::VersionRule::kArg2:
            return "arg2";
        case cmddata::VersionRule::kArg3:
            return "arg3";
        case cmddata::VersionRule::kIgnored1:
            return "ignored1";
        case cmddata::VersionRule::kDerived:
            return "derived";
    }
    return "?";
}

ordered_json DescribeClass(const cmddata::ClassInfo& c) {
    ordered_json entry;
    entry["name"] = c.name;
    entry["family"] = c.family;
    entry["kind"] = KindName(c.kind);
    if (c.command != nullptr) {
        const cmddata::CommandInfo& command = *c.command;
        entry["command"] = command.name;
        entry["id"] = command.id;
        entry["side"] = SideName(c.side);
        entry["framing"] = FramingName(command.FramingOf(c.side));
        entry["version_rule"] = RuleToken(command.Rule(c.side));
        entry["default_version"] = cmddata::DefaultVersion(command, c.side);
        if (command.IsDerived()) {
            const cmddata::CommandInfo* base = cmddata::FindCommand(command.layoutOf);
            entry["layout_of"] = base != nullptr ? base->name : "";
        }
        entry["payload_known"] = command.payloadKnown;
    }
    entry["takes_version"] = c.takesVersion;
    entry["crossed"] = c.crossed;
    std::uint16_t highest = 0;
    if (const std::unique_ptr<CCmdCore> probe = Make(c, 0))
        highest = cmddata::HighestVersionTested(*probe);
    entry["highest_version_tested"] = highest;
    entry["fields"] = MergeVersions(c, highest);
    const ordered_json written = Collect(c, highest, false);
    const ordered_json read = Collect(c, highest, true);
    if (Names(read) != Names(written)) entry["read_order"] = Names(read);
    return entry;
}

// Widths of nested records and arrays of them, from the fixed sizes of the classes they name;
// then each class's fixed size (every field of a known width and present at every version).
void ResolveWidths(ordered_json& classes) {
    std::map<std::string, std::uint32_t> fixed;
    const std::function<void(ordered_json&)> resolve = [&](ordered_json& f) {
        if (f.contains("item")) resolve(f["item"]);
        if (f.contains("width")) return;
        const std::string type = f["type"].get<std::string>();
        if (type == "record") {
            auto known = fixed.find(f["class"].get<std::string>());
            if (known != fixed.end()) f["width"] = known->second;
        } else if (type == "array" && f["item"].contains("width")) {
            f["width"] = f["item"]["width"].get<std::uint32_t>() * f["items"].get<std::uint32_t>();
        }
    };
    for (std::size_t pass = 0, grew = 1; grew != 0 && pass < 32; ++pass) {
        grew = 0;
        for (ordered_json& entry : classes) {
            std::uint32_t size = 0;
            bool isFixed = true;
            for (ordered_json& f : entry["fields"]) {
                resolve(f);
                if (!f.contains("width") || f.contains("since") || f.contains("until"))
                    isFixed = false;
                else
                    size += f["width"].get<std::uint32_t>();
            }
            const std::string name = entry["name"].get<std::string>();
            if (isFixed && fixed.emplace(name, size).second) ++grew;
        }
    }
    for (ordered_json& entry : classes) {
        auto known = fixed.find(entry["name"].get<std::string>());
        entry["fixed_size"] = known != fixed.end() ? ordered_json(known->second) : ordered_json();
    }
}

// One field of the text listing: offset (or "+" once offsets vary), type, width, name, notes.
void PrintField(std::ostream& out, const ordered_json& f, const std::string& offset) {
    std::string type = f["type"].get<std::string>();
    if (f.contains("item")) type += "<" + f["item"]["type"].get<std::string>() + ">";
    const std::string width = f.contains("width") ? std::to_string(f["width"].get<int>()) : "*";
    std::string notes;
    const auto note = [&notes](const std::string& text) {
        notes += (notes.empty() ? "" : ", ") + text;
    };
    if (f.contains("count")) note(f["count"].get<std::string>() + " count after a 4-byte prefix");
    if (f.contains("count_field"))
        note("count in " + f["count_field"].get<std::string>() + ", not kept");
    if (f.contains("items")) note(std::to_string(f["items"].get<int>()) + " items");
    if (f.contains("class")) note(f["class"].get<std::string>());
    if (f.contains("item") && f["item"].contains("class"))
        note("of " + f["item"]["class"].get<std::string>());
    else if (f.contains("item_class"))
        note("of " + f["item_class"].get<std::string>());
    if (f.contains("since")) note("from version " + std::to_string(f["since"].get<int>()));
    if (f.contains("until")) note("up to version " + std::to_string(f["until"].get<int>()));
    if (f.value("type", "") == "unsent") note("never sent");
    char line[160];
    std::snprintf(line, sizeof line, "  %5s  %-14s %5s  %-28s", offset.c_str(), type.c_str(),
                  width.c_str(), f["name"].get<std::string>().c_str());
    std::string text = line;
    if (!notes.empty()) text += " " + notes;
    while (!text.empty() && text.back() == ' ') text.pop_back();
    out << text << "\n";
}

void PrintText(std::ostream& out, const ordered_json& classes) {
    for (const ordered_json& c : classes) {
        out << c["name"].get<std::string>() << "  " << c["kind"].get<std::string>() << " of "
            << c["family"].get<std::string>();
        if (c.contains("command")) {
            out << "; " << c["command"].get<std::string>() << " (" << c["id"].get<int>() << ") "
                << c["side"].get<std::string>() << ", " << c["framing"].get<std::string>()
                << ", version " << c["version_rule"].get<std::string>();
            if (c.contains("layout_of"))
                out << " (layout of " << c["layout_of"].get<std::string>() << ")";
            if (!c["payload_known"].get<bool>()) out << ", payload undefined";
        }
        if (!c["fixed_size"].is_null()) {
            const int size = c["fixed_size"].get<int>();
            out << "; " << size << (size == 1 ? " byte" : " bytes");
        }
        out << "\n";
        std::uint32_t offset = 0;
        bool known = true;
        for (const ordered_json& f : c["fields"]) {
            PrintField(out, f, known ? std::to_string(offset) : "+");
            if (!f.contains("width") || f.contains("since") || f.contains("until"))
                known = false;
            else
                offset += f["width"].get<std::uint32_t>();
        }
        if (c.contains("read_order")) {
            out << "  read order:";
            for (const ordered_json& name : c["read_order"]) out << " " << name.get<std::string>();
            out << "\n";
        }
    }
}

}  // namespace

nlohmann::ordered_json DescribeClasses() {
    std::size_t count = 0;
    const cmddata::ClassInfo* table = cmddata::Classes(&count);
    ordered_json classes = ordered_json::array();
    for (std::size_t i = 0; i < count; ++i) classes.push_back(DescribeClass(table[i]));
    ResolveWidths(classes);
    return classes;
}

int RunSchema(const SchemaOptions& options) {
    ordered_json classes = DescribeClasses();

    std::ostringstream text;
    if (options.json) {
        ordered_json document;
        document["schema_version"] = kSchemaVersion;
        document["classes"] = std::move(classes);
        text << document.dump(1) << "\n";
    } else {
        PrintText(text, classes);
    }
    if (options.output.empty()) {
        std::cout << text.str();
        return kExitOk;
    }
    std::ofstream file(options.output, std::ios::binary);
    if (file) file << text.str();
    if (!file || !file.flush()) {
        std::fprintf(stderr, "cmddata schema: cannot write '%s'\n", options.output.c_str());
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace cmdtool
