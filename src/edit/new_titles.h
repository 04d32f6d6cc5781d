#pragma once

// Films become the titles of a new disc.

#include <optional>
#include <span>

#include "base/user_interface.h"
#include "edit/film_files.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Puts the films, in their order, on the default structure as titles that play one after another: into the
// title set of the film before where attributes and kinds of sound agree, otherwise into one of their own.
// One step of the history. Refused as a whole with the first film that a disc cannot have. Rates beyond the
// disc's are refused.
Outcome AddTitles(EditSession& session, std::span<const FilmFiles> films, UserInterface& ui);

}  // namespace quorvelant
