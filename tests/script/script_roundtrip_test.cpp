// Reading and writing are inverse.
#include <sstream>

#include "project_generator.h"
#include "script/script_reader.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"
#include "support/trial.h"

namespace quorvelant {
namespace {

LoadResult Load(const std::string& text, Project& project) {
  RecordingUi ui;
  std::istringstream stream(text);
  return LoadScript(stream, text.size(), "project.qvp", project, {.Rules = Rules::Players}, ui);
}

TEST(ScriptRoundTrip, GeneratedProjectsComeBackEqual) {
  const auto seeds = static_cast<std::uint32_t>(TrialCount(100, 2000));
  for (std::uint32_t seed = 0; seed < seeds; ++seed) {
    SCOPED_TRACE(seed);
    const std::string text = WriteScript(GeneratedProject(seed));
    Project loaded;
    const LoadResult result = Load(text, loaded);
    ASSERT_TRUE(result.Loaded);
    EXPECT_TRUE(result.Skipped.empty()) << result.Skipped[0].Text;
    EXPECT_TRUE(result.Doubted.empty()) << result.Doubted[0].Text;
    ASSERT_EQ(WriteScript(loaded), text);
  }
}

TEST(ScriptRoundTrip, RemovedPartsAreNotWritten) {
  Project project = GeneratedProject(7);
  const std::string expected = WriteScript(project);
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
  Lang_P language;
  language.Removed = true;
  project.Disc.Item(1)->Lang.Add(language);
  Title_P title;
  title.Removed = true;
  project.Disc.Item(2)->Title.Add(title);
  PGC_P pgc;
  pgc.Removed = true;
  project.Disc.Item(2)->Title.Item(1)->PGC.Add(pgc);
  PG_P program;
  program.Removed = true;
  project.Disc.Item(2)->Title.Item(1)->PGC.Item(1)->PG.Add(program);
  VMICommand_P deleted;
  deleted.FullCommand = "Exit";
  deleted.Deleted = true;
  project.FirstPlay.PreCommands.push_back(deleted);
  EXPECT_EQ(WriteScript(project), expected);
}

}  // namespace
}  // namespace quorvelant
