// Audio files onto an audio stream of a track, and subtitle scripts onto a subtitle stream.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

// Puts `file` (as the script would hold it) onto play `play` (from 0) of a stream. A further play must have
// the rate, frame size and channels of the first. A refusal is told, a doubt asked (nobody there: no), and
// the stream is left alone then.
bool ImportAudio(Project& project, std::size_t trackIndex, std::size_t stream, std::size_t play,
                 const std::string& file, const Rules& rules, UserInterface& ui);

// Adds a subtitle stream to the track and asks whether a script fills it; `chooseScript` gives the script's
// file then, nothing on cancel. Refused before the track has a video. Whether a stream was added.
bool ImportSubtitles(Project& project, std::size_t trackIndex,
                     const std::function<std::optional<std::string>()>& chooseScript, bool subRipMode,
                     const Rules& rules, UserInterface& ui);

}  // namespace quorvelant
