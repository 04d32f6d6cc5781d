// quorvelant index FILE...
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

void AddIndexCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
