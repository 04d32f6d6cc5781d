// What the wizard and its menus tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- the description of a disc as a file ---

inline constexpr MessageKind OrderUnreadable{"order-unreadable", Severity::Error, "Order Error",
                                             "'{}' cannot be read or is larger than 1 MiB"};
inline constexpr MessageKind OrderNoToml{"order-no-toml", Severity::Error, "Order Error",
                                         "This is no TOML: {}"};
inline constexpr MessageKind OrderKeyUnknown{"order-key-unknown", Severity::Error, "Order Error",
                                             "There is no key \"{}\" in {}; these are: {}"};
inline constexpr MessageKind OrderKeyMissing{"order-key-missing", Severity::Error, "Order Error",
                                             "{} needs the key \"{}\""};
inline constexpr MessageKind OrderValueUnfit{"order-value-unfit", Severity::Error, "Order Error",
                                             "\"{}\" must be {}"};

// --- themes ---

inline constexpr MessageKind ThemeMissing{
    "theme-missing", Severity::Error, "Theme Error",
    "There is no theme '{}': these are built in: {}; a theme of your own is a folder with a theme.toml"};

}  // namespace quorvelant::message
