#pragma once

// The paths by which a project names its sources.

#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"
#include "model/project.h"

namespace quorvelant {

// The project as a script at `file` would hold it: relative paths, which count from the script's folder, lead
// to the same sources from there. Of a project that came from no script, sources in the folder of `file` or
// below are named relative to it, so that both can move together.
[[nodiscard]] Project ForScriptAt(const Project& project, const std::string& file);

// The project with every source in the folder of its script or below named relative to it.
[[nodiscard]] Project WithNearSources(const Project& project);

// A path that counts from here, as a script at `script` would hold it.
[[nodiscard]] std::string PathFrom(const std::string& script, const std::string& file);

// Why a script cannot hold the path: it has more than one line.
[[nodiscard]] std::optional<Message> RefusePath(std::string_view path);

}  // namespace quorvelant
