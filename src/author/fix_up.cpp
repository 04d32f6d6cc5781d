#include "author/fix_up.h"

#include <algorithm>
#include <string_view>

#include "author/ifo_files.h"
#include "base/random.h"
#include "base/text.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"

namespace quorvelant {
namespace {

// The set a file counts for; nothing for a name that no disc file has.
std::optional<std::size_t> SetOf(std::string_view upperName) {
  if (upperName.starts_with("VTS_")) {
    return static_cast<std::size_t>(std::max(LeadingNumber(upperName.substr(4, 2)), 0));
  }
  return upperName.starts_with("VIDE") ? std::optional<std::size_t>(0) : std::nullopt;
}

// The start sector of each title's set goes into TT_SRPT, which lies at a sector of the same file.
void PatchTitleSearch(ByteSpan ifo, std::span<const SetSectors> rows) {
  const std::size_t table = std::size_t{Get(ifo, vmgi::TitleSearch).Value} * SectorBytes;
  if (table == 0 || table + table_head::Size > ifo.size()) {
    return;
  }
  std::vector<std::uint32_t> starts(1, 0);
  for (const SetSectors& row : rows) {
    starts.push_back(starts.back() + row.Total);
  }
  const std::uint64_t titles = Get(ifo.subspan(table), table_head::Count).Value;
  for (std::uint64_t i = 0; i < titles; ++i) {
    const std::size_t at = table + table_head::Size + title_entry::Size * i;
    if (at + title_entry::Size > ifo.size()) {
      return;
    }
    const ByteSpan entry = ifo.subspan(at, title_entry::Size);
    const std::size_t set = Get(entry, title_entry::TitleSet).Value;
    Put(entry, title_entry::SetStart, disc::Sectors{starts[std::min(set, rows.size())]});
  }
}

}  // namespace

DiscSectors SumSectors(std::span<const DiscFile> files) {
  DiscSectors sums;
  sums.Rows.resize(1);
  for (const DiscFile& file : files) {
    const std::string name = Upper(file.Name);
    const auto row = SetOf(name);
    if (!row) {
      sums.Foreign = sums.Foreign.empty() ? file.Name : sums.Foreign;
      continue;
    }
    sums.Rows.resize(std::max(sums.Rows.size(), *row + 1));
    SetSectors& set = sums.Rows[*row];
    const auto sectors = static_cast<std::uint32_t>((file.Size + SectorBytes / 2) / SectorBytes);
    set.Total += sectors;
    if (name.ends_with("0.VOB") || name.ends_with("S.VOB")) {
      set.MenuVob = sectors;
    }
    if (name.ends_with(".IFO")) {
      set.Ifo = sectors;
    }
  }
  return sums;
}

void PatchIfo(Bytes& ifo, std::size_t row, std::span<const SetSectors> rows) {
  if (ifo.size() < SectorBytes) {
    return;
  }
  const auto last = [](std::uint32_t sectors) { return disc::Sectors{sectors == 0 ? 0 : sectors - 1}; };
  const SetSectors& set = rows[row];
  // These two stand at the same place in both kinds of file.
  Put(ifo, vtsi::SetLast, last(set.Total));
  Put(ifo, vtsi::IfoLast, last(set.Ifo));
  if (set.MenuVob != 0) {
    Put(ifo, vtsi::MenuVobs, disc::Sectors{set.Ifo});
  }
  if (row == 0) {
    PatchTitleSearch(ifo, rows);
  } else if (set.MenuVob != 0) {
    Put(ifo, vtsi::TitleVobs, disc::Sectors{set.Ifo + set.MenuVob});
  }
}

std::optional<std::string> FixUp(const std::string& folder, UserInterface& ui) {
  const DiscSectors sums = SumSectors(ListFiles(folder));
  if (!sums.Foreign.empty()) {
    return sums.Foreign;
  }
  Random files(ui);
  files.DimFiles(1);
  for (std::size_t row = 0; row < sums.Rows.size(); ++row) {
    if (sums.Rows[row].Ifo == 0) {
      continue;
    }
    const std::string base = folder + "/" + IfoBaseName(row);
    Bytes ifo = ReadWhole(base + ".IFO", files);
    PatchIfo(ifo, row, sums.Rows);
    WriteIfoAndBackup(base, ifo, files);
  }
  return std::nullopt;
}

}  // namespace quorvelant
