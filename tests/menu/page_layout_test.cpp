#include "menu/page_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "menu/menu_themes.h"
#include "offers.h"
#include "support/rules_without.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Letters half as wide as high, and a little room around them.
TextSize Measured(std::string_view text, const TextStyle& style) {
  const int width = static_cast<int>(text.size()) * style.PixelHeight / 2;
  const int height = style.PixelHeight * 5 / 4;
  return {.Width = width,
          .Height = height,
          .InkLeft = 1,
          .InkTop = 2,
          .InkRight = width,
          .InkBottom = height - 2};
}

FilmMenus LaidOut(const FilmOffer& film, const Rules& rules, bool isOnlyFilm = false) {
  return LayOutFilm(film, *CompleteLook({}, rules).Look, isOnlyFilm, &Measured, rules);
}

const PageGroup& GroupOf(const FilmMenus& menus, PageKind kind) {
  return *std::find_if(menus.Groups.begin(), menus.Groups.end(),
                       [kind](const PageGroup& group) { return group.Kind == kind; });
}

std::vector<std::string> KeysOf(const MenuPage& page) {
  std::vector<std::string> keys;
  for (const MenuButton& button : page.Buttons) {
    keys.push_back(button.Key);
  }
  return keys;
}

std::vector<std::string> TextsOf(const MenuPage& page) {
  std::vector<std::string> texts;
  for (const PageText& text : page.Texts) {
    texts.push_back(text.Text);
  }
  return texts;
}

// Where traditional buttons stand.
TEST(PageLayout, FixedPlacesAreTraditional) {
  struct Case {
    const char* Name;
    PageKind Kind;
    bool IsNtsc;
    std::size_t Page;
    std::size_t Button;
    MenuButton Expected;
  };
  const Case cases[]{
      {"play", PageKind::Root, false, 0, 0, {195, 395, 80, 125, 2, "Play"}},
      {"second line", PageKind::Root, false, 0, 1, {195, 495, 130, 180, 2, "Audio"}},
      {"fourth line", PageKind::Root, false, 0, 3, {195, 495, 230, 280, 2, "Chapter"}},
      {"root main", PageKind::Root, true, 0, 4, {275, 475, 434, 474, 3, "Main"}},
      {"fourth stream", PageKind::Audio, false, 0, 3, {95, 215, 265, 278, 2, "4"}},
      {"fifth stream", PageKind::Audio, false, 0, 4, {395, 515, 115, 128, 2, "5"}},
      {"off", PageKind::Subtitle, false, 0, 0, {95, 305, 115, 128, 2, "Subtitles OFF"}},
      {"fifth item", PageKind::Subtitle, false, 0, 4, {95, 255, 315, 328, 2, "4"}},
      {"sixth item", PageKind::Subtitle, false, 0, 5, {395, 555, 115, 128, 2, "5"}},
      {"second page", PageKind::Subtitle, false, 1, 0, {95, 255, 115, 128, 2, "10"}},
      {"previous page", PageKind::Subtitle, false, 1, 1, {20, 245, 530, 570, 2, "Previous"}},
      {"thumbnail", PageKind::Chapter, false, 0, 0, {120, 274, 43, 168, 1, "1"}},
      {"third, PAL", PageKind::Chapter, false, 0, 2, {120, 274, 343, 468, 1, "3"}},
      {"third, NTSC", PageKind::Chapter, true, 0, 2, {120, 274, 293, 399, 1, "3"}},
      {"right column", PageKind::Chapter, false, 0, 3, {420, 574, 43, 168, 1, "4"}},
      {"chapter main", PageKind::Chapter, false, 0, 6, {295, 495, 530, 570, 3, "Main"}},
      {"next chapters", PageKind::Chapter, false, 0, 7, {520, 705, 530, 560, 2, "Next"}},
  };
  for (const Case& c : cases) {
    const OfferShape shape{.Audio = 8, .Subtitles = 10, .Chapters = 7, .IsNtsc = c.IsNtsc};
    const FilmMenus menus = LaidOut(FilmOf(shape, "Film"), Rules::Classic);
    EXPECT_EQ(GroupOf(menus, c.Kind).Pages.at(c.Page).Buttons.at(c.Button), c.Expected) << c.Name;
  }
  const std::vector<FilmOffer> films(9, FilmOf({}, "Film"));
  const PageGroup choice =
      *LayOutMenus(films, *CompleteLook({}, Rules::Classic).Look, &Measured, Rules::Classic).Choice;
  EXPECT_EQ(choice.Pages.at(0).Buttons.at(4), (MenuButton{395, 525, 115, 128, 2, "5"}));
  EXPECT_EQ(choice.Pages.at(1).Buttons.at(0), (MenuButton{95, 225, 115, 128, 2, "9"}));
}

// Texts, marks and thumbnails of the traditional pages.
TEST(PageLayout, FixedTextsAndMarksAreTraditional) {
  const FilmMenus menus = LaidOut(FilmOf({.Audio = 1, .Subtitles = 1, .Chapters = 2, .IsNtsc = true}, "Film"),
                                  Rules::Classic, true);
  const MenuPage& root = GroupOf(menus, PageKind::Root).Pages[0];
  EXPECT_THAT(TextsOf(root), ElementsAre("Film Options", "Play Film", "Audio Options", "Subtitle Options",
                                         "Chapter Jump", "Main Menu"));
  EXPECT_EQ(root.Texts[0], (PageText{"Film Options", 250, 30, FontSlot::PageTitle, 32}));
  EXPECT_EQ(root.Texts[2], (PageText{"Audio Options", 200, 135, FontSlot::Item, 32}));
  EXPECT_EQ(root.Texts[5], (PageText{"Main Menu", 280, 434, FontSlot::Main, 32}));
  EXPECT_EQ(root.Marks[0].Text, (PageText{"Play Film", 200, 83, FontSlot::Item, 32}));
  const MenuPage& audio = GroupOf(menus, PageKind::Audio).Pages[0];
  EXPECT_THAT(TextsOf(audio), ElementsAre("Audio Selection", "Audio 1", "Main Menu"));
  EXPECT_EQ(audio.Marks[0].Box, (PageBox{100, 210, 120, 123}));
  const MenuPage& subtitle = GroupOf(menus, PageKind::Subtitle).Pages[0];
  EXPECT_EQ(subtitle.Marks[0].Box, (PageBox{100, 300, 120, 123}));
  EXPECT_EQ(subtitle.Marks[1].Box, (PageBox{100, 250, 170, 173}));
  const MenuPage& chapter = GroupOf(menus, PageKind::Chapter).Pages[0];
  EXPECT_EQ(chapter.Texts[1], (PageText{"1", 90, 50, FontSlot::Small, 19}));
  EXPECT_EQ(chapter.Thumbnails[0], (PageThumbnail{0, 125, 50, 144, 96}));
  EXPECT_EQ(chapter.Thumbnails[1].Y, 50 + 19 * 5 / 4 + 100);  // below the printed number
  EXPECT_EQ(chapter.Marks[1].Box, (PageBox{125, 268, 173, 268}));
}

// How many buttons stand on each page, as far as there are any.
TEST(PageLayout, PagesBreakWhereTheyAreFull) {
  struct Case {
    OfferShape Shape;
    PageKind Kind;
    std::vector<std::size_t> Buttons;  // a page; "Main Menu" and arrows are among them
  };
  const Case cases[]{
      {{.Audio = 4}, PageKind::Audio, {5}},
      {{.Audio = 8}, PageKind::Audio, {9}},
      {{.Subtitles = 9}, PageKind::Subtitle, {11}},
      {{.Subtitles = 10}, PageKind::Subtitle, {12, 3}},
      {{.Subtitles = 32}, PageKind::Subtitle, {12, 13, 13, 5}},
      {{.Chapters = 6}, PageKind::Chapter, {7}},
      {{.Chapters = 7}, PageKind::Chapter, {8, 3}},
      {{.Chapters = 13}, PageKind::Chapter, {8, 9, 3}},
      {{}, PageKind::Root, {2}},
  };
  for (const Rules* rules : {&Rules::Classic, &Rules::Players}) {
    for (const Case& c : cases) {
      const FilmMenus menus = LaidOut(FilmOf(c.Shape, "Film"), *rules);
      std::vector<std::size_t> buttons;
      for (const MenuPage& page : GroupOf(menus, c.Kind).Pages) {
        buttons.push_back(page.Buttons.size());
        EXPECT_EQ(page.Marks.size(), page.Buttons.size());
      }
      EXPECT_EQ(buttons, c.Buttons) << "kind " << static_cast<int>(c.Kind);
    }
    for (const auto& [films, last] : {std::pair{8U, 8U}, {9U, 2U}, {99U, 4U}}) {
      const std::vector<FilmOffer> offers(films, FilmOf({}, "Film"));
      const DiscMenus menus = LayOutMenus(offers, *CompleteLook({}, *rules).Look, &Measured, *rules);
      EXPECT_EQ(menus.Choice->Pages.size(), (films + 7) / 8);
      EXPECT_EQ(menus.Choice->Pages.back().Buttons.size(), last);
      EXPECT_EQ(menus.Choice->Pages.back().FirstItem, (films - 1) / 8 * 8);
    }
  }
}

// What a viewer of today finds on pages, and that a single flag decides it.
TEST(PageLayout, PagesOfTodayNameStreamsAndLeadWhereThereIsSomething) {
  FilmOffer film = FilmOf({.Subtitles = 10, .IsWide = true}, "Film");
  film.Audio = {{1, "English", "Normal"}, {3, "German", "Directors Comments"}, {4, "English", "Normal"}};
  const FilmMenus menus = LaidOut(film, Rules::Players, true);
  const MenuPage& audio = GroupOf(menus, PageKind::Audio).Pages[0];
  EXPECT_THAT(TextsOf(audio), ElementsAre("Audio Selection", "English 1", "German (Directors Comments)",
                                          "English 2", "Main Menu"));
  EXPECT_THAT(KeysOf(audio), ElementsAre("1", "3", "4", "Main"));
  const MenuPage& last = GroupOf(menus, PageKind::Subtitle).Pages[1];
  EXPECT_THAT(KeysOf(last), ElementsAre("10", "Previous", "Main"));
  EXPECT_THAT(KeysOf(GroupOf(menus, PageKind::Root).Pages[0]), ElementsAre("Play", "Audio", "Subtitle"));

  const auto rootKeys = [&](const Rules& rules) {
    return KeysOf(GroupOf(LaidOut(film, rules, true), PageKind::Root).Pages[0]);
  };
  EXPECT_THAT(rootKeys(PlayersWithout(&Rules::OneFilmHasTitleMenu)), testing::Contains("Main"));
  EXPECT_TRUE(GroupOf(menus, PageKind::Root).IsWide);
  EXPECT_FALSE(LaidOut(film, PlayersWithout(&Rules::WideMenus)).Groups[0].IsWide);
  const FilmMenus fixed = LaidOut(film, PlayersWithout(&Rules::PagesFitTheScreen));
  EXPECT_EQ(fixed.Groups[0].Pages[0].Texts[0].X, 250);
}

}  // namespace
}  // namespace quorvelant
