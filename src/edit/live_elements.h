#pragma once

// Live elements of the structure by their keys; nullptr where there is none, or one above is removed.

#include <string_view>

#include "model/keys.h"
#include "model/project.h"

namespace quorvelant {

[[nodiscard]] const VTS_P* LiveEntry(const Project& project, std::string_view key);
[[nodiscard]] const Lang_P* LiveLanguage(const Project& project, std::string_view key);
[[nodiscard]] const Title_P* LiveTitle(const Project& project, std::string_view key);
// First Play too.
[[nodiscard]] const PGC_P* LivePgc(const Project& project, std::string_view key);
[[nodiscard]] const PG_P* LiveProgram(const Project& project, std::string_view key);
[[nodiscard]] const Cell_P* LiveCell(const Project& project, std::string_view key);

}  // namespace quorvelant
