// What the user's settings say of operations on a project.
#pragma once

#include "desk/settings.h"
#include "edit/session.h"

namespace quorvelant {

[[nodiscard]] EditOptions EditOptionsOf(const Settings& settings);

}  // namespace quorvelant
