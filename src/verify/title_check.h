// Checks the tables of the Video Manager and of the title sets against one another.
#pragma once

#include <vector>

#include "verify/disc_finding.h"
#include "verify/ifo_tables.h"

namespace quorvelant {

// `sets` by number; one that could not be read is absent.
void CheckTitles(const IfoTables& manager, const std::vector<const IfoTables*>& sets, DiscFindings& findings);

}  // namespace quorvelant
