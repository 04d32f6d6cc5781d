// Names of a project and the numbers they stand for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/rules.h"
#include "model/project.h"
#include "vm/command_parser.h"

namespace quorvelant {

// What a name denotes: the first element of that name in the search order of its kind.
struct NamedTarget {
  std::size_t Order = 0;    // place in the walk
  std::int32_t Number = 0;  // PGC, program, cell or title number, as the kind counts
  std::int32_t Title = 0;   // JumpSetPart: title within its set
  const std::string* Name = nullptr;
};

// Looks names up in one project. Each kind is walked once, when first asked for, so that resolving all
// commands costs one pass over the names; the project must outlive the index, and its structure must
// not change meanwhile. Removed elements are counted and never found.
class NameCollector;

class NameIndex {
 public:
  NameIndex(const Project& project, const Rules& rules) : project_(project), rules_(rules) {}

  // The first element in walk order whose name equals `name` or `stored`, blanks and case aside;
  // nullptr where there is none. An empty text names nothing.
  const NamedTarget* Find(TargetKind kind, std::string_view name, std::string_view stored);
  // How many PGCs the Video Manager has, through all its language units.
  std::size_t VmgPgcCount() const;

 private:
  friend class NameCollector;

  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  using Names = std::unordered_map<std::string, NamedTarget, Hash, std::equal_to<>>;
  static constexpr std::size_t KindCount = 10;

  Names& NamesOf(TargetKind kind);

  const Project& project_;
  Rules rules_;
  std::array<Names, KindCount> names_;
  std::array<bool, KindCount> built_{};
};

}  // namespace quorvelant
