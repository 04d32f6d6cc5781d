// Proves a finished disc: a folder or an image, read whole and once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/disk.h"
#include "base/user_interface.h"
#include "verify/disc_finding.h"
#include "verify/ifo_tables.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

// A set as it was read; what navigation needs of it stays (verify/nav_of_disc.h).
struct VerifiedSet {
  IfoTables Tables;
  VobSetFacts Menus;
  VobSetFacts Titles;
};

struct VerifyResult {
  DiscFindings Findings;
  std::uint64_t Bytes = 0;        // that were read
  bool Stopped = false;           // the user asked for it
  std::vector<VerifiedSet> Sets;  // the manager, then the title sets; a set that is none has no data
};

// Any bytes do. Raises FileError for what cannot be opened or read.
[[nodiscard]] VerifyResult VerifyDisc(const std::string& path, UserInterface& ui, Disk& disk = SystemDisk());

}  // namespace quorvelant
