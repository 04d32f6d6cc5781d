#include "author/size_text.h"

#include <fmt/format.h>

namespace quorvelant {

std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1000) {
    return fmt::format("{} bytes", bytes);
  }
  const auto value = static_cast<double>(bytes);
  return value < 1e6   ? fmt::format("{:.1f} kB", value / 1e3)
         : value < 1e9 ? fmt::format("{:.1f} MB", value / 1e6)
                       : fmt::format("{:.2f} GB", value / 1e9);
}

}  // namespace quorvelant
