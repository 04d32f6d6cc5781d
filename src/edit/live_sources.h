#pragma once

// Live tracks and what is in them, by their keys.

#include <optional>
#include <string_view>

#include "model/keys.h"
#include "model/project.h"

namespace quorvelant {

// The key taken apart, where it names something live of that kind (of a scene: one that is there).
[[nodiscard]] std::optional<SourceKey> LiveSource(const Project& project, std::string_view key,
                                                  SourceKey::Node kind);

}  // namespace quorvelant
