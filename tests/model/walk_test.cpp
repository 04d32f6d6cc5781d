#include "model/walk.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvelant {
namespace {

using testing::ElementsAre;

template <class Unit>
Unit UnitOf(const std::string& key, int pgcs) {
  Unit unit;
  unit.Key = key;
  for (int i = 1; i <= pgcs; ++i) {
    PGC_P& pgc = unit.PGC.Add({});
    pgc.Key = fmt::format("{}.P{}", key, i);
    for (int cell = 1; cell <= 3; ++cell) {
      pgc.PG.Add({}).Cell.Add({}).CellName = fmt::format("{}.C{}", pgc.Key, cell);
    }
  }
  return unit;
}

// Two entries, each of two languages of one PGC and a title of two.
Project TwoEntries() {
  Project project;
  for (const char* key : {"A", "B"}) {
    VTS_P entry;
    entry.Key = key;
    entry.Lang.Add(UnitOf<Lang_P>(entry.Key + ".L1", 1));
    entry.Lang.Add(UnitOf<Lang_P>(entry.Key + ".L2", 1));
    entry.Title.Add(UnitOf<Title_P>(entry.Key + ".T1", 2));
    project.Disc.Add(std::move(entry));
  }
  return project;
}

// Each PGC with its numbers: of entry, unit, within the unit and within the domain.
std::vector<std::string> PlacesOf(const std::vector<PlacedPgc<const PGC_P>>& pgcs) {
  std::vector<std::string> places;
  for (const auto& at : pgcs) {
    EXPECT_TRUE(at.Key().starts_with(at.UnitKey()) && at.Key().starts_with(at.Entry->Key));
    EXPECT_EQ(at.In() == Domain::Title, at.Key().find(".T") != std::string::npos);
    places.push_back(
        fmt::format("{} {}{}{}{}", at.Key(), at.EntryNumber, at.UnitNumber, at.Number, at.DomainNumber));
  }
  return places;
}

TEST(Walk, PgcsComeInTheOrderOfTheDiscWithTheirPlaces) {
  Project project = TwoEntries();
  EXPECT_THAT(PlacesOf(AllPgcs(std::as_const(project))),
              ElementsAre("A.L1.P1 1111", "A.L2.P1 1212", "A.T1.P1 1111", "A.T1.P2 1122", "B.L1.P1 2111",
                          "B.L2.P1 2212", "B.T1.P1 2111", "B.T1.P2 2122"));
  project.Disc.Item(1)->Lang.Item(1)->Removed = true;
  project.Disc.Item(1)->Title.Item(1)->PGC.Item(1)->Removed = true;
  project.Disc.Item(2)->Removed = true;
  EXPECT_EQ(AllPgcs(project).size(), 8U);
  EXPECT_THAT(PlacesOf(LivePgcs(std::as_const(project))), ElementsAre("A.L2.P1 1212", "A.T1.P2 1122"))
      << "numbers count removed elements";
}

TEST(Walk, CellsOfRemovedElementsArePassedOver) {
  Project project = TwoEntries();
  VTS_P& entry = *project.Disc.Item(1);
  Collection<PGC_P>& pgcs = entry.Title.Item(1)->PGC;
  Collection<PG_P>& programs = pgcs.Item(1)->PG;
  programs.Item(1)->Removed = programs.Item(3)->Cell.Item(1)->Removed = true;
  EXPECT_EQ(AllCells(*pgcs.Item(1)).size(), 3U);
  EXPECT_EQ(LiveCells(entry, Domain::Title).size(), 4U);
  pgcs.Item(2)->Removed = entry.Lang.Item(2)->Removed = true;
  EXPECT_EQ(LiveCells(entry, Domain::Title), std::vector<const Cell_P*>{programs.Item(2)->Cell.Item(1)});
  EXPECT_EQ(LiveCells(entry, Domain::Menu).size(), 3U);
  entry.Removed = true;
  EXPECT_TRUE(LiveCells(entry, Domain::Menu).empty());
}

TEST(Walk, LiveElementsKeepTheirIndex) {
  Track track;
  track.AudioStreams.resize(3);
  track.AudioStreams[1].Removed = true;
  EXPECT_THAT(Live(track.AudioStreams), ElementsAre(&track.AudioStreams[0], &track.AudioStreams[2]));
  const auto live = LiveWithIndex(track.AudioStreams);
  ASSERT_EQ(live.size(), 2U);
  EXPECT_EQ(live[1].first, 2U);
  EXPECT_EQ(&live[1].second, &track.AudioStreams[2]);
}

}  // namespace
}  // namespace quorvelant
