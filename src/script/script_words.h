// The vocabulary of a script: which line does what.
#pragma once

#include <cstddef>
#include <string_view>

#include "script/script_state.h"

namespace quorvelant {

// What a line does. `value` is all that stands behind the first "=", `number` the number that the line's
// word holds. False when the line has no meaning where it stands.
using Handler = bool (*)(ReaderState& state, std::string_view value, std::size_t number);

// What a key's value must look like. Any other is taken as it stands, and doubted.
enum class Takes {
  Anything,
  Number,
  Timecode,
  YesNo,
  Standard,
  Language,        // a name of the vocabulary
  LanguageCode,    // or a name
  AudioExtension,  // a name, or its row
  SubExtension,
  DisplayMode,
  MenuType,
  PlayBack
};

// Why a value is doubted; empty where it is as it must be, or is empty.
std::string_view DoubtOf(Takes takes, std::string_view value);

// One word of a script, in lower case. A "*" in it stands for the numbers from `First` on, `Count` of them;
// in a word without one, `First` is the number handed on.
struct Word {
  std::string_view Text;
  Handler Do;
  std::size_t First = 0;
  std::size_t Count = 1;
  Takes Value = Takes::Anything;
};

// Finds what the present line does and does it. False when nothing takes the line, or when what takes it
// has no place for it; `state.SkipReason` says which. `state.Doubt` says what is odd about the value of a
// line that was taken.
bool TakeLine(ReaderState& state);

}  // namespace quorvelant
