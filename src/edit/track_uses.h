#pragma once

// Which tracks the entries of a disc show, kept beside a project under work.

#include <cstddef>
#include <span>
#include <vector>

#include "model/project.h"

namespace quorvelant {

class TrackUses {
 public:
  // Reads entries anew, by number, also ones that are gone.
  void Update(const Project& project, std::span<const std::size_t> entries);

  // Whether a live cell of the entry shows the track.
  [[nodiscard]] bool Shows(std::size_t entry, std::size_t track) const;
  // By track: whether any does.
  [[nodiscard]] std::vector<bool> InUse(std::size_t trackCount) const;

 private:
  std::vector<std::vector<std::size_t>> byEntry_;  // sorted, each once; entry 1 is the first
};

}  // namespace quorvelant
