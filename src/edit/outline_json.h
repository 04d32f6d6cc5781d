// The outline for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "edit/outline.h"

namespace quorvelant {

// An object a node: "kind", "key", "name", its properties, and "children". Texts are a project's own bytes.
nlohmann::ordered_json OutlineJson(const OutlineNode& node);

// JSON as text; bytes that are no UTF-8 come out as replacement characters.
inline std::string JsonText(const nlohmann::ordered_json& json) {
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace quorvelant
