// What a script looks like, byte for byte, and how it gets onto the disk.
#include "script/script_writer.h"

#include <filesystem>
#include <numeric>

#include "golden.h"
#include "model/default_structure.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

TEST(ScriptWriter, AnEmptyProjectKeepsTheLoneBrace) {
  EXPECT_EQ(
      WriteScript(Project()),
      "Data=Settings\r\n{\r\n\tDefaultFolder=\r\n}\r\n"
      "}\r\n"
      "Data=Structure\r\n{\r\n\tItem=FirstPGC\r\n\t{\r\n\t\tItem=FirstPGCUOPS\r\n\t\t{\r\n\t\t}\r\n"
      "\t\tItem=PreCommands\r\n\t\t{\r\n\t\t}\r\n\t\tItem=PostCommands\r\n\t\t{\r\n\t\t}\r\n\t}\r\n}\r\n"
      "Data=Palette\r\n{\r\n}\r\n");
}

// Numbers that differ from field to field, so that no two can be exchanged.
template <class Numbers>
void Count(Numbers& numbers, std::int32_t first) {
  std::iota(numbers.begin(), numbers.end(), first);
}

SubPicturePlay Subtitle() {
  return {.ConversionE2 = 0x030201,
          .ConversionE1 = 0x060504,
          .ConversionP = 0x090807,
          .ConversionBg = 0x0C0B0A,
          .ColorE2 = 1,
          .ColorE1 = 2,
          .ColorP = 3,
          .ColorBg = 4,
          .ContrastE2 = 5,
          .ContrastE1 = 6,
          .ContrastP = 7,
          .ContrastBg = 8,
          .X1 = -1,
          .X2 = 719,
          .Y1 = 2,
          .Y2 = 479,
          .SPNumber = {},
          .Start = "00:00:01:15",
          .End = {},
          .File = "s.bmp",
          .Used = true,
          .Duration = "00:00:02:00",
          .Forced = true,
          .StopTime = {}};
}

HighlightPlay Highlight() {
  HighlightPlay play;
  play.ButtonModes = {"wide", "letter", "pan"};
  for (std::int32_t i = 0; i < 3; ++i) {
    ColorScheme& scheme = play.Schemes[static_cast<std::size_t>(i)];
    Count(scheme.SelectionColor, 20 * i);
    Count(scheme.SelectionContrast, 20 * i + 4);
    Count(scheme.ActionColor, 20 * i + 8);
    Count(scheme.ActionContrast, 20 * i + 12);
  }
  HighlightButton& button = play.Buttons.emplace_back();
  button = {.Name = "B",
            .Number = 9,
            .ColorScheme = 2,
            .AutoAction = true,
            .Areas = {},
            .Up = "U",
            .Down = "D",
            .Right = "R",
            .Left = "L"};
  button.Areas = {{{.X1 = 1, .X2 = 2, .Y1 = 3, .Y2 = 4},
                   {.X1 = 5, .X2 = 6, .Y1 = 7, .Y2 = 8},
                   {.X1 = 9, .X2 = 10, .Y1 = 11, .Y2 = 12}}};
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
  track.Standard = "NTSC";
  track.DisplayMode = "Both PanScan and LetterBox";
  track.Pan = track.Letter = true;
  track.VideoPlays = {{.File = "a.m2v", .SlideDuration = "00:00:05:00", .DurationSet = true}};
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
  titles.SubPlays = {Subtitle()};
  track.HighlightPlays = {Highlight()};
  track.Scenes.push_back({"Pages_Scene1", 45, UopMask().set().reset(0).reset(1).reset(2).reset(17)});
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
  project.FirstPlay.Uops.set().reset(4);
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

// What the writer leaves out, or writes in another form, of the same project.
Project EveryKeyAsWritten() {
  Project project = EveryKey();
  Track& track = project.Tracks[0];
  track.AudioStreams[0].AudioPlays.push_back({.File = "gone.wav", .Removed = true});
  track.AudioStreams[2].Emphasis = track.AudioStreams[2].Mute = 1;  // of PCM alone
  track.Scenes[0].Uops.set();
  SubtitleStream& titles = track.SubStreams[0];
  titles.SubPlays[0].End = "00:00:03:15";
  titles.SubPlays[0].Duration = "not looked at";
  titles.SubPlays.emplace_back().Used = false;
  project.FirstPlay.Uops.set();
  return project;
}

TEST(ScriptWriter, EveryKeyAsInTheGoldenFile) {
  ExpectGolden("every_key.qvp", WriteScript(EveryKeyAsWritten()));
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

TEST(ScriptWriter, SavingAsksReportsAndKeepsTheOldFile) {
  const TempFolder folder;
  const std::string path = folder.Write("p.qvp", "old");
  Project project = EveryKey();
  RecordingUi ui;
  ui.Texts = {path, std::string(), std::nullopt};
  EXPECT_TRUE(SaveDataPath(project, ui));
  EXPECT_EQ(ui.Questions[0].Title, "Please choose your output location");
  EXPECT_EQ(ui.Questions[0].Text, "Project Files (*.Qvp)|*.Qvp");
  ASSERT_EQ(ui.Messages.size(), 1U);
  EXPECT_TRUE(ui.Messages[0].Is(message::ScriptSaved));
  EXPECT_EQ(ui.Messages[0].Text, "Script file has been saved to: " + path);
  EXPECT_EQ(project.ScriptFile, path);
  EXPECT_EQ(TempFolder::Read(path), WriteScript(project));
  // An empty answer and none do nothing.
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_EQ(ui.Messages.size(), 1U);
  // Where the new file cannot be made the old one stays.
  std::filesystem::create_directory(fmt::format("{}.{}.part", path, getpid()));
  EXPECT_FALSE(SaveData(Project(), path, ui));
  EXPECT_EQ(ui.Messages.back().Text, "Unable to write script file: " + path);
  EXPECT_EQ(TempFolder::Read(path), WriteScript(project));
}

}  // namespace
}  // namespace quorvelant
