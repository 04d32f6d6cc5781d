#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/counted.h"
#include "check/messages.h"
#include "check/overlay_check.h"
#include "check/track_times.h"
#include "model/stream_maps.h"
#include "model/walk.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {
namespace {

using Cells = std::vector<const Cell_P*>;
using Hexes = std::vector<std::string>;

std::size_t LiveCount(const ButtonCommands_P& play) {
  return static_cast<std::size_t>(std::ranges::count(play.Commands, false, &VMICommand_P::Deleted));
}

Hexes CommandsOf(const Cell_P& cell) {
  Hexes commands;
  for (const ButtonCommands_P& play : cell.ButtonCommands) {
    for (const VMICommand_P& command : play.Commands) {
      if (!command.Deleted) {
        commands.push_back(command.CommandHex);
      }
    }
  }
  return commands;
}

// The button sets of one scene, and how many buttons they have together.
struct SceneButtons {
  std::size_t Sets = 0;
  std::size_t Buttons = 0;
};

// The scene in which a set starts has its cell's commands, dealt one to a button.
std::map<std::size_t, SceneButtons> ButtonsByScene(const Track& track) {
  std::vector<std::pair<std::int64_t, std::size_t>> starts;
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    starts.emplace_back(track.Scenes[i].Frame, i);
  }
  std::ranges::stable_sort(starts, {}, &std::pair<std::int64_t, std::size_t>::first);
  std::map<std::size_t, SceneButtons> scenes;
  const TrackTimes times(track);
  for (const HighlightPlay& play : track.HighlightPlays) {
    const std::int64_t start = SpanOf(play, times.FramesPerSecond).Start;
    const auto after =
        std::ranges::upper_bound(starts, start, {}, &std::pair<std::int64_t, std::size_t>::first);
    SceneButtons& scene = scenes[starts.empty() ? 0 : (after == starts.begin() ? after : after - 1)->second];
    ++scene.Sets;
    scene.Buttons += play.Buttons.size();
  }
  return scenes;
}

void CheckScene(const Cells& cells, const SceneButtons& scene, const std::string& track, Domain domain,
                Findings& findings) {
  const auto speaking =
      std::ranges::find_if(cells, [](const Cell_P* cell) { return !CommandsOf(*cell).empty(); });
  const Cell_P& first = speaking == cells.end() ? *cells.front() : **speaking;
  const Hexes commands = CommandsOf(first);
  if (commands.size() < scene.Buttons) {
    findings.push_back(MessageOf(message::ButtonsWithoutCommand, first.Key, track,
                                 Counted(scene.Buttons, "button"),
                                 Counted(commands.size(), "button command")));
    // A title goes on without its buttons, as where a menu's track is played in one.
    const bool goesOn = domain == Domain::Title && commands.empty();
    findings.back().Level = goesOn ? Severity::Warning : Severity::Error;
  } else if (commands.size() > scene.Buttons) {
    findings.push_back(MessageOf(message::CommandsWithoutButton, first.Key, track,
                                 Counted(scene.Buttons, "button"),
                                 Counted(commands.size(), "button command")));
  } else if (scene.Buttons > 0 && first.ButtonCommands.size() > scene.Sets &&
             !std::ranges::all_of(first.ButtonCommands,
                                  [](const auto& play) { return LiveCount(play) == 1; })) {
    findings.push_back(MessageOf(message::ButtonCommandsUneven, first.Key, track));
  }
  for (const Cell_P* cell : scene.Buttons > 0 ? cells : Cells{}) {
    const Hexes other = CommandsOf(*cell);
    if (!other.empty() && other != commands) {
      findings.push_back(MessageOf(message::ButtonCommandsDiffer, cell->Key, track, first.Key));
    }
  }
}

}  // namespace

Findings CheckButtonCommands(const Project& project) {
  Findings findings;
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      std::map<std::pair<std::size_t, std::size_t>, Cells> cells;  // by track and scene
      for (const Cell_P* cell : LiveCells(*entry, domain)) {
        if (cell->SegmentUsed >= 0 && cell->pScene >= 0) {
          cells[{static_cast<std::size_t>(cell->SegmentUsed), static_cast<std::size_t>(cell->pScene)}]
              .push_back(cell);
        }
      }
      for (const TrackListRow& row : BuildTrackList(*entry, domain, project.Tracks)) {
        const Track& track = project.Tracks[row.Index];
        // Buttons may last into later scenes, whose cells repeat their commands to no harm.
        auto scenes = ButtonsByScene(track);
        const bool none = scenes.empty();
        for (auto of = cells.lower_bound({row.Index, 0}); of != cells.end() && of->first.first == row.Index;
             ++of) {
          if (none || scenes.contains(of->first.second)) {
            CheckScene(of->second, scenes[of->first.second], track.TrackName, domain, findings);
          }
        }
      }
    }
  }
  return findings;
}

}  // namespace quorvelant
