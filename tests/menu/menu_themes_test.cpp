#include "menu/menu_themes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(MenuThemes, FillWhatALookLeavesOpen) {
  MenuLook look;
  look.Fonts[1].Bold = true;
  look.Fonts[1].PixelHeight = 40;
  look.Action = 0x112233;
  const MenuLook whole = *CompleteLook(look, Rules::Players).Look;
  EXPECT_EQ(whole.Fonts[1].PixelHeight, 40);
  EXPECT_EQ(whole.Fonts[1].Name, "sans-serif");
  EXPECT_NE(whole.Fonts[1].Ink, ThemesColor);
  EXPECT_EQ(whole.Action, 0x112233U);
  EXPECT_NE(whole.Selection, ThemesColor);
  const MenuLook classic = *CompleteLook({}, Rules::Classic).Look;
  EXPECT_EQ(classic.Fonts[3].Name, "MS Sans Serif");
  EXPECT_EQ(classic.Fonts[3].PixelHeight, 19);
}

TEST(MenuThemes, OfTheUsersComeFromTheirFolder) {
  const TempFolder folder;
  folder.Write("theme.toml",
               "base = \"ember\"\naccent = \"#102030\"\n[colors]\nselection = \"#405060\"\n"
               "[fonts.item]\nname = \"Own\"\n[backgrounds]\nroot = \"wood.png\"\n");
  MenuLook look;
  look.Theme = folder.Path().string();
  look.Backgrounds[1] = "mine.png";
  const MenuLook whole = *CompleteLook(look, Rules::Players).Look;
  MenuLook ember;
  ember.Theme = "Ember";
  EXPECT_EQ(whole.Ground, CompleteLook(ember, Rules::Players).Look->Ground);
  EXPECT_EQ(whole.Accent, 0x302010U);
  EXPECT_EQ(whole.Selection, 0x605040U);
  EXPECT_EQ(whole.Fonts[1].Name, "Own");
  EXPECT_EQ(whole.Fonts[1].PixelHeight, 30);
  EXPECT_EQ(whole.Backgrounds[0], folder / "wood.png");
  EXPECT_EQ(whole.Backgrounds[1], "mine.png");
}

TEST(MenuThemes, ErrorsNameFileAndLine) {
  const TempFolder folder;
  MenuLook look;
  look.Theme = folder.Path().string();
  const auto place = [&](const std::string& text) {
    folder.Write("theme.toml", text);
    const CompletedLook completed = CompleteLook(look, Rules::Players);
    EXPECT_FALSE(completed.Look);
    return completed.Errors.at(0).Place;
  };
  const std::string file = folder / "theme.toml";
  EXPECT_EQ(place("base = \"Ember\"\nshine = 3\n"), file + ":2");
  EXPECT_EQ(place("base = \"Nowhere\"\n"), file + ":1");
  EXPECT_EQ(place("\n[fonts.item]\nsize = 4\n"), file + ":3");
  EXPECT_EQ(place("\n\n= 3\n"), file + ":3");
  look.Theme = "Midnigth";
  EXPECT_THAT(CompleteLook(look, Rules::Players).Errors.at(0).Text, testing::HasSubstr("Midnight"));
}

}  // namespace
}  // namespace quorvelant
