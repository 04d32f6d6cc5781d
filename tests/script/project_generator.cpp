#include "project_generator.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>

#include "base/text.h"
#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/update_my_dvd.h"
#include "vm/check_commands.h"

namespace quorvelant {

namespace {

class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  Project Make();

 private:
  std::int32_t Below(std::int32_t limit) {
    return static_cast<std::int32_t>(random_() % static_cast<std::uint32_t>(limit));
  }
  bool Coin() { return Below(2) == 1; }
  std::string Text(std::string_view word) {
    constexpr std::array<std::string_view, 5> Tails{"", " = a, b", "#1 \xC3\xA9", "  (two)", "\xE9;{}"};
    return fmt::format("{}{}{}", word, Below(1000), Tails[static_cast<std::size_t>(Below(5))]);
  }
  std::string Time() { return FramesToTimecode(Below(200000), rate_); }
  UopMask Uops(std::size_t first, std::size_t leftOut) {
    UopMask uops;
    for (std::size_t i = first; i < UserOperationCount; ++i) {
      uops[i] = i != leftOut && Below(4) == 0;
    }
    return uops;
  }
  template <class Array>
  void Fill(Array& array, std::int32_t limit) {
    std::generate(array.begin(), array.end(), [&] { return Below(limit); });
  }

  AudioStream Audio(std::int32_t number);
  SubPicturePlay Subtitle();
  SubtitleStream Subtitles(std::int32_t number);
  HighlightPlay Highlight();
  Track MakeTrack(std::size_t index);
  void AddCommands(CommandList& list, std::string_view word);
  void FillCell(Cell_P& cell, const std::string& programKey, std::int32_t number);
  void FillPgc(PGC_P& pgc, bool ofTitle);
  void AddEntry(int number);
  void LockStreams();

  std::mt19937 random_;
  int rate_ = 25;
  Project project_;
};

AudioStream Generator::Audio(std::int32_t number) {
  constexpr std::array<std::string_view, 3> Formats{"AC3", "PCM", "DTS"};
  constexpr std::array<std::string_view, 3> Endings{".ac3", ".WAV", ".dts"};
  AudioStream stream;
  const auto kind = static_cast<std::size_t>(Below(3));
  stream.Format = Formats[kind];
  for (std::int32_t i = Below(3); i >= 0; --i) {
    stream.AudioPlays.emplace_back().File = Text("C:\\media\\sound").append(Endings[kind]);
  }
  stream.StreamName = Text("Audio Stream ");
  stream.Delay = Below(400) - 200;
  stream.Language = CLsDVD::LanguageArray()[static_cast<std::size_t>(Below(137))];
  stream.Extension = CLsDVD::AudioArray()[static_cast<std::size_t>(Below(5))];
  stream.StreamNumber = number;
  stream.StreamNumberFixed = true;
  stream.Emphasis = kind == 1 ? Below(2) : 0;
  stream.Mute = kind == 1 ? Below(2) : 0;
  return stream;
}

SubPicturePlay Generator::Subtitle() {
  SubPicturePlay play;
  for (Color SubPicturePlay::*color : {&SubPicturePlay::ConversionE2, &SubPicturePlay::ConversionE1,
                                       &SubPicturePlay::ConversionP, &SubPicturePlay::ConversionBg}) {
    play.*color = random_() & 0xFFFFFFU;
  }
  for (std::int32_t SubPicturePlay::*number :
       {&SubPicturePlay::ColorE2, &SubPicturePlay::ColorE1, &SubPicturePlay::ColorP, &SubPicturePlay::ColorBg,
        &SubPicturePlay::ContrastE2, &SubPicturePlay::ContrastE1, &SubPicturePlay::ContrastP,
        &SubPicturePlay::ContrastBg}) {
    play.*number = Below(16);
  }
  play.X1 = Below(100) - 50;
  play.Y1 = Below(100) - 50;
  play.X2 = 719 - Below(50);
  play.Y2 = 479 - Below(50);
  play.Start = Time();
  play.Duration = Time();
  play.File = Text("/media/sub") + ".bmp";
  play.Forced = Coin();
  return play;
}

SubtitleStream Generator::Subtitles(std::int32_t number) {
  SubtitleStream stream;
  for (std::int32_t i = Below(4); i > 0; --i) {
    stream.SubPlays.push_back(Subtitle());
  }
  stream.DisplayMode = Coin() ? "Wide/Letter" : "LetterBox";
  stream.DropFrame = Below(2);
  stream.StreamName = Text("Subtitle Stream ");
  stream.Language = CLsDVD::LanguageArray()[static_cast<std::size_t>(Below(137))];
  stream.Extension = CLsDVD::SubArray()[static_cast<std::size_t>(Below(11))];
  stream.StreamNumber = number;
  stream.StreamNumberFixed = true;
  return stream;
}

HighlightPlay Generator::Highlight() {
  HighlightPlay play;
  play.ButtonModes = {"wide", Coin() ? "letter" : "", Coin() ? "pan" : ""};
  for (ColorScheme& scheme : play.Schemes) {
    for (ColorQuad* quad :
         {&scheme.SelectionColor, &scheme.SelectionContrast, &scheme.ActionColor, &scheme.ActionContrast}) {
      Fill(*quad, 16);
    }
  }
  for (std::int32_t i = 1; i <= Below(6); ++i) {
    HighlightButton button;
    button.Name = fmt::format("Button_{}", i);
    button.Number = i;
    button.ColorScheme = 1 + Below(3);
    button.AutoAction = Coin();
    for (HighlightArea& area : button.Areas) {
      area = {.X1 = Below(300), .X2 = 300 + Below(400), .Y1 = Below(200), .Y2 = 200 + Below(200)};
    }
    button.Up = button.Left = fmt::format("Button_{}", i - 1);
    button.Down = button.Right = fmt::format("Button_{}", i + 1);
    play.Buttons.push_back(std::move(button));
  }
  play.StartTimeToVideo = Time();
  play.Duration = Time();
  play.SelectionEndTime = Time();
  play.Offset = Below(10);
  play.NumericalButtons = Below(10);
  play.ForcedSelect = Below(10);
  play.ForcedAction = Below(10);
  return play;
}

Track Generator::MakeTrack(std::size_t index) {
  constexpr std::array<std::string_view, 3> Types{"Motion", "Still", "SlideShow"};
  constexpr std::array<std::string_view, 4> Modes{"Not Specified", "Only PanScan", "Only LetterBox",
                                                  "Both PanScan and LetterBox"};
  Track track;
  track.Filled = true;
  track.TrackName = fmt::format("Track_{}", index + 1);
  track.TrackType = Types[static_cast<std::size_t>(Below(3))];
  track.Standard = rate_ == 30 ? "NTSC" : "PAL";
  const auto mode = static_cast<std::size_t>(Below(4));
  track.DisplayMode = Modes[mode];
  track.Pan = mode == 1 || mode == 3;
  track.Letter = mode >= 2;
  for (std::int32_t i = Below(3); i >= 0; --i) {
    VideoPlay& play = track.VideoPlays.emplace_back();
    play.File = Text("D:/video/film=") + ".m2v";
    play.DurationSet = track.TrackType != "Motion" && Coin();
    play.SlideDuration = play.DurationSet ? Time() : "";
  }
  track.FrameCount = track.VideoFrames = Below(200000);
  track.ExtendSlideForAudio = Coin();
  track.ExtendFinalSubtitle = Coin();
  const std::int32_t audioCount = Below(4);
  for (std::int32_t i = 0; i < audioCount; ++i) {
    track.AudioStreams.push_back(Audio(i));
  }
  const std::int32_t subCount = Below(4);
  for (std::int32_t i = 0; i < subCount; ++i) {
    track.SubStreams.push_back(Subtitles(i));
  }
  const std::int32_t highlightCount = Below(3);
  for (std::int32_t i = 0; i < highlightCount; ++i) {
    track.HighlightPlays.push_back(Highlight());
  }
  track.HasAudio = audioCount > 0;
  track.HasSubs = subCount > 0;
  track.HasHighlights = highlightCount > 0 || Coin();
  const std::int32_t sceneCount = 1 + Below(5);
  for (std::int32_t i = 0; i < sceneCount; ++i) {
    track.Scenes.push_back({fmt::format("{}_Scene{}", track.TrackName, i + 1), i * 1000, Uops(3, 17)});
  }
  return track;
}

void Generator::AddCommands(CommandList& list, std::string_view word) {
  constexpr std::array<std::string_view, 8> Texts{"NOP",
                                                  "JumpSS TitleMenu",
                                                  "mov GPRM0, 5",
                                                  "If ( GPRM1 <= 3 ) LinkTopPGC, button=0",
                                                  "SetSTN audio=1, subpicture=1:ON",
                                                  "SetHL_BTNN HL_BTTN=1",
                                                  "JumpTT VTS1_Title1",
                                                  "{ SetSTN audio=1 ; LinkTopC, button=1 }"};
  for (std::int32_t i = Below(4); i > 0; --i) {
    AddCommand(list, word, std::string(Texts[static_cast<std::size_t>(Below(8))]));
  }
}

void Generator::FillCell(Cell_P& cell, const std::string& programKey, std::int32_t number) {
  cell.CellName = Text("Cell_");
  const bool linked = project_.Tracks.Count() > 0 && Below(10) > 0;
  cell.SceneUsed = linked ? "" : "nowhere";
  cell.CellCommand = Below(4);
  cell.RestrictedAccess = Coin();
  cell.Seamless = cell.EnableSeamlessFlag = Coin();
  for (std::int32_t i = Below(3); i > 0; --i) {
    AddCommands(cell.ButtonCommands.emplace_back().Commands, "Button");
  }
  if (linked) {
    const auto trackNumber =
        static_cast<std::size_t>(Below(static_cast<std::int32_t>(project_.Tracks.Count())));
    const Track& track = project_.Tracks[trackNumber];
    const std::int32_t scene = Below(static_cast<std::int32_t>(track.Scenes.size()));
    cell.SceneUsed = track.Scenes[static_cast<std::size_t>(scene)].Name;
    UpdateMyDVD(project_, {.Key = programKey,
                           .AddCell = true,
                           .TrackName = track.TrackName,
                           .Segment = static_cast<std::int32_t>(trackNumber),
                           .ReNameOnly = true,
                           .Scene = scene,
                           .Seamless = cell.Seamless,
                           .NewName = {},
                           .CellCounter = number,
                           .KeepName = true});
    cell.StillTime = cell.iStill = Below(256);
  }
}

void Generator::FillPgc(PGC_P& pgc, bool ofTitle) {
  pgc.PGCName = Text("PGC ");
  pgc.Uops = Uops(0, 4);
  pgc.PlayBackMode = static_cast<PlayBack>(Below(3));
  pgc.PaletteName = project_.Palettes.Count() > 0 && Coin() ? project_.Palettes.Item(1)->Name() : "Default";
  pgc.NextPGC = Coin() ? "none" : Text("PGC ");
  pgc.PrevPGC = Coin() || !ofTitle ? "none" : Text("PGC ");
  pgc.GoUpPGC = Coin() ? "none" : Text("PGC ");
  pgc.MenuType = ofTitle ? "" : "Root";
  pgc.StillTime = Below(256);
  pgc.Repeat = Below(100);
  AddCommands(pgc.PreCommands, "Pre");
  AddCommands(pgc.PostCommands, "Post");
  AddCommands(pgc.CellCommands, "Cell");
  // A menu carries the first entry of its maps alone.
  pgc.AudioAssignments[0] = Below(8);
  pgc.NormalAssignments[0] = Below(32);
  pgc.LetterAssignments[0] = Below(32);
  if (ofTitle) {
    Fill(pgc.AudioAssignments, 8);
    for (auto* map :
         {&pgc.NormalAssignments, &pgc.PanAssignments, &pgc.WideAssignments, &pgc.LetterAssignments}) {
      Fill(*map, 32);
    }
  }
  for (std::int32_t i = Below(4); i > 0; --i) {
    PG_P program;
    program.Key = ProgramKey(pgc.Key, static_cast<int>(pgc.PG.Count()) + 1);
    program.PGName = Text("PG ");
    PG_P& added = pgc.PG.Add(std::move(program));
    const std::int32_t cellCount = Below(3);
    for (std::int32_t number = 1; number <= cellCount; ++number) {
      Cell_P cell;
      cell.Key = CellKey(added.Key, number);
      FillCell(added.Cell.Add(std::move(cell)), added.Key, number);
    }
  }
}

void Generator::AddEntry(int number) {
  VTS_P set;
  set.Key = EntryKey(number);
  set.VTSName = EntryName(number);
  set.MenuLetterBoxed = Coin();
  set.TitleLetterBoxed = Coin();
  set.TitleCameraMode = Coin();
  VTS_P& entry = project_.Disc.Add(std::move(set));
  const std::int32_t languageCount = Below(3);
  for (std::int32_t i = 1; i <= languageCount; ++i) {
    Lang_P language;
    language.Key = LanguageKey(entry.Key, i);
    language.Language = i == 1 ? "en" : "de";
    Lang_P& added = entry.Lang.Add(std::move(language));
    FillPgc(added.PGC.Add(MakePgc("", number, i, 0, PgcKey(added.Key, 1))), false);
  }
  const std::int32_t titleCount = number == 1 ? 0 : 1 + Below(2);
  for (std::int32_t i = 1; i <= titleCount; ++i) {
    Title_P title;
    title.Key = TitleKey(entry.Key, i);
    title.TitleName = TitleName(number, i);
    title.UOPPTTPlay = Coin();
    title.UOPTimePlay = Coin();
    title.Custom = Coin();
    title.SubCustom = Coin();
    std::generate(title.AudioAssignments.begin(), title.AudioAssignments.end(), [&] { return Coin(); });
    std::generate(title.SubAssignments.begin(), title.SubAssignments.end(), [&] { return Coin(); });
    Title_P& added = entry.Title.Add(std::move(title));
    for (std::int32_t pgc = Below(3); pgc >= 0; --pgc) {
      FillPgc(added.PGC.Add(
                  MakePgc("", number, 0, i, PgcKey(added.Key, static_cast<int>(added.PGC.Count()) + 1))),
              true);
    }
  }
}

// As soon as one stream brings its number, all are fixed.
void Generator::LockStreams() {
  const bool fixed = std::any_of(project_.Tracks.begin(), project_.Tracks.end(),
                                 [](const Track& track) { return track.HasAudio || track.HasSubs; });
  for (Track& track : project_.Tracks) {
    track.IDsLocked = fixed;
  }
}

Project Generator::Make() {
  rate_ = Coin() ? 30 : 25;
  project_.DestinationFolder = Coin() ? "C:\\out\\VIDEO_TS" : "";
  const std::int32_t trackCount = Below(4);
  for (std::int32_t i = 0; i < trackCount; ++i) {
    project_.Tracks.Add(MakeTrack(static_cast<std::size_t>(i)));
  }
  LockStreams();
  for (std::int32_t i = Below(3); i > 0; --i) {
    Palette_P palette;
    palette.Key = fmt::format("Palette_{}", i);
    std::generate(palette.PaletteColors.begin(), palette.PaletteColors.end(),
                  [&] { return static_cast<Color>(random_() & 0xFFFFFFU); });
    project_.Palettes.Add(std::move(palette));
  }
  project_.FirstPlay = MakePgc(std::string(FirstPgcName), 0, 0, 0, std::string(FirstPgcKey));
  project_.FirstPlay.Uops = Uops(0, 4);
  AddCommands(project_.FirstPlay.PreCommands, FirstPgcKey);
  const std::int32_t entryCount = 2 + Below(3);
  for (std::int32_t i = 1; i <= entryCount; ++i) {
    AddEntry(i);
  }
  CheckCommands(project_, Rules::Players);
  return std::move(project_);
}

}  // namespace

Project GeneratedProject(std::uint32_t seed) {
  return Generator(seed).Make();
}

}  // namespace quorvelant
