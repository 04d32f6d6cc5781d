// quorvelant verify VIDEO_TS|IMAGE.iso
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

void AddVerifyCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
