#include "ifo/pgc_numbers.h"

#include <vector>

#include "base/text.h"
#include "ifo/domain_records.h"

namespace quorvelant {
namespace {

using PgcTables = std::vector<const Collection<PGC_P>*>;
using Numbers = std::unordered_map<std::string, std::uint16_t>;

// Of equal names the later counts traditionally; players find the first.
Numbers Count(const PgcTables& everywhere, const PgcTables& reachable, const Rules& rules) {
  Numbers numbers;
  const bool through = rules.PgcLinksThroughTable;
  std::uint16_t number = 0;
  for (const Collection<PGC_P>* table : through ? reachable : everywhere) {
    if (!through) {
      number = 0;
    }
    for (const PGC_P* pgc : Live(*table)) {
      ++number;
      if (through) {
        numbers.emplace(NameKey(pgc->PGCName), number);
      } else {
        numbers[NameKey(pgc->PGCName)] = number;
      }
    }
  }
  return numbers;
}

}  // namespace

PgcNumbers PgcNumbers::OfTitles(const VTS_P& entry, const Rules& rules) {
  PgcTables titles;
  for (const Title_P* title : Live(entry.Title)) {
    titles.push_back(&title->PGC);
  }
  PgcNumbers result;
  result.numbers_ = Count(titles, titles, rules);
  return result;
}

PgcNumbers PgcNumbers::OfUnit(const VTS_P& entry, const Lang_P& unit, const Rules& rules) {
  PgcTables units;
  for (const Lang_P* language : Live(entry.Lang)) {
    units.push_back(&language->PGC);
  }
  PgcNumbers result;
  result.numbers_ = Count(units, {&unit.PGC}, rules);
  return result;
}

std::uint16_t PgcNumbers::Of(std::string_view name) const {
  const std::string key = NameKey(name);
  if (key.empty() || key == "none") {
    return 0;
  }
  const auto found = numbers_.find(key);
  return found == numbers_.end() ? 0 : found->second;
}

}  // namespace quorvelant
