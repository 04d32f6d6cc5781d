#include <gtest/gtest.h>

#include "ifo/menu_units.h"
#include "ifo/time_maps.h"
#include "ifo/title_search.h"
#include "ifo/title_tables.h"
#include "ifo/vmg_ifo.h"
#include "ifo/vts_ifo.h"
#include "synthetic_disc.h"

namespace quorvelant {
namespace {

// A VOBU has 12 frames; the clock counts the frames after the first.
TEST(TimeMaps, OneEntryAStepFlaggedWhereAVobEnds) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 0, {250});
  AddVob(disc.Titles, 1, {12});
  AddVob(disc.Titles, 2, {60});
  PGC_P chain = ChainOf("A", {ProgramOf(0, {0}), ProgramOf(1, {0}), ProgramOf(2, {0})});
  disc.AddTitle({chain});
  disc.AddTitle({chain, chain});  // not in sequence: empty maps
  // Frame 25 lies in the third VOBU, frame 225 in the last of the first VOB to have an entry, frame 250 in
  // the only one of the second, frame 300 of 322 in the third's.
  EXPECT_EQ(Words(BuildTimeMaps(disc.Records())),
            "00030000 0000004F 00000014 00000048 0000004C 0100000C "
            "000000C8 00000190 00000258 00000320 000003E8 000004B0 00000578 00000640 80000708 80000834 "
            "000008FC 800009C4 00000000 00000000");
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
  EXPECT_EQ(Words(BuildMenuUnits(disc.Records()), 0, 32),
            "00010000 0000011B FFFF0000 00000010 "   // one unit, end 283
            "00010000 0000010B 00000000 00000010");  // one PGC, end 267
}

TEST(MenuUnits, LanguagesTypesAndOffsets) {
  SyntheticDisc disc;
  using Types = std::vector<const char*>;
  for (const auto& [language, types] : {std::pair{"de", Types{"Root Menu", "PTT", "None"}},
                                        {"French", {}},
                                        {"Not Specified", {"audio", "Angle menu"}}}) {
    Lang_P& unit = disc.Set().Lang.Add({});
    unit.Language = language;
    for (const char* type : types) {
      unit.PGC.Add({}).MenuType = type;
    }
  }
  // Units of three, no and two chains of 236 bytes.
  const Bytes bytes = BuildMenuUnits(disc.Records());
  EXPECT_EQ(Words(bytes, 0, 32 + 32),
            "00030000 000004FB 64650088 00000020 66720000 00000304 FFFF0030 0000030C "
            "00030000 000002E3 83000000 00000020 87000000 0000010C 00000000 000001F8");
  EXPECT_EQ(bytes.size(), 0x4FCU);
}

TEST(TitleTables, ChaptersAreProgramsThatWereWritten) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 0, {24, 24});
  disc.AddTitle({ChainOf("A", {ProgramOf(0, {0}), ProgramOf(0, {7}), ProgramOf(0, {1})})});
  disc.AddTitle({ChainOf("B", {ProgramOf(0, {9})})});  // no chapter
  disc.AddTitle({ChainOf("C", {}), ChainOf("D", {ProgramOf(0, {0})})}).UOPTimePlay = true;
  disc.Set().Title.Item(2)->PGC.Item(1)->PostCommands.emplace_back().FullCommand = "CallSS RootMenu";
  EXPECT_EQ(Words(BuildChapterTable(disc.Records())),
            "00030000 0000001F 00000014 0000001C 0000001C "
            "00010001 00010002 00040001");  // a chain counts through the set
  const WrittenSet set{&disc.Set(), &disc.Menu, &disc.Titles};
  EXPECT_EQ(Words(BuildTitleSearch(std::array{set})),
            "00030000 0000002B 00010002 00000101 00000000 "
            "14010000 00000102 00000000 "   // a post command leads away
            "41010001 00000103 00000000");  // two chains; no time play
}

// Where tables lie and what they say of each other is judged by the readers of whole discs.
TEST(WholeFiles, TheManagerTellsVersionRegionsAndEightStreamsAtMost) {
  SyntheticDisc disc;
  disc.Titles.Audio.resize(9);
  const WrittenSet set{&disc.Set(), &disc.Menu, &disc.Titles};
  const EntryRecords manager{disc.Disc, *disc.Disc.Disc.Item(1), disc.Menu, disc.Menu, Rules::Players, false};
  const Bytes vmg = BuildVideoManagerIfo(manager, std::array{set}, 0x80);
  EXPECT_EQ(std::string(vmg.begin() + 0x40, vmg.begin() + 0x45), std::string("NOLV\0", 5));
  EXPECT_EQ(At(vmg, 0x20, 4), 0x00110080U);
  EXPECT_EQ(At(BuildSetAttributes(std::array{set}, "PAL", Rules::Players), 12 + 264, 4), 0x53000008U);
}

TEST(RegionMask, SetBitsForbid) {
  EXPECT_EQ(RegionMaskOf(AllRegions), 0x40);
  EXPECT_EQ(RegionMaskOf({}), 0xFF);
  EXPECT_EQ(RegionMaskOf({false, false, false, false, false, false, false, true}), 0x7F);
}

}  // namespace
}  // namespace quorvelant
