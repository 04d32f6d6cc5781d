// Single facts of a saved set of buttons, for those who edit them in a table.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "edit/button_commands.h"
#include "edit/outcome.h"
#include "edit/session.h"
#include "model/tracks.h"
#include "vm/command_place.h"

namespace quorvelant {

// Each gives the key of the set; a place without a button is refused.

// Links to the button follow. A name must be of one line and the only one of its kind in the set.
Outcome RenameButton(EditSession& session, std::size_t track, const ButtonPlace& place, std::string name);
// Colours, automatic action, areas and links. `set` writes to a copy and must leave name and number alone.
// Areas lie within the picture, and links lead to buttons of the set or nowhere (empty).
Outcome SetButton(EditSession& session, std::size_t track, const ButtonPlace& place,
                  const std::function<void(HighlightButton&)>& set);
// Asks before. Links to the button stay as they are, and lead nowhere.
Outcome RemoveButton(EditSession& session, std::size_t track, const ButtonPlace& place, Consent consent);
// The button that is selected when the set begins, or activated when it ends; an empty name for none.
enum class Force : std::uint8_t { Select, Action };
Outcome ForceButton(EditSession& session, std::size_t track, std::size_t set, Force force,
                    const std::string& name);
// When the set shows, in frames of the track.
Outcome SetButtonTimes(EditSession& session, std::size_t track, std::size_t set, std::int64_t start,
                       std::int64_t frames);

// Where the command of a button stands: in each live cell that plays its scene. A place beyond its list is
// one that has no command yet.
[[nodiscard]] std::vector<CommandPlace> CommandsOfButton(const Project& project, std::size_t track,
                                                         const ButtonPlace& place);
// Another command in all of them. Refused where no cell plays the scene.
Outcome SetButtonCommand(EditSession& session, std::size_t track, const ButtonPlace& place,
                         const std::string& text);

}  // namespace quorvelant
