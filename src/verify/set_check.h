// Checks the tables of a menu domain or of a set's titles against their sectors.
#pragma once

#include "verify/ifo_tables.h"
#include "verify/ifo_view.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

// The menus of `tables`, or its titles. `facts` is empty where there are no VOB files.
void CheckAgainstSectors(const IfoTables& tables, bool menus, const VobSetFacts& facts,
                         const IfoTeller& teller);

}  // namespace quorvelant
