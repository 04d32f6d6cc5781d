#include "check/disc_limits.h"

#include <fmt/format.h>

#include <algorithm>

#include "disc/limits.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

class LimitCheck {
 public:
  void Limit(std::string_view text, std::size_t count, std::size_t most) {
    if (count > most) {
      Error(fmt::format(fmt::runtime(text), count, most), {});
    }
  }
  void Chain(const PGC_P& chain) {
    const auto limit = [&](std::string_view text, std::size_t count, std::size_t most) {
      if (count > most) {
        Error(fmt::format(fmt::runtime(text), chain.PGCName, count, most), chain.Key);
      }
    };
    const auto programs = Live(chain.PG);
    std::size_t cells = 0;
    for (const PG_P* program : programs) {
      for (const Cell_P* cell : Live(program->Cell)) {
        ++cells;
        if (cell->SegmentUsed < 0) {
          Warn(fmt::format(CellWithoutScene, chain.PGCName, cell->SceneUsed), chain.Key);
        }
      }
    }
    std::size_t commands = 0;
    for (const CommandList* list : {&chain.PreCommands, &chain.PostCommands, &chain.CellCommands}) {
      commands += static_cast<std::size_t>(std::ranges::count(*list, false, &VMICommand_P::Deleted));
    }
    limit(TooManyPrograms, programs.size(), MostPrograms);
    limit(TooManyCells, cells, MostCells);
    limit(TooManyCommands, commands, MostCommands);
  }
  std::vector<Message> Take() { return std::move(findings_); }

 private:
  void Error(std::string text, std::string place) {
    findings_.push_back({Severity::Error, std::string(LimitTitle), std::move(text), std::move(place)});
  }
  void Warn(std::string text, std::string place) {
    findings_.push_back({Severity::Warning, std::string(LimitTitle), std::move(text), std::move(place)});
  }

  std::vector<Message> findings_;
};

}  // namespace

std::vector<Message> CheckLimits(const Project& disc) {
  LimitCheck check;
  std::size_t titles = 0;
  for (const VTS_P* entry : Live(disc.Disc)) {
    for (const Lang_P* language : Live(entry->Lang)) {
      for (const PGC_P* chain : Live(language->PGC)) {
        check.Chain(*chain);
      }
    }
    for (const Title_P* title : Live(entry->Title)) {
      ++titles;
      for (const PGC_P* chain : Live(title->PGC)) {
        check.Chain(*chain);
      }
    }
  }
  check.Chain(disc.FirstPlay);
  check.Limit(TooManySets, std::max<std::size_t>(Live(disc.Disc).size(), 1) - 1, MostTitleSets);
  check.Limit(TooManyTitles, titles, MostTitles);
  return check.Take();
}

}  // namespace quorvelant
