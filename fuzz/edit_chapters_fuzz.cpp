// Any bytes as a chapter list, and its import onto a track.
#include "edit/chapter_list.h"
#include "edit/new_track.h"
#include "memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  SilentUi ui;
  const MemoryFile file(data, byteCount);
  Project project;
  Track& track = *NewSegment(project.Tracks, "Motion", "Film");
  track.VideoFrames = 200000;
  ImportChapterList(project, 0, file.Path(), IndexStore(), ui);
  if (track.Scenes.size() > MostScenes || track.Scenes.front().Frame != 0) {
    std::abort();
  }
  for (std::size_t i = 1; i < track.Scenes.size(); ++i) {
    if (track.Scenes[i - 1].Frame >= track.Scenes[i].Frame) {
      std::abort();
    }
  }
  return 0;
}
