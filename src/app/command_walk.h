// `quorvelant walk`: every way through a disc.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

void AddWalkCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
