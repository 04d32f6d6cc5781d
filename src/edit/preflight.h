#pragma once

// What is asked and told before an interactive run makes a disc.

#include <string_view>

#include "base/user_interface.h"
#include "edit/session.h"

namespace quorvelant {

// Walks the project once, stops at the first fault that makes the disc useless and asks about those that can
// be tolerated (nobody there: no). Whether the disc may be made. What `check` finds besides is told with the
// run itself. Commands without a target are asked about once. `destination` is the folder of the disc.
[[nodiscard]] bool MayAuthor(EditSession& session, std::string_view destination, UserInterface& ui);

}  // namespace quorvelant
