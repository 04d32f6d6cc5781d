// Sets of buttons: opened for work on the picture, and saved whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "edit/auto_route.h"
#include "edit/button_rules.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// A set under work.
struct EditedSet {
  HighlightPlay Set;  // times, modes, colours and forced buttons; its buttons are those that were saved
  std::vector<EditedButton> Buttons;
  std::optional<std::size_t> Saved = {};  // its index in `HighlightPlays`; nothing for a new one
  // The button that is selected, or activated when the set ends, whatever the user did: by its name, empty
  // for none. Nothing: as it was, on the same button.
  std::optional<std::string> ForcedSelect = {};
  std::optional<std::string> ForcedAction = {};
};

// The set that shows at a frame, as a player would choose it.
[[nodiscard]] std::optional<std::size_t> SetAt(const Track& track, std::int64_t frame);

// A saved set.
[[nodiscard]] EditedSet OpenSet(const Track& track, std::size_t set, const ButtonView& view);
// A new one, without buttons, for the span of `subtitle`, or else from the frame to the end of the track; on
// tracks without a length for ten seconds. A scheme shows the pattern of selected buttons in yellow, that of
// activated ones in red, and outlines in black, by the palette of a new project.
[[nodiscard]] EditedSet NewSet(const Track& track, std::int64_t frame, const SubPicturePlay* subtitle);

// Saves a set, or takes it away where no button is left. The commands of the cells that play it stay with
// their buttons. A set that was saved with more buttons than the limit takes no more. Gives the key of the
// set.
Outcome PutButtons(EditSession& session, std::size_t track, const EditedSet& set);

// Links the buttons of a saved set by one of `OfferedRoutes`.
Outcome RouteButtons(EditSession& session, std::size_t track, std::size_t set, Route route);

}  // namespace quorvelant
