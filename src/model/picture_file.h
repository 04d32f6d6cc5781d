// Which sources are pictures.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"

namespace quorvelant {

// Whether a source is a picture, to be encoded when it is due, by its name.
inline bool IsPicture(std::string_view path) {
  constexpr std::array<std::string_view, 4> Extensions{".bmp", ".png", ".jpg", ".jpeg"};
  const std::string lower = Lower(path);
  return std::ranges::any_of(Extensions,
                             [&](std::string_view extension) { return lower.ends_with(extension); });
}

}  // namespace quorvelant
