// Each flag of the rules by itself: turned off alone, it changes the files named here and no other, or what
// is found. Flags of other rooms are held there in the same way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "base/text.h"
#include "check/disc_limits.h"
#include "disc_maker.h"
#include "edit/import_subtitles.h"
#include "picture/bmp.h"
#include "subpicture/spu_encoder.h"
#include "support/folders.h"

namespace quorvelant {
namespace {

struct Flag {
  friend void PrintTo(const Flag& flag, std::ostream* out) { *out << flag.Name; }

  std::string Name;
  bool Rules::*Rule;
  std::vector<std::string> Files;  // which of the script's disc change
  std::string Script = "rules.qvp";
};

constexpr const char* Manager = "VIDEO_TS.IFO";
constexpr const char* MenuVob = "VIDEO_TS.VOB";
constexpr const char* Ifo1 = "VTS_01_0.IFO";
constexpr const char* RootVob = "VTS_01_0.VOB";
constexpr const char* Film = "VTS_01_1.VOB";
constexpr const char* Ifo2 = "VTS_02_0.IFO";
constexpr const char* Slides = "VTS_02_1.VOB";
constexpr const char* Ifo3 = "VTS_03_0.IFO";
constexpr const char* Brief = "VTS_03_1.VOB";
const std::string Streams = "streams.qvp";

const std::vector<Flag> Flags{
    {"PgcCountsThroughTable", &Rules::PgcCountsThroughTable, {Ifo1}},
    {"VmgPgcCountsWithinUnit", &Rules::VmgPgcCountsWithinUnit, {Ifo2}},
    {"ResumeCellCountsThroughPgc", &Rules::ResumeCellCountsThroughPgc, {Ifo1}},
    {"WavWalksToData", &Rules::WavWalksToData, {Film}},
    {"OneScrRounding", &Rules::OneScrRounding, {Film, Slides, Brief}},
    {"PcmGroupsSamples", &Rules::PcmGroupsSamples, {Film}},
    {"LimitVobuLength", &Rules::LimitVobuLength, {Manager, Ifo1, Film}},
    {"AudioSyncLeavesVobu", &Rules::AudioSyncLeavesVobu, {Brief}},
    {"ButtonsStartInTheirVobu", &Rules::ButtonsStartInTheirVobu, {MenuVob}},
    {"ButtonsAnewInEachCell", &Rules::ButtonsAnewInEachCell, {MenuVob}},
    {"ButtonsOutlastStillTime", &Rules::ButtonsOutlastStillTime, {RootVob}},
    {"PadLoneNavPack", &Rules::PadLoneNavPack, {Manager, Ifo2, Slides}},
    {"JoinShortHoldRest", &Rules::JoinShortHoldRest, {Manager, Ifo2, Slides}},
    {"BitmapsAsPainted", &Rules::BitmapsAsPainted, {Film}},
    {"StopDelayOnClock", &Rules::StopDelayOnClock, {Slides}},
    {"RoundColours", &Rules::RoundColours, {RootVob, Slides, Brief}},
    {"PgcLinksThroughTable", &Rules::PgcLinksThroughTable, {Ifo1}},
    {"MarkClockRestart", &Rules::MarkClockRestart, {Ifo1}},
    {"LegiblePalette", &Rules::LegiblePalette, {Manager, Ifo1, Ifo2}},
    {"EmptyProgramsUncounted", &Rules::EmptyProgramsUncounted, {Ifo1}, Streams},
    {"AllStreamsMuxed", &Rules::AllStreamsMuxed, {Manager, Ifo1, Film}, Streams},
    {"EightChannelsCounted", &Rules::EightChannelsCounted, {Manager, Ifo1}, Streams},
    {"CountLostFrames", &Rules::CountLostFrames, {Film}, Streams},
    {"OverdueAudioGoesFirst", &Rules::OverdueAudioGoesFirst, {Film}, Streams},
    {"FirstAudioMeetsItsStamp", &Rules::FirstAudioMeetsItsStamp, {Film}, Streams},
    {"AudioBetweenUnitPacks", &Rules::AudioBetweenUnitPacks, {Film}, Streams},
    {"OddPixelsTakeNearest", &Rules::OddPixelsTakeNearest, {Film}, Streams},
    {"ShortSlidesEndTheirVobu",
     &Rules::ShortSlidesEndTheirVobu,
     {Manager, Ifo2, Slides, Ifo3, Brief},
     Streams},
    {"PanScanSubNumbers", &Rules::PanScanSubNumbers, {Ifo2, Ifo3}, Streams},
    {"ChainStillHolds", &Rules::ChainStillHolds, {"VTS_03_0.VOB"}, Streams},
};

// What is found or read, by both sets and by the players' without the flag.
struct FoundBy {
  std::string Name;
  bool Rules::*Rule;
  std::string (*Of)(const Rules& rules);
  std::string Players;
  std::string Without;
};

std::string ForcedUnits(const Rules& rules) {
  const TempFolder folder;
  RecordingUi ui;
  Project project;
  project.Tracks.Add({}).SubStreams.emplace_back();
  const std::string script = folder.Write("a.sst",
                                          "Display_Start\tforced\nSP_NUMBER\tSTART\tEND\tFILE_NAME\n"
                                          "1\t00:00:01:00\t00:00:02:00\ta.bmp\n");
  EXPECT_TRUE(ImportSubtitleScript(project, 0, 0, script, false, rules, ui));
  return project.Tracks[0].SubStreams[0].SubPlays.at(0).Forced ? "forced" : "by choice";
}

std::string LaidOn(const Rules& rules) {
  struct Loader : PictureLoader {
    Picture Load(const std::string& /*path*/) override { return {8, 8}; }
    Picture LoadOver(const std::string& /*path*/, std::uint32_t /*background*/) override {
      Asked = "background";
      return {8, 8};
    }
    std::string Asked = "white";
  } loader;
  SPURecord record;
  record.File = "a.png";
  LoadSPUBitmap(loader, record, false, rules);
  return loader.Asked;
}

std::string TooMuch(const Rules& rules) {
  Project project;
  project.FirstPlay.PreCommands.resize(129);
  return HasErrors(CheckLimits(project, rules)) ? "error" : "warning";
}

const std::vector<FoundBy> Found{
    {"ScriptForcesUnits", &Rules::ScriptForcesUnits, ForcedUnits, "forced", "by choice"},
    {"SeeThroughIsBackground", &Rules::SeeThroughIsBackground, LaidOn, "background", "white"},
    {"RefusesDeadDiscs", &Rules::RefusesDeadDiscs, TooMuch, "error", "warning"},
};

// Where the others are held.
const std::vector<std::string> Elsewhere{
    "tests/script/meaning_test.cpp",     "tests/author/disc_plan_test.cpp",
    "tests/app/switch_form_test.cpp",    "tests/edit/button_rules_test.cpp",
    "tests/edit/command_lists_test.cpp", "tests/edit/button_sets_test.cpp",
    "tests/menu/page_layout_test.cpp",   "tests/menu/page_painter_test.cpp",
    "tests/menu/wizard_test.cpp",        "tests/menu/structure_test.cpp"};

// Tracks and menus in which every flag has something to do, each in as few files as may be.
class RulesDisc : public testing::TestWithParam<Flag> {
 protected:
  RulesDisc() {
    const VideoSample film{
        .Standard = "NTSC", .Width = 352, .Height = 240, .Frames = 90, .GopLength = 18, .KbitPerSecond = 800};
    maker_.Video = film;
    maker_.Link("film.m2v", SampleVideo(film));
    maker_.Link("film.ac3", SampleAc3({.Channels = 1, .Kbps = 64, .Seconds = 4}));
    maker_.Link("brief.ac3", SampleAc3({.Channels = 1, .Kbps = 64, .Seconds = 1.5}));
    maker_.Link("film.wav", SampleWav({.Bits = 24, .Seconds = 4}));
    maker_.Paint("words.bmp", 641, 451, 0x000000);
    maker_.Paint("small.bmp", 100, 50, 0x000000);
    maker_.Paint("green.bmp", 360, 240, 0x208040);
    maker_.Paint("blue.bmp", 360, 240, 0x4060A0);
    maker_.Link("eight.wav", SampleWav({.Channels = 8, .Seconds = 3}));
    maker_.Temp.Write(
        "lost.ac3",
        TempFolder::Read(SampleAc3({.Channels = 1, .Kbps = 64, .Seconds = 3})).replace(9000, 300, ""));
    Picture smooth(64, 32);
    for (int x = 0; x < 64; ++x) {
      smooth.Set(x, 9, 0x040404U * static_cast<std::uint32_t>(x));
    }
    const Bytes bitmap = WriteBmp(smooth);
    maker_.Temp.Write("smooth.bmp", {bitmap.begin(), bitmap.end()});
    maker_.Load(GetParam().Script);
  }

  std::map<std::string, std::string> FilesBy(const Rules& rules) {
    std::filesystem::remove_all(maker_.Folder);
    EXPECT_EQ(maker_.Author(rules).Outcome, AuthorOutcome::Done);
    for (const Message& message : GetParam().Script == Streams ? Findings{} : maker_.Ui.Messages) {
      ADD_FAILURE() << message.Place << " " << message.Text;
    }
    return maker_.Files();
  }

  DiscMaker maker_;
};

TEST_P(RulesDisc, AFlagAloneChangesItsFiles) {
  Rules without = Rules::Players;
  without.*GetParam().Rule = false;
  auto players = FilesBy(Rules::Players);
  std::vector<std::string> changed;
  for (const auto& [name, bytes] : FilesBy(without)) {
    if (bytes != players[name] && !name.ends_with(".BUP")) {
      changed.push_back(name);
    }
  }
  EXPECT_EQ(changed, GetParam().Files);
}

INSTANTIATE_TEST_SUITE_P(Rules, RulesDisc, testing::ValuesIn(Flags),
                         [](const auto& flag) { return flag.param.Name; });

TEST(Rules, EveryFlagIsHeld) {
  std::string held;
  for (const Flag& flag : Flags) {
    held += "Rules::" + flag.Name + " ";
  }
  for (const FoundBy& row : Found) {
    Rules without = Rules::Players;
    without.*row.Rule = false;
    EXPECT_EQ(row.Of(Rules::Players), row.Players) << row.Name;
    EXPECT_EQ(row.Of(without), row.Without) << row.Name;
    held += "Rules::" + row.Name + " ";
  }
  for (const std::string& file : Elsewhere) {
    held += TempFolder::Read(SourceFile(file));
  }
  const std::string header = TempFolder::Read(SourceFile("src/base/rules.h"));
  const std::regex flag(R"(bool (\w+) = false;)");
  for (std::sregex_iterator at(header.begin(), header.end(), flag); at != std::sregex_iterator(); ++at) {
    const std::string name = (*at)[1];
    const auto names = [&](std::string_view before) { return Contains(held, std::string(before) + name); };
    EXPECT_TRUE(names("Rules::") || names("without.") || names("Rules.")) << name << " is held by no test";
  }
}

}  // namespace
}  // namespace quorvelant
