#include "verify/read_back.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "disc/disc_files.h"
#include "disc/nav_layout.h"
#include "disc/record.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"

namespace quorvelant {
namespace {

constexpr int ReadSlot = 0;

// Pointers of an IFO's head: a sector where a table starts, whose end stands in its head at this offset.
struct TablePointer {
  const Field<Sectors, 4>* Pointer;
  std::size_t EndOffset;
};
constexpr std::array<TablePointer, 5> ManagerTables{{{&vmgi::TitleSearch, 4},
                                                     {&vmgi::MenuUnits, 4},
                                                     {&vmgi::SetAttributes, 4},
                                                     {&vmgi::MenuCells, 4},
                                                     {&vmgi::MenuVobus, 0}}};
constexpr std::array<TablePointer, 8> SetTables{{{&vtsi::Chapters, 4},
                                                 {&vtsi::TitlePgcs, 4},
                                                 {&vtsi::MenuUnits, 4},
                                                 {&vtsi::TimeMaps, 4},
                                                 {&vtsi::MenuCells, 4},
                                                 {&vtsi::MenuVobus, 0},
                                                 {&vtsi::TitleCells, 4},
                                                 {&vtsi::TitleVobus, 0}}};

class Reader {
 public:
  Reader(std::string folder, UserInterface& ui) : folder_(std::move(folder)), files_(ui) {
    files_.DimFiles(1);
  }

  std::vector<Message> Run() {
    const auto listed = ListFiles(folder_);
    for (const DiscFile& file : listed) {
      if (file.Size % SectorBytes != 0) {
        Fault(ReadBackPartSector, file.Name);
      }
    }
    const DiscSectors sums = SumSectors(listed);
    for (std::size_t row = 0; row < sums.Rows.size(); ++row) {
      CheckSet(row, sums.Rows);
    }
    return std::move(faults_);
  }

 private:
  void Fault(std::string_view text, const std::string& name) {
    faults_.push_back({Severity::Error, std::string(ReadBackTitle), std::string(text), folder_ + "/" + name});
  }
  template <class... Values>
  void FaultWith(std::string_view text, const std::string& name, Values... values) {
    Fault(fmt::format(fmt::runtime(text), values...), name);
  }
  bool IsThere(const std::string& name) const { return std::filesystem::exists(folder_ + "/" + name); }

  void CheckSet(std::size_t row, const std::vector<SetSectors>& rows) {
    const std::string base = IfoBaseName(row);
    for (const char* extension : {".IFO", ".BUP"}) {
      if (!IsThere(base + extension)) {
        Fault(ReadBackMissing, base + extension);
        return;
      }
    }
    const std::string name = base + ".IFO";
    const Bytes ifo = ReadWhole(folder_ + "/" + name, files_);
    if (ReadWhole(folder_ + "/" + base + ".BUP", files_) != ifo) {
      Fault(ReadBackDiffers, base + ".BUP");
    }
    const std::string_view id = row == 0 ? "DVDVIDEO-VMG" : "DVDVIDEO-VTS";
    if (ifo.size() < SectorBytes || !std::equal(id.begin(), id.end(), ifo.begin())) {
      Fault(ReadBackNoIfo, name);
      return;
    }
    const std::uint32_t said = Get(ifo, vtsi::SetLast).Value + 1;
    if (said != rows[row].Total) {
      FaultWith(ReadBackSectors, name, rows[row].Total, said);
    }
    if (row == 0) {
      CheckTables(ifo, ManagerTables, name);
      CheckTitleStarts(ifo, rows, name);
      CheckVobus(ifo, vmgi::MenuVobus, "VIDEO_TS.VOB");
    } else {
      CheckTables(ifo, SetTables, name);
      CheckVobus(ifo, vtsi::MenuVobus, base + ".VOB");
      CheckVobus(ifo, vtsi::TitleVobus, base.substr(0, base.size() - 1) + "1.VOB");
    }
  }

  template <std::size_t N>
  void CheckTables(const Bytes& ifo, const std::array<TablePointer, N>& tables, const std::string& name) {
    for (const TablePointer& table : tables) {
      const std::size_t sector = Get(ifo, *table.Pointer).Value;
      const std::size_t start = sector * SectorBytes;
      if (start + table_head::Size > ifo.size()) {
        FaultWith(ReadBackPointer, name, table.Pointer->Offset);
      } else if (sector != 0 && start + GetBytes(ifo, start + table.EndOffset, 4) >= ifo.size()) {
        FaultWith(ReadBackTable, name, sector);
      }
    }
  }

  void CheckTitleStarts(const Bytes& ifo, const std::vector<SetSectors>& rows, const std::string& name) {
    const std::size_t table = std::size_t{Get(ifo, vmgi::TitleSearch).Value} * SectorBytes;
    if (table == 0 || table + table_head::Size > ifo.size()) {
      return;  // told
    }
    const std::uint64_t titles = Get(ByteView(ifo).subspan(table), table_head::Count).Value;
    for (std::size_t i = 0; i < titles; ++i) {
      const std::size_t at = table + table_head::Size + title_entry::Size * i;
      if (at + title_entry::Size > ifo.size()) {
        return;
      }
      const ByteView entry = ByteView(ifo).subspan(at, title_entry::Size);
      const std::uint64_t set = Get(entry, title_entry::TitleSet).Value;
      std::uint32_t start = 0;
      for (std::size_t row = 0; row < std::min<std::uint64_t>(set, rows.size()); ++row) {
        start += rows[row].Total;
      }
      if (set == 0 || set >= rows.size() || Get(entry, title_entry::SetStart).Value != start) {
        FaultWith(ReadBackStart, name, i + 1, Get(entry, title_entry::SetStart).Value, start);
      }
    }
  }

  // Every address of a VOBU map, in the VOB files that go on from `firstFile` ("..._1.VOB").
  void CheckVobus(const Bytes& ifo, const Field<Sectors, 4>& pointer, const std::string& firstFile) {
    const std::size_t table = std::size_t{Get(ifo, pointer).Value} * SectorBytes;
    if (table == 0 || table + 4 > ifo.size()) {
      return;
    }
    const std::size_t end = std::min<std::size_t>(table + GetBytes(ifo, table, 4) + 1, ifo.size());
    std::uint64_t fileStart = 0;  // sectors
    std::uint64_t fileSectors = 0;
    std::string name = firstFile;
    bool open = Open(name, fileSectors);
    for (std::size_t at = table + 4; open && at + 4 <= end; at += 4) {
      const std::uint64_t sector = GetBytes(ifo, at, 4);
      while (open && sector >= fileStart + fileSectors) {
        fileStart += fileSectors;
        ++name[name.size() - 5];
        open = Open(name, fileSectors);
      }
      if (!open || sector < fileStart) {
        FaultWith(ReadBackNav, firstFile, sector);
        break;
      }
      CheckNav(sector, sector - fileStart, name);
    }
    files_.CloseAllFiles();
  }

  bool Open(const std::string& name, std::uint64_t& sectors) {
    files_.CloseAllFiles();
    if (!IsThere(name) || !files_.OpenSource(folder_ + "/" + name, ReadSlot)) {
      return false;
    }
    sectors = files_.FileBytes(ReadSlot) / SectorBytes;
    return sectors != 0;
  }

  void CheckNav(std::uint64_t sector, std::uint64_t fileSector, const std::string& name) {
    std::array<std::uint8_t, 64> head{};
    files_.SeekAbsolute(fileSector * SectorBytes, ReadSlot);
    const bool whole = files_.ReadInto(head, ReadSlot) == head.size();
    if (!whole || Get(head, nav::PciStartCode).Value != nav::PrivateStream2) {
      FaultWith(ReadBackNav, name, sector);
    } else if (const std::uint32_t lbn = Get(head, nav::PciLbn).Value; lbn != sector) {
      FaultWith(ReadBackLbn, name, sector, lbn);
    }
  }

  std::string folder_;
  Random files_;
  std::vector<Message> faults_;
};

}  // namespace

std::vector<Message> ReadBack(const std::string& folder, UserInterface& ui) {
  return Reader(folder, ui).Run();
}

}  // namespace quorvelant
