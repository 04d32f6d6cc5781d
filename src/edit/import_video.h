// Video files, stills and slides onto a track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "analysis/picture_index.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

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
