// Audio files onto an audio stream of a track, and subtitle scripts onto a subtitle stream.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view SampleRateText = "Unsupported file format - Sample Rate MUST be 48kHz";
inline constexpr std::string_view AudioBitRateTitle = "Audio Bitrate Error";
inline constexpr std::string_view Ac3BitRateText =
    "Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that ({}). Continuing will make a "
    "non-standard DVD. Do you want to continue?";
inline constexpr std::string_view DtsBitRateText =
    "Incorrect bitrate of DTS audio. This source is ({}). Continuing will make a non-standard DVD. Do you "
    "want to "
    "continue?";
inline constexpr std::string_view PcmRateTitle = "PCM Data Rate Error";
inline constexpr std::string_view PcmRateText =
    "PCM Data Rate is non-dvd standard. Continuing will result in non-standard DVD and will probably fail. "
    "Do you "
    "want to continue?";
inline constexpr std::string_view AudioPlayTitle = "Audio Play Error";
inline constexpr std::string_view AudioPlayText =
    "This Audio Play has different parameters to the Audio Play #1";

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
