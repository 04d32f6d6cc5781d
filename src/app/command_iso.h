// `quorvelant iso`: a VIDEO_TS folder becomes an image to burn.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant iso FOLDER -o DISC.iso [--label NAME] [--force] [--no-sync] [--json]
void AddIsoCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
