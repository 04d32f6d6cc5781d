// Films as they are collected for a new disc.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "menu/disc_order.h"

namespace quorvelant {

// Files in the order in which they came, sorted to films by their names; what the user says of them stays
// whatever comes after.
class FilmOrder {
 public:
  // Files and folders, whose files are taken in the order of their names. What lies beside a film under its
  // name comes with it. What belongs to no film is told by `Refusals`.
  void Add(const std::vector<std::string>& paths);
  // The film with all that belongs to it, or one of its streams.
  void RemoveFilm(std::size_t film);
  void RemoveFile(const std::string& file);
  void MoveFilm(std::size_t film, int by);
  void SetName(std::size_t film, const std::string& name);
  void SetLanguage(const std::string& file, const std::string& language);

  [[nodiscard]] const std::vector<OrderedFilm>& Films() const { return films_; }
  [[nodiscard]] const std::vector<Message>& Refusals() const { return refusals_; }
  // The languages of the subtitles of all films, each once.
  [[nodiscard]] std::vector<std::string> SubtitleLanguages() const;

 private:
  void Sort();

  std::vector<std::string> files_;
  std::vector<std::string> removed_;              // that would come with their film
  std::map<std::string, std::string> names_;      // by video
  std::map<std::string, std::string> languages_;  // by file
  std::vector<OrderedFilm> films_;
  std::vector<Message> refusals_;
};

// "Sub 1 (Wide/Letter)" and "Subtitle Track 1 showing Wide/Letter subtitles", by the picture's shape.
struct SubtitleLabel {
  std::string Short;
  std::string Long;
};
[[nodiscard]] SubtitleLabel SubtitleLabelOf(std::size_t number, bool isWide, bool hasPanScan);

}  // namespace quorvelant
