#include "vm/disc_place.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/keys.h"

namespace quorvelant {

bool DiscPlace::Holds(const DiscPlace& place) const {
  if (Entry != place.Entry) {
    return false;
  }
  if ((InTitles || Unit > 0) && InTitles != place.InTitles) {
    return false;
  }
  const std::array own{Unit, Pgc, Program, Cell};
  const std::array others{place.Unit, place.Pgc, place.Program, place.Cell};
  // First Play has a PGC without a unit.
  const auto reached =
      std::find_if(own.rbegin(), own.rend(), [](std::uint32_t number) { return number > 0; });
  return std::equal(own.begin(), reached.base(), others.begin());
}

std::optional<DiscPlace> PlaceOfKey(std::string_view key) {
  if (key == FirstPgcKey) {
    return FirstPlayPlace;
  }
  const bool inTitles = InTitleDomain(key);
  const std::array numbers{TitleSetEntry(key), inTitles ? TitleNumber(key) : LanguageNumber(key),
                           PgcNumber(key), ProgramNumber(key), CellNumber(key)};
  const auto levels = std::min<std::size_t>(
      static_cast<std::size_t>(std::count(key.begin(), key.end(), '.')) + 1, numbers.size());
  if (std::any_of(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(levels),
                  [](int number) { return number <= 0; })) {
    return std::nullopt;
  }
  const auto at = [&numbers](std::size_t level) { return static_cast<std::uint32_t>(numbers.at(level)); };
  return DiscPlace{at(0), inTitles, at(1), at(2), at(3), at(4)};
}

std::string KeyOf(const DiscPlace& place) {
  if (place == FirstPlayPlace) {
    return std::string(FirstPgcKey);
  }
  std::string key = EntryKey(static_cast<int>(place.Entry));
  const auto below = [&key](std::string (*level)(std::string_view, int), std::uint32_t number) {
    if (number > 0) {
      key = level(key, static_cast<int>(number));
    }
  };
  below(place.InTitles ? TitleKey : LanguageKey, place.Unit);
  below(PgcKey, place.Pgc);
  below(ProgramKey, place.Program);
  below(CellKey, place.Cell);
  return key;
}

}  // namespace quorvelant
