// Any bytes as the description of a disc: an order, or errors that tell code and line.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "menu/order_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  const std::string_view text(reinterpret_cast<const char*>(data), byteCount);
  const ReadOrder read = ReadOrderText(text, "fuzz/disc.toml");
  const bool allPlaced = std::ranges::all_of(read.Errors, [](const Message& error) {
    return !error.Code.empty() && error.Place.starts_with("fuzz/disc.toml:");
  });
  if (!allPlaced || read.Order.has_value() != read.Errors.empty()) {
    std::abort();
  }
  return 0;
}
