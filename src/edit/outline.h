// A project as a tree to look at: its sources, its disc, and the streams that each domain carries.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "model/project.h"

namespace quorvelant {

// One property of a node, e.g. "standard" "PAL".
struct OutlineFact {
  std::string_view Name;
  std::variant<std::string, std::int64_t, bool> Value;
};

struct OutlineNode {
  std::string_view Kind;  // "track", "title", "pgc", "cell", ...
  std::string Key;        // the project key, or a command's key in its list; empty for folders
  std::string Name;       // a name, file or command text
  std::vector<OutlineFact> Facts;
  std::vector<OutlineNode> Children;
};

// "segments" with the live tracks, "disc" with First Play and the live entries, "palettes", and
// "streammaps" with the menu and the title domain of each entry: its streams in the order of the map, each
// with whether it is multiplexed.
OutlineNode OutlineOf(const Project& project);

// One line a node, two blanks a level: kind, name, [key], properties. Properties that are empty or off are
// left out.
std::string OutlineText(const OutlineNode& node);

}  // namespace quorvelant
