#include "model/chain_palette.h"

#include <algorithm>

#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

bool HasOverlay(const Track& track) {
  const bool subtitles = track.HasSubs && std::ranges::any_of(Live(track.SubStreams), [](const auto* stream) {
                           return std::ranges::any_of(stream->SubPlays, &SubPicturePlay::Used);
                         });
  return subtitles || std::ranges::any_of(track.HighlightPlays,
                                          [](const HighlightPlay& play) { return !play.Buttons.empty(); });
}

}  // namespace

bool ShowsOverlay(const PGC_P& chain, const Tracks& tracks) {
  return std::ranges::any_of(LiveCells(chain), [&tracks](const Cell_P* cell) {
    const bool known = cell->SegmentUsed >= 0 && static_cast<std::size_t>(cell->SegmentUsed) < tracks.Count();
    return known && HasOverlay(tracks[static_cast<std::size_t>(cell->SegmentUsed)]);
  });
}

const Palette_P* PaletteOf(const PGC_P& chain, const Project& project) {
  const Palette_P* palette = project.Palettes.Item(chain.PaletteName);
  return palette != nullptr && IsLive(*palette) ? palette : nullptr;
}

}  // namespace quorvelant
