// What a film offers to choose from in its menus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/rules.h"
#include "model/project.h"

namespace quorvelant {

// A stream that reaches the disc.
struct OfferedStream {
  int Number = 0;         // as commands count: the stream's ID and 1
  std::string Language;   // a name of the vocabulary
  std::string Extension;  // likewise: "Normal", "Directors comments"
  bool operator==(const OfferedStream&) const = default;
};

struct OfferedChapter {
  std::size_t Scene = 0;   // of the track, from 0
  std::int64_t Frame = 0;  // of the track
  std::string Name;        // beneath the thumbnail; empty for the number alone
  bool operator==(const OfferedChapter&) const = default;
};

struct FilmOffer {
  std::size_t Track = 0;  // index in `Tracks`
  std::string Name;
  bool IsWide = false;  // 16:9
  bool IsNtsc = false;
  std::vector<OfferedStream> Audio;
  std::vector<OfferedStream> Subtitles;
  std::vector<OfferedChapter> Chapters;  // those with a thumbnail, in the order of their numbers
};

// Which menus are wanted.
struct WantedMenus {
  bool Audio = true;
  bool Subtitle = true;
  bool Chapter = true;
};

// What a film's menus offer by the rules: nothing where there is no choice, and nothing that is not wanted.
// The name is the track's.
[[nodiscard]] FilmOffer OfferOf(const Project& project, std::size_t track, const WantedMenus& wanted,
                                const Rules& rules);

// Whether the films leave a choice that makes menus.
[[nodiscard]] bool OfferChoice(std::span<const FilmOffer> films, const Rules& rules);

}  // namespace quorvelant
