// Values of script lines, both ways.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/text.h"
#include "model/my_dvd.h"
#include "model/tracks.h"
#include "script/doubts.h"

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
Color CommaColor(std::string_view value);
// The colour with another byte: 0 red, 1 green, 2 blue.
Color WithChannel(Color color, std::size_t channel, std::int32_t value);

// Whether a value is `word`, blanks around it and case aside.
inline bool IsWord(std::string_view value, std::string_view word) {
  return EqualNoCase(Trim(value), word);
}

// The words of a switch.
struct Switch {
  std::string_view On = "Yes";
  std::string_view Off = "No";
  std::string_view AlsoOn = "true|1";  // further words for on, between "|"
  bool Otherwise = false;              // what any other word means
};
inline constexpr Switch YesNo{};
bool IsOn(std::string_view value, const Switch& words = YesNo);
// Whether a value is a word of the switch, for on or for off; an empty one says nothing.
bool IsWordOf(const Switch& words, std::string_view value);

// A text as the model holds it. The other dialect leaves the word out where a PGC is no menu.
std::string TextOf(Takes takes, std::string_view value, bool isScenarist);
// A text of the model as a script holds it.
std::string_view WrittenText(Takes takes, std::string_view text);

inline constexpr std::array<std::string_view, 3> PlayBackWords{"Sequential Playback", "Random Playback",
                                                               "Shuffle Playback"};

// A timecode with ";" read as ":".
std::string ColonTimecode(std::string_view value);

// The first frame of a scene.
std::int32_t SceneFrame(std::string_view timecode, int framesPerSecond);

}  // namespace quorvelant
