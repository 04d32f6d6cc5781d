#include "check/disc_limits.h"

#include <algorithm>

#include "check/disc_contents.h"
#include "check/messages.h"
#include "disc/limits.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

// What was always refused: the count has one byte.
constexpr std::size_t MostCountedCommands = 255;

std::size_t CommandCount(const PGC_P& pgc) {
  std::size_t commands = 0;
  for (const CommandList* list : {&pgc.PreCommands, &pgc.PostCommands, &pgc.CellCommands}) {
    commands += static_cast<std::size_t>(std::ranges::count(*list, false, &VMICommand_P::Deleted));
  }
  return commands;
}

void CheckPgc(const PGC_P& pgc, const Rules& rules, Findings& findings) {
  const auto limit = [&](const MessageKind& kind, std::size_t count, std::size_t most) {
    if (count > most) {
      findings.push_back(MessageOf(kind, pgc.Key, pgc.PGCName, count, most));
    }
  };
  const auto programs = Live(pgc.PG);
  std::size_t cells = 0;
  for (const PG_P* program : programs) {
    cells += Live(program->Cell).size();
  }
  limit(message::TooManyPrograms, programs.size(), MostPrograms);
  limit(message::TooManyCells, cells, MostCells);
  if (const std::size_t commands = CommandCount(pgc); commands > MostCommands) {
    Findings finding{MessageOf(message::TooManyCommands, pgc.Key, pgc.PGCName, commands, MostCommands)};
    Append(findings, commands > MostCountedCommands ? finding : ByRules(finding, rules));
  }
}

// The limits that were not always kept.
Findings CheckUnits(const VTS_P& entry) {
  Findings findings;
  const auto limit = [&findings](const MessageKind& kind, const std::string& key, std::string_view name,
                                 std::size_t count, std::size_t most) {
    if (count > most) {
      findings.push_back(MessageOf(kind, key, name.empty() ? key : name, count, most));
    }
  };
  for (const Lang_P* language : Live(entry.Lang)) {
    limit(message::TooManyPgcs, language->Key, language->Language, Live(language->PGC).size(), MostPgcs);
  }
  limit(message::TooManyLanguages, entry.Key, entry.VTSName, Live(entry.Lang).size(), MostLanguages);
  std::size_t pgcs = 0;
  for (const Title_P* title : Live(entry.Title)) {
    pgcs += Live(title->PGC).size();
    limit(message::TooManyParts, title->Key, title->TitleName, PartCount(*title), MostParts);
  }
  limit(message::TooManyPgcs, entry.Key, entry.VTSName, pgcs, MostPgcs);
  return findings;
}

}  // namespace

Findings CheckLimits(const Project& project, const Rules& rules) {
  Findings findings;
  const auto limit = [&findings](const MessageKind& kind, std::size_t count, std::size_t most) {
    if (count > most) {
      findings.push_back(MessageOf(kind, {}, count, most));
    }
  };
  for (const auto& at : LivePgcs(project)) {
    CheckPgc(*at.Chain, rules, findings);
  }
  std::size_t titles = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    titles += Live(entry->Title).size();
    Append(findings, ByRules(CheckUnits(*entry), rules));
  }
  CheckPgc(project.FirstPlay, rules, findings);
  limit(message::TooManySets, std::max<std::size_t>(Live(project.Disc).size(), 1) - 1, MostTitleSets);
  limit(message::TooManyTitles, titles, MostTitles);
  return findings;
}

}  // namespace quorvelant
