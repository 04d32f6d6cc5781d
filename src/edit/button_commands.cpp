#include "edit/button_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <span>
#include <string>
#include <utility>

#include "check/track_times.h"
#include "edit/change.h"
#include "model/walk.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

using Places = std::vector<ButtonPlace>;
// By scene: its buttons in the order in which commands are dealt to them.
using Dealing = std::map<std::size_t, Places>;

// The scene in which a frame lies; what lies before the first belongs to it.
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

Dealing DealingOf(const Track& track, std::span<const HighlightPlay> sets) {
  const int rate = TrackTimes(track).FramesPerSecond;
  std::vector<std::pair<std::int64_t, std::size_t>> starts;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    starts.emplace_back(SpanOf(sets[i], rate).Start, i);
  }
  std::ranges::sort(starts);
  Dealing dealing;
  for (const auto& [start, set] : starts) {
    Places& places = dealing[SceneAt(track, start)];
    for (std::size_t button = 0; button < sets[set].Buttons.size(); ++button) {
      places.push_back({set, button});
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

bool PlaysTrack(const Cell_P& cell, std::size_t track) {
  return std::cmp_equal(cell.SegmentUsed, track) && cell.pScene >= 0;
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
    commands[i].Key = fmt::format("Button{}", list.size() + 1);
    list.push_back(std::move(commands[i]));
  }
  return plays;
}

// The cells of one domain of an entry, for a track whose sets have changed.
class DomainCells {
 public:
  DomainCells(const VTS_P& entry, Domain domain, std::size_t track, const Dealing& before,
              const Dealing& after, const ButtonOrigins& origins)
      : track_(track), before_(before), after_(after), origins_(origins), cells_(LiveCells(entry, domain)) {
    for (const Cell_P* cell : cells_) {
      if (PlaysTrack(*cell, track)) {
        CommandList& spoken = spoken_[static_cast<std::size_t>(cell->pScene)];
        if (spoken.empty()) {
          spoken = CommandsOf(*cell);
        }
      }
    }
  }

  // The cells that change, by their place in the walk, with their new lists.
  [[nodiscard]] std::map<std::size_t, std::vector<ButtonCommands_P>> Changed() const {
    std::map<std::size_t, std::vector<ButtonCommands_P>> changed;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      auto plays = PlaysTrack(*cells_[i], track_) ? NewPlays(*cells_[i]) : std::nullopt;
      if (plays) {
        changed.emplace(i, *std::move(plays));
      }
    }
    return changed;
  }

 private:
  [[nodiscard]] static const Places& At(const Dealing& dealing, std::size_t scene) {
    static const Places nothing;
    const auto found = dealing.find(scene);
    return found == dealing.end() ? nothing : found->second;
  }

  // The command that a button had; `own` are those of the cell that plays `scene`.
  [[nodiscard]] VMICommand_P CommandOf(const std::optional<ButtonPlace>& button, std::size_t scene,
                                       const CommandList& own) const {
    for (const auto& [from, places] : before_) {
      const auto at = button ? std::ranges::find(places, *button) : places.end();
      if (at == places.end()) {
        continue;
      }
      const auto spoken = spoken_.find(from);
      const CommandList* commands = from == scene             ? &own
                                    : spoken != spoken_.end() ? &spoken->second
                                                              : nullptr;
      const auto position = static_cast<std::size_t>(at - places.begin());
      return commands != nullptr && position < commands->size() ? (*commands)[position] : NopCommand();
    }
    return NopCommand();
  }

  [[nodiscard]] std::optional<std::vector<ButtonCommands_P>> NewPlays(const Cell_P& cell) const {
    const auto scene = static_cast<std::size_t>(cell.pScene);
    const Places& before = At(before_, scene);
    const Places& after = At(after_, scene);
    const CommandList own = CommandsOf(cell);
    if ((before.empty() && after.empty()) || (own.empty() && !spoken_.at(scene).empty())) {
      return std::nullopt;
    }
    CommandList commands;
    for (const ButtonPlace& place : after) {
      commands.push_back(CommandOf(origins_[place.Set][place.Button], scene, own));
    }
    for (std::size_t surplus = before.size(); surplus < own.size(); ++surplus) {
      commands.push_back(own[surplus]);
    }
    if (commands == own) {
      return std::nullopt;
    }
    const bool oneEach = cell.ButtonCommands.size() > 1 && cell.ButtonCommands.size() == own.size();
    return Grouped(std::move(commands), after, oneEach);
  }

  std::size_t track_;
  const Dealing& before_;
  const Dealing& after_;
  const ButtonOrigins& origins_;
  std::vector<const Cell_P*> cells_;
  std::map<std::size_t, CommandList> spoken_;  // by scene: what the first cell with commands says
};

}  // namespace

std::optional<std::size_t> SceneShowing(const Track& track, std::size_t set) {
  for (const auto& [scene, places] : DealingOf(track, track.HighlightPlays)) {
    if (!places.empty() && places.front().Set == set) {
      return scene;
    }
  }
  return std::nullopt;
}

void CarryButtonCommands(Change& change, std::size_t track, const std::vector<HighlightPlay>& before,
                         const ButtonOrigins& origins) {
  const Track& played = change.Work().Tracks[track];
  const Dealing dealtBefore = DealingOf(played, before);
  const Dealing dealtAfter = DealingOf(played, played.HighlightPlays);
  for (std::size_t number = 1; number <= change.Work().Disc.Count(); ++number) {
    const VTS_P& entry = *change.Work().Disc.Item(number);
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      auto changed = DomainCells(entry, domain, track, dealtBefore, dealtAfter, origins).Changed();
      if (entry.Removed || changed.empty()) {
        continue;
      }
      const std::vector<Cell_P*> cells = CellsToEdit(change.EditEntry(number), domain);
      for (auto& [place, plays] : changed) {
        cells[place]->ButtonCommands = std::move(plays);
      }
    }
  }
}

}  // namespace quorvelant
