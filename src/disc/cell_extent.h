// How many sectors the cells of a VOB set take, by the table that lists them.
#pragma once

#include <cstdint>

#include "base/bytes.h"
#include "disc/record.h"

namespace quorvelant {

// Of the cell address table that `pointer` of an IFO leads to; 0 where it leads to none, or out of the IFO.
[[nodiscard]] std::uint64_t SectorsOfCells(ByteView ifo, const disc::Field<disc::Sectors, 4>& pointer);

}  // namespace quorvelant
