#pragma once

// Sources of a project that are no longer where it names them.

#include <cstddef>
#include <string>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "edit/outcome.h"
#include "edit/session.h"
#include "model/project.h"

namespace quorvelant {

// The files that live tracks name and that are not there, as paths of this system, each once.
[[nodiscard]] std::vector<std::string> MissingSources(const Project& project);

// How many of the missing files `found` mends, `missing` being one of them: itself, and all others that lie
// in the folder of `found`, or below it as they lay below that of `missing`. Their names in the project are
// changed. Nothing else is: the files are looked at when the project is loaded.
std::size_t MendSources(Project& project, const std::string& missing, const std::string& found);

// What the load of a project learns of files, learnt anew for the tracks that are others than in `former`.
void LearnSources(Project& project, const Project& former, const Rules& rules, UserInterface& ui);

// One step: the tracks of `mended`, a copy of the session's project with other sources.
Outcome TakeSources(EditSession& session, const Project& mended);

}  // namespace quorvelant
