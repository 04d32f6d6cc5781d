#pragma once

// Sources of a project that are no longer where it names them.

#include <cstddef>
#include <string>
#include <vector>

#include "model/project.h"

namespace quorvelant {

// The files that live tracks name and that are not there, as paths of this system, each once.
[[nodiscard]] std::vector<std::string> MissingSources(const Project& project);

// How many of the missing files `found` mends, `missing` being one of them: itself, and all others that lie
// in the folder of `found`, or below it as they lay below that of `missing`. Their names in the project are
// changed. Nothing else is: the files are looked at when the project is loaded.
std::size_t MendSources(Project& project, const std::string& missing, const std::string& found);

}  // namespace quorvelant
