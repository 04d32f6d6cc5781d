// What the user's settings say of making a disc.
#pragma once

#include "author/author_order.h"
#include "base/rules.h"
#include "desk/settings.h"

namespace quorvelant {

// What the settings, or what the rules take in their place, say of a run.
[[nodiscard]] AuthorOrder OrderOf(const Settings& settings, const Rules& rules);

}  // namespace quorvelant
