#include "ui/film_sorting.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <utility>

namespace quorvelant {

namespace {

std::string FolderOf(const std::string& path) {
  return std::filesystem::path(path).parent_path().string();
}

// The files to be sorted together: films of two folders may be named alike, and what lies beside one of them
// is its own.
std::vector<std::vector<std::string>> GroupsOf(const std::vector<std::string>& videos,
                                               const std::vector<std::string>& files) {
  std::map<std::string, std::vector<std::string>> byFolder;
  for (const std::string& video : videos) {
    byFolder[FolderOf(video)].push_back(video);
  }
  std::vector<std::string> elsewhere = videos;
  for (const std::string& file : files) {
    const auto folder = byFolder.find(FolderOf(file));
    if (RoleOfFile(file) != FileRole::Video) {
      (folder == byFolder.end() ? elsewhere : folder->second).push_back(file);
    }
  }
  std::vector<std::vector<std::string>> groups;
  groups.reserve(byFolder.size() + 1);
  for (auto& [folder, group] : byFolder) {
    groups.push_back(std::move(group));
  }
  groups.push_back(std::move(elsewhere));
  return groups;
}

void AddTo(FilmFiles& known, FilmFiles film) {
  known.Video = std::move(film.Video);
  known.Name = std::move(film.Name);
  std::ranges::move(film.Audio, std::back_inserter(known.Audio));
  std::ranges::move(film.Subtitles, std::back_inserter(known.Subtitles));
  if (known.Chapters.empty()) {
    known.Chapters = std::move(film.Chapters);
  }
}

}  // namespace

std::vector<FilmFiles> SortToFilms(std::vector<std::string> listed, const std::vector<std::string>& files,
                                   std::vector<Message>& told) {
  const std::size_t listedCount = listed.size();
  std::vector<std::string> videos = std::move(listed);
  std::ranges::copy_if(files, std::back_inserter(videos),
                       [](const std::string& file) { return RoleOfFile(file) == FileRole::Video; });
  std::map<std::string, FilmFiles> sorted;
  for (const std::vector<std::string>& group : GroupsOf(videos, files)) {
    SortedFiles found = SortFilms(group);
    std::ranges::move(found.Refusals, std::back_inserter(told));
    for (FilmFiles& film : found.Films) {
      FilmFiles& known = sorted[film.Video];
      AddTo(known, std::move(film));
    }
  }
  std::vector<FilmFiles> films;
  for (std::size_t number = 0; number < videos.size(); ++number) {
    std::vector<FilmFiles> film{std::move(sorted[videos[number]])};
    if (number >= listedCount) {
      FindFilesOf(film);
    }
    films.push_back(std::move(film.front()));
  }
  return films;
}

}  // namespace quorvelant
