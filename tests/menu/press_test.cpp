// Discs with menus under a viewer's fingers: every button, page and key does what it says.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string_view>

#include "menu_disc.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/menu_player.h"
#include "verify/verify_disc.h"

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

  // Arrows lead from the first button to each.
  void ExpectArrowsReachAll() const {
    std::set<int> reached{1};
    for (bool grows = true; grows;) {
      const std::set<int> before = reached;
      for (const int button : before) {
        for (const char direction : std::string_view("udlr")) {
          reached.insert(player_->Arrow(button, direction));
        }
      }
      grows = reached != before;
    }
    EXPECT_EQ(static_cast<int>(reached.size()), player_->Buttons()) << player_->Place();
  }

  // A page that waits has one navigation pack, and its picture.
  void ExpectOnePackAPage() const {
    std::size_t pages = 0;
    for (const PageGroup& group : disc_.Plan.Films[0].Menus.Groups) {
      pages += group.Pages.size();
    }
    const std::string vob = TempFolder::Read(disc_.Folder + "/VTS_01_0.VOB");
    constexpr std::size_t Sector = 2048;
    constexpr std::size_t SystemHeaderAt = 14;
    std::size_t packs = 0;
    for (std::size_t at = 0; at < vob.size(); at += Sector) {
      packs += vob.compare(at + SystemHeaderAt, 4, std::string("\0\0\1\xBB", 4)) == 0 ? 1U : 0U;
    }
    EXPECT_EQ(packs, pages);
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
        ExpectArrowsReachAll();
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
  const VerifyResult read = VerifyDisc(disc_.Folder, disc_.Ui);
  for (const DiscFinding& finding : read.Findings.All()) {
    EXPECT_EQ(finding.Kind->Level, Severity::Information) << MessageOfFinding(finding, "").Text;
  }
  if (player_->Place() == Title(0)) {
    EXPECT_EQ(player_->Subtitles(), GetParam().StartSubtitles - 1);
  }
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
  ExpectOnePackAPage();
  if (!IsOnly()) {
    PressChoice();
  }
  for (const std::size_t film : Sampled()) {
    PressFilm(film);
    PressKeysIn(film);
  }
  if (GetParam().Titles * GetParam().Chapters <= 18) {
    EXPECT_THAT(WalkDisc(disc_.Folder).Complaints, testing::IsEmpty());
  }
  if (HasChecker()) {
    EXPECT_THAT(CheckerErrors(disc_.Folder), testing::IsEmpty());
  }
}

constexpr const char* Ntsc = "NTSC";
constexpr const char* Wide = "16:9";

// Titles, chapters, streams of sound and of subtitles, and what else tells the discs apart.
const std::vector<MenuDiscKind> Kinds{
    {"OneChapterAlone", 1, 1, 1, 0},
    {"Silent", 1, 2, 0, 0},
    {"TwoChapters", 1, 2, 1, 0},
    {"TwoSounds", 1, 1, 2, 0, Ntsc},
    {"OneSubtitle", 1, 1, 1, 1},
    {"OneOfAll", 1, 2, 2, 1, Ntsc},
    {"SixChapters", 1, 6, 1, 0},
    {"SevenChapters", 1, 7, 1, 0, Ntsc},
    {"TwelveChapters", 1, 12, 1, 2},
    {"ThirteenChapters", 1, 13, 3, 2, Ntsc, Wide},
    {"FiftyChapters", 1, 50, 1, 0, Ntsc, Wide},
    {"MostChapters", 1, 99, 1, 0},
    {"MostChaptersNtsc", 1, 99, 2, 1, Ntsc},
    {"FourSounds", 1, 2, 4, 0},
    {"FiveSounds", 1, 1, 5, 4, "PAL", Wide},
    {"MostSounds", 1, 1, 8, 0, Ntsc},
    {"MostSoundsWide", 1, 3, 8, 3, Ntsc, Wide},
    {"NineSubtitles", 1, 1, 1, 9},
    {"TenSubtitles", 1, 1, 1, 10, Ntsc},
    {"NineteenSubtitles", 1, 2, 2, 19, "PAL", Wide},
    {"MostSubtitles", 1, 1, 1, 32},
    {"MostStreams", 1, 1, 8, 32, Ntsc},
    {"MostStreamsWide", 1, 7, 8, 32, "PAL", Wide},
    {"TwoFilms", 2, 1, 1, 0},
    {"TwoFilmsNtsc", 2, 7, 2, 2, Ntsc},
    {"TwoFilmsWide", 2, 3, 2, 2, "PAL", Wide},
    {"TwoFilmsWideNtsc", 2, 99, 1, 1, Ntsc, Wide},
    {"EightFilms", 8, 2, 1, 0},
    {"NineFilms", 9, 2, 2, 2, Ntsc},
    {"NineFilmsWide", 9, 1, 3, 1, "PAL", Wide},
    {"SeventeenFilms", 17, 1, 1, 0, "PAL", Wide},
    {"MostFilms", 99, 1, 1, 0},
    {"MostFilmsNtsc", 99, 2, 2, 1, Ntsc},
    {"EachLeadsOn", 9, 2, 1, 0, "PAL", "4:3", AfterFilm::Next},
    {"EachRepeats", 2, 2, 1, 1, Ntsc, "4:3", AfterFilm::Repeat, AtInsertion::FirstFilm},
    {"EachStops", 2, 2, 1, 0, "PAL", Wide, AfterFilm::Stop},
    {"OneStops", 1, 2, 1, 0, "PAL", "4:3", AfterFilm::Stop, AtInsertion::FirstFilm},
    {"OneLeadsOn", 1, 2, 1, 0, Ntsc, Wide, AfterFilm::Next},
    {"AllFromTheStart", 9, 1, 1, 1, "PAL", "4:3", AfterFilm::Menu, AtInsertion::AllFilms},
    {"SubtitlesFromTheStart", 2, 1, 1, 3, "PAL", "4:3", AfterFilm::Menu, AtInsertion::FirstFilm, true, 2},
    {"AllThenStop", 2, 2, 1, 0, Ntsc, "4:3", AfterFilm::Stop, AtInsertion::AllFilms},
    {"PlainOne", 1, 3, 1, 0, "PAL", "4:3", AfterFilm::Menu, AtInsertion::Menu, false},
    {"PlainThree", 3, 1, 2, 1, Ntsc, Wide, AfterFilm::Menu, AtInsertion::Menu, false},
};
INSTANTIATE_TEST_SUITE_P(Discs, Press, testing::ValuesIn(Kinds),
                         [](const auto& kind) { return std::string(kind.param.Name); });

}  // namespace
}  // namespace quorvelant
