#include "edit/change.h"
#include "edit/drop.h"
#include "edit/live_elements.h"
#include "edit/steps.h"
#include "edit/structure.h"
#include "edit/title_row.h"
#include "menu/menu_start.h"
#include "menu/menu_structure.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

constexpr std::string_view FirstTitle = "VTS1.TITLE1";

Outcome TakePalette(EditSession& session, const std::string& chain, const std::string& palette) {
  return SetPgc(session, chain, [&](PGC_P& pgc) {
    pgc.PaletteName = palette.empty() ? pgc.PaletteName : palette;
    return Outcome::Done();
  });
}

// How a film ends that is followed by none, or is not to be.
std::string EndText(AfterFilm after, const std::string& title) {
  return after == AfterFilm::Repeat ? "JumpVTS_TT " + title : "Exit";
}

bool LeadsOn(const FilmTracks& film) {
  return film.After == AfterFilm::Menu || film.After == AfterFilm::Next;
}

void AddTitles(EditSession& session, const MenuPlan& plan, Steps& steps) {
  TitleRow row(session);
  const FilmTracks* last = nullptr;
  for (const FilmTracks& film : plan.Films) {
    const bool isLedTo = last == nullptr || LeadsOn(*last);
    const std::string title = steps.Do([&] { return row.Add(film.Offer.Track, isLedTo); });
    const std::string chain = PgcKey(title, 1);
    steps.Do([&] { return TakePalette(session, chain, film.Palette); });
    steps.Do([&] { return ChooseStreamsAtTitle(session, chain, film.Offer.Track); });
    if (steps.GoOn() && (&film == &plan.Films.back() || !LeadsOn(film))) {
      const std::string name = LiveTitle(session.Work(), title)->TitleName;
      steps.Do(
          [&] { return AppendCommand(session, chain, &PGC_P::PostCommands, EndText(film.After, name)); });
    }
    last = &film;
  }
}

void AddScenes(EditSession& session, const MenuPlan& plan, Steps& steps) {
  const std::string chain = PgcKey(FirstTitle, 1);
  for (const FilmTracks& film : plan.Films) {
    steps.Do([&] { return Drop(session, {.Track = film.Offer.Track, .Scene = {}}, chain); });
  }
  steps.Do([&] { return ChooseStreamsAtTitle(session, chain, plan.Films.front().Offer.Track); });
}

}  // namespace

Outcome MakePlainStructure(EditSession& session, const MenuPlan& plan) {
  Change change(session, "Make Titles");
  Steps steps;
  session.RulesInForce().TitleForEachFilm ? AddTitles(session, plan, steps) : AddScenes(session, plan, steps);
  if (steps.GoOn()) {
    const std::string name = LiveTitle(session.Work(), FirstTitle)->TitleName;
    steps.Do([&] { return SetFirstPlay(session, plan, "JumpTT " + name); });
  }
  return steps.GoOn() ? change.Commit() : steps.Refusal();
}

}  // namespace quorvelant
