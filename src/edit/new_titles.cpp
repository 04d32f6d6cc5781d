#include "edit/new_titles.h"

#include <string>
#include <utility>

#include "edit/change.h"
#include "edit/film_tracks.h"
#include "edit/title_row.h"

namespace quorvelant {

namespace {

Outcome AddTitle(EditSession& session, const FilmFiles& film, TitleRow& row, UserInterface& ui) {
  Outcome track = AddFilmTrack(session, film, ui);
  return track.IsDone() ? row.Add(session.Work().Tracks.Count() - 1) : track;
}

}  // namespace

Outcome AddTitles(EditSession& session, std::span<const FilmFiles> films, UserInterface& ui) {
  Change change(session, "Add Titles");
  TitleRow row(session);
  for (const FilmFiles& film : films) {
    Outcome outcome = AddTitle(session, film, row, ui);
    if (!outcome.IsDone()) {
      outcome.Words.Level = Severity::Error;  // nobody is asked here
      if (outcome.Words.Place.empty()) {
        outcome.Words.Place = film.Video;
      }
      return Outcome::Refused(std::move(outcome.Words));
    }
  }
  return change.Commit();
}

}  // namespace quorvelant
