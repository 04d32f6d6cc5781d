// Painted pages, measured.
#include "menu/page_painter.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "menu/menu_themes.h"
#include "menu/page_layout.h"
#include "offers.h"
#include "platform/platform_pictures.h"
#include "support/rules_without.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

constexpr Color Black = 0;
constexpr Color White = 0xFFFFFF;

struct Box {
  int Left = 1 << 20;
  int Top = 1 << 20;
  int Right = -1;  // within
  int Bottom = -1;
  void Take(int x, int y) {
    Left = std::min(Left, x);
    Right = std::max(Right, x);
    Top = std::min(Top, y);
    Bottom = std::max(Bottom, y);
  }
};

// What is not of that colour.
Box InkOf(const Picture& picture, Color ground) {
  Box ink;
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x) {
      if (picture.At(x, y) != ground) {
        ink.Take(x, y);
      }
    }
  }
  return ink;
}

struct Writing {
  const char* Name;
  std::u32string_view Letters;  // which a name goes through over and over
  bool Italic = false;
};
constexpr Writing Writings[]{{"Latin", U"The Quick Brown Fox jumps over Wavy Ålesund ", false},
                             {"italic", U"fjWf Tfy Vjord ", true},
                             {"Cyrillic", U"Щедрый Журавль и Ёж ", false},
                             {"Arabic", U"الفيلم الطويل جدا ", false},
                             {"Japanese", U"第三の映画は長い題名を持つ", false}};

std::string NameOf(const Writing& writing, std::size_t letters) {
  std::string name;
  for (std::size_t i = 0; i < letters; ++i) {
    const char32_t letter =
        i + 1 == letters ? writing.Letters[0] : writing.Letters[i % writing.Letters.size()];
    if (letter < 0x80) {
      name += static_cast<char>(letter);
    } else if (letter < 0x800) {
      name += {static_cast<char>(0xC0 | letter >> 6), static_cast<char>(0x80 | (letter & 63))};
    } else {
      name += {static_cast<char>(0xE0 | letter >> 12), static_cast<char>(0x80 | (letter >> 6 & 63)),
               static_cast<char>(0x80 | (letter & 63))};
    }
  }
  return name;
}

class PaintedPages : public testing::Test {
 protected:
  // One black ground, white letters, no shade: what is not black is ink.
  MenuLook Plain(bool italic) const {
    MenuLook look = *CompleteLook({}, Rules::Players).Look;
    look.Ground = {};
    look.ShadePercent = 0;
    look.Accent = White;
    for (MenuFont& font : look.Fonts) {
      font.Ink = White;
      font.Italic = italic;
    }
    return look;
  }

  TextMeasure Measure() {
    return
        [this](std::string_view text, const TextStyle& style) { return service_->MeasureText(text, style); };
  }

  void ExpectInsideSafeLines(const PaintedPage& painted) const {
    const Box ink = InkOf(painted.Normal, Black);
    EXPECT_GE(ink.Left, 72);
    EXPECT_LE(ink.Right, 647);
    EXPECT_GE(ink.Top * 10, painted.Normal.Height);
    EXPECT_LT(ink.Bottom, painted.Normal.Height - painted.Normal.Height / 10);
  }

  // Each button holds all of its mark and nothing of another's.
  static void ExpectMarksInButtons(const PaintedPage& painted, const MenuPage& page) {
    std::vector<int> owner(std::size_t{720} * 576, -1);
    for (std::size_t i = 0; i < page.Buttons.size(); ++i) {
      const MenuButton& button = page.Buttons[i];
      EXPECT_TRUE(button.X1 >= 0 && button.X2 < 720 && button.Y1 >= 0 && button.Y2 < painted.Normal.Height);
      EXPECT_TRUE(button.Y1 % 2 == 0 && button.Y2 % 2 == 1) << button.Key;
      for (int y = button.Y1; y <= button.Y2; ++y) {
        for (int x = button.X1; x <= button.X2; ++x) {
          int& whose = owner[static_cast<std::size_t>(y * 720 + x)];
          ASSERT_EQ(whose, -1) << button.Key << " overlaps "
                               << page.Buttons[static_cast<std::size_t>(whose)].Key;
          whose = static_cast<int>(i);
        }
      }
    }
    std::vector<int> pixels(page.Buttons.size());
    for (int y = 0; y + SublayerRise < painted.Sublayer.Height; ++y) {
      for (int x = 0; x < 720; ++x) {
        if (painted.Sublayer.At(x, y) != White) {
          const int whose = owner[static_cast<std::size_t>((y + SublayerRise) * 720 + x)];
          ASSERT_NE(whose, -1) << "a mark outside of buttons at " << x << ", " << y;
          ++pixels[static_cast<std::size_t>(whose)];
        }
      }
    }
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      EXPECT_GT(pixels[i], 20) << page.Buttons[i].Key;
    }
  }

  // Lit letters lie on the painted ones.
  static void ExpectMarksOnTexts(const PaintedPage& painted, const MenuPage& page) {
    for (const PageMark& mark : page.Marks) {
      if (!mark.Text) {
        continue;
      }
      const int left = mark.Box ? mark.Box->X2 + 1 : 0;
      for (int y = mark.Text->Y; y < mark.Text->Y + 20; ++y) {
        for (int x = std::max(left, mark.Text->X); x < std::min(mark.Text->X + 60, 720); ++x) {
          if (painted.Sublayer.At(x, y) == Black) {
            ASSERT_GT(painted.Normal.At(x, y + SublayerRise) & 255U, 150U) << mark.Text->Text;
          }
        }
      }
    }
  }

  static void ExpectCutOnlyAtTheLeastSize(const MenuPage& page) {
    for (const PageText& text : page.Texts) {
      EXPECT_TRUE(text.PixelHeight == 22 || !text.Text.ends_with("\u2026")) << text.Text;
      EXPECT_FALSE(text.Text.empty());
    }
  }

  std::unique_ptr<PictureService> service_ = MakePlatformPictures();
};

TEST_F(PaintedPages, OfAnyNamesAreWholeAndInsideTheSafeLines) {
  for (const Writing& writing : Writings) {
    for (const std::size_t letters : {1U, 18U, 60U}) {
      const bool isPal = letters == 18;
      const OfferShape shape{
          .Audio = 8, .Subtitles = 11, .Chapters = 7, .IsNtsc = !isPal, .IsWide = letters == 60};
      const FilmOffer film = FilmOf(shape, NameOf(writing, letters), true);
      const std::vector<FilmOffer> films(9, film);
      const MenuLook look = Plain(writing.Italic);
      const DiscMenus menus = LayOutMenus(films, look, Measure(), Rules::Players);
      std::vector<PageGroup> groups = menus.Films[0].Groups;
      groups.push_back(*menus.Choice);
      for (const PageGroup& group : groups) {
        for (const MenuPage& page : group.Pages) {
          SCOPED_TRACE(
              fmt::format("{}, {} letters, kind {}", writing.Name, letters, static_cast<int>(group.Kind)));
          const PaintedPage painted =
              PaintPage(page, group.Kind, 0, look, shape.IsNtsc, {}, *service_, Rules::Players);
          ExpectInsideSafeLines(painted);
          ExpectMarksInButtons(painted, page);
          ExpectMarksOnTexts(painted, page);
          ExpectCutOnlyAtTheLeastSize(page);
        }
      }
    }
  }
}

// A film's pictures keep their shape on the screen, step with their marks and stand within them.
TEST_F(PaintedPages, ThumbnailsKeepTheirShapeWithinTheirMarks) {
  struct Case {
    bool IsNtsc;
    bool IsWide;
    bool WideMenus;
    double Shape;  // of the page's pixels
  };
  for (const Case& c : {Case{false, false, true, 1.25},
                        {true, false, true, 1.5},
                        {false, true, true, 1.25},
                        {true, true, true, 1.5},
                        {false, true, false, 5.0 / 3},
                        {true, true, false, 2}}) {
    const Rules rules = c.WideMenus ? Rules::Players : PlayersWithout(&Rules::WideMenus);
    const FilmOffer film = FilmOf({.Chapters = 6, .IsNtsc = c.IsNtsc, .IsWide = c.IsWide}, "Film");
    const MenuLook look = Plain(false);
    const MenuPage page = LayOutFilm(film, look, true, Measure(), rules).Groups[0].Pages[0];
    const int step = c.IsNtsc ? 125 : 150;
    EXPECT_EQ(page.Thumbnails[3].Y - page.Thumbnails[0].Y, step);
    EXPECT_EQ(page.Marks[3].Box->Y1 - page.Marks[0].Box->Y1, step);
    for (std::size_t i = 0; i < page.Thumbnails.size(); ++i) {
      const PageThumbnail& place = page.Thumbnails[i];
      EXPECT_NEAR(static_cast<double>(place.Width) / place.Height, c.Shape, 0.04);
      const PageBox& box = *page.Marks[i].Box;
      EXPECT_EQ(box.X1 + page.Marks[i].Frame, place.X);
      EXPECT_EQ(box.Y2 - page.Marks[i].Frame + SublayerRise, place.Y + place.Height - 1);
    }
    const ThumbnailSource red = [](std::size_t track, std::size_t scene) {
      Picture picture(32, 32);
      for (int i = 0; i < 32 * 32; ++i) {
        picture.Set(i % 32, i / 32, static_cast<Color>(track * 100 + scene + 1));
      }
      return picture;
    };
    const PaintedPage painted = PaintPage(page, PageKind::Chapter, 1, look, c.IsNtsc, red, *service_, rules);
    const PageThumbnail& last = page.Thumbnails.back();
    EXPECT_EQ(painted.Normal.At(last.X, last.Y), 106U);
    EXPECT_EQ(painted.Normal.At(last.X + last.Width - 1, last.Y + last.Height - 1), 106U);
    EXPECT_EQ(painted.Normal.At(last.X + last.Width, last.Y), Black);
  }
}

// Four colours in steps of coverage, or two.
TEST_F(PaintedPages, MarksHaveTheColoursOfTheirRules) {
  const MenuLook look = Plain(false);
  const MenuPage page =
      LayOutFilm(FilmOf({}, "Söder & Øst"), look, false, Measure(), Rules::Players).Groups[0].Pages[0];
  const auto colors = [&](const Rules& rules) {
    const Picture marks = PaintPage(page, PageKind::Root, 0, look, true, {}, *service_, rules).Sublayer;
    std::set<Color> found;
    for (int i = 0; i < marks.Width * marks.Height; ++i) {
      found.insert(marks.At(i % marks.Width, i / marks.Width));
    }
    return found;
  };
  EXPECT_EQ(colors(Rules::Players), (std::set<Color>{Black, 0x555555, 0xAAAAAA, White}));
  EXPECT_EQ(colors(PlayersWithout(&Rules::SmoothMarks)), (std::set<Color>{Black, White}));
}

// A picture of any size becomes the background; one that is missing is an error that names it.
TEST_F(PaintedPages, BackgroundsAreStretchedAndPreviewsLight) {
  const TempFolder folder;
  Picture small(3, 5);
  std::fill(small.Pixels.begin(), small.Pixels.end(), std::uint8_t{90});
  service_->Save(small, folder / "small.png");
  MenuLook look = Plain(false);
  look.Backgrounds.fill(folder / "small.png");
  const MenuPage page =
      LayOutFilm(FilmOf({}, "F"), look, false, Measure(), Rules::Players).Groups[0].Pages[0];
  const PaintedPage painted = PaintPage(page, PageKind::Root, 0, look, false, {}, *service_, Rules::Players);
  EXPECT_EQ(painted.Normal.At(0, 0), 0x5A5A5AU);
  EXPECT_EQ(painted.Normal.At(719, 575), 0x5A5A5AU);
  look.Selection = 0x123456;
  const PageBox& cursor = *page.Marks[0].Box;
  const int row = cursor.Y1 + SublayerRise;
  EXPECT_EQ(PreviewPage(painted, page, 0, look).At(cursor.X1 + 1, row), 0x123456U);
  EXPECT_EQ(PreviewPage(painted, page, 1, look).At(cursor.X1 + 1, row), 0x5A5A5AU);
  look.Backgrounds.fill(folder / "none.png");
  EXPECT_THROW((void)PaintPage(page, PageKind::Root, 0, look, false, {}, *service_, Rules::Players),
               PictureError);
}

// A background without bands: rows of one height differ, neighbouring steps are mixed.
TEST_F(PaintedPages, BuiltInBackgroundsShowNoBands) {
  for (const std::string_view theme : MenuThemeNames()) {
    MenuLook look;
    look.Theme = theme;
    const MenuLook whole = *CompleteLook(look, Rules::Players).Look;
    const Picture page = PaintPage({}, PageKind::Root, 0, whole, false, {}, *service_, Rules::Players).Normal;
    int flat = 0;  // rows that are of one colour for a stretch
    for (int y = 0; y < page.Height; ++y) {
      int same = 0;
      for (int x = 1; x < page.Width; ++x) {
        same = page.At(x, y) == page.At(x - 1, y) ? same + 1 : 0;
        flat += same == 60 ? 1 : 0;
      }
    }
    EXPECT_LT(flat, 1000) << theme;  // of 6000 stretches
  }
}

}  // namespace
}  // namespace quorvelant
