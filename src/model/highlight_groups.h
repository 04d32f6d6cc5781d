// The displays that a set of buttons is made for, and how its buttons are found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "model/tracks.h"

namespace quorvelant {

// One group of a set: the same buttons on one kind of display.
struct ButtonGroup {
  std::uint8_t DisplayType = 0;  // 0 4:3, 1 wide, 2 letterbox, 4 pan-scan
  std::size_t AreaPlace = 0;     // which of a button's areas
  bool operator==(const ButtonGroup&) const = default;
};

// The groups follow the track's aspect and its display mode ("Only PanScan", "Only LetterBox", "Both
// PanScan and LetterBox"); a group's area is the one whose place bears its name ("wide", "letter", "pan").
std::vector<ButtonGroup> ButtonGroupsOf(const HighlightPlay& play, std::string_view aspect,
                                        std::string_view displayMode);

// The navigation pack has room for 36 buttons, which the groups share.
constexpr std::size_t MostButtonsOnDisc(std::size_t groups) {
  return 36 / groups;
}

// The place of the button with that name, compared exactly.
std::optional<std::size_t> FindButton(std::span<const HighlightButton> buttons, std::string_view name);

}  // namespace quorvelant
