#include "model/keys.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>

#include "model/default_structure.h"

namespace quorvelant {
namespace {

TEST(Keys, EachLevelIsReadFromItsOwnPlace) {
  // Entry, title, language, PGC, program, cell, highlight.
  using Case = std::pair<std::string_view, std::array<int, 7>>;
  for (const auto& [key, expected] :
       {Case{"VTS1.TITLE2", {2, 2, 0, 0, 0, 0, 0}}, Case{"VMG1.LANGUAGE1", {1, 0, 1, 0, 0, 0, 0}},
        Case{"VTS12.TITLE34.PGC56.PG7.CELL8.HP9", {13, 34, 0, 56, 7, 8, 9}},
        Case{"VTS1.LANGUAGE3.PGC2.PG10.CELL255", {2, 0, 3, 2, 10, 255, 0}},
        Case{"FirstPGC", {0, 0, 0, 0, 0, 0, 0}}, Case{"", {0, 0, 0, 0, 0, 0, 0}},
        Case{"VTS99999999999.TITLE-3.PGC", {0, 0, 0, 0, 0, 0, 0}}}) {
    const std::array<int, 7> numbers{TitleSetEntry(key),  TitleNumber(key),   LanguageNumber(key),
                                     PgcNumber(key),      ProgramNumber(key), CellNumber(key),
                                     HighlightNumber(key)};
    EXPECT_EQ(numbers, expected) << key;
  }
}

TEST(Keys, BuiltKeysAddressWhatTheyName) {
  Project project;
  MakeDefaultStructure(project);
  const std::string pgcKey = PgcKey(TitleKey(EntryKey(2), 1), 1);
  EXPECT_EQ(pgcKey, "VTS1.TITLE1.PGC1");
  PGC_P* pgc = FindPgc(project.Disc, pgcKey);
  ASSERT_NE(pgc, nullptr);
  PG_P& program = pgc->PG.Add({});
  program.Key = ProgramKey(pgcKey, 1);
  program.Cell.Add({}).CellName = "first";
  EXPECT_EQ(FindCell(project.Disc, CellKey(program.Key, 1))->CellName, "first");
  EXPECT_EQ(FindCell(project.Disc, CellKey(program.Key, 2)), nullptr);
  EXPECT_EQ(FindPgc(project.Disc, "VMG1.TITLE1.PGC1"), nullptr);
  EXPECT_EQ(FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1")->MenuType, "TitleMenu");
  EXPECT_EQ(FindEntry(project.Disc, "VTS7"), nullptr);
}

// Names can be resolved only once both entries stand.
TEST(DefaultStructure, PlaysTitleOneAndLaterSetsHaveNoCommand) {
  Project project;
  MakeDefaultStructure(project, [](const Project& whole, const PGC_P& place, const std::string& text) {
    return fmt::format("{} {} {}", whole.Disc.Count(), place.Key, text);
  });
  EXPECT_EQ(project.FirstPlay.PreCommands.at(0).CommandHex, "2 FirstPGC JumpTT VTS1_Title1");
  EXPECT_EQ(FindPgc(project.Disc, "VTS1.LANGUAGE1.PGC1")->PreCommands.at(0).CommandHex,
            "2 VTS1.LANGUAGE1.PGC1 JumpVTS_TT VTS1_Title1");
  project.Disc.Remove(2);
  AddNewVTSSet(project, true, 2);
  EXPECT_TRUE(project.Disc.Item("VTS1")->Removed);
  EXPECT_EQ(project.Disc.Item(3)->Key, "VTS2");
  EXPECT_EQ(project.Disc.Item("VTS2")->Title.Item("VTS2.TITLE1")->TitleName, "VTS2_Title1");
  EXPECT_TRUE(FindPgc(project.Disc, "VTS2.LANGUAGE1.PGC1")->PreCommands.empty());
}

TEST(SourceKeys, AreTakenApartFieldByField) {
  using Node = SourceKey::Node;
  EXPECT_EQ(ParseSourceKey("Track.10.Audio1"), (SourceKey{Node::AudioStream, 10, 1, 0}));
  EXPECT_EQ(ParseSourceKey(AudioPlayKey(1, 2, 3)), (SourceKey{Node::AudioPlay, 1, 2, 3}));
  EXPECT_EQ(ParseSourceKey(SubListKey(4)), (SourceKey{Node::SubList, 4, 0, 0}));
  EXPECT_EQ(ParseSourceKey(TrackKey(0)), (SourceKey{Node::Track, 0, 0, 0}));
  EXPECT_EQ(ParseSourceKey(SceneKey(7, 99)), (SourceKey{Node::Scene, 7, 99, 0}));
  EXPECT_EQ(ParseSourceKey(HighStreamKey(2)), (SourceKey{Node::HighStream, 2, 1, 0}));
  for (const char* key :
       {"", "Track", "Track.", "Track.x", "Track.1.Audio", "Track.1.Audio0", "Track.1.Scene-1",
        "Track.1.Video1.AudioPlay1", "Track.1.Audio1.AudioPlay1.x", "Trackx.1", "Track.99999999999"}) {
    EXPECT_EQ(ParseSourceKey(key), std::nullopt) << key;
  }
  EXPECT_EQ(ChildKey("Track.4.AudioStreams", 2), "Track.4.Audio2");
}

TEST(SourceTexts, BearTheMarkUntilThereIsAFile) {
  EXPECT_EQ(VideoPlayText({}, 1), "Video Play 1 (Empty)");
  VideoPlay video;
  video.File = "C:\\films\\a film.m2v";
  EXPECT_EQ(VideoPlayText(video, 1), "a film.m2v");
  EXPECT_EQ(AudioPlayText({}, 2), "Audio Play 2 (Empty)");
  EXPECT_EQ(AudioStreamText({}, 1), "Audio Stream 1 (Lan=English) (Ext=Normal)");
  SubtitleStream sub;
  EXPECT_EQ(SubStreamText(sub, 1), "Subtitle Stream 1 (Empty)");
  sub.SubPlays.emplace_back();
  EXPECT_TRUE(SubStreamText(sub, 3).starts_with("Subtitle Stream 3 (Lan=English) (Ext=Normal) (Dis="));
}

}  // namespace
}  // namespace quorvelant
