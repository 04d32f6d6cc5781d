#include "edit/new_titles.h"

#include <optional>
#include <string>
#include <utility>

#include "analysis/remedies.h"
#include "base/random.h"
#include "base/text.h"
#include "edit/change.h"
#include "edit/film_tracks.h"
#include "edit/messages.h"
#include "edit/title_row.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

// A disc has one standard: that of its first film.
std::optional<Message> OtherStandard(const Project& project, const std::string& file) {
  const Track& track = project.Tracks[project.Tracks.Count() - 1];
  const std::string& first = project.Tracks[0].Standard;
  if (EqualNoCase(track.Standard, first)) {
    return std::nullopt;
  }
  const VideoTarget target{.Ntsc = EqualNoCase(first, "NTSC"), .Aspect = track.Aspect};
  const std::string path = SystemPath(file, project.SourceFolder());
  const std::string line = EncodeVideoLine(path, target);
  return MessageOf(message::FilmOfOtherStandard, path, path, track.Standard, first, line);
}

Outcome AddTitle(EditSession& session, const FilmFiles& film, TitleRow& row, UserInterface& ui) {
  Outcome track = AddFilmTrack(session, film, ui);
  if (!track.IsDone()) {
    return track;
  }
  if (auto refusal = OtherStandard(session.Work(), film.Video)) {
    return Outcome::Refused(std::move(*refusal));
  }
  Outcome title = row.Add(session.Work().Tracks.Count() - 1);
  if (!title.IsDone()) {
    title.Words.Place =
        SystemPath(film.Video, session.Work().SourceFolder());  // no key of what is not there now
  }
  return title;
}

}  // namespace

Outcome AddTitles(EditSession& session, std::span<const FilmFiles> films, UserInterface& ui) {
  Change change(session, "Add Titles");
  TitleRow row(session);
  std::string last;
  for (const FilmFiles& film : films) {
    Outcome outcome = AddTitle(session, film, row, ui);
    if (!outcome.IsDone()) {
      return outcome;
    }
    last = outcome.Key;
  }
  if (!last.empty()) {  // after the last film the player stops because it is told to
    Outcome ended = AppendCommand(session, PgcKey(last, 1), &PGC_P::PostCommands, "Exit");
    if (!ended.IsDone()) {
      return ended;
    }
  }
  return change.Commit();
}

}  // namespace quorvelant
