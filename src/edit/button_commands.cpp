#include "edit/button_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "check/track_times.h"
#include "edit/change.h"
#include "model/keys.h"
#include "model/walk.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

using Places = std::vector<ButtonPlace>;

std::vector<DealtScene> DealingOf(const Track& track, std::span<const HighlightPlay> sets) {
  const int rate = TrackTimes(track).FramesPerSecond;
  std::vector<std::pair<std::int64_t, std::size_t>> starts;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    starts.emplace_back(SpanOf(sets[i], rate).Start, i);
  }
  std::ranges::sort(starts);
  std::vector<DealtScene> dealing;
  for (const auto& [start, set] : starts) {
    const std::size_t scene = SceneAt(track, start);
    if (dealing.empty() || dealing.back().Scene != scene) {
      dealing.push_back({scene, scene < track.Scenes.size() ? track.Scenes[scene].Name : std::string(), {}});
    }
    for (std::size_t button = 0; button < sets[set].Buttons.size(); ++button) {
      dealing.back().Buttons.push_back({set, button});
    }
  }
  return dealing;
}

// The live commands of a cell in a row, without their keys.
CommandList CommandsOf(const Cell_P& cell) {
  CommandList commands;
  for (const ButtonCommands_P& play : cell.ButtonCommands) {
    for (const VMICommand_P& command : play.Commands) {
      if (!command.Deleted) {
        commands.push_back(command);
        commands.back().Key.clear();
      }
    }
  }
  return commands;
}

// The name of the scene of the track that a cell plays, where it plays one.
std::optional<std::string> SceneOf(const Cell_P& cell, const Track& track, std::size_t index) {
  if (!std::cmp_equal(cell.SegmentUsed, index)) {
    return std::nullopt;
  }
  if (std::ranges::find(track.Scenes, cell.SceneUsed, &Scene::Name) != track.Scenes.end()) {
    return cell.SceneUsed;
  }
  const bool stands = cell.pScene >= 0 && std::cmp_less(cell.pScene, track.Scenes.size());
  return stands ? std::optional(track.Scenes[static_cast<std::size_t>(cell.pScene)].Name) : std::nullopt;
}

// The cells that `LiveCells` walks, to be written.
std::vector<Cell_P*> CellsToEdit(VTS_P& entry, Domain domain) {
  std::vector<Cell_P*> cells;
  const auto cellsOf = [&cells](auto& units) {
    for (auto* unit : Live(units)) {
      for (PGC_P* chain : Live(unit->PGC)) {
        std::ranges::copy(LiveCells(*chain), std::back_inserter(cells));
      }
    }
  };
  domain == Domain::Menu ? cellsOf(entry.Lang) : cellsOf(entry.Title);
  return cells;
}

VMICommand_P NopCommand() {
  VMICommand_P command;
  command.FullCommand = "NOP";
  command.CommandHex = "0000000000000000";
  return command;
}

// A list for each set or, where the cell had it so, for each button.
std::vector<ButtonCommands_P> Grouped(CommandList commands, std::span<const ButtonPlace> buttons,
                                      bool oneEach) {
  std::vector<ButtonCommands_P> plays;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const bool begins = i == 0 || oneEach || (i < buttons.size() && buttons[i].Set != buttons[i - 1].Set);
    CommandList& list = (begins ? plays.emplace_back() : plays.back()).Commands;
    list.push_back(std::move(commands[i]));
  }
  return plays;
}

const Places& ButtonsIn(std::span<const DealtScene> dealing, std::string_view scene) {
  static const Places nothing;
  const auto found = std::ranges::find(dealing, scene, &DealtScene::Name);
  return found == dealing.end() ? nothing : found->Buttons;
}

// The cells of one domain of an entry, for a track whose sets or scenes have changed. `spoken` is what they
// said before, by scene.
class DomainCells {
 public:
  DomainCells(std::span<const DealtScene> before, std::span<const DealtScene> after,
              const ButtonOrigins& origins, const std::map<std::string, CommandList>& spoken)
      : before_(before), after_(after), origins_(origins), spoken_(spoken) {}

  // The cells that change, by their place in the walk, with their new lists.
  std::map<std::size_t, std::vector<ButtonCommands_P>> Changed(const std::vector<const Cell_P*>& cells,
                                                               const Track& track, std::size_t index) {
    std::vector<std::optional<std::string>> scenes;
    scenes.reserve(cells.size());
    for (const Cell_P* cell : cells) {
      scenes.push_back(SceneOf(*cell, track, index));
    }
    const auto isPlayed = [&scenes](const DealtScene& scene) {
      return std::ranges::find(scenes, scene.Name) != scenes.end();
    };
    std::ranges::copy_if(after_, std::back_inserter(unplayed_), std::not_fn(isPlayed));
    std::map<std::size_t, std::vector<ButtonCommands_P>> changed;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      auto plays = scenes[i] ? NewPlays(*cells[i], *scenes[i]) : std::nullopt;
      if (plays) {
        changed.emplace(i, *std::move(plays));
      }
    }
    return changed;
  }

 private:
  [[nodiscard]] const std::optional<ButtonPlace>& OriginOf(const ButtonPlace& place) const {
    return origins_[place.Set][place.Button];
  }

  // The same buttons in the same order.
  [[nodiscard]] bool IsDealtAlike(const Places& before, const Places& after) const {
    return std::ranges::equal(before, after, [this](const ButtonPlace& former, const ButtonPlace& now) {
      return OriginOf(now) == former;
    });
  }

  // The command that a button had; `own` are those of the cell that plays `scene`. Nothing where none was
  // said. One that comes from a scene of which no cell spoke takes what waits for it in `spare`.
  [[nodiscard]] std::optional<VMICommand_P> CommandOf(const ButtonPlace& button, std::string_view scene,
                                                      const CommandList& own, CommandList& spare) const {
    for (const DealtScene& from : before_) {
      const auto at = std::ranges::find(from.Buttons, button);
      if (at == from.Buttons.end()) {
        continue;
      }
      const auto spoken = spoken_.find(from.Name);
      const bool isSaid = spoken != spoken_.end() && !spoken->second.empty();
      if (from.Name != scene && !isSaid && !spare.empty()) {
        const VMICommand_P waiting = spare.front();
        spare.erase(spare.begin());
        return waiting;
      }
      const CommandList* commands = from.Name == scene ? &own : isSaid ? &spoken->second : nullptr;
      const auto position = static_cast<std::size_t>(at - from.Buttons.begin());
      return commands != nullptr && position < commands->size() ? std::optional((*commands)[position])
                                                                : std::nullopt;
    }
    return std::nullopt;
  }

  // The commands of buttons that go to scenes which no cell plays: they stay where they were said.
  void AddWaiting(const Places& before, const CommandList& own, CommandList& commands) const {
    for (const DealtScene& scene : unplayed_) {
      for (const ButtonPlace& place : scene.Buttons) {
        const auto at = OriginOf(place) ? std::ranges::find(before, *OriginOf(place)) : before.end();
        const auto position = static_cast<std::size_t>(at - before.begin());
        if (at != before.end() && position < own.size()) {
          commands.push_back(own[position]);
        }
      }
    }
  }

  [[nodiscard]] std::optional<std::vector<ButtonCommands_P>> NewPlays(const Cell_P& cell,
                                                                      const std::string& scene) const {
    const Places& before = ButtonsIn(before_, scene);
    const Places& after = ButtonsIn(after_, scene);
    const CommandList own = CommandsOf(cell);
    const auto spoken = spoken_.find(scene);
    const bool isSilent = own.empty() && spoken != spoken_.end() && !spoken->second.empty();
    if (isSilent || IsDealtAlike(before, after)) {
      return std::nullopt;
    }
    CommandList spare(own.begin() + static_cast<std::ptrdiff_t>(std::min(before.size(), own.size())),
                      own.end());
    CommandList commands;
    bool says = !own.empty();
    for (const ButtonPlace& place : after) {
      auto command = OriginOf(place) ? CommandOf(*OriginOf(place), scene, own, spare) : std::nullopt;
      says = says || command || !OriginOf(place);
      commands.push_back(command ? *std::move(command) : NopCommand());
    }
    AddWaiting(before, own, commands);
    std::ranges::copy(spare, std::back_inserter(commands));
    if (!says || commands == own) {
      return std::nullopt;
    }
    const bool oneEach = cell.ButtonCommands.size() > 1 && cell.ButtonCommands.size() == own.size();
    return Grouped(std::move(commands), after, oneEach);
  }

  std::span<const DealtScene> before_;
  std::span<const DealtScene> after_;
  const ButtonOrigins& origins_;
  const std::map<std::string, CommandList>& spoken_;
  std::vector<DealtScene> unplayed_;
};

}  // namespace

std::size_t SceneAt(const Track& track, std::int64_t frame) {
  std::optional<std::size_t> first;
  std::optional<std::size_t> found;
  const auto frameOf = [&](std::size_t scene) { return track.Scenes[scene].Frame; };
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    first = !first || frameOf(i) < frameOf(*first) ? i : *first;
    if (frameOf(i) <= frame && (!found || frameOf(i) >= frameOf(*found))) {
      found = i;
    }
  }
  return found.value_or(first.value_or(0));
}

std::optional<std::size_t> SceneShowing(const Track& track, std::size_t set) {
  for (const DealtScene& dealt : DealingOf(track, track.HighlightPlays)) {
    if (!dealt.Buttons.empty() && dealt.Buttons.front().Set == set) {
      return dealt.Scene;
    }
  }
  return std::nullopt;
}

std::optional<DealtPlace> DealtPlaceOf(const Track& track, const ButtonPlace& button) {
  for (const DealtScene& dealt : DealingOf(track, track.HighlightPlays)) {
    const auto at = std::ranges::find(dealt.Buttons, button);
    if (at != dealt.Buttons.end()) {
      return DealtPlace{dealt.Scene, static_cast<std::size_t>(at - dealt.Buttons.begin())};
    }
  }
  return std::nullopt;
}

std::vector<const Cell_P*> CellsPlaying(const Project& project, std::size_t track, std::size_t scene) {
  std::vector<const Cell_P*> cells;
  const Track& played = project.Tracks[track];
  if (scene >= played.Scenes.size()) {
    return cells;
  }
  for (const auto& at : LivePgcs(project)) {
    std::ranges::copy_if(LiveCells(*at.Chain), std::back_inserter(cells), [&](const Cell_P* cell) {
      return SceneOf(*cell, played, track) == played.Scenes[scene].Name;
    });
  }
  return cells;
}

ButtonCommandCarrier::ButtonCommandCarrier(const Project& project, std::size_t track) : track_(track) {
  const Track& played = project.Tracks[track];
  before_ = DealingOf(played, played.HighlightPlays);
  for (std::size_t number = 1; number <= project.Disc.Count(); ++number) {
    const VTS_P& entry = *project.Disc.Item(number);
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      for (const Cell_P* cell : entry.Removed ? std::vector<const Cell_P*>() : LiveCells(entry, domain)) {
        const auto scene = SceneOf(*cell, played, track);
        if (scene && spoken_[{number, domain}][*scene].empty()) {
          spoken_[{number, domain}][*scene] = CommandsOf(*cell);
        }
      }
    }
  }
}

void ButtonCommandCarrier::Carry(Change& change, const ButtonOrigins& origins) const {
  const Track& played = change.Work().Tracks[track_];
  const std::vector<DealtScene> after = DealingOf(played, played.HighlightPlays);
  for (const auto& [place, spoken] : spoken_) {
    auto changed =
        DomainCells(before_, after, origins, spoken)
            .Changed(LiveCells(*change.Work().Disc.Item(place.first), place.second), played, track_);
    if (changed.empty()) {
      continue;
    }
    const std::vector<Cell_P*> cells = CellsToEdit(change.EditEntry(place.first), place.second);
    for (auto& [cell, plays] : changed) {
      cells[cell]->ButtonCommands = std::move(plays);
      KeyButtons(*cells[cell]);
    }
  }
}

void ButtonCommandCarrier::Carry(Change& change) const {
  ButtonOrigins same;
  for (const HighlightPlay& set : change.Work().Tracks[track_].HighlightPlays) {
    auto& places = same.emplace_back();
    for (std::size_t button = 0; button < set.Buttons.size(); ++button) {
      places.emplace_back(ButtonPlace{same.size() - 1, button});
    }
  }
  Carry(change, same);
}

}  // namespace quorvelant
