// Renderers of a FieldNode tree: an indented text tree and JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "field_tree.h"

namespace cmdtool {

/// One line per field: offset, wire type, name and value, nested records indented.
void PrintTree(std::ostream& out, const FieldNode& root, const std::string& indent);
/// The root's fields as a JSON array (nested records and lists as nested objects).
nlohmann::ordered_json JsonFields(const FieldNode& root);

/// Width in bytes of a scalar wire type (0 for others).
unsigned ScalarWidth(cmddata::WireType type);

}  // namespace cmdtool
