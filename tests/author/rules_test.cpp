// Each flag of the rules by itself: turned off alone, it changes the files named here and no other. The rules
// of scripts and settings have transcripts; sound between the packs of a unit is looked at pack by pack in
// mux, and the plan refuses unfit sources.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "disc_maker.h"

namespace quorvelant {
namespace {

struct Flag {
  friend void PrintTo(const Flag& flag, std::ostream* out) { *out << flag.Name; }

  std::string Name;
  bool Rules::*Rule;
  std::vector<std::string> Files;  // which of the disc of data/rules.qvp change
};

constexpr const char* MenuVob = "VIDEO_TS.VOB";
constexpr const char* Ifo1 = "VTS_01_0.IFO";
constexpr const char* RootVob = "VTS_01_0.VOB";
constexpr const char* Film = "VTS_01_1.VOB";
constexpr const char* Ifo2 = "VTS_02_0.IFO";
constexpr const char* Slides = "VTS_02_1.VOB";
constexpr const char* Brief = "VTS_03_1.VOB";

const std::vector<Flag> Flags{
    {"PgcCountsThroughTable", &Rules::PgcCountsThroughTable, {Ifo1}},
    {"VmgPgcCountsWithinUnit", &Rules::VmgPgcCountsWithinUnit, {Ifo2}},
    {"ResumeCellCountsThroughPgc", &Rules::ResumeCellCountsThroughPgc, {Ifo1}},
    {"WavWalksToData", &Rules::WavWalksToData, {Film}},
    {"OneScrRounding", &Rules::OneScrRounding, {Film, Slides, Brief}},
    {"PcmGroupsSamples", &Rules::PcmGroupsSamples, {Film}},
    {"LimitVobuLength", &Rules::LimitVobuLength, {"VIDEO_TS.IFO", Ifo1, Film}},
    {"AudioSyncLeavesVobu", &Rules::AudioSyncLeavesVobu, {Brief}},
    {"ButtonsStartInTheirVobu", &Rules::ButtonsStartInTheirVobu, {MenuVob}},
    {"ButtonsAnewInEachCell", &Rules::ButtonsAnewInEachCell, {MenuVob}},
    {"ButtonsOutlastStillTime", &Rules::ButtonsOutlastStillTime, {RootVob}},
    {"PadLoneNavPack", &Rules::PadLoneNavPack, {"VIDEO_TS.IFO", Ifo2, Slides}},
    {"JoinShortHoldRest", &Rules::JoinShortHoldRest, {"VIDEO_TS.IFO", Ifo2, Slides}},
    {"BitmapsAsPainted", &Rules::BitmapsAsPainted, {Film}},
    {"StopDelayOnClock", &Rules::StopDelayOnClock, {Slides}},
    {"RoundColours", &Rules::RoundColours, {RootVob, Slides, Brief}},
    {"PgcLinksThroughTable", &Rules::PgcLinksThroughTable, {Ifo1}},
    {"MarkClockRestart", &Rules::MarkClockRestart, {Ifo1}},
};

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
    maker_.Load("rules.qvp");
  }

  std::map<std::string, std::string> FilesBy(const Rules& rules) {
    std::filesystem::remove_all(maker_.Folder);
    EXPECT_EQ(maker_.Author(rules).Outcome, AuthorOutcome::Done);
    for (const Message& message : maker_.Ui.Messages) {
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

}  // namespace
}  // namespace quorvelant
