// The one gate through which a scene becomes a cell, and the rules that keep the tracks of one PGC alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

// Seconds of a cell on a still track: for ever.
inline constexpr std::int32_t InfiniteStill = 255;

// What a call of `UpdateMyDVD` is to do.
struct DiscUpdate {
  std::string Key;            // of the node; its program takes the cell
  bool AddCell = false;       // a cell is placed: the domain takes the track's video attributes
  std::string TrackName;      // kept in the cell
  std::int32_t Segment = -1;  // index in `Tracks`
  bool ReNameOnly = false;    // the cell exists already
  std::int32_t Scene = 0;     // index in the track's scenes
  bool Seamless = false;
  std::string NewName;           // of the cell; of the program, PGC or title in a rename
  std::int32_t CellCounter = 0;  // number of the cell in its program, 0 for the last
  bool KeepName = false;         // leave the cell's `CellName` and `SceneUsed` as they stand
};

// Places or updates a cell and carries the track's video attributes up to its domain; or, without `AddCell`
// and with a key that ends above the cells, renames the program, PGC or title of the key. Gives the cell,
// nullptr for a rename and where the key or the track names nothing; then nothing has changed.
Cell_P* UpdateMyDVD(Project& project, const DiscUpdate& update);

// What a track placed in a domain says of its picture: that of the track placed last, while a 4:3 display
// that was possible stays possible.
void TakeVideoAttributes(VideoInfo_P& info, const Track& track);

// The name by which a cell refers to a scene: the scene's own, or where the track has no such scene the
// name it would be given.
std::string SceneName(const Track& track, std::int32_t scene);

// All cells of a PGC share its streams. Compares a track that is to join with the track of the PGC's first
// cell, stream number by stream number; a number that only one of them uses is no conflict. Gives the box
// of the first number in conflict.
std::optional<Message> CompareSubStreams(const Track& source, const Track& added);
std::optional<Message> CompareAudioStreams(const Track& source, const Track& added);

// The track of a PGC's first live cell, nullptr while it has none.
const Track* FirstTrackOf(const PGC_P& pgc, const Tracks& tracks);

}  // namespace quorvelant
