// PCM in private stream 1: frames of 1/600 second, told by counting samples.
#include <algorithm>

#include "mux/audio_stream.h"

namespace quorvelant {
namespace {

constexpr std::uint8_t FirstSubstream = 0xA0;
constexpr std::size_t SubHeaderBytes = 7;  // substream id, frames, pointer, audio bits, dynamic range
constexpr std::size_t PointerToData = 4;   // from the pointer's own last byte to the first byte of sound
constexpr std::uint64_t NoDynamicRange = 0x80;
constexpr int FrameNumbers = 20;

// Emphasis, mute, reserved, frame number (5), quantisation (2), rate (2), reserved, channels - 1 (3).
std::uint64_t AudioBits(const AudioState& stream) {
  const auto bit = [](bool on, unsigned place) { return std::uint64_t{on ? 1U : 0U} << place; };
  return bit(stream.Input->Emphasis, 15) | bit(stream.Input->Mute, 14) |
         static_cast<std::uint64_t>(stream.FrameNumber) << 8 |
         static_cast<std::uint64_t>((stream.Pcm.Bits - 16) / 4) << 6 | bit(stream.Pcm.KiloHertz != 48, 4) |
         static_cast<std::uint64_t>(stream.Pcm.Channels - 1);
}

// Samples of the frame begun in the previous pack that are still to come.
int HeadSamples(const AudioState& stream) {
  return stream.OpenFrameSamples == 0 ? 0 : stream.Pcm.SamplesPerFrame() - stream.OpenFrameSamples;
}

// As many samples, in whole groups, as the pack takes and the limit lets go.
int SamplesThatGo(const AudioState& stream, std::size_t capacity, std::optional<std::int64_t> limit) {
  const int group = stream.Pcm.GroupSamples();
  int samples = static_cast<int>(capacity / stream.Pcm.DiscBytes(group)) * group;
  if (limit) {
    const std::int64_t time = std::max(*limit - stream.NextPts, std::int64_t{0});
    const std::int64_t frames = (time + stream.FrameTicks - 1) / stream.FrameTicks;
    const std::int64_t may = HeadSamples(stream) + frames * stream.Pcm.SamplesPerFrame();
    samples = static_cast<int>(std::min<std::int64_t>(samples, may));
  }
  return samples;
}

// Counts the frames of the pack, and moves the frame state past it.
AudioPack TakeSamples(AudioState& stream, int samples) {
  const int frame = stream.Pcm.SamplesPerFrame();
  const int head = HeadSamples(stream);
  AudioPack pack{stream.Pcm.DiscBytes(samples)};
  if (samples > head) {
    pack.Frames = (samples - head + frame - 1) / frame;
    pack.FirstFrame = stream.Pcm.DiscBytes(head);
    stream.OpenFrameSamples = (samples - head) % frame;
  } else {
    stream.OpenFrameSamples = (stream.OpenFrameSamples + samples) % frame;
  }
  return pack;
}

}  // namespace

AudioPack WritePcmPack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                       std::optional<std::int64_t> limit) {
  PacketHeader header{.StreamId = start_code::PrivateStream1, .Pts = stream.NextPts};
  if (stream.PacksSent == 0) {
    header.BufferKib = PrivateBufferKib;
  }
  const PcmFormat& pcm = stream.Pcm;
  const int group = pcm.GroupSamples();
  const int wanted = SamplesThatGo(stream, RoomAfter(header) - SubHeaderBytes, limit);
  ByteView bytes = stream.Source.Peek(pcm.SourceBytes(wanted));
  const std::size_t present = bytes.size();
  const int samples =
      static_cast<int>((present + pcm.SourceBytes(group) - 1) / pcm.SourceBytes(group)) * group;
  Bytes last;  // the end of the sound, made up to a whole group with silence
  if (present < pcm.SourceBytes(samples)) {
    last.assign(bytes.begin(), bytes.end());
    last.resize(pcm.SourceBytes(samples));
    bytes = last;
  }
  const std::uint64_t audioBits = AudioBits(stream);
  const AudioPack pack = TakeSamples(stream, samples);
  if (pack.Frames == 0) {
    header.Pts.reset();
  }
  const std::size_t at = PutPacket(sector, scr, header, SubHeaderBytes + pack.PayloadBytes);
  PutBytes(sector, at, 1, FirstSubstream + static_cast<std::uint64_t>(stream.Input->StreamNumber));
  PutBytes(sector, at + 1, 1, static_cast<std::uint64_t>(pack.Frames));
  PutBytes(sector, at + 2, 2, pack.Frames > 0 ? pack.FirstFrame + PointerToData : 0);
  PutBytes(sector, at + 4, 2, audioBits);
  PutBytes(sector, at + 6, 1, NoDynamicRange);
  ConvertPcm(pcm, bytes, sector.subspan(at + SubHeaderBytes, pack.PayloadBytes));
  stream.Source.Consume(present);
  stream.FrameNumber = (stream.FrameNumber + pack.Frames) % FrameNumbers;
  return pack;
}

}  // namespace quorvelant
