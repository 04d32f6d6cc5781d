// `quorvelant convert`: a script of either dialect as an own one.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant convert IN OUT
void AddConvertCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
