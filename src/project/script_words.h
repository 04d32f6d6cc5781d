// The vocabulary of a script: which line does what.
#pragma once

#include <cstddef>
#include <string_view>

#include "project/script_state.h"

namespace quorvelant {

// What a line does. `value` is all that stands behind the first "=", `number` the number that the line's
// word holds. False when the line has no meaning where it stands.
using Handler = bool (*)(ReaderState& state, std::string_view value, std::size_t number);

// One word of a script, in lower case. A "*" in it stands for the numbers from `First` on, `Count` of them;
// in a word without one, `First` is the number handed on.
struct Word {
  std::string_view Text;
  Handler Do;
  std::size_t First = 0;
  std::size_t Count = 1;
};

// Finds what the present line does and does it. False when nothing takes the line, or when what takes it
// has no place for it; `state.SkipReason` says which.
bool TakeLine(ReaderState& state);

}  // namespace quorvelant
