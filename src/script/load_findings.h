// What the load of a script found.
#pragma once

#include <vector>

#include "base/message.h"
#include "script/script_reader.h"

namespace quorvelant {

// Everything that a load has to say, in the order of its stages: lines, the script's end, why it failed,
// commands, scenes and palettes. `Place` is "script:line", a project key or a path of names.
[[nodiscard]] std::vector<Message> LoadFindings(const LoadResult& load);

}  // namespace quorvelant
