#include "ui/simulated_look.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/button_sets.h"
#include "edit/live_elements.h"
#include "model/highlight_groups.h"
#include "model/stream_maps.h"
#include "model/walk.h"
#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::int64_t TicksASecond = 90000;
constexpr std::uint16_t SubpictureShows = 0x40;

std::int64_t StartOf(const Track& track, const Cell_P& cell) {
  const auto scene = static_cast<std::size_t>(std::max(cell.pScene, 0));
  return scene < track.Scenes.size() ? track.Scenes[scene].Frame : 0;
}

// The moment of a track that the player stands at.
std::int64_t FrameOf(const Track& track, const Cell_P& cell, const NavCell& played, const NavState& state) {
  const std::int64_t ticks = TicksASecond / TrackTimes(track).FramesPerSecond;
  const std::int64_t start = StartOf(track, cell);
  if (state.Phase != NavPhase::Playing) {
    return start + std::max<std::int64_t>(played.Ticks / ticks - 1, 0);
  }
  return state.Page >= 1 && state.Page <= played.Pages.size()
             ? start + played.Pages[state.Page - 1U].Start / ticks
             : start;
}

ViewMode ViewOn(const Track& track, PlayerScreenKind screen) {
  const auto offered = OfferedViews(track);
  const auto offers = [&](ViewMode view) { return std::ranges::find(offered, view) != offered.end(); };
  const ViewMode wanted = screen == PlayerScreenKind::Wide        ? ViewMode::Wide
                          : screen == PlayerScreenKind::LetterBox ? ViewMode::LetterBox
                                                                  : ViewMode::Pan;
  if (offers(wanted)) {
    return wanted;
  }
  // A film that forbids the one way onto a narrow screen is shown the other way.
  const ViewMode other = wanted == ViewMode::Pan ? ViewMode::LetterBox : ViewMode::Pan;
  return screen != PlayerScreenKind::Wide && offers(other) ? other : offered.front();
}

std::int32_t NumberIn(const PGC_P& chain, std::size_t stream, ViewMode view) {
  switch (view) {
    case ViewMode::Wide:
      return chain.WideAssignments.at(stream);
    case ViewMode::LetterBox:
      return chain.LetterAssignments.at(stream);
    case ViewMode::Pan:
      return chain.PanAssignments.at(stream);
    case ViewMode::Normal:
      break;
  }
  return chain.NormalAssignments.at(stream);
}

// The track's subtitle stream behind the number that a player's register holds.
std::optional<std::size_t> StreamBehind(const Project& project, const std::string& chainKey, NavDomain domain,
                                        std::size_t number, const Track& track, ViewMode view) {
  const VTS_P* const entry = LiveEntry(project, chainKey.substr(0, chainKey.find('.')));
  const PGC_P* const chain = LivePgc(project, chainKey);
  if (entry == nullptr || chain == nullptr) {
    return std::nullopt;
  }
  const Domain part = domain == NavDomain::Title ? Domain::Title : Domain::Menu;
  const SubMap map = ViewSubMap(BuildTrackList(*entry, part, project.Tracks), project.Tracks);
  if (number >= map.size() || map[number].StreamNumber < 0 ||
      !std::cmp_less(map[number].StreamNumber, SubStreamCount)) {
    return std::nullopt;
  }
  const std::int32_t coded = NumberIn(*chain, static_cast<std::size_t>(map[number].StreamNumber), view);
  for (const std::size_t stream : StreamsIn(view, track)) {
    if (track.SubStreams[stream].StreamNumber == coded) {
      return stream;
    }
  }
  return std::nullopt;
}

}  // namespace

SimulatedLook::SimulatedLook(Document& document, Jobs& jobs, PictureLoader& pictures)
    : document_(document), chosen_(document), viewer_(document, chosen_, jobs, pictures) {
  connect(&viewer_, &Viewer::PictureReady, this, &SimulatedLook::Changed);
  connect(&viewer_, &Viewer::PicturesChanged, this, &SimulatedLook::Changed);
  connect(&viewer_, &Viewer::StateMoved, this, &SimulatedLook::Changed);
  connect(&viewer_, &Viewer::UnitReady, this, &SimulatedLook::Changed);
}

void SimulatedLook::Show(const NavDisc& disc, const NavState& state, PlayerScreenKind screen) {
  const NavCell* const played = state.Phase == NavPhase::Stopped ? nullptr : CellAt(disc, state);
  cell_ = played == nullptr ? std::string() : played->Name;
  const Cell_P* const cell = LiveCell(document_.Work(), cell_);
  chosen_.Choose(cell_);
  const Track* const track = viewer_.Shown();
  hasPicture_ = cell != nullptr && track != nullptr && viewer_.TrackIndex() &&
                std::cmp_equal(*viewer_.TrackIndex(), cell->SegmentUsed);
  if (hasPicture_) {
    viewer_.LookAgain();
    viewer_.ToView(ViewOn(*track, screen));
    viewer_.ToFrame(FrameOf(*track, *cell, *played, state));
    ShowStream(disc, state);
    const NavPage* const page = PageAt(disc, state);
    const int button = state.Registers.Button();
    hasPage_ = page != nullptr;
    button_ = page != nullptr && button >= 1 && std::cmp_less_equal(button, page->Buttons.size())
                  ? std::optional(static_cast<std::size_t>(button - 1))
                  : std::nullopt;
  }
  emit Changed();
}

// In menus the first stream always shows.
void SimulatedLook::ShowStream(const NavDisc& disc, const NavState& state) {
  const NavChain* const chain = ChainAt(disc, state.At, state.Registers.Of(Sprm::MenuLanguage));
  const bool isTitle = state.At.Domain == NavDomain::Title;
  const std::uint16_t chosen = state.Registers.Of(Sprm::Subpicture);
  subtitlesOn_ = !isTitle || (chosen & SubpictureShows) != 0;
  const std::size_t number = isTitle ? chosen & (SubpictureShows - 1U) : 0;
  const auto stream = chain == nullptr ? std::nullopt
                                       : StreamBehind(document_.Work(), chain->Name, state.At.Domain, number,
                                                      *viewer_.Shown(), View());
  hasStream_ = stream.has_value();
  if (stream) {
    viewer_.ToStream(*stream);
  }
}

QString SimulatedLook::Words() const {
  return hasPicture_ ? viewer_.PictureWords() : tr("The cell that plays has no track");
}

bool SimulatedLook::ShowsSubpicture() const {
  const Track* const track = viewer_.Shown();
  const ViewerState& at = viewer_.State();
  if (!hasPicture_ || !hasStream_ || track == nullptr || !at.Stream || !at.Entry || !viewer_.UnitNow() ||
      *at.Stream >= track->SubStreams.size() || *at.Entry >= track->SubStreams[*at.Stream].SubPlays.size()) {
    return false;
  }
  return subtitlesOn_ || track->SubStreams[*at.Stream].SubPlays[*at.Entry].Forced;
}

const HighlightPlay* SimulatedLook::Buttons() const {
  const Track* const track = viewer_.Shown();
  const auto set = hasPicture_ && hasPage_ ? viewer_.ButtonSet() : std::nullopt;
  return track != nullptr && set ? &track->HighlightPlays[*set] : nullptr;
}

QImage SimulatedLook::Overlay(bool isPressed) const {
  if (!ShowsSubpicture()) {
    return {};
  }
  std::vector<ButtonLook> looks;
  const HighlightPlay* const set = Buttons();
  if (set != nullptr && button_ && *button_ < set->Buttons.size()) {
    if (auto look = LookOf(*set, set->Buttons[*button_], GroupOfView(View()),
                           isPressed ? ButtonState::Activated : ButtonState::Selected)) {
      looks.push_back(*look);
    }
  }
  const Project& project = document_.Work();
  const std::size_t track = *viewer_.TrackIndex();
  return OverlayImage(*viewer_.UnitNow(), ShownPalette(project, track, Frame(), cell_),
                      TrackTimes(project.Tracks[track]).IsNtsc(), looks);
}

std::optional<double> SimulatedLook::CellSeconds() const {
  constexpr double StillSeconds = 0.5;
  const Track* const track = viewer_.Shown();
  const Cell_P* const cell = LiveCell(document_.Work(), cell_);
  if (!hasPicture_ || track == nullptr || cell == nullptr) {
    return std::nullopt;
  }
  std::int64_t end = viewer_.FrameCount();
  if (end <= 0) {
    return EqualNoCase(track->TrackType, "Motion") ? std::nullopt : std::optional(StillSeconds);
  }
  const std::int64_t start = StartOf(*track, *cell);
  for (const Scene& scene : track->Scenes) {
    end = scene.Frame > start ? std::min<std::int64_t>(end, scene.Frame) : end;
  }
  return static_cast<double>(std::max<std::int64_t>(end - start, 0)) / TrackTimes(*track).FramesPerSecond;
}

PictureGeometry SimulatedLook::Geometry(const QRectF& space) const {
  const Track* const track = viewer_.Shown();
  return {View(), track != nullptr && TrackTimes(*track).IsNtsc(), space};
}

std::optional<std::size_t> SimulatedLook::ButtonAt(const QPoint& pixel) const {
  const HighlightPlay* const set = Buttons();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    const HighlightArea& area = set->Buttons[i].Areas.at(GroupOfView(View()));
    if (pixel.x() >= area.X1 && pixel.x() <= area.X2 && pixel.y() >= area.Y1 && pixel.y() <= area.Y2) {
      return i;
    }
  }
  return std::nullopt;
}

}  // namespace quorvelant
