#include "edit/film_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "edit/messages.h"
#include "model/cls_dvd.h"
#include "model/picture_file.h"

namespace quorvelant {

namespace {

enum class FileRole { Video, Audio, Subtitles, Chapters, Picture, SubtitleText };

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

FileRole RoleOf(const std::string& file) {
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
  const std::string rest = StemOf(file).substr(film.Name.size());
  switch (RoleOf(file)) {
    case FileRole::Audio:
      film.Audio.push_back({file, LanguageIn(rest)});
      break;
    case FileRole::Subtitles:
      film.Subtitles.push_back({file, LanguageIn(rest)});
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

}  // namespace

SortedFiles SortFilms(std::span<const std::string> files) {
  SortedFiles sorted;
  for (const std::string& file : files) {
    if (RoleOf(file) == FileRole::Video) {
      FilmFiles film;
      film.Video = file;
      film.Name = StemOf(file);
      sorted.Films.push_back(std::move(film));
    }
  }
  for (const std::string& file : files) {
    const FileRole role = RoleOf(file);
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

}  // namespace quorvelant
