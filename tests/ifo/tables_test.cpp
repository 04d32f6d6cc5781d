#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ifo/cell_address_tables.h"
#include "ifo/menu_units.h"
#include "ifo/time_maps.h"
#include "ifo/title_search.h"
#include "ifo/title_tables.h"
#include "ifo/vmg_ifo.h"
#include "ifo/vts_ifo.h"
#include "synthetic_disc.h"

namespace quorvelant {
namespace {

TEST(CellAddresses, CountVobsAndListCells) {
  DomainRecords domain;
  EXPECT_TRUE(BuildCellAddressTable(domain.Vobs).empty());
  EXPECT_TRUE(BuildVobuMap(domain.Vobs).empty());
  AddVob(domain, 0, {12, 24});
  AddVob(domain, 3, {12});
  const Bytes cells = BuildCellAddressTable(domain.Vobs);
  EXPECT_EQ(At(cells, 0, 8), 0x0002'0000'0000'002BU);
  EXPECT_EQ(At(cells, 8 + 12, 4), 0x00010200U);
  EXPECT_EQ(At(cells, 8 + 16, 8), 0x0000'0064'0000'012BU);
  EXPECT_EQ(At(cells, 8 + 24, 4), 0x00020100U);
  EXPECT_EQ(cells.size(), 44U);
  const Bytes vobus = BuildVobuMap(domain.Vobs);
  EXPECT_EQ(At(vobus, 0, 4), 4U * 4 + 3);
  EXPECT_EQ(At(vobus, 16, 4), 300U);
  EXPECT_EQ(vobus.size(), 20U);
}

// A VOBU has 12 frames; the clock counts the frames behind the first.
TEST(TimeMaps, OneEntryAStepFlaggedWhereAVobEnds) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 0, {250});
  AddVob(disc.Titles, 1, {12});
  AddVob(disc.Titles, 2, {60});
  PGC_P chain = ChainOf("A", {ProgramOf(0, {0}), ProgramOf(1, {0}), ProgramOf(2, {0})});
  disc.AddTitle({chain});
  disc.AddTitle({chain, chain});  // not in sequence: empty maps
  const Bytes bytes = BuildTimeMaps(disc.Records());
  EXPECT_EQ(At(bytes, 0, 4), 0x00030000U);
  EXPECT_EQ(At(bytes, 4, 4), bytes.size() - 1);
  EXPECT_EQ(At(bytes, 8, 4), 20U);
  const std::uint64_t entries = At(bytes, 22, 2);
  EXPECT_EQ(At(bytes, 20, 2), 0x0100U);
  EXPECT_EQ(entries, 12U);                                   // 322 frames
  EXPECT_EQ(At(bytes, 24, 4), 200U);                         // frame 25 lies in the third VOBU
  EXPECT_EQ(At(bytes, 24 + 4 * 8, 4), 0x80000000U + 1800);   // frame 225, the last of the first VOB
  EXPECT_EQ(At(bytes, 24 + 4 * 9, 4), 0x80000000U + 2100);   // frame 250, the only one of the second
  EXPECT_EQ(At(bytes, 24 + 4 * 11, 4), 0x80000000U + 2500);  // frame 300
  EXPECT_EQ(At(bytes, 12, 4), 24 + 4 * entries);
  EXPECT_EQ(At(bytes, 16, 4), 28 + 4 * entries);
  EXPECT_EQ(At(bytes, 28 + 4 * entries, 4), 0U);
}

TEST(TimeMaps, StepGrowsBeyond2048Entries) {
  for (const auto& [seconds, step, entries] : {std::tuple{2048, 1U, 2048U}, {2050, 2U, 1025U}}) {
    SyntheticDisc disc;
    disc.Ntsc = true;
    AddVob(disc.Titles, 0, {seconds * 30 + 12}, {}, NtscTiming);
    disc.AddTitle({ChainOf("A", {ProgramOf(0, {0})})});
    const Bytes bytes = BuildTimeMaps(disc.Records());
    EXPECT_EQ(At(bytes, 12, 1), step);
    EXPECT_EQ(At(bytes, 14, 2), entries);
  }
  SyntheticDisc disc;
  disc.AddTitle({ChainOf("A", {}), ChainOf("B", {})});
  EXPECT_TRUE(BuildTimeMaps(disc.Records()).empty());
}

TEST(MenuUnits, WithoutMenusStandsOneEmptyChain) {
  SyntheticDisc disc;
  const Bytes bytes = BuildMenuUnits(disc.Records());
  EXPECT_EQ(At(bytes, 0, 8), 0x0001'0000'0000'011BU);  // one unit, end 283
  EXPECT_EQ(At(bytes, 8, 8), 0xFFFF'0000'0000'0010U);
  EXPECT_EQ(At(bytes, 16, 8), 0x0001'0000'0000'010BU);  // one PGC, end 267
  EXPECT_EQ(At(bytes, 24, 8), 0x0000'0000'0000'0010U);
}

TEST(MenuUnits, LanguagesTypesAndOffsets) {
  SyntheticDisc disc;
  struct Unit {
    const char* Language;
    std::vector<const char*> Types;
  };
  for (const Unit& u : {Unit{"de", {"Root Menu", "PTT", "None"}}, Unit{"French", {}},
                        Unit{"Not Specified", {"audio", "Angle menu"}}}) {
    Lang_P unit;
    unit.Language = u.Language;
    for (const char* type : u.Types) {
      PGC_P chain;
      chain.MenuType = type;
      unit.PGC.Add(chain);
    }
    disc.Set().Lang.Add(unit);
  }
  const Bytes bytes = BuildMenuUnits(disc.Records());
  EXPECT_EQ(At(bytes, 0, 2), 3U);
  EXPECT_EQ(At(bytes, 4, 4), bytes.size() - 1);
  EXPECT_EQ(At(bytes, 8, 8), 0x6465'0088'0000'0020U);
  EXPECT_EQ(At(bytes, 16, 4), 0x66720000U);
  EXPECT_EQ(At(bytes, 24, 4), 0xFFFF0030U);
  const std::size_t unit = 32;
  const std::uint64_t unitBytes = 8 + 3 * 8 + 3 * 236;
  EXPECT_EQ(At(bytes, unit, 8), 0x0003'0000'0000'0000U + unitBytes - 1);
  EXPECT_EQ(At(bytes, unit + 8, 8), 0x8300'0000'0000'0020U);
  EXPECT_EQ(At(bytes, unit + 16, 8), 0x8700'0000'0000'0020U + 236);
  EXPECT_EQ(At(bytes, unit + 24, 1), 0U);
  EXPECT_EQ(At(bytes, 20, 4), unit + unitBytes);
}

TEST(TitleTables, ChaptersAreProgramsThatWereWritten) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 0, {24, 24});
  disc.AddTitle({ChainOf("A", {ProgramOf(0, {0}), ProgramOf(0, {7}), ProgramOf(0, {1})})});
  disc.AddTitle({ChainOf("B", {ProgramOf(0, {9})})});  // no chapter
  disc.AddTitle({ChainOf("C", {}), ChainOf("D", {ProgramOf(0, {0})})}).UOPTimePlay = true;
  disc.Set().Title.Item(2)->PGC.Item(1)->PostCommands.resize(1);
  disc.Set().Title.Item(2)->PGC.Item(1)->PostCommands[0].FullCommand = "CallSS RootMenu";

  const Bytes chapters = BuildChapterTable(disc.Records());
  EXPECT_EQ(At(chapters, 0, 8), 0x0003'0000'0000'001FU);
  EXPECT_EQ(At(chapters, 8, 8), 0x0000'0014'0000'001CU);
  EXPECT_EQ(At(chapters, 16, 4), 0x1CU);
  EXPECT_EQ(At(chapters, 20, 8), 0x0001'0001'0001'0002U);
  EXPECT_EQ(At(chapters, 28, 4), 0x0004'0001U);  // the chain counts through the set

  const Bytes table = BuildTitlePgcTable(disc.Records());
  EXPECT_EQ(At(table, 0, 2), 4U);
  EXPECT_EQ(At(table, 4, 4), table.size() - 1);
  for (const auto& [row, category] : {std::pair{0, 0x81U}, {1, 0x82U}, {2, 0x83U}, {3, 0x03U}}) {
    EXPECT_EQ(At(table, 8 + 8 * static_cast<std::size_t>(row), 1), category);
  }
  EXPECT_EQ(At(table, 12, 4), 40U);
  EXPECT_EQ(At(table, 40 + 2, 1), 2U);

  const WrittenSet set{&disc.Set(), &disc.Menu, &disc.Titles};
  const Bytes search = BuildTitleSearch(std::array{set});
  EXPECT_EQ(At(search, 0, 8), 0x0003'0000'0000'002BU);
  EXPECT_EQ(At(search, 8, 8), 0x0001'0002'0000'0101U);
  EXPECT_EQ(At(search, 20, 8), 0x1401'0000'0000'0102U);  // a post command leads away
  EXPECT_EQ(At(search, 32, 8), 0x4101'0001'0000'0103U);  // two chains; no time play
}

TEST(SetAttributes, RecordsOf776Bytes) {
  SyntheticDisc disc;
  disc.Titles.Audio.resize(9);
  disc.Titles.Subs.resize(1);
  disc.Menu.Audio.resize(1);
  const WrittenSet set{&disc.Set(), &disc.Menu, &disc.Titles};
  const Bytes bytes = BuildSetAttributes(std::array{set, set}, "PAL");
  EXPECT_EQ(At(bytes, 4, 4), 3U * 780 - 773);
  EXPECT_EQ(At(bytes, 12, 4), 16U + 776);
  EXPECT_EQ(At(bytes, 16, 4), 775U);
  EXPECT_EQ(At(bytes, 16 + 8, 4), 0x53000001U);
  EXPECT_EQ(At(bytes, 16 + 264, 4), 0x53000008U);
  EXPECT_EQ(At(bytes, 16 + 349, 2), 0x0101U);
}

TEST(WholeFiles, TablesStandOnSectorsOfTheirOwn) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 0, std::vector<int>(200, 24));
  disc.AddTitle({ChainOf("A", {ProgramOf(0, {0})})});
  Log log;
  const Bytes set = BuildTitleSetIfo(disc.Records(), log);
  const std::uint64_t sectors = set.size() / 2048;
  EXPECT_EQ(set.size() % 2048, 0U);
  EXPECT_EQ(At(set, 0x1C, 4), sectors - 1);
  EXPECT_EQ(At(set, 0xC4, 4), sectors);
  EXPECT_EQ(At(set, 0xC8, 8), 0x0000'0001'0000'0002U);
  EXPECT_EQ(At(set, 0xD0, 8), 0x0000'0003'0000'0004U);
  EXPECT_EQ(At(set, 0xD8, 8), 0U);                      // no menu VOB
  EXPECT_EQ(At(set, 0xE0, 8), 0x0000'0005'0000'0007U);  // 200 cells take two sectors

  disc.Disc.FirstPlay.PreCommands.resize(1);
  const WrittenSet written{&disc.Set(), &disc.Menu, &disc.Titles};
  const EntryRecords manager{disc.Disc, *disc.Disc.Disc.Item(1), disc.Menu, disc.Menu, Rules::Players, false};
  const Bytes vmg = BuildVideoManagerIfo(manager, std::array{written}, 0x80);
  EXPECT_EQ(std::string(vmg.begin(), vmg.begin() + 12), "DVDVIDEO-VMG");
  EXPECT_EQ(std::string(vmg.begin() + 0x40, vmg.begin() + 0x45), std::string("NOLV\0", 5));
  EXPECT_EQ(At(vmg, 0x20, 4), 0x00110080U);
  EXPECT_EQ(At(vmg, 0x3E, 2), 1U);
  EXPECT_EQ(At(vmg, 0x80, 8), 0x0000'04FB'0000'0400U);  // 1024 + 236 + 16 - 1
  EXPECT_EQ(At(vmg, 1024 + 0xE4, 2), 236U);
  EXPECT_EQ(At(vmg, 0x0C, 4), vmg.size() / 2048 * 2 - 1);
}

TEST(RegionMask, SetBitsForbid) {
  EXPECT_EQ(RegionMaskOf(AllRegions), 0x40);
  EXPECT_EQ(RegionMaskOf({}), 0xFF);
  AllowedRegions eight{};
  eight[7] = true;
  EXPECT_EQ(RegionMaskOf(eight), 0x7F);
}

}  // namespace
}  // namespace quorvelant
