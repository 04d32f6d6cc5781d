#include "desk/author_options.h"

#include <cstddef>

namespace quorvelant {

AuthorOrder OrderOf(const Settings& settings, const Rules& rules) {
  const Settings used = rules.GoesBySettings ? settings : Settings{};
  AuthorOrder order{.Rules = rules, .RemoveSeqEnd = used.RemoveSeqEnd};
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    order.Regions.at(static_cast<std::size_t>(Regions.at(i) - 1)) = used.RegionAllowed.at(i);
  }
  return order;
}

}  // namespace quorvelant
