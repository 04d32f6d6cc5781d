// A small disc in memory with records as the multiplexer would leave them, for tests of the tables.
#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

#include "disc/video_standard.h"
#include "ifo/domain_records.h"
#include "model/default_structure.h"
#include "model/keys.h"

namespace quorvelant {

// VOBs of one track each. A cell is `framesPerCell` frames in VOBUs of 12 frames and 100 sectors; scene
// i of the track is cell i + 1.
inline void AddVob(DomainRecords& domain, int track, std::vector<int> framesPerCell,
                   CarriedStreams carried = {}, const FrameTiming& timing = PalTiming) {
  VobSetRecords& set = domain.Vobs;
  VobRecord vob;
  vob.VobId = static_cast<std::uint16_t>(set.Vobs.size() + 1);
  vob.TrackIndex = track;
  vob.FirstSector = set.TotalSectors;
  int scene = 0;
  for (const int frames : framesPerCell) {
    CellRecord cell;
    cell.CellId = static_cast<std::uint8_t>(scene + 1);
    cell.Scene = scene++;
    cell.Frames = frames;
    cell.StartSector = set.TotalSectors;
    for (int left = frames; left > 0; left -= 12) {
      cell.LastVobuStartSector = set.TotalSectors;
      set.VobuAddressList.push_back(set.TotalSectors);
      vob.TimeMap.push_back({set.TotalSectors, cell.CellId, std::min(left, 12) * timing.FramePeriod});
      set.TotalSectors += 100;
    }
    cell.EndSector = set.TotalSectors - 1;
    vob.Cells.push_back(cell);
  }
  vob.LastSector = set.TotalSectors - 1;
  set.Vobs.push_back(vob);
  domain.AddVob(set.Vobs.size() - 1, carried);
}

// A program with a cell for each scene of a track named.
inline PG_P ProgramOf(int track, const std::vector<int>& scenes) {
  PG_P program;
  for (const int scene : scenes) {
    Cell_P cell;
    cell.SegmentUsed = track;
    cell.pScene = scene;
    program.Cell.Add(cell);
  }
  return program;
}

inline PGC_P ChainOf(const std::string& name, const std::vector<PG_P>& programs) {
  PGC_P chain;
  chain.PGCName = name;
  for (const PG_P& program : programs) {
    chain.PG.Add(program);
  }
  return chain;
}

// The project's entries are the Video Manager and title set 1 without titles or languages of its own.
struct SyntheticDisc {
  SyntheticDisc() {
    Disc.Disc.Add({});
    Disc.Disc.Add({});
  }
  VTS_P& Set() { return *Disc.Disc.Item(2); }
  EntryRecords Records(const Rules& rules = Rules::Players) {
    return {Disc, Set(), Menu, Titles, rules, Ntsc};
  }
  Title_P& AddTitle(const std::vector<PGC_P>& chains) {
    Title_P title;
    for (const PGC_P& chain : chains) {
      title.PGC.Add(chain);
    }
    return Set().Title.Add(title);
  }

  Project Disc;
  DomainRecords Menu, Titles;
  bool Ntsc = false;
};

inline std::uint64_t At(const Bytes& bytes, std::size_t offset, unsigned width) {
  return GetBytes(bytes, offset, width);
}

// The hex digits of `count` bytes, in words of four; by default all from `from` on.
inline std::string Words(const Bytes& bytes, std::size_t from = 0, std::size_t count = SIZE_MAX) {
  std::string words;
  for (std::size_t at = from; at < std::min(bytes.size(), from + std::min(count, bytes.size())); ++at) {
    words += fmt::format("{}{:02X}", at > from && (at - from) % 4 == 0 ? " " : "", bytes[at]);
  }
  return words;
}

}  // namespace quorvelant
