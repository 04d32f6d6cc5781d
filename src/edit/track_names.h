#pragma once

// The names of tracks: no two are alike but for case and blanks around them, and a script can hold them.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"
#include "model/project.h"

namespace quorvelant {

// "Track_" and a number, free by then.
[[nodiscard]] std::string ProposedTrackName(const Project& project);

// Why a new track, or one that is to be renamed, cannot have the name.
[[nodiscard]] std::optional<Message> RefuseTrackName(const Project& project, std::string_view name);

// A name after that of a file: with "_" for what no name holds, and a number where other tracks than that of
// the index `own` have it.
[[nodiscard]] std::string FreeTrackName(const Project& project, std::string_view wanted, std::size_t own);

}  // namespace quorvelant
