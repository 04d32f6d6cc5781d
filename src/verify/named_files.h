// The files that a disc's tables name.
#pragma once

#include <string>
#include <vector>

#include "base/user_interface.h"

namespace quorvelant {

// Looks in a folder for every file that its tables name, with the size that they give it: an IFO and a BUP
// for each title set that the Video Manager counts, and VOB files up to the last sector of the last cell.
// Needs no sector sums, so that nothing is summed before it is known to be whole. Gives what is missing or of
// another size. Raises FileError for what cannot be read; `ui` is asked to retry first.
[[nodiscard]] std::vector<Message> NamedFileFaults(const std::string& folder, UserInterface& ui);

}  // namespace quorvelant
