#pragma once

// The paths by which a project names its sources.

#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"
#include "model/project.h"

namespace quorvelant {

// The project as a script at `file` would hold it: relative paths, which count from the script's folder, lead
// to the same sources from there.
[[nodiscard]] Project ForScriptAt(const Project& project, const std::string& file);

// A path that counts from here, as a script at `script` would hold it.
[[nodiscard]] std::string PathFrom(const std::string& script, const std::string& file);

// Why a script cannot hold the path: it has more than one line.
[[nodiscard]] std::optional<Message> RefusePath(std::string_view path);

}  // namespace quorvelant
