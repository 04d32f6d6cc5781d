// The bytes of one program chain.
#pragma once

#include "base/bytes.h"
#include "ifo/domain_records.h"
#include "ifo/pgc_numbers.h"

namespace quorvelant {

// Where a program chain stands.
struct PgcPlace {
  const EntryRecords& Records;
  quorvelant::Domain Domain;
  const PgcNumbers& Numbers;
  const Title_P* Title = nullptr;  // whose stream policy holds; none in a menu
};

// PGC_GI, command table, program map, cell playback and cell position table. Commands are copied from
// their hexadecimal form; deleted ones take no room. A cell that was not written is passed over, and so
// is a program without any.
Bytes BuildPgc(const PGC_P& chain, const PgcPlace& place);

// The First Play PGC: user operations, still time and commands alone.
Bytes BuildFirstPlayPgc(const PGC_P& chain);

// The cells of a program that were written, in order.
std::vector<std::pair<const Cell_P*, WrittenCell>> WrittenCells(const PG_P& program,
                                                                const DomainRecords& records);

}  // namespace quorvelant
