#include "iso/image_time.h"

#include <charconv>

namespace quorvelant {
namespace {

constexpr int LastYear = 2155;

}  // namespace

std::optional<ImageTime> ImageTimeOf(std::int64_t seconds) {
  constexpr std::int64_t DaySeconds = 24L * 60 * 60;
  constexpr std::int64_t MostDays = 366L * (LastYear - 1969);
  const std::int64_t days = seconds / DaySeconds;
  if (seconds < 0 || days > MostDays) {
    return std::nullopt;
  }
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
  if (static_cast<int>(date.year()) > LastYear) {
    return std::nullopt;
  }
  const auto rest = static_cast<unsigned>(seconds % DaySeconds);
  return ImageTime{.Year = static_cast<int>(date.year()),
                   .Month = static_cast<unsigned>(date.month()),
                   .Day = static_cast<unsigned>(date.day()),
                   .Hour = rest / 3600,
                   .Minute = rest / 60 % 60,
                   .Second = rest % 60};
}

std::optional<ImageTime> ImageTimeOf(std::string_view number) {
  std::int64_t seconds = 0;
  const auto [end, failed] = std::from_chars(number.data(), number.data() + number.size(), seconds);
  const bool whole = failed == std::errc() && end == number.data() + number.size();
  return whole ? ImageTimeOf(seconds) : std::nullopt;
}

}  // namespace quorvelant
