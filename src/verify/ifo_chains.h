// Reads program chains and the tables of them.
#pragma once

#include <string>
#include <vector>

#include "verify/ifo_tables.h"
#include "verify/ifo_view.h"

namespace quorvelant {

struct ReadChain {
  IfoChain Chain;
  std::size_t Bytes = 0;  // that it takes
};

// The program chain at the head of `view`, as `name` in findings, checked in itself.
[[nodiscard]] ReadChain ReadIfoChain(const IfoView& view, int number, const std::string& name,
                                     const IfoTeller& teller);

// The chains of VTS_PGCIT, or of a language unit.
[[nodiscard]] std::vector<IfoChain> ReadIfoChains(const IfoView& table, const std::string& name,
                                                  const IfoTeller& teller);

}  // namespace quorvelant
