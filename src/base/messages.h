// What this room tells.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind OpenNotPlain{"open-not-plain", Severity::Error, "OpenFile Error",
                                          "Unable to open file {}: it is {}, not a file"};
// A question, with retry and cancel.
inline constexpr MessageKind OpenRetry{
    "open-retry", Severity::Error, "OpenFile Error",
    "Unable to open file {}. Please close any applications using this file and press OK to retry (Cancel to "
    "exit). Where no other program uses it, its permissions keep this user out, or its disk fails"};

}  // namespace quorvelant::message
