// The JSON form of a field tree: an array of field objects, records and lists nested.
#include "cmddata/command/catalogue.h"
#include "printers.h"
#include "text.h"

namespace cmdtool {

namespace {

void PrintJsonNode(std::ostream& out, const FieldNode& node, int depth) {
    using cmddata::WireType;
    const std::string pad(static_cast<std::size_t>(depth) * 2, ' ');
    out << pad << "{\"name\": " << JsonString(node.name)
        << ", \"type\": " << JsonString(cmddata::WireTypeName(node.type))
        << ", \"offset\": " << node.offset << ", \"size\": " << node.size;
    if (node.index >= 0) out << ", \"index\": " << node.index;
    if (!node.complete) out << ", \"complete\": false";
    switch (node.type) {
        case WireType::kU8:
        case WireType::kU16:
        case WireType::kU32:
        case WireType::kU64:
        case WireType::kUnsent:
            out << ", \"value\": " << node.value;
            if (node.type != WireType::kUnsent)
                out << ", \"hex\": " << JsonString(HexWord(node.value, ScalarWidth(node.type)));
            if (node.name == "command_id") {
                const cmddata::CommandInfo* c =
                    cmddata::FindCommand(static_cast<std::uint32_t>(node.value));
                if (c != nullptr) out << ", \"command\": " << JsonString(c->name);
            }
            break;
        case WireType::kString: {
            bool clean = true;
            const std::string text = Utf16ToUtf8(node.bytes.data(), node.bytes.size(), &clean);
            out << ", \"text\": " << JsonString(text)
                << ", \"clean\": " << (clean ? "true" : "false")
                << ", \"bytes\": " << JsonString(HexRun(node.bytes.data(), node.bytes.size()));
            break;
        }
        case WireType::kBuffer:
            out << ", \"bytes\": " << JsonString(HexRun(node.bytes.data(), node.bytes.size()));
            break;
        case WireType::kRecord:
        case WireType::kList:
        case WireType::kImage:
            if (node.type == WireType::kList)
                out << ", \"count\": " << node.count
                    << ", \"item_type\": " << JsonString(node.typeName);
            else
                out << ", \"record_type\": " << JsonString(node.typeName);
            out << ",\n"
                << pad << " \"" << (node.type == WireType::kList ? "items" : "fields") << "\": ";
            PrintJsonFields(out, node, depth + 1);
            break;
    }
    out << "}";
}

}  // namespace

void PrintJsonFields(std::ostream& out, const FieldNode& root, int depth) {
    if (root.children.empty()) {
        out << "[]";
        return;
    }
    out << "[\n";
    for (std::size_t i = 0; i < root.children.size(); ++i) {
        PrintJsonNode(out, root.children[i], depth + 1);
        out << (i + 1 < root.children.size() ? ",\n" : "\n");
    }
    out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << "]";
}

}  // namespace cmdtool
