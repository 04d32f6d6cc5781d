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
    NoteAudioPack(state, index, at, firstPts);
  }
}

// Once the end of the track is known, no sound goes on after it.
void LimitToTrackEnd(MuxState& state) {
  if (state.Pictures.AtEnd() && !state.AudioLimit) {
    state.AudioLimit = state.PtsOfFields(state.Pictures.ScannedFields());
  }
}

}  // namespace

Clock InterleaveAudio(MuxState& state, Clock videoScr) {
  if (state.Audio.empty()) {
    return std::max(videoScr, state.LastScr + SectorTicks);
  }
  LimitToTrackEnd(state);
  Claims claims;
  for (;;) {
    const NextSector next = NextSectorKind({}, videoScr, ClaimsOf(state, claims), state.AudioLimit);
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
