#include "edit/drop.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "disc/limits.h"
#include "edit/change.h"
#include "edit/display_maps.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "model/keys.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// Where a drop lands: a PGC, and the program that takes the cells, if it was one.
struct DropPlace {
  const PGC_P* Chain = nullptr;
  const PG_P* Program = nullptr;
};

DropPlace PlaceOf(const Project& project, std::string_view target) {
  if (const PG_P* program = LiveProgram(project, target)) {
    return {LivePgc(project, target.substr(0, target.rfind('.'))), program};
  }
  return {target == FirstPgcKey ? nullptr : LivePgc(project, target), nullptr};
}

std::vector<const Track*> TracksOf(const std::vector<const Cell_P*>& cells, const Tracks& tracks) {
  std::vector<const Track*> found;
  for (const Cell_P* cell : cells) {
    if (cell->SegmentUsed >= 0 && std::cmp_less(cell->SegmentUsed, tracks.Count())) {
      const Track* track = &tracks[static_cast<std::size_t>(cell->SegmentUsed)];
      if (std::ranges::find(found, track) == found.end()) {
        found.push_back(track);
      }
    }
  }
  return found;
}

std::vector<const Cell_P*> CellsOf(const PGC_P& chain) {
  return LiveCells(chain);
}

bool IsUnlike(const std::string& a, const std::string& b) {
  return !a.empty() && !b.empty() && a != b;
}

bool HasFile(const Track& track) {
  const auto live = Live(track.VideoPlays);
  return !live.empty() && !live.front()->File.empty();
}

std::optional<Message> RefuseVideo(const Project& project, const Track& track, Domain domain,
                                   const VTS_P& entry) {
  std::vector<const Track*> all;
  for (const VTS_P* other : Live(project.Disc)) {
    for (const Domain any : {Domain::Menu, Domain::Title}) {
      const auto found = TracksOf(LiveCells(*other, any), project.Tracks);
      all.insert(all.end(), found.begin(), found.end());
    }
  }
  const auto otherStandard = [&track](const Track* other) {
    return IsUnlike(other->Standard, track.Standard);
  };
  const auto otherAspect = [&track](const Track* other) { return IsUnlike(other->Aspect, track.Aspect); };
  const bool unlike = std::ranges::any_of(all, otherStandard) ||
                      std::ranges::any_of(TracksOf(LiveCells(entry, domain), project.Tracks), otherAspect);
  return unlike ? std::optional(MessageOf(message::VideoUnlike, {})) : std::nullopt;
}

std::optional<Message> RefuseStreams(const std::vector<const Track*>& ofChain, const Track& track) {
  for (const Track* other : ofChain) {
    if (auto subs = CompareSubStreams(*other, track)) {
      return subs;
    }
    if (auto audio = CompareAudioStreams(*other, track)) {
      return audio;
    }
  }
  return std::nullopt;
}

std::optional<Message> RefuseKinds(const std::vector<const Track*>& ofDomain, const Track& track,
                                   Domain domain) {
  for (const Track* other : ofDomain) {
    for (const AudioStream* stream : Live(other->AudioStreams)) {
      for (const AudioStream* added : Live(track.AudioStreams)) {
        if (added->StreamNumber == stream->StreamNumber && IsUnlike(added->Format, stream->Format)) {
          return MessageOf(message::AudioKindUnlike, {}, stream->StreamNumber, stream->Format,
                           other->TrackName, added->Format, domain == Domain::Menu ? "menus" : "titles");
        }
      }
    }
  }
  return std::nullopt;
}

bool HasDts(const Track& track) {
  return std::ranges::any_of(Live(track.AudioStreams),
                             [](const AudioStream* stream) { return stream->Format == "DTS"; });
}

std::optional<Message> RefuseNumbers(const DropPlace& place, const Dropped& what, const Track& track) {
  const std::size_t added = what.Scene ? 1 : track.Scenes.size();
  if (place.Program == nullptr && Live(place.Chain->PG).size() + added > MostPrograms) {
    return MessageOf(message::MostProgramsReached, {});
  }
  if (CellsOf(*place.Chain).size() + added > MostCells) {
    return MessageOf(what.Scene ? message::TooManyCellsForOne : message::TooManyCellsForAll, {});
  }
  return std::nullopt;
}

const Track* TrackOf(const Project& project, const Dropped& what) {
  const bool known = what.Track < project.Tracks.Count() && IsLive(project.Tracks[what.Track]);
  const Track* track = known ? &project.Tracks[what.Track] : nullptr;
  return track != nullptr && (!what.Scene || *what.Scene < track->Scenes.size()) ? track : nullptr;
}

std::string KeyOf(const Dropped& what) {
  return what.Scene ? SceneKey(what.Track, *what.Scene + 1) : TrackKey(what.Track);
}

// Whether the cell goes on where the last one of the chain ends.
bool GoesOn(const PGC_P& chain, const Dropped& what, std::size_t scene, const EditOptions& options) {
  const auto cells = LiveCells(chain);
  if (cells.empty() || options.ScenesNotSeamless) {
    return false;
  }
  const Cell_P& last = *cells.back();
  return options.SeamlessPgc ||
         (std::cmp_equal(last.SegmentUsed, what.Track) && std::cmp_equal(last.pScene + 1, scene));
}

// Places the scenes; the entry has been touched.
class CellPlacer {
 public:
  CellPlacer(EditSession& session, Project& project, const Dropped& what, std::string_view target)
      : session_(session), project_(project), what_(what), program_(FindProgram(project.Disc, target)) {
    chainKey_ = target.substr(0, program_ == nullptr ? target.size() : target.rfind('.'));
  }

  std::string Place(std::size_t scene) {
    PGC_P& chain = *FindPgc(project_.Disc, chainKey_);
    PG_P& program = program_ == nullptr ? NewProgram(chain) : *program_;
    const auto number = static_cast<int>(program.Cell.Count() + 1);
    const std::string name = program.PGName + "_CELL";
    Cell_P* cell = UpdateMyDVD(
        project_, {.Key = program.Key,
                   .AddCell = true,
                   .TrackName = project_.Tracks[what_.Track].TrackName,
                   .Segment = static_cast<std::int32_t>(what_.Track),
                   .ReNameOnly = false,
                   .Scene = static_cast<std::int32_t>(scene),
                   .Seamless = GoesOn(chain, what_, scene, session_.Options()),
                   .NewName = FreeName(session_, ElementKind::Cell, name, static_cast<std::size_t>(number)),
                   .CellCounter = 0,
                   .KeepName = false});
    cell->Key = CellKey(program.Key, number);
    return cell->Key;
  }

 private:
  PG_P& NewProgram(PGC_P& chain) {
    const std::size_t number = chain.PG.Count() + 1;
    PG_P program;
    program.Key = ProgramKey(chain.Key, static_cast<int>(number));
    program.PGName = FreeName(session_, ElementKind::Program, chain.PGCName + "_PG", number);
    return chain.PG.Add(std::move(program));
  }

  EditSession& session_;
  Project& project_;
  const Dropped& what_;
  PG_P* program_;
  std::string chainKey_;
};

}  // namespace

std::optional<Message> RefuseDrop(const Project& project, const Dropped& what, std::string_view target) {
  const DropPlace place = PlaceOf(project, target);
  const Track* track = TrackOf(project, what);
  if (place.Chain == nullptr || track == nullptr) {
    return MessageOf(message::NoSuchElement, target,
                     track == nullptr ? "track or scene" : "PGC or program that takes cells",
                     track == nullptr ? KeyOf(what) : target);
  }
  if (!HasFile(*track)) {
    return MessageOf(message::DropHasNoFile, TrackKey(what.Track), track->TrackName);
  }
  const Domain domain = InTitleDomain(target) ? Domain::Title : Domain::Menu;
  const VTS_P& entry = *FindEntry(project.Disc, target);
  if (auto refusal = RefuseVideo(project, *track, domain, entry)) {
    return refusal;
  }
  if (auto refusal = RefuseStreams(TracksOf(LiveCells(*place.Chain), project.Tracks), *track)) {
    return refusal;
  }
  if (auto refusal = RefuseKinds(TracksOf(LiveCells(entry, domain), project.Tracks), *track, domain)) {
    return refusal;
  }
  if (domain == Domain::Menu && HasDts(*track)) {
    return MessageOf(message::DtsInMenu, TrackKey(what.Track));
  }
  return RefuseNumbers(place, what, *track);
}

Outcome Drop(EditSession& session, const Dropped& what, std::string_view target) {
  if (auto refusal = RefuseDrop(session.Work(), what, target)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Change change(session, what.Scene ? "Drop Scene" : "Drop Track");
  Project& project = change.Touch(
      {Part::OfEntry(static_cast<std::size_t>(TitleSetEntry(target))), Part::OfTrack(what.Track)});
  CellPlacer placer(session, project, what, target);
  const std::size_t first = what.Scene.value_or(0);
  const std::size_t last = what.Scene ? first : project.Tracks[what.Track].Scenes.size() - 1;
  std::string key = placer.Place(first);
  for (std::size_t scene = first + 1; scene <= last; ++scene) {
    placer.Place(scene);
  }
  MapDisplayModes(*FindPgc(project.Disc, target), project.Tracks[what.Track], !InTitleDomain(target));
  return change.Commit(std::move(key));
}

}  // namespace quorvelant
