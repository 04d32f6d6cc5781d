// quorvelant probe FILE...
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

void AddProbeCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
