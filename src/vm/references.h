// The references of a command's text: the names and numbers by which it leads to elements of the disc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/my_dvd.h"
#include "vm/command_parser.h"

namespace quorvelant {

// What a reference is, and so what its number counts. The first ten are those of `TargetKind`.
enum class ReferenceKind : std::uint8_t {
  LinkPgc,
  LinkProgram,
  LinkPart,
  LinkCell,
  JumpTitle,
  JumpSetTitle,
  JumpSetPart,
  VmgPgc,
  ResumeCell,
  TimerPgc,
  MenuSet,    // "vts_2" of JumpSS: the title set
  MenuTitle,  // "vts_ttn_1" of JumpSS: the title within it
  Menu,       // "TitleMenu", "RootMenu", ...
  FirstPlay   // "FP_DOM"
};
// GoTo lines and buttons are no elements; sub-instructions ("LinkNextPGC") lead by what their PGC says.

// One name or number of a text.
struct TextReference {
  // Of a menu: of the set in which the command stands.
  static constexpr std::int32_t OwnSet = -1;

  ReferenceKind Kind = ReferenceKind::LinkPgc;
  // Where it stands in the text, in bytes. Without a length it can be looked up and not replaced.
  std::size_t Offset = 0;
  std::size_t Length = 0;
  std::string Name;                    // in lower case; empty where only a number or a word may stand
  std::optional<std::int32_t> Number;  // that stands there, or in the name's place; 2 to 7 for a menu
  std::int32_t Within = 0;             // JumpSetPart: number of the title; MenuTitle, Menu: of the set
  bool operator==(const TextReference&) const = default;
};

// In the order of the text's parts: target, resume cell, link after a set. Reads any bytes.
[[nodiscard]] std::vector<TextReference> TextReferencesOf(std::string_view text);

// The text with this one reference by name leading to `newName`, in that name's own case; nothing where the
// text cannot carry the name ("CallSS RSM=0,, RootMenu" calls a menu, whatever has that name).
[[nodiscard]] std::optional<std::string> RenamedText(std::string_view text, const TextReference& reference,
                                                     std::string_view newName);
// The text with this one reference by number leading to another number; `within` is that of the title for
// JumpVTS_PTT. A reference without a length leaves the text as it is.
[[nodiscard]] std::string RenumberedText(std::string_view text, const TextReference& reference,
                                         std::int32_t number, std::int32_t within);

// What a command becomes that loses its target.
void ResetToNop(VMICommand_P& command);

}  // namespace quorvelant
