// What a disc needs of its medium.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "author/disc_plan.h"

namespace quorvelant {

// A source that takes room: the pictures of a track, or one of its audio streams.
struct SizeItem {
  std::string Name;  // "Film 1", "German sound of Film 1"
  std::uint64_t Bytes = 0;
};

struct DiscNeeds {
  std::uint64_t Bytes = 0;        // of the finished folder, as the plan says
  std::uint64_t SourceBytes = 0;  // which it takes at least
  double PeakMbits = 0;           // the most that picture and sound of a film may ask for at one time
  std::string PeakTrack;
  std::vector<SizeItem> Items;  // the largest first

  [[nodiscard]] std::uint64_t Sectors() const { return (Bytes + 2047) / 2048; }
};

[[nodiscard]] DiscNeeds NeedsOf(const DiscPlan& plan, UserInterface& ui);

// What to leave out where the disc is larger than the medium: the smallest source that makes it fit, or the
// largest one where none does alone. Empty where it fits.
[[nodiscard]] std::string WhatToDrop(const DiscNeeds& needs, std::uint64_t mediumBytes);

}  // namespace quorvelant
