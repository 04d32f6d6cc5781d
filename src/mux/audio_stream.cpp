#include "mux/audio_stream.h"

#include <algorithm>

#include "base/counted.h"
#include "disc/audio_start.h"
#include "model/messages.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr std::int64_t Ac3FrameTicks = 2880;
constexpr std::int64_t PcmFrameTicks = 150;
constexpr std::int64_t PcmHeaderBytes = 7;
constexpr std::int64_t Ac3PackBytes = 2016;

// Sectors that a pack may come late: the step of the grid, a video pack under way, its own arrival, one
// more to spare, and a pack of each other stream.
constexpr std::size_t LateSectors = 4;

Clock Steps(std::size_t count) {
  return {SectorTicks.Units * static_cast<std::int64_t>(count)};
}

void SetFirstClocks(AudioState& stream, std::size_t index, const MuxInput& input, const Rules& rules) {
  const std::size_t count = input.Audio.size();
  const std::int64_t delayMs = stream.Input->DelayMs;
  if (!IsDelayKept(delayMs, index, count, rules)) {
    throw MuxFault(message::AudioDelayUnfit, {}, stream.Input->StreamNumber, input.Name, delayMs,
                   LeastDelayAtAllMs(index, count, rules), MostDelayAtAllMs);
  }
  const AudioStart start = StartOfAudio(delayMs, index, count, rules);
  stream.FirstScr = start.FirstScr;
  stream.SecondScr = start.SecondScr;
  stream.NextPts = start.FirstPts;
  stream.DecodeTime = Clock::FromTicks(stream.NextPts - stream.FrameTicks);
  stream.Due = stream.FirstScr;
  stream.NextScr = stream.FirstScr;
}

AudioState OpenStream(Random& files, const MuxInput& input, std::size_t index, const Rules& rules) {
  const MuxAudioStream& from = input.Audio[index];
  PcmFormat pcm;
  if (from.Pcm && !PcmFormatOf(from.Traits, rules, pcm)) {
    throw MuxFault(message::PcmUnfit, {}, from.StreamNumber, input.Name, pcm.Bits, pcm.KiloHertz,
                   Counted(pcm.Channels, "channel"));
  }
  const int slot = slot::FirstAudio + static_cast<int>(index);
  AudioState stream{&from, AudioSource(files, slot, from, from.Pcm ? pcm.SourceSampleBytes() : 1), pcm};
  if (from.Pcm) {
    stream.FrameBytes = static_cast<std::int64_t>(pcm.DiscBytes(pcm.SamplesPerFrame()));
    stream.FrameTicks = PcmFrameTicks;
  } else {
    FindFirstAc3Frame(stream, rules);
    stream.FrameTicks = Ac3FrameTicks;
  }
  stream.BufferBytes = AudioBufferBytes(stream.FrameBytes, stream.FrameTicks, input.Audio.size());
  SetFirstClocks(stream, index, input, rules);
  if (stream.Source.Exhausted()) {
    stream.NextScr = {};
  }
  return stream;
}

}  // namespace

std::int64_t AudioBufferBytes(std::int64_t frameBytes, std::int64_t frameTicks, std::size_t streams) {
  constexpr std::int64_t Usual = 4096;
  const std::int64_t late = Steps(LateSectors + streams - 1).WholeTicks();
  const std::int64_t whileLate = (frameBytes * late + frameTicks - 1) / frameTicks;
  return std::max({Usual, 2 * frameBytes, Ac3PackBytes + PcmHeaderBytes + whileLate});
}

AudioClaim AudioState::Claim() const {
  const bool open = OpenFrameBytes > 0 || OpenFrameSamples > 0;
  return {NextScr, NextPts - (open ? FrameTicks : 0)};
}

double AudioState::SecondsLeft() const {
  const double sourceFrame = Input->Pcm ? static_cast<double>(Pcm.SourceBytes(Pcm.SamplesPerFrame()))
                                        : static_cast<double>(FrameBytes);
  return static_cast<double>(Source.BytesLeft()) / sourceFrame * static_cast<double>(FrameTicks) / 90000;
}

std::vector<AudioState> OpenAudioStreams(Random& files, const MuxInput& input, const Rules& rules) {
  std::vector<AudioState> streams;
  streams.reserve(input.Audio.size());
  for (std::size_t i = 0; i < input.Audio.size(); ++i) {
    streams.push_back(OpenStream(files, input, i, rules));
  }
  return streams;
}

std::int64_t AudioEndPts(const AudioState& stream) {
  const auto sampleBytes =
      stream.Input->Pcm ? static_cast<std::int64_t>(stream.Pcm.SourceSampleBytes()) : stream.FrameBytes;
  std::int64_t samples = 0;
  for (const std::uint64_t bytes : stream.Input->DataBytes) {
    samples += static_cast<std::int64_t>(bytes) / sampleBytes;
  }
  if (!stream.Input->Pcm) {
    return stream.NextPts + samples * stream.FrameTicks;
  }
  const std::int64_t frame = stream.Pcm.SamplesPerFrame();
  return stream.NextPts + (samples * stream.FrameTicks + frame - 1) / frame;
}

AudioPack WriteAudioPack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                         std::optional<std::int64_t> limit) {
  const AudioPack pack =
      stream.Input->Pcm ? WritePcmPack(stream, sector, scr, limit) : WriteAc3Pack(stream, sector, scr, limit);
  stream.NextPts += stream.FrameTicks * pack.Frames;
  return pack;
}

void AdvanceAudioClock(AudioState& stream, Clock scr, std::size_t payloadBytes) {
  const auto payload = static_cast<std::int64_t>(payloadBytes);
  stream.PacksSent = std::min(stream.PacksSent + 1, 3);
  if (stream.Source.Exhausted()) {
    stream.NextScr = {};
    return;
  }
  if (stream.PacksSent <= 2) {
    stream.Fill += payload;
  }
  if (stream.PacksSent == 1) {
    stream.Due = stream.SecondScr;
  } else {
    // The next pack goes when a frame leaves the buffer that makes room for it.
    const std::int64_t next = stream.Input->Pcm ? payload : Ac3PackBytes;
    const std::int64_t room = stream.BufferBytes - next - (stream.Input->Pcm ? PcmHeaderBytes : 0);
    while (stream.Fill > room) {
      stream.Fill -= stream.FrameBytes;
      stream.DecodeTime += Clock::FromTicks(stream.FrameTicks);
    }
    stream.Fill += next;
    stream.Due = stream.DecodeTime;
  }
  AlignAudioClock(stream, scr);
}

void AlignAudioClock(AudioState& stream, Clock scr) {
  if (stream.NextScr.Units <= 0) {
    return;
  }
  const std::int64_t gap = std::max((stream.Due - scr).Units, std::int64_t{0});
  const std::int64_t steps = (gap + SectorTicks.Units - 1) / SectorTicks.Units;
  stream.NextScr = scr + Clock{steps * SectorTicks.Units};
}

}  // namespace quorvelant
