// AC3 in private stream 1: frames are found by their headers and run on from pack to pack.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "mux/audio_stream.h"
#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr std::uint8_t FirstSubstream = 0x80;
constexpr std::size_t SubHeaderBytes = 4;  // substream id, frame count, first access unit pointer
constexpr std::size_t HeaderBytes = 6;     // as much of a frame as tells its size
constexpr std::size_t PackBytes = 2016;    // with or without a frame start

// A/52 table 5.18: kbit/s by frmsizecod / 2.
constexpr std::array<int, 19> KilobitsOfCode{32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                             192, 224, 256, 320, 384, 448, 512, 576, 640};
constexpr int BytesPerKilobit = 4;  // a frame lasts 32 ms at 48 kHz
constexpr int MostStreamId = 8;     // bsid; above it another syntax follows

constexpr std::string_view NoFrame = "The audio file {} holds no AC3 frame of 48 kHz.";
constexpr std::string_view RateChanges =
    "The audio file {} changes its sample rate. A disc carries 48 kHz alone.";

struct Ac3Header {
  bool Sync = false;
  bool FortyEight = false;
  std::size_t FrameBytes = 0;  // 0: no frame
};

// A/52 5.3.1: syncword, crc1, fscod (2 bits), frmsizecod (6), bsid (5).
Ac3Header HeaderAt(ByteView bytes, std::size_t at) {
  Ac3Header header;
  if (at + HeaderBytes > bytes.size() || bytes[at] != 0x0B || bytes[at + 1] != 0x77) {
    return header;
  }
  const auto code = static_cast<std::size_t>(bytes[at + 4] & 0x3F) / 2;
  header.Sync = bytes[at + 5] >> 3 <= MostStreamId && code < KilobitsOfCode.size();
  header.FortyEight = bytes[at + 4] >> 6 == 0;
  if (header.Sync && header.FortyEight) {
    header.FrameBytes = static_cast<std::size_t>(KilobitsOfCode[code]) * BytesPerKilobit;
  }
  return header;
}

// The next frame at or behind `from` of the stream's own size, for the case that the chain broke.
std::size_t FindFrame(const AudioState& stream, ByteView bytes, std::size_t from) {
  for (std::size_t at = from; at + HeaderBytes <= bytes.size(); ++at) {
    const std::size_t frame = HeaderAt(bytes, at).FrameBytes;
    if (frame != 0 && (stream.FrameBytes == 0 || frame == static_cast<std::size_t>(stream.FrameBytes))) {
      return at;
    }
  }
  return bytes.size();
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
    const Ac3Header header = HeaderAt(bytes, at);
    if (header.Sync && !header.FortyEight) {
      throw MuxFault(fmt::format(RateChanges, stream.Input->Paths.back()), stream.Source.Place());
    }
    if (header.FrameBytes == 0) {
      at = FindFrame(stream, bytes, at + 1);
      continue;
    }
    pack.FirstFrame = pack.Frames == 0 ? at : pack.FirstFrame;
    ++pack.Frames;
    at += header.FrameBytes;
  }
  stream.OpenFrameBytes = at - pack.PayloadBytes;
  return pack;
}

}  // namespace

void FindFirstAc3Frame(AudioState& stream) {
  constexpr std::size_t Step = std::size_t{64} << 10;
  for (;;) {
    const ByteView bytes = stream.Source.Peek(Step);
    const std::size_t at = FindFrame(stream, bytes, 0);
    if (at < bytes.size()) {
      stream.FrameBytes = static_cast<std::int64_t>(HeaderAt(bytes, at).FrameBytes);
      stream.Source.Consume(at);
      return;
    }
    if (bytes.size() < Step) {
      const std::string& path = stream.Input->Paths.empty() ? std::string() : stream.Input->Paths.front();
      throw MuxFault(fmt::format(NoFrame, path), path);
    }
    stream.Source.Consume(Step - HeaderBytes);
  }
}

AudioPack WriteAc3Pack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                       std::optional<std::int64_t> limit) {
  PacketHeader header{.StreamId = PrivateStream1Id};
  if (stream.PacksSent == 0) {
    header.BufferKib = PrivateBufferKib;
    header.Pts = stream.NextPts;
  }
  const std::size_t capacity = stream.PacksSent == 0 ? RoomBehind(header) - SubHeaderBytes : PackBytes;
  const ByteView bytes = stream.Source.Peek(capacity + HeaderBytes);
  const AudioPack pack = WalkFrames(stream, bytes, capacity, limit);
  if (pack.Frames > 0) {
    header.Pts = stream.NextPts;
  }
  const std::size_t at = PutPacket(sector, scr, header, SubHeaderBytes + pack.PayloadBytes);
  PutBytes(sector, at, 1, FirstSubstream + static_cast<std::uint64_t>(stream.Input->StreamNumber));
  PutBytes(sector, at + 1, 1, static_cast<std::uint64_t>(pack.Frames));
  // Counted from the byte behind the field, from 1.
  PutBytes(sector, at + 2, 2, pack.Frames > 0 ? pack.FirstFrame + 1 : 0);
  std::ranges::copy(bytes.first(pack.PayloadBytes), sector.subspan(at + SubHeaderBytes).begin());
  stream.Source.Consume(pack.PayloadBytes);
  return pack;
}

}  // namespace quorvelant
