#include "player/nav_findings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "player/nav_chart.h"
#include "player/nav_words.h"
#include "small_nav_disc.h"

namespace quorvelant {
namespace {

using Kind = NavFinding::Kind;

struct Told {
  Kind What;
  NavDomain Domain;
  int Number;
  std::string Way;
  bool operator==(const Told&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Told& told) {
  return out << static_cast<int>(told.What) << " in domain " << static_cast<int>(told.Domain) << ", number "
             << told.Number << ": " << told.Way;
}

std::vector<Told> FindingsOn(const NavDisc& disc) {
  std::vector<Told> told;
  for (const NavFinding& finding : SurveyOf(disc).Findings) {
    told.push_back({finding.What, finding.At.Domain, finding.Number, finding.Way});
  }
  return told;
}

NavChain& RootOf(NavDisc& disc) {
  return disc.Sets[0].Menus[0].Chains[0];
}
NavChain& ManagerOf(NavDisc& disc) {
  return disc.Menus[0].Chains[0];
}
NavChain& FilmIn(NavDisc& disc, std::size_t title) {
  return disc.Sets[0].Titles[title - 1];
}
NavCommand& Button(NavChain& chain, std::size_t number) {
  return chain.Cells[0].Pages[0].Buttons[number - 1].Command;
}

// Without the way from the title menu into the root menu, whose first button resumes.
NavDisc SoundDisc() {
  NavDisc disc = SmallNavDisc();
  Button(ManagerOf(disc), 3) = ParseCommandHex("3002000000010000");
  return disc;
}

TEST(NavFindings, EachFaultIsFoundWithItsShortestWayAndNothingElse) {
  struct Case {
    std::string What;
    std::function<void(NavDisc&)> Do;
    std::vector<Told> Findings;
  };
  const auto asIs = [](NavDisc& /*disc*/) {};
  const std::vector<Case> cases{
      {"sound", asIs, {}},
      {"a resume with nothing left",
       [](NavDisc& d) { Button(ManagerOf(d), 3) = ParseCommandHex("3006000101830000"); },
       {{Kind::TargetMissing, NavDomain::SetMenu, 0, "insert, 3, OK"}}},
      {"a title that is not there",
       [](NavDisc& d) { Button(ManagerOf(d), 3) = ParseCommandHex("3002000000090000"); },
       {{Kind::TargetMissing, NavDomain::ManagerMenu, 0, "insert, 3"}}},
      {"a call out of a menu",
       [](NavDisc& d) { Button(RootOf(d), 3) = ParseCommandHex("3008000001830000"); },
       {{Kind::TargetForbidden, NavDomain::SetMenu, 0, "insert, OK, Menu, 3"}}},
      {"commands that go round",
       [](NavDisc& d) {
         FilmIn(d, 2).Post = CommandsOf({"7300000100010000", "2001000000000009"}), FilmIn(d, 2).Cells.clear(),
                   FilmIn(d, 2).Programs.clear(), d.Sets[0].Parts[1] = {{2, 1}};
       },
       {{Kind::CommandLoop, NavDomain::Title, 0, "insert, 2"},
        {Kind::TitleUnreachable, NavDomain::Title, 2, ""}}},
      {"a title of stills that goes round for ever",
       [](NavDisc& d) {
         FilmIn(d, 1).Post = CommandsOf({"2001000000000001"});
         FilmIn(d, 1).StillTime = 5;
         d.Sets[0].Menus.clear();
         d.Menus.clear();
         d.FirstPlay->Pre = CommandsOf({"3002000000010000"});
         d.Titles.pop_back();
         d.Sets[0].Parts.pop_back();
         d.Sets[0].Titles.pop_back();
       },
       {{Kind::RootKeyDead, NavDomain::Title, 1, ""}, {Kind::TitleKeyDead, NavDomain::FirstPlay, 0, ""}}},
      {"a button of no operation",
       [](NavDisc& d) { Button(ManagerOf(d), 3) = {}; },
       {{Kind::ButtonIdle, NavDomain::ManagerMenu, 0, "insert, 3"}}},
      {"a button whose condition never holds",
       [](NavDisc& d) { Button(ManagerOf(d), 3) = ParseCommandHex("20A4000500070001"); },
       {{Kind::ButtonIdle, NavDomain::ManagerMenu, 0, "insert, 3"}}},
      {"a page that nobody leaves",
       [](NavDisc& d) {
         NavChain& second = d.Sets[0].Menus[0].Chains[1];
         second.Cells[0].Pages[0] = PageOf({"2001000000000009", "7100000100010000"});
         second.UserOperations = 0x1FFFF;
       },
       {{Kind::PageTrap, NavDomain::SetMenu, 0, "insert, OK, Menu, 2"}}},
      {"a still that no key ends",
       [](NavDisc& d) {
         FilmIn(d, 2).Cells[1].StillTime = StillForEver;
         FilmIn(d, 2).UserOperations = 0x1FFFFFF;
       },
       {{Kind::PageTrap, NavDomain::Title, 0, "insert, 2, wait"}}},
      {"marks that do not show",
       [](NavDisc& d) { RootOf(d).Cells[0].Pages[0].Shows = false; },
       {{Kind::ButtonsHidden, NavDomain::SetMenu, 0, "insert, OK, Menu"}}},
      {"black after a title",
       [](NavDisc& d) { FilmIn(d, 2).Post.clear(); },
       {{Kind::DiscStops, NavDomain::Title, 2, "insert, 2, end of title 2"}}},
      {"black as it goes in",
       [](NavDisc& d) { d.FirstPlay->Pre.clear(); },
       {{Kind::DiscStops, NavDomain::FirstPlay, 1, "insert"},
        {Kind::TitleUnreachable, NavDomain::Title, 1, ""},
        {Kind::TitleUnreachable, NavDomain::Title, 2, ""},
        {Kind::PageUnreachable, NavDomain::ManagerMenu, 1, ""},
        {Kind::PageUnreachable, NavDomain::SetMenu, 1, ""},
        {Kind::PageUnreachable, NavDomain::SetMenu, 2, ""}}},
      {"Exit as it goes in",
       [](NavDisc& d) {
         d.FirstPlay->Pre = CommandsOf({"3001000000000000"});
         d.Titles.clear(), d.Menus.clear(), d.Sets[0].Menus.clear();
       },
       {{Kind::DiscStops, NavDomain::FirstPlay, 0, "insert"}}},
      {"an end that links to what is not there",
       [](NavDisc& d) { FilmIn(d, 2).Post.clear(), FilmIn(d, 2).Next = 9; },
       {{Kind::DiscStops, NavDomain::Title, 2, "insert, 2, end of title 2"}}},
      {"Exit is meant", [](NavDisc& d) { FilmIn(d, 2).Post = CommandsOf({"3001000000000000"}); }, {}},
      {"a title without a way to it",
       [](NavDisc& d) { Button(ManagerOf(d), 2) = ParseCommandHex("3002000000010000"); },
       {{Kind::TitleUnreachable, NavDomain::Title, 2, ""}}},
      {"a chapter that is jumped over",
       [](NavDisc& d) {
         FilmIn(d, 1).UserOperations = 1U << 7U | 1U << 6U;
         FilmIn(d, 1).CellCommands = CommandsOf({"2007000000000003"});
         FilmIn(d, 1).Cells[0].Command = 1;
         Button(RootOf(d), 3) = ParseCommandHex("3003000000020000");
       },
       {{Kind::PartUnreachable, NavDomain::Title, 2, ""}}},
      {"a menu page without a way to it",
       [](NavDisc& d) { Button(RootOf(d), 2) = ParseCommandHex("3006000000420000"); },
       {{Kind::PageUnreachable, NavDomain::SetMenu, 2, ""}}},
      {"a stream that a title has not",
       [](NavDisc& d) {
         FilmIn(d, 1).Audio = {0x8000}, FilmIn(d, 2).Audio = {0x8000, 0x8100},
                   FilmIn(d, 1).Pre = CommandsOf({"5100008100000000"});
       },
       {{Kind::AudioMissing, NavDomain::Title, 1, "insert, OK"}}},
      {"a stream without a key",
       [](NavDisc& d) {
         FilmIn(d, 1).Audio = {0x8000, 0x8100}, FilmIn(d, 1).UserOperations = 1U << 20U;
       },
       {{Kind::AudioUnreachable, NavDomain::Title, 1, ""}}},
      {"no root menu",
       [](NavDisc& d) {
         d.Sets[0].Menus.clear();
         FilmIn(d, 1).Post = FilmIn(d, 2).Post;
       },
       {{Kind::RootKeyDead, NavDomain::Title, 1, ""}}},
      {"registers that lead apart",
       [](NavDisc& d) {
         // The button sets register 5; the title's pre command tells by it which title follows.
         Button(ManagerOf(d), 2) = ParseCommandHex("7100000500020000");
         FilmIn(d, 1).Pre = CommandsOf({"00A1000500020003", "0002000000000000", "3003000000020000"});
       },
       {}},
      {"a register that an arrow sets, and a key that tells by it",
       [](NavDisc& d) {
         Button(ManagerOf(d), 2) = ParseCommandHex("7100000500020000");
         ManagerOf(d).Cells[0].Pages[0].Buttons[1].ActsWhenSelected = true;
         ManagerOf(d).Pre = CommandsOf({"00A1000500020003", "0002000000000000", "3002000000020000"});
       },
       {}},
      {"a drawn number",
       [](NavDisc& d) {
         Button(ManagerOf(d), 2) = ParseCommandHex("3002000000010000");
         FilmIn(d, 1).Pre =
             CommandsOf({"7800000500040000", "00A1000500030004", "0002000000000000", "3003000000020000"});
       },
       {}},
      {"a number that is drawn until it is another one",
       [](NavDisc& d) {
         FilmIn(d, 1).Pre = CommandsOf({"7800000500030000", "0021000500060001", "6100000600050000"});
       },
       {}},
      {"a number that is drawn until it is what it cannot be",
       [](NavDisc& d) {
         FilmIn(d, 2).Pre = CommandsOf({"7800000500030000", "00E1000500030001"});
       },
       {{Kind::CommandLoop, NavDomain::Title, 0, "insert, 2"},
        {Kind::TitleUnreachable, NavDomain::Title, 2, ""}}},
  };
  for (const Case& row : cases) {
    NavDisc disc = SoundDisc();
    row.Do(disc);
    EXPECT_THAT(FindingsOn(disc), testing::UnorderedElementsAreArray(row.Findings)) << row.What;
  }
}

// 99 titles of 99 chapters, each chapter with a button on pages of 36, of which the last two turn the page.
NavDisc LargeDisc() {
  constexpr int Count = 99;
  constexpr int ChaptersOfPage = 34;
  NavDisc disc = SmallNavDisc();
  disc.Titles.clear();
  disc.Sets.clear();
  disc.FirstPlay->Pre = CommandsOf({"3002000000010000"});
  disc.Menus.clear();
  for (int number = 1; number <= Count; ++number) {
    NavSet& set = disc.Sets.emplace_back();
    set.Titles = {FilmOf(1, Count)};
    set.Titles[0].Post = CommandsOf({"3008000001830000"});
    set.Parts.emplace_back();
    NavMenus& menus = set.Menus.emplace_back();
    menus.Language = 0x656E;
    for (int chapter = 1; chapter <= Count; ++chapter) {
      set.Parts[0].push_back({1, static_cast<std::uint8_t>(chapter)});
      if ((chapter - 1) % ChaptersOfPage == 0) {
        menus.Chains.push_back(MenuOf(menus.Chains.empty() ? 3 : 0,
                                      PageOf({"2001000000000010", "2004000000000001", "2004000000000002",
                                              "2004000000000003", "3006000000C00000"})));
      }
      NavPage& page = menus.Chains.back().Cells[0].Pages[0];
      NavCommand command = ParseCommandHex("3005000000010000");
      command[3] = static_cast<std::uint8_t>(chapter);
      page.Buttons.push_back(
          {.Command = command, .Up = 1, .Down = static_cast<std::uint8_t>(page.Buttons.size() + 2)});
      page.Buttons.front().Down = 6;
      page.ByNumber = static_cast<std::uint8_t>(page.Buttons.size());
    }
    disc.Titles.push_back({.Name = "", .Set = static_cast<std::uint8_t>(number), .Number = 1});
  }
  // A manager's page that leads to every set.
  NavMenus& manager = disc.Menus.emplace_back();
  manager.Language = 0x656E;
  for (int number = 0; number < Count; number += 33) {
    NavPage page = PageOf({"2004000000000001", "2004000000000002", "2004000000000003"});
    for (int i = 1; i <= 33; ++i) {
      NavCommand command = ParseCommandHex("3002000000010000");
      command[5] = static_cast<std::uint8_t>(number + i);
      page.Buttons.push_back({.Command = command, .Up = 1, .Down = 1});
    }
    page.ByNumber = 36;
    manager.Chains.push_back(MenuOf(number == 0 ? 2 : 0, page));
  }
  for (NavSet& set : disc.Sets) {
    for (NavChain& chain : set.Menus[0].Chains) {
      Button(chain, 5) = ParseCommandHex("3006000000420000");
    }
  }
  return disc;
}

TEST(NavFindings, TheLargestDiscIsWalkedWhole) {
  const NavDisc disc = LargeDisc();
  const NavSurvey survey = SurveyOf(disc);
  EXPECT_TRUE(survey.IsWhole);
  EXPECT_TRUE(survey.Findings.empty());
  EXPECT_GT(survey.States, 99U * 99U);
  EXPECT_LT(survey.States, 50000U);  // a walk that forgets what it saw takes hours
}

TEST(NavChart, ShowsWhatNobodyReaches) {
  NavDisc disc = SmallNavDisc();
  Button(RootOf(disc), 2) = ParseCommandHex("3006000000420000");
  const NavMap map = SurveyOf(disc).Map;
  const NavChart chart = ChartOf(map);
  ASSERT_EQ(chart.Boxes.size(), 6U);
  EXPECT_LT(chart.Boxes[1].X, chart.Boxes[2].X);
  EXPECT_EQ(chart.Boxes[2].X, chart.Boxes[3].X);
  EXPECT_THAT(SvgOf(map), testing::HasSubstr("#c00"));
  EXPECT_THAT(DotOf(map), testing::AllOf(testing::HasSubstr("n0 -> n1;"), testing::HasSubstr("color=red")));
}

// A register that the chain of a timer alone reads matters while the title plays.
TEST(NavFindings, WhatATimerReadsIsNotForgotten) {
  NavDisc disc = SmallNavDisc();
  Button(ManagerOf(disc), 3) = ParseCommandHex("7100000000010000");  // g0 = 1
  FilmIn(disc, 1).Pre = CommandsOf({"5200003C00030000"});
  NavChain after = FilmOf(0, 1);
  after.IsEntry = false;
  after.Pre = CommandsOf({"00A1000000010003", "0002000000000000", "2004000000000009"});
  disc.Sets[0].Titles.push_back(after);
  const NavSurvey survey = SurveyOf(disc);
  const auto fault = std::ranges::find(survey.Findings, Kind::TargetMissing, &NavFinding::What);
  ASSERT_NE(fault, survey.Findings.end());
  EXPECT_EQ(fault->Way, "insert, 3, 1, timer");
}

TEST(NavFindings, MenusOfEachLanguageAreWalkedAndDrawn) {
  NavDisc disc = SmallNavDisc();
  disc.Menus.push_back({.Language = 0x6465, .Chains = disc.Menus[0].Chains});
  Button(disc.Menus[1].Chains[0], 3) = ParseCommandHex("3002000000090000");
  const NavSurvey survey = SurveyOf(disc);
  const std::string way = "insert (de), 3";
  EXPECT_EQ(std::ranges::count(survey.Findings, way, &NavFinding::Way), 1);
  std::string wrong;
  EXPECT_TRUE(PressesOf(way, wrong)) << wrong;
  const NavMap alone = SurveyOf(SmallNavDisc()).Map;
  ASSERT_EQ(survey.Map.Chains.size(), alone.Chains.size() + disc.Menus[1].Chains.size());
  EXPECT_EQ(survey.Map.Chains.back().Words, "title menu (de)");
  EXPECT_TRUE(survey.Map.Chains.back().IsReached);
  EXPECT_GT(survey.Map.Arrows.size(), alone.Arrows.size());
}

}  // namespace
}  // namespace quorvelant
