// Counts in sentences.
#pragma once

#include <fmt/format.h>

#include <concepts>
#include <string>
#include <string_view>

namespace quorvelant {

// A count and its noun, which takes an "s": "1 frame", "2 frames".
[[nodiscard]] inline std::string Counted(std::integral auto count, std::string_view one) {
  return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

}  // namespace quorvelant
