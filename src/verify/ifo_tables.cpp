#include "verify/ifo_tables.h"

#include <fmt/format.h>

namespace quorvelant {
namespace {

// Two BCD digits.
struct Digits {
  int Value;
  bool Good;
};

Digits DigitsOf(std::uint32_t byte) {
  const auto high = static_cast<int>(byte >> 4U & 15U);
  const auto low = static_cast<int>(byte & 15U);
  return {10 * high + low, high <= 9 && low <= 9};
}

struct TimeParts {
  Digits Hours;
  Digits Minutes;
  Digits Seconds;
  Digits Frames;
};

TimeParts PartsOf(std::uint32_t raw) {
  return {DigitsOf(raw >> 24U), DigitsOf(raw >> 16U & 0xFFU), DigitsOf(raw >> 8U & 0xFFU),
          DigitsOf(raw & 0x3FU)};
}

}  // namespace

int IfoTime::Rate() const {
  switch (Raw >> 6U & 3U) {
    case 1:
      return 25;
    case 3:
      return 30;
    default:
      return 0;
  }
}

bool IfoTime::IsValid() const {
  const TimeParts parts = PartsOf(Raw);
  return Raw == 0 || (parts.Hours.Good && parts.Minutes.Good && parts.Seconds.Good && parts.Frames.Good &&
                      parts.Minutes.Value < 60 && parts.Seconds.Value < 60 && parts.Frames.Value < Rate());
}

std::int64_t IfoTime::Frames() const {
  const TimeParts parts = PartsOf(Raw);
  const std::int64_t seconds = (60LL * parts.Hours.Value + parts.Minutes.Value) * 60 + parts.Seconds.Value;
  return seconds * (Rate() != 0 ? Rate() : 25) + parts.Frames.Value;
}

std::string IfoTime::Text() const {
  return fmt::format("{:02X}:{:02X}:{:02X}:{:02X} at {} frames/s", Raw >> 24U, Raw >> 16U & 0xFFU,
                     Raw >> 8U & 0xFFU, Raw & 0x3FU, Rate());
}

int IfoVideo::Width() const {
  constexpr std::array Widths{720, 704, 352, 352};
  return Widths.at(Raw >> 3U & 3U);
}

int IfoVideo::Height() const {
  const int full = IsNtsc() ? 480 : 576;
  return (Raw >> 3U & 3U) == 3 ? full / 2 : full;
}

std::uint8_t IfoAudio::FirstStream() const {
  switch (Format()) {
    case 0:
      return 0x80;
    case 2:
    case 3:
      return 0xC0;
    case 4:
      return 0xA0;
    case 6:
      return 0x88;
    case 7:
      return 0x90;
    default:
      return 0;
  }
}

}  // namespace quorvelant
