// What the doors that make a disc of films share.
#pragma once

#include <string>

#include "base/user_interface.h"
#include "check/findings.h"
#include "edit/session.h"

namespace quorvelant {

// "disc.qvp" has its pages in "disc.menus".
[[nodiscard]] std::string PagesOf(const std::string& project);

// What `check` will tell of the script that the session's project becomes at `path`, each finding once.
[[nodiscard]] Findings FindingsOfScript(EditSession& session, const std::string& path, UserInterface& ui);

}  // namespace quorvelant
