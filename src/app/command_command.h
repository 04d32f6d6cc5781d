// `quorvelant command`: navigation commands to digits and back.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant command [--project P] [--rules players|classic] [--decode] [--json] TEXT...
void AddCommandCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
