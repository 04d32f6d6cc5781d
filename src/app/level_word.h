// The words by which messages say how grave they are.
#pragma once

#include <string_view>

#include "base/message.h"

namespace quorvelant {

// Text messages begin with it, and JSON has it as "severity".
[[nodiscard]] constexpr std::string_view LevelWord(Severity level) {
  switch (level) {
    case Severity::Error:
      return "error";
    case Severity::Warning:
      return "warning";
    case Severity::Information:
      break;
  }
  return "note";
}

}  // namespace quorvelant
