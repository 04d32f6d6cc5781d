#include "model/highlight_groups.h"

#include <algorithm>

#include "base/text.h"

namespace quorvelant {

namespace {

// A set that names no groups has them in this order.
constexpr std::string_view WideName = "wide";
constexpr std::string_view LetterName = "letter";
constexpr std::string_view PanName = "pan";

std::size_t PlaceOf(const HighlightPlay& play, std::string_view name, std::size_t usualPlace) {
  for (std::size_t place = 0; place < play.ButtonModes.size(); ++place) {
    if (EqualNoCase(play.ButtonModes.at(place), name)) {
      return place;
    }
  }
  return usualPlace;
}

}  // namespace

std::vector<ButtonGroup> ButtonGroupsOf(const HighlightPlay& play, std::string_view aspect,
                                        std::string_view displayMode) {
  const std::size_t wide = PlaceOf(play, WideName, 0);
  if (aspect != "16:9") {
    return {{0, wide}};
  }
  std::vector<ButtonGroup> groups{{1, wide}};
  const bool both = EqualNoCase(displayMode, "Both PanScan and LetterBox");
  if (both || EqualNoCase(displayMode, "Only LetterBox")) {
    groups.push_back({2, PlaceOf(play, LetterName, 1)});
  }
  if (both || EqualNoCase(displayMode, "Only PanScan")) {
    groups.push_back({4, PlaceOf(play, PanName, 2)});
  }
  return groups;
}

std::optional<std::size_t> FindButton(std::span<const HighlightButton> buttons, std::string_view name) {
  const auto found = std::ranges::find(buttons, name, &HighlightButton::Name);
  return found == buttons.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - buttons.begin()));
}

}  // namespace quorvelant
