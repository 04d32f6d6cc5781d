// Discs with menus under a viewer's fingers: every button, page and key does what it says.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "menu_disc.h"
#include "support/disc_judges.h"
#include "support/menu_player.h"

namespace quorvelant {
namespace {

class Press : public testing::TestWithParam<MenuDiscKind> {
 protected:
  Press() : disc_(GetParam()) {}

  void SetUp() override {
    const Outcome made = disc_.Make();
    ASSERT_TRUE(made.IsDone()) << made.Words.Place << ": " << made.Words.Text;
    EXPECT_EQ(disc_.Author(), "");
    player_ = std::make_unique<MenuPlayer>(disc_.Folder);
  }
  void TearDown() override {
    if (player_) {
      EXPECT_THAT(player_->Complaints(), testing::IsEmpty());
    }
  }

  [[nodiscard]] bool IsOnly() const { return !disc_.Plan.Choice; }
  static std::string Root(std::size_t film) { return fmt::format("set {} menu 1 page 1", film + 1); }
  [[nodiscard]] static std::string Title(std::size_t film, int chapter = 1) {
    return fmt::format("title {} chapter {}", film + 1, chapter);
  }
  void ExpectPlace(const std::string& place, const std::string& what) const {
    EXPECT_EQ(player_->Place(), place) << what;
  }

  static int NumberOf(const MenuPage& page, const std::string& key) {
    const auto found = std::ranges::find(page.Buttons, key, &MenuButton::Key);
    EXPECT_NE(found, page.Buttons.end()) << key;
    return static_cast<int>(found - page.Buttons.begin()) + 1;
  }
  void PressKey(const MenuPage& page, const std::string& key) {
    EXPECT_EQ(player_->Buttons(), static_cast<int>(page.Buttons.size())) << player_->Place();
    player_->Press(NumberOf(page, key));
  }

  const PageGroup& RootOf(std::size_t film) const { return disc_.Plan.Films[film].Menus.Groups.back(); }
  void PlayFrom(std::size_t film) { PressKey(RootOf(film).Pages[0], menu_key::Play); }
  void GoToRoot(std::size_t film) {
    player_->PlayTitle(static_cast<int>(film) + 1);
    player_->Press(RemoteKey::Menu);
    ExpectPlace(Root(film), "menu key");
  }

  // To the page by buttons alone, from the root of its film.
  void GoToPage(std::size_t film, const PageGroup& group, const std::string& rootKey, std::size_t page) {
    GoToRoot(film);
    PressKey(RootOf(film).Pages[0], rootKey);
    for (std::size_t i = 0; i < page; ++i) {
      PressKey(group.Pages[i], menu_key::Next);
    }
  }

  // What an item does, on a page of the chain of that number.
  void ExpectItem(std::size_t film, const PageGroup& group, const std::string& key) {
    if (group.Kind == PageKind::Chapter) {
      return ExpectPlace(Title(film, std::stoi(key)), "chapter " + key);
    }
    ExpectPlace(Root(film), "stream " + key);
    PlayFrom(film);
    ExpectPlace(Title(film), "play after stream " + key);
    if (group.Kind == PageKind::Audio) {
      EXPECT_EQ(player_->Audio(), std::stoi(key) - 1);
    } else {
      EXPECT_EQ(player_->Subtitles(), key == menu_key::SubtitlesOff ? -1 : std::stoi(key) - 1);
    }
  }

  void PressAll(std::size_t film, const PageGroup& group, const std::string& rootKey, int chain) {
    const auto placeOf = [&](std::size_t page) {
      return fmt::format("set {} menu {} page {}", film + 1, chain, page + 1);
    };
    for (std::size_t page = 0; page < group.Pages.size(); ++page) {
      for (const MenuButton& button : group.Pages[page].Buttons) {
        GoToPage(film, group, rootKey, page);
        ExpectPlace(placeOf(page), rootKey);
        EXPECT_EQ(player_->FirstNumber(), static_cast<int>(group.Pages[page].FirstItem));
        PressKey(group.Pages[page], button.Key);
        if (button.Key == menu_key::Main) {
          ExpectPlace(Root(film), "main");
        } else if (button.Key == menu_key::Next || button.Key == menu_key::Previous) {
          ExpectPlace(placeOf(button.Key == menu_key::Next ? page + 1 : page - 1), button.Key);
        } else {
          ExpectItem(film, group, button.Key);
        }
      }
      GoToPage(film, group, rootKey, page);
      player_->Press(RemoteKey::Return);
      ExpectPlace(Root(film), "return key");
    }
  }

  void PressFilm(std::size_t film) {
    GoToRoot(film);
    int chain = 1;
    for (const PageGroup& group : disc_.Plan.Films[film].Menus.Groups) {
      const char* const key = group.Kind == PageKind::Audio      ? menu_key::Audio
                              : group.Kind == PageKind::Subtitle ? menu_key::Subtitle
                                                                 : menu_key::Chapter;
      if (group.Kind != PageKind::Root) {
        PressAll(film, group, key, ++chain);
      }
    }
    GoToRoot(film);
    PlayFrom(film);
    ExpectPlace(Title(film), "play");
  }

  void PressChoice() {
    const PageGroup& choice = *disc_.Plan.Choice;
    for (std::size_t page = 0; page < choice.Pages.size(); ++page) {
      const auto placeOf = [](std::size_t number) { return fmt::format("manager page {}", number + 1); };
      for (const MenuButton& button : choice.Pages[page].Buttons) {
        player_->Press(RemoteKey::Title);
        for (std::size_t i = 0; i < page; ++i) {
          PressKey(choice.Pages[i], menu_key::Next);
        }
        ExpectPlace(placeOf(page), "title choice");
        PressKey(choice.Pages[page], button.Key);
        if (button.Key == menu_key::Next || button.Key == menu_key::Previous) {
          ExpectPlace(placeOf(button.Key == menu_key::Next ? page + 1 : page - 1), button.Key);
        } else {
          ExpectPlace(Root(std::stoul(button.Key) - 1), "film " + button.Key);
        }
      }
    }
  }

  // The keys while a film plays, at its last chapter.
  void PressKeysIn(std::size_t film) {
    const std::string home = IsOnly() ? Root(0) : "manager page 1";
    const int chapter = GetParam().Chapters;
    player_->PlayChapter(static_cast<int>(film) + 1, chapter);
    player_->Press(RemoteKey::Title);
    ExpectPlace(home, "title key");
    player_->Press(RemoteKey::Resume);
    ExpectPlace(Title(film, chapter), "resume key");
    player_->Press(RemoteKey::Menu);
    ExpectPlace(Root(film), "menu key");
    player_->Press(RemoteKey::Resume);
    ExpectPlace(Title(film, chapter), "resume key");
    player_->PlayToEnd();
    ExpectPlace(EndOf(film, home), "end");
  }

  [[nodiscard]] std::string EndOf(std::size_t film, const std::string& home) const {
    switch (GetParam().After) {
      case AfterFilm::Menu:
        return home;
      case AfterFilm::Next:
        return film + 1 < disc_.Plan.Films.size() ? Title(film + 1) : home;
      case AfterFilm::Repeat:
        return Title(film);
      case AfterFilm::Stop:
        return "stop";
    }
    return {};
  }

  // All films of a few, the first and last of many.
  [[nodiscard]] std::vector<std::size_t> Sampled() const {
    const std::size_t films = disc_.Plan.Films.size();
    return films == 1 ? std::vector<std::size_t>{0} : std::vector<std::size_t>{0, films - 1};
  }

  MenuDisc disc_;
  std::unique_ptr<MenuPlayer> player_;
};

// A disc without menus plays its films and stops; the keys for menus start a film.
void PressPlain(const MenuDisc& disc, MenuPlayer& player) {
  for (int title = 1; title <= disc.Kind.Titles; ++title) {
    EXPECT_EQ(player.Place(), fmt::format("title {} chapter 1", title));
    player.PlayToEnd();
  }
  EXPECT_EQ(player.Place(), "stop");
  player.PlayTitle(disc.Kind.Titles);
  player.Press(RemoteKey::Title);
  EXPECT_EQ(player.Place(), "title 1 chapter 1");
  player.Press(RemoteKey::Menu);
  EXPECT_EQ(player.Place(), "title 1 chapter 1");
}

TEST_P(Press, DoesWhatTheLabelSays) {
  ASSERT_TRUE(player_);
  if (!GetParam().HasMenus) {
    return PressPlain(disc_, *player_);
  }
  ExpectPlace(GetParam().Insertion != AtInsertion::Menu ? Title(0)
              : IsOnly()                                ? Root(0)
                                                        : "manager page 1",
              "start");
  if (GetParam().Insertion == AtInsertion::AllFilms) {
    for (std::size_t film = 1; film < disc_.Plan.Films.size(); ++film) {
      player_->PlayToEnd();
      ExpectPlace(Title(film), "all films");
    }
  }
  if (!IsOnly()) {
    PressChoice();
  }
  for (const std::size_t film : Sampled()) {
    PressFilm(film);
    PressKeysIn(film);
  }
  if (HasChecker()) {
    EXPECT_THAT(CheckerErrors(disc_.Folder), testing::IsEmpty());
  }
}

const std::vector<MenuDiscKind> Kinds{
    {.Name = "OneFilmOnly"},
    {.Name = "OneOfAll", .Chapters = 8, .Audio = 2, .Subtitles = 2},
    {.Name = "SevenChaptersNtsc", .Chapters = 7, .Standard = "NTSC"},
    {.Name = "WideNtsc", .Chapters = 2, .Audio = 3, .Subtitles = 1, .Standard = "NTSC", .Aspect = "16:9"},
    {.Name = "WidePalTwo", .Titles = 2, .Chapters = 3, .Audio = 2, .Aspect = "16:9"},
    {.Name = "ManyStreams", .Audio = 8, .Subtitles = 32},
    {.Name = "MostChapters", .Chapters = 99},
    {.Name = "NineFilms", .Titles = 9, .Chapters = 2, .After = AfterFilm::Next},
    {.Name = "AllFilms", .Titles = 2, .Subtitles = 1, .Insertion = AtInsertion::AllFilms},
    {.Name = "Repeats",
     .Titles = 2,
     .Chapters = 2,
     .After = AfterFilm::Repeat,
     .Insertion = AtInsertion::FirstFilm},
    {.Name = "Stops", .Titles = 1, .Chapters = 2, .Audio = 0, .After = AfterFilm::Stop},
    {.Name = "MostFilms", .Titles = 99},
    {.Name = "PlainOne", .Chapters = 3, .HasMenus = false},
    {.Name = "PlainThree", .Titles = 3, .Subtitles = 1, .HasMenus = false},
};
INSTANTIATE_TEST_SUITE_P(Discs, Press, testing::ValuesIn(Kinds),
                         [](const auto& kind) { return std::string(kind.param.Name); });

}  // namespace
}  // namespace quorvelant
