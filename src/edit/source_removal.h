#pragma once

// Tracks, plays, streams and scenes go.

#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Asks before. Cells that show a track or scene go with it, programs that hold no others too; the question
// says how many. The first scene of a track stays, as does the last file of a track that cells show.
Outcome RemoveSource(EditSession& session, std::string_view key, Consent consent);

}  // namespace quorvelant
