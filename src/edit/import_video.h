// Video files, stills and slides onto a track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/picture_index.h"
#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view ImportErrorTitle = "Import Error";
inline constexpr std::string_view ImportWarningTitle = "Import Warning";
inline constexpr std::string_view ImageSizeTitle = "Image size error";
inline constexpr std::string_view ImageSizeText =
    "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240";
// Then the coding ("MPEG2"), " attributes -> ", the standard and the attribute.
inline constexpr std::string_view IncompatibleText =
    "The video file has incompatible {} attributes -> {}; {}";
inline constexpr std::string_view Mpeg1Title = "MPEG1 Import Error";
inline constexpr std::string_view Mpeg1Text = "MPEG1 video is not supported in the Ondra version";
inline constexpr std::string_view StillTitle = "Still Import Error";
inline constexpr std::string_view StillText =
    "Video Stream is NOT a still - please reselect a video file with only 1 frame or a BMP Image";
inline constexpr std::string_view PulldownText = "Video source is 23.976fps and is not pulldowned";
inline constexpr std::string_view VideoFileTitle = "Video File Error";
inline constexpr std::string_view VideoFileText = "This Video File has different Attributes to Source File";
inline constexpr std::string_view UnusableText = "'{}' can't be imported: {}";  // the file and why

struct VideoImportOptions {
  bool UseTrackNames = false;       // the track takes the file's name
  bool AutoCreateChapters = false;  // scenes at the interval, which needs the file's index
  std::int32_t PalChapters = 0;     // frames
  std::int32_t NtscChapters = 0;
};

// Puts `file` (as the script would hold it) onto play `play` (from 0) of the track. A motion track takes an
// elementary stream, a still or slideshow track a bitmap or a stream of one picture; a further play must be
// like the first. Fills in what the file tells of the track. A refusal is told and leaves the track alone.
bool ImportVideo(Project& project, std::size_t trackIndex, std::size_t play, const std::string& file,
                 const VideoImportOptions& options, IndexStore& store, UserInterface& ui);

}  // namespace quorvelant
