// `quorvelant edit`: operations on a project, a line each.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant edit PROJECT [-o OUT.qvp] [--force] [--dry-run] [--keep-going] [--rules players|classic]
void AddEditCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
