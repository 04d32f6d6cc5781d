// Chapter lists: text with a timecode a line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/picture_index.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

struct ChapterLine {
  std::size_t Number = 0;  // of the line, from 1
  std::string Timecode;
};

// The timecodes after "chapter=" (in any case), in the order of the lines. Takes any bytes.
std::vector<ChapterLine> ParseChapterList(std::string_view text);

// Makes a scene of each line; the first scene always stays at the start. Times are moved onto chapter starts
// where the track's files have indexes. A line that makes no scene is told with its number; beyond the most
// scenes a track can have the import ends. Whether a scene was made.
bool ImportChapterList(Project& project, std::size_t trackIndex, const std::string& file,
                       const IndexStore& store, UserInterface& ui);

}  // namespace quorvelant
