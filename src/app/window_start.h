// The way from the command line to the window.
#pragma once

#include "desk/user_folders.h"

namespace quorvelant {

// Becomes the program of the window, which lies beside this one, where a display is there to show it. Returns
// where there is no display or no such program.
void BecomeWindow(const EnvironmentLookup& environment);

}  // namespace quorvelant
