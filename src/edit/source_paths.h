#pragma once

// The paths by which a project names its sources.

#include <string>

#include "model/project.h"

namespace quorvelant {

// The project as a script at `file` would hold it: relative paths, which count from the script's folder, lead
// to the same sources from there.
[[nodiscard]] Project ForScriptAt(const Project& project, const std::string& file);

}  // namespace quorvelant
