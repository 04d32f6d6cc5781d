#include "edit/film_tracks.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "base/random.h"
#include "edit/messages.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "edit/track_names.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

template <class Stream>
std::function<void(Stream&)> SetsWords(const FilmFiles::Stream& words) {
  return [&words](Stream& stream) {
    stream.Language = words.Language.empty() ? std::move(stream.Language) : words.Language;
    stream.Extension = words.Extension.empty() ? std::move(stream.Extension) : words.Extension;
  };
}

// A refusal names the file that it is about, not the key of a track that is not there any more. Nobody is
// asked.
Outcome RefusedOver(const std::string& file, Outcome outcome) {
  if (outcome.Result == Outcome::Kind::Asks) {
    return Outcome::Refused(MessageOf(message::NobodyAsked, file, file, outcome.Words.Text));
  }
  if (outcome.Words.Place.find(file) == std::string::npos) {
    outcome.Words.Place = file;
  }
  return outcome;
}

}  // namespace

Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui) {
  Steps steps;
  std::string file = film.Video;  // that the last step was about
  const auto take = [&](const std::string& next, const std::function<Outcome()>& operation) {
    file = steps.GoOn() ? next : file;
    return steps.Do(operation);
  };
  const std::size_t index = session.Work().Tracks.Count();
  const std::string name = FreeTrackName(session.Work(), film.Name, index);
  const std::string track = take(film.Video, [&] { return NewTrack(session, "Motion", name); });
  take(film.Video,
       [&] { return ImportFile(session, VideoPlayKey(index, 1), film.Video, ui, Consent::None); });
  for (const FilmFiles::Stream& audio : film.Audio) {
    const std::string stream = take(audio.File, [&] { return AddAudio(session, track); });
    take(audio.File,
         [&] { return ImportFile(session, stream + ".AudioPlay1", audio.File, ui, Consent::None); });
    take(audio.File, [&] { return SetAudio(session, stream, SetsWords<AudioStream>(audio)); });
  }
  for (const FilmFiles::Stream& subtitles : film.Subtitles) {
    const std::string stream = take(subtitles.File, [&] { return AddSubtitles(session, track); });
    take(subtitles.File, [&] { return ImportSubtitleList(session, stream, subtitles.File, ui); });
    take(subtitles.File, [&] { return SetSubtitles(session, stream, SetsWords<SubtitleStream>(subtitles)); });
  }
  if (!film.Chapters.empty()) {
    take(film.Chapters, [&] { return Analyse(session, track, ui, Consent::None); });
    take(film.Chapters, [&] { return ImportChapters(session, track, film.Chapters, ui); });
  }
  return steps.GoOn() ? Outcome::Done(track)
                      : RefusedOver(SystemPath(file, session.Work().SourceFolder()), steps.Refusal());
}

}  // namespace quorvelant
