#include "edit/button_sets.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/button_commands.h"
#include "edit/button_numbers.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "edit/track_viewer.h"
#include "model/highlight_groups.h"
#include "model/keys.h"
#include "model/walk.h"
#include "subpicture/spu_timing.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

namespace {

constexpr std::int64_t SecondsWithoutLength = 10;

// Colours of the palette that new projects have, in the order E2, E1, P, Bg.
ColorScheme DefaultScheme() {
  constexpr std::int32_t Black = 0;
  constexpr std::int32_t Red = 5;
  constexpr std::int32_t Yellow = 8;
  constexpr ColorQuad Opaque{15, 15, 15, 0};
  ColorScheme scheme;
  scheme.SelectionColor = {Black, Black, Yellow, Black};
  scheme.SelectionContrast = Opaque;
  scheme.ActionColor = {Black, Black, Red, Black};
  scheme.ActionContrast = Opaque;
  return scheme;
}

// The frames of a set at `frame`.
std::int64_t FramesFrom(const TrackTimes& times, std::int64_t frame) {
  return times.Frames > frame ? times.Frames - frame : SecondsWithoutLength * times.FramesPerSecond;
}

// Which button of the sets before each one is now: of the set that was saved as it says, of the others
// itself.
ButtonOrigins OriginsOf(const std::vector<HighlightPlay>& before, std::size_t saved,
                        std::span<const EditedButton> buttons) {
  ButtonOrigins origins;
  for (std::size_t set = 0; set < std::max(before.size(), saved + 1); ++set) {
    std::vector<std::optional<ButtonPlace>>& places = origins.emplace_back();
    if (set != saved) {
      for (std::size_t button = 0; button < before[set].Buttons.size(); ++button) {
        places.emplace_back(ButtonPlace{set, button});
      }
      continue;
    }
    for (const EditedButton* button : Live(buttons)) {
      const bool known = button->Saved && set < before.size() && *button->Saved < before[set].Buttons.size();
      places.push_back(known ? std::optional(ButtonPlace{set, *button->Saved}) : std::nullopt);
    }
  }
  return origins;
}

// What hinders the set from being saved.
std::optional<Message> RefuseSet(const Project& project, std::size_t index, const EditedSet& set) {
  const bool there = index < project.Tracks.Count() && !project.Tracks[index].Removed;
  const std::size_t sets = there ? project.Tracks[index].HighlightPlays.size() : 0;
  if (!there || (set.Saved && *set.Saved >= sets)) {
    const std::string key = there ? HighStreamKey(index, *set.Saved + 1) : TrackKey(index);
    return MessageOf(message::NoSuchElement, key, there ? "button set" : "track", key);
  }
  return std::nullopt;
}

// One button too many; those that a set was saved with may stay.
std::optional<Message> RefuseCount(const Track& track, const EditedSet& set, const Rules& rules) {
  const std::size_t before = set.Saved ? track.HighlightPlays[*set.Saved].Buttons.size() : 0;
  const std::size_t limit = ButtonLimit(OfferedViews(track).size(), rules);
  const std::size_t most = std::max(limit, before);
  return Live(set.Buttons).size() <= most ? std::nullopt
                                          : std::optional(MessageOf(message::ButtonsAtLimit, {}, limit));
}

// Commands that select a button of the set select it again by its new number.
void FollowNumbers(Change& change, const CommandAims& aims, std::size_t track, const EditedSet& set) {
  const Track& before = change.Work().Tracks[track];
  const auto scene = set.Saved ? SceneShowing(before, *set.Saved) : std::nullopt;
  if (!scene) {
    return;
  }
  const std::vector<std::int32_t> numbers =
      NewNumbers(before.HighlightPlays[*set.Saved].Buttons.size(), set.Buttons);
  for (const CommandEdit& edit : FollowButtons(change.Work(), aims, {track, *scene, numbers})) {
    change.EditCommand(edit.Place).FullCommand = edit.Text;
  }
}

// The number of the button that a set forces by name.
std::int32_t ForcedNumber(const std::vector<HighlightButton>& buttons, const std::optional<std::string>& name,
                          std::int32_t otherwise) {
  if (!name) {
    return otherwise;
  }
  const auto button = FindButton(buttons, *name);
  return button ? buttons[*button].Number : 0;
}

}  // namespace

std::optional<std::size_t> SetAt(const Track& track, std::int64_t frame) {
  const TrackTimes times(track);
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < track.HighlightPlays.size(); ++i) {
    const PlaySpan span = SpanOf(track.HighlightPlays[i], times.FramesPerSecond);
    const bool shows = span.Start <= frame && (frame < span.End || span.End <= span.Start);
    if (shows &&
        (!found || span.Start >= SpanOf(track.HighlightPlays[*found], times.FramesPerSecond).Start)) {
      found = i;
    }
  }
  return found;
}

EditedSet OpenSet(const Track& track, std::size_t set, const ButtonView& view) {
  const HighlightPlay& saved = track.HighlightPlays[set];
  return {.Set = saved, .Buttons = EditedButtons(saved, view), .Saved = set};
}

EditedSet NewSet(const Track& track, std::int64_t frame, const SubPicturePlay* subtitle) {
  const TrackTimes times(track);
  const std::int64_t start =
      subtitle != nullptr ? TimecodeToFrames(subtitle->Start, times.FramesPerSecond) : frame;
  const auto end = subtitle != nullptr ? EndOf(*subtitle, times.FramesPerSecond) : std::nullopt;
  EditedSet set{.Set = {}, .Buttons = {}};
  set.Set.StartTimeToVideo = times.Timecode(start);
  set.Set.Duration = times.Timecode(end ? *end - start : FramesFrom(times, start));
  set.Set.SelectionEndTime = times.Timecode(0);
  set.Set.ButtonModes = {"wide", "letter", "pan"};
  set.Set.Schemes.fill(DefaultScheme());
  return set;
}

Outcome PutButtons(EditSession& session, std::size_t track, const EditedSet& set) {
  if (auto refusal = RefuseSet(session.Work(), track, set)) {
    return Outcome::Refused(*std::move(refusal));
  }
  if (auto refusal = RefuseCount(session.Work().Tracks[track], set, session.RulesInForce())) {
    return Outcome::Refused(*std::move(refusal));
  }
  const std::vector<HighlightPlay> before = session.Work().Tracks[track].HighlightPlays;
  const std::size_t place = set.Saved.value_or(before.size());
  Change change(session, "Edit Buttons");
  FollowNumbers(change, session.Aims(), track, set);
  const ButtonCommandCarrier commands(change.Work(), track);
  Track& edited = change.EditTrack(track);
  edited.HighlightPlays.resize(std::max(before.size(), place + 1));
  HighlightPlay& target = edited.HighlightPlays[place];
  target = set.Set;
  target.Buttons = place < before.size() ? before[place].Buttons : std::vector<HighlightButton>();
  SaveButtons(edited, target, set.Buttons, TrackTimes(edited).FramesPerSecond);
  target.ForcedSelect = ForcedNumber(target.Buttons, set.ForcedSelect, target.ForcedSelect);
  target.ForcedAction = ForcedNumber(target.Buttons, set.ForcedAction, target.ForcedAction);
  commands.Carry(change, OriginsOf(before, place, set.Buttons));
  if (target.Buttons.empty()) {
    edited.HighlightPlays.erase(edited.HighlightPlays.begin() + static_cast<std::ptrdiff_t>(place));
    edited.HasHighlights = !edited.HighlightPlays.empty();
  }
  return change.Commit(HighStreamKey(track, place + 1));
}

Outcome RouteButtons(EditSession& session, std::size_t track, std::size_t set, Route route) {
  if (auto refusal = RefuseSet(session.Work(), track, {.Set = {}, .Buttons = {}, .Saved = set})) {
    return Outcome::Refused(*std::move(refusal));
  }
  const std::string key = HighStreamKey(track, set + 1);
  const std::vector<Route> offered = OfferedRoutes(session.RulesInForce());
  if (std::ranges::find(offered, route) == offered.end()) {
    return Outcome::Refused(MessageOf(message::RouteNotOffered, key));
  }
  const Track& shown = session.Work().Tracks[track];
  const HighlightPlay& before = shown.HighlightPlays[set];
  std::vector<HighlightButton> buttons = before.Buttons;
  AutoRoute(buttons, route, ButtonGroupsOf(before, shown.Aspect, shown.DisplayMode).front().AreaPlace);
  if (buttons == before.Buttons) {
    return Outcome::Done(key);
  }
  Change change(session, "Auto-Route");
  change.EditTrack(track).HighlightPlays[set].Buttons = std::move(buttons);
  return change.Commit(key);
}

}  // namespace quorvelant
