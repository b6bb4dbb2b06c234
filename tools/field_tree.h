// A decoded message as a tree of fields, collected from a describe walk; the text and JSON
// printers both render from it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cmddata/core/describe.h"

namespace cmdtool {

struct FieldNode {
    std::string name;  // empty for list items
    cmddata::WireType type = cmddata::WireType::kRecord;
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
    std::int32_t index = -1;           // position within the enclosing list
    std::uint64_t value = 0;           // scalars
    std::vector<unsigned char> bytes;  // strings and buffers
    std::string typeName;              // records; item type of lists
    std::uint32_t count = 0;           // lists: the count on the wire
    bool complete = true;              // false when the decode stopped inside
    std::vector<FieldNode> children;
};

struct DecodeFailure {
    bool failed = false;
    std::string field;
    std::uint32_t offset = 0;
    cmddata::Result code = 0;
    std::string why;
};

/// Builds a FieldNode tree from the visitor callbacks of one walk or decode.
class TreeBuilder : public cmddata::FieldVisitor {
public:
    explicit TreeBuilder(const std::string& rootType);

    void Scalar(const cmddata::FieldInfo& field, std::uint64_t value) override;
    void Text(const cmddata::FieldInfo& field, const CCmdString& text) override;
    void Bytes(const cmddata::FieldInfo& field, const unsigned char* data,
               std::uint32_t size) override;
    void BeginRecord(const cmddata::FieldInfo& field, const char* typeName) override;
    void EndRecord(const cmddata::FieldInfo& field) override;
    void BeginList(const cmddata::FieldInfo& field, std::uint32_t count,
                   const char* itemType) override;
    void EndList(const cmddata::FieldInfo& field) override;
    void Failure(const cmddata::FieldInfo& field, cmddata::Result code, const char* why) override;

    FieldNode& Root() { return root_; }
    const DecodeFailure& GetFailure() const { return failure_; }
    /// End of the furthest field that decoded (how far the bytes made sense).
    std::uint32_t Extent() const { return extent_; }

private:
    FieldNode& Add(const cmddata::FieldInfo& field);
    FieldNode root_;
    std::vector<FieldNode*> open_;
    DecodeFailure failure_;
    std::uint32_t extent_ = 0;
};

}  // namespace cmdtool
