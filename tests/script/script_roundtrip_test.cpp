// Reading and writing are inverse.
#include <sstream>

#include "project_generator.h"
#include "script/script_reader.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

LoadResult Load(const std::string& text, Project& project) {
  RecordingUi ui;
  std::istringstream stream(text);
  return LoadScript(stream, text.size(), "project.qvp", project, {.Rules = Rules::Players}, ui);
}

TEST(ScriptRoundTrip, GeneratedProjectsComeBackEqual) {
  for (std::uint32_t seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    const Project project = GeneratedProject(seed);
    const std::string text = WriteScript(project);
    Project loaded;
    const LoadResult result = Load(text, loaded);
    ASSERT_TRUE(result.Loaded);
    EXPECT_EQ(result.SkippedCount + result.DoubtedCount, 0U);
    EXPECT_EQ(WriteScript(loaded), text);
    EXPECT_EQ(loaded.Tracks, project.Tracks);
    EXPECT_EQ(loaded.FirstPlay, project.FirstPlay);
    EXPECT_EQ(loaded.Palettes, project.Palettes);
    EXPECT_EQ(loaded.Disc, project.Disc);
    ASSERT_TRUE(loaded.SameContent(project));
  }
}

TEST(ScriptRoundTrip, RemovedPartsStayBehind) {
  Project project = GeneratedProject(7);
  Project expected;
  Load(WriteScript(project), expected);
  // What is removed by flag is not written, wherever it stands.
  Track removed;
  removed.Filled = removed.Removed = true;
  removed.VideoPlays.emplace_back().File = "gone.m2v";
  project.Tracks.Add(removed);
  Track withoutFile;
  withoutFile.Filled = true;
  withoutFile.VideoPlays.emplace_back();
  project.Tracks.Add(withoutFile);
  VTS_P set;
  set.Removed = true;
  project.Disc.Add(set);
  VMICommand_P deleted;
  deleted.FullCommand = "Exit";
  deleted.Deleted = true;
  project.FirstPlay.PreCommands.push_back(deleted);
  Project loaded;
  Load(WriteScript(project), loaded);
  EXPECT_TRUE(loaded.SameContent(expected));
}

}  // namespace
}  // namespace quorvelant
