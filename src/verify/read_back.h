// A finished folder as a stranger reads it: nothing is known but the files.
#pragma once

#include <string>
#include <vector>

#include "base/user_interface.h"

namespace quorvelant {

// Looks at the sizes of the files, the backups against their IFOs, pointers and tables within their bounds,
// start sectors, and the navigation pack at each address of the VOBU maps. Gives the faults found, each with
// its file for a place. Raises FileError for what cannot be read; `ui` is asked to retry first.
[[nodiscard]] std::vector<Message> ReadBack(const std::string& folder, UserInterface& ui);

}  // namespace quorvelant
