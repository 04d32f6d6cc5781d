// What there is to say of a project: the one list that `check` and `author` print.
#pragma once

#include <cstdint>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "model/project.h"
#include "picture/picture_loader.h"
#include "script/script_reader.h"

namespace quorvelant {

// What the script and the project tell without their sources.
[[nodiscard]] Findings ProjectFindings(const LoadResult& load, const Project& project, const Rules& rules);

// The same with the sources, whose heads are looked at; with `pictures`, every bitmap is loaded and every
// subtitle coded. `needed`, where it is given, becomes about what the disc takes, in bytes.
[[nodiscard]] Findings FindingsWithSources(const LoadResult& load, const Project& project, const Rules& rules,
                                           UserInterface& ui, PictureLoader* pictures = nullptr,
                                           std::uint64_t* needed = nullptr);

// The same and what shows when the sources are read whole: the disc is multiplexed, and nothing written,
// where nothing found before hinders it. Takes about as long as making the disc.
[[nodiscard]] Findings FindingsOfWholeSources(const LoadResult& load, const Project& project,
                                              const Rules& rules, UserInterface& ui, PictureLoader& pictures,
                                              std::uint64_t* needed = nullptr);

}  // namespace quorvelant
