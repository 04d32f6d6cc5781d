// The vocabulary of a script: which line does what.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "script/reader_state.h"

namespace quorvelant {

// A line that opens an item, a stage or a block. A "*" in it stands for the numbers from `First` on, `Count`
// of them; without one, `First` is the number handed on.
struct ItemWord {
  // How often a line may stand in a script: far beyond what a disc needs. It keeps a hostile script from
  // filling the memory.
  static constexpr std::size_t MostUses = std::size_t{1} << 18;
  static constexpr std::size_t FewUses = std::size_t{1} << 14;   // of what is large
  static constexpr std::size_t ManyUses = std::size_t{1} << 20;  // of what is small and many

  std::string_view Line;  // read in any case
  // False when the line has no meaning where it stands. None for a line that only structures the text.
  bool (*Open)(ReaderState& state, std::size_t number) = nullptr;
  std::size_t First = 0;
  std::size_t Count = 1;
  std::size_t Most = MostUses;
};

std::span<const ItemWord> SourceItems();
std::span<const ItemWord> DiscItems();

// Finds what the present line does and does it. False when nothing takes the line, or when what takes it
// has no place for it; `Outcome.SkipReason` says which. `Outcome.Doubt` says what is odd about the value of a
// line that was read.
bool ReadLine(ReaderState& state);

}  // namespace quorvelant
