// Discs of which nothing is there but tables and sizes: for layouts, in which no byte of a VOB counts.
#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

#include "iso/disc_tree.h"

namespace quorvelant {

inline TreeFile FileOf(const std::string& name, std::uint32_t sectors) {
  return {name, "/disc/" + name, std::uint64_t{sectors} * SectorBytes};
}

// What one set consists of, in sectors. A set has no menu VOB where that is 0.
struct SetSizes {
  std::uint32_t Ifo = 3;
  std::uint32_t MenuVob = 0;
  std::vector<std::uint32_t> TitleVobs = {20};
  std::vector<std::uint32_t> Cells = {0};  // first sectors, of one program chain; each seamless but the first
  std::uint32_t GapBeforeBackup = 0;
};

// Offsets by the tables of DVD-Video: VMGI_MAT, VTSI_MAT, TT_SRPT, VTS_PGCIT, PGC_GI and C_PBI.
class SmallTree {
 public:
  SmallTree(std::uint32_t ifo, std::uint32_t menuVob, const std::vector<SetSizes>& sets) {
    Add("VIDEO_TS", {.Ifo = ifo, .MenuVob = menuVob, .TitleVobs = {}});
    Bytes manager = std::move(Tree.Sets[0].Tables);
    PutBytes(manager, 0x3E, 2, sets.size());
    PutBytes(manager, 0xC4, 4, 1);
    PutBytes(manager, SectorBytes, 2, sets.size());
    for (std::size_t i = 0; i < sets.size(); ++i) {
      manager[SectorBytes + 8 + 12 * i + 6] = static_cast<std::uint8_t>(i + 1);
      PutBytes(manager, SectorBytes + 8 + 12 * i + 8, 4, at_);
      Add(fmt::format("VTS_{:02}_0", i + 1), sets[i]);
      AddCells(Tree.Sets.back().Tables, sets[i].Cells);
    }
    Tree.Sets[0].Tables = std::move(manager);
  }

  // Where the cell's category stands in its IFO.
  static std::size_t CategoryAt(std::size_t cell) { return PgcAt + 0xEC + 24 * cell; }

  DiscTree Tree;

 private:
  static constexpr std::size_t PgcAt = SectorBytes + 16;

  void Add(const std::string& base, const SetSizes& sizes) {
    TreeSet set;
    set.Ifo = FileOf(base + ".IFO", sizes.Ifo);
    set.Backup = FileOf(base + ".BUP", sizes.Ifo);
    set.Tables.resize(set.Ifo.Size);
    std::uint32_t sectors = 2 * sizes.Ifo + sizes.MenuVob + sizes.GapBeforeBackup;
    if (sizes.MenuVob > 0) {
      set.MenuVob = FileOf(base + ".VOB", sizes.MenuVob);
      PutBytes(set.Tables, 0xC0, 4, sizes.Ifo);
    }
    if (!sizes.TitleVobs.empty()) {
      PutBytes(set.Tables, 0xC4, 4, sizes.Ifo + sizes.MenuVob);
    }
    for (const std::uint32_t vob : sizes.TitleVobs) {
      const std::size_t number = set.TitleVobs.size() + 1;
      set.TitleVobs.push_back(FileOf(fmt::format("{}{}.VOB", base.substr(0, base.size() - 1), number), vob));
      sectors += vob;
    }
    PutBytes(set.Tables, 0x0C, 4, sectors - 1);
    at_ += sectors;
    Tree.Sets.push_back(std::move(set));
  }

  static void AddCells(Bytes& tables, const std::vector<std::uint32_t>& cells) {
    tables.resize(std::max(tables.size(), CategoryAt(cells.size())));
    PutBytes(tables, 0xCC, 4, 1);
    PutBytes(tables, SectorBytes, 2, 1);
    PutBytes(tables, SectorBytes + 8 + 4, 4, PgcAt - SectorBytes);
    tables[PgcAt + 3] = static_cast<std::uint8_t>(cells.size());
    PutBytes(tables, PgcAt + 0xE8, 2, 0xEC);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      tables[CategoryAt(i)] = i == 0 ? 0x02 : 0x08;
      PutBytes(tables, CategoryAt(i) + 8, 4, cells[i]);
    }
  }

  std::uint32_t at_ = 0;
};

}  // namespace quorvelant
