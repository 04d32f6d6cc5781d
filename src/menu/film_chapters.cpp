#include "menu/film_chapters.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "base/file_text.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "base/user_interface.h"
#include "edit/chapter_list.h"
#include "edit/messages.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "menu/messages.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t MostListBytes = 1'000'000;

std::optional<int> NumberIn(std::string_view piece, int end) {
  int number = 0;
  const char* const last = piece.data() + piece.size();
  const auto read = std::from_chars(piece.data(), last, number);
  const bool whole = read.ec == std::errc() && read.ptr == last && !piece.empty() && piece.size() <= 2;
  return whole && number >= 0 && number < end ? std::optional(number) : std::nullopt;
}

// Of "HH:MM:SS" or "HH:MM:SS:FF", and nothing else.
std::optional<std::int64_t> FramesOf(std::string_view time, int rate) {
  const std::string colons = Replace(time, ";", ":");
  const auto pieces = Split(colons, ":");
  if (pieces.size() < 3 || pieces.size() > 4) {
    return std::nullopt;
  }
  const auto hours = NumberIn(pieces[0], 100);
  const auto minutes = NumberIn(pieces[1], 60);
  const auto seconds = NumberIn(pieces[2], 60);
  const auto frames = NumberIn(pieces.size() == 4 ? pieces[3] : "0", rate);
  if (!hours || !minutes || !seconds || !frames) {
    return std::nullopt;
  }
  return (std::int64_t{*hours} * 3600 + std::int64_t{*minutes} * 60 + *seconds) * rate + *frames;
}

Findings ReadList(OrderedFilm& film) {
  const auto text = ReadWhole(SystemPath(film.ChapterFile), MostListBytes);
  if (!text) {
    return {MessageOf(message::ChapterListUnreadable, film.ChapterFile, film.ChapterFile)};
  }
  for (ChapterLine& line : ParseChapterList(*text)) {
    film.Chapters.push_back({.Time = std::move(line.Timecode),
                             .Name = {},
                             .Place = fmt::format("{}:{}", film.ChapterFile, line.Number)});
  }
  return film.Chapters.empty()
             ? Findings{MessageOf(message::ChapterListEmpty, film.ChapterFile, film.ChapterFile)}
             : Findings{};
}

class ChapterMaker {
 public:
  ChapterMaker(EditSession& session, std::size_t track, UserInterface& ui, std::vector<std::string>& names)
      : session_(session), index_(track), key_(TrackKey(track)), ui_(ui), names_(names) {}

  Outcome Add(const OrderedFilm& film) {
    Outcome analysed = Analyse(session_, key_, ui_, Consent::None);
    if (!analysed.IsDone()) {
      return analysed;
    }
    names_.assign(1, {});
    Outcome added = film.ChapterSeconds > 0 ? AddSteps(film) : AddList(film);
    if (!added.IsDone() || film.ChapterNames.empty()) {
      return added;
    }
    if (film.ChapterNames.size() > names_.size()) {
      return Outcome::Refused(MessageOf(message::ChapterNamesExceed, film.Place, film.ChapterNames.size(),
                                        film.Video, names_.size()));
    }
    std::ranges::copy(film.ChapterNames, names_.begin());
    return added;
  }

 private:
  [[nodiscard]] const Track& Film() const { return session_.Work().Tracks[index_]; }
  [[nodiscard]] int Rate() const { return FramesPerSecond(Film().Standard); }

  Outcome AddList(const OrderedFilm& film) {
    std::vector<std::pair<std::int64_t, const OrderedChapter*>> chapters;
    for (const OrderedChapter& chapter : film.Chapters) {
      chapters.emplace_back(FramesOf(chapter.Time, Rate()).value_or(0), &chapter);
    }
    std::ranges::stable_sort(chapters, {}, &std::pair<std::int64_t, const OrderedChapter*>::first);
    for (const auto& [frame, chapter] : chapters) {
      if (frame == 0) {
        names_.front() = chapter->Name;
        continue;
      }
      Outcome made = NewScene(session_, key_, FramesToTimecode(frame, Rate()));
      if (made.IsDone()) {
        names_.push_back(chapter->Name);
      } else if (IsTaken(made)) {
        ui_.Tell(MessageOf(message::ChapterFallsOnOther, chapter->Place, chapter->Time, film.Video));
      } else {
        made.Words.Text = fmt::format("{}: {}", chapter->Time, made.Words.Text);
        made.Words.Place = chapter->Place;
        return made;
      }
    }
    return Outcome::Done(key_);
  }

  Outcome AddSteps(const OrderedFilm& film) {
    const std::int64_t step = std::int64_t{film.ChapterSeconds} * Rate();
    const std::int64_t length = Film().VideoFrames;
    for (std::int64_t frame = step; frame < length; frame += step) {
      Outcome made = NewScene(session_, key_, FramesToTimecode(frame, Rate()));
      if (made.IsDone()) {
        names_.emplace_back();
      } else if (made.Words.Is(message::TooManyScenes)) {
        ui_.Tell(MessageOf(message::ChaptersEndEarly, film.Place.empty() ? film.Video : film.Place,
                           film.Video, FramesToTimecode(frame, Rate())));
        break;
      } else if (!IsTaken(made) && !made.Words.Is(message::SceneTimeNearEnd)) {
        return made;
      }
    }
    return Outcome::Done(key_);
  }

  static bool IsTaken(const Outcome& made) {
    return made.Words.Is(message::SceneTimeTaken) || made.Words.Is(message::CorrectedSceneTimeTaken);
  }

  EditSession& session_;
  std::size_t index_;
  std::string key_;
  UserInterface& ui_;
  std::vector<std::string>& names_;
};

}  // namespace

Findings ReadChapters(OrderedFilm& film, bool isNtsc) {
  Findings findings = film.ChapterFile.empty() ? Findings{} : ReadList(film);
  std::size_t count = 1;
  for (const OrderedChapter& chapter : film.Chapters) {
    const auto frames = FramesOf(chapter.Time, FramesPerSecond(isNtsc ? "NTSC" : "PAL"));
    if (!frames) {
      findings.push_back(MessageOf(message::ChapterNoTime, chapter.Place, chapter.Time));
    }
    count += frames.value_or(0) > 0 ? 1U : 0U;
  }
  if (count > MostScenes) {
    findings.push_back(MessageOf(message::ChaptersExceed, film.Place, film.Video, count, MostScenes));
  }
  return findings;
}

Outcome AddChapters(EditSession& session, std::size_t track, const OrderedFilm& film, UserInterface& ui,
                    std::vector<std::string>& names) {
  names.assign(1, {});
  if (film.Chapters.empty() && film.ChapterSeconds == 0) {
    return Outcome::Done(TrackKey(track));
  }
  return ChapterMaker(session, track, ui, names).Add(film);
}

}  // namespace quorvelant
