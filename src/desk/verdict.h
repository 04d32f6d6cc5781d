// What follows from the findings on a project.
#pragma once

#include <cstddef>
#include <string>

#include "check/findings.h"

namespace quorvelant {

struct Verdict {
  std::size_t Errors = 0;
  std::size_t Warnings = 0;
  bool Ready = false;
};

// With `strict`, warnings keep a disc from being made.
[[nodiscard]] Verdict VerdictOn(const Findings& findings, bool strict = false);

// "ready to author: no errors, 1 warning"
[[nodiscard]] std::string VerdictWords(const Verdict& verdict);

}  // namespace quorvelant
