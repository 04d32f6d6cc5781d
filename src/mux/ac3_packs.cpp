// AC3 in private stream 1: frames are found by their headers and run on from pack to pack.
#include <algorithm>

#include "analysis/ac3_header.h"
#include "mux/audio_stream.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr std::uint8_t FirstSubstream = 0x80;
constexpr std::size_t SubHeaderBytes = 4;  // substream id, frame count, first access unit pointer
constexpr std::size_t PackBytes = 2016;    // with or without a frame start

struct FrameStart {
  bool Found = false;
  bool FortyEight = false;     // kHz
  std::size_t FrameBytes = 0;  // 0: no frame that a disc carries
};

FrameStart FrameAt(ByteView bytes, std::size_t at) {
  FrameStart frame;
  if (at + Ac3SizeBytes > bytes.size() || bytes[at] != 0x0B) {
    return frame;
  }
  const Ac3Header header = ReadAc3Header(bytes.subspan(at, Ac3SizeBytes));
  frame.Found = header.Sync && header.StreamVersion <= MostDiscAc3Version && header.Kbps != 0;
  frame.FortyEight = header.SampleRate() == 48;
  if (frame.Found && frame.FortyEight) {
    frame.FrameBytes = static_cast<std::size_t>(header.FrameBytes());
  }
  return frame;
}

// The next frame at or after `from` of the stream's own size, for the case that the chain broke.
std::size_t FindFrame(const AudioState& stream, ByteView bytes, std::size_t from) {
  for (std::size_t at = from; at + Ac3SizeBytes <= bytes.size(); ++at) {
    const std::size_t frame = FrameAt(bytes, at).FrameBytes;
    if (frame != 0 && (stream.FrameBytes == 0 || frame == static_cast<std::size_t>(stream.FrameBytes))) {
      return at;
    }
  }
  return bytes.size();
}

// That sound of another kind goes on here; told once. Frames that are mended never get so far.
void NoteChange(AudioState& stream, ByteView bytes, std::size_t at) {
  const Ac3Frame frame = ReadAc3Frame(bytes, at);
  if (frame.Bytes == 0 || frame == stream.Kind || stream.Changed) {
    return;
  }
  stream.Changed = MessageOf(message::AudioChanges, stream.Source.Place(at), stream.Source.File(at),
                             stream.Source.ByteAt(at), WordsOf(stream.Kind), WordsOf(frame));
  stream.Changed->Level = Severity::Warning;
}

// Walks the frames that start in the first `payload` bytes and cuts the payload at the limit. `bytes`
// reaches past the payload, so that a frame which starts in its last bytes is seen.
AudioPack WalkFrames(AudioState& stream, ByteView bytes, std::size_t payload,
                     std::optional<std::int64_t> limit) {
  AudioPack pack{std::min(payload, bytes.size())};
  std::size_t at = stream.OpenFrameBytes;
  while (at < pack.PayloadBytes) {
    if (limit && stream.NextPts + stream.FrameTicks * pack.Frames >= *limit) {
      pack.PayloadBytes = at;
      break;
    }
    const FrameStart frame = FrameAt(bytes, at);
    if (frame.Found && !frame.FortyEight) {
      throw MuxFault(message::AudioRateChanges, stream.Source.Place(at), stream.Source.File(at));
    }
    if (frame.FrameBytes == 0) {
      stream.FirstBreak = stream.Breaks == 0 ? stream.Source.Place(at) : stream.FirstBreak;
      ++stream.Breaks;
      at = FindFrame(stream, bytes, at + 1);
      continue;
    }
    NoteChange(stream, bytes, at);
    pack.FirstFrame = pack.Frames == 0 ? at : pack.FirstFrame;
    ++pack.Frames;
    at += frame.FrameBytes;
  }
  stream.OpenFrameBytes = at - pack.PayloadBytes;
  return pack;
}

}  // namespace

void FindFirstAc3Frame(AudioState& stream, const Rules& rules) {
  constexpr std::size_t Step = std::size_t{64} << 10;
  for (;;) {
    const ByteView bytes = stream.Source.Peek(Step);
    const std::size_t at = FindFrame(stream, bytes, 0);
    if (at < bytes.size()) {
      stream.FrameBytes = static_cast<std::int64_t>(FrameAt(bytes, at).FrameBytes);
      stream.Source.Consume(at);
      stream.Kind = ReadAc3Frame(stream.Source.Peek(Ac3HeaderBytes), 0);
      if (rules.CountLostFrames) {
        stream.Source.MendFrames();
      }
      return;
    }
    if (bytes.size() < Step) {
      const std::string& path = stream.Input->Paths.empty() ? std::string() : stream.Input->Paths.front();
      throw MuxFault(message::AudioFrameMissing, path, path);
    }
    stream.Source.Consume(Step - Ac3SizeBytes);
  }
}

AudioPack WriteAc3Pack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                       std::optional<std::int64_t> limit) {
  PacketHeader header{.StreamId = start_code::PrivateStream1};
  if (stream.PacksSent == 0) {
    header.BufferKib = PrivateBufferKib;
    header.Pts = stream.NextPts;
  }
  const std::size_t capacity = stream.PacksSent == 0 ? RoomAfter(header) - SubHeaderBytes : PackBytes;
  const ByteView bytes = stream.Source.Peek(capacity + Ac3HeaderBytes);
  const AudioPack pack = WalkFrames(stream, bytes, capacity, limit);
  if (pack.Frames > 0) {
    header.Pts = stream.NextPts;
  }
  const std::size_t at = PutPacket(sector, scr, header, SubHeaderBytes + pack.PayloadBytes);
  PutBytes(sector, at, 1, FirstSubstream + static_cast<std::uint64_t>(stream.Input->StreamNumber));
  PutBytes(sector, at + 1, 1, static_cast<std::uint64_t>(pack.Frames));
  // Counted from the byte after the field, from 1.
  PutBytes(sector, at + 2, 2, pack.Frames > 0 ? pack.FirstFrame + 1 : 0);
  std::ranges::copy(bytes.first(pack.PayloadBytes), sector.subspan(at + SubHeaderBytes).begin());
  stream.Source.Consume(pack.PayloadBytes);
  return pack;
}

}  // namespace quorvelant
