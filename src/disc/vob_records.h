// What the multiplexer leaves for the navigation packs and the IFO tables. The IFO writers read
// these and never open a VOB.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "disc/clock.h"
#include "disc/limits.h"

namespace quorvelant {

inline constexpr std::uint32_t NoSubpictureSync = 0x7FFFFFFF;

// One VOBU, in memory while its track is written. Sectors count through the whole VOB set unless the
// name says otherwise; times are 90 kHz ticks on the VOB's clock.
struct VobuRecord {
  std::uint32_t StartSector = 0;  // the NAV pack
  std::uint32_t EndSector = 0;    // its last sector
  int FileNumber = 0;             // which numbered VOB file holds the NAV pack
  std::uint32_t FileSector = 0;   // the NAV pack within that file
  std::uint16_t VobId = 0;
  std::uint8_t CellId = 0;
  bool LastOfCell = false;
  bool HasVideo = false;
  Clock NavScr;                 // the NAV pack's SCR
  std::int64_t StartPts = 0;    // VOBU_S_PTM
  std::int64_t EndPts = 0;      // VOBU_E_PTM: the next record's start, or the end of the last picture
  std::int64_t SeqEndPts = 0;   // VOBU_SE_E_PTM; 0 without a sequence end code
  std::int64_t CellFields = 0;  // fields of its cell shown before it: C_ELTM
  std::size_t Mark = 0;         // index of the track's mark that opened the cell
  // Sector of each stream's first audio pack whose first frame is due at or after StartPts; 0 for none.
  std::array<std::uint32_t, AudioStreamCount> AudioSync{};
  // Distance in sectors back to the unit shown at the start, or NoSubpictureSync.
  std::array<std::uint32_t, SubStreamCount> SubSync{};
  // Last sectors of the first, second and third reference picture; 0 where there are fewer.
  std::array<std::uint32_t, 3> RefEnds{};
};

// One cell of a VOB. `Scene` is the index of the scene in the track whose mark opened it: a mark that
// opened no cell leaves a gap in the scenes, never in the cell ids.
struct CellRecord {
  std::uint8_t CellId = 0;  // from 1 within the VOB
  int Scene = 0;
  std::uint32_t StartSector = 0;
  std::uint32_t EndSector = 0;
  std::uint32_t LastVobuStartSector = 0;
  std::int64_t StartPts = 0;
  std::int64_t EndPts = 0;
  int Frames = 0;  // the nearest whole frame
};

// One VOBU of a title VOB for the time map.
struct TimeMapRecord {
  std::uint32_t Sector = 0;
  std::uint8_t CellId = 0;
  std::int64_t LengthTicks = 0;  // 90 kHz
};

// One VOB: what a single track became.
struct VobRecord {
  std::uint16_t VobId = 0;
  int TrackIndex = 0;  // in Tracks
  std::uint32_t FirstSector = 0;
  std::uint32_t LastSector = 0;
  std::vector<CellRecord> Cells;
  std::vector<TimeMapRecord> TimeMap;
};

// All VOBs of one domain, in the order written.
struct VobSetRecords {
  std::vector<VobRecord> Vobs;
  std::vector<std::uint32_t> VobuAddressList;  // StartSector of every VOBU
  std::uint32_t TotalSectors = 0;
};

}  // namespace quorvelant
