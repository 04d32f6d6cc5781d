#include "edit/film_tracks.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "base/text.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

std::string FreeTrackName(const Project& project, const std::string& stem) {
  const auto taken = [&project](const std::string& name) {
    return std::ranges::any_of(Live(project.Tracks),
                               [&name](const Track* track) { return EqualNoCase(track->TrackName, name); });
  };
  std::string name = stem;
  for (std::size_t number = 2; taken(name); ++number) {
    name = stem + "_" + std::to_string(number);
  }
  return name;
}

template <class Stream>
std::function<void(Stream&)> SetsWords(const FilmFiles::Stream& words) {
  return [&words](Stream& stream) {
    stream.Language = words.Language.empty() ? std::move(stream.Language) : words.Language;
    stream.Extension = words.Extension.empty() ? std::move(stream.Extension) : words.Extension;
  };
}

}  // namespace

Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui) {
  Steps steps;
  const std::string name = FreeTrackName(session.Work(), film.Name);
  const std::string track = steps.Do([&] { return NewTrack(session, "Motion", name); });
  const std::size_t index = session.Work().Tracks.Count() - 1;
  steps.Do([&] { return ImportFile(session, VideoPlayKey(index, 1), film.Video, ui, Consent::None); });
  for (const FilmFiles::Stream& audio : film.Audio) {
    const std::string stream = steps.Do([&] { return AddAudio(session, track); });
    steps.Do([&] { return ImportFile(session, stream + ".AudioPlay1", audio.File, ui, Consent::None); });
    steps.Do([&] { return SetAudio(session, stream, SetsWords<AudioStream>(audio)); });
  }
  for (const FilmFiles::Stream& subtitles : film.Subtitles) {
    const std::string stream = steps.Do([&] { return AddSubtitles(session, track); });
    steps.Do([&] { return ImportSubtitleList(session, stream, subtitles.File, ui); });
    steps.Do([&] { return SetSubtitles(session, stream, SetsWords<SubtitleStream>(subtitles)); });
  }
  if (!film.Chapters.empty()) {
    steps.Do([&] { return Analyse(session, track, ui); });
    steps.Do([&] { return ImportChapters(session, track, film.Chapters, ui); });
  }
  return steps.GoOn() ? Outcome::Done(track) : steps.Refusal();
}

}  // namespace quorvelant
