// Checks the time maps of a title set against its sectors.
#pragma once

#include "verify/ifo_tables.h"
#include "verify/ifo_view.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

void CheckTimeMaps(const IfoTables& tables, const VobSetFacts& facts, const IfoTeller& teller);

}  // namespace quorvelant
