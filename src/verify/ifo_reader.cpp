#include "verify/ifo_reader.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

#include "disc/disc_files.h"
#include "disc/limits.h"
#include "disc/pgc_layout.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "verify/ifo_chains.h"
#include "verify/ifo_small_tables.h"
#include "verify/ifo_view.h"

namespace quorvelant {
namespace {

constexpr std::string_view OurProvider = "NOLV";

// Least last bytes of the two heads: with the last of their fields.
constexpr std::uint32_t LeastManagerEnd = 0x155;
constexpr std::uint32_t LeastSetEnd = 0x3D7;

// A table, and the sector that leads to it.
struct TableRow {
  std::size_t Pointer;
  const char* Name;
  std::size_t LastAt;  // where the table says which byte is its last
};
constexpr std::size_t TextLastAt = 16;
constexpr std::array ManagerRows{TableRow{vmgi::TitleSearch.Offset, "TT_SRPT", 4},
                                 TableRow{vmgi::MenuUnits.Offset, "VMGM_PGCI_UT", 4},
                                 TableRow{vmgi::Parental.Offset, "PTL_MAIT", 4},
                                 TableRow{vmgi::SetAttributes.Offset, "VTS_ATRT", 4},
                                 TableRow{vmgi::TextData.Offset, "TXTDT_MG", TextLastAt},
                                 TableRow{vmgi::MenuCells.Offset, "VMGM_C_ADT", 4},
                                 TableRow{vmgi::MenuVobus.Offset, "VMGM_VOBU_ADMAP", 0}};
constexpr std::array SetRows{TableRow{vtsi::Chapters.Offset, "VTS_PTT_SRPT", 4},
                             TableRow{vtsi::TitlePgcs.Offset, "VTS_PGCIT", 4},
                             TableRow{vtsi::MenuUnits.Offset, "VTSM_PGCI_UT", 4},
                             TableRow{vtsi::TimeMaps.Offset, "VTS_TMAPT", 4},
                             TableRow{vtsi::MenuCells.Offset, "VTSM_C_ADT", 4},
                             TableRow{vtsi::MenuVobus.Offset, "VTSM_VOBU_ADMAP", 0},
                             TableRow{vtsi::TitleCells.Offset, "VTS_C_ADT", 4},
                             TableRow{vtsi::TitleVobus.Offset, "VTS_VOBU_ADMAP", 0}};

class IfoReader {
 public:
  IfoReader(const std::string& file, int set, bool isOurs, Bytes data, DiscFindings& findings)
      : teller_(file, findings, isOurs) {
    tables_.IsOurs = isOurs;
    tables_.Name = file;
    tables_.Set = set;
    tables_.Data = std::move(data);
  }

  std::optional<IfoTables> Read() {
    const std::string_view id = tables_.IsManager() ? ManagerId : TitleSetId;
    const Bytes& data = tables_.Data;
    if (data.size() < SectorBytes || !std::equal(id.begin(), id.end(), data.begin())) {
      teller_.Tell(message::TableBroken, 0, Head(), tables_.IsManager() ? "VMG_ID" : "VTS_ID", id, "another");
      return std::nullopt;
    }
    ReadHead();
    if (tables_.IsManager()) {
      ReadManager();
    } else {
      ReadSet();
    }
    FindTables();
    ReadTables();
    return std::move(tables_);
  }

 private:
  [[nodiscard]] std::string Head() const { return tables_.IsManager() ? "VMGI_MAT" : "VTSI_MAT"; }
  [[nodiscard]] IfoView View(std::size_t base = 0) const { return {tables_.Data, base, tables_.Data.size()}; }

  // What both heads have at the same places.
  void ReadHead() {
    const IfoView mat = View();
    const std::size_t sectors = std::size_t{mat.Long(vtsi::IfoLast.Offset)} + 1;
    if (sectors * SectorBytes != tables_.Data.size()) {
      teller_.Tell(message::TableBroken, vtsi::IfoLast.Offset, Head(), vtsi::IfoLast.Name,
                   tables_.Data.size() / SectorBytes - 1, sectors - 1);
    }
    const unsigned version = mat.Word(vtsi::Version.Offset);
    if (version != 0x10 && version != 0x11 && version != 0x12) {
      teller_.Tell(message::AttributeWrong, vtsi::Version.Offset, Head(), "VERN", "0x10, 0x11 or 0x12",
                   fmt::format("0x{:X}", version));
    }
    matEnd_ = mat.Long(vtsi::MatLast.Offset);
    const std::uint32_t least = tables_.IsManager() ? LeastManagerEnd : LeastSetEnd;
    if (matEnd_ < least || matEnd_ >= tables_.Data.size()) {
      teller_.Tell(message::TableBroken, vtsi::MatLast.Offset, Head(), "MAT_EA",
                   fmt::format("{} to {}", least, tables_.Data.size() - 1), matEnd_);
    }
    tables_.LastSector = mat.Long(vtsi::SetLast.Offset);
    tables_.MenuStart = mat.Long(vtsi::MenuVobs.Offset);
    // Some makers give menus without pictures a place, and no attributes; those with any are held against
    // them.
    tables_.Menus = StreamsAt(vtsi::MenuVideo.Offset, vtsi::MenuAudioCount.Offset, 1,
                              vtsi::MenuSubCount.Offset, 1, tables_.MenuStart != 0 && tables_.IsOurs);
  }

  IfoStreams StreamsAt(std::size_t video, std::size_t audioCount, std::size_t mostAudio, std::size_t subCount,
                       std::size_t mostSubs, bool used) {
    const IfoView mat = View();
    IfoStreams streams{.Video = {mat.Word(video)}, .Subpictures = static_cast<int>(mat.Byte(subCount))};
    if (used) {
      CheckVideoAttributes(streams.Video, mat.At(video), Head(), teller_);
    }
    const std::size_t count = mat.Byte(audioCount);
    CheckCount(audioCount, "AST_Ns", count, mostAudio);
    CheckCount(subCount, "SPST_Ns", mat.Byte(subCount), mostSubs);
    for (std::size_t i = 0; i < std::min(count, mostAudio); ++i) {
      const std::size_t at = audioCount + 1 + 8 * i;
      streams.Audio.push_back({mat.Get(at, 8)});
      CheckAudioAttributes(streams.Audio.back(), mat.At(at), Head(), teller_);
    }
    CheckUnused(audioCount + 1, 8, count, mostAudio, "AST_ATR");
    CheckUnused(subCount + 1, 6, mat.Byte(subCount), mostSubs, "SPST_ATR");
    return streams;
  }

  void CheckCount(std::size_t at, const char* field, std::size_t count, std::size_t most) const {
    if (count > most) {
      teller_.Tell(message::AttributeWrong, View().At(at), Head(), field, fmt::format("at most {}", most),
                   count);
    }
  }

  // Rows after the last stream stay zero.
  void CheckUnused(std::size_t rows, std::size_t width, std::size_t count, std::size_t most,
                   const char* field) const {
    for (std::size_t at = rows + width * count; at < rows + width * most; ++at) {
      if (View().Byte(at) != 0) {
        teller_.Tell(message::AttributeLoose, View().At(at), Head(), field, "zero after the last stream",
                     View().Byte(at));
        return;
      }
    }
  }

  void ReadManager() {
    const IfoView mat = View();
    const std::size_t firstPlay = mat.Long(vmgi::FirstPlayPgc.Offset);
    teller_.CheckReserved(vmgi::Rows, mat, Head(), firstPlay != 0 ? firstPlay : SIZE_MAX);
    tables_.TitleSets = mat.Word(vmgi::TitleSets.Offset);
    const unsigned volumes = mat.Word(vmgi::Volumes.Offset);
    const unsigned volume = mat.Word(vmgi::VolumeNumber.Offset);
    if (volumes < 1 || volume < 1 || volume > volumes || mat.Byte(vmgi::Side.Offset) > 2) {
      teller_.Tell(message::TableBroken, vmgi::Volumes.Offset, Head(), "VLMS_ID",
                   "a volume of as many, a side",
                   fmt::format("volume {} of {}, side {}", volume, volumes, mat.Byte(vmgi::Side.Offset)));
    }
    if (firstPlay == 0) {
      return;
    }
    if (firstPlay < LeastManagerEnd || !mat.Has(firstPlay, pgc::Size)) {
      teller_.Tell(message::TableBroken, vmgi::FirstPlayPgc.Offset, Head(), "FP_PGCI_SA",
                   "an offset within the IFO", firstPlay);
      return;
    }
    auto [chain, bytes] = ReadIfoChain(mat.Sub(firstPlay), 0, "FP_PGC", teller_);
    // Others may leave room after it.
    const std::size_t matBytes = std::size_t{matEnd_} + 1;
    if (tables_.IsOurs ? firstPlay + bytes != matBytes : firstPlay + bytes > matBytes) {
      teller_.Tell(message::TableBroken, vmgi::MatLast.Offset, Head(), "VMGI_MAT_EA", firstPlay + bytes - 1,
                   matEnd_);
    }
    if (!chain.Cells.empty()) {
      teller_.Tell(message::ChainBroken, chain.At + 3, "FP_PGC", "PGC_CNT.C_Ns", 0, chain.Cells.size());
    }
    tables_.FirstPlay = std::move(chain);
  }

  void ReadSet() {
    const IfoView mat = View();
    teller_.CheckReserved(vtsi::Rows, mat, Head());
    if (tables_.IsOurs && matEnd_ != vtsi::Size - 1) {  // others end it with their last field
      teller_.Tell(message::TableBroken, vtsi::MatLast.Offset, Head(), vtsi::MatLast.Name, vtsi::Size - 1,
                   matEnd_);
    }
    tables_.TitleStart = mat.Long(vtsi::TitleVobs.Offset);
    tables_.TitleStreams = StreamsAt(vtsi::TitleVideo.Offset, vtsi::TitleAudioCount.Offset, AudioStreamCount,
                                     vtsi::TitleSubCount.Offset, SubStreamCount, true);
    if (mat.Long(vtsi::Category.Offset) > 1) {
      teller_.Tell(message::AttributeLoose, vtsi::Category.Offset, Head(), "VTS_CAT", "0 or 1",
                   mat.Long(vtsi::Category.Offset));
    }
  }

  // The tables that there are; overlaps and what is missing.
  void FindTables() {
    const std::span<const TableRow> rows =
        tables_.IsManager() ? std::span<const TableRow>(ManagerRows) : std::span<const TableRow>(SetRows);
    std::map<std::size_t, std::pair<std::size_t, std::string>> spans{{0, {std::size_t{matEnd_} + 1, Head()}}};
    for (const TableRow& row : rows) {
      const std::size_t base = std::size_t{View().Long(row.Pointer)} * SectorBytes;
      if (base == 0) {
        continue;
      }
      if (!View().Has(base, std::max<std::size_t>(row.LastAt + 4, table_head::Size))) {
        teller_.Tell(message::TableBroken, View().At(row.Pointer), Head(), std::string(row.Name) + "_SA",
                     fmt::format("a sector before {}", tables_.Data.size() / SectorBytes),
                     base / SectorBytes);
        continue;
      }
      const std::size_t size = std::size_t{View(base).Long(row.LastAt)} + 1;
      if (!View().Has(base, size)) {
        teller_.Tell(message::TableBroken, View().At(base + row.LastAt), row.Name, "end_address",
                     "a byte of the IFO", size - 1);
      }
      const IfoView view(tables_.Data, base, size);
      if (const auto [other, added] = spans.try_emplace(base, view.At() + view.Size(), row.Name); !added) {
        teller_.Tell(message::TableBroken, View().At(row.Pointer), Head(), std::string(row.Name) + "_SA",
                     "a sector of its own", "that of " + other->second.second);
      }
      found_.emplace(row.Name, view);
    }
    std::size_t end = 0;
    for (const auto& [start, span] : spans) {
      if (start < end) {
        teller_.Tell(message::TableBroken, View().At(start), span.second, "",
                     fmt::format("from byte {} on", end), start);
      }
      end = std::max(end, span.first);
    }
    CheckMissing();
  }

  void CheckMissing() const {
    std::vector<std::string> needed =
        tables_.IsManager()
            ? std::vector<std::string>{"TT_SRPT", "VTS_ATRT"}
            : std::vector<std::string>{"VTS_PTT_SRPT", "VTS_PGCIT", "VTS_C_ADT", "VTS_VOBU_ADMAP"};
    const std::string menu = tables_.IsManager() ? "VMGM" : "VTSM";
    for (const char* table : {"_C_ADT", "_VOBU_ADMAP"}) {
      if (tables_.MenuStart != 0) {
        needed.push_back(menu + table);
      } else if (found_.contains(menu + table)) {
        teller_.Tell(message::TableLoose, vtsi::MenuVobs.Offset, menu + table, "", "none without menu VOBs",
                     "one");
      }
    }
    if (tables_.MenuStart != 0) {
      needed.push_back(menu + "_PGCI_UT");
    }
    for (const std::string& name : needed) {
      if (!found_.contains(name)) {
        teller_.Tell(message::TableBroken, vtsi::MenuVobs.Offset, name, "", "a table", "none");
      }
    }
    if (!tables_.IsManager() && !found_.contains("VTS_TMAPT")) {
      teller_.Tell(message::TimeMapLoose, vtsi::TimeMaps.Offset, "VTS_TMAPT", "", "time maps for time search",
                   "none");
    }
  }

  void ReadTables() {
    for (const auto& [name, view] : found_) {
      const std::string_view kind = std::string_view(name).substr(name.find('_') + 1);
      if (name == "TT_SRPT") {
        tables_.Titles = ReadTitleSearch(view, teller_);
      } else if (kind == "ATRT") {
        tables_.SetAttributes = ReadSetAttributes(view, teller_);
      } else if (kind == "PTT_SRPT") {
        tables_.Parts = ReadParts(view, teller_);
      } else if (kind == "PGCIT") {
        tables_.Chains = ReadIfoChains(view, name, teller_);
      } else if (kind == "PGCI_UT") {
        tables_.Languages = ReadLanguages(view, name, tables_.IsManager(), teller_);
      } else if (kind == "TMAPT") {
        tables_.TimeMaps = ReadTimeMaps(view, teller_);
      } else if (kind == "C_ADT") {
        (name.starts_with("VTS_") ? tables_.TitleCells : tables_.MenuCells) =
            ReadCellAddresses(view, name, teller_);
      } else if (kind == "VOBU_ADMAP") {
        (name.starts_with("VTS_") ? tables_.TitleVobus : tables_.MenuVobus) =
            ReadVobuMap(view, name, teller_);
      }
    }
  }

  IfoTeller teller_;
  IfoTables tables_;
  std::uint32_t matEnd_ = 0;
  std::map<std::string, IfoView> found_;
};

}  // namespace

std::optional<IfoTables> ReadIfoTables(const std::string& file, int set, bool isOurs, Bytes data,
                                       DiscFindings& findings) {
  return IfoReader(file, set, isOurs, std::move(data), findings).Read();
}

bool IsOurManager(ByteView ifo) {
  return ifo.size() >= vmgi::Size &&
         std::equal(OurProvider.begin(), OurProvider.end(), ifo.begin() + vmgi::Provider.Offset);
}

}  // namespace quorvelant
