// `quorvelant picture`: one picture of a video file, to look at.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant picture FILE.m2v -o OUT.png [--at TIME]
void AddPictureCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
