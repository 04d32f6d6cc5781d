// Messages for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <span>

#include "app/level_word.h"
#include "base/message.h"

namespace quorvelant {

// Of everything that is printed as JSON (docs/json.md). It grows when a field goes or changes its meaning;
// new fields leave it alone.
inline constexpr int JsonVersion = 1;

[[nodiscard]] inline nlohmann::ordered_json MessageJson(const Message& message) {
  return {{"severity", LevelWord(message.Level)},
          {"code", message.Code},
          {"title", message.Title},
          {"text", message.Text},
          {"place", message.Place}};
}

[[nodiscard]] inline nlohmann::ordered_json MessagesJson(std::span<const Message> messages) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Message& message : messages) {
    list.push_back(MessageJson(message));
  }
  return list;
}

}  // namespace quorvelant
