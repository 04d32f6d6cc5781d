// What stands in the structure of a disc with menus and on the tracks of its pages, by both sets of rules.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "edit/palettes.h"
#include "menu/letterbox.h"
#include "menu/page_tracks.h"
#include "menu_disc.h"
#include "model/walk.h"
#include "picture/bmp.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// All commands of a project with their digits, each under its PGC or cell.
std::vector<std::string> CommandsOf(const EditSession& session) {
  Project project = session.Work();
  EXPECT_THAT(CheckCommands(project, session.RulesInForce()).Errors, IsEmpty());
  std::vector<std::string> lines;
  const auto add = [&lines](const std::string& name, const CommandList& list) {
    for (const VMICommand_P& command : list) {
      lines.push_back(
          fmt::format("{} {}: {} = {}", name, command.Key, command.FullCommand, command.CommandHex));
    }
  };
  add(project.FirstPlay.PGCName, project.FirstPlay.PreCommands);
  for (const auto& at : LivePgcs(project)) {
    if (at.Chain->Key == project.FirstPlay.Key) {
      continue;
    }
    add(at.Chain->PGCName, at.Chain->PreCommands);
    add(at.Chain->PGCName, at.Chain->PostCommands);
    for (const Cell_P* cell : LiveCells(*at.Chain)) {
      for (const ButtonCommands_P& buttons : cell->ButtonCommands) {
        add(cell->CellName, buttons.Commands);
      }
    }
  }
  return lines;
}

void ExpectMade(MenuDisc& disc) {
  const Outcome made = disc.Make();
  ASSERT_TRUE(made.IsDone()) << made.Words.Place << ": " << made.Words.Text;
}

const PGC_P& ChainCalled(const Project& project, std::string_view name) {
  for (const auto& at : LivePgcs(project)) {
    if (at.Chain->PGCName == name) {
      return *at.Chain;
    }
  }
  ADD_FAILURE() << name;
  return project.FirstPlay;
}

constexpr const char* SmallClassic =
    R"(First PGC FirstPGC1: JumpSS vts_1, vts_ttn_1 : RootMenu = 3006000101830000
VMG_English_PGC1 Pre1: JumpTT VTS1_Title1 = 3002000000010000
VTS1_Root_PG1_CELL1 Button1: JumpVTS_TT VTS1_Title1 = 3003000000010000
VTS1_Root_PG1_CELL1 Button2: LinkPGCN VTS1_Audio = 2004000000000002
VTS1_Root_PG1_CELL1 Button3: LinkPGCN VTS1_Subtitle = 2004000000000003
VTS1_Root_PG1_CELL1 Button4: LinkPGCN VTS1_Chapter = 2004000000000004
VTS1_Root_PG1_CELL1 Button5: JumpSS TitleMenu = 3006000000420000
VTS1_Audio_PG1_CELL1 Button1: { SetSTN audio=1 ; LinkPGCN VTS1_Root } = 5104008000000001
VTS1_Audio_PG1_CELL1 Button2: { SetSTN audio=2 ; LinkPGCN VTS1_Root } = 5104008100000001
VTS1_Audio_PG1_CELL1 Button3: LinkPGCN VTS1_Root = 2004000000000001
VTS1_Subtitle_PG1_CELL1 Button1: { SetSTN subpicture=63 Dummy:ON ; LinkPGCN VTS1_Root } = 51040000FF000001
VTS1_Subtitle_PG1_CELL1 Button2: { SetSTN subpicture=1:ON ; LinkPGCN VTS1_Root } = 51040000C0000001
VTS1_Subtitle_PG1_CELL1 Button3: LinkPGCN VTS1_Root = 2004000000000001
VTS1_Chapter_PG1_CELL1 Button1: JumpVTS_PTT VTS1_TitlePGC_PG1 = 3005000100010000
VTS1_Chapter_PG1_CELL1 Button2: JumpVTS_PTT VTS1_TitlePGC_PG2 = 3005000200010000
VTS1_Chapter_PG1_CELL1 Button3: JumpVTS_PTT VTS1_TitlePGC_PG3 = 3005000300010000
VTS1_Chapter_PG1_CELL1 Button4: JumpVTS_PTT VTS1_TitlePGC_PG4 = 3005000400010000
VTS1_Chapter_PG1_CELL1 Button5: JumpVTS_PTT VTS1_TitlePGC_PG5 = 3005000500010000
VTS1_Chapter_PG1_CELL1 Button6: JumpVTS_PTT VTS1_TitlePGC_PG6 = 3005000600010000
VTS1_Chapter_PG1_CELL1 Button7: LinkPGCN VTS1_Root = 2004000000000001
VTS1_Chapter_PG1_CELL1 Button8: LinkCN VTS1_Chapter_PG1_CELL2 button=1 = 2007000000000402
VTS1_Chapter_PG1_CELL2 Button1: JumpVTS_PTT VTS1_TitlePGC_PG7 = 3005000700010000
VTS1_Chapter_PG1_CELL2 Button2: LinkCN VTS1_Chapter_PG1_CELL1 button=1 = 2007000000000401
VTS1_Chapter_PG1_CELL2 Button3: LinkPGCN VTS1_Root = 2004000000000001
VTS1_TitlePGC Pre1: SetSTN subpicture=1:ON = 51000000C0000000
VTS1_TitlePGC Post1: CallSS RSM=VTS1_TitlePGC_PG1_CELL1,TitleMenu = 3008000001420000)";

TEST(MenuStructure, ClassicCommandsToTheByte) {
  MenuDisc disc({.Name = "", .Chapters = 8, .Audio = 2, .Subtitles = 1, .Rules = Rules::Classic});
  ExpectMade(disc);
  EXPECT_EQ(fmt::format("{}", fmt::join(CommandsOf(disc.Session), "\n")), SmallClassic);

  MenuDisc many({.Name = "", .Titles = 9, .Audio = 0, .Rules = Rules::Classic});
  ExpectMade(many);
  const std::vector<std::string> lines = CommandsOf(many.Session);
  for (const char* line :
       {"First PGC FirstPGC1: JumpSS VMG_English_PGC1 = 3006000100C00000",
        "VMG_English_PGC1_PG1_CELL1 Button8: JumpSS vts_8, vts_ttn_1 : RootMenu = 3006000108830000",
        "VMG_English_PGC1_PG1_CELL1 Button9: JumpSS vts_9, vts_ttn_1 : RootMenu = 3006000109830000",
        "VMG_English_PGC1_PG1_CELL2 Button1: JumpSS vts_10, vts_ttn_1 : RootMenu = 300600010A830000",
        "VTS9_TitlePGC Pre1: SetSTN subpicture=63 Dummy:ON = 51000000FF000000",
        "VTS9_TitlePGC Post1: CallSS RSM=VTS1_TitlePGC_PG1_CELL1,TitleMenu = 3008000001420000"}) {
    EXPECT_THAT(lines, testing::Contains(line));
  }
}

TEST(MenuStructure, NamesKeysAndLinks) {
  MenuDisc disc({.Name = "", .Titles = 2, .Chapters = 3, .Audio = 2, .Subtitles = 10});
  ExpectMade(disc);
  const Project& project = disc.Session.Work();
  std::vector<std::string> chains;
  for (const auto& at : LivePgcs(project)) {
    chains.push_back(
        fmt::format("{} {} {} {}", at.Chain->Key, at.Chain->PGCName, at.Chain->MenuType, at.Chain->GoUpPGC));
  }
  EXPECT_THAT(chains, testing::IsSupersetOf({"VMG1.LANGUAGE1.PGC1 VMG_English_PGC1 TitleMenu none",
                                             "VTS2.LANGUAGE1.PGC1 VTS2_Root Root none",
                                             "VTS2.LANGUAGE1.PGC2 VTS2_Audio Audio VTS2_Root",
                                             "VTS2.LANGUAGE1.PGC3 VTS2_Subtitle SubPicture VTS2_Root",
                                             "VTS2.LANGUAGE1.PGC4 VTS2_Chapter PTT VTS2_Root",
                                             "VTS2.TITLE1.PGC1 VTS2_TitlePGC  none"}));
  const PGC_P& subtitles = ChainCalled(project, "VTS2_Subtitle");
  const PGC_P& film = ChainCalled(project, "VTS2_TitlePGC");
  const Track& pages = project.Tracks[static_cast<std::size_t>(LiveCells(subtitles)[1]->SegmentUsed)];
  EXPECT_EQ(LiveCells(subtitles).size(), 2U);
  EXPECT_EQ(LiveCells(subtitles)[1]->Key, "VTS2.LANGUAGE1.PGC3.PG1.CELL2");
  EXPECT_EQ(LiveCells(subtitles)[1]->CellName, "VTS2_Subtitle_PG1_CELL2");
  EXPECT_EQ(LiveCells(subtitles)[1]->SceneUsed, pages.TrackName + "_Scene2");
  EXPECT_EQ(LiveCells(subtitles)[1]->StillTime, 255);
  EXPECT_EQ(film.PG.Item(3)->PGName, "VTS2_TitlePGC_PG3");
  EXPECT_EQ(film.PG.Item(3)->Cell.Item(1)->CellName, "VTS2_TitlePGC_PG3_CELL1");
  EXPECT_FALSE(LiveCells(film)[0]->Seamless || LiveCells(film)[0]->EnableSeamlessFlag);
  EXPECT_TRUE(LiveCells(film)[1]->Seamless && LiveCells(film)[1]->EnableSeamlessFlag);
  const Palette_P& palette = *project.Palettes.Item(subtitles.PaletteName);
  EXPECT_THAT(std::vector(palette.PaletteColors.begin(), palette.PaletteColors.end()),
              ElementsAre(0, 0x00FFFF, 0xFFFFFF, 0, 0, 0, 0x00FFFF, 0, 0, 0, 0, 0, 0, 0, 0x0000FF, 0x0000FF));
  EXPECT_EQ(film.PaletteName, "Default");

  disc.Session.Undo();
  EXPECT_EQ(disc.Session.Work().Disc.Count(), 2U);  // one step
  EXPECT_FALSE(PaletteNameExists(disc.Session.Work(), "Menus"));
}

// The track of a group of the second kind of page.
const Track& PagesOf(const MenuDisc& disc, PageKind kind) {
  const FilmTracks& film = disc.Plan.Films[0];
  for (std::size_t i = 0; i < film.Menus.Groups.size(); ++i) {
    if (film.Menus.Groups[i].Kind == kind) {
      return disc.Session.Work().Tracks[film.MenuTracks[i]];
    }
  }
  throw std::logic_error("no such page");
}

TEST(PageTracks, ClassicToTheLetter) {
  MenuDisc disc({.Name = "", .Chapters = 8, .Audio = 2, .Standard = "NTSC", .Rules = Rules::Classic});
  ExpectMade(disc);
  const Track& chapters = PagesOf(disc, PageKind::Chapter);
  EXPECT_EQ(chapters.TrackName, "Track_3");
  EXPECT_EQ(chapters.TrackType, "SlideShow");
  EXPECT_EQ(PagesOf(disc, PageKind::Root).TrackType, "Still");
  EXPECT_EQ(chapters.Scenes[1].Name, "Track_3_Scene2");
  EXPECT_EQ(chapters.Scenes[1].Frame, 300);
  EXPECT_EQ(chapters.VideoPlays[1].SlideDuration, "00:00:10:00");
  const SubPicturePlay& unit = chapters.SubStreams[0].SubPlays[1];
  EXPECT_EQ(fmt::format("{} {} {} {} {} {} {}", unit.Start, unit.End, unit.Duration, unit.X1, unit.X2,
                        unit.Y1, unit.Y2),
            "00:00:10:00 00:00:20:00 00:00:10:00 0 719 2 480");
  EXPECT_EQ(unit.ConversionP & unit.ConversionE1 & unit.ConversionE2, 0xFFFFFFU);
  EXPECT_EQ(unit.ConversionBg, 0U);
  EXPECT_TRUE(unit.Forced && unit.Used);
  EXPECT_EQ(unit.ColorBg + unit.ColorP + unit.ColorE1 + unit.ColorE2, 8);
  EXPECT_EQ(unit.ContrastBg + unit.ContrastP + unit.ContrastE1 + unit.ContrastE2, 0);
  const HighlightPlay& set = chapters.HighlightPlays[0];
  const auto scheme = [](const ColorScheme& one) {
    return fmt::format("{} {} {} {}", fmt::join(one.SelectionColor, ""),
                       fmt::join(one.SelectionContrast, ","), fmt::join(one.ActionColor, ","),
                       fmt::join(one.ActionContrast, ","));
  };
  EXPECT_EQ(scheme(set.Schemes[0]), "0006 0,0,0,6 0,0,0,14 0,0,0,6");
  EXPECT_EQ(scheme(set.Schemes[1]), "0001 0,0,0,10 0,0,0,14 0,0,0,15");
  EXPECT_EQ(scheme(set.Schemes[2]), "0001 0,0,0,10 0,0,0,15 0,0,0,15");
  EXPECT_EQ(scheme(PagesOf(disc, PageKind::Audio).HighlightPlays[0].Schemes[1]),
            "0006 0,0,0,15 0,0,0,14 0,0,0,15");
  EXPECT_EQ(set.ForcedSelect, 1);
  EXPECT_EQ(set.NumericalButtons, 8);
  EXPECT_EQ(set.Buttons[0].Up + set.Buttons[0].Left + set.Buttons[7].Down, "Button8Button8Button1");
}

TEST(PageTracks, PlayersReachEverything) {
  MenuDisc disc({.Name = "", .Chapters = 8, .Standard = "NTSC", .Aspect = "16:9"});
  ExpectMade(disc);
  const Track& chapters = PagesOf(disc, PageKind::Chapter);
  EXPECT_EQ(chapters.Aspect, "16:9");
  EXPECT_EQ(chapters.DisplayMode, "Only LetterBox");
  EXPECT_EQ(chapters.SubStreams[0].DisplayMode + chapters.SubStreams[1].DisplayMode, "WideLetterBox");
  EXPECT_EQ(chapters.SubStreams[1].SubPlays[0].Y1, 60);
  EXPECT_EQ(chapters.SubStreams[1].SubPlays[0].Y2, 419);
  const HighlightPlay& second = chapters.HighlightPlays[1];
  EXPECT_EQ(second.Offset, 6);
  EXPECT_EQ(second.NumericalButtons, 2);
  EXPECT_EQ(second.Buttons[0].Areas[1].Y1, 60 + second.Buttons[0].Areas[0].Y1 * 3 / 4);
  EXPECT_EQ(second.Buttons[0].Areas[1].X1, second.Buttons[0].Areas[0].X1);
  const HighlightPlay& first = chapters.HighlightPlays[0];
  EXPECT_EQ(first.Buttons[0].Right + first.Buttons[0].Down, "Button2Button4");
  EXPECT_EQ(first.Schemes[1].SelectionContrast, (ColorQuad{10, 5, 0, 15}));
  EXPECT_EQ(PagesOf(disc, PageKind::Root).HighlightPlays[0].Schemes[1].SelectionContrast,
            (ColorQuad{10, 5, 0, 15}));
  const PGC_P& chain = ChainCalled(disc.Session.Work(), "VTS1_Chapter");
  EXPECT_EQ(chain.WideAssignments[0], 0);
  EXPECT_EQ(chain.LetterAssignments[0], 1);
}

// A box of the page shows in the letterbox where the area of its button is.
TEST(PageTracks, LetterboxedMarksLieInTheirAreas) {
  for (const int height : {480, 576}) {
    Picture sublayer(720, height);
    std::ranges::fill(sublayer.Pixels, std::uint8_t{0xFF});
    for (int y = 100; y < 140; ++y) {
      sublayer.Set(7, y - 2, 0);
    }
    const Picture letter = LetterboxSublayer(sublayer, 2, Rules::Players);
    ASSERT_EQ(letter.Height, height * 3 / 4);
    for (int y = 0; y < letter.Height; ++y) {
      EXPECT_EQ(letter.At(7, y), y >= 75 && y < 105 ? 0U : 0xFFFFFFU) << y;
    }
    EXPECT_EQ(LetterboxLine(100, height), height / 8 + 75);
  }
}

TEST(MenuOffer, HoldsWhatReachesTheDiscAndIsAChoice) {
  struct Case {
    MenuDiscKind Kind;
    std::string Offered;  // audio, subtitle, first chapter's scene and how many
  };
  const std::vector<Case> cases{
      {{.Chapters = 1, .Audio = 1}, "0 0 - 0"},
      {{.Chapters = 2, .Audio = 2, .Subtitles = 1}, "2 1 0 2"},
      {{.Chapters = 7, .Audio = 8, .Subtitles = 32}, "8 32 0 7"},
      {{.Chapters = 1, .Audio = 1, .Rules = Rules::Classic}, "1 0 - 0"},
      {{.Chapters = 2, .Audio = 0, .Subtitles = 1, .Rules = Rules::Classic}, "0 1 1 1"},
  };
  for (const Case& one : cases) {
    MenuDisc disc(one.Kind);
    ExpectMade(disc);
    const FilmOffer& offer = disc.Plan.Films[0].Offer;
    EXPECT_EQ(fmt::format("{} {} {} {}", offer.Audio.size(), offer.Subtitles.size(),
                          offer.Chapters.empty() ? "-" : std::to_string(offer.Chapters[0].Scene),
                          offer.Chapters.size()),
              one.Offered);
  }
}

// Each flag of the rules by itself, turned off: what it was for is gone.
using Probe = std::string (*)(const MenuDisc& disc);

struct FlagCase {
  bool Rules::*Flag;
  MenuDiscKind Kind;
  Probe Of;
  std::string Told;  // with the flag, and not without
};

std::string AllCommands(const MenuDisc& disc) {
  return fmt::format("{}", fmt::join(CommandsOf(disc.Session), "\n"));
}

std::string RootPage(const MenuDisc& disc) {
  const Track& root = PagesOf(disc, PageKind::Root);
  const PGC_P& chain = ChainCalled(disc.Session.Work(), "VTS1_Root");
  return fmt::format("palette {} slide {}. offset {} soft {} aspect {}", chain.PaletteName,
                     root.VideoPlays[0].SlideDuration, root.HighlightPlays[0].NumericalButtons,
                     root.HighlightPlays[0].Schemes[1].SelectionContrast[0], root.Aspect);
}

std::string Chains(const MenuDisc& disc) {
  std::string names;
  for (const auto& at : LivePgcs(disc.Session.Work())) {
    names += at.Chain->PGCName + " ";
  }
  return names;
}

std::string Files(const MenuDisc& disc) {
  const PageGroup& root = disc.Plan.Films[0].Menus.Groups.back();
  return PageFilesOf(disc.Session.Work(), root, 0, "Pages", disc.Kind.Rules)[0].Sublayer;
}

TEST(MenuStructure, EachFlagByItself) {
  const MenuDiscKind many{"", 9, 1, 1, 1};
  const MenuDiscKind wide{"", 2, 2, 2, 0, "PAL", "16:9"};
  const std::vector<FlagCase> cases{
      {&Rules::TitlePagesTurn, many, AllCommands, "Button9: LinkCN VMG_English_PGC1_PG1_CELL2 button=1 ="},
      {&Rules::SubtitlesSwitchOff, many, AllCommands, "SetSTN subpicture=1:OFF ; LinkPGCN VTS1_Root"},
      {&Rules::StartChosenOnce, many, AllCommands, "FirstPGC1: SetSTN subpicture=1:OFF"},
      {&Rules::EndsInOwnSet, many, AllCommands, "VTS2_TitlePGC Post1: CallSS RSM=VTS2_TitlePGC_PG1_CELL1,"},
      {&Rules::OneFilmHasTitleMenu,
       {"", 1, 2},
       AllCommands,
       "VMG_English_PGC1 Pre1: JumpSS vts_1, vts_ttn_1 : RootMenu"},
      {&Rules::ChaptersFromFirst, {"", 1, 7}, AllCommands, "VTS1_Chapter_PG1_CELL2 Button1"},
      {&Rules::TitleForEachFilm,
       {"", 2, 1, 1, 0, "PAL", "4:3", AfterFilm::Menu, AtInsertion::Menu, false},
       AllCommands,
       "JumpVTS_TT VTS1_Title2"},
      {&Rules::PagesForChoiceOnly, many, Chains, "VTS1_Root VTS1_Subtitle "},
      {&Rules::MenusHold, wide, RootPage, "slide ."},
      {&Rules::MenusBringPalette, wide, RootPage, "palette Menus "},
      {&Rules::SmoothMarks, wide, RootPage, "soft 10 "},
      {&Rules::WideMenus, wide, RootPage, "aspect 16:9"},
      {&Rules::RemoteKeysLead, wide, RootPage, "offset 3 "},  // the fourth button leads to the title choice
      {&Rules::PagesNamedByTrack, many, Files, "Pages\\Track_1.Root.SubLayer.bmp"},
  };
  for (const FlagCase& one : cases) {
    for (const bool on : {true, false}) {
      MenuDiscKind kind = one.Kind;
      kind.Rules.*one.Flag = on;
      MenuDisc disc(kind);
      ExpectMade(disc);
      EXPECT_EQ(Contains(one.Of(disc), one.Told), on) << one.Told << "\n" << one.Of(disc);
    }
  }
}

}  // namespace
}  // namespace quorvelant
