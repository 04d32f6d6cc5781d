// VTS_TMAPT: for each PGC of a title set the sector of each step of time, so that a player can seek.
#pragma once

#include <stdexcept>

#include "base/bytes.h"
#include "ifo/domain_records.h"

namespace quorvelant {

inline constexpr std::size_t MostTimeMapEntries = 2048;

// Raised where no step fits a program chain: the set then goes without the table.
class TimeMapError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One map a live PGC of the live titles; a title that does not play in sequence has empty ones. Empty
// where no title does.
Bytes BuildTimeMaps(const EntryRecords& records);

}  // namespace quorvelant
