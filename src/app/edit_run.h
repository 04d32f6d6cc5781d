// Lines of operations in, lines of answers out.
#pragma once

#include <cstddef>
#include <istream>
#include <ostream>

#include "app/edit_words.h"

namespace quorvelant {

inline constexpr std::size_t MostEditLineBytes = std::size_t{1} << 20U;

// Runs each line of `in` and prints its answer at once, until the input ends or the user asks to stop. Ends
// after the first refusal, unless `keepGoing`; a question is one where the next line is not its consent.
// Whether there was none.
[[nodiscard]] bool RunEditLines(std::istream& in, EditDesk& desk, bool keepGoing, std::ostream& out);

}  // namespace quorvelant
