// Subtitle scripts (".sst"): a folder of bitmaps and a line a subtitle with its times.
// docs/formats/subpictures.md.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/tracks.h"

namespace quorvelant {

// How a script is read.
struct SubtitleScriptOptions {
  bool SubRipMode = false;   // made by a ripper: 7 frames early, colours counted from 0
  int FramesPerSecond = 25;  // of the track
  bool UnitsMayBeForced = false;
};

// A script, read.
struct SubtitleScript {
  std::vector<SubPicturePlay> Entries;  // `File` is the folder of the bitmaps, "\" and the name
  bool HasPalette = false;
  std::vector<Color> PaletteColors;  // at most 16
  std::vector<std::size_t>
      LinesPassedOver;  // numbers, from 1, of lines in the list that are no entries; at most 100
};

// Reads the text of a script. Takes any bytes: what fits no rule is passed over.
SubtitleScript ParseSubtitleScript(std::string_view text, const SubtitleScriptOptions& options);

}  // namespace quorvelant
