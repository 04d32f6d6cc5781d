#include "check/disc_limits.h"

#include <algorithm>

#include "check/messages.h"
#include "disc/limits.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

void CheckPgc(const PGC_P& pgc, Findings& findings) {
  const auto limit = [&](const MessageKind& kind, std::size_t count, std::size_t most) {
    if (count > most) {
      findings.push_back(MessageOf(kind, pgc.Key, pgc.PGCName, count, most));
    }
  };
  const auto programs = Live(pgc.PG);
  std::size_t cells = 0;
  for (const PG_P* program : programs) {
    for (const Cell_P* cell : Live(program->Cell)) {
      ++cells;
      if (cell->SegmentUsed < 0) {
        findings.push_back(MessageOf(message::CellLeftOut, pgc.Key, pgc.PGCName, cell->SceneUsed));
      }
    }
  }
  std::size_t commands = 0;
  for (const CommandList* list : {&pgc.PreCommands, &pgc.PostCommands, &pgc.CellCommands}) {
    commands += static_cast<std::size_t>(std::ranges::count(*list, false, &VMICommand_P::Deleted));
  }
  limit(message::TooManyPrograms, programs.size(), MostPrograms);
  limit(message::TooManyCells, cells, MostCells);
  limit(message::TooManyCommands, commands, MostCommands);
}

}  // namespace

Findings CheckLimits(const Project& project) {
  Findings findings;
  const auto limit = [&findings](const MessageKind& kind, std::size_t count, std::size_t most) {
    if (count > most) {
      findings.push_back(MessageOf(kind, {}, count, most));
    }
  };
  for (const auto& at : LivePgcs(project)) {
    CheckPgc(*at.Chain, findings);
  }
  std::size_t titles = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    titles += Live(entry->Title).size();
  }
  CheckPgc(project.FirstPlay, findings);
  limit(message::TooManySets, std::max<std::size_t>(Live(project.Disc).size(), 1) - 1, MostTitleSets);
  limit(message::TooManyTitles, titles, MostTitles);
  return findings;
}

}  // namespace quorvelant
