// cmddata ksy: a Kaitai Struct description (.ksy) of every class of the class table, made from the
// schema document, which a field processor collects from the field lists; nothing here is written
// per class. Each class is a file of its own; a nested record is its class's type, imported.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cmddata/core/processor.h"
#include "cmddata/table/classes.h"
#include "schema.h"
#include "tool.h"

namespace cmdtool {
namespace {

using nlohmann::ordered_json;

constexpr const char* kStringType = "cmddata_string";
constexpr const char* kBufferType = "cmddata_buffer";

// A Kaitai identifier from a class name: words split where a lower-case letter or digit meets a
// capital, or a run of capitals ends before a lower-case letter (CGetVINRcv: c_get_vin_rcv).
std::string SnakeName(const std::string& name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool upper = c >= 'A' && c <= 'Z';
        if (upper && i > 0) {
            const char before = name[i - 1];
            const bool afterLower =
                (before >= 'a' && before <= 'z') || (before >= '0' && before <= '9');
            const bool runEnds = before >= 'A' && before <= 'Z' && i + 1 < name.size() &&
                                 name[i + 1] >= 'a' && name[i + 1] <= 'z';
            if ((afterLower || runEnds) && out.back() != '_') out += '_';
        }
        if (upper)
            out += static_cast<char>(c - 'A' + 'a');
        else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
            out += c;
        else if (!out.empty() && out.back() != '_')
            out += '_';
    }
    while (!out.empty() && out.back() == '_') out.pop_back();
    if (out.empty() || !(out[0] >= 'a' && out[0] <= 'z')) out = "t_" + out;
    return out;
}

// A field's identifier: lower snake case, unique within its type.
class Ids {
public:
    std::string Take(const std::string& name) {
        std::string id = SnakeName(name.empty() ? "item" : name);
        if (id.size() > 2 && id.compare(0, 2, "t_") == 0 && !name.empty() && name[0] >= '0' &&
            name[0] <= '9')
            id = "f_" + id.substr(2);
        const std::string base = id;
        for (int n = 2; !used_.insert(id).second; ++n) id = base + "_" + std::to_string(n);
        return id;
    }

private:
    std::set<std::string> used_;
};

// The version a record is built with where it nests: a member as its owner's constructor makes
// it, a list item as the list's default item.
class VersionFinder final : public cmddata::FieldProcessor {
public:
    explicit VersionFinder(std::map<std::string, std::uint16_t>* seen) : seen_(seen) {}
    void Nested(const char* name, const cmddata::RecordRef& record) override {
        seen_->emplace(record.type, record.object.GetVersion());
        if (depth_ > 12) return;  // a record that holds lists of itself
        ++depth_;
        FieldProcessor::Nested(name, record);
        --depth_;
    }
    void List(const char* name, cmddata::ListAccess& list) override {
        if (list.Count() == 0) list.Append(1);
        FieldProcessor::List(name, list);
    }

private:
    std::map<std::string, std::uint16_t>* seen_;
    int depth_ = 0;
};

// The version each class is built with by default: a message's from its command, a record's from
// its constructor or, where that takes one, from where it nests (1 where it nests nowhere).
std::map<std::string, std::uint16_t> OwnVersions() {
    std::size_t count = 0;
    const cmddata::ClassInfo* table = cmddata::Classes(&count);
    std::map<std::string, std::uint16_t> seen;
    for (std::size_t i = 0; i < count; ++i) {
        const cmddata::ClassInfo& c = table[i];
        const std::uint16_t version =
            c.command != nullptr ? cmddata::DefaultVersion(*c.command, c.side) : 1;
        std::unique_ptr<CCmdCore> object(c.make(version));
        if (object == nullptr) continue;
        VersionFinder finder(&seen);
        object->Visit(finder);
    }
    std::map<std::string, std::uint16_t> own;
    for (std::size_t i = 0; i < count; ++i) {
        const cmddata::ClassInfo& c = table[i];
        std::uint16_t version = 1;
        if (c.command != nullptr) {
            version = cmddata::DefaultVersion(*c.command, c.side);
        } else if (!c.takesVersion) {
            std::unique_ptr<CCmdCore> object(c.make(1));
            if (object != nullptr) version = object->GetVersion();
        } else if (seen.count(c.name) != 0) {
            version = seen[c.name];
        }
        own[c.name] = version;
    }
    return own;
}

// The version each record member and each list's items are built with in one object, by field
// (name#k: the k-th field of that name). Every field is visited, whatever the version.
class NestedVersions final : public cmddata::FieldProcessor {
public:
    bool Since(const CCmdCore&, std::uint16_t) override { return true; }
    void Nested(const char* name, const cmddata::RecordRef& record) override {
        Note(name, record.object.GetVersion());
    }
    void List(const char* name, cmddata::ListAccess& list) override {
        struct First : cmddata::ItemSink {
            int version = -1;
            void Item(std::uint32_t, const cmddata::RecordRef& item) override {
                if (version < 0) version = item.object.GetVersion();
            }
        } first;
        if (list.Count() == 0) list.Append(1);
        list.ForEach(first);
        if (first.version >= 0) Note(name, static_cast<std::uint16_t>(first.version));
    }
    void BeginArray(const char* name, std::uint32_t) override {
        array_ = name != nullptr ? name : "";
    }
    void EndArray(const char*) override { array_.clear(); }

    std::map<std::string, std::uint16_t> versions;

private:
    void Note(const char* name, std::uint16_t version) {
        const std::string n = name != nullptr ? name : array_;
        if (name == nullptr && !array_.empty()) {  // the items of an array: once, as the array
            versions.emplace(n + "#" + std::to_string(seen_[n] - 1), version);
            return;
        }
        versions.emplace(n + "#" + std::to_string(seen_[n]++), version);
    }
    std::string array_;
    std::map<std::string, int> seen_;
};

std::map<std::string, std::uint16_t> ChildVersions(const cmddata::ClassInfo& c,
                                                   std::uint16_t version) {
    std::unique_ptr<CCmdCore> object(c.make(version));
    NestedVersions finder;
    if (object != nullptr) object->Visit(finder);
    return std::move(finder.versions);
}

// The type of a record class built with a version: the class's own file at its default version,
// a variant file (name_vN) where an owner builds it with another one.
struct TypeNames {
    const std::map<std::string, std::uint16_t>& own;
    std::set<std::pair<std::string, std::uint16_t>>* wanted;
    std::string Of(const std::string& cls, std::uint16_t version) const {
        const auto known = own.find(cls);
        if (known == own.end() || known->second == version) return SnakeName(cls);
        wanted->insert({cls, version});
        return SnakeName(cls) + "_v" + std::to_string(version);
    }
};

// Builds the description of one class.
class KsyClass {
public:
    KsyClass(const ordered_json& entry, std::uint16_t own,
             std::map<std::string, std::uint16_t> children, const TypeNames& names)
        : entry_(entry), own_(own), children_(std::move(children)), typeNames_(names) {}

    ordered_json Build() {
        const std::string name = entry_["name"].get<std::string>();
        ordered_json fields = ReadOrder(entry_);
        // The class's own version prefix: the two prefix words its list begins with.
        std::string versionId;
        ordered_json seq = ordered_json::array();
        bool conditioned = false;
        for (const ordered_json& f : fields) {
            const std::string type = f["type"].get<std::string>();
            if (type == "unsent") continue;  // never on the wire
            const std::string id = ids_.Take(f["name"].get<std::string>());
            names_[f["name"].get<std::string>()] = id;
            key_ = f["name"].get<std::string>() + "#" +
                   std::to_string(keys_[f["name"].get<std::string>()]++);
            ordered_json a = Attribute(f, id);
            if (f.value("prefix", ordered_json()) == true && f["name"] == "version" &&
                versionId.empty() && !f.contains("since"))
                versionId = id;
            std::string condition;
            if (f.contains("since"))
                condition = "effective_version >= " + std::to_string(f["since"].get<int>());
            if (f.contains("until"))
                condition += (condition.empty() ? "" : " and ") +
                             std::string("effective_version <= ") +
                             std::to_string(f["until"].get<int>());
            if (!condition.empty()) {
                a["if"] = condition;
                conditioned = true;
            }
            seq.push_back(std::move(a));
        }

        ordered_json doc;
        ordered_json& meta = doc["meta"];
        const auto usual = typeNames_.own.find(name);
        meta["id"] = usual == typeNames_.own.end() || usual->second == own_
                         ? SnakeName(name)
                         : SnakeName(name) + "_v" + std::to_string(own_);
        meta["title"] = name;
        meta["endian"] = "le";
        if (!imports_.empty()) {
            meta["imports"] = ordered_json::array();
            for (const std::string& i : imports_) meta["imports"].push_back(i);
        }
        doc["doc"] = Doc(versionId);
        doc["seq"] = std::move(seq);
        if (!versionId.empty() || conditioned) {
            ordered_json& instances = doc["instances"];
            instances["own_version"]["value"] = own_;
            instances["own_version"]["doc"] = "the version this class is built with by default";
            if (!versionId.empty()) {
                instances["effective_version"]["value"] =
                    versionId + " > own_version ? 0 : " + versionId;
                instances["effective_version"]["doc"] =
                    "a sent version above the reader's own reads as 0";
            } else {
                instances["effective_version"]["value"] = "own_version";
                instances["effective_version"]["doc"] =
                    "no version on the wire: the reader's own decides";
            }
        }
        if (!types_.empty()) doc["types"] = std::move(types_);
        return doc;
    }

    const std::set<std::string>& Imports() const { return imports_; }

private:
    std::string Doc(const std::string& versionId) const {
        std::string text = entry_["name"].get<std::string>() + ": " +
                           entry_["kind"].get<std::string>() + " of " +
                           entry_["family"].get<std::string>();
        if (entry_.contains("command"))
            text += "; " + entry_["command"].get<std::string>() + " (" +
                    std::to_string(entry_["id"].get<int>()) + ") " +
                    entry_["side"].get<std::string>() + ", " +
                    entry_["framing"].get<std::string>() + " framing";
        text += "; built with version " + std::to_string(own_);
        if (!versionId.empty()) text += ", the version travels in its prefix";
        return text + ".";
    }

    // The fields in the order reading takes them (a class may cross its fields).
    static ordered_json ReadOrder(const ordered_json& entry) {
        ordered_json fields = entry["fields"];
        if (!entry.contains("read_order")) return fields;
        std::vector<std::string> order;
        for (const ordered_json& n : entry["read_order"]) order.push_back(n.get<std::string>());
        // The k-th field of a name goes where the k-th of that name is read; a field the highest
        // version does not visit stays behind the field before it.
        std::map<std::string, int> seen;
        std::vector<std::pair<double, std::size_t>> keys;
        double last = -1;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const std::string name = fields[i]["name"].get<std::string>();
            int k = seen[name]++;
            double key = last + 0.001;
            for (std::size_t j = 0; j < order.size(); ++j)
                if (order[j] == name && k-- == 0) {
                    key = static_cast<double>(j);
                    break;
                }
            keys.push_back({key, i});
            last = key;
        }
        std::stable_sort(keys.begin(), keys.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        ordered_json sorted = ordered_json::array();
        for (const auto& k : keys) sorted.push_back(fields[k.second]);
        return sorted;
    }

    std::string Import(const std::string& type) {
        imports_.insert(type);
        return type;
    }

    // One field as a Kaitai attribute with this id; lists get a local type of their own.
    ordered_json Attribute(const ordered_json& f, const std::string& id) {
        ordered_json a;
        a["id"] = id;
        const std::string type = f["type"].get<std::string>();
        static const std::map<std::string, const char*> kScalars = {
            {"u8", "u1"}, {"u16", "u2"}, {"u32", "u4"}, {"u64", "u8"}, {"ident", "u4"}};
        if (kScalars.count(type) != 0) {
            a["type"] = kScalars.at(type);
            if (type == "ident") a["doc"] = "the command identifier";
        } else if (type == "string") {
            a["type"] = Import(kStringType);
        } else if (type == "buffer") {
            a["type"] = Import(kBufferType);
        } else if (type == "record") {
            a["type"] = Import(Nested(f["class"].get<std::string>()));
        } else if (type == "image") {
            a["size"] = f["width"];
            a["doc"] = "a " + f["class"].get<std::string>() + " as its fixed in-memory image";
        } else if (type == "bytes") {
            const std::string count = f["count_field"].get<std::string>();
            a["size"] = names_.count(count) != 0 ? names_[count] : SnakeName(count);
            a["doc"] = "read past, not kept";
        } else if (type == "list") {
            a["type"] = ListType(f, id);
        } else if (type == "array") {
            ordered_json item = Attribute(f["item"], id);
            item["repeat"] = "expr";
            item["repeat-expr"] = f["items"];
            return item;
        } else {
            a["size"] = 0;
            a["doc"] = "unknown wire type " + type;
        }
        return a;
    }

    // The type of a record at the current field: the version its owner builds it with.
    std::string Nested(const std::string& cls) {
        const auto known = children_.find(key_);
        if (known == children_.end())
            return typeNames_.Of(cls, typeNames_.own.count(cls) ? typeNames_.own.at(cls) : 1);
        return typeNames_.Of(cls, known->second);
    }

    std::string ListType(const ordered_json& f, const std::string& id) {
        std::string name = "list_" + id;
        for (int n = 2; types_.contains(name); ++n) name = "list_" + id + "_" + std::to_string(n);
        ordered_json t;
        t["doc"] = "a list of " + f.value("item_class", std::string("items")) +
                   ": version prefix, u32 count, the items";
        ordered_json seq = ordered_json::array();
        seq.push_back({{"id", "version"}, {"type", "u2"}});
        seq.push_back({{"id", "reserved"}, {"type", "u2"}});
        seq.push_back({{"id", "count"}, {"type", "u4"}});
        ordered_json item;
        if (f.contains("item")) {
            item = Attribute(f["item"], "items");
        } else {
            item["id"] = "items";
            item["type"] = Import(Nested(f["item_class"].get<std::string>()));
        }
        item["id"] = "items";
        item["repeat"] = "expr";
        item["repeat-expr"] = "count";
        seq.push_back(std::move(item));
        t["seq"] = std::move(seq);
        types_[name] = std::move(t);
        return name;
    }

    const ordered_json& entry_;
    std::uint16_t own_;
    std::map<std::string, std::uint16_t> children_;
    const TypeNames& typeNames_;
    std::string key_;  // the field being described, name#k
    std::map<std::string, int> keys_;
    Ids ids_;
    std::map<std::string, std::string>
        names_;  // field name -> id, for counts named by later fields
    std::set<std::string> imports_;
    ordered_json types_ = ordered_json::object();
};

// The two common types: a text and a buffer, each behind its version prefix.
ordered_json CountedType(const char* id, const char* title, const char* countType,
                         const char* doc) {
    ordered_json t;
    t["meta"]["id"] = id;
    t["meta"]["title"] = title;
    t["meta"]["endian"] = "le";
    t["doc"] = doc;
    ordered_json seq = ordered_json::array();
    seq.push_back({{"id", "version"}, {"type", "u2"}});
    seq.push_back({{"id", "reserved"}, {"type", "u2"}});
    seq.push_back({{"id", "len_bytes"}, {"type", countType}});
    seq.push_back({{"id", "bytes"}, {"size", "len_bytes"}});
    t["seq"] = std::move(seq);
    return t;
}

// YAML of the subset the descriptions use: maps, lists, numbers, booleans and strings (quoted
// unless a plain identifier, which keeps every expression a string).
bool Plain(const std::string& s) {
    if (s.empty() || s == "true" || s == "false" || s == "null") return false;
    for (char c : s)
        if (!((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')) return false;
    return !(s[0] >= '0' && s[0] <= '9');
}

std::string Scalar(const ordered_json& v) {
    if (v.is_string()) {
        const std::string s = v.get<std::string>();
        return Plain(s) ? s : ordered_json(s).dump();
    }
    return v.dump();
}

void Yaml(std::ostream& out, const ordered_json& v, int indent);

void YamlValue(std::ostream& out, const ordered_json& v, int indent) {
    if (v.is_object() && !v.empty()) {
        out << "\n";
        Yaml(out, v, indent);
    } else if (v.is_array() && !v.empty()) {
        out << "\n";
        Yaml(out, v, indent);
    } else if (v.is_object()) {
        out << " {}\n";
    } else if (v.is_array()) {
        out << " []\n";
    } else {
        out << " " << Scalar(v) << "\n";
    }
}

void Yaml(std::ostream& out, const ordered_json& v, int indent) {
    const std::string pad(static_cast<std::size_t>(indent), ' ');
    if (v.is_object()) {
        for (auto it = v.begin(); it != v.end(); ++it) {
            out << pad << it.key() << ":";
            YamlValue(out, it.value(), indent + 2);
        }
        return;
    }
    for (const ordered_json& item : v) {
        if (item.is_object() && !item.empty()) {
            bool first = true;
            for (auto it = item.begin(); it != item.end(); ++it) {
                out << (first ? pad + "- " : pad + "  ") << it.key() << ":";
                YamlValue(out, it.value(), indent + 4);
                first = false;
            }
        } else {
            out << pad << "- " << Scalar(item) << "\n";
        }
    }
}

bool WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    if (file) file << text;
    if (!file || !file.flush()) {
        std::fprintf(stderr, "cmddata ksy: cannot write '%s'\n", path.string().c_str());
        return false;
    }
    return true;
}

std::string YamlText(const ordered_json& doc) {
    std::ostringstream out;
    out << "# Made by 'cmddata ksy' from the class's field list; do not edit.\n";
    Yaml(out, doc, 0);
    return out.str();
}

}  // namespace

int RunKsy(const KsyOptions& options) {
    std::error_code ec;
    const std::filesystem::path dir(options.outDir);
    std::filesystem::create_directories(dir, ec);
    if (ec || !std::filesystem::is_directory(dir, ec)) {
        std::fprintf(stderr, "cmddata ksy: cannot create the directory '%s'%s%s\n",
                     options.outDir.c_str(), ec ? ": " : "", ec ? ec.message().c_str() : "");
        return kExitFailed;
    }
    const ordered_json classes = DescribeClasses();
    const std::map<std::string, std::uint16_t> own = OwnVersions();

    std::map<std::string, const ordered_json*> entries;
    for (const ordered_json& entry : classes) entries[entry["name"].get<std::string>()] = &entry;
    std::set<std::pair<std::string, std::uint16_t>> wanted;
    const TypeNames names{own, &wanted};

    std::set<std::string> files;  // a type id taken twice would overwrite a file
    // One class built with one version: its file; the variants it needs join the wanted set.
    const auto describe = [&](const ordered_json& entry, std::uint16_t version,
                              std::string* id) -> bool {
        const std::string name = entry["name"].get<std::string>();
        const cmddata::ClassInfo* info = cmddata::FindClass(name);
        KsyClass ksy(entry, version,
                     info != nullptr ? ChildVersions(*info, version)
                                     : std::map<std::string, std::uint16_t>(),
                     names);
        const ordered_json doc = ksy.Build();
        *id = doc["meta"]["id"].get<std::string>();
        if (!files.insert(*id).second) {
            std::fprintf(stderr, "cmddata ksy: two classes give the type name '%s'\n", id->c_str());
            return false;
        }
        return WriteFile(dir / (*id + ".ksy"), YamlText(doc));
    };

    ordered_json index;
    index["ksy_index_version"] = 1;
    ordered_json& byClass = index["classes"];
    byClass = ordered_json::object();
    for (const ordered_json& entry : classes) {
        const std::string name = entry["name"].get<std::string>();
        std::string id;
        if (!describe(entry, own.at(name), &id)) return kExitFailed;
        ordered_json e;
        e["file"] = id + ".ksy";
        e["type"] = id;
        if (entry.contains("command")) {
            e["command"] = entry["command"];
            e["side"] = entry["side"];
        }
        byClass[name] = std::move(e);
    }
    std::set<std::pair<std::string, std::uint16_t>> done;
    while (true) {
        auto next = std::find_if(wanted.begin(), wanted.end(),
                                 [&done](const auto& w) { return done.count(w) == 0; });
        if (next == wanted.end() || done.size() > 4096) break;
        const auto variant = *next;
        done.insert(variant);
        const auto entry = entries.find(variant.first);
        std::string id;
        if (entry != entries.end() && !describe(*entry->second, variant.second, &id))
            return kExitFailed;
    }
    const ordered_json text =
        CountedType(kStringType, "CCmdString", "u2",
                    "A text: version prefix, u16 byte count, the bytes (UTF-16LE).");
    ordered_json textDoc = text;
    textDoc["instances"]["text"]["value"] = "bytes.to_s(\"UTF-16LE\")";
    const ordered_json buffer = CountedType(kBufferType, "CCmdBuffer", "u4",
                                            "A buffer: version prefix, u32 byte count, the bytes.");
    if (!WriteFile(dir / (std::string(kStringType) + ".ksy"), YamlText(textDoc)) ||
        !WriteFile(dir / (std::string(kBufferType) + ".ksy"), YamlText(buffer)) ||
        !WriteFile(dir / "index.json", index.dump(1) + "\n"))
        return kExitFailed;
    std::printf(
        "%zu classes described in %s, and %zu records as an owner builds them with "
        "another version (index.json names each class's file and type)\n",
        classes.size(), options.outDir.c_str(), done.size());
    return kExitOk;
}

}  // namespace cmdtool
