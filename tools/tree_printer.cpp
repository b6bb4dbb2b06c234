// The text tree: "@0x0014  u16     item_id = 3 (0x0003)".
#include <cstdio>

#include "cmddata/command/catalogue.h"
#include "printers.h"
#include "text.h"

namespace cmdtool {

unsigned ScalarWidth(cmddata::WireType type) {
    switch (type) {
        case cmddata::WireType::kU8:
            return 1;
        case cmddata::WireType::kU16:
            return 2;
        case cmddata::WireType::kU32:
        case cmddata::WireType::kIdent:
            return 4;
        case cmddata::WireType::kU64:
            return 8;
        default:
            return 0;
    }
}

namespace {

std::string Label(const FieldNode& node) {
    std::string label = node.index >= 0 ? "[" + std::to_string(node.index) + "]" : "";
    if (!node.name.empty()) label += (label.empty() ? "" : " ") + node.name;
    return label;
}

std::string ValueText(const FieldNode& node) {
    using cmddata::WireType;
    switch (node.type) {
        case WireType::kU8:
        case WireType::kU16:
        case WireType::kU32:
        case WireType::kU64:
            return std::to_string(node.value) + " (" + HexWord(node.value, ScalarWidth(node.type)) +
                   ")";
        case WireType::kIdent: {
            const cmddata::CommandInfo* c =
                cmddata::FindCommand(static_cast<std::uint32_t>(node.value));
            return std::to_string(node.value) + " (" + HexWord(node.value, 4) + ")" +
                   (c != nullptr ? std::string(" ") + c->name : " (not in the catalogue)");
        }
        case WireType::kString: {
            bool clean = true;
            const std::string text = Utf16ToUtf8(node.bytes.data(), node.bytes.size(), &clean);
            std::string v =
                "\"" + text + "\" (" + std::to_string(node.bytes.size()) + " text bytes)";
            if (!clean) v += " hex " + HexBytes(node.bytes.data(), node.bytes.size());
            return v;
        }
        case WireType::kBuffer:
            return std::to_string(node.bytes.size()) + " bytes" +
                   (node.bytes.empty() ? ""
                                       : ": " + HexBytes(node.bytes.data(), node.bytes.size()));
        case WireType::kUnsent:
            return std::to_string(node.value) + " (not on the wire)";
        default:
            return std::string();
    }
}

void PrintNode(std::ostream& out, const FieldNode& node, const std::string& indent) {
    char head[48];
    std::snprintf(head, sizeof(head), "@0x%04x  %-7s ", static_cast<unsigned>(node.offset),
                  cmddata::WireTypeName(node.type));
    out << head << indent << Label(node);
    if (node.type == cmddata::WireType::kRecord) {
        out << (Label(node).empty() ? "" : " ") << node.typeName << " (" << node.size << " bytes)"
            << (node.complete ? "" : " INCOMPLETE") << "\n";
    } else if (node.type == cmddata::WireType::kList) {
        out << ": " << node.count << " x " << node.typeName << " (" << node.size
            << " bytes: prefix, count, items)" << (node.complete ? "" : " INCOMPLETE") << "\n";
    } else if (node.type == cmddata::WireType::kArray) {
        out << ": " << node.count << " items (" << node.size << " bytes)"
            << (node.complete ? "" : " INCOMPLETE") << "\n";
    } else {
        out << " = " << ValueText(node) << "\n";
    }
    for (const FieldNode& child : node.children) PrintNode(out, child, indent + "  ");
}

}  // namespace

void PrintTree(std::ostream& out, const FieldNode& root, const std::string& indent) {
    for (const FieldNode& child : root.children) PrintNode(out, child, indent);
}

}  // namespace cmdtool
