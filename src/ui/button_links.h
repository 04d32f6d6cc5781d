// Links among the buttons of a set, as they lead by their places on the picture.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "edit/button_rules.h"
#include "model/tracks.h"

namespace quorvelant {

// Where the link is to lead when a user turns it on: the nearest button that lies that way, then the next
// nearest, then any, and from the last one back to the first. Nothing for a button that is alone. `areas` are
// those of `buttons`.
[[nodiscard]] std::optional<std::size_t> NextLinkTarget(std::span<const HighlightButton> buttons,
                                                        std::span<const HighlightArea> areas,
                                                        std::size_t from, LinkDirection direction);

}  // namespace quorvelant
