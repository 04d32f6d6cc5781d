// Where links, jumps and calls lead.
#include <algorithm>
#include <utility>

#include "player/nav_lookup.h"
#include "player/nav_run.h"

namespace quorvelant {

namespace {

std::uint8_t Byte(std::size_t value) {
  return static_cast<std::uint8_t>(value);
}

// A set of domains, a bit each.
constexpr unsigned In(NavDomain domain) {
  return 1U << static_cast<unsigned>(domain);
}

}  // namespace

bool MayRunIn(NavDomain domain, NavLead::Kind lead) {
  using Kind = NavLead::Kind;
  constexpr unsigned Outside = In(NavDomain::FirstPlay) | In(NavDomain::ManagerMenu);
  constexpr unsigned Menus = In(NavDomain::ManagerMenu) | In(NavDomain::SetMenu);
  constexpr unsigned InSet = In(NavDomain::SetMenu) | In(NavDomain::Title);
  const auto allowed = [lead] {
    switch (lead) {
      case Kind::JumpTitle:
      case Kind::JumpSetMenu:
        return Outside;
      case Kind::JumpTitleOfSet:
      case Kind::JumpPart:
        return InSet;
      case Kind::JumpFirstPlay:
      case Kind::JumpManagerMenu:
      case Kind::JumpManagerChain:
        return Outside | Menus;
      case Kind::CallFirstPlay:
      case Kind::CallManagerMenu:
      case Kind::CallSetMenu:
      case Kind::CallManagerChain:
      case Kind::Part:
        return In(NavDomain::Title);
      case Kind::Resume:
        return Menus;
      case Kind::None:
      case Kind::GoTo:
      case Kind::Break:
      case Kind::Exit:
      case Kind::NoLink:
      case Kind::Unknown:
        return Outside | InSet;
      default:
        return Menus | InSet;
    }
  };
  return (allowed() & In(domain)) != 0;
}

NavRun::Next NavRun::Obey(const NavLead& lead, NavList list, std::uint16_t number) {
  const bool isLink = lead.What >= NavLead::Kind::TopCell && lead.What <= NavLead::Kind::Cell;
  if (isLink && lead.Button != 0) {
    SelectButton(lead.Button);
  }
  const NavPoint from = State().At;
  // Strictly a jump from outside; players take one without a set, from a set's menu, as that set's.
  const bool staysInSet = lead.What == NavLead::Kind::JumpSetMenu && lead.Set == 0 && lead.Title == 0 &&
                          from.Domain == NavDomain::SetMenu;
  const bool isAllowed = staysInSet || MayRunIn(from.Domain, lead.What);
  const Next next = lead.What == NavLead::Kind::Exit     ? Stop(NavStop::Exit)
                    : !isAllowed                         ? Stop(NavStop::Missing)
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

NavRun::Next NavRun::LinkedPart(std::uint16_t part) {
  const Next next = PartOfSet(Byte(State().Registers.Of(Sprm::TitleOfSet)), part);
  if (next == Next::Chain) {
    State().At.Program = std::exchange(entry_, std::uint8_t{1});
    State().Registers.Put(Sprm::TitleChain, State().At.Chain);
    return Next::Program;
  }
  return next;
}

NavRun::Next NavRun::ObeyLink(const NavLead& lead) {
  using Kind = NavLead::Kind;
  const NavChain* chain = Chain();
  NavPoint& at = State().At;
  if (chain == nullptr) {
    return Stop(NavStop::Missing);
  }
  const auto toNumbered = [&](std::uint16_t number) {
    return ToChain(at.Domain, at.Set, number);  // 0 is none
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
      return chain->GoUp == GoUpResumes ? ResumeTitle({.What = Kind::Resume}) : toNumbered(chain->GoUp);
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
      return LinkedPart(lead.Number);
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
  return state.At.Cell == 0 ? Next::Program : Next::Cell;
}

bool NavRun::CallMenu(NavDomain domain, std::uint8_t menuId) {
  const NavSet* set = SetOf(disc_, State().At.Set);
  const bool ofManager = domain == NavDomain::ManagerMenu;
  const std::vector<NavMenus>* menus = ofManager ? &disc_.Menus : (set == nullptr ? nullptr : &set->Menus);
  const std::uint16_t chain =
      menus == nullptr ? NoChain : EntryChain(MenusIn(*menus, MenuLanguage()), menuId);
  if (chain == NoChain) {
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
  State().Resume.reset();  // what plays now is what a call would come back to
  const NavPart to = set->Parts[title - 1U][part - 1U];
  entry_ = std::max<std::uint8_t>(to.Program, 1);
  return ToChain(NavDomain::Title, State().At.Set, to.Chain);
}

void NavRun::ToTitle(std::uint16_t number) {
  Go(TitleOfDisc(number));
}

void NavRun::ToLastProgram(std::uint16_t chain) {
  const Next next = ToChain(State().At.Domain, State().At.Set, chain);
  const NavChain* to = next == Next::Chain ? Chain() : nullptr;
  entry_ = Byte(to == nullptr ? 1 : std::max<std::size_t>(to->Programs.size(), 1));
  Go(next);
}

void NavRun::ToTimerChain() {
  const std::uint16_t chain = State().Registers.Of(Sprm::TimerChain);
  State().Registers.Put(Sprm::Timer, 0);
  Go(ToChain(NavDomain::Title, State().At.Set, chain));
}

void NavRun::ToPart(std::uint8_t title, std::uint16_t part) {
  Go(PartOfSet(title, part));
}

}  // namespace quorvelant
