#include "ui/brought_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <system_error>

#include "base/random.h"
#include "base/text.h"
#include "edit/change.h"
#include "edit/film_tracks.h"
#include "edit/live_sources.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "edit/track_names.h"
#include "model/keys.h"
#include "model/walk.h"
#include "ui/messages.h"

namespace quorvelant {

namespace {

using Node = SourceKey::Node;
using Held = std::function<std::string(const std::string&)>;

std::filesystem::path PathOf(const std::string& file) {
  return SystemPath(file);
}

std::string ExtensionOf(const std::string& file) {
  return Lower(PathOf(file).extension().string());
}

bool IsProjectScript(const std::string& file) {
  const std::string extension = ExtensionOf(file);
  return extension == ".qvp" || extension == ".scp";
}

// Of a folder, what says by its name that it is of a kind that can be sound or pictures of a film: other
// files were not meant.
bool IsOfFilms(const std::string& file) {
  constexpr std::array<std::string_view, 18> Videos{".m2v", ".mpv", ".m1v",  ".mpg", ".mpeg", ".vob",
                                                    ".ts",  ".mts", ".m2ts", ".mp4", ".m4v",  ".mkv",
                                                    ".avi", ".mov", ".wmv",  ".ogv", ".flv",  ".webm"};
  return RoleOfFile(file) != FileRole::Video || std::ranges::find(Videos, ExtensionOf(file)) != Videos.end();
}

bool HasScriptBeside(const std::vector<std::string>& files, const std::string& picture) {
  const auto folder = PathOf(picture).parent_path();
  return std::ranges::any_of(files, [&folder](const std::string& file) {
    return RoleOfFile(file) == FileRole::Subtitles && PathOf(file).parent_path() == folder;
  });
}

bool HasVideoOfName(const std::vector<std::string>& files, const std::string& list) {
  const std::string stem = PathOf(list).stem().string();
  return std::ranges::any_of(files, [&stem](const std::string& file) {
    return RoleOfFile(file) == FileRole::Video && stem.starts_with(PathOf(file).stem().string());
  });
}

// Every regular file below a folder whose name does not begin with a dot.
std::vector<std::string> AllBelow(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code failed;
  std::filesystem::recursive_directory_iterator at(
      PathOf(folder), std::filesystem::directory_options::skip_permission_denied, failed);
  for (; !failed && at != std::filesystem::recursive_directory_iterator(); at.increment(failed)) {
    const bool isHidden = at->path().filename().string().starts_with('.');
    std::error_code unknown;
    if (at->is_directory(unknown)) {
      if (isHidden) {
        at.disable_recursion_pending();
      }
    } else if (!isHidden && at->is_regular_file(unknown)) {
      files.push_back(at->path().string());
    }
  }
  std::ranges::sort(files);
  return files;
}

void AppendFolder(const std::string& folder, std::vector<std::string>& files, std::vector<Message>& told) {
  const std::vector<std::string> all = AllBelow(folder);
  std::vector<std::string> films;
  std::vector<std::string> passed;
  std::ranges::partition_copy(all, std::back_inserter(films), std::back_inserter(passed), IsOfFilms);
  const auto isMeant = [&films](const std::string& file) {
    switch (RoleOfFile(file)) {
      case FileRole::Picture:
        return !HasScriptBeside(films, file);  // otherwise it is a subtitle's
      case FileRole::Chapters:
        return HasVideoOfName(films, file);
      default:
        return true;
    }
  };
  const std::size_t before = files.size();
  std::ranges::copy_if(films, std::back_inserter(files), isMeant);
  if (files.size() == before) {
    told.push_back(MessageOf(message::FolderWithoutFilms, folder, folder));
  } else if (!passed.empty()) {
    told.push_back(MessageOf(message::FolderFilesPassedOver, folder, passed.size(), folder,
                             PathOf(passed.front()).filename().string()));
  }
}

// --- what becomes of files ---

Outcome TakePicture(EditSession& session, std::string_view type, const std::string& name,
                    const std::string& file, UserInterface& ui, Consent consent) {
  Change change(session, "Import Picture");
  Steps steps;
  const std::size_t index = session.Work().Tracks.Count();
  const std::string track =
      steps.Do([&] { return NewTrack(session, type, FreeTrackName(session.Work(), name, index)); });
  steps.Do([&] { return ImportFile(session, VideoPlayKey(index, 1), file, ui, consent); });
  return steps.GoOn() ? change.Commit(track) : steps.Refusal();
}

// Sorts what was brought to the steps that take it.
class BroughtSorter {
 public:
  BroughtSorter(const Project& project, const BringTarget& target, const Held& asHeld)
      : project_(project), target_(target), key_(ParseSourceKey(target.Key)), asHeld_(asHeld) {
    if (key_ && !LiveSource(project, target.Key, key_->Kind)) {
      key_.reset();
    }
  }

  BroughtFiles Sort(const std::vector<std::string>& files) {
    std::vector<std::string> films;
    std::vector<std::string> ofTarget;
    const std::string onTarget = OnTarget(files);
    const bool isFilmOfTarget = !onTarget.empty() && RoleOfFile(onTarget) == FileRole::Video;
    for (const std::string& file : files) {
      if (IsProjectScript(file)) {
        sorted_.Projects.push_back(file);
      } else if (RoleOfFile(file) == FileRole::Picture && file != onTarget) {
        AddPicture(file);
      } else if (file != onTarget) {
        const bool isItsStream = IsStream(file) && (isFilmOfTarget || IsForTarget(files, file));
        (isItsStream ? ofTarget : films).push_back(file);
      }
    }
    AddFilms(films);
    for (const std::string& file : ofTarget) {
      AddTo(key_->Track, file, LanguageOfFile(file, NameOfTrack(key_->Track, onTarget)));
    }
    return std::move(sorted_);
  }

 private:
  [[nodiscard]] const Track& TrackAt(std::size_t index) const { return project_.Tracks[index]; }

  // What the names of a track's streams begin with.
  [[nodiscard]] std::string NameOfTrack(std::size_t index, const std::string& video = {}) const {
    const auto videos = VideosOf(project_, index);
    return !video.empty() ? video : videos.empty() ? TrackAt(index).TrackName : videos.front();
  }

  static bool IsStream(const std::string& file) {
    const FileRole role = RoleOfFile(file);
    return role == FileRole::Audio || role == FileRole::Subtitles || role == FileRole::Chapters;
  }

  // The one file that goes onto the play or stream that is the target: the only video or picture, or the only
  // file. Empty where none does.
  std::string OnTarget(const std::vector<std::string>& files) {
    std::vector<std::string> able;
    std::ranges::copy_if(files, std::back_inserter(able), [&files](const std::string& file) {
      return !IsProjectScript(file) && (files.size() == 1 || RoleOfFile(file) == FileRole::Video);
    });
    return able.size() == 1 && PutOnTarget(able.front()) ? able.front() : std::string();
  }

  void Add(std::function<Outcome(EditSession&, UserInterface&, Consent)> take) {
    sorted_.Steps.push_back({std::move(take)});
  }

  void NeedIndexes(std::size_t track) {
    const auto videos = VideosOf(project_, track);
    sorted_.Videos.insert(sorted_.Videos.end(), videos.begin(), videos.end());
  }

  void AddPicture(const std::string& file) {
    const std::string held = asHeld_(file);
    if (key_ && TrackAt(key_->Track).TrackType == "SlideShow") {
      Add([track = key_->Track, held](EditSession& session, UserInterface& ui, Consent consent) {
        return AddFilmPlay(session, track, held, ui, consent);
      });
    } else {
      Add([name = PathOf(file).stem().string(), held](EditSession& session, UserInterface& ui,
                                                      Consent consent) {
        return TakePicture(session, "Still", name, held, ui, consent);
      });
    }
  }

  // Onto the play or stream that is the target, or the one play of a track that is still empty.
  bool PutOnTarget(const std::string& file) {
    const FileRole role = RoleOfFile(file);
    const bool isPicture = role == FileRole::Video || role == FileRole::Picture;
    if (!key_) {
      return false;
    }
    const std::string play = isPicture ? VideoPlayFor() : role == FileRole::Audio ? AudioPlayFor() : "";
    const std::string held = asHeld_(file);
    if (!play.empty()) {
      if (role == FileRole::Video) {
        sorted_.Videos.push_back(file);
      }
      Add([play, held](EditSession& session, UserInterface& ui, Consent consent) {
        return ImportFile(session, play, held, ui, consent);
      });
      return true;
    }
    if (role == FileRole::Subtitles && key_->Kind == Node::SubStream) {
      Add([stream = target_.Key, held](EditSession& session, UserInterface& ui, Consent) {
        return ImportSubtitleList(session, stream, held, ui);
      });
      return true;
    }
    return false;
  }

  [[nodiscard]] std::string VideoPlayFor() const {
    if (key_->Kind == Node::VideoPlay) {
      return target_.Key;
    }
    const auto plays = LiveWithIndex(TrackAt(key_->Track).VideoPlays);
    const bool isEmpty = plays.size() == 1 && plays.front().second.File.empty();
    return isEmpty ? VideoPlayKey(key_->Track, plays.front().first + 1) : std::string();
  }

  [[nodiscard]] std::string AudioPlayFor() const {
    if (key_->Kind == Node::AudioPlay) {
      return target_.Key;
    }
    if (key_->Kind != Node::AudioStream) {
      return {};
    }
    const auto plays = LiveWithIndex(TrackAt(key_->Track).AudioStreams[key_->Number - 1].AudioPlays);
    const bool isEmpty = !plays.empty() && plays.back().second.File.empty();
    return isEmpty ? AudioPlayKey(key_->Track, key_->Number, plays.back().first + 1) : std::string();
  }

  [[nodiscard]] bool IsForTarget(const std::vector<std::string>& files, const std::string& file) const {
    return key_ && !HasVideoOfName(files, file) && (target_.IsMeant || !TrackOfName(file));
  }

  [[nodiscard]] std::optional<std::size_t> TrackOfName(const std::string& file) const {
    const std::string stem = PathOf(file).stem().string();
    std::optional<std::size_t> best;
    std::size_t length = 0;
    for (const auto& [index, track] : LiveWithIndex(project_.Tracks)) {
      for (const std::string& video : VideosOf(project_, index)) {
        const std::string name = PathOf(video).stem().string();
        if (stem.starts_with(name) && name.size() > length) {
          best = index;
          length = name.size();
        }
      }
    }
    return best;
  }

  void AddFilms(const std::vector<std::string>& files) {
    std::vector<std::string> own;
    for (const std::string& file : files) {
      const bool isAlone = IsStream(file) && !HasVideoOfName(files, file);
      const auto track = isAlone ? TrackOfName(file) : std::nullopt;
      if (track) {
        AddTo(*track, file, LanguageOfFile(file, NameOfTrack(*track)));
      } else if (isAlone) {
        sorted_.Told.push_back(MessageOf(message::FileOfNoTrack, file, file));
      } else {
        own.push_back(file);
      }
    }
    SortedFiles films = SortFilms(own);
    std::ranges::move(films.Refusals, std::back_inserter(sorted_.Told));
    for (const FilmFiles& film : films.Films) {
      AddFilm(film);
    }
  }

  // Each file in a step of its own: one that cannot be taken leaves the film without it.
  void AddFilm(const FilmFiles& film) {
    const auto track = std::make_shared<std::string>();  // once it is there
    sorted_.Videos.push_back(film.Video);
    FilmFiles video;
    video.Video = asHeld_(film.Video);
    video.Name = film.Name;
    Add([video, track](EditSession& session, UserInterface& ui, Consent consent) {
      Outcome outcome = AddFilmTrack(session, video, ui, consent);
      *track = outcome.Key;
      return outcome;
    });
    for (const FilmFiles::Stream& stream : film.Audio) {
      AddStream(track, stream, &AddFilmAudio);
    }
    for (const FilmFiles::Stream& stream : film.Subtitles) {
      AddStream(track, stream, &TakeSubtitles);
    }
    if (!film.Chapters.empty()) {
      AddStream(track, {.File = film.Chapters, .Language = {}}, &TakeChapters);
    }
  }

  using StreamTaker = Outcome (*)(EditSession&, const std::string& track, const FilmFiles::Stream&,
                                  UserInterface&, Consent);
  static Outcome TakeSubtitles(EditSession& session, const std::string& track,
                               const FilmFiles::Stream& stream, UserInterface& ui, Consent /*consent*/) {
    return AddFilmSubtitles(session, track, stream, ui);
  }
  static Outcome TakeChapters(EditSession& session, const std::string& track, const FilmFiles::Stream& stream,
                              UserInterface& ui, Consent consent) {
    return AddFilmChapters(session, track, stream.File, ui, consent);
  }

  // Nothing is left to do with a stream whose track did not come.
  void AddStream(const std::shared_ptr<std::string>& track, FilmFiles::Stream stream, StreamTaker take) {
    stream.File = asHeld_(stream.File);
    Add([track, stream, take](EditSession& session, UserInterface& ui, Consent consent) {
      return track->empty() ? Outcome::Done() : take(session, *track, stream, ui, consent);
    });
  }

  void AddTo(std::size_t index, const std::string& file, std::string language) {
    const auto track = std::make_shared<std::string>(TrackKey(index));
    const FilmFiles::Stream stream{.File = file, .Language = std::move(language)};
    switch (RoleOfFile(file)) {
      case FileRole::Audio:
        AddStream(track, stream, &AddFilmAudio);
        break;
      case FileRole::Subtitles:
        AddStream(track, stream, &TakeSubtitles);
        break;
      default:
        NeedIndexes(index);
        AddStream(track, stream, &TakeChapters);
        break;
    }
  }

  const Project& project_;
  const BringTarget& target_;
  std::optional<SourceKey> key_;
  const Held& asHeld_;
  BroughtFiles sorted_;
};

}  // namespace

std::vector<std::string> FilesBelow(const std::vector<std::string>& paths, std::vector<Message>& told) {
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    std::error_code unknown;
    if (std::filesystem::is_directory(PathOf(path), unknown)) {
      AppendFolder(path, files, told);
    } else {
      files.push_back(path);
    }
  }
  return files;
}

BroughtFiles SortBrought(const Project& project, const std::vector<std::string>& files,
                         const BringTarget& target, const Held& asHeld) {
  return BroughtSorter(project, target, asHeld).Sort(files);
}

std::vector<std::string> VideosOf(const Project& project, std::size_t track) {
  std::vector<std::string> videos;
  for (const VideoPlay* play : Live(project.Tracks[track].VideoPlays)) {
    if (!play->File.empty()) {
      videos.push_back(SystemPath(play->File, project.SourceFolder()));
    }
  }
  return videos;
}

}  // namespace quorvelant
