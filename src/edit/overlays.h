// Operations on what shows over a track's picture: its subtitles, and the palettes that colour them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "edit/palettes.h"
#include "edit/session.h"
#include "model/tracks.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

// The lowest "Palette_" and number, from how many there are, that is free.
[[nodiscard]] std::string ProposedPaletteName(const Project& project);
Outcome NewPalette(EditSession& session, const std::string& name, const PaletteColors& colors);
Outcome ChangePalette(EditSession& session, std::string_view name, const PaletteColors& colors);

// An entry of a subtitle stream, by indexes from 0.
struct SubtitlePlace {
  std::size_t Track = 0;
  std::size_t Stream = 0;
  std::size_t Entry = 0;
};
// "Track.4.Sub1.SubPlay7": the key of what the operations below have made or changed. Numbers from 1, but for
// that of the track.
[[nodiscard]] std::string SubPlayKey(const SubtitlePlace& place);

// A moment in the viewer; without a stream where its view has none.
struct SubtitleMoment {
  std::size_t Track = 0;
  std::optional<std::size_t> Stream = {};
  std::int64_t Frame = 0;
};

// A subtitle of two seconds, or up to the next one, that begins at the moment. Bitmap, position and colours
// are those of `settings`. It is forced where buttons show in its span.
Outcome NewSubtitle(EditSession& session, const SubtitleMoment& moment, SubPicturePlay settings);
// Gives the subtitle that shows at the moment another bitmap.
Outcome ReplaceBitmap(EditSession& session, const SubtitleMoment& moment, const std::string& file);
// The entry moves to its place by start, which the key tells.
Outcome SetTimes(EditSession& session, const SubtitlePlace& place, const SubtitleTimes& times);
// Whether the subtitle goes on the disc. One whose bitmap is not there cannot.
Outcome SetUsed(EditSession& session, const SubtitlePlace& place, bool used);
// To be called when a subtitle is picked to be looked at: where its bitmap is not there it is no longer used,
// and the answer says so.
[[nodiscard]] std::optional<Message> DeselectMissing(EditSession& session, const SubtitlePlace& place);
// The mark cannot be cleared while buttons show in the subtitle's span.
Outcome SetForcedMark(EditSession& session, const SubtitlePlace& place, bool forced);

// Each in the order E2, E1, P, Bg.
struct FourColors {
  std::array<Color, 4> Conversion{};  // colours of the bitmap, 24 bits
  ColorQuad Index{};                  // into the palette, 0 to 15
  ColorQuad Contrast{};               // 0 to 15
};
[[nodiscard]] FourColors ColorsOf(const SubPicturePlay& entry);
enum class SpreadColor : std::uint8_t { Conversion, Display };
// Stores the conversion colours, or indexes and contrasts, in every entry of the stream or of all live
// streams of the track.
Outcome SpreadColors(EditSession& session, std::size_t track, std::size_t stream, const FourColors& colors,
                     SpreadColor which, bool allStreams);

}  // namespace quorvelant
