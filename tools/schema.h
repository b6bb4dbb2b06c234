// The schema of every class, as the schema command prints it: other descriptions (the Kaitai
// files) are made from the same document.
#pragma once

#include <nlohmann/json.hpp>

namespace cmdtool {

/// The "classes" array of 'cmddata schema --json' (docs/schema.md).
nlohmann::ordered_json DescribeClasses();

}  // namespace cmdtool
