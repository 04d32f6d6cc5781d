// What the window's document, jobs and models tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind JobBroken{"job-broken", Severity::Error, "Error", "{}"};

// The text.
inline constexpr MessageKind ColorUnfit{"color-unfit", Severity::Error, "Colour Error",
                                        "\"{}\" is no colour: one is written as #rrggbb"};

}  // namespace quorvelant::message
