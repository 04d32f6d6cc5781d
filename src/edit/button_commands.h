// The commands of buttons, which the cells hold that play their scene.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/project.h"
#include "model/walk.h"

namespace quorvelant {

class Change;

// A button by its place among the sets of a track.
struct ButtonPlace {
  std::size_t Set = 0;
  std::size_t Button = 0;
  auto operator<=>(const ButtonPlace&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

// For each button of each set as it is now, which one it was before; nothing for a new one.
using ButtonOrigins = std::vector<std::vector<std::optional<ButtonPlace>>>;

// The scene that begins with this set: the one in which it starts, unless another set starts before it there.
[[nodiscard]] std::optional<std::size_t> SceneShowing(const Track& track, std::size_t set);

// Where the command of a button stands in every cell that plays its scene: at that position of its commands,
// counted in a row over its plays.
struct DealtPlace {
  std::size_t Scene = 0;
  std::size_t Position = 0;
};
[[nodiscard]] std::optional<DealtPlace> DealtPlaceOf(const Track& track, const ButtonPlace& button);
// The scene in which a frame lies; what lies before the first belongs to it. 0 where the track has none.
[[nodiscard]] std::size_t SceneAt(const Track& track, std::int64_t frame);
// The live cells that play a scene of the track, in the order of the disc.
[[nodiscard]] std::vector<const Cell_P*> CellsPlaying(const Project& project, std::size_t track,
                                                      std::size_t scene);

// A scene in which button sets start, and their buttons in the order in which commands are dealt to them.
struct DealtScene {
  std::size_t Scene = 0;
  std::string Name;
  std::vector<ButtonPlace> Buttons;
};

// Made before the sets or the scenes of a track change, and before cells go for it; the commands of its live
// cells follow afterwards: each stays with its button, a removed button takes its command along, a new one
// gets "NOP". The commands of a cell are dealt, in a row, to the sets that start within its scene, in the
// order of their starts. Of the cells of a scene in one domain the first that has commands speaks; a silent
// one beside it stays silent. Commands without a button stay after the others; so do those of buttons that
// come into a scene which no cell plays, and they go back to their buttons when the scene goes.
class ButtonCommandCarrier {
 public:
  ButtonCommandCarrier(const Project& project, std::size_t track);

  void Carry(Change& change, const ButtonOrigins& origins) const;
  // The sets are as they were.
  void Carry(Change& change) const;

 private:
  std::size_t track_;
  std::vector<DealtScene> before_;
  // By entry and domain: what the first cell of each played scene says that says anything.
  std::map<std::pair<std::size_t, Domain>, std::map<std::string, CommandList>> spoken_;
};

}  // namespace quorvelant
