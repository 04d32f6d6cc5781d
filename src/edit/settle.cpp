#include "edit/settle.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include "edit/change.h"
#include "edit/track_uses.h"
#include "model/display_mode.h"
#include "model/stream_maps.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

const Track* TrackOf(const Cell_P& cell, const Tracks& tracks) {
  const bool known = cell.SegmentUsed >= 0 && std::cmp_less(cell.SegmentUsed, tracks.Count());
  return known ? &tracks[static_cast<std::size_t>(cell.SegmentUsed)] : nullptr;
}

// The place of the scene that a cell names; as it stands where the track has no scene of that name.
std::int32_t SceneOf(const Cell_P& cell, const Track& track) {
  const bool stands = cell.pScene >= 0 && std::cmp_less(cell.pScene, track.Scenes.size()) &&
                      track.Scenes[static_cast<std::size_t>(cell.pScene)].Name == cell.SceneUsed;
  if (stands) {
    return cell.pScene;
  }
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    if (track.Scenes[i].Name == cell.SceneUsed) {
      return static_cast<std::int32_t>(i);
    }
  }
  return cell.pScene;
}

VideoInfo_P VideoInfoOf(const VTS_P& entry, Domain domain, const Tracks& tracks) {
  VideoInfo_P info;
  for (const Cell_P* cell : LiveCells(entry, domain)) {
    if (const Track* track = TrackOf(*cell, tracks)) {
      TakeVideoAttributes(info, *track);
    }
  }
  return info;
}

bool CellsStand(const VTS_P& entry, const Tracks& tracks) {
  for (const Domain domain : {Domain::Menu, Domain::Title}) {
    for (const Cell_P* cell : LiveCells(entry, domain)) {
      const Track* track = TrackOf(*cell, tracks);
      if (track != nullptr &&
          (cell->TrackName != track->TrackName || SceneOf(*cell, *track) != cell->pScene)) {
        return false;
      }
    }
  }
  return true;
}

template <class Units>
void SettleCells(Units& units, const Tracks& tracks) {
  for (auto* unit : Live(units)) {
    for (PGC_P* chain : Live(unit->PGC)) {
      for (Cell_P* cell : LiveCells(*chain)) {
        if (const Track* track = TrackOf(*cell, tracks)) {
          cell->TrackName = track->TrackName;
          cell->pScene = SceneOf(*cell, *track);
        }
      }
    }
  }
}

void SettleEntry(Change& change, std::size_t number) {
  const Tracks& tracks = change.Work().Tracks;
  const VTS_P& entry = *change.Work().Disc.Item(number);
  if (!CellsStand(entry, tracks)) {
    VTS_P& changed = change.EditEntry(number);
    SettleCells(changed.Lang, tracks);
    SettleCells(changed.Title, tracks);
  }
  const VideoInfo_P menus = VideoInfoOf(entry, Domain::Menu, tracks);
  const VideoInfo_P titles = VideoInfoOf(entry, Domain::Title, tracks);
  if (menus != entry.VTSMenuInfo || titles != entry.VTSTitleInfo) {
    VTS_P& changed = change.EditEntry(number);
    changed.VTSMenuInfo = menus;
    changed.VTSTitleInfo = titles;
  }
  StreamExtensions extensions = TitleExtensions(entry, tracks);
  if (extensions.Audio != entry.AudioExtension || extensions.Sub != entry.SubExtension) {
    VTS_P& changed = change.EditEntry(number);
    changed.AudioExtension = std::move(extensions.Audio);
    changed.SubExtension = std::move(extensions.Sub);
  }
}

// What a track says of itself twice: a script holds the display mode and the length alone.
Track SettledTrack(const Track& track, bool isUsed, const Rules& rules) {
  Track settled;
  settled.DisplayMode = track.DisplayMode;
  settled.Aspect = track.Aspect;
  settled.HasHighlights = track.HasHighlights;
  FollowDisplayMode(settled, rules);
  settled.UsedInStructure = settled.IDsLocked = isUsed;
  settled.FrameCount = track.VideoFrames;
  return settled;
}

void SettleTrack(Change& change, std::size_t index, bool isUsed, const Rules& rules) {
  const auto facts = [](auto& track) {
    return std::tie(track.Pan, track.Letter, track.UsedInStructure, track.IDsLocked, track.FrameCount);
  };
  const Track settled = SettledTrack(change.Work().Tracks[index], isUsed, rules);
  if (facts(settled) != facts(change.Work().Tracks[index])) {
    facts(change.EditTrack(index)) = facts(settled);
  }
}

}  // namespace

void SettleStructure(Change& change, const Rules& rules, const TrackUses& uses) {
  const std::vector<Part> touched = change.Touched();
  const auto wasTouched = [&touched](const Part& part) {
    return std::ranges::find(touched, part) != touched.end();
  };
  const auto showsTouched = [&](std::size_t entry) {
    return std::ranges::any_of(touched, [&](const Part& part) {
      return part.Kind == PartKind::Track && uses.Shows(entry, part.Number);
    });
  };
  const std::vector<bool> used = uses.InUse(change.Work().Tracks.Count());
  for (std::size_t i = 0; i < used.size(); ++i) {
    SettleTrack(change, i, used[i], rules);
  }
  for (std::size_t number = 1; number <= change.Work().Disc.Count(); ++number) {
    const bool moved = wasTouched(Part::OfEntry(number)) || showsTouched(number);
    if (moved && !change.Work().Disc.Item(number)->Removed) {
      SettleEntry(change, number);
    }
  }
}

}  // namespace quorvelant
