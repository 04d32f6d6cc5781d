// The PGCs that a PGC names as its next, previous and go-up one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

namespace quorvelant {

enum class PgcLinkKind : std::uint8_t { Next, Previous, GoUp };

struct PgcLink {
  std::string Pgc;  // key of the PGC that has the link
  PgcLinkKind Kind = PgcLinkKind::Next;
  std::string Target;  // key of the PGC that it names
  bool operator==(const PgcLink&) const = default;
};

// The name that a link holds; "none" is no link.
[[nodiscard]] std::string& LinkOf(PGC_P& pgc, PgcLinkKind kind);
[[nodiscard]] const std::string& LinkOf(const PGC_P& pgc, PgcLinkKind kind);

// The links that lead to a PGC or to what an element holds, in the order of the disc. A name is that of the
// first live PGC that bears it: in a title among those of the set's titles, in a menu in its language, else
// in the other languages. `outside` leaves out those that stand in the element itself.
[[nodiscard]] std::vector<PgcLink> LinksTo(const Project& project, std::string_view key, bool outside);

}  // namespace quorvelant
