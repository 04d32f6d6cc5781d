#include "menu/menu_start.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/structure.h"
#include "edit/title_row.h"
#include "menu/button_texts.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// Whether First Play chooses, and not every title.
bool IsChosenOnce(const Rules& rules) {
  return rules.StartChosenOnce;
}

bool HasSubtitles(const Project& project, std::size_t track) {
  return !Live(project.Tracks[track].SubStreams).empty();
}

}  // namespace

bool PlaysAllAtStart(const MenuPlan& plan) {
  return plan.Insertion == AtInsertion::AllFilms && plan.Films.size() > 1;
}

// Players compare a register with another one before a call; nothing writes to the second.
std::string StopPlayingAllText() {
  return "mov GPRM0, 0";
}

std::string WhilePlayingAllText(std::string_view command) {
  return fmt::format("If ( GPRM0 != GPRM1 ) {}", command);
}

Outcome SetFirstPlay(EditSession& session, const MenuPlan& plan, std::string_view jump) {
  const Rules& rules = session.RulesInForce();
  const bool anySubtitles = std::ranges::any_of(plan.Films, [&session](const FilmTracks& film) {
    return HasSubtitles(session.Work(), film.Offer.Track);
  });
  return SetPgc(session, FirstPgcKey, [&](PGC_P& first) {
    first.PreCommands.clear();
    if (IsChosenOnce(rules) && anySubtitles) {
      AddCommand(first.PreCommands, FirstPgcKey,
                 plan.StartSubtitles ? SubtitlesOnText(*plan.StartSubtitles) : SubtitlesOffText(rules));
    }
    if (PlaysAllAtStart(plan)) {
      AddCommand(first.PreCommands, FirstPgcKey, "mov GPRM0, 1");
    }
    AddCommand(first.PreCommands, FirstPgcKey, std::string(jump));
    return Outcome::Done();
  });
}

Outcome ChooseStreamsAtTitle(EditSession& session, std::string_view chain, std::size_t track) {
  if (IsChosenOnce(session.RulesInForce())) {
    return Outcome::Done();
  }
  const auto streams = Live(session.Work().Tracks[track].SubStreams);
  return AppendCommand(
      session, chain, &PGC_P::PreCommands,
      streams.empty() ? "SetSTN subpicture=63 Dummy:ON" : SubtitlesOnText(streams.front()->StreamNumber + 1));
}

}  // namespace quorvelant
