// The log that `author --log-file` begins anew.
#pragma once

#include <string>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

// Whether a log may be begun there: in place of nothing or of a plain file that is neither the script nor a
// source of the project, and not within the folder that becomes the disc. False when not, which is told.
[[nodiscard]] bool MayLog(const std::string& file, const std::string& script, const std::string& folder,
                          const Project& project, UserInterface& ui);

}  // namespace quorvelant
