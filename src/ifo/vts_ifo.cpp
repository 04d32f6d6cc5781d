#include "ifo/vts_ifo.h"

#include <algorithm>

#include "disc/disc_files.h"
#include "disc/vtsi_layout.h"
#include "ifo/cell_address_tables.h"
#include "ifo/menu_units.h"
#include "ifo/stream_attributes.h"
#include "ifo/table_chain.h"
#include "ifo/time_maps.h"
#include "ifo/title_tables.h"

namespace quorvelant {
namespace {

constexpr std::uint16_t FormatVersion = 0x0011;

Bytes BuildHead(const EntryRecords& records) {
  using namespace vtsi;  // NOLINT(google-build-using-namespace): the rows below
  Bytes head(Size);
  std::ranges::copy(TitleSetId, head.begin());
  Put(head, Version, disc::Number{FormatVersion});
  Put(head, MatLast, disc::ByteOffset{Size - 1});
  PutStreams(MenuStreamRows{MenuVideo, MenuAudioCount, MenuAudio, MenuSubCount}, records.Entry, records.Menu,
             records.Standard(), records.Rules, head);
  PutStreams(TitleStreamRows{TitleVideo, TitleAudioCount, TitleAudio, TitleSubCount, TitleSub}, records.Entry,
             records.Title, records.Standard(), records.Rules, head);
  return head;
}

Bytes TimeMapsOrNone(const EntryRecords& records, Log& log) {
  try {
    return BuildTimeMaps(records);
  } catch (const TimeMapError&) {
    log.WriteText(TimeMapFailed);
    return {};
  }
}

}  // namespace

Bytes BuildTitleSetIfo(const EntryRecords& records, Log& log) {
  TableChain file(BuildHead(records));
  file.Add(vtsi::Chapters, BuildChapterTable(records));
  file.Add(vtsi::TitlePgcs, BuildTitlePgcTable(records));
  file.Add(vtsi::MenuUnits, BuildMenuUnits(records));
  file.Add(vtsi::TimeMaps, TimeMapsOrNone(records, log));
  file.Add(vtsi::MenuCells, BuildCellAddressTable(records.Menu.Vobs));
  file.Add(vtsi::MenuVobus, BuildVobuMap(records.Menu.Vobs));
  file.Add(vtsi::TitleCells, BuildCellAddressTable(records.Title.Vobs));
  file.Add(vtsi::TitleVobus, BuildVobuMap(records.Title.Vobs));
  Put(file.Head(), vtsi::IfoLast, disc::Sectors{file.SectorCount().Value - 1});
  Put(file.Head(), vtsi::TitleVobs, file.SectorCount());
  return file.Take();
}

}  // namespace quorvelant
