// The titles of a set: VTS_PTT_SRPT, which lists their chapters, and VTS_PGCIT, their program chains.
#pragma once

#include <cstdint>
#include <vector>

#include "base/bytes.h"
#include "ifo/domain_records.h"

namespace quorvelant {

// A chapter: a program of which at least one cell was written.
struct Chapter {
  std::uint16_t Pgc = 0;      // number in the set's PGC table
  std::uint16_t Program = 0;  // number among the chain's written programs
};
// Of each live title of the set, in order.
std::vector<std::vector<Chapter>> ChaptersOf(const VTS_P& entry, const DomainRecords& titles);

// Empty for a set without live titles.
Bytes BuildChapterTable(const EntryRecords& records);

// Empty for a set without live program chains.
Bytes BuildTitlePgcTable(const EntryRecords& records);

}  // namespace quorvelant
