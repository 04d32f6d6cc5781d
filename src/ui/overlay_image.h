// What shows over a picture, drawn as a player draws it: the coded subpicture by its codes, and buttons by
// other colours for the same codes.
#pragma once

#include <QImage>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "edit/palettes.h"
#include "edit/track_viewer.h"
#include "model/project.h"
#include "subpicture/unit_reader.h"

namespace quorvelant {

// The colours by which overlays of a track show at a frame: of the chosen element where that plays the track
// there, or else of the first PGC that does, or else the palette of new PGCs.
[[nodiscard]] PaletteColors ShownPalette(const Project& project, std::size_t track, std::int64_t frame,
                                         const std::string& chosenKey);

enum class ButtonState : std::uint8_t { Normal, Selected, Activated };

// A button that shows in other colours than those of the unit.
struct ButtonLook {
  HighlightArea Area;
  ColorQuad Colors{};
  ColorQuad Contrasts{};
};
// Nothing for a normal one.
[[nodiscard]] std::optional<ButtonLook> LookOf(const HighlightPlay& set, const HighlightButton& button,
                                               std::size_t group, ButtonState state);

// See-through but for what the unit shows; of the disc's size. Of buttons that overlap the first wins.
[[nodiscard]] QImage OverlayImage(const ShownUnit& unit, const PaletteColors& palette, bool ntsc,
                                  const std::vector<ButtonLook>& buttons);

// Whether any pixel shows within the area by these contrasts (E2, E1, P, Bg): a button without one is not to
// be seen.
[[nodiscard]] bool ShowsIn(const ShownUnit& unit, const HighlightArea& area, const ColorQuad& contrasts);

}  // namespace quorvelant
