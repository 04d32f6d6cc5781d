#include "edit/film_tracks.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "base/random.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "edit/track_names.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

template <class Stream>
std::function<void(Stream&)> SetsWords(const FilmFiles::Stream& words) {
  return [&words](Stream& stream) {
    stream.Language = words.Language.empty() ? std::move(stream.Language) : words.Language;
    stream.Extension = words.Extension.empty() ? std::move(stream.Extension) : words.Extension;
  };
}

// A refusal names the file that it is about, not the key of a track that is not there any more.
Outcome Over(const std::string& file, Outcome outcome) {
  if (!outcome.IsDone() && outcome.Words.Place.find(file) == std::string::npos) {
    outcome.Words.Place = file;
  }
  return outcome;
}

// Files one after another; a refusal is about the one that was taken last.
class FileSteps {
 public:
  FileSteps(EditSession& session, std::string_view words) : session_(session), change_(session, words) {}

  std::string Take(const std::string& file, const std::function<Outcome()>& operation) {
    file_ = steps_.GoOn() ? file : file_;
    return steps_.Do(operation);
  }
  Outcome End(const std::string& key) {
    return steps_.GoOn() ? change_.Commit(key)
                         : Over(SystemPath(file_, session_.Work().SourceFolder()), steps_.Refusal());
  }

 private:
  const EditSession& session_;
  Change change_;
  Steps steps_;
  std::string file_;
};

}  // namespace

Outcome AddFilmPlay(EditSession& session, std::size_t track, const std::string& file, UserInterface& ui,
                    Consent consent) {
  const auto plays = LiveWithIndex(session.Work().Tracks[track].VideoPlays);
  const bool isFree = !plays.empty() && plays.back().second.File.empty();
  FileSteps steps(session, "Import Video");
  const std::string play = steps.Take(file, [&] {
    return isFree ? Outcome::Done(VideoPlayKey(track, plays.back().first + 1))
                  : AddPlay(session, VideoListKey(track));
  });
  steps.Take(file, [&] { return ImportFile(session, play, file, ui, consent); });
  if (plays.size() > 1 || !isFree) {
    steps.Take(file, [&] { return Analyse(session, TrackKey(track), ui, consent); });
  }
  return steps.End(play);
}

Outcome AddFilmAudio(EditSession& session, const std::string& track, const FilmFiles::Stream& audio,
                     UserInterface& ui, Consent consent) {
  FileSteps steps(session, "Add Audio");
  const std::string stream = steps.Take(audio.File, [&] { return AddAudio(session, track); });
  steps.Take(audio.File,
             [&] { return ImportFile(session, stream + ".AudioPlay1", audio.File, ui, consent); });
  steps.Take(audio.File, [&] { return SetAudio(session, stream, SetsWords<AudioStream>(audio)); });
  return steps.End(stream);
}

Outcome AddFilmSubtitles(EditSession& session, const std::string& track, const FilmFiles::Stream& subtitles,
                         UserInterface& ui) {
  FileSteps steps(session, "Add Subtitles");
  const std::string stream = steps.Take(subtitles.File, [&] { return AddSubtitles(session, track); });
  steps.Take(subtitles.File, [&] { return ImportSubtitleList(session, stream, subtitles.File, ui); });
  steps.Take(subtitles.File,
             [&] { return SetSubtitles(session, stream, SetsWords<SubtitleStream>(subtitles)); });
  return steps.End(stream);
}

Outcome AddFilmChapters(EditSession& session, const std::string& track, const std::string& list,
                        UserInterface& ui, Consent consent) {
  FileSteps steps(session, "Import Chapters");
  steps.Take(list, [&] { return Analyse(session, track, ui, consent); });
  steps.Take(list, [&] { return ImportChapters(session, track, list, ui); });
  return steps.End(track);
}

Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui, Consent consent) {
  const std::size_t index = session.Work().Tracks.Count();
  const std::string name = FreeTrackName(session.Work(), film.Name, index);
  FileSteps steps(session, "Import Film");
  const std::string track = steps.Take(film.Video, [&] { return NewTrack(session, "Motion", name); });
  steps.Take(film.Video,
             [&] { return ImportFile(session, VideoPlayKey(index, 1), film.Video, ui, consent); });
  for (const FilmFiles::Stream& audio : film.Audio) {
    steps.Take(audio.File, [&] { return AddFilmAudio(session, track, audio, ui, consent); });
  }
  for (const FilmFiles::Stream& subtitles : film.Subtitles) {
    steps.Take(subtitles.File, [&] { return AddFilmSubtitles(session, track, subtitles, ui); });
  }
  if (!film.Chapters.empty()) {
    steps.Take(film.Chapters, [&] { return AddFilmChapters(session, track, film.Chapters, ui, consent); });
  }
  return steps.End(track);
}

Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui) {
  Outcome outcome = AddFilmTrack(session, film, ui, Consent::None);
  if (outcome.Result != Outcome::Kind::Asks) {
    return outcome;
  }
  const std::string& file = outcome.Words.Place;
  return Outcome::Refused(MessageOf(message::NobodyAsked, file, file, outcome.Words.Text));
}

}  // namespace quorvelant
