// `quorvelant author`: a project becomes a VIDEO_TS folder.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"
#include "author/author_order.h"
#include "base/rules.h"

namespace quorvelant {

// quorvelant author PROJECT -o FOLDER [--analyse] [--reindex] [--force] [--rules players|classic] [--strict]
//                   [--dry-run] [--json] [--log-file FILE]
void AddAuthorCommand(CLI::App& program, CommandContext& context);

// What the settings, or what the rules take in their place, say of a run.
[[nodiscard]] AuthorOrder OrderOf(const Settings& settings, const Rules& rules);

}  // namespace quorvelant
