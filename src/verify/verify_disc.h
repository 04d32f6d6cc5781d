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
  bool IsOurs = false;            // the manager names this program
  std::vector<VerifiedSet> Sets;  // the manager, then the title sets; a set that is none has no data

  // Whether there is a manager, without which nothing leads anywhere.
  [[nodiscard]] bool HasTables() const { return !Sets.empty() && !Sets.front().Tables.Data.empty(); }
};

// Any bytes do. Raises FileError for what cannot be opened or read.
[[nodiscard]] VerifyResult VerifyDisc(const std::string& path, UserInterface& ui, Disk& disk = SystemDisk());

}  // namespace quorvelant
