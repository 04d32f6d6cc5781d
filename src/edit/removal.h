#pragma once

// Elements of the structure go, and are renamed; what refers to them follows.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// What would be lost with an element.
struct RemovalEffect {
  std::optional<Message> Refusal;
  std::vector<std::string>
      Commands;  // that lead to it or below it, and stand elsewhere: "VTS1.TITLE1.PGC1 Post2"
  std::vector<std::string> Links;  // keys of the PGCs whose next, previous or go-up link leads there
};
[[nodiscard]] RemovalEffect EffectOfRemoval(EditSession& session, std::string_view key);

// Marks an element and all below it as removed. Commands that led there become "NOP", links "none"; other
// numbers in commands follow. Asks before.
Outcome Remove(EditSession& session, std::string_view key, Consent consent);

class Change;
// The removal within a larger change, without a question. The element must be live.
void TakeAway(Change& change, const EditSession& session, std::string_view key);

// Of a title, PGC, program or cell. Commands that name it and the links of PGCs name it anew.
Outcome Rename(EditSession& session, std::string_view key, std::string name);

}  // namespace quorvelant
