// The list of the commands that no target was found for.
#pragma once

#include <vector>

#include "base/user_interface.h"
#include "vm/check_commands.h"

namespace quorvelant {

// Asks for a file and writes one line a row. Nothing on an empty answer; false, and told, when the file
// cannot be written.
[[nodiscard]] bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui);

}  // namespace quorvelant
