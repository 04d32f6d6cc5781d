#include "mux/track_end.h"

#include <array>

#include "mux/arrivals.h"
#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/missed_marks.h"
#include "mux/mux_fault.h"
#include "mux/nav_pack.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

// The navigation packs hold addresses of VOBUs much later, so they are written when all are known.
void WriteNavPacks(const MuxState& state, std::int64_t endPts) {
  const NavSource source{state.Vobus, state.Input, state.Build.Rules, VideoStartPts, endPts};
  const SearchTables search(state.Vobus, TimingOf(state.Input.Ntsc));
  std::array<std::uint8_t, SectorBytes> sector{};
  for (std::size_t i = 0; i < state.Vobus.size(); ++i) {
    if (state.Build.Ui.StopRequested()) {
      throw MuxStopped();
    }
    BuildNavPack(source, search, i, sector);
    state.Output.Rewrite(state.Vobus[i].StartSector, sector);
  }
}

VobRecord RecordOf(const MuxState& state) {
  VobRecord vob{.VobId = state.VobId,
                .TrackIndex = state.Input.TrackIndex,
                .FirstSector = state.Vobus.front().StartSector,
                .LastSector = state.Output.TotalSectors() - 1,
                .Cells = state.Cells,
                .TimeMap = {}};
  for (const VobuRecord& vobu : state.Vobus) {
    vob.TimeMap.push_back({vobu.StartSector, vobu.CellId, vobu.EndPts - vobu.StartPts});
  }
  return vob;
}

}  // namespace

void EndTrack(MuxState& state, VobSetRecords& records) {
  const std::int64_t endPts = state.PtsOfFields(state.ElapsedFields);
  SendDueUnits(state, state.LatestPts);
  DrainAudio(state, endPts);
  CloseRecords(state, endPts);
  WarnOfDamage(state);
  WarnOfLateArrivals(state);
  WarnOfUnsentUnits(state);
  CheckButtonTimes(state, endPts);
  WarnOfDamagedSound(state);
  WarnOfAudioLengths(state, endPts);
  ReportMissedMarks(state, state.NextMark, state.Input.Marks.size());
  if (!state.Output.DryRun()) {
    WriteNavPacks(state, endPts);
  }
  records.Vobs.push_back(RecordOf(state));
  for (const VobuRecord& vobu : state.Vobus) {
    records.VobuAddressList.push_back(vobu.StartSector);
  }
  records.TotalSectors = state.Output.TotalSectors();
}

}  // namespace quorvelant
