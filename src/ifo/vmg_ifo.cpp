#include "ifo/vmg_ifo.h"

#include <algorithm>
#include <string_view>

#include "disc/disc_files.h"
#include "disc/vmgi_layout.h"
#include "ifo/cell_address_tables.h"
#include "ifo/menu_units.h"
#include "ifo/pgc_writer.h"
#include "ifo/stream_attributes.h"
#include "ifo/table_chain.h"

namespace quorvelant {
namespace {

constexpr std::uint16_t FormatVersion = 0x0011;
constexpr std::string_view ProviderId = "NOLV";
constexpr std::size_t RegionWithoutSetting = 6;  // region 7

// The head and the first-play PGC after it.
Bytes BuildHead(const EntryRecords& menu, std::size_t titleSets, std::uint8_t regionMask) {
  Bytes head(vmgi::Size);
  std::ranges::copy(ManagerId, head.begin());
  std::ranges::copy(ProviderId, head.begin() + vmgi::Provider.Offset);
  Put(head, vmgi::Version, disc::Number{FormatVersion});
  Put(head, vmgi::RegionMask, disc::Number{regionMask});
  Put(head, vmgi::Volumes, disc::Number{1});
  Put(head, vmgi::VolumeNumber, disc::Number{1});
  Put(head, vmgi::Side, disc::Number{1});
  Put(head, vmgi::TitleSets, disc::Number{titleSets});
  PutStreams(MenuStreamRows{vmgi::MenuVideo, vmgi::MenuAudioCount, vmgi::MenuAudio, vmgi::MenuSubCount},
             menu.Entry, menu.Menu, menu.Standard(), menu.Rules, head);

  const Bytes firstPlay = BuildFirstPlayPgc(menu.Disc.FirstPlay);
  Put(head, vmgi::FirstPlayPgc, disc::ByteOffset{vmgi::Size});
  Put(head, vmgi::MatLast, disc::ByteOffset{static_cast<std::uint32_t>(head.size() + firstPlay.size() - 1)});
  head.insert(head.end(), firstPlay.begin(), firstPlay.end());
  return head;
}

}  // namespace

std::uint8_t RegionMaskOf(const AllowedRegions& allowed) {
  unsigned mask = 0;
  for (std::size_t i = 0; i < allowed.size(); ++i) {
    const bool forbidden = i == RegionWithoutSetting || !allowed.at(i);
    mask |= forbidden ? 1U << i : 0U;
  }
  return static_cast<std::uint8_t>(mask);
}

Bytes BuildVideoManagerIfo(const EntryRecords& menu, std::span<const WrittenSet> sets,
                           std::uint8_t regionMask) {
  TableChain file(BuildHead(menu, sets.size(), regionMask));
  file.Add(vmgi::TitleSearch, BuildTitleSearch(sets));
  file.Add(vmgi::MenuUnits, BuildMenuUnits(menu));
  file.Add(vmgi::SetAttributes, BuildSetAttributes(sets, menu.Standard(), menu.Rules));
  file.Add(vmgi::MenuCells, BuildCellAddressTable(menu.Menu.Vobs));
  file.Add(vmgi::MenuVobus, BuildVobuMap(menu.Menu.Vobs));
  const std::uint32_t sectors = file.SectorCount().Value;
  Put(file.Head(), vmgi::SetLast, disc::Sectors{2 * sectors - 1});
  Put(file.Head(), vmgi::IfoLast, disc::Sectors{sectors - 1});
  return file.Take();
}

}  // namespace quorvelant
