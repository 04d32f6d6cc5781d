#include "command_run.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

struct CommandSubtitles : testing::Test {
  CommandSubtitles() {
    Project made;
    Track track;
    track.TrackName = "Film";
    track.Standard = "NTSC";
    track.Filled = true;
    track.VideoPlays.resize(1);
    track.VideoPlays[0].File = "film.m2v";
    track.Scenes = {{"Film_Scene1", 0, {}}};
    made.Tracks.Add(track);
    project = folder.Write("film.qvp", WriteScript(made));
    script = folder.Write("film.sst",
                          "Directory\tsubs\nPalette entries\nRGB1 (1,2,3)\nDisplay_Start\tforced\nSP_NUMBER\n"
                          "1\t00:00:01:00\t00:00:02:29\ta.bmp\n2\t00:00:03:00\t00:00:04:00\tb.bmp\n");
  }
  static CommandRun Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "subtitles");
    return CommandRun(arguments);
  }
  Project Load(const std::string& file) {
    Project loaded;
    RecordingUi quiet;
    EXPECT_TRUE(LoadScriptFile(file, loaded, {}, quiet).Loaded);
    return loaded;
  }

  TempFolder folder;
  std::string project;
  std::string script;
};

TEST_F(CommandSubtitles, WritesTheProjectBackWithANewStreamAndThePalette) {
  const CommandRun added = Run({project, script, "--track", "Film"});
  EXPECT_EQ(added.Out,
            "2 subtitles added to Subtitle Stream 1 (English) of Film, written to " + project + "\n");
  EXPECT_EQ(added.LastText(), "2 of the bitmaps do not exist, the first of them here");
  EXPECT_EQ(added.Messages.back().Place, folder / "subs/a.bmp");
  Project loaded = Load(project);
  ASSERT_EQ(loaded.Tracks[0].SubStreams.size(), 1U);
  const SubtitleStream& stream = loaded.Tracks[0].SubStreams[0];
  ASSERT_EQ(stream.SubPlays.size(), 2U);
  EXPECT_EQ(stream.SubPlays[0].File, "subs\\a.bmp");
  EXPECT_EQ(stream.SubPlays[0].Start, "00:00:01:00");
  EXPECT_EQ(stream.SubPlays[0].Duration, "00:00:01:29");
  EXPECT_TRUE(stream.SubPlays[0].Forced);
  EXPECT_TRUE(std::ranges::any_of(
      loaded.Palettes, [](const Palette_P& palette) { return palette.PaletteColors[0] == 0x030201; }));

  ASSERT_EQ(Run({project, script, "--track", "1", "--stream", "1", "--subrip", "--rules", "classic",
                 "--language", "DE", "-o", folder / "other.qvp"})
                .Status,
            ExitDone);
  loaded = Load(folder / "other.qvp");
  ASSERT_EQ(loaded.Tracks[0].SubStreams[0].SubPlays.size(), 4U);
  EXPECT_EQ(loaded.Tracks[0].SubStreams[0].SubPlays[2].Start, "00:00:00:23");
  EXPECT_FALSE(loaded.Tracks[0].SubStreams[0].SubPlays[2].Forced);
  EXPECT_EQ(loaded.Tracks[0].SubStreams[0].Language, "German");
  EXPECT_EQ(Load(project).Tracks[0].SubStreams[0].SubPlays.size(), 2U);
}

TEST_F(CommandSubtitles, RefusesWithoutTouchingTheProject) {
  const std::string before = TempFolder::Read(project);
  const struct {
    std::vector<std::string> Arguments;
    const char* Told;
  } cases[] = {
      {{project, script, "--track", "2"}, "the project has no track 2"},
      {{project, script, "--track", "1", "--stream", "2"}, "track Film has no subtitle stream 2"},
      {{project, folder / "none.sst", "--track", "1"}, "The subtitle script cannot be opened"},
      {{folder / "none.qvp", script, "--track", "1"}, "Unable to read"},
      {{folder.Write("odd.qvp", before + "Nonsense=1\r\n"), script, "--track", "1"},
       "1 lines of this script are not understood and would be lost"},
  };
  for (const auto& test : cases) {
    const CommandRun run = Run(test.Arguments);
    EXPECT_EQ(run.Status, ExitFailed);
    EXPECT_THAT(run.LastText(), HasSubstr(test.Told));
  }
  EXPECT_EQ(Run({project, script}).Status, ExitUsage);
  EXPECT_EQ(Run({project, script, "--track", "1", "--language", "Klingon"}).Status, ExitUsage);
  EXPECT_EQ(TempFolder::Read(project), before);
}

}  // namespace
}  // namespace quorvelant
