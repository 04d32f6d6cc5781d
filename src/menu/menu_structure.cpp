#include "menu/menu_structure.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "edit/change.h"
#include "edit/drop.h"
#include "edit/overlays.h"
#include "edit/steps.h"
#include "edit/structure.h"
#include "edit/title_row.h"
#include "menu/button_texts.h"
#include "menu/menu_start.h"
#include "menu/page_hold.h"
#include "menu/page_layout.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view ManagerKey = "VMG1";
constexpr std::string_view DefaultPalette = "Default";

std::string_view MenuTypeOf(PageKind kind) {
  switch (kind) {
    case PageKind::Root:
      return "Root";
    case PageKind::Audio:
      return "Audio";
    case PageKind::Subtitle:
      return "SubPicture";
    case PageKind::Chapter:
      return "PTT";
    case PageKind::TitleChoice:
      return "TitleMenu";
  }
  return {};
}

std::string SetKey(std::size_t film) {
  return EntryKey(static_cast<int>(film) + 2);
}

int SetNumber(std::size_t film) {
  return static_cast<int>(film) + 1;
}

std::string FilmKey(std::size_t film) {
  return TitleKey(SetKey(film), 1);
}

// The group of pages with its track.
struct PlacedGroup {
  const PageGroup* Pages;
  std::size_t Track;
};

// In the order of their chains: the root first, then as their pages were made.
std::vector<PlacedGroup> GroupsOf(const FilmTracks& film) {
  std::vector<PlacedGroup> groups;
  for (std::size_t i = 0; i < film.Menus.Groups.size(); ++i) {
    groups.push_back({&film.Menus.Groups[i], film.MenuTracks.at(i)});
  }
  std::stable_partition(groups.begin(), groups.end(),
                        [](const PlacedGroup& one) { return one.Pages->Kind == PageKind::Root; });
  return groups;
}

// The colours that the marks of pages show by; the others are black.
PaletteColors MenuColors(const MenuPlan& plan) {
  PaletteColors colors{};
  colors[1] = colors[6] = plan.Selection;
  colors[2] = 0xFFFFFF;
  colors[14] = colors[15] = plan.Action;
  return colors;
}

class MenuMaker {
 public:
  MenuMaker(EditSession& session, const MenuPlan& plan) : session_(session), plan_(plan) {}

  Outcome Make() {
    Change change(session_, "Make Menus");
    if (RulesUsed().MenusBringPalette) {
      AddPalette();
    }
    for (std::size_t film = 0; film < plan_.Films.size(); ++film) {
      AddSet(film);
    }
    MakeManager();
    for (std::size_t film = 0; film < plan_.Films.size(); ++film) {
      EndFilm(film);
    }
    steps_.Do([this] { return SetFirstPlay(session_, plan_, JumpAtStart()); });
    return steps_.GoOn() ? change.Commit() : steps_.Refusal();
  }

 private:
  [[nodiscard]] const Rules& RulesUsed() const { return session_.RulesInForce(); }

  void AddPalette() {
    std::string name = "Menus";
    for (int number = 2; PaletteNameExists(session_.Work(), name); ++number) {
      name = fmt::format("Menus_{}", number);
    }
    palette_ = steps_.Do([&] { return NewPalette(session_, name, MenuColors(plan_)); });
  }

  void AddSet(std::size_t film) {
    if (film > 0) {
      steps_.Do([this] { return NewTitleSet(session_); });
    }
    steps_.Do([&] { return NameSet(film); });
    for (const PlacedGroup& group : GroupsOf(plan_.Films[film])) {
      AddMenu(film, group);
    }
    AddTitle(film);
  }

  // The default structure's and a new title set's elements become those of the film.
  Outcome NameSet(std::size_t film) {
    return SetEntry(session_, SetKey(film), [&](VTS_P& set) {
      Lang_P& language = *set.Lang.Item(1);
      PGC_P& root = *language.PGC.Item(1);
      Title_P& title = *set.Title.Item(1);
      TakeLanguage(language);
      root.PGCName = MenuChainName(PageKind::Root, SetNumber(film));
      root.PreCommands.clear();
      title.TitleName = FilmTitleName(SetNumber(film));
      title.PGC.Item(1)->PGCName = FilmChainName(SetNumber(film));
      return Outcome::Done();
    });
  }

  void TakeLanguage(Lang_P& unit) const {
    const std::string_view code = CLsDVD::LangNameToLangCode(plan_.Language);
    unit.Language = code.empty() || code == " " ? std::move(unit.Language) : std::string(code);
  }

  void AddMenu(std::size_t film, const PlacedGroup& group) {
    const std::string unit = LanguageKey(SetKey(film), 1);
    const std::string chain = group.Pages->Kind == PageKind::Root ? PgcKey(unit, 1) : steps_.Do([&] {
      return NewPgc(session_, unit, MenuChainName(group.Pages->Kind, SetNumber(film)));
    });
    AddPages(chain, group, SetNumber(film));
    if (RemoteReachOf(RulesUsed()).ReturnsToRoot && group.Pages->Kind != PageKind::Root) {
      SetChain(chain, [&](PGC_P& pgc) { pgc.GoUpPGC = MenuChainName(PageKind::Root, SetNumber(film)); });
    }
    if (group.Pages->Kind == PageKind::Root && PlaysAllAtStart(plan_)) {
      steps_.Do([&] { return AppendCommand(session_, chain, &PGC_P::PreCommands, StopPlayingAllText()); });
    }
  }

  // One program, and one cell for each page.
  void AddPages(const std::string& chain, const PlacedGroup& group, int set) {
    const PageKind kind = group.Pages->Kind;
    SetChain(chain, [&](PGC_P& pgc) {
      pgc.MenuType = MenuTypeOf(kind);
      pgc.PaletteName = palette_.empty() ? std::string(DefaultPalette) : palette_;
    });
    const std::string program =
        steps_.Do([&] { return NewProgram(session_, chain, MenuChainName(kind, set) + "_PG1"); });
    std::size_t running = 1;
    for (std::size_t page = 0; page < group.Pages->Pages.size(); ++page) {
      const std::string cell =
          steps_.Do([&] { return Drop(session_, {.Track = group.Track, .Scene = page}, program); });
      const CommandList commands = CommandsOf(*group.Pages, {kind, set, page, running});
      running += commands.size();
      steps_.Do([&] {
        return SetCell(session_, cell, [&](Cell_P& made) {
          Hold(made);
          made.ButtonCommands = {{commands}};
          return Outcome::Done();
        });
      });
    }
  }

  void Hold(Cell_P& cell) const {
    const PageHold hold = PageHoldOf(true, true, RulesUsed());
    cell.StillTime = cell.iStill = std::max(cell.StillTime, hold.CellSeconds);
    cell.Seamless = cell.EnableSeamlessFlag = false;
  }

  [[nodiscard]] CommandList CommandsOf(const PageGroup& group, MenuButtonPlace place) const {
    CommandList commands;
    for (const MenuButton& button : group.Pages[place.Page].Buttons) {
      AddCommand(commands, "Button", CommandOfButton(button, place, RulesUsed()));
      ++place.Running;
    }
    return commands;
  }

  void AddTitle(std::size_t film) {
    const FilmTracks& tracks = plan_.Films[film];
    const std::string chain = PgcKey(FilmKey(film), 1);
    steps_.Do([&] { return Drop(session_, {.Track = tracks.Offer.Track, .Scene = {}}, chain); });
    SetChain(chain, [&](PGC_P& pgc) {
      pgc.PaletteName = tracks.Palette.empty() ? pgc.PaletteName : tracks.Palette;
      bool goesOn = false;
      for (Cell_P* cell : LiveCells(pgc)) {
        cell->Seamless = cell->EnableSeamlessFlag = goesOn;
        goesOn = true;
      }
    });
    steps_.Do([&] { return ChooseStreamsAtTitle(session_, chain, tracks.Offer.Track); });
  }

  // Ways from film to film lead through the manager's language, so they are made after its menu.
  void EndFilm(std::size_t film) {
    const std::string chain = PgcKey(FilmKey(film), 1);
    const bool hasNext = film + 1 < plan_.Films.size();
    const AfterFilm after = plan_.Films[film].After;
    std::string way;
    if (hasNext && (after == AfterFilm::Next || PlaysAllAtStart(plan_))) {
      way = steps_.Do([&] { return MakeWayToTitle(session_, FilmKey(film), FilmKey(film + 1)); });
    }
    if (hasNext && after != AfterFilm::Next && PlaysAllAtStart(plan_)) {
      AddPost(chain, WhilePlayingAllText(way));
    }
    switch (after) {
      case AfterFilm::Stop:
        return AddPost(chain, "Exit");
      case AfterFilm::Repeat:
        return AddPost(chain, "JumpVTS_TT " + FilmTitleName(SetNumber(film)));
      case AfterFilm::Next:
        return AddPost(chain, hasNext ? way : ToMenuText(film));
      case AfterFilm::Menu:
        return AddPost(chain, ToMenuText(film));
    }
  }

  [[nodiscard]] std::string ToMenuText(std::size_t film) const {
    const int set = RulesUsed().EndsInOwnSet ? SetNumber(film) : 1;
    return fmt::format("CallSS RSM={}_PG1_CELL1,{}", FilmChainName(set),
                       IsRootTitleMenu() ? "RootMenu" : "TitleMenu");
  }

  [[nodiscard]] bool IsRootTitleMenu() const { return RootIsTitleMenu(!plan_.Choice, RulesUsed()); }

  void MakeManager() {
    const std::string unit = LanguageKey(ManagerKey, 1);
    const std::string chain = PgcKey(unit, 1);
    if (!plan_.Choice && !IsRootTitleMenu()) {
      return;
    }
    steps_.Do([this] {
      return SetEntry(session_, ManagerKey, [this](VTS_P& manager) {
        TakeLanguage(*manager.Lang.Item(1));
        manager.Lang.Item(1)->PGC.Item(1)->PreCommands.clear();
        return Outcome::Done();
      });
    });
    if (PlaysAllAtStart(plan_)) {
      steps_.Do([&] { return AppendCommand(session_, chain, &PGC_P::PreCommands, StopPlayingAllText()); });
    }
    if (plan_.Choice) {
      AddPages(chain, {&*plan_.Choice, plan_.ChoiceTrack}, 1);
    } else {
      steps_.Do([&] { return AppendCommand(session_, chain, &PGC_P::PreCommands, JumpToRootText(1)); });
    }
  }

  [[nodiscard]] std::string JumpAtStart() const {
    if (plan_.Insertion != AtInsertion::Menu) {
      return "JumpTT " + FilmTitleName(1);
    }
    return plan_.Choice ? "JumpSS " + MenuChainName(PageKind::TitleChoice, 1) : JumpToRootText(1);
  }

  void SetChain(const std::string& chain, const std::function<void(PGC_P&)>& set) {
    steps_.Do([&] {
      return SetPgc(session_, chain, [&set](PGC_P& pgc) {
        set(pgc);
        return Outcome::Done();
      });
    });
  }

  void AddPost(const std::string& chain, const std::string& text) {
    steps_.Do([&] { return AppendCommand(session_, chain, &PGC_P::PostCommands, text); });
  }

  EditSession& session_;
  const MenuPlan& plan_;
  Steps steps_;
  std::string palette_;  // empty for the project's "Default"
};

}  // namespace

Outcome MakeMenuStructure(EditSession& session, const MenuPlan& plan) {
  return MenuMaker(session, plan).Make();
}

}  // namespace quorvelant
