#include "mux/interleave.h"

#include <algorithm>
#include <array>
#include <span>

#include "mux/mux_fault.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

using Claims = std::array<AudioClaim, AudioStreamCount>;

std::span<const AudioClaim> ClaimsOf(const MuxState& state, Claims& claims) {
  const std::size_t count = std::min(state.Audio.size(), claims.size());
  for (std::size_t i = 0; i < count; ++i) {
    claims[i] = state.Audio[i].Claim();
  }
  return std::span(claims).first(count);
}

void WriteOne(MuxState& state, std::size_t index) {
  if (state.Build.Ui.StopRequested()) {
    throw MuxStopped();
  }
  AudioState& stream = state.Audio[index];
  const std::int64_t firstPts = stream.NextPts;
  const std::uint32_t at = state.Output.TotalSectors();
  state.LastScr = std::max(stream.NextScr, state.LastScr + SectorTicks);
  const SystemClockReference scr = ScrOf(state.LastScr, PackKind::AudioOrSubpicture, state.Build.Rules);
  const AudioPack pack = WriteAudioPack(stream, state.Output.NextSector(), scr, state.AudioLimit);
  AdvanceAudioClock(stream, state.LastScr, pack.PayloadBytes);
  if (pack.Frames > 0) {
    stream.Late.Note(state.LastScr, firstPts);
    NoteAudioPack(state, index, at, firstPts);
  }
}

// Once the end of the track is known, no sound goes on after it.
void LimitToTrackEnd(MuxState& state) {
  if (state.Pictures.AtEnd() && !state.AudioLimit) {
    state.AudioLimit = state.PtsOfFields(state.Pictures.ScannedFields());
  }
}

// The stream that is furthest behind by a sector or more: it would get one pack for every pack of video,
// which is too little for PCM of much more than half the mux rate.
NextSector OverdueStream(const MuxState& state) {
  NextSector overdue;
  Clock earliest = state.LastScr - SectorTicks + Clock{1};
  for (std::size_t i = 0; state.Build.Rules.OverdueAudioGoesFirst && i < state.Audio.size(); ++i) {
    const AudioState& stream = state.Audio[i];
    const bool waits = state.AudioLimit && stream.Claim().NextPts >= *state.AudioLimit;
    if (!waits && stream.NextScr.Units > 0 && stream.PacksSent > 1 && stream.Due < earliest) {
      earliest = stream.Due;
      overdue = {SectorKind::Audio, i};
    }
  }
  return overdue;
}

}  // namespace

Clock InterleaveAudio(MuxState& state, Clock videoScr) {
  if (state.Audio.empty()) {
    return std::max(videoScr, state.LastScr + SectorTicks);
  }
  LimitToTrackEnd(state);
  Claims claims;
  for (;;) {
    NextSector next = NextSectorKind({}, videoScr, ClaimsOf(state, claims), state.AudioLimit);
    if (next.Kind != SectorKind::Audio) {
      next = OverdueStream(state);
    }
    if (next.Kind != SectorKind::Audio) {
      return std::max(videoScr, state.LastScr + SectorTicks);
    }
    WriteOne(state, next.Stream);
  }
}

void SendAudioAhead(MuxState& state, Clock navScr, Clock decodeTime) {
  LimitToTrackEnd(state);
  Claims claims;
  while (state.LastScr + SectorTicks < decodeTime) {
    const NextSector next =
        NextSectorKind(navScr, navScr + SectorTicks, ClaimsOf(state, claims), state.AudioLimit);
    if (next.Kind != SectorKind::Audio) {
      return;
    }
    WriteOne(state, next.Stream);
  }
}

void DrainAudio(MuxState& state, std::int64_t endPts) {
  state.AudioLimit = endPts;
  Claims claims;
  for (;;) {
    const NextSector next = NextSectorKind({}, {}, ClaimsOf(state, claims), state.AudioLimit);
    if (next.Kind != SectorKind::Audio) {
      return;
    }
    WriteOne(state, next.Stream);
  }
}

}  // namespace quorvelant
