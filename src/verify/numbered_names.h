// Names of fields that differ by a number, made once.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quorvelant {

// The name with 0, 1, 2 and so on after it.
template <std::size_t Count>
[[nodiscard]] std::array<std::string, Count> NumberedNames(std::string_view name) {
  std::array<std::string, Count> names;
  for (std::size_t i = 0; i < Count; ++i) {
    names.at(i) = std::string(name) + std::to_string(i);
  }
  return names;
}

}  // namespace quorvelant
