// `quorvelant still`: a bitmap as the video stream that a still or slide of a disc is made of.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant still IN.bmp OUT.m2v [--wide] [--rules players|classic]
void AddStillCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
