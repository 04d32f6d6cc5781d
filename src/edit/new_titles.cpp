#include "edit/new_titles.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/remedies.h"
#include "base/random.h"
#include "base/text.h"
#include "edit/change.h"
#include "edit/drop.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/structure.h"
#include "edit/track_names.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// Goes on with operations until one is not done.
class Steps {
 public:
  // The key of what was done; empty, and nothing was called, after a refusal.
  template <class Operation>
  std::string Do(Operation operation) {
    if (refusal_.IsDone()) {
      Outcome outcome = operation();
      if (outcome.IsDone()) {
        return std::move(outcome.Key);
      }
      refusal_ = std::move(outcome);
    }
    return {};
  }
  [[nodiscard]] bool GoOn() const { return refusal_.IsDone(); }
  [[nodiscard]] const Outcome& Refusal() const { return refusal_; }

 private:
  Outcome refusal_ = Outcome::Done();
};

class TitleMaker {
 public:
  TitleMaker(EditSession& session, UserInterface& ui) : session_(session), ui_(ui) {}

  Outcome Add(const FilmFiles& film) {
    const std::size_t track = AddTrack(film);
    if (!steps_.GoOn()) {
      return steps_.Refusal();
    }
    file_ = film.Video;
    if (auto refusal = OtherStandard(film.Video, session_.Work().Tracks[track])) {
      return Outcome::Refused(std::move(*refusal));
    }
    const std::string title = steps_.Do([&] { return TitleFor(track); });
    steps_.Do([&] { return Drop(session_, {.Track = track, .Scene = {}}, PgcKey(title, 1)); });
    if (steps_.GoOn() && !last_.empty()) {
      GoOnWith(title);
    }
    last_ = title;
    return steps_.Refusal();
  }

  // The file that the last step was about.
  [[nodiscard]] const std::string& File() const { return file_; }

 private:
  std::size_t AddTrack(const FilmFiles& film) {
    const std::size_t index = session_.Work().Tracks.Count();
    const std::string name = FreeTrackName(session_.Work(), film.Name, index);
    const std::string track = steps_.Do([&] { return NewTrack(session_, "Motion", name); });
    About(film.Video);
    steps_.Do([&] { return ImportFile(session_, VideoPlayKey(index, 1), film.Video, ui_, Consent::None); });
    for (const FilmFiles::Stream& audio : film.Audio) {
      About(audio.File);
      const std::string stream = steps_.Do([&] { return AddAudio(session_, track); });
      steps_.Do([&] { return ImportFile(session_, stream + ".AudioPlay1", audio.File, ui_, Consent::None); });
      steps_.Do([&] { return SetAudio(session_, stream, SetsLanguage<AudioStream>(audio.Language)); });
    }
    for (const FilmFiles::Stream& subtitles : film.Subtitles) {
      About(subtitles.File);
      const std::string stream = steps_.Do([&] { return AddSubtitles(session_, track); });
      steps_.Do([&] { return ImportSubtitleList(session_, stream, subtitles.File, ui_); });
      steps_.Do(
          [&] { return SetSubtitles(session_, stream, SetsLanguage<SubtitleStream>(subtitles.Language)); });
    }
    if (!film.Chapters.empty()) {
      About(film.Chapters);
      steps_.Do([&] { return Analyse(session_, track, ui_, Consent::None); });
      steps_.Do([&] { return ImportChapters(session_, track, film.Chapters, ui_); });
    }
    return index;
  }

  void About(const std::string& file) {
    if (steps_.GoOn()) {
      file_ = file;
    }
  }

  // A disc has one standard: that of its first film.
  [[nodiscard]] std::optional<Message> OtherStandard(const std::string& file, const Track& track) const {
    const std::string& first = session_.Work().Tracks[0].Standard;
    if (EqualNoCase(track.Standard, first)) {
      return std::nullopt;
    }
    const VideoTarget target{.Ntsc = EqualNoCase(first, "NTSC"), .Aspect = track.Aspect};
    const std::string line = EncodeVideoLine(SystemPath(file, session_.Work().SourceFolder()), target);
    return MessageOf(message::FilmOfOtherStandard, file, file, track.Standard, first, line);
  }

  template <class Stream>
  static std::function<void(Stream&)> SetsLanguage(const std::string& language) {
    return [&language](Stream& stream) {
      stream.Language = language.empty() ? std::move(stream.Language) : language;
    };
  }

  // The first title of a new disc, one more in the set of the last, or that of a new set.
  Outcome TitleFor(std::size_t track) {
    if (last_.empty()) {
      return Outcome::Done("VTS1.TITLE1");
    }
    const std::string set = last_.substr(0, last_.find('.'));
    if (FitsInto(*LiveEntry(session_.Work(), set), session_.Work().Tracks[track])) {
      return NewTitle(session_, set, ProposedName(session_, set));
    }
    Outcome made = NewTitleSet(session_);
    made.Key = made.IsDone() ? TitleKey(made.Key, 1) : std::string();
    return made;
  }

  [[nodiscard]] bool FitsInto(const VTS_P& set, const Track& track) const {
    const auto cells = LiveCells(set, Domain::Title);
    return std::ranges::all_of(cells, [&](const Cell_P* cell) {
      const Track& other = session_.Work().Tracks[static_cast<std::size_t>(cell->SegmentUsed)];
      return other.Aspect == track.Aspect && other.Resolution == track.Resolution &&
             !CompareAudioStreams(other, track) && !CompareSubStreams(other, track);
    });
  }

  // The title before the new one comes to lead to it.
  void GoOnWith(const std::string& title) {
    const std::string& name = LiveTitle(session_.Work(), title)->TitleName;
    std::string command = "JumpVTS_TT " + name;
    if (TitleSetEntry(title) != TitleSetEntry(last_)) {
      const std::string chain = steps_.Do([&] {
        return NewPgc(session_, ManagerMenus, FreeName(session_, ElementKind::Pgc, "Play_" + name + "_", 1));
      });
      if (!steps_.GoOn()) {
        return;
      }
      Add(chain, &PGC_P::PreCommands, "Pre", "JumpTT " + name);
      command = "CallSS RSM=0,, " + LivePgc(session_.Work(), chain)->PGCName;
    }
    Add(PgcKey(last_, 1), &PGC_P::PostCommands, "Post", std::move(command));
  }

  void Add(const std::string& chain, CommandList PGC_P::*list, std::string_view word, std::string text) {
    steps_.Do([&] {
      return SetPgc(session_, chain, [&](PGC_P& pgc) {
        AddCommand(pgc.*list, word, text);
        return Outcome::Done();
      });
    });
  }

  static constexpr std::string_view ManagerMenus = "VMG1.LANGUAGE1";

  EditSession& session_;
  UserInterface& ui_;
  Steps steps_;
  std::string last_;  // key of the title before
  std::string file_;
};

}  // namespace

Outcome AddTitles(EditSession& session, std::span<const FilmFiles> films, UserInterface& ui) {
  Change change(session, "Add Titles");
  TitleMaker maker(session, ui);
  for (const FilmFiles& film : films) {
    Outcome outcome = maker.Add(film);
    if (outcome.Result == Outcome::Kind::Asks) {
      return Outcome::Refused(
          MessageOf(message::NobodyAsked, maker.File(), maker.File(), outcome.Words.Text));
    }
    if (!outcome.IsDone()) {
      if (!outcome.Words.Place.starts_with(maker.File())) {  // no key of what is not there now
        outcome.Words.Place = maker.File();
      }
      return outcome;
    }
  }
  return change.Commit();
}

}  // namespace quorvelant
