#include "check/overlay_check.h"

#include <algorithm>
#include <set>

#include "base/text.h"
#include "check/messages.h"
#include "model/chain_palette.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

// The tracks on the disc, by index.
std::set<std::size_t> TracksOnDisc(const Project& project) {
  std::set<std::size_t> tracks;
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      for (const TrackListRow& row : BuildTrackList(*entry, domain, project.Tracks)) {
        tracks.insert(row.Index);
      }
    }
  }
  return tracks;
}

bool NamesDisplay(const Track& track) {
  const std::string mode = Lower(track.DisplayMode);
  return Contains(mode, "panscan") || Contains(mode, "letterbox");
}

}  // namespace

Findings CheckDisplays(const Project& project, const Rules& rules) {
  Findings findings;
  for (const std::size_t index : TracksOnDisc(project)) {
    const Track& track = project.Tracks[index];
    if (track.Aspect == "16:9" && track.Coding != "MPEG1" && !NamesDisplay(track)) {
      const bool letterboxed = rules.WideTakesLetterbox && !track.HasHighlights;
      findings.push_back(MessageOf(letterboxed ? message::WideLetterboxed : message::WideWithoutDisplay,
                                   TrackKey(index), track.TrackName));
    }
  }
  return findings;
}

Findings CheckPalettes(const Project& project, const Rules& rules) {
  Findings findings;
  const bool anyPalette = !Live(project.Palettes).empty();
  if (rules.LegiblePalette && !anyPalette) {
    return findings;
  }
  for (const auto& at : LivePgcs(project)) {
    const PGC_P& chain = *at.Chain;
    if (ShowsOverlay(chain, project.Tracks) && PaletteOf(chain, project) == nullptr) {
      findings.push_back(
          MessageOf(rules.LegiblePalette ? message::PaletteOfChainMissing : message::PaletteOfChainDark,
                    chain.Key, chain.PGCName.empty() ? chain.Key : chain.PGCName, chain.PaletteName));
    }
  }
  return findings;
}

}  // namespace quorvelant
