// Names of a project and the numbers they stand for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "model/project.h"
#include "vm/command_parser.h"

namespace quorvelant {

// Whether two names are equal, blanks and case aside.
[[nodiscard]] bool SameName(std::string_view a, std::string_view b);

// What a name denotes: the first element of that name in the search order of its kind.
struct NamedTarget {
  std::size_t Order = 0;    // place in the walk
  std::int32_t Number = 0;  // PGC, program, cell or title number, as the kind counts
  std::int32_t Title = 0;   // JumpSetPart: title within its set
  const std::string* Name = nullptr;
};

// A hash table from names, blanks and case aside, to targets. It refers to the names and copies none:
// a project of a million script lines has hundreds of thousands.
class NameTable {
 public:
  // Keeps the first of equal names; `target.Name` must be set and outlive the table.
  void Add(const NamedTarget& target);
  const NamedTarget* Find(std::string_view name) const;

 private:
  // Small, so that the slots of a large disc stay in the cache; the targets stand in the order of the walk,
  // which is much that of the commands.
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Place = 0;  // of the target, from 1; 0 when free
  };
  std::size_t SlotOf(std::uint32_t hash, std::string_view name) const;
  void Grow();

  std::vector<Slot> slots_;  // a power of two of them, at most half in use
  std::vector<NamedTarget> targets_;
};

// Looks names up in one project. Each kind is walked once, when first asked for, so that resolving all
// commands costs one pass over the names; the project must outlive the index, and its structure must
// not change meanwhile. Removed elements are neither counted nor found, as on the disc.
class NameIndex {
 public:
  NameIndex(const Project& project, const Rules& rules) : project_(project), rules_(rules) {}

  // The first element in walk order whose name equals `name` or `stored`, blanks and case aside;
  // nullptr where there is none. An empty text names nothing.
  const NamedTarget* Find(TargetKind kind, std::string_view name, std::string_view stored);
  // The highest number that an element of this kind has, named or not; of PGCs of the Video Manager how many
  // there are through all its language units.
  std::int32_t Most(TargetKind kind);

 private:
  static constexpr std::size_t KindCount = 10;

  struct Kind {
    NameTable Names;
    std::int32_t Most = 0;
    bool Built = false;
  };
  Kind& KindOf(TargetKind kind);

  const Project& project_;
  Rules rules_;
  std::array<Kind, KindCount> kinds_;
};

}  // namespace quorvelant
