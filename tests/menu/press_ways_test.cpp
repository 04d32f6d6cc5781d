// Random ways with a remote: the navigation machine stands where libdvdnav stands after each press.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <numeric>
#include <random>

#include "check/nav_of.h"
#include "disc_maker.h"
#include "menu_disc.h"
#include "player/nav_lookup.h"
#include "player/nav_machine.h"
#include "support/key_player.h"
#include "support/trial.h"
#include "verify/nav_of_disc.h"
#include "verify/verify_disc.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

constexpr int Presses = 30;
constexpr int MostOfDisc = 9;  // titles and chapters that are asked for by number; discs have fewer

struct WayDisc {
  friend void PrintTo(const WayDisc& disc, std::ostream* out) { *out << disc.Name; }

  std::string Name;
  int Share;  // of a thousand ways
  MenuDiscKind Kind = {};
};

struct KeyRow {
  WayKey Key;
  NavKey Machine;
  const char* Word;
  int Weight;
};
constexpr std::array Keys{KeyRow{WayKey::Up, NavKey::Up, "Up", 3},
                          KeyRow{WayKey::Down, NavKey::Down, "Down", 3},
                          KeyRow{WayKey::Left, NavKey::Left, "Left", 3},
                          KeyRow{WayKey::Right, NavKey::Right, "Right", 3},
                          KeyRow{WayKey::Ok, NavKey::Activate, "OK", 8},
                          KeyRow{WayKey::Number, NavKey::Number, "number", 8},
                          KeyRow{WayKey::Select, NavKey::Select, "select", 4},
                          KeyRow{WayKey::Wait, NavKey::Wait, "end", 12},
                          KeyRow{WayKey::StopStill, NavKey::StopStill, "Still off", 2},
                          KeyRow{WayKey::TitleMenu, NavKey::TitleMenu, "Title", 2},
                          KeyRow{WayKey::RootMenu, NavKey::RootMenu, "Menu", 3},
                          KeyRow{WayKey::AudioMenu, NavKey::AudioMenu, "Audio", 1},
                          KeyRow{WayKey::SubpictureMenu, NavKey::SubpictureMenu, "Subtitle menu", 1},
                          KeyRow{WayKey::AngleMenu, NavKey::AngleMenu, "Angle menu", 1},
                          KeyRow{WayKey::PartMenu, NavKey::PartMenu, "Chapter menu", 1},
                          KeyRow{WayKey::Resume, NavKey::Resume, "Resume", 3},
                          KeyRow{WayKey::Return, NavKey::Return, "Return", 2},
                          KeyRow{WayKey::NextPart, NavKey::NextPart, "Next", 3},
                          KeyRow{WayKey::PreviousPart, NavKey::PreviousPart, "Previous", 3},
                          KeyRow{WayKey::TopPart, NavKey::TopPart, "Top", 1},
                          KeyRow{WayKey::Title, NavKey::Title, "title", 1},
                          KeyRow{WayKey::Part, NavKey::Part, "chapter", 2}};

WayPlace PlaceOf(const NavDisc& disc, const NavState& state) {
  if (state.Phase == NavPhase::Stopped) {
    return {};
  }
  constexpr std::string_view Domains = "fmst";
  return {.Domain = Domains[static_cast<std::size_t>(state.At.Domain)],
          .Set = state.At.Set,
          .Chain = state.At.Chain,
          .Cell = state.At.Cell,
          .Title = state.At.Domain == NavDomain::Title ? state.Registers.Of(Sprm::Title) : 0,
          .Part = state.At.Domain == NavDomain::Title ? state.Registers.Of(Sprm::Part) : 0,
          .Button = PageAt(disc, state) == nullptr ? 0 : state.Registers.Button()};
}

// One player of the machine, on what one source says of the disc.
class Machine {
 public:
  Machine(const char* source, NavDisc disc) : Source(source), disc_(std::move(disc)) {}

  void Insert(const std::string& language, const std::vector<int>& drawn) {
    const auto code = static_cast<std::uint16_t>(language[0] << 8 | language[1]);
    state_ = InsertDisc(disc_, FreshRegisters(code), Replay(drawn)).State;
  }
  void Press(const NavEvent& event, const std::vector<int>& drawn) {
    state_ = NavStep(disc_, state_, event, Replay(drawn)).State;
  }
  [[nodiscard]] WayPlace Place() const { return PlaceOf(disc_, state_); }
  // Keys that mean something else to libdvdnav. Where a skip to the next program leads to a stop, it takes
  // that back and goes to the next cell. Without anything to resume it goes to the root menu, and what was
  // resumed once it resumes again; a command that finds nothing to resume stops it. Where no chain is above,
  // Return begins the cell again.
  [[nodiscard]] bool IsUnlike(const NavEvent& event) const {
    const NavOutcome outcome = NavStep(disc_, state_, event, Replay({}));
    const NavState& to = outcome.State;
    return (event.Key == NavKey::NextPart && (to == state_ || to.Phase == NavPhase::Stopped)) ||
           (event.Key == NavKey::Resume && !state_.Resume) || FindsNothing(outcome) ||
           (event.Key == NavKey::Return && to == state_);
  }

  const char* Source;

 private:
  static bool FindsNothing(const NavOutcome& outcome) {
    return std::ranges::any_of(outcome.Happened, [](const NavHappening& one) {
      return one.What == NavHappening::Kind::Missing && one.Lead.What == NavLead::Kind::Resume;
    });
  }
  // The numbers that libdvdnav made of what it drew.
  static NavRandom Replay(const std::vector<int>& drawn) {
    return [drawn, next = std::make_shared<std::size_t>(0)](std::uint16_t bound) -> std::uint16_t {
      const int value = *next < drawn.size() ? drawn[(*next)++] : 0;
      return static_cast<std::uint16_t>(
          1 + static_cast<std::uint16_t>(static_cast<float>(bound) * static_cast<float>(value) /
                                         (RAND_MAX + 1.0)));
    };
  }

  NavDisc disc_;
  NavState state_;
};

class PressWays : public testing::TestWithParam<WayDisc> {
 protected:
  void MakeDisc() {
    if (GetParam().Name == "Commands") {
      MakeCommands();
    } else {
      ASSERT_TRUE(menu_.Make().IsDone());
      ASSERT_EQ(menu_.Author(), "");
      Take(menu_.Session.Work(), menu_.Folder);
    }
  }
  void MakeCommands();
  void Take(Project project, const std::string& folder) {
    const Rules& rules = Rules::Players;
    folder_ = folder;
    CheckCommands(project, rules);
    RecordingUi ui;
    const VerifyResult read = VerifyDisc(folder, ui);
    EXPECT_FALSE(read.Findings.HasFaults());
    machines_.emplace_back("tables", NavOfDisc(read));
    machines_.emplace_back("project", NavOf(project, rules));
  }

  void Walk(unsigned seed);
  bool Agree(const KeyPlayer& player, const std::string& way) {
    bool agree = true;
    for (const Machine& machine : machines_) {
      agree = agree && machine.Place() == player.Place();
      EXPECT_EQ(machine.Place(), player.Place()) << machine.Source << ": " << way;
    }
    return agree;
  }

  std::string folder_;
  std::vector<Machine> machines_;
  MenuDisc menu_{GetParam().Kind};
  DiscMaker maker_{{.Width = 352, .Height = 288, .Frames = 48, .Closed = true, .KbitPerSecond = 500}};
};

// A page of marks in a row. One with fewer than the others selects one of its own: players differ where the
// selected number is beyond a page, and choose the first or the last.
std::string PageTrack(int number, int buttons) {
  std::string text = fmt::format(
      "Item=Track\nName=P{0}\nItem=Still Play\nVideoFile=page.bmp\nSlideDuration=@12\nItem=SubPicture\n"
      "StreamNumber=0\nItem=SubPicture Play\nFile=marks.bmp\nOrigin=100,100\nForced=Yes\nStart=@0\n"
      "Duration=@12\nConversion(P)=255,255,255\nColor=0,1,0,0\nContrast=0,15,0,0\nItem=Highlight Play\n"
      "Start Time To Video=@0\nDuration=@12\nSelection End Time=@0\nNumerical Button #={1}\n"
      "Forced Select={2}\nColor Scheme 1\nSelection Color=3, 2, 0, 1\nSelection Contrast=0, 13, 15, 14\n"
      "Action Color=5, 6, 8, 7\nAction Contrast=1, 10, 12, 11\n",
      number, buttons, buttons == 6 ? 0 : 1 + number % 3);
  for (int i = 0; i < buttons; ++i) {
    const auto other = [&](int step) { return (i + step) % buttons; };
    text += fmt::format(
        "Item=Button\nButton #={}\nName=B{}\nColor Scheme=1\nUp=B{}\nDown=B{}\nLeft=B{}\nRight=B{}\n"
        "Highlight Area #1={}, 110, {}, 170\n",
        i + 1, i, other(2), other(3), other(buttons - 1), other(1), 110 + 60 * i, 150 + 60 * i);
  }
  return text + fmt::format("Item=Scene\nName=P{}_Scene1\nSceneTime=@0\n", number);
}

void PressWays::MakeCommands() {
  std::string pages;
  int number = 0;
  for (const int buttons : {6, 6, 3, 6, 3, 6, 6, 3, 3, 4}) {
    pages += PageTrack(++number, buttons);
  }
  maker_.Link("film.m2v", SampleVideo(maker_.Video));
  maker_.Link("film.ac3", SampleAc3({.Seconds = 2}));
  maker_.Paint("page.bmp", 720, 576, 0x806040);
  maker_.Paint("marks.bmp", 400, 250, 0x000000);
  maker_.Load("ways.qvp", {{"PAGES", pages}});
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  Take(maker_.Disc, maker_.Folder);
}

void PressWays::Walk(unsigned seed) {
  KeyPlayer::Seed(seed);
  std::mt19937 random(seed);
  const auto draw = [&random](int below) {
    return static_cast<int>(random() % static_cast<unsigned>(below));
  };
  const auto weights = [](int sum, const KeyRow& row) { return sum + row.Weight; };
  const int all = std::accumulate(Keys.begin(), Keys.end(), 0, weights);
  const std::string language = draw(2) == 0 ? "en" : "de";
  std::unique_ptr<KeyPlayer> player;
  std::string way = fmt::format("way {} ({}):", seed, language);
  for (int press = 0; press < Presses; ++press) {
    if (!player || player->Place() == WayPlace{}) {
      player = std::make_unique<KeyPlayer>(folder_, language);
      const std::vector<int> drawn = KeyPlayer::Drawn();
      for (Machine& machine : machines_) {
        machine.Insert(language, drawn);
      }
      way += " insert";
    }
    if (!Agree(*player, way)) {
      return;
    }
    int place = draw(all);
    const auto row = std::ranges::find_if(Keys, [&](const KeyRow& key) { return (place -= key.Weight) < 0; });
    const int button = draw(std::max(1, player->Buttons()));
    const bool isOfDisc = row->Key == WayKey::Title || row->Key == WayKey::Part;
    const int number = isOfDisc                     ? 1 + draw(MostOfDisc)
                       : row->Key == WayKey::Number ? button + player->FirstNumber()
                                                    : button + 1;
    const NavEvent event{row->Machine, static_cast<std::uint16_t>(number)};
    if (machines_.front().IsUnlike(event)) {
      continue;
    }
    const std::string command = player->Press(row->Key, number);
    const std::vector<int> drawn = KeyPlayer::Drawn();
    for (Machine& machine : machines_) {
      machine.Press(event, drawn);
    }
    way += fmt::format(", {}{}{}", row->Word,
                       isOfDisc || row->Key == WayKey::Number || row->Key == WayKey::Select
                           ? fmt::format(" {}", number)
                           : "",
                       command.empty() ? "" : fmt::format(" [{}]", command));
  }
  Agree(*player, way);
}

TEST_P(PressWays, LeadWhereTheyLeadAnotherPlayer) {
  MakeDisc();
  ASSERT_FALSE(HasFatalFailure());
  const int count = TrialCount(GetParam().Share / 5, GetParam().Share * 10);
  for (int i = 0; i < count && !HasFailure(); ++i) {
    Walk(static_cast<unsigned>(i + 1));
  }
}

const std::vector<WayDisc> Discs{{"Commands", 500},
                                 {"TwoFilms", 100, {"", 2, 7, 2, 2, "NTSC"}},
                                 {"NineFilms", 100, {"", 9, 2, 2, 2}},
                                 {"Chapters", 100, {"", 1, 20, 2, 1}},
                                 {"EachLeadsOn", 100, {"", 3, 2, 1, 0, "PAL", "4:3", AfterFilm::Next}},
                                 {"EachStops", 100, {"", 2, 2, 1, 0, "PAL", "16:9", AfterFilm::Stop}}};
INSTANTIATE_TEST_SUITE_P(Discs, PressWays, testing::ValuesIn(Discs),
                         [](const auto& disc) { return disc.param.Name; });

}  // namespace
}  // namespace quorvelant
