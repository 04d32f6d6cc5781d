// What there is to play on a finished disc.
#pragma once

#include "player/nav_disc.h"
#include "verify/verify_disc.h"

namespace quorvelant {

// From the tables and navigation packs that were read. Chains and cells are named by table and number, e.g.
// "VTS_01_0.IFO VTS_PGCIT PGC 2 cell 1". What was damaged is absent, so that numbers of a damaged disc may
// lead nowhere.
[[nodiscard]] NavDisc NavOfDisc(const VerifyResult& disc);

}  // namespace quorvelant
