// Where a command stands in a project.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>

#include "model/project.h"

namespace quorvelant {

enum class ListKind : std::uint8_t { Pre, Post, Cell, Button };

inline constexpr std::size_t ListEnd = static_cast<std::size_t>(-1);

struct CommandPlace {
  std::string Key;  // of the PGC; of the cell for buttons
  ListKind List = ListKind::Pre;
  std::size_t Play = 0;            // of buttons: the entry in `Cell_P::ButtonCommands`
  std::size_t Position = ListEnd;  // in the list, from 0

  auto operator<=>(const CommandPlace&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

// nullptr where the project holds no such list or command. Removed elements have theirs.
[[nodiscard]] CommandList* FindCommands(Project& project, const CommandPlace& place);
[[nodiscard]] const CommandList* FindCommands(const Project& project, const CommandPlace& place);
[[nodiscard]] VMICommand_P* FindCommand(Project& project, const CommandPlace& place);
[[nodiscard]] const VMICommand_P* FindCommand(const Project& project, const CommandPlace& place);

// The words by which messages tell a place: "VTS1.TITLE1.PGC1 Post2".
[[nodiscard]] std::string WordsOf(const Project& project, const CommandPlace& place);

}  // namespace quorvelant
