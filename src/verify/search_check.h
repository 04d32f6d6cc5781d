// Checks the search tables (VOBU_SRI) of a VOB.
#pragma once

#include "verify/nav_check.h"

namespace quorvelant {

void CheckSearchTables(const VobState& vob, const NavCheckOrder& order);

}  // namespace quorvelant
