// `quorvelant new`: a project to start from.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant new PROJECT.qvp [FILE ...]
void AddNewCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
