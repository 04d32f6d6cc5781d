// What the window's document, jobs and models tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind JobBroken{"job-broken", Severity::Error, "Error", "{}"};

}  // namespace quorvelant::message
