#include "edit/film_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "edit/messages.h"
#include "edit/source_paths.h"
#include "model/cls_dvd.h"
#include "model/picture_file.h"

namespace quorvelant {

namespace {

// Sound that no disc carries is told of as sound.
constexpr std::array<std::string_view, 10> OfSound{".ac3", ".wav", ".dts", ".mp2",  ".mp3",
                                                   ".aac", ".m4a", ".ogg", ".opus", ".flac"};
constexpr std::array<std::string_view, 5> OfSubtitleText{".srt", ".ass", ".ssa", ".vtt", ".smi"};

std::string LowerExtension(const std::string& file) {
  return Lower(std::filesystem::path(SystemPath(file)).extension().string());
}

std::string StemOf(const std::string& file) {
  return std::filesystem::path(SystemPath(file)).stem().string();
}

// The last word after the video's stem that is a language.
std::string LanguageIn(std::string_view rest) {
  std::string language;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of("._- "), rest.size());
    const auto row = CLsDVD::LanguageCalled(rest.substr(0, end));
    if (end > 0 && row && *row > 0) {
      language = CLsDVD::LanguageArray()[*row];
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return language;
}

FilmFiles* FilmOf(std::vector<FilmFiles>& films, const std::string& stem) {
  FilmFiles* found = nullptr;
  for (FilmFiles& film : films) {
    if (stem.starts_with(film.Name) && (found == nullptr || film.Name.size() > found->Name.size())) {
      found = &film;
    }
  }
  return found;
}

void AddTo(FilmFiles& film, const std::string& file, SortedFiles& sorted) {
  switch (RoleOfFile(file)) {
    case FileRole::Audio:
      film.Audio.push_back({file, LanguageOfFile(file, film.Video)});
      break;
    case FileRole::Subtitles:
      film.Subtitles.push_back({file, LanguageOfFile(file, film.Video)});
      break;
    default:
      if (film.Chapters.empty()) {
        film.Chapters = file;
      } else {
        sorted.Refusals.push_back(
            MessageOf(message::SecondChapterList, file, file, film.Video, film.Chapters));
      }
      break;
  }
}

FilmFiles FilmWith(const std::string& video) {
  FilmFiles film;
  film.Video = video;
  film.Name = StemOf(video);
  return film;
}

bool IsOf(const FilmFiles& film, const std::string& file) {
  const auto names = [&file](const FilmFiles::Stream& stream) { return stream.File == file; };
  return film.Chapters == file || std::ranges::any_of(film.Audio, names) ||
         std::ranges::any_of(film.Subtitles, names);
}

// What lies beside a file, in the order of names, as the file's own name has the folder.
std::vector<std::string> FilesBeside(const std::string& file) {
  const std::filesystem::path folder = std::filesystem::path(SystemPath(file)).parent_path();
  std::vector<std::string> files;
  std::error_code failed;
  std::filesystem::directory_iterator at(folder.empty() ? "." : folder, failed);
  for (; !failed && at != std::filesystem::directory_iterator(); at.increment(failed)) {
    files.push_back((folder / at->path().filename()).string());
  }
  std::ranges::sort(files);
  return files;
}

// "film.ac3" and "film.de.ac3" of "film.m2v", but not "filmset.ac3".
bool HasNameOf(const FilmFiles& film, const std::string& file) {
  const std::string stem = StemOf(file);
  if (stem == film.Name || RoleOfFile(file) == FileRole::Chapters) {
    return stem == film.Name;
  }
  const bool goesOn = stem.starts_with(film.Name) && Contains("._-", stem.substr(film.Name.size(), 1));
  return goesOn && !LanguageOfFile(file, film.Video).empty();
}

}  // namespace

FileRole RoleOfFile(const std::string& file) {
  const std::string extension = LowerExtension(file);
  if (std::ranges::find(OfSound, extension) != OfSound.end()) {
    return FileRole::Audio;
  }
  if (std::ranges::find(OfSubtitleText, extension) != OfSubtitleText.end()) {
    return FileRole::SubtitleText;
  }
  if (extension == ".sst") {
    return FileRole::Subtitles;
  }
  if (extension == ".txt") {
    return FileRole::Chapters;
  }
  return IsPicture(file) ? FileRole::Picture : FileRole::Video;
}

std::string LanguageOfFile(const std::string& file, const std::string& video) {
  const std::string stem = StemOf(file);
  const std::string film = StemOf(video);
  if (stem.starts_with(film)) {
    return LanguageIn(std::string_view(stem).substr(film.size()));
  }
  const std::size_t last = stem.find_last_of("._- ");
  return last == std::string::npos ? std::string() : LanguageIn(std::string_view(stem).substr(last));
}

SortedFiles FollowFilms(std::span<const std::string> files) {
  SortedFiles sorted;
  for (const std::string& file : files) {
    const FileRole role = RoleOfFile(file);
    if (role == FileRole::Video) {
      sorted.Films.push_back(FilmWith(file));
    } else if (role == FileRole::Picture) {
      sorted.Refusals.push_back(MessageOf(message::PictureIsNoFilm, file, file));
    } else if (role == FileRole::SubtitleText) {
      sorted.Refusals.push_back(MessageOf(message::TextIsNoSubtitles, file, file));
    } else if (sorted.Films.empty()) {
      sorted.Refusals.push_back(MessageOf(message::FileBeforeFilm, file, file));
    } else {
      AddTo(sorted.Films.back(), file, sorted);
    }
  }
  return sorted;
}

void FindFilesOf(std::vector<FilmFiles>& films) {
  SortedFiles sorted;
  for (FilmFiles& film : films) {
    for (const std::string& file : FilesBeside(film.Video)) {
      const FileRole role = RoleOfFile(file);
      const bool isUsable =
          role != FileRole::Video && role != FileRole::Picture && role != FileRole::SubtitleText;
      if (isUsable && !IsOf(film, file) && HasNameOf(film, file) &&
          (role != FileRole::Chapters || film.Chapters.empty())) {
        AddTo(film, file, sorted);
      }
    }
  }
}

SortedFiles SortFilms(std::span<const std::string> files) {
  SortedFiles sorted;
  for (const std::string& file : files) {
    if (RoleOfFile(file) == FileRole::Video) {
      sorted.Films.push_back(FilmWith(file));
    }
  }
  for (const std::string& file : files) {
    const FileRole role = RoleOfFile(file);
    if (role == FileRole::Picture) {
      sorted.Refusals.push_back(MessageOf(message::PictureIsNoFilm, file, file));
    } else if (role == FileRole::SubtitleText) {
      sorted.Refusals.push_back(MessageOf(message::TextIsNoSubtitles, file, file));
    } else if (role != FileRole::Video) {
      FilmFiles* film = FilmOf(sorted.Films, StemOf(file));
      if (film == nullptr) {
        sorted.Refusals.push_back(MessageOf(message::FileOfNoFilm, file, file));
      } else {
        AddTo(*film, file, sorted);
      }
    }
  }
  return sorted;
}

FilmFiles AsScriptHolds(const std::string& script, FilmFiles film) {
  film.Video = PathFrom(script, film.Video);
  film.Chapters = PathFrom(script, film.Chapters);
  for (auto* streams : {&film.Audio, &film.Subtitles}) {
    for (FilmFiles::Stream& stream : *streams) {
      stream.File = PathFrom(script, stream.File);
    }
  }
  return film;
}

}  // namespace quorvelant
