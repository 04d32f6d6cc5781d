// Reads one IFO and checks it against its own layout.
#pragma once

#include <optional>
#include <string>

#include "verify/disc_finding.h"
#include "verify/ifo_tables.h"

namespace quorvelant {

// Any bytes do. Nothing for what does not begin as an IFO does; that is found, too. `isOurs`: this program
// made the disc.
[[nodiscard]] std::optional<IfoTables> ReadIfoTables(const std::string& file, int set, bool isOurs,
                                                     Bytes data, DiscFindings& findings);

// Whether a VIDEO_TS.IFO names this program as its maker.
[[nodiscard]] bool IsOurManager(ByteView ifo);

}  // namespace quorvelant
