// The place of an element on the disc, as numbers.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/walk.h"

namespace quorvelant {

// The numbers of an element's key (model/keys.h), which count removed elements too and never change. A level
// that it does not reach is 0. Places compare in the order of the walk.
struct DiscPlace {
  std::uint32_t Entry = 0;  // 1 the Video Manager, n+1 title set n; 0 with PGC 1 is First Play
  bool InTitles = false;    // alone, with unit 0: all titles of the entry
  std::uint32_t Unit = 0;   // language or title
  std::uint32_t Pgc = 0;
  std::uint32_t Program = 0;
  std::uint32_t Cell = 0;

  // What holds it, or itself.
  [[nodiscard]] DiscPlace UnitOf() const { return {Entry, InTitles, Unit}; }
  [[nodiscard]] DiscPlace PgcOf() const { return {Entry, InTitles, Unit, Pgc}; }
  // Whether `place` is this element or lies below it.
  [[nodiscard]] bool Holds(const DiscPlace& place) const;

  // NOLINTNEXTLINE(modernize-use-nullptr,readability-implicit-bool-conversion): no pointer
  friend auto operator<=>(const DiscPlace&, const DiscPlace&) = default;
};
inline constexpr DiscPlace FirstPlayPlace{.Pgc = 1};

// Nothing where the text is no key of the disc. A highlight's key gives the place of its cell.
[[nodiscard]] std::optional<DiscPlace> PlaceOfKey(std::string_view key);
[[nodiscard]] std::string KeyOf(const DiscPlace& place);

// Calls `visit(place, pgc)` with the live PGCs of an entry, languages before titles. `Entry` is `VTS_P` or
// `const VTS_P`.
template <class Entry, class Visit>
void VisitLivePgcs(Entry& entry, std::uint32_t number, Visit visit) {
  const auto pgcsOf = [&](auto& units, bool inTitles) {
    DiscPlace at{.Entry = number, .InTitles = inTitles};
    for (auto& unit : units) {
      ++at.Unit;
      at.Pgc = 0;
      for (auto& pgc : unit.PGC) {
        ++at.Pgc;
        if (IsLive(unit) && IsLive(pgc)) {
          visit(at, pgc);
        }
      }
    }
  };
  if (IsLive(entry)) {
    pgcsOf(entry.Lang, false);
    pgcsOf(entry.Title, true);
  }
}

// Calls `visit(place, element)` with the live ones of a list, a level below `place`; `level` is the number
// that counts there, `&DiscPlace::Program` for programs.
template <class List, class Visit>
void VisitLive(List& list, DiscPlace place, std::uint32_t DiscPlace::*level, Visit visit) {
  for (auto& element : list) {
    ++(place.*level);
    if (IsLive(element)) {
      visit(place, element);
    }
  }
}

}  // namespace quorvelant
