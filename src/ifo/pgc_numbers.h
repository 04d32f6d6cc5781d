// The numbers by which program chains name each other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/rules.h"
#include "model/my_dvd.h"

namespace quorvelant {

// Counts the live PGCs of a title set's titles, or of a menu's language units, by their names.
class PgcNumbers {
 public:
  // As seen from any title of the set.
  static PgcNumbers OfTitles(const VTS_P& entry, const Rules& rules);
  // As seen from one language unit.
  static PgcNumbers OfUnit(const VTS_P& entry, const Lang_P& unit, const Rules& rules);

  // 0 for "none" (in any case), an empty name and one that no PGC bears.
  std::uint16_t Of(std::string_view name) const;

 private:
  std::unordered_map<std::string, std::uint16_t> numbers_;
};

}  // namespace quorvelant
