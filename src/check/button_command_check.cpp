#include <algorithm>
#include <map>
#include <optional>
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

// The scene that plays at a frame; a track begins with its first one.
std::size_t SceneAt(const Track& track, std::int64_t frame) {
  std::vector<std::pair<std::int64_t, std::size_t>> starts;
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    starts.emplace_back(track.Scenes[i].Frame, i);
  }
  std::ranges::stable_sort(starts, {}, &std::pair<std::int64_t, std::size_t>::first);
  const auto after =
      std::ranges::upper_bound(starts, frame, {}, &std::pair<std::int64_t, std::size_t>::first);
  return starts.empty() ? 0 : (after == starts.begin() ? after : after - 1)->second;
}

// The scene whose buttons last into another one, in which none start.
std::optional<std::size_t> SceneOfLasting(const Track& track, std::size_t into) {
  const std::int64_t begin = into < track.Scenes.size() ? track.Scenes[into].Frame : 0;
  std::optional<std::size_t> scene;
  for (const HighlightPlay& play : track.HighlightPlays) {
    const auto span = SpanOf(play, TrackTimes(track).FramesPerSecond);
    scene = span.Start < begin && begin < span.End ? SceneAt(track, span.Start) : scene;
  }
  return scene;
}

// The scene in which a set starts has its cell's commands, dealt one to a button.
std::map<std::size_t, SceneButtons> ButtonsByScene(const Track& track) {
  std::map<std::size_t, SceneButtons> scenes;
  for (const HighlightPlay& play : track.HighlightPlays) {
    SceneButtons& scene = scenes[SceneAt(track, SpanOf(play, TrackTimes(track).FramesPerSecond).Start)];
    ++scene.Sets;
    scene.Buttons += play.Buttons.size();
  }
  return scenes;
}

// Cells of a scene into which the buttons of another last may repeat commands of that one's, and say no
// others.
void CheckLasting(const Cells& cells, const Cells& before, const std::string& track, Findings& findings) {
  const auto speaking =
      std::ranges::find_if(before, [](const Cell_P* cell) { return !CommandsOf(*cell).empty(); });
  if (speaking == before.end()) {
    return;
  }
  const Hexes commands = CommandsOf(**speaking);
  for (const Cell_P* cell : cells) {
    const Hexes other = CommandsOf(*cell);
    // Ranges of sub-sequences are more than clang 14 takes.
    const auto repeated = std::search(commands.begin(), commands.end(), other.begin(), other.end());
    if (repeated == commands.end() && !other.empty()) {
      findings.push_back(MessageOf(message::ButtonCommandsDiffer, cell->Key, track, (*speaking)->Key));
    }
  }
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
        auto scenes = ButtonsByScene(track);
        const bool none = scenes.empty();
        for (auto of = cells.lower_bound({row.Index, 0}); of != cells.end() && of->first.first == row.Index;
             ++of) {
          if (none || scenes.contains(of->first.second)) {
            CheckScene(of->second, scenes[of->first.second], track.TrackName, domain, findings);
          } else if (const auto from = SceneOfLasting(track, of->first.second)) {
            const auto before = cells.find({row.Index, *from});  // none where nobody plays that scene
            if (before != cells.end()) {
              CheckLasting(of->second, before->second, track.TrackName, findings);
            }
          }
        }
      }
    }
  }
  return findings;
}

}  // namespace quorvelant
