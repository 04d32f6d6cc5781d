#include "vm/live_numbers.h"

#include <algorithm>
#include <utility>

#include "model/menu_kind.h"

namespace quorvelant {

namespace {

constexpr std::uint32_t Manager = 1;

// Number `number` of a list that counts from 1.
std::optional<DiscPlace> Nth(std::span<const DiscPlace> places, std::int32_t number) {
  const bool there = number >= 1 && std::cmp_less_equal(number, places.size());
  return there ? std::optional(places[static_cast<std::size_t>(number) - 1]) : std::nullopt;
}

std::optional<std::int32_t> NumberIn(std::span<const DiscPlace> places, const DiscPlace& place) {
  const auto found = std::ranges::lower_bound(places, place);
  return found != places.end() && *found == place
             ? std::optional(static_cast<std::int32_t>(found - places.begin()) + 1)
             : std::nullopt;
}

DiscPlace TitlesOf(std::uint32_t entry) {
  return {.Entry = entry, .InTitles = true};
}

std::int32_t MenuOf(const PGC_P& pgc) {
  constexpr unsigned MenuBits = 0x0F;
  return static_cast<std::int32_t>(MenuKindOf(pgc.MenuType).Category & MenuBits);
}

}  // namespace

void LiveNumbers::Read(const Project& project, std::uint32_t entry) {
  entries_.resize(std::max<std::size_t>(project.Disc.Count() + 1, entries_.size()));
  if (entry >= entries_.size()) {
    return;
  }
  const VTS_P* live = project.Disc.Item(entry);
  if (live == nullptr || live->Removed) {
    entries_[entry].reset();
    return;
  }
  auto read = std::make_shared<Entry>();
  const auto unit = [&read](const DiscPlace& place, const auto& /*unit*/) { read->Units.push_back(place); };
  VisitLive(live->Lang, {.Entry = entry}, &DiscPlace::Unit, unit);
  VisitLive(live->Title, TitlesOf(entry), &DiscPlace::Unit, unit);
  VisitLivePgcs(*live, entry, [&read](const DiscPlace& at, const PGC_P& pgc) {
    read->Pgcs.push_back(at);
    read->Menus.push_back(at.InTitles ? 0 : MenuOf(pgc));
    VisitLive(pgc.PG, at, &DiscPlace::Program, [&read](const DiscPlace& place, const PG_P& program) {
      const std::size_t before = read->Cells.size();
      VisitLive(program.Cell, place, &DiscPlace::Cell,
                [&read](const DiscPlace& cell, const Cell_P& /*cell*/) { read->Cells.push_back(cell); });
      if (read->Cells.size() > before) {
        read->Programs.push_back(place);
      }
    });
  });
  entries_[entry] = std::move(read);
}

const LiveNumbers::Entry* LiveNumbers::EntryAt(std::uint32_t entry) const {
  return entry < entries_.size() ? entries_[entry].get() : nullptr;
}

std::vector<std::uint32_t> LiveNumbers::Sets() const {
  std::vector<std::uint32_t> sets;
  for (std::uint32_t entry = Manager + 1; entry < entries_.size(); ++entry) {
    if (entries_[entry] != nullptr) {
      sets.push_back(entry);
    }
  }
  return sets;
}

std::optional<LiveNumbers::Scope> LiveNumbers::ScopeOf(ReferenceKind kind, const DiscPlace& stand) const {
  const bool inMenus = stand.Unit > 0 && !stand.InTitles;
  const std::optional<Scope> none;
  switch (kind) {
    case ReferenceKind::LinkPgc:
      return Scope{&Entry::Pgcs, inMenus ? stand.UnitOf() : TitlesOf(stand.Entry)};
    case ReferenceKind::TimerPgc:
      return stand.InTitles ? Scope{&Entry::Pgcs, TitlesOf(stand.Entry)} : none;
    case ReferenceKind::LinkProgram:
      return Scope{&Entry::Programs, stand.PgcOf()};
    case ReferenceKind::LinkCell:
    case ReferenceKind::ResumeCell:
      return Scope{&Entry::Cells, stand.PgcOf()};
    case ReferenceKind::LinkPart:
      return stand.InTitles ? Scope{&Entry::Programs, stand.UnitOf()} : none;
    case ReferenceKind::JumpSetTitle:
      return Scope{&Entry::Units, TitlesOf(stand.Entry)};
    case ReferenceKind::VmgPgc: {
      if (inMenus && stand.Entry == Manager) {
        return Scope{&Entry::Pgcs, stand.UnitOf()};
      }
      const Entry* manager = EntryAt(Manager);
      return manager == nullptr || manager->Units.empty() ? none
                                                          : Scope{&Entry::Pgcs, manager->Units.front()};
    }
    default:
      return none;
  }
}

std::span<const DiscPlace> LiveNumbers::Counted(const Scope& scope) const {
  const Entry* entry = EntryAt(scope.Parent.Entry);
  if (entry == nullptr) {
    return {};
  }
  const Places& all = entry->*scope.Level;
  const auto begin = std::ranges::lower_bound(all, scope.Parent);
  const auto end = std::partition_point(
      begin, all.end(), [&scope](const DiscPlace& place) { return scope.Parent.Holds(place); });
  return {begin, end};
}

std::optional<DiscPlace> LiveNumbers::FindTitle(std::int32_t number) const {
  for (const std::uint32_t set : Sets()) {
    const auto titles = Counted({&Entry::Units, TitlesOf(set)});
    if (std::cmp_less_equal(number, titles.size())) {
      return Nth(titles, number);
    }
    number -= static_cast<std::int32_t>(titles.size());
  }
  return std::nullopt;
}

std::optional<DiscPlace> LiveNumbers::FindMenu(const LiveNumber& menu, const DiscPlace& stand) const {
  constexpr std::int32_t TitleMenu = 2;
  const auto sets = Sets();
  std::uint32_t number = stand.Entry;
  if (menu.Number == TitleMenu) {
    number = Manager;
  } else if (menu.Within != TextReference::OwnSet) {
    const bool there = menu.Within >= 1 && std::cmp_less_equal(menu.Within, sets.size());
    number = there ? sets[static_cast<std::size_t>(menu.Within) - 1] : 0;
  }
  const Entry* entry = EntryAt(number);
  if (entry == nullptr || menu.Number == 0) {
    return std::nullopt;
  }
  std::optional<DiscPlace> found;  // of equal ones in a language players take the first
  for (std::size_t i = 0; i < entry->Pgcs.size(); ++i) {
    if (entry->Menus[i] != menu.Number || (found && found->UnitOf().Holds(entry->Pgcs[i]))) {
      continue;
    }
    if (found) {
      return DiscPlace{.Entry = number};
    }
    found = entry->Pgcs[i];
  }
  return found;
}

std::optional<DiscPlace> LiveNumbers::Find(ReferenceKind kind, const LiveNumber& number,
                                           const DiscPlace& stand) const {
  switch (kind) {
    case ReferenceKind::FirstPlay:
      return FirstPlayPlace;
    case ReferenceKind::Menu:
      return FindMenu(number, stand);
    case ReferenceKind::JumpTitle:
      return FindTitle(number.Number);
    case ReferenceKind::JumpSetPart: {
      const auto title = Nth(Counted({&Entry::Units, TitlesOf(stand.Entry)}), number.Within);
      return title ? Nth(Counted({&Entry::Programs, *title}), number.Number) : std::nullopt;
    }
    case ReferenceKind::MenuSet:
    case ReferenceKind::MenuTitle: {
      const auto sets = Sets();
      const std::int32_t set = kind == ReferenceKind::MenuSet ? number.Number : number.Within;
      if (set < 1 || std::cmp_greater(set, sets.size())) {
        return std::nullopt;
      }
      const std::uint32_t entry = sets[static_cast<std::size_t>(set) - 1];
      return kind == ReferenceKind::MenuSet ? std::optional(DiscPlace{.Entry = entry})
                                            : Nth(Counted({&Entry::Units, TitlesOf(entry)}), number.Number);
    }
    default: {
      const auto scope = ScopeOf(kind, stand);
      return scope ? Nth(Counted(*scope), number.Number) : std::nullopt;
    }
  }
}

std::optional<LiveNumber> LiveNumbers::NumberOf(ReferenceKind kind, const DiscPlace& place,
                                                const DiscPlace& stand) const {
  const auto inList = [&place](std::span<const DiscPlace> places) {
    const auto number = NumberIn(places, place);
    return number ? std::optional(LiveNumber{.Number = *number}) : std::nullopt;
  };
  const auto titles = [this](std::uint32_t entry) { return Counted({&Entry::Units, TitlesOf(entry)}); };
  switch (kind) {
    case ReferenceKind::MenuSet: {
      const auto sets = Sets();
      const auto found = std::ranges::find(sets, place.Entry);
      return found == sets.end()
                 ? std::nullopt
                 : std::optional(LiveNumber{.Number = static_cast<std::int32_t>(found - sets.begin()) + 1});
    }
    case ReferenceKind::MenuTitle:
      return inList(titles(place.Entry));
    case ReferenceKind::JumpTitle: {
      std::size_t before = 0;
      for (const std::uint32_t set : Sets()) {
        before += set < place.Entry ? titles(set).size() : 0;
      }
      auto number = inList(titles(place.Entry));
      if (number) {
        number->Number += static_cast<std::int32_t>(before);
      }
      return number;
    }
    case ReferenceKind::JumpSetPart: {
      auto number = inList(Counted({&Entry::Programs, place.UnitOf()}));
      const auto title = NumberIn(titles(place.Entry), place.UnitOf());
      if (number && title) {
        number->Within = *title;
      }
      return title ? number : std::nullopt;
    }
    default: {
      const auto scope = ScopeOf(kind, stand);
      return scope ? inList(Counted(*scope)) : std::nullopt;
    }
  }
}

}  // namespace quorvelant
