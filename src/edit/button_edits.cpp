#include "edit/button_edits.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "check/track_times.h"
#include "edit/button_rules.h"
#include "edit/button_sets.h"
#include "edit/change.h"
#include "edit/command_lists.h"
#include "edit/messages.h"
#include "edit/track_viewer.h"
#include "model/highlight_groups.h"
#include "model/keys.h"
#include "subpicture/bitmap_window.h"

namespace quorvelant {

namespace {

constexpr std::array Links{&HighlightButton::Left, &HighlightButton::Right, &HighlightButton::Up,
                           &HighlightButton::Down};

const HighlightPlay* FindSet(const Project& project, std::size_t track, std::size_t set) {
  const bool isThere = track < project.Tracks.Count() && !project.Tracks[track].Removed &&
                       set < project.Tracks[track].HighlightPlays.size();
  return isThere ? &project.Tracks[track].HighlightPlays[set] : nullptr;
}

const HighlightButton* FindButton(const Project& project, std::size_t track, const ButtonPlace& place) {
  const HighlightPlay* const set = FindSet(project, track, place.Set);
  return set != nullptr && place.Button < set->Buttons.size() ? &set->Buttons[place.Button] : nullptr;
}

Outcome RefuseMissing(std::string_view what, std::size_t track, std::size_t set) {
  const std::string key = HighStreamKey(track, set + 1);
  return Outcome::Refused(MessageOf(message::NoSuchElement, key, what, key));
}

EditedSet Opened(const Project& project, std::size_t track, std::size_t set) {
  const Track& shown = project.Tracks[track];
  return OpenSet(shown, set, ButtonViewOf(shown, OfferedViews(shown).front()));
}

// The name of the button with that number, for a set that is saved anew; empty for none.
std::string NameOf(const HighlightPlay& set, std::int32_t number) {
  const auto button = std::ranges::find(set.Buttons, number, &HighlightButton::Number);
  return number == 0 || button == set.Buttons.end() ? std::string() : button->Name;
}

// Why the areas or links of a button cannot stand.
std::optional<Message> RefuseButton(const Track& track, const HighlightPlay& set,
                                    const HighlightButton& button) {
  const int lines = ScreenHeight(FramesPerSecond(track.Standard) == 30);
  for (const ButtonGroup& group : ButtonGroupsOf(set, track.Aspect, track.DisplayMode)) {
    const HighlightArea& area = button.Areas.at(group.AreaPlace);
    const bool fits = area.X1 >= 0 && area.Y1 >= 0 && area.X1 < area.X2 && area.Y1 < area.Y2 &&
                      area.X2 < ScreenWidth && area.Y2 < lines;
    if (!fits) {
      return MessageOf(message::ButtonAreaBeyond, {}, button.Name, ScreenWidth, lines);
    }
  }
  for (const auto link : Links) {
    const std::string& name = button.*link;
    if (!name.empty() && !FindButton(set.Buttons, name)) {
      return MessageOf(message::ButtonLinkUnfit, {}, name);
    }
  }
  return std::nullopt;
}

}  // namespace

Outcome RenameButton(EditSession& session, std::size_t track, const ButtonPlace& place, std::string name) {
  const HighlightButton* const button = FindButton(session.Work(), track, place);
  if (button == nullptr) {
    return RefuseMissing("button", track, place.Set);
  }
  name = Trim(name);
  const std::string former = button->Name;
  if (name == former) {
    return Outcome::Done(HighStreamKey(track, place.Set + 1));
  }
  const HighlightPlay& saved = *FindSet(session.Work(), track, place.Set);
  if (name.empty() || name.find_first_of("\r\n\t") != std::string::npos || FindButton(saved.Buttons, name)) {
    return Outcome::Refused(MessageOf(message::ButtonNameTaken, HighStreamKey(track, place.Set + 1), name));
  }
  EditedSet set = Opened(session.Work(), track, place.Set);
  set.Buttons[place.Button].Button.Name = name;
  for (EditedButton& one : set.Buttons) {
    for (const auto link : Links) {
      std::string& to = one.Button.*link;
      to = to == former ? name : to;
    }
  }
  return PutButtons(session, track, set);
}

Outcome SetButton(EditSession& session, std::size_t track, const ButtonPlace& place,
                  const std::function<void(HighlightButton&)>& set) {
  const HighlightButton* const button = FindButton(session.Work(), track, place);
  if (button == nullptr) {
    return RefuseMissing("button", track, place.Set);
  }
  HighlightButton changed = *button;
  set(changed);
  if (changed == *button) {
    return Outcome::Done(HighStreamKey(track, place.Set + 1));
  }
  if (auto refusal =
          RefuseButton(session.Work().Tracks[track], *FindSet(session.Work(), track, place.Set), changed)) {
    return Outcome::Refused(*std::move(refusal));
  }
  EditedSet edited = Opened(session.Work(), track, place.Set);
  edited.Buttons[place.Button].Button = std::move(changed);
  return PutButtons(session, track, edited);
}

Outcome RemoveButton(EditSession& session, std::size_t track, const ButtonPlace& place, Consent consent) {
  const HighlightButton* const button = FindButton(session.Work(), track, place);
  if (button == nullptr) {
    return RefuseMissing("button", track, place.Set);
  }
  EditedSet set = Opened(session.Work(), track, place.Set);
  if (Outcome outcome = RemoveButton(set.Buttons[place.Button], consent); !outcome.IsDone()) {
    return outcome;
  }
  return PutButtons(session, track, set);
}

Outcome ForceButton(EditSession& session, std::size_t track, std::size_t set, Force force,
                    const std::string& name) {
  const HighlightPlay* const saved = FindSet(session.Work(), track, set);
  if (saved == nullptr) {
    return RefuseMissing("button set", track, set);
  }
  if (!name.empty() && !FindButton(saved->Buttons, name)) {
    return Outcome::Refused(MessageOf(message::ButtonLinkUnfit, HighStreamKey(track, set + 1), name));
  }
  if (NameOf(*saved, force == Force::Select ? saved->ForcedSelect : saved->ForcedAction) == name) {
    return Outcome::Done(HighStreamKey(track, set + 1));
  }
  EditedSet edited = Opened(session.Work(), track, set);
  (force == Force::Select ? edited.ForcedSelect : edited.ForcedAction) = name;
  return PutButtons(session, track, edited);
}

Outcome SetButtonTimes(EditSession& session, std::size_t track, std::size_t set, std::int64_t start,
                       std::int64_t frames) {
  if (FindSet(session.Work(), track, set) == nullptr) {
    return RefuseMissing("button set", track, set);
  }
  const TrackTimes times(session.Work().Tracks[track]);
  if (start < 0 || frames < 1 || times.StartsPastEnd(start)) {
    return Outcome::Refused(MessageOf(message::ButtonTimesUnfit, HighStreamKey(track, set + 1)));
  }
  EditedSet edited = Opened(session.Work(), track, set);
  edited.Set.StartTimeToVideo = times.Timecode(start);
  edited.Set.Duration = times.Timecode(frames);
  return PutButtons(session, track, edited);
}

namespace {

// The live commands of a cell stand in a row, over all its plays.
CommandPlace CommandAtNumber(const Cell_P& cell, std::size_t number) {
  CommandPlace place{.Key = cell.Key, .List = ListKind::Button, .Play = 0, .Position = 0};
  for (std::size_t play = 0; play < cell.ButtonCommands.size(); ++play) {
    const CommandList& commands = cell.ButtonCommands[play].Commands;
    place.Play = play;
    for (place.Position = 0; place.Position < commands.size(); ++place.Position) {
      if (!commands[place.Position].Deleted && number-- == 0) {
        return place;
      }
    }
  }
  place.Position += number;
  return place;
}

}  // namespace

std::vector<CommandPlace> CommandsOfButton(const Project& project, std::size_t track,
                                           const ButtonPlace& place) {
  std::vector<CommandPlace> places;
  const auto dealt = DealtPlaceOf(project.Tracks[track], place);
  if (!dealt) {
    return places;
  }
  for (const Cell_P* cell : CellsPlaying(project, track, dealt->Scene)) {
    places.push_back(CommandAtNumber(*cell, dealt->Position));
  }
  return places;
}

Outcome SetButtonCommand(EditSession& session, std::size_t track, const ButtonPlace& place,
                         const std::string& text) {
  if (FindButton(session.Work(), track, place) == nullptr) {
    return RefuseMissing("button", track, place.Set);
  }
  const std::string key = HighStreamKey(track, place.Set + 1);
  const std::vector<CommandPlace> places = CommandsOfButton(session.Work(), track, place);
  if (places.empty()) {
    return Outcome::Refused(MessageOf(message::ButtonPlayedNowhere, key));
  }
  Change change(session, "Edit Command");
  for (const CommandPlace& at : places) {
    // What is missing before it are no-operations.
    CommandPlace end = at;
    end.Position = ListEnd;
    const CommandList* list = CommandsAt(session.Work(), at);
    for (std::size_t count = list == nullptr ? 0 : list->size(); count <= at.Position; ++count) {
      if (Outcome outcome = InsertCommand(session, end); !outcome.IsDone()) {
        return outcome;
      }
    }
    if (Outcome outcome = SetCommand(session, at, text); !outcome.IsDone()) {
      return outcome;
    }
  }
  return change.Commit(key);
}

}  // namespace quorvelant
