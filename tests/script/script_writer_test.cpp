// What a script looks like, byte for byte, that it reads back, and how it gets onto the disk.
#include "script/script_writer.h"

#include <filesystem>
#include <numeric>
#include <random>
#include <sstream>
#include <tuple>

#include "base/text.h"
#include "golden.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "script/kept_text.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "support/trial.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

// Numbers that differ from field to field, so that no two can be exchanged.
template <class Numbers>
void Count(Numbers& numbers, std::int32_t first) {
  std::iota(numbers.begin(), numbers.end(), first);
}

HighlightPlay Highlight() {
  HighlightPlay play;
  play.ButtonModes = {"wide", "letter", "pan"};
  std::int32_t first = 0;
  for (ColorScheme& scheme : play.Schemes) {
    Count(scheme.SelectionColor, first);
    Count(scheme.SelectionContrast, first + 4);
    Count(scheme.ActionColor, first + 8);
    Count(scheme.ActionContrast, first + 12);
    first += 20;
  }
  // In the order of the record: name, number, scheme, automatic, areas, neighbours.
  play.Buttons = {{"B", 9, 2, true, {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}}}, "U", "D", "R", "L"}};
  play.StartTimeToVideo = "00:00:00:01";
  play.Duration = "00:00:00:02";
  play.SelectionEndTime = "00:00:00:03";
  play.Offset = 1;
  play.NumericalButtons = 2;
  play.ForcedSelect = 3;
  play.ForcedAction = 4;
  return play;
}

Track Slides() {
  Track track;
  track.Filled = track.HasAudio = track.HasSubs = track.HasHighlights = track.IDsLocked = true;
  track.TrackName = "Pages";
  track.TrackType = "SlideShow";
  track.Aspect = "16:9";
  track.Standard = "NTSC";
  track.DisplayMode = "Both PanScan and LetterBox";
  track.Pan = track.Letter = true;
  track.VideoPlays = {{.File = "a.bmp", .SlideDuration = "00:00:05:00", .DurationSet = true}};
  track.FrameCount = track.VideoFrames = 900;
  track.ExtendSlideForAudio = true;
  AudioStream emphasis;
  emphasis.AudioPlays = {{.File = "a.wav"}};
  emphasis.StreamName = "One";
  emphasis.Format = "PCM";
  emphasis.Delay = -20;
  emphasis.Language = "German";
  emphasis.Extension = "Directors Comments";
  emphasis.StreamNumber = 3;
  emphasis.StreamNumberFixed = true;
  emphasis.Emphasis = 1;
  AudioStream mute = emphasis;
  std::swap(mute.Emphasis, mute.Mute);
  AudioStream ac3 = emphasis;
  ac3.AudioPlays[0].File = "a.ac3";
  ac3.Format = "AC3";
  ac3.Emphasis = 0;
  track.AudioStreams = {emphasis, mute, ac3};
  SubtitleStream& titles = track.SubStreams.emplace_back();
  titles.DisplayMode = "Wide";
  titles.DropFrame = 1;
  titles.StreamName = "Titles";
  titles.Language = "Dutch";
  titles.Extension = "Children";
  titles.StreamNumber = 7;
  titles.StreamNumberFixed = true;
  SubPicturePlay& play = titles.SubPlays.emplace_back();
  std::tie(play.ConversionE2, play.ConversionE1, play.ConversionP, play.ConversionBg) =
      std::tuple(0x030201U, 0x060504U, 0x090807U, 0x0C0B0AU);
  std::tie(play.ColorE2, play.ColorE1, play.ColorP, play.ColorBg) = std::tuple(1, 2, 3, 4);
  std::tie(play.ContrastE2, play.ContrastE1, play.ContrastP, play.ContrastBg) = std::tuple(5, 6, 7, 8);
  std::tie(play.X1, play.X2, play.Y1, play.Y2) = std::tuple(-1, 719, 2, 479);
  play.Start = "00:00:01:15";
  play.File = "s.bmp";
  play.Duration = "00:00:02:00";
  play.Forced = true;
  track.HighlightPlays = {Highlight()};
  track.Scenes.push_back({"Pages_Scene1", 45, UopMask().set()});
  return track;
}

void FillPgc(PGC_P& pgc, std::int32_t first) {
  pgc.PaletteName = "Reds";
  pgc.NextPGC = "Next";
  pgc.GoUpPGC = "Up";
  pgc.Repeat = first + 1;
  pgc.StillTime = first + 2;
  pgc.PlayBackMode = PlayBack::Random;
  pgc.Uops.set(3);
  pgc.AudioAssignments[0] = first + 3;
  pgc.NormalAssignments[0] = first + 4;
  pgc.PanAssignments[0] = first + 5;
  pgc.WideAssignments[0] = first + 6;
  pgc.LetterAssignments[0] = first + 7;
}

void FillTitle(Title_P& title) {
  title.TitleName = "Feature";
  title.UOPTimePlay = title.Custom = true;
  title.AudioAssignments[1] = title.SubAssignments[31] = true;
  PGC_P& pgc = *title.PGC.Item(1);
  FillPgc(pgc, 50);
  pgc.PGCName = "Pgc";
  pgc.PrevPGC = "Prev";
  Count(pgc.AudioAssignments, 100);
  Count(pgc.NormalAssignments, 200);
  Count(pgc.PanAssignments, 300);
  Count(pgc.WideAssignments, 400);
  Count(pgc.LetterAssignments, 500);
  AddCommand(pgc.PreCommands, "Pre", "NOP");
  AddCommand(pgc.PostCommands, "Post", "LinkTopPGC");
  AddCommand(pgc.CellCommands, "Cell", "Exit");
  PG_P program;
  program.Key = pgc.Key + ".PG1";
  program.PGName = "Program";
  Cell_P cell;
  cell.Key = program.Key + ".CELL1";
  cell.CellName = "Cell";
  cell.SceneUsed = "nowhere";  // so the load adds nothing of its own
  cell.Uops.set(4);
  cell.StillTime = 7;
  cell.CellCommand = 1;
  cell.RestrictedAccess = true;
  AddCommand(cell.ButtonCommands.emplace_back().Commands, "Button", "NOP");
  program.Cell.Add(cell);
  cell.Key = program.Key + ".CELL2";
  cell.RestrictedAccess = false;
  cell.Seamless = cell.EnableSeamlessFlag = true;
  program.Cell.Add(cell);
  pgc.PG.Add(program);
}

// A project in which every key of a script has a value of its own, as a load leaves it.
Project EveryKey() {
  Project project;
  MakeDefaultStructure(project);
  AddNewVTSSet(project, true, 2);
  project.DestinationFolder = "C:\\out\\VIDEO_TS";
  project.Tracks.Add(Slides());
  Palette_P& palette = project.Palettes.Add({.Key = "Reds"});
  for (std::size_t i = 0; i < palette.PaletteColors.size(); ++i) {
    palette.PaletteColors[i] = static_cast<Color>(0x030201 * (i + 1));
  }
  project.FirstPlay.Uops.set();
  project.Disc.Item(1)->MenuLetterBoxed = true;
  VTS_P& set = *project.Disc.Item(2);
  set.TitleLetterBoxed = true;
  FillPgc(*set.Lang.Item(1)->PGC.Item(1), 0);
  FillTitle(*set.Title.Item(1));
  VTS_P& last = *project.Disc.Item(3);
  last.TitleCameraMode = true;
  last.Title.Item(1)->UOPPTTPlay = last.Title.Item(1)->SubCustom = true;
  last.Title.Item(1)->PGC.Item(1)->PlayBackMode = PlayBack::Shuffle;
  return project;
}

template <class List>
void AddRemoved(List& list) {
  list.Add({}).Removed = true;
}

TEST(ScriptWriter, EveryKeyAsInTheGoldenFile) {
  Project project = EveryKey();
  // What the writer leaves out, or writes in another form.
  Track& track = project.Tracks[0];
  track.AudioStreams[0].AudioPlays.push_back({.File = "gone.wav", .Removed = true});
  track.AudioStreams[2].Emphasis = track.AudioStreams[2].Mute = 1;  // of PCM alone
  SubtitleStream& titles = track.SubStreams[0];
  titles.SubPlays[0].End = "00:00:03:15";
  titles.SubPlays[0].Duration = "not looked at";
  titles.SubPlays.emplace_back().Used = false;
  project.Tracks.Add(project.Tracks[0]).Removed = true;
  Track& withoutFile = project.Tracks.Add({});
  withoutFile.Filled = true;
  withoutFile.VideoPlays.emplace_back();
  AddCommand(project.FirstPlay.PreCommands, FirstPgcKey, "Exit");
  project.FirstPlay.PreCommands.back().Deleted = true;
  AddRemoved(project.Palettes);
  AddRemoved(project.Disc);
  AddRemoved(project.Disc.Item(1)->Lang);
  Title_P& title = *project.Disc.Item(2)->Title.Item(1);
  AddRemoved(project.Disc.Item(2)->Title);
  AddRemoved(title.PGC);
  AddRemoved(title.PGC.Item(1)->PG);
  AddRemoved(title.PGC.Item(1)->PG.Item(1)->Cell);
  ExpectGolden("every_key.qvp", WriteScript(project));
}

TEST(ScriptWriter, TheGoldenFileReadsBackFieldForField) {
  RecordingUi ui;
  Project loaded;
  const LoadResult result = LoadScriptFile(Fixture("every_key.qvp"), loaded, {.Rules = Rules::Players}, ui);
  EXPECT_EQ(result.SkippedCount, 0U);
  Project expected = EveryKey();
  CheckCommands(expected, Rules::Players);
  EXPECT_EQ(loaded.Tracks, expected.Tracks);
  EXPECT_EQ(loaded.FirstPlay, expected.FirstPlay);
  EXPECT_EQ(loaded.Palettes, expected.Palettes);
  EXPECT_EQ(loaded.Disc, expected.Disc);
  EXPECT_EQ(loaded.DestinationFolder, expected.DestinationFolder);
}

// Of the golden file each fifth line takes the value of another, or an odd one; but a track keeps its file,
// without which it is left out.
TEST(ScriptWriter, AnyValuesReadBackAsTheyAreWritten) {
  const std::string golden =
      TempFolder::Read(Fixture("every_key.qvp")) +
      "=\n=-40\n=a = b, c\n=#1 \xC3\xA9\n=\xE9;{}\n= (two)\n=uop7\n=4:3\n=16:9\n=Wide\n";
  const std::vector<std::string_view> lines = Split(golden, "\n");
  std::mt19937 random(3);  // NOLINT(cert-msc51-cpp): the same values in every run
  for (int round = TrialCount(200, 4000); round > 0; --round) {
    std::string text;
    for (const std::string_view line : lines) {
      const std::size_t value = line.find('=') + 1;
      const std::string_view other = lines[random() % lines.size()];
      const bool stays =
          value == 0 || Contains(line, "Item=") || Contains(line, "VideoFile=") || random() % 5 != 0;
      text.append(line, 0, stays ? line.size() : value);
      text.append(stays ? "" : other.substr(other.find('=') + 1)).append("\n");
    }
    std::string written;
    for (const bool again : {false, true}) {
      RecordingUi ui;
      Project loaded;
      std::istringstream stream(text);
      const LoadResult result =
          LoadScript(stream, text.size(), "project.qvp", loaded, {.Rules = Rules::Players}, ui);
      ASSERT_TRUE(result.Loaded);
      EXPECT_TRUE(!again || result.Skipped.empty()) << result.Skipped[0].Text;
      written = WriteScript(loaded);
      EXPECT_TRUE(!again || written == text) << round << "\n" << text << "\n" << written;
      text = written;
    }
  }
}

TEST(KeptText, CommentsStayBeforeTheirLines) {
  struct Row {
    const char* Original;
    const char* Written;
    const char* Merged;
  };
  for (const Row& row : {
           Row{"# top\na=1\n  # in\nb=2\n# end\n", "a=1\r\n\tb=2\r\n",
               "# top\r\na=1\r\n\t# in\r\n\tb=2\r\n# end\r\n"},
           // The writer adds what was not said, writes blanks its own way and leaves out what it does not
           // keep.
           {"x=1\n#1\nA = 1\n#2\nb=2\n#3\nc=3\n", "d=0\r\na=1\r\ne=0\r\nc=3\r\n",
            "d=0\r\n#1\r\na=1\r\ne=0\r\n#2\r\n#3\r\nc=3\r\n"},
           {"i\nn=1\n#1\ni\nn=2\n#2\ni\nn=3", "i\r\nn=1\r\ni\r\ni\r\nn=2\r\ni\r\nn=3\r\n",
            "i\r\nn=1\r\n#1\r\ni\r\ni\r\nn=2\r\n#2\r\ni\r\nn=3\r\n"},
           {"\xEF\xBB\xBF#1\r\na", "a\r\n", "#1\r\na\r\n"},
           {"a=1", "a=1\r\n", "a=1\r\n"},
       }) {
    const std::string merged = WithCommentsOf(row.Original, row.Written);
    EXPECT_EQ(merged, row.Merged) << row.Original;
    EXPECT_EQ(WithCommentsOf(merged, row.Written), merged) << "again";
  }
  EXPECT_EQ(WithLineEndsOf("a\nb\r\n", "c\r\n"), "c\n");
  EXPECT_EQ(WithLineEndsOf("a\r\nb\n", "c\r\n"), "c\r\n");
  EXPECT_EQ(WithLineEndsOf("", "c\r\n"), "c\r\n");
}

TEST(ScriptWriter, SavingAsksReportsAndReplacesFilesAlone) {
  const TempFolder folder;
  const std::string path = folder.Write("p.qvp", "old");
  Project project = EveryKey();
  RecordingUi ui;
  ui.Texts = {path, std::string(), std::nullopt};
  EXPECT_TRUE(SaveDataPath(project, ui));
  ASSERT_EQ(ui.Messages.size(), 1U);
  EXPECT_TRUE(ui.Messages[0].Is(message::ScriptSaved));
  EXPECT_EQ(ui.Messages[0].Text, "Script file has been saved to: " + path);
  EXPECT_EQ(project.ScriptFile, path);
  EXPECT_EQ(TempFolder::Read(path), WriteScript(project));
  // An empty answer and none do nothing.
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_EQ(ui.Messages.size(), 1U);
  // Only a file is replaced.
  const std::string taken = folder / "folder";
  std::filesystem::create_directory(taken);
  EXPECT_FALSE(SaveData(Project(), taken, ui));
  EXPECT_EQ(ui.Messages.back().Text, "Unable to write script file: " + taken + " (Is a directory)");
}

}  // namespace
}  // namespace quorvelant
