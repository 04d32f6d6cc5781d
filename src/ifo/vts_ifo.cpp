#include "ifo/vts_ifo.h"

#include <algorithm>
#include <string_view>

#include "ifo/attributes.h"
#include "ifo/cell_address_tables.h"
#include "ifo/menu_units.h"
#include "ifo/table_chain.h"
#include "ifo/time_maps.h"
#include "ifo/title_tables.h"
#include "ifo/vtsi_layout.h"

namespace quorvelant {
namespace {

constexpr std::string_view FileId = "DVDVIDEO-VTS";
constexpr std::uint16_t FormatVersion = 0x0011;

void PutMenuStreams(const EntryRecords& records, std::string_view standard, ByteSpan head) {
  Put(head, vtsi::MenuVideo, VideoAttributes(records.Entry, Domain::Menu, standard));
  if (!records.Menu.Audio.empty()) {
    Put(head, vtsi::MenuAudioCount, Number{1});
    Put(head, vtsi::MenuAudio, AudioAttributes(records.Menu.Audio.front(), Domain::Menu));
  }
  Put(head, vtsi::MenuSubCount, Number{records.Menu.Subs.empty() ? 0U : 1U});
}

void PutTitleStreams(const EntryRecords& records, std::string_view standard, ByteSpan head) {
  Put(head, vtsi::TitleVideo, VideoAttributes(records.Entry, Domain::Title, standard));
  const std::size_t audio = std::min(records.Title.Audio.size(), AudioStreamCount);
  Put(head, vtsi::TitleAudioCount, Number{audio});
  for (std::size_t i = 0; i < audio; ++i) {
    Put(head, vtsi::TitleAudio, AudioAttributes(records.Title.Audio[i], Domain::Title), i);
  }
  const std::size_t subs = std::min(records.Title.Subs.size(), SubStreamCount);
  Put(head, vtsi::TitleSubCount, Number{subs});
  for (std::size_t i = 0; i < subs; ++i) {
    Put(head, vtsi::TitleSub, SubpictureAttributes(records.Title.Subs[i]), i);
  }
}

Bytes BuildHead(const EntryRecords& records) {
  const std::string_view standard = records.Ntsc ? "NTSC" : "PAL";
  Bytes head(vtsi::Size);
  std::ranges::copy(FileId, head.begin());
  Put(head, vtsi::Version, Number{FormatVersion});
  Put(head, vtsi::MatLast, ByteOffset{vtsi::Size - 1});
  PutMenuStreams(records, standard, head);
  PutTitleStreams(records, standard, head);
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
  Put(file.Head(), vtsi::IfoLast, Sectors{file.SectorCount().Value - 1});
  Put(file.Head(), vtsi::TitleVobs, file.SectorCount());
  return file.Take();
}

}  // namespace quorvelant
