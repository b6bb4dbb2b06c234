#include "field_tree.h"

#include "cmddata/core/buffer.h"

namespace cmdtool {

TreeBuilder::TreeBuilder(const std::string& rootType) {
    root_.typeName = rootType;
    open_.push_back(&root_);
}

FieldNode& TreeBuilder::Add(const cmddata::FieldInfo& field) {
    FieldNode node;
    node.name = field.name != nullptr ? field.name : "";
    node.type = field.type;
    node.offset = field.offset;
    node.size = field.size;
    node.index = field.index;
    if (field.offset + field.size > extent_) extent_ = field.offset + field.size;
    // Nodes still open sit on the stack; only the top's own children grow.
    open_.back()->children.push_back(std::move(node));
    return open_.back()->children.back();
}

void TreeBuilder::Scalar(const cmddata::FieldInfo& field, std::uint64_t value) {
    Add(field).value = value;
}

void TreeBuilder::Text(const cmddata::FieldInfo& field, const CCmdString& text) {
    FieldNode& node = Add(field);
    if (text.GetBytes() != nullptr)
        node.bytes.assign(text.GetBytes(), text.GetBytes() + text.GetSize());
}

void TreeBuilder::Bytes(const cmddata::FieldInfo& field, const unsigned char* data,
                        std::uint32_t size) {
    FieldNode& node = Add(field);
    if (data != nullptr) node.bytes.assign(data, data + size);
}

void TreeBuilder::BeginRecord(const cmddata::FieldInfo& field, const char* typeName) {
    FieldNode& node = Add(field);
    node.typeName = typeName != nullptr ? typeName : "";
    open_.push_back(&node);
}

void TreeBuilder::EndRecord(const cmddata::FieldInfo& field) {
    if (open_.size() > 1) {
        open_.back()->size = field.size;
        open_.pop_back();
    }
}

void TreeBuilder::BeginList(const cmddata::FieldInfo& field, std::uint32_t count,
                            const char* itemType) {
    FieldNode& node = Add(field);
    node.count = count;
    node.typeName = itemType != nullptr ? itemType : "";
    open_.push_back(&node);
}

void TreeBuilder::EndList(const cmddata::FieldInfo& field) { EndRecord(field); }

void TreeBuilder::Failure(const cmddata::FieldInfo& field, cmddata::Result code, const char* why) {
    for (FieldNode* node : open_) node->complete = false;
    failure_.failed = true;
    failure_.field = field.name != nullptr ? field.name : "";
    failure_.offset = field.offset;
    failure_.code = code;
    failure_.why = why != nullptr ? why : "";
}

}  // namespace cmdtool
