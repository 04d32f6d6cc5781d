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
  std::vector<Message> Errors;     // each with file and line, in the order of the lines
};

// `file` names the text in messages. Paths in the text count from its folder and come back as they count from
// here. No other file is opened.
[[nodiscard]] ReadOrder ReadOrderText(std::string_view text, const std::string& file);

// The same of a file; one that cannot be read is an error too.
[[nodiscard]] ReadOrder ReadOrderFile(const std::string& file);

// The menus that a word or a list of words asks for: "auto", "none", "audio", "subtitles", "chapters", with
// commas between. False for any other.
[[nodiscard]] bool TakeMenus(std::string_view words, DiscOrder& order);
// "menu", "first" or "all"; nothing for any other.
[[nodiscard]] std::optional<AtInsertion> InsertionCalled(std::string_view word);

}  // namespace quorvelant
