// How a planned disc fits the media there are.
#pragma once

#include <optional>
#include <string>

#include "author/disc_plan.h"
#include "base/message.h"

namespace quorvelant {

// The warning that no medium takes the disc, with the sizes of its tracks, the largest first; nothing where
// one does. The estimate may be a little too high.
[[nodiscard]] std::optional<Message> WarningOfSize(const DiscPlan& plan);

// Whether the disc is too large for any medium even by what its sources alone take.
[[nodiscard]] bool IsSurelyTooLarge(const DiscPlan& plan);

}  // namespace quorvelant
