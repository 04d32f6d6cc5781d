#include "ifo/pgc_writer.h"

#include <gtest/gtest.h>

#include "synthetic_disc.h"

namespace quorvelant {
namespace {

Bytes Build(SyntheticDisc& disc, const PGC_P& chain, Domain domain, const Rules& rules = Rules::Players,
            const Title_P* title = nullptr) {
  const EntryRecords records = disc.Records(rules);
  const PgcNumbers numbers = PgcNumbers::OfTitles(disc.Set(), rules);
  return BuildPgc(chain, {records, domain, numbers, title});
}

TEST(PgcWriter, TablesFollowOneAnother) {
  SyntheticDisc disc;
  AddVob(disc.Titles, 4, {24, 36, 1});
  AddVob(disc.Titles, 7, {48});
  PG_P removed = ProgramOf(4, {0});
  removed.Removed = true;
  PGC_P chain =
      ChainOf("A", {ProgramOf(4, {0, 1}), removed, ProgramOf(4, {9}), ProgramOf(4, {2}), ProgramOf(7, {0})});
  chain.Uops.set(0).set(24);
  chain.StillTime = 5;
  Cell_P& second = *chain.PG.Item(1)->Cell.Item(2);
  second.Seamless = true;
  second.StillTime = 255;
  second.CellCommand = 1;
  chain.PG.Item(5)->Cell.Item(1)->Seamless = true;  // its clock starts again
  chain.PreCommands.emplace_back().Deleted = true;
  chain.PreCommands[0].CommandHex = "2001000000000000";
  chain.PreCommands.emplace_back().CommandHex = "3002000000010000";
  chain.CellCommands.emplace_back().CommandHex = "2005000000000001";
  const Bytes bytes = Build(disc, chain, Domain::Title);
  EXPECT_EQ(Words(bytes, 0, 12), "00000304 00000449 01000001");  // 24 + 36 + 1 + 48 frames
  EXPECT_EQ(At(bytes, 0xA3, 1), 5U);
  EXPECT_EQ(Words(bytes, 0xE4, 8), "00EC0104 01080168");
  EXPECT_EQ(Words(bytes, 236),
            "00010000 00010017 "                    // pre, post, cell, end
            "30020000 00010000 20050000 00000001 "  // the pre command that is left; cell
            "01030400 "                             // programs and a byte to stay even
            "02000000 00000064 00000000 00000000 00000064 000000C7 "
            "0800FF01 00000151 000000C8 00000000 00000190 000001F3 "  // goes on: seamless
            "02000000 00000041 000001F4 00000000 000001F4 00000257 "  // of one frame
            "02000000 00000163 00000258 00000000 00000384 000003E7 "
            "00010001 00010002 00010003 00020001");
  EXPECT_EQ(At(Build(disc, chain, Domain::Title, Rules::Classic), 336, 1), 8U);
  EXPECT_EQ(At(Build(disc, chain, Domain::Title, Rules::Classic), 4, 4), 0x458U);  // one frame counts for ten
}

TEST(PgcWriter, ChainsWithoutCells) {
  SyntheticDisc disc;
  PGC_P chain = ChainOf("A", {ProgramOf(0, {0})});
  EXPECT_EQ(Build(disc, chain, Domain::Title), Bytes(236));
  chain.PostCommands.emplace_back().CommandHex = "";  // a NOP
  EXPECT_EQ(Words(Build(disc, chain, Domain::Title), 0xE4),
            "00EC0000 00000000 00000001 0000000F 00000000 00000000");
}

TEST(PgcWriter, StreamsAreThoseOfTheTracksWithinThePolicy) {
  SyntheticDisc disc;
  CarriedStreams carried;
  carried.Audio.set(0).set(3);
  carried.Subs.set(0).set(5);
  AddVob(disc.Titles, 0, {24}, carried);
  AddVob(disc.Menu, 0, {24}, carried);
  for (DomainRecords* domain : {&disc.Titles, &disc.Menu}) {
    for (const int number : {3, 1, 0}) {
      domain->Audio.emplace_back().StreamNumber = number;
    }
    for (const int number : {5, 0}) {
      domain->Subs.emplace_back().StreamNumber = number;
    }
  }
  PGC_P chain = ChainOf("A", {ProgramOf(0, {0})});
  chain.AudioAssignments[3] = 6;
  chain.NormalAssignments[5] = 1;
  chain.WideAssignments[5] = 2;
  chain.LetterAssignments[5] = 3;
  chain.PanAssignments[5] = 4;
  const auto subs = [&](const char* aspect, bool pan, bool letter, const Rules& rules = Rules::Players) {
    disc.Set().VTSTitleInfo.Aspect = aspect;
    disc.Set().VTSTitleInfo.Pan = pan;
    disc.Set().VTSTitleInfo.Letter = letter;
    return At(Build(disc, chain, Domain::Title, rules), 28, 4);
  };
  EXPECT_EQ(subs("4:3", false, false), 0x81000000U);
  EXPECT_EQ(subs("4:3", true, false), 0x80020004U);
  EXPECT_EQ(subs("4:3", true, true), 0x80020304U);
  EXPECT_EQ(subs("16:9", false, true), 0x80020304U);
  EXPECT_EQ(subs("16:9", false, true, Rules::Classic), 0x80020300U);

  const Bytes title = Build(disc, chain, Domain::Title);
  EXPECT_EQ(At(title, 0x0C, 6), 0x8600'0000'8000U);  // row 1 is a number that no track carries
  EXPECT_EQ(At(title, 32, 4), 0x80000000U);
  const Bytes menu = Build(disc, chain, Domain::Menu);
  EXPECT_EQ(At(menu, 0x0C, 6), 0x8600'0000'0000U);  // entry 0 alone
  EXPECT_EQ(At(menu, 32, 4), 0U);

  Title_P policy;
  policy.Custom = policy.SubCustom = true;
  policy.AudioAssignments[0] = true;
  policy.SubAssignments[0] = true;
  const Bytes custom = Build(disc, chain, Domain::Title, Rules::Players, &policy);
  EXPECT_EQ(At(custom, 0x0C, 6), 0x0000'0000'8000U);
  EXPECT_EQ(At(custom, 28, 8), 0x0000'0000'8000'0000U);
}

TEST(PgcWriter, LinksModesAndPalette) {
  SyntheticDisc disc;
  disc.AddTitle({ChainOf("One", {}), ChainOf("Two", {})});
  disc.AddTitle({ChainOf("Three", {})});
  PGC_P chain = ChainOf("X", {ProgramOf(0, {0})});
  chain.NextPGC = "NONE";
  chain.PrevPGC = "th ree";
  chain.GoUpPGC = "resume";
  EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0x9C, 6), 0x0000'0003'0000U);
  EXPECT_EQ(At(Build(disc, chain, Domain::Title, Rules::Classic), 0x9C, 6), 0x0000'0001'0000U);
  EXPECT_EQ(At(Build(disc, chain, Domain::Menu), 0x9C, 6), 0x0000'0000'FFFFU);

  chain.Repeat = 3;
  for (const auto& [mode, value] :
       {std::pair{PlayBack::Sequential, 0U}, {PlayBack::Random, 2U}, {PlayBack::Shuffle, 0x82U}}) {
    chain.PlayBackMode = mode;
    EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0xA2, 1), value);
    EXPECT_EQ(At(Build(disc, chain, Domain::Menu), 0xA2, 1), 0U);
  }
  Track& track = disc.Disc.Tracks.Add({});
  EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0xA4 + 4, 4), 0U);
  track.HighlightPlays.emplace_back().Buttons.emplace_back();
  EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0xA4, 8), 0x0010'8080'00EB'8080U);  // black, white
  EXPECT_EQ(At(Build(disc, chain, Domain::Title, Rules::Classic), 0xA4 + 4, 4), 0U);
  track.HighlightPlays.clear();
  disc.Disc.Palettes.Add({.Key = "Mine"}).PaletteColors[15] = 0xFFFFFF;
  EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0xA4 + 60, 4), 0U);
  chain.PaletteName = "Mine";
  EXPECT_EQ(At(Build(disc, chain, Domain::Title), 0xA4 + 60, 4), 0x00EB8080U);
}

TEST(PgcWriter, MenusLinkWithinTheirUnitForPlayers) {
  SyntheticDisc disc;
  for (const auto& names : {std::vector{"Top", "Same"}, std::vector{"Other", "Third", "Same"}}) {
    Lang_P& unit = disc.Set().Lang.Add({});
    for (const char* name : names) {
      unit.PGC.Add(ChainOf(name, {}));
    }
  }
  const Lang_P& first = *disc.Set().Lang.Item(1);
  const auto players = PgcNumbers::OfUnit(disc.Set(), first, Rules::Players);
  const auto classic = PgcNumbers::OfUnit(disc.Set(), first, Rules::Classic);
  EXPECT_EQ(players.Of("same"), 2);
  EXPECT_EQ(classic.Of("same"), 3);  // a later unit's name overwrites
  EXPECT_EQ(players.Of("Third"), 0);
  EXPECT_EQ(classic.Of("Third"), 2);
}

}  // namespace
}  // namespace quorvelant
