#include "player/nav_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "player/nav_lookup.h"
#include "player/nav_words.h"
#include "small_nav_disc.h"

namespace quorvelant {
namespace {

constexpr std::uint16_t English = 0x656E;

std::uint16_t Least(std::uint16_t /*bound*/) {
  return 1;
}

// What is shown after each key.
std::vector<std::string> Stops(const NavDisc& disc, std::string_view keys, const NavRandom& random = Least) {
  std::string wrong;
  const auto presses = PressesOf(keys, wrong);
  if (!presses) {
    return {wrong};
  }
  NavState state = InsertDisc(disc, FreshRegisters(English), random).State;
  std::vector<std::string> stops{PlaceWords(disc, state)};
  for (const NavPress& press : *presses) {
    state = CarryOut(disc, state, press, random).State;
    stops.push_back(PlaceWords(disc, state));
  }
  return stops;
}

using Change = std::function<void(NavDisc&)>;

NavChain& RootOf(NavDisc& disc) {
  return disc.Sets[0].Menus[0].Chains[0];
}
NavChain& ManagerOf(NavDisc& disc) {
  return disc.Menus[0].Chains[0];
}
NavChain& FilmIn(NavDisc& disc, std::size_t title) {
  return disc.Sets[0].Titles[title - 1];
}

TEST(NavMachine, GoesWhereAPlayerGoes) {
  struct Case {
    std::string What;
    Change Do;
    std::string Keys;
    std::string Place;  // in the end
  };
  const auto asIs = [](NavDisc& /*disc*/) {};
  const std::vector<Case> cases{
      {"inserted", asIs, "", "title menu, button 1"},
      {"arrow", asIs, "Down", "title menu, button 2"},
      {"arrow round", asIs, "Up", "title menu, button 3"},
      {"number", asIs, "2", "title 2, chapter 1"},
      {"number beyond", asIs, "7", "title menu, button 1"},
      {"number after an offset", [](NavDisc& d) { ManagerOf(d).Cells[0].Pages[0].Offset = 10; }, "12",
       "title 2, chapter 1"},
      {"numbers of the first buttons alone", [](NavDisc& d) { ManagerOf(d).Cells[0].Pages[0].ByNumber = 1; },
       "2", "title menu, button 1"},
      {"pointer", asIs, "point at 3, OK", "root menu of set 1, button 1"},
      {"a still for ever waits", asIs, "wait", "title menu, button 1"},
      {"chapters", asIs, "OK, Next, Next", "title 1, chapter 3"},
      {"past the last chapter", asIs, "OK, Next, Next, Next", "root menu of set 1, button 1"},
      {"a page that nothing follows stays", asIs, "Next", "title menu, button 1"},
      {"back a chapter", asIs, "OK, Next, Previous", "title 1, chapter 1"},
      {"no chapter before", asIs, "OK, Previous", "title 1, chapter 1"},
      {"last chapter of the chain before", [](NavDisc& d) { FilmIn(d, 2).Previous = 1; }, "2, Previous",
       "title 2, chapter 1"},  // the part of another title
      {"end", asIs, "OK, end", "root menu of set 1, button 1"},
      {"to a cell by resume", asIs, "OK, end, OK", "title 1, chapter 1"},
      {"back to where the menu key was pressed", asIs, "OK, wait, Menu, Resume", "title 1, chapter 2"},
      {"nothing to resume", asIs, "Resume", "title menu, button 1"},
      {"a command that finds nothing to resume is passed over",
       [](NavDisc& d) {
         ManagerOf(d).Pre = CommandsOf({"2001000000000010", "3002000000020000"});
       },
       "", "title 2, chapter 1"},
      {"a set's menu that jumps to that of its set",
       [](NavDisc& d) {
         RootOf(d).Cells[0].Pages[0].Buttons[0].Command = ParseCommandHex("3006000000830000");
       },
       "OK, Menu, Down, Up, OK", "root menu of set 1, button 1"},
      {"a disc that asks for its region",
       [](NavDisc& d) {
         d.Region = 4;
         d.FirstPlay->Pre = CommandsOf({"6100000700940000", "00B1000700040004", "3002000000020000"});
       },
       "", "title 2, chapter 1"},
      {"no resume once another title began", asIs, "OK, Menu, Down, OK, Down, OK, 2, Title, Resume",
       "title 2, chapter 1"},
      {"a part out of a menu", asIs, "OK, Menu, Up, OK", "title 1, chapter 2"},
      {"the button a link chooses", asIs, "OK, Menu, 2, OK", "menu 2 of set 1, button 2"},
      {"title by number", asIs, "title 2", "title 2, chapter 1"},
      {"chapter by number", asIs, "OK, chapter 3", "title 1, chapter 3"},
      {"chapter beyond", asIs, "OK, chapter 4", "title 1, chapter 1"},
      {"no set, no root menu", asIs, "Menu", "title menu, button 1"},
      {"go up", [](NavDisc& d) { d.Sets[0].Menus[0].Chains[1].GoUp = 1; }, "OK, Menu, 2, Return",
       "root menu of set 1, button 1"},
      {"go up resumes", [](NavDisc& d) { RootOf(d).GoUp = 0xFFFF; }, "OK, Next, Menu, Return",
       "title 1, chapter 2"},
      {"next chain", [](NavDisc& d) { FilmIn(d, 1).Post.clear(), FilmIn(d, 1).Next = 2; },
       "OK, Next, Next, wait", "title 1, chapter 3"},  // that chain has no part of this title
      {"nothing follows", [](NavDisc& d) { FilmIn(d, 1).Post.clear(); }, "OK, end",
       "stopped (nothing follows)"},
      {"Exit", [](NavDisc& d) { FilmIn(d, 1).Post = CommandsOf({"3001000000000000"}); }, "OK, end",
       "stopped (Exit)"},
      {"title that is not there", [](NavDisc& d) { d.FirstPlay->Pre = CommandsOf({"3002000000090000"}); }, "",
       "stopped (a target that is not there)"},
      {"a call out of a menu", [](NavDisc& d) { ManagerOf(d).Pre = CommandsOf({"3008000001830000"}); }, "",
       "stopped (a target that is not there)"},
      {"a circle of commands", [](NavDisc& d) { d.FirstPlay->Pre = CommandsOf({"0001000000000001"}); }, "",
       "stopped (commands without an end)"},
      {"a circle of chains", [](NavDisc& d) { ManagerOf(d).Pre = CommandsOf({"2001000000000009"}); }, "",
       "stopped (commands without an end)"},
      {"a count of ten thousand is no circle",
       [](NavDisc& d) {
         d.FirstPlay->Pre =
             CommandsOf({"7300000100010000", "00F1000117700001", "3002000000020000"});  // up to 6000
       },
       "", "title 2, chapter 1"},
      {"a disc without First Play", [](NavDisc& d) { d.FirstPlay.reset(); }, "", "title 1, chapter 1"},
      {"a pre command that leads on", [](NavDisc& d) { FilmIn(d, 1).Pre = CommandsOf({"3003000000020000"}); },
       "OK", "title 2, chapter 1"},
      {"a line that is jumped over",
       [](NavDisc& d) {
         d.FirstPlay->Pre = CommandsOf({"0001000000000003", "3002000000010000", "3002000000020000"});
       },
       "", "title 2, chapter 1"},
      {"Break ends the list",
       [](NavDisc& d) {
         d.FirstPlay->Pre = CommandsOf({"0002000000000000", "3002000000010000"});
         d.FirstPlay->Post = CommandsOf({"3002000000020000"});
       },
       "", "title 2, chapter 1"},
      {"a cell command",
       [](NavDisc& d) {
         FilmIn(d, 1).CellCommands = CommandsOf({"2007000000000003"});
         FilmIn(d, 1).Cells[0].Command = 1;
       },
       "OK, wait", "title 1, chapter 3"},
      {"a still with an end", [](NavDisc& d) { FilmIn(d, 1).Cells[0].StillTime = 5; }, "OK, wait, wait",
       "title 1, chapter 2"},
      {"a still without an end is skipped",
       [](NavDisc& d) { FilmIn(d, 1).Cells[0].StillTime = StillForEver; }, "OK, wait, wait, skip",
       "title 1, chapter 2"},
      {"a chain's still", [](NavDisc& d) { FilmIn(d, 1).StillTime = StillForEver; }, "OK, end",
       "title 1, chapter 3"},
      {"a button that acts when it is chosen",
       [](NavDisc& d) { ManagerOf(d).Cells[0].Pages[0].Buttons[1].ActsWhenSelected = true; }, "Down",
       "title 2, chapter 1"},
      {"forced selection", [](NavDisc& d) { ManagerOf(d).Cells[0].Pages[0].ForcedSelect = 3; }, "",
       "title menu, button 3"},
      {"without one the button stays",
       [](NavDisc& d) {
         RootOf(d).Cells[0].Pages[0].ForcedSelect = 63;
         ManagerOf(d).Cells[0].Pages[0].ForcedSelect = 0;
       },
       "Down, OK, Menu", "root menu of set 1, button 2"},
      {"forced activation",
       [](NavDisc& d) {
         ManagerOf(d).Cells[0].StillTime = 0;
         ManagerOf(d).Cells[0].Pages[0].ForcedAction = 2;
       },
       "wait", "title 2, chapter 1"},
      {"buttons later in a cell",
       [](NavDisc& d) {
         NavPage later = PageOf({"3003000000020000", "3003000000010000"});
         later.Start = 45000;
         FilmIn(d, 1).Cells[0].Pages = {later};
       },
       "OK, wait", "title 1, chapter 1, button 1"},
      {"buttons that end while their cell plays on",
       [](NavDisc& d) { AddPage(FilmIn(d, 1).Cells[0], PageOf({"3003000000020000"}), 45000); },
       "OK, wait, OK", "title 1, chapter 1"},
      {"a page that follows the end of another",
       [](NavDisc& d) {
         NavPage later = PageOf({"3003000000020000", "3003000000010000"});
         later.Start = 45000;
         AddPage(FilmIn(d, 1).Cells[0], PageOf({"3003000000010000"}), 45000);
         AddPage(FilmIn(d, 1).Cells[0], later, NavForEver);
       },
       "OK, wait, OK", "title 2, chapter 1"},
      {"a command without a way leaves a still as it is",
       [](NavDisc& d) { ManagerOf(d).Cells[0].Pages[0].Buttons[0].Command = {}; }, "OK",
       "title menu, button 1"},
      {"keys that are forbidden", [](NavDisc& d) { FilmIn(d, 1).UserOperations = 1U << 11U | 1U << 7U; },
       "OK, Menu, Next, Title", "title menu, button 1"},
      {"chapters that are closed to choice", [](NavDisc& d) { d.Titles[0].Restrictions = 2; },
       "OK, chapter 3", "title 1, chapter 1"},
      {"an angle, and what follows its block",
       [](NavDisc& d) {
         NavChain& film = FilmIn(d, 1);
         film.Programs = {1, 3};
         film.Cells[0].Angle = 1;
         film.Cells[1].Angle = 2;
         film.Cells[0].Command = 1;
         film.CellCommands = CommandsOf({"3001000000000000"});  // of the angle that does not play
         d.Sets[0].Parts[0] = {{1, 1}, {1, 2}};
       },
       "OK, angle 2, Top, wait", "title 1, chapter 2"},
      {"the timer", [](NavDisc& d) { FilmIn(d, 1).Pre = CommandsOf({"5200003C00020000"}); }, "OK, timer, end",
       "title menu, button 1"},
      {"another language", [](NavDisc& d) { d.Menus.insert(d.Menus.begin(), NavMenus{.Language = 0x6465}); },
       "", "title menu, button 1"},
      {"the first language of a disc without the viewer's", [](NavDisc& d) { d.Menus[0].Language = 0x6465; },
       "", "title menu, button 1"},
  };
  for (const Case& row : cases) {
    NavDisc disc = SmallNavDisc();
    row.Do(disc);
    EXPECT_EQ(Stops(disc, row.Keys).back(), row.Place) << row.What;
  }
}

TEST(NavMachine, DrawsProgramsAsOftenAsTheChainSays) {
  NavDisc disc = SmallNavDisc();
  FilmIn(disc, 1).Playback = 0x01;  // two programs
  const NavRandom third = [](std::uint16_t bound) { return bound; };
  EXPECT_THAT(Stops(disc, "OK, wait, wait", third),
              testing::ElementsAre("title menu, button 1", "title 1, chapter 3", "title 1, chapter 3",
                                   "root menu of set 1, button 1"));
}

TEST(NavMachine, ShufflesProgramsWithoutRepeatingOne) {
  NavDisc disc = SmallNavDisc();
  FilmIn(disc, 1).Playback = 0x82;  // three programs
  EXPECT_THAT(Stops(disc, "OK, wait, wait, wait", [](std::uint16_t bound) { return bound; }),
              testing::ElementsAre("title menu, button 1", "title 1, chapter 3", "title 1, chapter 2",
                                   "title 1, chapter 1", "root menu of set 1, button 1"));
}

TEST(NavMachine, TellsWhatHappened) {
  const NavDisc disc = SmallNavDisc();
  const NavOutcome inserted = InsertDisc(disc, FreshRegisters(English), Least);
  std::vector<NavHappening::Kind> kinds;
  for (const NavHappening& one : inserted.Happened) {
    kinds.push_back(one.What);
  }
  using Kind = NavHappening::Kind;
  EXPECT_THAT(kinds, testing::ElementsAre(Kind::Entered, Kind::Ran, Kind::Entered, Kind::Plays));
  const NavOutcome refused = NavStep(disc, inserted.State, {NavKey::Number, 9}, Least);
  EXPECT_EQ(refused.Happened.front().What, Kind::Refused);
  EXPECT_EQ(refused.State, inserted.State);
}

TEST(NavWords, WaysReadBackAsKeys) {
  const NavDisc disc = SmallNavDisc();
  struct Case {
    std::string Keys;
    std::string Words;
  };
  const std::vector<Case> cases{
      {"ok, end", "insert, OK, end of title 1"},
      {"OK, wait, Menu, 2", "insert, OK, end of chapter 1, Menu, 2"},
      {"Down, audio 2, skip", "insert, Down, audio 2, skip"},
  };
  for (const Case& row : cases) {
    std::string wrong;
    std::vector<NavStride> way;
    NavState state = InsertDisc(disc, FreshRegisters(English), Least).State;
    const auto presses = PressesOf(row.Keys, wrong);
    ASSERT_TRUE(presses) << wrong;
    for (const NavPress& press : *presses) {
      const NavState from = state;
      state = CarryOut(disc, state, press, Least).State;
      way.push_back({from, press.Event, state});
    }
    EXPECT_EQ(WayWords(way), row.Words);
    EXPECT_EQ(Stops(disc, row.Words).back(), PlaceWords(disc, state));
  }
  std::string wrong;
  EXPECT_FALSE(PressesOf("OK, Dwon", wrong));
  EXPECT_EQ(wrong, "Dwon");
}

}  // namespace
}  // namespace quorvelant
