// Where a disc of two layers goes on to the second one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

// A cell of a title that a layer can begin with, its sector counted from the first title VOB of its set.
struct TitleCell {
  std::size_t Pgc = 0;     // from 1, in the set's table
  std::size_t Number = 0;  // from 1, in its program chain
  std::uint32_t First = 0;
  std::size_t CategoryAt = 0;  // byte of the IFO
  std::uint8_t Category = 0;
};

// All cells of a title set's IFO but those of angles and interleaved blocks. Takes any bytes.
[[nodiscard]] std::vector<TitleCell> TitleCellsOf(ByteView ifo);

// One byte of an IFO, and of its BUP, that the image has otherwise than the folder.
struct TableByte {
  std::size_t At = 0;
  std::uint8_t Value = 0;
};

struct LayerBreak {
  std::size_t Set = 0;
  std::size_t Pgc = 0;       // from 1
  std::size_t Cell = 0;      // from 1
  std::uint32_t Sector = 0;  // the first of the second layer
  std::vector<TableByte>
      Marks;  // take the seamless flag from the cell, which the change of layers interrupts
};

// The cells of a set with the sector that its title VOBs begin at.
struct SetCells {
  std::size_t Set = 0;
  std::uint32_t Start = 0;
  std::span<const TitleCell> Cells;
};

// The first layer of a dual layer disc has at most so many sectors.
inline constexpr std::uint32_t MostFirstLayerSectors = 2'086'912;

// The cell at the start of an ECC block that is nearest to the middle of an image of `sectors`. The second
// layer is read back from the rim, so it is no longer than the first. All starts count from a point that lies
// `shift` sectors into the image.
[[nodiscard]] std::optional<LayerBreak> ChooseBreak(std::span<const SetCells> sets, std::uint32_t sectors,
                                                    std::uint32_t shift);

}  // namespace quorvelant
