#include "player/nav_live.h"

#include <algorithm>
#include <iterator>

#include "player/nav_lookup.h"

namespace quorvelant {

NavChains::NavChains(const NavDisc& disc, std::uint16_t language) : disc_(disc), language_(language) {
  if (disc.FirstPlay) {
    all_.push_back({&*disc.FirstPlay, {}});
    firstPlay_ = {0, 1};
  }
  if (const NavMenus* menus = MenusIn(disc.Menus, language)) {
    manager_ = Add(menus->Chains, NavDomain::ManagerMenu, 0);
  }
  std::uint8_t number = 0;
  for (const NavSet& set : disc.Sets) {
    ++number;
    const NavMenus* menus = MenusIn(set.Menus, language);
    menus_.push_back(menus == nullptr ? Group{} : Add(menus->Chains, NavDomain::SetMenu, number));
    titles_.push_back(Add(set.Titles, NavDomain::Title, number));
  }
}

NavChains::Group NavChains::Add(const std::vector<NavChain>& chains, NavDomain domain, std::uint8_t set) {
  const Group group{all_.size(), chains.size()};
  for (std::size_t i = 0; i < chains.size(); ++i) {
    all_.push_back({&chains[i],
                    {.Domain = domain,
                     .Set = set,
                     .Chain = static_cast<std::uint16_t>(i + 1),
                     .Program = 0,
                     .Cell = 0}});
  }
  return group;
}

std::size_t NavChains::IndexOf(const NavPoint& point) const {
  const std::size_t set = point.Set;
  const bool inSet = set >= 1 && set <= titles_.size();
  Group group;
  switch (point.Domain) {
    case NavDomain::FirstPlay:
      return firstPlay_.Count == 0 ? None : 0;
    case NavDomain::ManagerMenu:
      group = manager_;
      break;
    case NavDomain::SetMenu:
      group = inSet ? menus_[set - 1] : Group{};
      break;
    case NavDomain::Title:
      group = inSet ? titles_[set - 1] : Group{};
      break;
  }
  return point.Chain >= 1 && point.Chain <= group.Count ? group.First + point.Chain - 1U : None;
}

std::size_t NavChains::PartOf(std::uint8_t set, std::size_t title, std::size_t part) const {
  const NavSet* of = SetOf(disc_, set);
  if (of == nullptr || title < 1 || title > of->Parts.size() || part < 1 ||
      part > of->Parts[title - 1].size()) {
    return None;
  }
  return IndexOf({.Domain = NavDomain::Title,
                  .Set = set,
                  .Chain = of->Parts[title - 1][part - 1].Chain,
                  .Program = 0,
                  .Cell = 0});
}

std::size_t NavChains::EntryOf(const NavPoint& from, NavDomain domain, std::uint8_t set,
                               std::uint8_t menuId) const {
  const bool ofManager = domain == NavDomain::ManagerMenu;
  const std::uint8_t to = set == 0 ? from.Set : set;
  const NavSet* of = SetOf(disc_, to);
  const NavMenus* menus = ofManager       ? MenusIn(disc_.Menus, language_)
                          : of == nullptr ? nullptr
                                          : MenusIn(of->Menus, language_);
  const std::uint16_t chain = EntryChain(menus, menuId);
  return chain == NoChain ? None
                          : IndexOf({.Domain = domain,
                                     .Set = ofManager ? std::uint8_t{0} : to,
                                     .Chain = chain,
                                     .Program = 0,
                                     .Cell = 0});
}

std::size_t NavChains::TargetOf(const NavPoint& from, const NavLead& lead) const {
  using Kind = NavLead::Kind;
  const auto sibling = [&](std::uint16_t number) {
    NavPoint to = from;
    to.Chain = number;
    return IndexOf(to);
  };
  const std::size_t own = IndexOf(from);
  const NavChain* chain = own == None ? nullptr : all_[own].Chain;
  switch (lead.What) {
    case Kind::None:
    case Kind::GoTo:
    case Kind::Break:
    case Kind::NoLink:
    case Kind::Unknown:
    case Kind::Exit:
    case Kind::Resume:
      return None;
    case Kind::NextChain:
      return chain == nullptr ? None : sibling(chain->Next);
    case Kind::PreviousChain:
      return chain == nullptr ? None : sibling(chain->Previous);
    case Kind::GoUpChain:
      return chain == nullptr ? None : sibling(chain->GoUp);
    case Kind::Chain:
      return sibling(lead.Number);
    case Kind::JumpTitle: {
      const bool isThere = lead.Number >= 1 && lead.Number <= disc_.Titles.size();
      return isThere ? PartOf(disc_.Titles[lead.Number - 1U].Set, disc_.Titles[lead.Number - 1U].Number, 1)
                     : None;
    }
    case Kind::JumpTitleOfSet:
      return PartOf(from.Set, lead.Number, 1);
    case Kind::JumpPart:
      return PartOf(from.Set, lead.Title, lead.Number);
    case Kind::JumpFirstPlay:
    case Kind::CallFirstPlay:
      return IndexOf({});
    case Kind::JumpManagerMenu:
    case Kind::CallManagerMenu:
      return EntryOf(from, NavDomain::ManagerMenu, 0, TitleMenuId);
    case Kind::JumpManagerChain:
    case Kind::CallManagerChain:
      return IndexOf(
          {.Domain = NavDomain::ManagerMenu, .Set = 0, .Chain = lead.Number, .Program = 0, .Cell = 0});
    case Kind::JumpSetMenu:
    case Kind::CallSetMenu:
      return EntryOf(from, NavDomain::SetMenu, lead.Set, static_cast<std::uint8_t>(lead.Number));
    default:
      return own;
  }
}

NavLive::NavLive(const NavChains& chains) : chains_(chains) {
  const auto factsOf = [](const std::vector<NavCommand>& commands) {
    std::vector<NavFacts> facts;
    std::ranges::transform(commands, std::back_inserter(facts), FactsOf);
    return facts;
  };
  for (const NavChains::Placed& placed : chains.All()) {
    Row& row = rows_.emplace_back();
    row.Pre = factsOf(placed.Chain->Pre);
    row.Post = factsOf(placed.Chain->Post);
    row.Others = factsOf(placed.Chain->CellCommands);
    for (const NavCell& cell : placed.Chain->Cells) {
      for (const NavPage& page : cell.Pages) {
        for (const NavButton& button : page.Buttons) {
          row.Others.push_back(FactsOf(button.Command));
        }
      }
    }
  }
  for (const Row& row : rows_) {
    for (const auto* list : {&row.Pre, &row.Post, &row.Others}) {
      std::ranges::transform(*list, std::inserter(timerChains_, timerChains_.end()), &NavFacts::TimerChain);
    }
  }
  for (bool changes = true; changes;) {
    changes = false;
    for (std::size_t chain = rows_.size(); chain-- > 0;) {
      changes = Update(chain) || changes;
    }
  }
}

bool NavLive::Update(std::size_t chain) {
  Row& row = rows_[chain];
  const NavChains::Placed& placed = chains_.All()[chain];
  const auto entryOf = [this](std::size_t to) { return to == NavChains::None ? 0 : rows_[to].Entry; };
  const NavRegisterSet tail =
      AheadOf(chain, row.Post, entryOf(chains_.TargetOf(placed.Point, {.What = NavLead::Kind::NextChain})));
  NavRegisterSet stand = row.Stand | tail | ByKeys(chain);
  for (const NavFacts& facts : row.Others) {
    stand |= One(facts, row.Stand, After(chain, facts.Lead));
  }
  const NavRegisterSet entry = AheadOf(chain, row.Pre, placed.Chain->Cells.empty() ? tail : stand);
  const NavRegisterSet any = anyTitle_ | (placed.Point.Domain == NavDomain::Title ? stand : 0);
  const bool changes = tail != row.Tail || stand != row.Stand || entry != row.Entry || any != anyTitle_;
  row.Tail = tail;
  row.Stand = stand;
  row.Entry = entry;
  anyTitle_ = any;
  return changes;
}

NavRegisterSet NavLive::After(std::size_t chain, const NavLead& lead) const {
  using Kind = NavLead::Kind;
  if (lead.What == Kind::Resume || lead.What == Kind::Part) {
    return anyTitle_;
  }
  const NavChains::Placed& placed = chains_.All()[chain];
  if (lead.What == Kind::GoUpChain && placed.Chain->GoUp == GoUpResumes) {
    return anyTitle_;
  }
  if (lead.What == Kind::TailChain) {
    return rows_[chain].Tail;
  }
  const std::size_t to = chains_.TargetOf(placed.Point, lead);
  if (to == NavChains::None) {
    return 0;
  }
  const bool within = lead.What == Kind::TopCell || lead.What == Kind::NextCell ||
                      lead.What == Kind::PreviousCell || lead.What == Kind::TopProgram ||
                      lead.What == Kind::NextProgram || lead.What == Kind::PreviousProgram ||
                      lead.What == Kind::Program || lead.What == Kind::Cell;
  return within ? rows_[to].Stand : rows_[to].Entry;
}

NavRegisterSet NavLive::One(const NavFacts& facts, NavRegisterSet next, NavRegisterSet lead) const {
  // Within its list too: GoTo and Break.
  const bool leads = facts.Lead.What != NavLead::Kind::None && facts.Lead.What != NavLead::Kind::NoLink &&
                     facts.Lead.What != NavLead::Kind::Unknown;
  const NavRegisterSet after = !leads ? next : facts.LeadsAlways ? lead : next | lead;
  return facts.Reads | (after & ~(facts.WritesAlways ? facts.Writes : 0));
}

NavRegisterSet NavLive::AheadOf(std::size_t chain, const std::vector<NavFacts>& list,
                                NavRegisterSet after) const {
  std::vector<NavRegisterSet> ahead(list.size() + 1);
  ahead.back() = after;
  for (bool changes = true; changes;) {
    changes = false;
    for (std::size_t i = list.size(); i-- > 0;) {
      const NavLead& lead = list[i].Lead;
      NavRegisterSet there = After(chain, lead);
      if (lead.What == NavLead::Kind::Break ||
          (lead.What == NavLead::Kind::GoTo && lead.Number > list.size())) {
        there = after;
      } else if (lead.What == NavLead::Kind::GoTo) {
        there = ahead[lead.Number == 0 ? i + 1 : lead.Number - 1U];
      }
      const NavRegisterSet here = One(list[i], ahead[i + 1], there) | ahead[i];
      changes = changes || here != ahead[i];
      ahead[i] = here;
    }
  }
  return ahead.front();
}

// What the keys of a remote, or a timer that runs out, lead to from a chain.
NavRegisterSet NavLive::ByKeys(std::size_t chain) const {
  constexpr std::uint8_t LastMenuId = 7;
  const NavChains::Placed& placed = chains_.All()[chain];
  NavRegisterSet live = placed.Point.Domain == NavDomain::Title ? 0 : anyTitle_;
  const auto add = [&](std::size_t to) { live |= to == NavChains::None ? 0 : rows_[to].Entry; };
  add(chains_.EntryOf(placed.Point, NavDomain::ManagerMenu, 0, TitleMenuId));
  for (std::uint8_t id = RootMenuId; id <= LastMenuId; ++id) {
    add(chains_.EntryOf(placed.Point, NavDomain::SetMenu, 0, id));
  }
  for (const NavLead::Kind kind :
       {NavLead::Kind::NextChain, NavLead::Kind::PreviousChain, NavLead::Kind::GoUpChain}) {
    add(chains_.TargetOf(placed.Point, {.What = kind}));
  }
  for (const std::uint16_t number : timerChains_) {
    NavPoint to = placed.Point;
    to.Domain = NavDomain::Title;
    to.Chain = number;
    add(chains_.IndexOf(to));
  }
  return live;
}

}  // namespace quorvelant
