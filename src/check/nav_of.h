// A project as a player will find it on its disc.
#pragma once

#include "base/rules.h"
#include "model/project.h"
#include "player/nav_disc.h"

namespace quorvelant {

// What navigation sees of the disc that the project makes, with the numbers that the disc will hold. Names
// are keys of the project, those of buttons with the command's own key after the cell's. Commands must have
// been resolved.
[[nodiscard]] NavDisc NavOf(const Project& project, const Rules& rules);

}  // namespace quorvelant
