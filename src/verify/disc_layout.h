// The files of a disc: their names, sizes and places.
#pragma once

#include <vector>

#include "verify/disc_finding.h"
#include "verify/disc_source.h"
#include "verify/ifo_tables.h"
#include "verify/vob_place.h"

namespace quorvelant {

// The Video Manager, or one title set.
struct DiscDomain {
  int Set = 0;  // 0 is the Video Manager
  const DiscSourceFile* Ifo = nullptr;
  const DiscSourceFile* Bup = nullptr;
  VobSetFiles Menus;
  VobSetFiles Titles;
};

// The manager first, then the title sets up to the highest number that a file names. Names and sizes are
// checked.
[[nodiscard]] std::vector<DiscDomain> DomainsOf(const DiscSource& source, DiscFindings& findings);

// Of set 0, the manager, or of a title set. What is missing is told.
[[nodiscard]] DiscDomain DomainOf(int set, const DiscSource& source, DiscFindings& findings);

// What an IFO that is there says of where its files are, against the files: their sizes in a folder, their
// sectors in an image.
void CheckLayout(const DiscDomain& domain, const IfoTables& tables, DiscFindings& findings);

// Where an image has the sets, against the manager's titles.
void CheckPlaces(const std::vector<DiscDomain>& domains, const IfoTables& manager, DiscFindings& findings);

}  // namespace quorvelant
