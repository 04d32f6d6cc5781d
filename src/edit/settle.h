#pragma once

// What follows from a project's structure.

namespace quorvelant {

class Change;
class TrackUses;
struct Rules;

// Works out anew, for all that the change so far may have moved: the scene that each cell shows (by its name)
// and the name of its track, the video attributes and stream extensions of the domains, and whether tracks
// are in use, which locks their stream numbers, and what their display modes permit. Parts that are right
// already are not touched.
// `uses` tells of the entries as they stand.
void SettleStructure(Change& change, const Rules& rules, const TrackUses& uses);

}  // namespace quorvelant
