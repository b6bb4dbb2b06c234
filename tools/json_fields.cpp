// The JSON form of a field tree: an array of field objects, records and lists nested.
#include "cmddata/command/catalogue.h"
#include "printers.h"
#include "text.h"

namespace cmdtool {

namespace {

nlohmann::ordered_json JsonNode(const FieldNode& node) {
    using cmddata::WireType;
    nlohmann::ordered_json j;
    j["name"] = node.name;
    j["type"] = cmddata::WireTypeName(node.type);
    j["offset"] = node.offset;
    j["size"] = node.size;
    if (node.index >= 0) j["index"] = node.index;
    if (!node.complete) j["complete"] = false;
    switch (node.type) {
        case WireType::kU8:
        case WireType::kU16:
        case WireType::kU32:
        case WireType::kU64:
        case WireType::kIdent:
        case WireType::kUnsent:
            j["value"] = node.value;
            if (node.type != WireType::kUnsent)
                j["hex"] = HexWord(node.value, ScalarWidth(node.type));
            if (node.type == WireType::kIdent) {
                const cmddata::CommandInfo* c =
                    cmddata::FindCommand(static_cast<std::uint32_t>(node.value));
                if (c != nullptr) j["command"] = c->name;
            }
            break;
        case WireType::kString: {
            bool clean = true;
            j["text"] = Utf16ToUtf8(node.bytes.data(), node.bytes.size(), &clean);
            j["clean"] = clean;
            j["bytes"] = HexRun(node.bytes.data(), node.bytes.size());
            break;
        }
        case WireType::kBuffer:
            j["bytes"] = HexRun(node.bytes.data(), node.bytes.size());
            break;
        case WireType::kList:
            j["count"] = node.count;
            j["item_type"] = node.typeName;
            j["items"] = JsonFields(node);
            break;
        case WireType::kArray:
            j["count"] = node.count;
            j["items"] = JsonFields(node);
            break;
        case WireType::kRecord:
        case WireType::kImage:
            j["record_type"] = node.typeName;
            j["fields"] = JsonFields(node);
            break;
    }
    return j;
}

}  // namespace

nlohmann::ordered_json JsonFields(const FieldNode& root) {
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    for (const FieldNode& child : root.children) fields.push_back(JsonNode(child));
    return fields;
}

}  // namespace cmdtool
