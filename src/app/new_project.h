// What the commands that begin a project share.
#pragma once

#include <cstddef>
#include <string>

#include "base/user_interface.h"
#include "edit/session.h"

namespace quorvelant {

// The default structure as a script at `path` would hold it: sources count from there.
void StartAt(EditSession& session, const std::string& path);

// A script in a folder that is not there could name no source. False where it is not, which is told.
[[nodiscard]] bool HasFolder(const std::string& path, UserInterface& ui);

// Live titles of all title sets.
[[nodiscard]] std::size_t TitleCount(const Project& project);

}  // namespace quorvelant
