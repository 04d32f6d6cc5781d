// Conversion colours taken from a subtitle's bitmap.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "edit/outcome.h"
#include "edit/overlays.h"
#include "edit/session.h"
#include "picture/picture_loader.h"

namespace quorvelant {

struct ColorFound {
  std::optional<quorvelant::Color> Color;
  std::string Why;  // there is none
};
// The colour that the bitmap of an entry has at a pixel of the disc's picture.
[[nodiscard]] ColorFound PickedColor(const Project& project, const SubtitlePlace& place, int column, int line,
                                     PictureLoader& pictures);

enum class ColorScope : std::uint8_t { Entry, Stream, Track };
// Gives one of the four conversion colours of an entry (E2, E1, P, Bg), and of others of its stream or track.
Outcome PutConversionColor(EditSession& session, const SubtitlePlace& place, std::size_t which, Color color,
                           ColorScope scope);

}  // namespace quorvelant
