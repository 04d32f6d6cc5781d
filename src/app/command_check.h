// `quorvelant check`: what a project holds and what is wrong with it.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant check [--sources] [--tree] [--rules players|classic] [--strict] [--json] PROJECT
void AddCheckCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
