#include "edit/chapter_list.h"

#include <fmt/format.h>

#include "base/file_text.h"
#include "base/passing_ui.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "edit/chapter_analysis.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

constexpr std::string_view ChapterKey = "chapter=";
constexpr std::uint64_t MostListBytes = 1'000'000;
constexpr std::size_t MostRefusalsTold = 20;  // a list for another film must not bury the user

// Adds the line of the list to what is told about it.
class LineVoice : public PassingUi {
 public:
  LineVoice(UserInterface& ui, const std::string& file) : PassingUi(ui), file_(&file) {}

  void Tell(const Message& message) override {
    if (told_++ < MostRefusalsTold) {
      Message placed = message;
      placed.Place = fmt::format("{}:{}", *file_, Line);
      PassingUi::Tell(placed);
    }
  }

  std::size_t Line = 0;

 private:
  const std::string* file_;
  std::size_t told_ = 0;
};

}  // namespace

std::vector<ChapterLine> ParseChapterList(std::string_view text) {
  std::vector<ChapterLine> lines;
  std::size_t number = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    ++number;
    const std::size_t key = Lower(line).find(ChapterKey);
    if (key != std::string::npos) {
      std::string_view timecode = line.substr(key + ChapterKey.size());
      timecode = timecode.substr(0, timecode.find('\r'));
      lines.push_back({number, std::string(Trim(timecode))});
    }
  }
  return lines;
}

bool ImportChapterList(Project& project, std::size_t trackIndex, const std::string& file,
                       const IndexStore& store, UserInterface& ui) {
  const auto text = ReadWhole(SystemPath(file), MostListBytes);
  if (!text) {
    ui.Tell(MessageOf(message::ChapterListUnreadable, file, file));
    return false;
  }
  const std::vector<ChapterLine> lines = ParseChapterList(*text);
  if (lines.empty()) {
    ui.Tell(MessageOf(message::ChapterListEmpty, file, file));
    return false;
  }
  Track& track = project.Tracks[trackIndex];
  const auto starts = ChapterStarts(project, trackIndex, store);
  const int rate = TrackFramesPerSecond(project, track);
  LineVoice voice(ui, file);
  bool made = false;
  for (const ChapterLine& line : lines) {
    voice.Line = line.Number;
    if (!line.Timecode.empty() && TimecodeToFrames(line.Timecode, rate) == 0) {
      continue;  // the first scene is there already
    }
    const bool full = track.Scenes.size() >= MostScenes;
    made = AddScene(track, line.Timecode, rate, voice,
                    [&](std::int64_t frame) { return MoveToChapterStart(starts, frame); }) ||
           made;
    if (full) {
      break;
    }
  }
  return made;
}

}  // namespace quorvelant
