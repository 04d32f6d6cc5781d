#include "player/nav_run.h"

#include <algorithm>
#include <utility>

namespace quorvelant {

namespace {

constexpr std::uint16_t NoWay = 0;
constexpr std::uint16_t Resumes = 0xFFFF;
constexpr std::uint8_t TitleMenuId = 2;

// The unit of a language, or else the first one, as players choose it.
const NavMenus* MenusIn(const std::vector<NavMenus>& menus, std::uint16_t language) {
  const auto found = std::ranges::find(menus, language, &NavMenus::Language);
  if (found != menus.end()) {
    return &*found;
  }
  return menus.empty() ? nullptr : &menus.front();
}

const NavChain* ChainOf(const std::vector<NavChain>& chains, std::size_t number) {
  return number >= 1 && number <= chains.size() ? &chains[number - 1] : nullptr;
}

const NavSet* SetOf(const NavDisc& disc, std::size_t number) {
  return number >= 1 && number <= disc.Sets.size() ? &disc.Sets[number - 1] : nullptr;
}

// The number of the entry chain of a kind of menu.
std::uint16_t EntryChain(const NavMenus* menus, std::uint8_t menuId) {
  if (menus == nullptr) {
    return NoWay;
  }
  const auto found = std::ranges::find_if(
      menus->Chains, [menuId](const NavChain& chain) { return chain.IsEntry && chain.MenuId == menuId; });
  return found == menus->Chains.end()
             ? NoWay
             : static_cast<std::uint16_t>(std::distance(menus->Chains.begin(), found) + 1);
}

std::uint8_t Byte(std::size_t value) {
  return static_cast<std::uint8_t>(value);
}

}  // namespace

const NavChain* ChainAt(const NavDisc& disc, const NavPoint& point, std::uint16_t menuLanguage) {
  switch (point.Domain) {
    case NavDomain::FirstPlay:
      return disc.FirstPlay ? &*disc.FirstPlay : nullptr;
    case NavDomain::ManagerMenu: {
      const NavMenus* menus = MenusIn(disc.Menus, menuLanguage);
      return menus == nullptr ? nullptr : ChainOf(menus->Chains, point.Chain);
    }
    case NavDomain::SetMenu: {
      const NavSet* set = SetOf(disc, point.Set);
      const NavMenus* menus = set == nullptr ? nullptr : MenusIn(set->Menus, menuLanguage);
      return menus == nullptr ? nullptr : ChainOf(menus->Chains, point.Chain);
    }
    case NavDomain::Title: {
      const NavSet* set = SetOf(disc, point.Set);
      return set == nullptr ? nullptr : ChainOf(set->Titles, point.Chain);
    }
  }
  return nullptr;
}

const NavCell* NavRun::Cell() const {
  const NavChain* chain = Chain();
  const std::size_t number = State().At.Cell;
  return chain != nullptr && number >= 1 && number <= chain->Cells.size() ? &chain->Cells[number - 1]
                                                                          : nullptr;
}

const NavPage* PageAt(const NavDisc& disc, const NavState& state) {
  const NavChain* chain = ChainAt(disc, state.At, state.Registers.Of(Sprm::MenuLanguage));
  if (state.Phase == NavPhase::Stopped || chain == nullptr || state.At.Cell < 1 ||
      state.At.Cell > chain->Cells.size()) {
    return nullptr;
  }
  const std::vector<NavPage>& pages = chain->Cells[state.At.Cell - 1U].Pages;
  return state.Page >= 1 && state.Page <= pages.size() ? &pages[state.Page - 1U] : nullptr;
}

void NavRun::Note(NavHappening::Kind what) {
  out_.Happened.push_back({.What = what, .At = State().At, .List = NavList::Pre, .Number = 0, .Lead = {}});
}

void NavRun::SelectButton(int number) {
  State().Registers.PutButton(number);
}

// --- lists of commands ---

NavLead NavRun::RunList(std::span<const NavCommand> commands, NavList list, std::uint16_t& number) {
  std::size_t at = 0;
  while (at < commands.size() && commands_ <= MostCommands) {
    ++commands_;
    number = static_cast<std::uint16_t>(at + 1);
    const NavLead lead = RunNavCommand(commands[at], State().Registers, random_);
    out_.Happened.push_back(
        {.What = NavHappening::Kind::Ran, .At = State().At, .List = list, .Number = number, .Lead = lead});
    if (lead.What == NavLead::Kind::GoTo && lead.Number >= 1) {
      at = lead.Number - 1U;
    } else if (lead.What == NavLead::Kind::Break) {
      break;
    } else if (lead.LeavesList() && lead.What != NavLead::Kind::NoLink &&
               lead.What != NavLead::Kind::Unknown) {
      return lead;
    } else if (lead.What == NavLead::Kind::NoLink && lead.Button != 0) {
      SelectButton(lead.Button);
      ++at;
    } else {
      ++at;
    }
  }
  return {};
}

// --- the road ---

void NavRun::Go(Next next) {
  while (next != Next::Done) {
    if (++commands_ > MostCommands) {
      next = Stop(NavStop::Loop);
      continue;
    }
    switch (next) {
      case Next::Chain:
        next = StartChain();
        break;
      case Next::Program:
        next = StartProgram();
        break;
      case Next::Cell:
        next = StartCell();
        break;
      case Next::Tail:
        next = RunTail();
        break;
      case Next::Done:
        break;
    }
  }
}

NavRun::Next NavRun::Stop(NavStop why) {
  State().Phase = NavPhase::Stopped;
  State().Stop = why;
  State().Page = 0;
  Note(NavHappening::Kind::Stopped);
  return Next::Done;
}

NavRun::Next NavRun::Missing(const NavLead& lead, NavList list, std::uint16_t number) {
  out_.Happened.push_back(
      {.What = NavHappening::Kind::Missing, .At = State().At, .List = list, .Number = number, .Lead = lead});
  return Stop(NavStop::Missing);
}

NavRun::Next NavRun::StartChain() {
  const NavChain* chain = Chain();
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  NavState& state = State();
  const std::uint8_t entry = std::exchange(entry_, std::uint8_t{1});
  state.At.Program = 1;
  state.At.Cell = 0;
  state.Page = 0;
  state.Repeats =
      chain->Playback == 0 ? std::uint16_t{0} : static_cast<std::uint16_t>(chain->Playback & 0x7FU);
  if (state.At.Domain == NavDomain::Title) {
    state.Registers.Put(Sprm::TitleChain, state.At.Chain);
  }
  Note(NavHappening::Kind::Entered);
  std::uint16_t number = 0;
  const NavLead lead = RunList(chain->Pre, NavList::Pre, number);
  if (lead.What != NavLead::Kind::None) {
    return Obey(lead, NavList::Pre, number);
  }
  if (entry > 1) {
    state.At.Program = entry;
  } else if (chain->Playback != 0 && !chain->Programs.empty()) {
    state.At.Program = Byte(random_(static_cast<std::uint16_t>(chain->Programs.size())));
  }
  return Next::Program;
}

NavRun::Next NavRun::StartProgram() {
  const NavChain* chain = Chain();
  NavState& state = State();
  if (chain == nullptr || state.At.Program < 1 || state.At.Program > chain->Programs.size()) {
    return Next::Tail;
  }
  state.At.Cell = chain->Programs[state.At.Program - 1U];
  return Next::Cell;
}

NavRun::Next NavRun::StartCell() {
  const NavChain* chain = Chain();
  NavState& state = State();
  if (chain == nullptr || state.At.Cell < 1 || state.At.Cell > chain->Cells.size()) {
    return Next::Tail;
  }
  const auto after = std::ranges::upper_bound(chain->Programs, state.At.Cell);
  state.At.Program = Byte(static_cast<std::size_t>(std::distance(chain->Programs.begin(), after)));
  state.Phase = NavPhase::Playing;
  state.Stop = NavStop::None;
  TellPart();
  Note(NavHappening::Kind::Plays);
  state.Page = 0;
  const NavCell& cell = chain->Cells[state.At.Cell - 1U];
  if (!cell.Pages.empty() && cell.Pages.front().Start == 0) {
    EnterPage(1);
  }
  return Next::Done;
}

// The register of the part, from the last one that begins at or before the program.
void NavRun::TellPart() {
  NavState& state = State();
  const NavSet* set = state.At.Domain == NavDomain::Title ? SetOf(disc_, state.At.Set) : nullptr;
  const std::size_t title = state.Registers.Of(Sprm::TitleOfSet);
  if (set == nullptr || title < 1 || title > set->Parts.size()) {
    return;
  }
  const std::vector<NavPart>& parts = set->Parts[title - 1];
  for (std::size_t i = parts.size(); i-- > 0;) {
    if (parts[i].Chain == state.At.Chain && parts[i].Program <= state.At.Program) {
      state.Registers.Put(Sprm::Part, static_cast<std::uint16_t>(i + 1));
      return;
    }
  }
}

void NavRun::EnterPage(std::uint16_t page) {
  constexpr std::uint8_t KeepsSelected = 63;
  State().Page = page;
  const NavPage* shown = PageAt(disc_, State());
  if (shown == nullptr || shown->Buttons.empty()) {
    return;
  }
  if (shown->ForcedSelect >= 1 && shown->ForcedSelect != KeepsSelected) {
    SelectButton(shown->ForcedSelect);
  }
  const int most = static_cast<int>(shown->Buttons.size());
  SelectButton(std::clamp(State().Registers.Button(), 1, most));
}

void NavRun::NextPage() {
  const NavCell* cell = Cell();
  const NavPage* shown = PageAt(disc_, State());
  if (shown != nullptr && shown->ForcedAction >= 1 && shown->ForcedAction <= shown->Buttons.size()) {
    SelectButton(shown->ForcedAction);
    RunButton(*shown, shown->ForcedAction);
    return;
  }
  if (cell != nullptr && State().Page < cell->Pages.size()) {
    EnterPage(static_cast<std::uint16_t>(State().Page + 1));
    return;
  }
  if (cell != nullptr && cell->StillTime != 0) {
    State().Phase = NavPhase::CellStill;
    return;
  }
  EndCell();
}

void NavRun::EndCell() {
  const NavChain* chain = Chain();
  const NavCell* cell = Cell();
  if (chain == nullptr || cell == nullptr) {
    Go(Next::Tail);
    return;
  }
  if (cell->Command >= 1 && cell->Command <= chain->CellCommands.size()) {
    std::uint16_t number = 0;
    const NavLead lead =
        RunList(std::span(chain->CellCommands).subspan(cell->Command - 1U, 1), NavList::Cell, number);
    if (lead.What != NavLead::Kind::None) {
      Go(Obey(lead, NavList::Cell, cell->Command));
      return;
    }
  }
  NavState& state = State();
  const bool endsProgram =
      state.At.Cell >= chain->Cells.size() ||
      std::ranges::find(chain->Programs, Byte(state.At.Cell + 1U)) != chain->Programs.end();
  if (endsProgram && chain->Playback != 0) {
    if (state.Repeats > 0) {
      --state.Repeats;
      state.At.Program = Byte(random_(static_cast<std::uint16_t>(chain->Programs.size())));
      Go(Next::Program);
      return;
    }
    state.At.Cell = Byte(chain->Cells.size());
  }
  if (state.At.Cell < chain->Cells.size()) {
    ++state.At.Cell;
    Go(Next::Cell);
    return;
  }
  if (chain->StillTime != 0) {
    state.Phase = NavPhase::ChainStill;
    return;
  }
  Go(Next::Tail);
}

void NavRun::EndChain() {
  Go(Next::Tail);
}

NavRun::Next NavRun::RunTail() {
  const NavChain* chain = Chain();
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  std::uint16_t number = 0;
  const NavLead lead = RunList(chain->Post, NavList::Post, number);
  if (lead.What != NavLead::Kind::None) {
    return Obey(lead, NavList::Post, number);
  }
  if (commands_ > MostCommands) {
    return Stop(NavStop::Loop);
  }
  if (chain->Next == NoWay) {
    return Stop(NavStop::NoWay);
  }
  return ToChain(State().At.Domain, State().At.Set, chain->Next);
}

void NavRun::RunButton(const NavPage& page, int number) {
  const auto place = static_cast<std::size_t>(number) - 1;
  std::uint16_t ran = 0;
  const NavCommand command = page.Buttons.at(place).Command;
  const NavLead lead = RunList(std::span(&command, 1), NavList::Button, ran);
  if (lead.What != NavLead::Kind::None) {
    Follow(lead, NavList::Button, static_cast<std::uint16_t>(number));
  } else if (State().Phase != NavPhase::Playing) {
    // A still ends with a command that leads nowhere.
    State().Phase == NavPhase::ChainStill ? EndChain() : EndCell();
  }
}

void NavRun::Follow(NavLead lead, NavList list, std::uint16_t number) {
  Go(Obey(lead, list, number));
}

// --- links ---

NavRun::Next NavRun::Obey(const NavLead& lead, NavList list, std::uint16_t number) {
  const bool isLink = lead.What >= NavLead::Kind::TopCell && lead.What <= NavLead::Kind::Cell;
  if (isLink && lead.Button != 0) {
    SelectButton(lead.Button);
  }
  const NavPoint from = State().At;
  const Next next = lead.What == NavLead::Kind::Exit     ? Stop(NavStop::Exit)
                    : lead.What == NavLead::Kind::Resume ? ResumeTitle(lead)
                    : isLink                             ? ObeyLink(lead)
                                                         : ObeyJump(lead);
  if (State().Stop == NavStop::Missing && State().Phase == NavPhase::Stopped) {
    State().At = from;
    out_.Happened.pop_back();  // its stop is told with what was missing
    return Missing(lead, list, number);
  }
  return next;
}

NavRun::Next NavRun::ToChain(NavDomain domain, std::uint8_t set, std::uint16_t chain) {
  NavPoint to{.Domain = domain, .Set = set, .Chain = chain, .Program = 0, .Cell = 0};
  if (ChainAt(disc_, to, MenuLanguage()) == nullptr) {
    return Stop(NavStop::Missing);
  }
  State().At = to;
  return Next::Chain;
}

NavRun::Next NavRun::ObeyLink(const NavLead& lead) {
  using Kind = NavLead::Kind;
  const NavChain* chain = Chain();
  NavPoint& at = State().At;
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  const auto toNumbered = [&](std::uint16_t number) {
    return number == NoWay ? Stop(NavStop::NoWay) : ToChain(at.Domain, at.Set, number);
  };
  switch (lead.What) {
    case Kind::TopCell:
      return Next::Cell;
    case Kind::NextCell:
      ++at.Cell;
      return Next::Cell;
    case Kind::PreviousCell:
      at.Cell = Byte(std::max<std::size_t>(at.Cell, 2) - 1);
      return Next::Cell;
    case Kind::TopProgram:
      return Next::Program;
    case Kind::NextProgram:
      ++at.Program;
      return Next::Program;
    case Kind::PreviousProgram:
      at.Program = Byte(std::max<std::size_t>(at.Program, 2) - 1);
      return Next::Program;
    case Kind::TopChain:
      return Next::Chain;
    case Kind::NextChain:
      return toNumbered(chain->Next);
    case Kind::PreviousChain:
      return toNumbered(chain->Previous);
    case Kind::GoUpChain:
      return chain->GoUp == Resumes ? ResumeTitle({.What = Kind::Resume}) : toNumbered(chain->GoUp);
    case Kind::TailChain:
      return Next::Tail;
    case Kind::Chain:
      return ToChain(at.Domain, at.Set, lead.Number);
    case Kind::Program:
      if (lead.Number < 1 || lead.Number > chain->Programs.size()) {
        return Stop(NavStop::Missing);
      }
      at.Program = Byte(lead.Number);
      return Next::Program;
    case Kind::Cell:
      if (lead.Number < 1 || lead.Number > chain->Cells.size()) {
        return Stop(NavStop::Missing);
      }
      at.Cell = Byte(lead.Number);
      return Next::Cell;
    default:
      return PartOfSet(Byte(State().Registers.Of(Sprm::TitleOfSet)), lead.Number);
  }
}

// --- jumps and calls ---

NavRun::Next NavRun::ObeyJump(const NavLead& lead) {
  using Kind = NavLead::Kind;
  const std::uint8_t set = State().At.Set;
  switch (lead.What) {
    case Kind::JumpTitle:
      return TitleOfDisc(lead.Number);
    case Kind::JumpTitleOfSet:
      return PartOfSet(Byte(lead.Number), 1);
    case Kind::JumpPart:
      return PartOfSet(lead.Title, lead.Number);
    case Kind::JumpFirstPlay:
      return ToChain(NavDomain::FirstPlay, 0, 0);
    case Kind::JumpManagerMenu:
      return ToChain(NavDomain::ManagerMenu, 0,
                     EntryChain(MenusIn(disc_.Menus, MenuLanguage()), TitleMenuId));
    case Kind::JumpManagerChain:
      return ToChain(NavDomain::ManagerMenu, 0, lead.Number);
    case Kind::JumpSetMenu: {
      const std::uint8_t to = lead.Set == 0 ? set : lead.Set;
      const NavSet* entry = SetOf(disc_, to);
      if (lead.Title != 0) {
        State().Registers.Put(Sprm::TitleOfSet, lead.Title);
      }
      return entry == nullptr ? Stop(NavStop::Missing)
                              : ToChain(NavDomain::SetMenu, to,
                                        EntryChain(MenusIn(entry->Menus, MenuLanguage()), Byte(lead.Number)));
    }
    default:
      return Call(lead);
  }
}

NavRun::Next NavRun::Call(const NavLead& lead) {
  using Kind = NavLead::Kind;
  if (State().At.Domain != NavDomain::Title) {
    return Stop(NavStop::Missing);
  }
  SaveResume(lead.ResumeCell);
  const std::uint8_t set = State().At.Set;
  switch (lead.What) {
    case Kind::CallFirstPlay:
      return ToChain(NavDomain::FirstPlay, 0, 0);
    case Kind::CallManagerMenu:
      return ToChain(NavDomain::ManagerMenu, 0,
                     EntryChain(MenusIn(disc_.Menus, MenuLanguage()), TitleMenuId));
    case Kind::CallManagerChain:
      return ToChain(NavDomain::ManagerMenu, 0, lead.Number);
    case Kind::CallSetMenu: {
      const NavSet* entry = SetOf(disc_, set);
      return ToChain(
          NavDomain::SetMenu, set,
          EntryChain(entry == nullptr ? nullptr : MenusIn(entry->Menus, MenuLanguage()), Byte(lead.Number)));
    }
    default:
      return Stop(NavStop::Missing);
  }
}

void NavRun::SaveResume(std::uint8_t cell) {
  NavResume resume{.At = State().At, .Registers = {}};
  if (cell != 0) {
    resume.At.Cell = cell;
  }
  for (std::size_t i = 0; i < resume.Registers.size(); ++i) {
    resume.Registers.at(i) = State().Registers.System.at(4 + i);
  }
  State().Resume = resume;
}

NavRun::Next NavRun::ResumeTitle(const NavLead& lead) {
  NavState& state = State();
  if (!state.Resume) {
    return Stop(NavStop::Missing);
  }
  const NavResume resume = *std::exchange(state.Resume, std::nullopt);
  for (std::size_t i = 0; i < resume.Registers.size(); ++i) {
    state.Registers.System.at(4 + i) = resume.Registers.at(i);
  }
  if (lead.Button != 0) {
    SelectButton(lead.Button);
  }
  state.At = resume.At;
  return state.At.Cell == 0 ? Next::Chain : Next::Cell;
}

bool NavRun::CallMenu(NavDomain domain, std::uint8_t menuId) {
  const NavSet* set = SetOf(disc_, State().At.Set);
  const bool ofManager = domain == NavDomain::ManagerMenu;
  const std::vector<NavMenus>* menus = ofManager ? &disc_.Menus : (set == nullptr ? nullptr : &set->Menus);
  const std::uint16_t chain = menus == nullptr ? NoWay : EntryChain(MenusIn(*menus, MenuLanguage()), menuId);
  if (chain == NoWay) {
    return false;
  }
  if (State().At.Domain == NavDomain::Title) {
    SaveResume(0);
  }
  Go(ToChain(domain, ofManager ? std::uint8_t{0} : State().At.Set, chain));
  return true;
}

NavRun::Next NavRun::TitleOfDisc(std::uint16_t number) {
  if (number < 1 || number > disc_.Titles.size()) {
    return Stop(NavStop::Missing);
  }
  const NavTitle& title = disc_.Titles[number - 1U];
  State().At.Set = title.Set;
  return PartOfSet(title.Number, 1);
}

NavRun::Next NavRun::PartOfSet(std::uint8_t title, std::uint16_t part) {
  const NavSet* set = SetOf(disc_, State().At.Set);
  const bool isThere = set != nullptr && title >= 1 && title <= set->Parts.size() && part >= 1 &&
                       part <= set->Parts[title - 1U].size();
  if (!isThere) {
    return Stop(NavStop::Missing);
  }
  const auto row = std::ranges::find_if(
      disc_.Titles, [&](const NavTitle& one) { return one.Set == State().At.Set && one.Number == title; });
  if (row != disc_.Titles.end()) {
    State().Registers.Put(Sprm::Title,
                          static_cast<std::uint16_t>(std::distance(disc_.Titles.begin(), row) + 1));
  }
  State().Registers.Put(Sprm::TitleOfSet, title);
  State().Registers.Put(Sprm::Part, part);
  const NavPart to = set->Parts[title - 1U][part - 1U];
  entry_ = std::max<std::uint8_t>(to.Program, 1);
  return ToChain(NavDomain::Title, State().At.Set, to.Chain);
}

void NavRun::ToTitle(std::uint16_t number) {
  Go(TitleOfDisc(number));
}

void NavRun::ToPart(std::uint8_t title, std::uint16_t part) {
  Go(PartOfSet(title, part));
}

}  // namespace quorvelant
