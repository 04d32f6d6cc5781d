// What the window's document, jobs and models tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind JobBroken{"job-broken", Severity::Error, "Error", "{}"};

// --- buttons on the picture ---

inline constexpr MessageKind ButtonTooSmall{"button-too-small", Severity::Error, "New Button Error",
                                            "A button is more than 2 pixels wide and high"};
inline constexpr MessageKind ButtonNameUnfit{"button-name-unfit", Severity::Error, "Rename Button",
                                             "\"{}\" is the name of another button, or has two lines"};
// The bitmap under buttons, and why.
inline constexpr MessageKind ButtonShadeUnwritten{
    "button-shade-unwritten", Severity::Error, "New Button Error",
    "Buttons show by a subtitle, and its bitmap cannot be written beside the project: {}"};

}  // namespace quorvelant::message
