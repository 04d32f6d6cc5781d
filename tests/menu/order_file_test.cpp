// Descriptions of discs as files: what they mean, and what is wrong with them by line.
#include "menu/order_file.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

TEST(OrderFile, EveryKeyReachesTheOrder) {
  const ReadOrder read =
      ReadOrderText(TempFolder::Read(SourceFile("fuzz/seeds/menu_order/whole.toml")), "set/disc.toml");
  ASSERT_TRUE(read.Order);
  const DiscOrder& order = *read.Order;
  EXPECT_EQ(
      order.Films[0],
      (OrderedFilm{
          .Name = "Ein Film",
          .Video = "set/film.m2v",
          .Audio = {{"set/film.en.ac3", "English", ""}, {"set/b.ac3", "German", "Directors Comments"}},
          .Subtitles = {{"set/film.en.sst", "English", ""}},
          .Chapters = {{"00:10:00", "", "set/disc.toml:21"}, {"00:20:00:12", "Two", "set/disc.toml:21"}},
          .After = AfterFilm::Next,
          .Place = "set/disc.toml:16"}));
  EXPECT_EQ(order.Films[1], (OrderedFilm{.Video = "set/two.m2v",
                                         .ChapterSeconds = 5410,
                                         .ChapterNames = {"One"},
                                         .Place = "set/disc.toml:23"}));
  EXPECT_TRUE(order.HasMenus && order.Menus.Audio && order.Menus.Chapter && !order.Menus.Subtitle);
  EXPECT_EQ(order.Insertion, AtInsertion::AllFilms);
  EXPECT_EQ(order.StartSubtitles, "German");
  const MenuLook& look = order.Look;
  EXPECT_EQ(look.Theme, "set/themes/own");
  EXPECT_EQ(look.LabelLanguage, "Czech");
  EXPECT_EQ(look.OwnLabels.at("Play"), "Los");
  EXPECT_THAT(look.Backgrounds, ElementsAre("set/a.png", "", "", "", "set/b.png"));
  EXPECT_EQ(look.Fonts[0],
            (MenuFont{.Name = "DejaVu Sans", .PixelHeight = 30, .Bold = true, .Ink = 0x0080FF}));
  EXPECT_TRUE(look.Fonts[3].Italic);
  EXPECT_EQ(look.Selection, 0x00CCFFU);
}

struct UnfitText {
  std::string Text;
  std::vector<std::string> Errors;  // code and line
};

TEST(OrderFile, ErrorsTellTheirLines) {
  const std::string film = "[[title]]\nvideo = \"a.m2v\"\n";
  const std::vector<UnfitText> cases{
      {"", {"order-key-missing 1"}},
      {"x = [", {"order-no-toml 1"}},
      {"title = []\nthema = \"a\"\nmenus = [\"audio\", 2]\n", {"order-key-unknown 2", "order-value-unfit 3"}},
      {film + "chapters = { every = \"0m\" }\naudio = [\"a.ac3\", { langage = \"de\" }]\n",
       {"order-value-unfit 3", "order-key-unknown 4", "order-key-missing 4"}},
      {film + "chapters = { every = \"10m\", file = \"a.txt\" }\nname = \"\"\nsubtitles = 3\n",
       {"order-value-unfit 3", "order-value-unfit 4", "order-value-unfit 5"}},
      {"[[title]]\nname = \"A\"\nafter = \"menus\"\n[fonts]\nitem = { size = 4, color = \"red\" }\n",
       {"order-key-missing 1", "order-value-unfit 3", "order-value-unfit 5", "order-value-unfit 5"}},
      {film + "audio = { file = \"a.ac3\" }\n[labels]\nPlay = 3\n[backgrounds]\nmain = \"a.png\"\n",
       {"order-value-unfit 3", "order-value-unfit 5", "order-key-unknown 7"}},
      {"play = \"film\"\nstart_subtitles = \"xx\"\nlabel_language = 3\ntitle_names = 1\n" + film,
       {"order-value-unfit 1", "order-value-unfit 2", "order-value-unfit 3", "order-value-unfit 4"}},
  };
  for (const UnfitText& row : cases) {
    std::vector<std::string> errors;
    for (const Message& error : ReadOrderText(row.Text, "disc.toml").Errors) {
      errors.push_back(fmt::format("{} {}", error.Code, error.Place.substr(error.Place.find(':') + 1)));
    }
    EXPECT_EQ(errors, row.Errors) << row.Text;
  }
}

}  // namespace
}  // namespace quorvelant
