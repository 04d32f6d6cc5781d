// Lists of findings.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/message.h"
#include "base/rules.h"

namespace quorvelant {

// Errors keep a disc from being made or from being right; warnings name what will not be as the project has
// it.
using Findings = std::vector<Message>;

inline std::size_t CountOf(const Findings& findings, Severity level) {
  return static_cast<std::size_t>(std::ranges::count(findings, level, &Message::Level));
}

inline bool HasErrors(const Findings& findings) {
  return CountOf(findings, Severity::Error) > 0;
}

inline bool Has(const Findings& findings, const MessageKind& kind) {
  return std::ranges::any_of(findings, [&kind](const Message& finding) { return finding.Is(kind); });
}

// Of a disc that does not play: errors by rules that refuse such a disc, otherwise warnings.
inline void LevelByRules(std::span<Message> findings, const Rules& rules) {
  for (Message& finding : findings) {
    const bool lower = !rules.RefusesDeadDiscs && finding.Level == Severity::Error;
    finding.Level = lower ? Severity::Warning : finding.Level;
  }
}
[[nodiscard]] inline Findings ByRules(Findings findings, const Rules& rules) {
  LevelByRules(findings, rules);
  return findings;
}

inline void Append(Findings& findings, Findings more) {
  findings.insert(findings.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// The same source is often used by several domains: each finding once.
[[nodiscard]] inline Findings OnceEach(Findings findings) {
  Findings once;
  std::unordered_set<std::string> told;
  for (Message& finding : findings) {
    if (told.insert(finding.Place + '\0' + finding.Text).second) {
      once.push_back(std::move(finding));
    }
  }
  return once;
}

}  // namespace quorvelant
