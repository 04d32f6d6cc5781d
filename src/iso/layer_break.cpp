#include "iso/layer_break.h"

#include <algorithm>

#include "disc/disc_files.h"
#include "disc/pgc_layout.h"
#include "disc/table_layout.h"
#include "disc/vtsi_layout.h"

namespace quorvelant {
namespace {

// Category: the cell is of an angle block, or interleaved with others.
constexpr std::uint8_t OfBlock = 0xF0 | 0x04;

void AddCells(ByteView ifo, std::size_t start, std::size_t number, std::vector<TitleCell>& cells) {
  if (start + pgc::Size > ifo.size()) {
    return;
  }
  const ByteView chain = ifo.subspan(start);
  const std::size_t count = Get(chain, pgc::Cells).Value;
  const std::size_t table = Get(chain, pgc::CellPlayback).Value;
  for (std::size_t i = 0; i < count && table > 0; ++i) {
    const std::size_t at = start + table + i * cell_playback::Size;
    if (at + cell_playback::Size > ifo.size()) {
      return;
    }
    const ByteView cell = ifo.subspan(at, cell_playback::Size);
    const auto category = static_cast<std::uint8_t>(Get(cell, cell_playback::Category).Value);
    if ((category & OfBlock) == 0) {
      cells.push_back({number, i + 1, Get(cell, cell_playback::FirstVobu).Value,
                       at + cell_playback::Category.Offset, category});
    }
  }
}

std::vector<TableByte> MarksOf(std::span<const TitleCell> cells, std::uint32_t first) {
  std::vector<TableByte> marks;
  for (const TitleCell& cell : cells) {
    if (cell.First == first && (cell.Category & cell_playback::Seamless) != 0) {
      marks.push_back({cell.CategoryAt, static_cast<std::uint8_t>(cell.Category & ~cell_playback::Seamless)});
    }
  }
  return marks;
}

}  // namespace

std::vector<TitleCell> TitleCellsOf(ByteView ifo) {
  std::vector<TitleCell> cells;
  const std::size_t start =
      ifo.size() < vtsi::Size ? 0 : std::size_t{Get(ifo, vtsi::TitlePgcs).Value} * SectorBytes;
  if (start == 0 || start + table_head::Size > ifo.size()) {
    return cells;
  }
  const ByteView table = ifo.subspan(start);
  const std::size_t count = Get(table, table_head::Count).Value;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = table_head::Size + i * pgc_entry::Size;
    if (at + pgc_entry::Size > table.size()) {
      break;
    }
    AddCells(ifo, start + Get(table.subspan(at, pgc_entry::Size), pgc_entry::Start).Value, i + 1, cells);
  }
  return cells;
}

std::optional<LayerBreak> ChooseBreak(std::span<const SetCells> sets, std::uint32_t sectors,
                                      std::uint32_t shift) {
  const std::uint64_t middle = (std::uint64_t{sectors} + 1) / 2;
  const SetCells* bestSet = nullptr;
  const TitleCell* best = nullptr;
  std::uint64_t at = std::uint64_t{MostFirstLayerSectors} + 1;
  for (const SetCells& set : sets) {
    for (const TitleCell& cell : set.Cells) {
      const std::uint64_t sector = std::uint64_t{shift} + set.Start + cell.First;
      if (sector % EccSectors == 0 && sector >= middle && sector < at) {
        bestSet = &set;
        best = &cell;
        at = sector;
      }
    }
  }
  if (best == nullptr) {
    return std::nullopt;
  }
  return LayerBreak{.Set = bestSet->Set,
                    .Pgc = best->Pgc,
                    .Cell = best->Number,
                    .Sector = static_cast<std::uint32_t>(at),
                    .Marks = MarksOf(bestSet->Cells, best->First)};
}

}  // namespace quorvelant
