// `quorvelant author`: a project becomes a VIDEO_TS folder.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"
#include "ifo/vmg_ifo.h"

namespace quorvelant {

// quorvelant author PROJECT -o FOLDER [--analyse] [--reindex] [--force] [--rules players|classic] [--strict]
//                   [--dry-run] [--json] [--log-file FILE]
void AddAuthorCommand(CLI::App& program, CommandContext& context);

// The regions that the settings allow.
AllowedRegions RegionsOf(const Settings& settings);

}  // namespace quorvelant
