// The list of the commands that no target was found for.
#pragma once

#include <string>
#include <vector>

#include "base/user_interface.h"
#include "vm/check_commands.h"

namespace quorvelant {

// Writes one line a row into a file; false, and told, when it cannot be written. `path` is one of this
// system.
[[nodiscard]] bool WriteErrorList(const std::vector<CommandError>& rows, const std::string& path,
                                  UserInterface& ui);

// Asks for a file and writes one line a row. Nothing on an empty answer; false, and told, when the file
// cannot be written.
[[nodiscard]] bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui);

}  // namespace quorvelant
