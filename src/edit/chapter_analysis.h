// Chapter times against the video: moved onto pictures at which a chapter can start.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/picture_index.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

// Builds the indexes that the track's files lack, stores its length, removes the scenes past its end (told
// once; cells that showed them lose their scene) and moves every other one to the nearest preceding chapter
// start. The first scene stays. False when a file is missing or cannot be indexed, which was told. Bitmaps
// have no index: a track of bitmaps keeps its scenes.
bool AnalyseChapters(Project& project, std::size_t trackIndex, IndexStore& store, UserInterface& ui);

// A frame of the track at which a chapter can start.
struct ChapterStart {
  std::int64_t Frame = 0;
  // A chapter can start at every frame from here to the next entry: groups of single pictures leave no
  // entries in an index.
  bool AnywhereBehind = false;
};
// Over all files of the track, in order; from indexes alone.
std::vector<ChapterStart> ChapterStarts(const Project& project, std::size_t trackIndex,
                                        const IndexStore& store);

// The nearest of `starts` at or ahead of the frame; the frame itself where there is none.
std::int64_t MoveToChapterStart(const std::vector<ChapterStart>& starts, std::int64_t frame);

}  // namespace quorvelant
