// The one time that an image tells of all it holds.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvelant {

// In UTC.
struct ImageTime {
  int Year = 2000;
  unsigned Month = 1;
  unsigned Day = 1;
  unsigned Hour = 0;
  unsigned Minute = 0;
  unsigned Second = 0;
};

// Of seconds since 1970; nothing for what ISO 9660 cannot tell, which ends with 2155.
[[nodiscard]] std::optional<ImageTime> ImageTimeOf(std::int64_t seconds);

// The same of a decimal number, as the environment's SOURCE_DATE_EPOCH holds it.
[[nodiscard]] std::optional<ImageTime> ImageTimeOf(std::string_view number);

}  // namespace quorvelant
