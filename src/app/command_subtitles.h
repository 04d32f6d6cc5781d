// `quorvelant subtitles`: a subtitle script into a stream of a track.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant subtitles PROJECT SCRIPT --track N [--stream M] [--subrip] [--rules players|classic] [-o FILE]
void AddSubtitlesCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
