// What a disc does when it goes in, and which streams play then.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/menu_structure.h"

namespace quorvelant {

// Whether all films play one after another from the start. A register says so until a menu shows, so that a
// film that was chosen there ends as it is told.
[[nodiscard]] bool PlaysAllAtStart(const MenuPlan& plan);
[[nodiscard]] std::string StopPlayingAllText();
// The command where all films play, and none otherwise.
[[nodiscard]] std::string WhilePlayingAllText(std::string_view command);

// First Play: the subtitles of the start where films have some, then the jump.
Outcome SetFirstPlay(EditSession& session, const MenuPlan& plan, std::string_view jump);
// What a title traditionally chooses whenever it starts.
Outcome ChooseStreamsAtTitle(EditSession& session, std::string_view chain, std::size_t track);

}  // namespace quorvelant
