#include "ifo/pgc_writer.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "base/timecode.h"
#include "disc/bcd_time.h"
#include "disc/command_hex.h"
#include "disc/limits.h"
#include "disc/pgc_layout.h"
#include "ifo/attributes.h"
#include "model/chain_palette.h"

namespace quorvelant {
namespace {

using CellsOfProgram = std::vector<std::pair<const Cell_P*, WrittenCell>>;

// Programs and cells that were written.
struct Content {
  std::vector<std::uint8_t> FirstCells;  // a byte a program: the number of its first cell
  CellsOfProgram Cells;
  std::int64_t Frames = 0;
};

Content ContentOf(const PGC_P& chain, const DomainRecords& records, const Rules& rules, bool ntsc) {
  Content content;
  for (const PG_P* program : Live(chain.PG)) {
    const CellsOfProgram cells = WrittenCells(*program, records);
    if (cells.empty() || content.Cells.size() + cells.size() > MostCells) {
      continue;
    }
    content.FirstCells.push_back(static_cast<std::uint8_t>(content.Cells.size() + 1));
    for (const auto& cell : cells) {
      content.Frames += FramesOf(*cell.second.Cell, ntsc, rules);
      content.Cells.push_back(cell);
    }
  }
  return content;
}

std::vector<const VMICommand_P*> LiveCommands(const CommandList& list) {
  std::vector<const VMICommand_P*> live;
  for (const VMICommand_P& command : list) {
    if (!command.Deleted) {
      live.push_back(&command);
    }
  }
  return live;
}

// After the head, or nothing where there is no command.
void AppendCommands(const PGC_P& chain, Bytes& bytes) {
  const std::array lists{LiveCommands(chain.PreCommands), LiveCommands(chain.PostCommands),
                         LiveCommands(chain.CellCommands)};
  const std::size_t count = lists[0].size() + lists[1].size() + lists[2].size();
  if (count == 0) {
    return;
  }
  const std::size_t start = bytes.size();
  const std::size_t length = pgc_commands::Size + count * sizeof(CommandBytes);
  Put(bytes, pgc::Commands, disc::ByteOffset{static_cast<std::uint32_t>(start)});
  bytes.resize(start + pgc_commands::Size);
  const ByteSpan head = ByteSpan(bytes).subspan(start);
  Put(head, pgc_commands::PreCount, disc::Number{lists[0].size()});
  Put(head, pgc_commands::PostCount, disc::Number{lists[1].size()});
  Put(head, pgc_commands::CellCount, disc::Number{lists[2].size()});
  Put(head, pgc_commands::Last, disc::ByteOffset{static_cast<std::uint32_t>(length - 1)});
  for (const auto& list : lists) {
    for (const VMICommand_P* command : list) {
      const auto code = ParseCommandHex(command->CommandHex);
      bytes.insert(bytes.end(), code.begin(), code.end());
    }
  }
}

// Whether a cell goes on where the cell ahead of it in the chain ended.
bool ContinuesClock(const Content& content, std::size_t index) {
  if (index == 0) {
    return false;
  }
  const WrittenCell& former = content.Cells[index - 1].second;
  const WrittenCell& cell = content.Cells[index].second;
  return former.Vob == cell.Vob && former.Cell->CellId + 1 == cell.Cell->CellId;
}

std::uint8_t CellCategory(const Content& content, std::size_t index, const Rules& rules) {
  const bool restarts = rules.MarkClockRestart && !ContinuesClock(content, index);
  return content.Cells[index].first->Seamless && !restarts ? cell_playback::Seamless
                                                           : cell_playback::ClockRestarts;
}

void AppendPlayback(const Content& content, const Rules& rules, bool ntsc, Bytes& bytes) {
  Put(bytes, pgc::CellPlayback, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
  for (std::size_t i = 0; i < content.Cells.size(); ++i) {
    const auto& [cell, written] = content.Cells[i];
    bytes.resize(bytes.size() + cell_playback::Size);
    const ByteSpan entry = ByteSpan(bytes).last(cell_playback::Size);
    Put(entry, cell_playback::Category, disc::Number{CellCategory(content, i, rules)});
    Put(entry, cell_playback::StillTime, disc::Number{static_cast<std::uint8_t>(cell->StillTime)});
    Put(entry, cell_playback::Command, disc::Number{static_cast<std::uint8_t>(cell->CellCommand)});
    Put(entry, cell_playback::PlaybackTime, ToBcdTime(FramesOf(*written.Cell, ntsc, rules), ntsc ? 30 : 25));
    Put(entry, cell_playback::FirstVobu, disc::Sectors{written.Cell->StartSector});
    Put(entry, cell_playback::LastVobu, disc::Sectors{written.Cell->LastVobuStartSector});
    Put(entry, cell_playback::LastSector, disc::Sectors{written.Cell->EndSector});
  }
}

void AppendPositions(const Content& content, Bytes& bytes) {
  Put(bytes, pgc::CellPosition, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
  for (const auto& [cell, written] : content.Cells) {
    bytes.resize(bytes.size() + cell_position::Size);
    const ByteSpan entry = ByteSpan(bytes).last(cell_position::Size);
    Put(entry, cell_position::VobId, disc::Number{written.Vob->VobId});
    Put(entry, cell_position::CellId, disc::Number{written.Cell->CellId});
  }
}

void AppendContent(const Content& content, const Rules& rules, bool ntsc, Bytes& bytes) {
  if (content.Cells.empty()) {
    return;
  }
  Put(bytes, pgc::Programs, disc::Number{content.FirstCells.size()});
  Put(bytes, pgc::Cells, disc::Number{content.Cells.size()});
  Put(bytes, pgc::PlaybackTime, ToBcdTime(content.Frames, ntsc ? 30 : 25));
  Put(bytes, pgc::ProgramMap, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size())});
  bytes.insert(bytes.end(), content.FirstCells.begin(), content.FirstCells.end());
  bytes.resize(bytes.size() + bytes.size() % 2);  // the cell table stands on an even offset
  AppendPlayback(content, rules, ntsc, bytes);
  AppendPositions(content, bytes);
}

// The streams of the tracks of all cells, without those that the title's own policy excludes.
CarriedStreams UsedStreams(const PGC_P& chain, const PgcPlace& place, const DomainRecords& records) {
  CarriedStreams used;
  for (const Cell_P* cell : LiveCells(chain)) {
    const CarriedStreams carried = records.StreamsOf(*cell);
    used.Audio |= carried.Audio;
    used.Subs |= carried.Subs;
  }
  if (place.Title != nullptr) {
    for (std::size_t i = 0; i < AudioStreamCount; ++i) {
      used.Audio[i] = used.Audio[i] && (!place.Title->Custom || place.Title->AudioAssignments.at(i));
    }
    for (std::size_t i = 0; i < SubStreamCount; ++i) {
      used.Subs[i] = used.Subs[i] && (!place.Title->SubCustom || place.Title->SubAssignments.at(i));
    }
  }
  return used;
}

// Entry i is row i of the stream map; a menu has entry 0 alone.
template <class Map>
std::size_t EntriesOf(const Map& map, Domain domain, std::size_t most) {
  return std::min(map.size(), domain == Domain::Menu ? 1 : most);
}

std::uint64_t StreamNumber(std::int32_t number, std::uint64_t most) {
  return number < 0 ? 0 : std::min(static_cast<std::uint64_t>(number), most);
}

void PutAudioControl(const PGC_P& chain, const PgcPlace& place, const DomainRecords& records,
                     const CarriedStreams& used, ByteSpan bytes) {
  for (std::size_t i = 0; i < EntriesOf(records.Audio, place.Domain, AudioStreamCount); ++i) {
    const auto stream = static_cast<std::size_t>(records.Audio[i].StreamNumber);
    if (stream < AudioStreamCount && used.Audio[stream]) {
      const std::uint64_t number = StreamNumber(chain.AudioAssignments.at(stream), AudioStreamCount - 1);
      Put(bytes, pgc::AudioControl, disc::Number{(pgc::StreamAvailable | number) << 8}, i);
    }
  }
}

// One number a display: 4:3, wide, letterbox, pan-scan.
std::uint64_t SubControl(const PGC_P& chain, std::size_t stream, const VideoInfo_P& video,
                         const Rules& rules) {
  const auto number = [&](const auto& map) { return StreamNumber(map.at(stream), SubStreamCount - 1); };
  const std::uint64_t available = std::uint64_t{pgc::StreamAvailable} << 24;
  const std::uint64_t wide = number(chain.WideAssignments) << 16;
  const std::uint64_t letter = number(chain.LetterAssignments) << 8;
  if (video.Aspect != "4:3") {
    return available | wide | letter | (rules.PanScanSubNumbers ? number(chain.PanAssignments) : 0);
  }
  if (!video.Pan) {
    return available | number(chain.NormalAssignments) << 24;
  }
  return available | wide | number(chain.PanAssignments) | (video.Letter ? letter : 0);
}

void PutSubControl(const PGC_P& chain, const PgcPlace& place, const DomainRecords& records,
                   const CarriedStreams& used, ByteSpan bytes) {
  const VTS_P& entry = place.Records.Entry;
  const VideoInfo_P& video = place.Domain == Domain::Title ? entry.VTSTitleInfo : entry.VTSMenuInfo;
  for (std::size_t i = 0; i < EntriesOf(records.Subs, place.Domain, SubStreamCount); ++i) {
    const auto stream = static_cast<std::size_t>(records.Subs[i].StreamNumber);
    if (stream < SubStreamCount && used.Subs[stream]) {
      Put(bytes, pgc::SubControl, disc::Number{SubControl(chain, stream, video, place.Records.Rules)}, i);
    }
  }
}

void PutLinks(const PGC_P& chain, const PgcPlace& place, ByteSpan bytes) {
  const bool menu = place.Domain == Domain::Menu;
  Put(bytes, pgc::Next, disc::Number{place.Numbers.Of(chain.NextPGC)});
  if (!menu) {
    Put(bytes, pgc::Previous, disc::Number{place.Numbers.Of(chain.PrevPGC)});
  }
  const bool resumes = menu && Contains(Lower(chain.GoUpPGC), "resume");
  Put(bytes, pgc::GoUp, disc::Number{resumes ? pgc::GoUpResumes : place.Numbers.Of(chain.GoUpPGC)});
}

// Bit 7 shuffles; the rest is the number of programs to play, less one.
std::uint8_t PlaybackMode(const PGC_P& chain) {
  if (chain.PlayBackMode == PlayBack::Sequential) {
    return 0;
  }
  const auto count = static_cast<std::uint8_t>(std::clamp(chain.Repeat - 1, 0, 0x7F));
  return chain.PlayBackMode == PlayBack::Shuffle ? count | 0x80 : count;
}

void PutPalette(const PGC_P& chain, const EntryRecords& records, ByteSpan bytes) {
  const Palette_P* palette = Live(chain.PG).empty() ? nullptr : PaletteOf(chain, records.Disc);
  const bool legible = records.Rules.LegiblePalette && ShowsOverlay(chain, records.Disc.Tracks);
  if (palette == nullptr && !legible) {
    return;
  }
  const auto& colors = palette == nullptr ? LegiblePalette : palette->PaletteColors;
  for (std::size_t i = 0; i < colors.size(); ++i) {
    Put(bytes, pgc::Palette, PaletteEntry(colors[i]), i);
  }
}

}  // namespace

std::vector<std::pair<const Cell_P*, WrittenCell>> WrittenCells(const PG_P& program,
                                                                const DomainRecords& records) {
  CellsOfProgram cells;
  for (const Cell_P* cell : Live(program.Cell)) {
    if (const auto written = records.Find(*cell)) {
      cells.emplace_back(cell, *written);
    }
  }
  return cells;
}

Bytes BuildPgc(const PGC_P& chain, const PgcPlace& place) {
  const EntryRecords& records = place.Records;
  const bool title = place.Domain == Domain::Title;
  const DomainRecords& domain = title ? records.Title : records.Menu;
  const CarriedStreams used = UsedStreams(chain, place, domain);

  Bytes bytes(pgc::Size);
  Put(bytes, pgc::UserOperations, disc::Number{chain.Uops.to_ulong()});
  PutAudioControl(chain, place, domain, used, bytes);
  PutSubControl(chain, place, domain, used, bytes);
  PutLinks(chain, place, bytes);
  if (title) {
    Put(bytes, pgc::PlaybackMode, disc::Number{PlaybackMode(chain)});
  }
  Put(bytes, pgc::StillTime, disc::Number{static_cast<std::uint8_t>(chain.StillTime)});
  PutPalette(chain, records, bytes);
  AppendCommands(chain, bytes);
  AppendContent(ContentOf(chain, domain, records.Rules, records.Ntsc), records.Rules, records.Ntsc, bytes);
  return bytes;
}

Bytes BuildFirstPlayPgc(const PGC_P& chain) {
  Bytes bytes(pgc::Size);
  Put(bytes, pgc::UserOperations, disc::Number{chain.Uops.to_ulong()});
  Put(bytes, pgc::StillTime, disc::Number{static_cast<std::uint8_t>(chain.StillTime)});
  AppendCommands(chain, bytes);
  return bytes;
}

}  // namespace quorvelant
