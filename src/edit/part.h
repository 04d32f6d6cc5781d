#pragma once

// The parts of a project that an operation touches, and what they held before.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "model/project.h"

namespace quorvelant {

enum class PartKind : std::uint8_t { Track, Entry, FirstPlay, Palettes, Destination };

struct Part {
  PartKind Kind = PartKind::Track;
  std::size_t Number = 0;  // index in `Tracks`, number in `MyDVD`; 0 for the others

  auto operator<=>(const Part&) const = default;  // NOLINT(modernize-use-nullptr): no pointer

  static constexpr Part OfTrack(std::size_t index) { return {PartKind::Track, index}; }
  static constexpr Part OfEntry(std::size_t number) { return {PartKind::Entry, number}; }
};

// What a part holds; nothing where there is no such part: tracks and entries are added at the end.
using PartContent = std::variant<std::monostate, Track, VTS_P, PGC_P, Collection<Palette_P>, std::string>;

// Parts as they stood before a step, lower numbers first, so that additions are taken back from the last.
using PartImages = std::map<Part, PartContent>;

[[nodiscard]] std::vector<Part> PartsOf(const PartImages& images);
// The entries of the disc among them, by number; First Play is 0.
[[nodiscard]] std::vector<std::size_t> EntriesOf(const PartImages& images);

[[nodiscard]] PartContent ContentOf(const Project& project, const Part& part);

// Whether the part holds just this.
[[nodiscard]] bool Holds(const Project& project, const Part& part, const PartContent& content);

// Puts a content into its place and gives what was there. A track or entry can be added after the last one,
// and the last one be taken away; raises std::logic_error at any other gap.
PartContent Exchange(Project& project, const Part& part, PartContent content);

// Roughly the memory that a content takes.
[[nodiscard]] std::size_t BytesOf(const PartContent& content);

}  // namespace quorvelant
