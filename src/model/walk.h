// The one walk of the structure. Removed elements keep their places and numbers; the `Live` walks pass over
// them. Everything comes in the order of the disc: entry by entry, in each languages before titles.
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/project.h"

namespace quorvelant {

enum class Domain { Menu, Title };

// For algorithms over elements that may be removed.
inline constexpr auto IsLive = [](const auto& element) { return !element.Removed; };

// The live elements of a list (a `Collection`, the tracks, the streams of a track), in order.
template <class List>
auto Live(List& list) {
  std::vector<decltype(&*std::begin(list))> live;
  for (auto& element : list) {
    if (IsLive(element)) {
      live.push_back(&element);
    }
  }
  return live;
}

// The same with the place of each, from 0, as the keys of sources and tables need it.
template <class List>
auto LiveWithIndex(List& list) {
  std::vector<std::pair<std::size_t, decltype(*std::begin(list))>> live;
  std::size_t index = 0;
  for (auto& element : list) {
    if (IsLive(element)) {
      live.emplace_back(index, element);
    }
    ++index;
  }
  return live;
}

// A PGC with its place; `Pgc` is `PGC_P` or `const PGC_P`. The numbers count from 1, removed elements too.
template <class Pgc>
struct PlacedPgc {
  template <class Level>
  using Like = std::conditional_t<std::is_const_v<Pgc>, const Level, Level>;

  Pgc* Chain = nullptr;
  Like<VTS_P>* Entry = nullptr;
  Like<Lang_P>* Language = nullptr;  // the unit that holds the PGC is either a language
  Like<Title_P>* Title = nullptr;    // or a title
  std::size_t EntryNumber = 0;
  std::size_t UnitNumber = 0;    // of the language or title within its entry
  std::size_t Number = 0;        // within the unit
  std::size_t DomainNumber = 0;  // through all units of the domain
  bool IsLive = false;           // entry, unit and PGC

  Domain In() const { return Title == nullptr ? Domain::Menu : Domain::Title; }
  const std::string& Key() const { return Chain->Key; }
  const std::string& UnitKey() const { return Title == nullptr ? Language->Key : Title->Key; }
};

template <class AnyProject>
using PlacedPgcOf = PlacedPgc<std::conditional_t<std::is_const_v<AnyProject>, const PGC_P, PGC_P>>;

// Every PGC of the disc, removed ones as well; First Play stands by itself. For those who count elements or
// must keep removed ones true.
template <class AnyProject>
auto AllPgcs(AnyProject& project) {
  std::vector<PlacedPgcOf<AnyProject>> all;
  PlacedPgcOf<AnyProject> at;
  const auto unitsOf = [&](auto& units, auto PlacedPgcOf<AnyProject>::*place) {
    at.UnitNumber = at.DomainNumber = 0;
    for (auto& unit : units) {
      at.*place = &unit;
      ++at.UnitNumber;
      at.Number = 0;
      for (auto& pgc : unit.PGC) {
        at.Chain = &pgc;
        ++at.Number;
        ++at.DomainNumber;
        at.IsLive = IsLive(*at.Entry) && IsLive(unit) && IsLive(pgc);
        all.push_back(at);
      }
    }
    at.*place = nullptr;
  };
  for (auto& entry : project.Disc) {
    at.Entry = &entry;
    ++at.EntryNumber;
    unitsOf(entry.Lang, &PlacedPgcOf<AnyProject>::Language);
    unitsOf(entry.Title, &PlacedPgcOf<AnyProject>::Title);
  }
  return all;
}

// The live PGCs of the live units of the live entries.
template <class AnyProject>
auto LivePgcs(AnyProject& project) {
  auto pgcs = AllPgcs(project);
  std::erase_if(pgcs, [](const auto& at) { return !at.IsLive; });
  return pgcs;
}

// Every cell of a PGC, removed ones as well.
template <class Pgc>
auto AllCells(Pgc& chain) {
  std::vector<std::conditional_t<std::is_const_v<Pgc>, const Cell_P, Cell_P>*> cells;
  for (auto& program : chain.PG) {
    for (auto& cell : program.Cell) {
      cells.push_back(&cell);
    }
  }
  return cells;
}

// The live cells of the live programs of a PGC.
template <class Pgc>
auto LiveCells(Pgc& chain) {
  std::vector<std::conditional_t<std::is_const_v<Pgc>, const Cell_P, Cell_P>*> cells;
  for (auto* program : Live(chain.PG)) {
    for (auto* cell : Live(program->Cell)) {
      cells.push_back(cell);
    }
  }
  return cells;
}

// The live cells of a domain; none where the entry is removed.
inline std::vector<const Cell_P*> LiveCells(const VTS_P& entry, Domain domain) {
  std::vector<const Cell_P*> cells;
  const auto cellsOf = [&cells](const auto& units) {
    for (const auto* unit : Live(units)) {
      for (const PGC_P* chain : Live(unit->PGC)) {
        const auto ofChain = LiveCells(*chain);
        cells.insert(cells.end(), ofChain.begin(), ofChain.end());
      }
    }
  };
  if (!entry.Removed) {
    domain == Domain::Menu ? cellsOf(entry.Lang) : cellsOf(entry.Title);
  }
  return cells;
}

}  // namespace quorvelant
