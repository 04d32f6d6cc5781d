#include "verify/read_back.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "disc/disc_files.h"
#include "disc/nav_layout.h"
#include "disc/record.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

constexpr int ReadSlot = 0;

// A sector address in the head of an IFO, and where the table there says which byte is its last.
struct TablePointer {
  const disc::Field<disc::Sectors, 4>* Pointer;
  std::size_t LastAt = table_head::Last.Offset;
};
constexpr std::size_t VobuMapLastAt = 0;  // a VOBU map has no count: its addresses follow at once
constexpr std::size_t VobuMapHead = 4;
constexpr std::array ManagerTables{TablePointer{&vmgi::TitleSearch}, TablePointer{&vmgi::MenuUnits},
                                   TablePointer{&vmgi::SetAttributes}, TablePointer{&vmgi::MenuCells},
                                   TablePointer{&vmgi::MenuVobus, VobuMapLastAt}};
constexpr std::array SetTables{
    TablePointer{&vtsi::Chapters},   TablePointer{&vtsi::TitlePgcs},
    TablePointer{&vtsi::MenuUnits},  TablePointer{&vtsi::TimeMaps},
    TablePointer{&vtsi::MenuCells},  TablePointer{&vtsi::MenuVobus, VobuMapLastAt},
    TablePointer{&vtsi::TitleCells}, TablePointer{&vtsi::TitleVobus, VobuMapLastAt}};

// The set that a disc file belongs to: 0 is the Video Manager, n title set n.
std::size_t SetOf(const std::string& fileName) {
  const std::string name = Upper(fileName);
  const auto digit = [&](std::size_t at) { return static_cast<std::size_t>(name[at] - '0'); };
  return name.starts_with("VTS_") ? 10 * digit(4) + digit(5) : 0;
}

class FolderReader {
 public:
  FolderReader(std::string folder, UserInterface& ui) : folder_(std::move(folder)), files_(ui) {
    files_.DimFiles(1);
  }

  std::vector<Message> Faults() {
    CheckSizes();
    for (std::size_t set = 0; set < sectors_.size(); ++set) {
      CheckSet(set);
    }
    return std::move(faults_);
  }

 private:
  template <class... Values>
  void Fault(const MessageKind& kind, const std::string& name, const Values&... values) {
    faults_.push_back(MessageOf(kind, folder_ + "/" + name, values...));
  }
  bool IsThere(const std::string& name) const { return std::filesystem::exists(folder_ + "/" + name); }
  std::uint32_t StartOf(std::size_t set) const {
    return std::accumulate(sectors_.begin(), sectors_.begin() + static_cast<std::ptrdiff_t>(set), 0U);
  }

  void CheckSizes() {
    for (const DiscFile& file : ListFiles(folder_)) {
      if (file.Size % SectorBytes != 0) {
        Fault(message::PartSector, file.Name);
      }
      if (IsDiscFileName(file.Name)) {
        const std::size_t set = SetOf(file.Name);
        sectors_.resize(std::max(sectors_.size(), set + 1));
        sectors_[set] += static_cast<std::uint32_t>(file.Size / SectorBytes);
      }
    }
  }

  void CheckSet(std::size_t set) {
    const std::string base = IfoBaseName(set);
    const std::string name = base + ".IFO";
    const auto ifo = ReadIfo(base, set == 0 ? ManagerId : TitleSetId);
    if (!ifo) {
      return;
    }
    // The Video Manager has its own size at the same place.
    const std::uint32_t said = Get(*ifo, vtsi::SetLast).Value + 1;
    if (said != sectors_[set]) {
      Fault(message::SetSizeWrong, name, sectors_[set], said);
    }
    if (set == 0) {
      CheckTables(*ifo, ManagerTables, name);
      CheckTitleStarts(*ifo, name);
      CheckVobus(*ifo, vmgi::MenuVobus, "VIDEO_TS.VOB");
    } else {
      CheckTables(*ifo, SetTables, name);
      CheckVobus(*ifo, vtsi::MenuVobus, base + ".VOB");
      CheckVobus(*ifo, vtsi::TitleVobus, base.substr(0, base.size() - 1) + "1.VOB");
    }
  }

  // An IFO with a backup like it; nothing for what is missing or none.
  std::optional<Bytes> ReadIfo(const std::string& base, std::string_view id) {
    for (const char* extension : {".IFO", ".BUP"}) {
      if (!IsThere(base + extension)) {
        Fault(message::FileMissing, base + extension);
        return std::nullopt;
      }
    }
    Bytes ifo = ReadWhole(folder_ + "/" + base + ".IFO", files_);
    if (ReadWhole(folder_ + "/" + base + ".BUP", files_) != ifo) {
      Fault(message::BackupDiffers, base + ".BUP");
    }
    if (ifo.size() < SectorBytes || !std::equal(id.begin(), id.end(), ifo.begin())) {
      Fault(message::NotAnIfo, base + ".IFO");
      return std::nullopt;
    }
    return ifo;
  }

  void CheckTables(const Bytes& ifo, std::span<const TablePointer> tables, const std::string& name) {
    for (const TablePointer& table : tables) {
      const std::size_t sector = Get(ifo, *table.Pointer).Value;
      const std::size_t start = sector * SectorBytes;
      if (start + table_head::Size > ifo.size()) {
        Fault(message::PointerOutside, name, table.Pointer->Offset);
      } else if (sector != 0 && start + GetBytes(ifo, start + table.LastAt, 4) >= ifo.size()) {
        Fault(message::TableOutside, name, sector);
      }
    }
  }

  void CheckTitleStarts(const Bytes& ifo, const std::string& name) {
    const std::size_t table = std::size_t{Get(ifo, vmgi::TitleSearch).Value} * SectorBytes;
    if (table == 0 || table + table_head::Size > ifo.size()) {
      return;  // a pointer outside is a fault already
    }
    const std::uint64_t titles = Get(ByteView(ifo).subspan(table), table_head::Count).Value;
    for (std::size_t i = 0; i < titles; ++i) {
      const std::size_t at = table + table_head::Size + title_entry::Size * i;
      if (at + title_entry::Size > ifo.size()) {
        return;
      }
      const ByteView entry = ByteView(ifo).subspan(at, title_entry::Size);
      const auto set = static_cast<std::size_t>(Get(entry, title_entry::TitleSet).Value);
      const std::uint32_t said = Get(entry, title_entry::SetStart).Value;
      const std::uint32_t start = StartOf(std::min(set, sectors_.size()));
      if (set == 0 || set >= sectors_.size() || said != start) {
        Fault(message::TitleStartWrong, name, i + 1, said, start);
      }
    }
  }

  // Every address of a VOBU map, in the VOB files that go on from `firstFile` ("..._1.VOB").
  void CheckVobus(const Bytes& ifo, const disc::Field<disc::Sectors, 4>& pointer,
                  const std::string& firstFile) {
    const std::size_t table = std::size_t{Get(ifo, pointer).Value} * SectorBytes;
    if (table == 0 || table + VobuMapHead > ifo.size()) {
      return;
    }
    const std::size_t end =
        std::min<std::size_t>(table + GetBytes(ifo, table + VobuMapLastAt, 4) + 1, ifo.size());
    std::uint64_t fileStart = 0;  // sectors
    std::uint64_t fileSectors = 0;
    std::string name = firstFile;
    bool open = Open(name, fileSectors);
    for (std::size_t at = table + VobuMapHead; at + 4 <= end; at += 4) {
      const std::uint64_t sector = GetBytes(ifo, at, 4);
      while (open && sector >= fileStart + fileSectors) {
        fileStart += fileSectors;
        ++name[name.size() - 5];
        open = Open(name, fileSectors);
      }
      if (!open || sector < fileStart) {
        Fault(message::NavPackMissing, firstFile, sector);
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
      Fault(message::NavPackMissing, name, sector);
    } else if (const std::uint32_t lbn = Get(head, nav::PciLbn).Value; lbn != sector) {
      Fault(message::NavPackAddressWrong, name, sector, lbn);
    }
  }

  std::string folder_;
  Random files_;
  std::vector<std::uint32_t> sectors_ = {0};  // of all files of each set
  std::vector<Message> faults_;
};

}  // namespace

std::vector<Message> ReadBack(const std::string& folder, UserInterface& ui) {
  return FolderReader(folder, ui).Faults();
}

}  // namespace quorvelant
