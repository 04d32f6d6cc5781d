// A project of any size for the benchmarks.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "model/default_structure.h"
#include "model/keys.h"

namespace quorvelant {

inline constexpr std::size_t TitleSets = 99;
inline constexpr std::int32_t FullPrograms = 99;
// Script lines of one PGC with all its programs, and around it.
inline constexpr std::size_t PgcLines = 33 * 6 + 40 + static_cast<std::size_t>(FullPrograms) * 16;

inline void AddFullPgc(Title_P& title, int entry, int titleNumber, int pgcNumber, const std::string& track) {
  PGC_P& pgc = title.PGC.Add(MakePgc(TitlePgcName(entry, titleNumber, pgcNumber), entry, 0, titleNumber,
                                     PgcKey(title.Key, pgcNumber)));
  AddCommand(pgc.PreCommands, "Pre", "SetSTN audio=1, subpicture=1:ON");
  AddCommand(pgc.PostCommands, "Post", "If ( GPRM0 == 1 ) LinkPGCN " + pgc.PGCName);
  AddCommand(pgc.PostCommands, "Post", "CallSS RSM=0,TitleMenu");
  for (int i = 1; i <= FullPrograms; ++i) {
    PG_P program;
    program.Key = ProgramKey(pgc.Key, i);
    program.PGName = fmt::format("{}_PG{}", pgc.PGCName, i);
    AddCommand(pgc.CellCommands, "Cell", "LinkPGN " + program.PGName + ", button=0");
    Cell_P cell;
    cell.Key = CellKey(program.Key, 1);
    cell.CellName = program.PGName + "_CELL1";
    cell.SceneUsed = fmt::format("{}_Scene{}", track, i);
    program.Cell.Add(std::move(cell));
    pgc.PG.Add(std::move(program));
  }
}

// A disc of up to 99 title sets whose title PGCs are full (99 programs) and write all 32 subpicture decoding
// blocks, of about `lineCount` script lines.
inline Project LargeProject(std::size_t lineCount) {
  Project project;
  MakeDefaultStructure(project);
  const std::size_t pgcCount = std::max<std::size_t>(lineCount / PgcLines, 1);
  for (std::size_t i = 0; i < pgcCount; ++i) {
    const std::size_t set = i % TitleSets;
    const int entry = static_cast<int>(set) + 2;
    if (set >= 1 && i < TitleSets) {
      AddNewVTSSet(project, true, entry - 1);
    }
    Track track;
    track.Filled = true;
    track.TrackName = fmt::format("Track_{}", i + 1);
    track.Standard = "PAL";
    track.VideoPlays.emplace_back().File = fmt::format("media/film{}.m2v", i + 1);
    for (int scene = 1; scene <= FullPrograms; ++scene) {
      track.Scenes.push_back({fmt::format("{}_Scene{}", track.TrackName, scene), scene * 500, {}});
    }
    Title_P& title = *project.Disc.Item(static_cast<std::size_t>(entry))->Title.Item(1);
    AddFullPgc(title, entry, 1, static_cast<int>(title.PGC.Count()) + 1, track.TrackName);
    project.Tracks.Add(std::move(track));
  }
  return project;
}

}  // namespace quorvelant
