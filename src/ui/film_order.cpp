#include "ui/film_order.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

bool Contains(const std::vector<std::string>& list, const std::string& file) {
  return std::ranges::find(list, file) != list.end();
}

// The files of a folder by their names, hidden ones left out; a file is itself.
std::vector<std::string> FilesAt(const std::string& path) {
  std::error_code failed;
  if (!fs::is_directory(path, failed)) {
    return {path};
  }
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(path, failed)) {
    if (entry.is_regular_file(failed) && !entry.path().filename().string().starts_with('.')) {
      files.push_back(entry.path().string());
    }
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace

void FilmOrder::Add(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    for (const std::string& file : FilesAt(path)) {
      std::erase(removed_, file);
      if (!Contains(files_, file)) {
        files_.push_back(file);
      }
    }
  }
  Sort();
}

void FilmOrder::RemoveFilm(std::size_t film) {
  const OrderedFilm gone = films_.at(film);
  RemoveFile(gone.Video);
  for (const auto* streams : {&gone.Audio, &gone.Subtitles}) {
    for (const OrderedStream& stream : *streams) {
      std::erase(files_, stream.File);
    }
  }
  std::erase(files_, gone.ChapterFile);
  Sort();
}

void FilmOrder::RemoveFile(const std::string& file) {
  std::erase(files_, file);
  removed_.push_back(file);
  Sort();
}

void FilmOrder::MoveFilm(std::size_t film, int by) {
  const auto other = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(film) + by);
  if (film >= films_.size() || other >= films_.size()) {
    return;
  }
  const auto one = std::ranges::find(files_, films_[film].Video);
  const auto two = std::ranges::find(files_, films_[other].Video);
  if (one != files_.end() && two != files_.end()) {
    std::iter_swap(one, two);
  }
  Sort();
}

void FilmOrder::SetName(std::size_t film, const std::string& name) {
  names_[films_.at(film).Video] = name;
  Sort();
}

void FilmOrder::SetLanguage(const std::string& file, const std::string& language) {
  languages_[file] = language;
  Sort();
}

void FilmOrder::Sort() {
  SortedFiles sorted = SortFilms(files_);
  FindFilesOf(sorted.Films);
  refusals_ = std::move(sorted.Refusals);
  films_.clear();
  const auto taken = [this](std::vector<OrderedStream> streams) {
    std::erase_if(streams, [this](const OrderedStream& stream) { return Contains(removed_, stream.File); });
    for (OrderedStream& stream : streams) {
      const auto language = languages_.find(stream.File);
      stream.Language = language == languages_.end() ? stream.Language : language->second;
    }
    return streams;
  };
  for (FilmFiles& film : sorted.Films) {
    const auto name = names_.find(film.Video);
    films_.push_back({.Name = name == names_.end() ? film.Name : name->second,
                      .Video = film.Video,
                      .Audio = taken(std::move(film.Audio)),
                      .Subtitles = taken(std::move(film.Subtitles)),
                      .ChapterFile = Contains(removed_, film.Chapters) ? std::string() : film.Chapters});
  }
}

std::vector<std::string> FilmOrder::SubtitleLanguages() const {
  std::vector<std::string> languages;
  for (const OrderedFilm& film : films_) {
    for (const OrderedStream& stream : film.Subtitles) {
      if (!stream.Language.empty() && !Contains(languages, stream.Language)) {
        languages.push_back(stream.Language);
      }
    }
  }
  return languages;
}

SubtitleLabel SubtitleLabelOf(std::size_t number, bool isWide, bool hasPanScan) {
  const std::string_view mode =
      isWide ? (hasPanScan ? "Wide/PS" : "Wide/Letter") : (hasPanScan ? "PanScan" : "Normal");
  return {fmt::format("Sub {} ({})", number, mode),
          fmt::format("Subtitle Track {} showing {} subtitles", number, mode)};
}

}  // namespace quorvelant
