// Times of a subtitle that those after it follow.
#pragma once

#include "edit/outcome.h"
#include "edit/overlays.h"
#include "edit/session.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

// Gives the entry these times and moves every later one of its stream by as much as its end moves. The gaps
// between them stay, so only the entry before it and the end of the track can be in the way.
Outcome SetTimesAlong(EditSession& session, const SubtitlePlace& place, const SubtitleTimes& times);

}  // namespace quorvelant
