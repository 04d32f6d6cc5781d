// Files that a command writes at the user's word.
#pragma once

#include <string>

#include "base/user_interface.h"

namespace quorvelant {

// Whether the folder of a file to write is there; told where it is not.
[[nodiscard]] bool HasFolder(const std::string& path, UserInterface& ui);

// Whether two paths mean one file that is there.
[[nodiscard]] bool IsSameFile(const std::string& a, const std::string& b);

// Whether a file to write would lie in a disc's folder, or take its place. Neither needs to be there.
[[nodiscard]] bool IsWithin(const std::string& file, const std::string& folder);

// Whether a file may be written there: not in place of `source`, of a folder, a pipe or a device, and of
// another file only with `force`. False when not, which is told.
[[nodiscard]] bool MayWrite(const std::string& path, const std::string& source, bool force,
                            UserInterface& ui);

}  // namespace quorvelant
