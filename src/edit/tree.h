#pragma once

// The two trees of a project as values, and what a step changed in them. A model of a window keeps a mirror
// and applies the changes one by one between its begin and end calls; it never looks into the project while
// rows move.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "edit/part.h"
#include "model/project.h"

namespace quorvelant {

struct TreeNode {
  std::string Key;
  std::string Text;
  std::string_view Kind;           // "track", "pgc", "cell", ...
  std::vector<TreeNode> Children;  // live ones, in their order
  bool operator==(const TreeNode&) const = default;
};

struct TreeChange {
  enum class What : std::uint8_t { Insert, Remove, Text };
  What Kind = What::Text;
  std::string Parent;   // key
  std::size_t Row = 0;  // among the parent's children at this step
  TreeNode Node;        // Insert: with all below it. Remove: its key alone. Text: key and new text
};

inline constexpr std::string_view StructureKey = "Structure";

// "Segments" with its folders, tracks, lists, plays, streams and scenes.
[[nodiscard]] TreeNode SegmentTree(const Project& project);
// First Play and the entries, down to cells and the highlight streams that they show (".HP1").
[[nodiscard]] TreeNode StructureTree(const Project& project);

// What makes `after` of `before`, two states of one node; children are told apart by key and never change
// their order.
[[nodiscard]] std::vector<TreeChange> Differences(const TreeNode& before, const TreeNode& after);

// What became of the trees where the parts of `before` were as told there and the rest as in `after`.
[[nodiscard]] std::vector<TreeChange> ChangesOf(const PartImages& before, const Project& after);

}  // namespace quorvelant
