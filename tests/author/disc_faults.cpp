#include "disc_faults.h"

#include <algorithm>
#include <set>

#include "disc/nav_layout.h"
#include "disc/pgc_layout.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"

namespace quorvelant {
namespace {

// Fields that nothing else on a disc determines: texts, permissions, colours, commands and their order, and
// what a maker may choose.
const std::set<std::string_view> FreeFields{"PVR_ID",        "VMG_POS_CD",     "VMG_CAT",
                                            "VLMS_ID",       "VERN",           "PGC_UOP_CTL",
                                            "PGC_PB_MODE",   "PGC_STILL_TIME", "PGC_SP_PLT",
                                            "TT_PTL_ID_FLD", "PTL_ID_FLD",     "C_CAT.STILL_TIME",
                                            "C_CAT.CMD_N",   "C_CAT",          "PREV_PGCN",
                                            "GOUP_PGCN",     "TT_PB_TY",       "PGCI_LU_LCD",
                                            "VMGM_V_ATR",    "VMGM_AST_ATR",   "VMGM_SPST_ATR",
                                            "VMGM_SPST_Ns",  "VMGM_AST_Ns",    "PGC_AST_CTLT",
                                            "PGC_SPST_CTLT", "PTL_MAIT_SA",    "TXTDT_MG_SA",
                                            "VOBU_CAT",      "VOBU_UOP_CTL",   "VOBU_ISRC",
                                            "BTN_COLI",      "RECI",           "BTN_OFN",
                                            "NSL_BTN_NS",    "FOSL_BTN",       "FOAC_BTN",
                                            "BTNI",          "NEXT_PGCN",      "VOB_A_STP_PTM_GAP_LEN",
                                            "BTN_SL_E_PTM",  "HLI_E_PTM",      "HLI_S_PTM",
                                            "system_header", "PGC_CMDT_SA"};

constexpr std::size_t ScrBytes = 6;  // at byte 4 of a pack

std::int64_t ScrOf(ByteView pack) {
  const std::uint64_t bits = GetBytes(pack, 4, 6);
  const std::uint64_t base = (bits >> 13 & 0x1C0000000) | (bits >> 12 & 0x3FFF8000) | (bits >> 11 & 0x7FFF);
  return static_cast<std::int64_t>(base * 300 + (bits >> 1 & 0x1FF));
}

}  // namespace

ByteView FaultSource::View(const std::string& name) const {
  const std::string& bytes = files_->at(name);
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

template <std::size_t Count>
void FaultSource::AddRecord(const std::string& file, std::size_t at,
                            const std::array<disc::RowView, Count>& rows, const std::string& table) {
  for (const disc::RowView& row : rows) {
    if (!FreeFields.contains(row.Name)) {
      for (std::size_t i = 0; i < row.Count; ++i) {
        tables_.push_back(
            {file, at + row.Offset + i * row.Width, row.Width, table + " " + std::string(row.Name)});
      }
    }
  }
}

void FaultSource::AddChain(const std::string& file, std::size_t at, const std::string& name) {
  const ByteView chain = View(file).subspan(at);
  AddRecord(file, at, pgc::Rows, name);
  const std::size_t cells = Get(chain, pgc::Cells).Value;
  const std::size_t map = Get(chain, pgc::ProgramMap).Value;
  if (cells > 0) {
    tables_.push_back({file, at + map, 1, name + " PGC_PGMAP"});
  }
  for (std::size_t i = 0; i < cells; ++i) {
    AddRecord(file, at + Get(chain, pgc::CellPlayback).Value + i * cell_playback::Size, cell_playback::Rows,
              name + " cell");
    AddRecord(file, at + Get(chain, pgc::CellPosition).Value + i * cell_position::Size, cell_position::Rows,
              name + " cell");
  }
}

void FaultSource::AddChains(const std::string& file, std::size_t table, const std::string& name) {
  const ByteView view = View(file).subspan(table);
  AddRecord(file, table, table_head::Rows, name);
  for (std::size_t i = 0; i < Get(view, table_head::Count).Value; ++i) {
    const std::size_t at = table_head::Size + i * pgc_entry::Size;
    tables_.push_back({file, table + at + pgc_entry::Start.Offset, 4, name + " PGCI_SA"});
    AddChain(file, table + Get(view.subspan(at), pgc_entry::Start).Value, name + " PGC");
  }
}

void FaultSource::AddVobMaps(const std::string& file, std::size_t cells, std::size_t vobus) {
  const ByteView view = View(file);
  if (cells == 0) {
    return;
  }
  AddRecord(file, cells, table_head::Rows, "C_ADT");
  const std::size_t end = cells + GetBytes(view, cells + 4, 4);
  for (std::size_t at = cells + table_head::Size; at < end; at += cell_address::Size) {
    AddRecord(file, at, cell_address::Rows, "C_ADT");
  }
  const std::size_t mapEnd = vobus + GetBytes(view, vobus, 4);
  for (std::size_t at = vobus; at < mapEnd; at += 4) {
    tables_.push_back({file, at, 4, "VOBU_ADMAP"});
  }
}

void FaultSource::AddManager() {
  const std::string file = "VIDEO_TS.IFO";
  const ByteView mat = View(file);
  const auto table = [&](const auto& row) { return std::size_t{Get(mat, row).Value} * SectorBytes; };
  AddRecord(file, 0, vmgi::Rows, "VMGI_MAT");
  AddChain(file, Get(mat, vmgi::FirstPlayPgc).Value, "FP_PGC");
  const std::size_t titles = table(vmgi::TitleSearch);
  AddRecord(file, titles, table_head::Rows, "TT_SRPT");
  for (std::size_t i = 0; i < GetBytes(mat, titles, 2); ++i) {
    AddRecord(file, titles + table_head::Size + i * title_entry::Size, title_entry::Rows, "TT_SRPT");
  }
  if (const std::size_t units = table(vmgi::MenuUnits); units != 0) {
    AddRecord(file, units, table_head::Rows, "PGCI_UT");
    AddRecord(file, units + table_head::Size, language_unit::Rows, "PGCI_UT");
    AddChains(file, units + GetBytes(mat, units + table_head::Size + 4, 4), "PGCI_LU");
  }
  const std::size_t attributes = table(vmgi::SetAttributes);
  AddRecord(file, attributes, table_head::Rows, "VTS_ATRT");
  AddRecord(file, attributes + GetBytes(mat, attributes + 8, 4), set_attributes::Rows, "VTS_ATR");
  AddVobMaps(file, table(vmgi::MenuCells), table(vmgi::MenuVobus));
}

void FaultSource::AddSet(const std::string& file) {
  const ByteView mat = View(file);
  const auto table = [&](const auto& row) { return std::size_t{Get(mat, row).Value} * SectorBytes; };
  AddRecord(file, 0, vtsi::Rows, "VTSI_MAT");
  AddChains(file, table(vtsi::TitlePgcs), "VTS_PGCIT");
  const std::size_t parts = table(vtsi::Chapters);
  AddRecord(file, parts, table_head::Rows, "VTS_PTT_SRPT");
  tables_.push_back({file, parts + 8, 4, "TTU_SA"});
  if (const std::size_t units = table(vtsi::MenuUnits); units != 0) {
    AddRecord(file, units, table_head::Rows, "VTSM_PGCI_UT");
    AddChains(file, units + GetBytes(mat, units + table_head::Size + 4, 4), "VTSM_PGCI_LU");
  }
  if (const std::size_t maps = table(vtsi::TimeMaps); maps != 0) {
    AddRecord(file, maps, table_head::Rows, "VTS_TMAPT");
    const std::size_t map = maps + GetBytes(mat, maps + 8, 4);
    AddRecord(file, map, time_map::Rows, "VTS_TMAP");
    for (std::size_t i = 0; i < GetBytes(mat, map + 2, 2); ++i) {
      tables_.push_back({file, map + time_map::Size + 4 * i, 4, "VTS_TMAP MAP_EN"});
    }
  }
  AddVobMaps(file, table(vtsi::MenuCells), table(vtsi::MenuVobus));
  AddVobMaps(file, table(vtsi::TitleCells), table(vtsi::TitleVobus));
}

DiscFault FaultSource::BitOf(const Piece& piece) {
  return {piece.File, piece.Offset + Draw(piece.Bytes), static_cast<unsigned>(Draw(8)), piece.Name};
}

DiscFault FaultSource::InTables() {
  if (tables_.empty()) {
    AddManager();
    for (const auto& [name, bytes] : *files_) {
      if (name.starts_with("VTS_") && name.ends_with(".IFO")) {
        AddSet(name);
      }
    }
  }
  return BitOf(tables_[Draw(tables_.size())]);
}

std::vector<std::pair<std::string, std::size_t>> FaultSource::Sectors(bool nav) const {
  std::vector<std::pair<std::string, std::size_t>> sectors;
  for (const auto& [name, bytes] : *files_) {
    for (std::size_t at = 0; name.ends_with(".VOB") && at + SectorBytes <= bytes.size(); at += SectorBytes) {
      if ((GetBytes(View(name), at + 14, 4) == 0x1BB) == nav) {
        sectors.emplace_back(name, at);
      }
    }
  }
  return sectors;
}

DiscFault FaultSource::InNavPack() {
  const auto sectors = Sectors(true);
  const auto& [file, at] = sectors[Draw(sectors.size())];
  std::vector<Piece> pieces;
  const bool shows = (GetBytes(View(file), at + nav::HliSs.Offset, 2) & 1) != 0;
  for (const disc::RowView& row : nav::Rows) {
    const bool ofButtons = row.Offset > nav::HliSs.Offset && row.Offset < nav::RecordingInfo.Offset;
    if (FreeFields.contains(row.Name) || (ofButtons && !shows)) {
      continue;
    }
    for (std::size_t i = 0; i < row.Count; ++i) {
      pieces.push_back({file, at + row.Offset + i * row.Width, row.Width, std::string(row.Name)});
    }
  }
  return BitOf(pieces[Draw(pieces.size())]);
}

// Whether the pack may be sent at the time that the fault gives it: between its neighbours.
bool FaultSource::IsLegalScr(const DiscFault& fault) const {
  const std::size_t at = fault.Offset / SectorBytes * SectorBytes;
  Bytes pack(View(fault.File).begin() + static_cast<std::ptrdiff_t>(at),
             View(fault.File).begin() + static_cast<std::ptrdiff_t>(at + SectorBytes));
  pack[fault.Offset - at] ^= static_cast<std::uint8_t>(1U << fault.Bit);
  constexpr std::int64_t Pack = 43885;
  const std::int64_t scr = ScrOf(pack);
  const bool last = at + SectorBytes >= View(fault.File).size();
  const bool after = at == 0 || scr - ScrOf(View(fault.File).subspan(at - SectorBytes)) >= Pack;
  const bool before = last || ScrOf(View(fault.File).subspan(at + SectorBytes)) - scr >= Pack;
  return after && before;
}

// The pack header, and the head of its packet without a free choice of buffer and without the last bit of a
// time stamp, which rounding may turn over.
DiscFault FaultSource::InPackHeader() {
  const auto sectors = Sectors(false);
  const auto& [file, at] = sectors[Draw(sectors.size())];
  const ByteView pack = View(file).subspan(at, SectorBytes);
  constexpr std::size_t PesAt = 14;
  const std::size_t stamps = (pack[PesAt + 7] & 0x80U) == 0 ? 0 : (pack[PesAt + 7] & 0x40U) == 0 ? 5 : 10;
  const DiscFault fault = BitOf({file, at, PesAt + 9 + stamps, "pack header"});
  const std::size_t offset = fault.Offset - at;
  const bool inScr = offset >= 4 && offset < 4 + ScrBytes;
  const bool lastOfStamp = offset >= PesAt + 9 && (offset - PesAt - 9) % 5 == 4 && fault.Bit == 1;
  // Of the flags, those for copies and priority mean nothing here.
  const bool meansNothing = offset == PesAt + 6 && fault.Bit < 4;
  const bool reserved = offset == 13 && fault.Bit >= 3;
  if ((inScr && IsLegalScr(fault)) || lastOfStamp || meansNothing || reserved) {
    return InPackHeader();
  }
  return fault;
}

}  // namespace quorvelant
