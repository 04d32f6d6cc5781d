// What the disc of a project will hold, counted as players count: live elements, and programs that have a
// cell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/project.h"

namespace quorvelant {

struct SetContents {
  std::vector<const Title_P*> Titles;
  std::size_t Pgcs = 0;  // of all titles
};

// The project must outlive it.
class DiscContents {
 public:
  explicit DiscContents(const Project& project);

  // Live title sets: number 1 first.
  [[nodiscard]] const std::vector<const VTS_P*>& Sets() const { return sets_; }
  [[nodiscard]] const SetContents& Of(const VTS_P& entry) const { return contents_.at(&entry); }
  [[nodiscard]] std::size_t TitleCount() const { return titles_; }
  // Of the language of the Video Manager that has the fewest, since a player takes the viewer's.
  [[nodiscard]] std::size_t LeastManagerPgcs() const { return managerPgcs_; }

 private:
  std::vector<const VTS_P*> sets_;
  std::unordered_map<const VTS_P*, SetContents> contents_;  // of every live entry
  std::size_t titles_ = 0;
  std::size_t managerPgcs_ = 0;
};

[[nodiscard]] std::size_t ProgramCount(const PGC_P& chain);
[[nodiscard]] std::size_t PartCount(const Title_P& title);

// Menus by the number that commands give: 2 title, 3 root, 4 subpicture, 5 audio, 6 angle, 7 part of title.
[[nodiscard]] std::string_view MenuNameOf(std::int32_t menu);

}  // namespace quorvelant
