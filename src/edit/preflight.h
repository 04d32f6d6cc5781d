#pragma once

// What is asked and told before an interactive run makes a disc.

#include "base/user_interface.h"
#include "edit/session.h"

namespace quorvelant {

// Walks the project once, stops at the first fault that makes the disc useless and asks about those that can
// be tolerated (nobody there: no). Whether the disc may be made. What `check` finds besides is told with the
// run itself. Commands without a target are asked about once.
[[nodiscard]] bool MayAuthor(EditSession& session, UserInterface& ui);

}  // namespace quorvelant
