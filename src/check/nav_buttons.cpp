#include "check/nav_buttons.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "disc/command_hex.h"
#include "model/highlight_groups.h"
#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::int64_t Endless = std::numeric_limits<std::int64_t>::max();

using Cells = std::vector<const Cell_P*>;

struct NamedCommand {
  std::string Name;
  NavCommand Bytes{};
};

// Of the first cell of a scene that has any: its commands, one a button.
std::vector<NamedCommand> CommandsOf(const Cells& cells) {
  std::vector<NamedCommand> commands;
  for (const Cell_P* cell : cells) {
    for (const ButtonCommands_P& play : cell->ButtonCommands) {
      for (const VMICommand_P& command : play.Commands) {
        if (!command.Deleted) {
          commands.push_back(
              {fmt::format("{} {}", cell->Key, command.Key), ParseCommandHex(command.CommandHex)});
        }
      }
    }
    if (!commands.empty()) {
      break;
    }
  }
  return commands;
}

// The scene that plays at a frame; a track begins with its first one.
std::optional<std::size_t> SceneAt(const Track& track, std::int64_t frame) {
  std::optional<std::size_t> found;
  std::optional<std::size_t> first;
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    const std::int64_t start = track.Scenes[i].Frame;
    first = !first || start < track.Scenes[*first].Frame ? i : first;
    found = start <= frame && (!found || start >= track.Scenes[*found].Frame) ? i : found;
  }
  return found ? found : first;
}

std::int64_t EndOfScene(const Track& track, std::size_t scene) {
  std::int64_t end = TrackTimes(track).Frames > 0 ? TrackTimes(track).Frames : Endless;
  for (const Scene& other : track.Scenes) {
    end = other.Frame > track.Scenes[scene].Frame ? std::min<std::int64_t>(end, other.Frame) : end;
  }
  return end;
}

// A mark that is chosen can be seen where any of its four colours covers anything.
bool Shows(const HighlightPlay& play, const HighlightButton& button) {
  const auto scheme = static_cast<std::size_t>(button.ColorScheme) - 1;
  return scheme >= play.Schemes.size() || std::ranges::any_of(play.Schemes.at(scheme).SelectionContrast,
                                                              [](std::int32_t value) { return value != 0; });
}

std::uint8_t Within(std::int32_t number, std::size_t count) {
  return number >= 0 && std::cmp_less_equal(number, count) ? static_cast<std::uint8_t>(number)
                                                           : std::uint8_t{0};
}

NavPage PageOf(const HighlightPlay& play, std::size_t most, std::span<const NamedCommand> commands) {
  const auto buttons = std::span(play.Buttons).first(std::min(play.Buttons.size(), most));
  const auto link = [&](const std::string& name, std::size_t own) {
    return static_cast<std::uint8_t>(FindButton(buttons, name).value_or(own) + 1);
  };
  NavPage page;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const HighlightButton& button = buttons[i];
    const bool has = i < commands.size();
    page.Buttons.push_back({.Command = has ? commands[i].Bytes : NavCommand{},
                            .Up = link(button.Up, i),
                            .Down = link(button.Down, i),
                            .Left = link(button.Left, i),
                            .Right = link(button.Right, i),
                            .ActsWhenSelected = button.AutoAction,
                            .Name = has ? commands[i].Name : std::string()});
  }
  page.Offset = static_cast<std::uint8_t>(play.Offset);
  page.ByNumber = static_cast<std::uint8_t>(
      std::min<std::size_t>(buttons.size(), static_cast<std::size_t>(std::max(play.NumericalButtons, 0))));
  page.ForcedSelect = Within(play.ForcedSelect, buttons.size());
  page.ForcedAction = Within(play.ForcedAction, buttons.size());
  page.Shows = std::ranges::any_of(buttons, [&play](const HighlightButton& one) { return Shows(play, one); });
  return page;
}

}  // namespace

NavButtons::NavButtons(const Project& project, const VTS_P& entry, Domain domain, const HeldCells& held)
    : project_(project), held_(held) {
  for (const Cell_P* cell : LiveCells(entry, domain)) {
    if (cell->SegmentUsed >= 0 && cell->pScene >= 0 &&
        std::cmp_less(cell->SegmentUsed, project.Tracks.Count())) {
      cells_[static_cast<std::size_t>(cell->SegmentUsed)][static_cast<std::size_t>(cell->pScene)].push_back(
          cell);
    }
  }
}

std::vector<NavButtons::TimedPage> NavButtons::TimedPages(std::size_t index) const {
  const Track& track = project_.Tracks[index];
  const TrackTimes times(track);
  const auto frames = [&times](const std::string& text) {
    return TimecodeToFrames(text, times.FramesPerSecond);
  };
  std::vector<const HighlightPlay*> plays;
  for (const HighlightPlay& play : track.HighlightPlays) {
    plays.push_back(&play);
  }
  std::ranges::stable_sort(plays, {},
                           [&](const HighlightPlay* play) { return frames(play->StartTimeToVideo); });
  std::vector<TimedPage> pages;
  std::optional<std::size_t> scene;
  std::vector<NamedCommand> commands;
  std::size_t dealt = 0;
  for (const HighlightPlay* play : plays) {
    const std::int64_t start = frames(play->StartTimeToVideo);
    const std::int64_t length = frames(play->Duration);
    const std::int64_t end = length > 0 ? start + length : Endless;
    const std::int64_t chosenUntil = frames(play->SelectionEndTime);
    const bool endsAnyway = chosenUntil > 0 && chosenUntil < end;
    if (const auto own = SceneAt(track, start); own != scene) {
      scene = own;
      const auto ofTrack = cells_.find(index);
      const bool played = ofTrack != cells_.end() && own && ofTrack->second.contains(*own);
      commands = played ? CommandsOf(ofTrack->second.at(*own)) : std::vector<NamedCommand>();
      dealt = 0;
    }
    const auto groups = ButtonGroupsOf(*play, track.Aspect, track.DisplayMode);
    const auto left = std::span<const NamedCommand>(commands).subspan(std::min(dealt, commands.size()));
    if (!pages.empty()) {
      pages.back().End = std::min(pages.back().End, start);
    }
    pages.push_back({start, endsAnyway ? chosenUntil : end, endsAnyway,
                     PageOf(*play, MostButtonsOnDisc(groups.size()), left)});
    dealt += play->Buttons.size();
  }
  return pages;
}

const std::vector<NavButtons::TimedPage>& NavButtons::PagesOfTrack(std::size_t index) {
  const auto found = pages_.find(index);
  return found != pages_.end() ? found->second : pages_.emplace(index, TimedPages(index)).first->second;
}

void NavButtons::AddPages(const Cell_P& cell, NavCell& nav) {
  if (cell.SegmentUsed < 0 || !std::cmp_less(cell.SegmentUsed, project_.Tracks.Count())) {
    return;
  }
  const auto index = static_cast<std::size_t>(cell.SegmentUsed);
  const Track& track = project_.Tracks[index];
  const auto scene = static_cast<std::size_t>(std::max(cell.pScene, 0));
  const bool hasScene = scene < track.Scenes.size();
  const std::int64_t start = hasScene && SceneAt(track, 0) != scene ? track.Scenes[scene].Frame : 0;
  const std::int64_t end = hasScene ? EndOfScene(track, scene) : Endless;
  const bool waits = held_.Has(cell) || EqualNoCase(track.TrackType, "Still");
  for (const TimedPage& timed : PagesOfTrack(index)) {
    const bool begins = timed.Start < end || (waits && SceneAt(track, timed.Start) == scene);
    if (begins && (timed.End > start) && !timed.Page.Buttons.empty()) {
      NavPage page = timed.Page;
      const std::int64_t ticks = 90000 / TrackTimes(track).FramesPerSecond;
      page.Start = static_cast<std::uint32_t>(std::max<std::int64_t>(timed.Start - start, 0) * ticks);
      const bool lasts = waits || end == Endless;  // its length is not known
      const bool stays = timed.End >= end || (lasts && !timed.EndsAnyway);
      AddPage(nav, std::move(page),
              stays ? NavForEver : static_cast<std::uint32_t>((timed.End - start) * ticks));
    }
  }
}

std::uint32_t NavButtons::UserOperationsOf(const Cell_P& cell) const {
  UopMask forbidden = cell.Uops;
  const auto track =
      cell.SegmentUsed < 0 ? cells_.end() : cells_.find(static_cast<std::size_t>(cell.SegmentUsed));
  if (track == cells_.end()) {
    return static_cast<std::uint32_t>(forbidden.to_ulong());
  }
  const auto scene = static_cast<std::size_t>(std::max(cell.pScene, 0));
  const auto& scenes = project_.Tracks[track->first].Scenes;
  forbidden |= scene < scenes.size() ? scenes[scene].Uops : UopMask();
  if (const auto cells = track->second.find(scene); cells != track->second.end()) {
    for (const Cell_P* other : cells->second) {
      forbidden |= other->Uops;
    }
  }
  return static_cast<std::uint32_t>(forbidden.to_ulong());
}

std::uint32_t NavButtons::TicksOf(const Cell_P& cell) const {
  if (cell.SegmentUsed < 0 || cell.pScene < 0 || !std::cmp_less(cell.SegmentUsed, project_.Tracks.Count())) {
    return 0;
  }
  const Track& track = project_.Tracks[static_cast<std::size_t>(cell.SegmentUsed)];
  const auto scene = static_cast<std::size_t>(cell.pScene);
  if (scene >= track.Scenes.size()) {
    return 0;
  }
  const std::int64_t end = EndOfScene(track, scene);
  const std::int64_t frames = end == Endless ? 0 : end - track.Scenes[scene].Frame;
  return static_cast<std::uint32_t>(std::max<std::int64_t>(frames, 0) *
                                    (90000 / TrackTimes(track).FramesPerSecond));
}

}  // namespace quorvelant
