// Values of script lines.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "base/text.h"
#include "base/timecode.h"
#include "model/tracks.h"

namespace quorvelant {

// The numbers between commas, 0 for those that are not there. More than `Count` are passed over.
template <std::size_t Count>
std::array<std::int32_t, Count> CommaNumbers(std::string_view value) {
  std::array<std::int32_t, Count> numbers{};
  for (std::int32_t& number : numbers) {
    const std::size_t comma = value.find(',');
    number = LeadingNumber(value.substr(0, comma));
    if (comma == std::string_view::npos) {
      break;
    }
    value.remove_prefix(comma + 1);
  }
  return numbers;
}

// "r,g,b" as a colour: of each number the low byte.
inline Color CommaColor(std::string_view value) {
  const auto [red, green, blue] = CommaNumbers<3>(value);
  const auto byte = [](std::int32_t number) { return static_cast<Color>(number) & 255U; };
  return byte(red) | byte(green) << 8U | byte(blue) << 16U;
}

// Whether a value is `word`, blanks around it and case aside.
inline bool IsWord(std::string_view value, std::string_view word) {
  return EqualNoCase(Trim(value), word);
}

// A switch that is written as a word or a digit.
inline bool IsOn(std::string_view value) {
  return IsWord(value, "yes") || IsWord(value, "true") || IsWord(value, "1");
}

// One field of what is open; false where nothing is.
template <class Owner>
bool SetText(Owner* owner, std::string Owner::*field, std::string_view value) {
  if (owner != nullptr) {
    owner->*field = value;
  }
  return owner != nullptr;
}
template <class Owner>
bool SetNumber(Owner* owner, std::int32_t Owner::*field, std::string_view value) {
  if (owner != nullptr) {
    owner->*field = LeadingNumber(value);
  }
  return owner != nullptr;
}
template <class Owner>
bool SetSwitch(Owner* owner, bool Owner::*field, bool on) {
  if (owner != nullptr) {
    owner->*field = on;
  }
  return owner != nullptr;
}

// A timecode with ";" read as ":".
inline std::string ColonTimecode(std::string_view value) {
  return Replace(Trim(value), ";", ":");
}

// The first frame of a scene.
inline std::int32_t SceneFrame(std::string_view timecode, int framesPerSecond) {
  constexpr std::int64_t Most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(TimecodeToFrames(timecode, framesPerSecond), 0, Most));
}

}  // namespace quorvelant
