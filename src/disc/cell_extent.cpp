#include "disc/cell_extent.h"

#include <algorithm>

#include "disc/table_layout.h"

namespace quorvelant {

std::uint64_t SectorsOfCells(ByteView ifo, const disc::Field<disc::Sectors, 4>& pointer) {
  const std::size_t start = std::size_t{Get(ifo, pointer).Value} * SectorBytes;
  if (start == 0 || start + table_head::Size > ifo.size()) {
    return 0;
  }
  const ByteView table = ifo.subspan(start);
  const std::size_t end =
      std::min<std::size_t>(table.size(), std::size_t{Get(table, table_head::Last).Value} + 1);
  std::uint64_t sectors = 0;
  for (std::size_t at = table_head::Size; at + cell_address::Size <= end; at += cell_address::Size) {
    const ByteView cell = table.subspan(at, cell_address::Size);
    sectors = std::max(sectors, std::uint64_t{Get(cell, cell_address::Last).Value} + 1);
  }
  return sectors;
}

}  // namespace quorvelant
