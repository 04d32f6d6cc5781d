// What the commands that begin a project share.
#pragma once

#include <cstddef>
#include <string>

#include "base/user_interface.h"
#include "edit/session.h"

namespace quorvelant {

// The default structure as a script at `path` would hold it: sources count from there.
void StartAt(EditSession& session, const std::string& path);

// Live titles of all title sets.
[[nodiscard]] std::size_t TitleCount(const Project& project);

}  // namespace quorvelant
