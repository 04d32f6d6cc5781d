// The one step that mends a finding.
#pragma once

#include <functional>
#include <optional>

#include "base/message.h"
#include "window/window_parts.h"

namespace quorvelant {

struct ProblemStep {
  QString Verb;  // of its button
  std::function<void()> Run;
};

// Nothing where a finding needs more thought than one step.
[[nodiscard]] std::optional<ProblemStep> StepFor(const Message& finding, WindowParts& parts);

}  // namespace quorvelant
