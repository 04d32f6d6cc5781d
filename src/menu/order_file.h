// Reads an order from a TOML file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "menu/disc_order.h"

namespace quorvelant {

struct ReadOrder {
  std::optional<DiscOrder> Order;  // none where there are errors
  std::vector<Message> Errors;     // each with file and line
};

// `file` names the text in messages; paths within count from its folder and come back as a session with a
// project at `project` takes them. Unknown keys are errors. No other file is opened.
[[nodiscard]] ReadOrder ReadOrderText(std::string_view text, const std::string& file);

}  // namespace quorvelant
