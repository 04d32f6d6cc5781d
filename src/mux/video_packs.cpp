#include "mux/video_packs.h"

#include <algorithm>

#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/mux_fault.h"
#include "mux/packet.h"

namespace quorvelant {
namespace {

// A picture may not be decoded 0.7 seconds or more after the clock of a pack that carries it.
constexpr Clock MostLag = Clock::FromTicks(63000);

// Bytes of video for a pack with `room`: the rest of the picture and the pictures after it, up to the next
// sequence header or the end of the track.
std::size_t PayloadOf(MuxState& state, std::size_t room) {
  std::size_t payload = state.Picture.UnitBytes - state.Written;
  if (state.Input.Kind != TrackKind::Motion && state.Picture.LastOfFile) {
    return std::min(payload, room);  // the next slide stands alone, and isn't needed yet
  }
  for (std::size_t i = 1; payload < room; ++i) {
    const PictureUnit* next = state.Pictures.After(i);
    if (next == nullptr || next->SequenceHeader) {
      break;
    }
    payload += next->UnitBytes;
  }
  return std::min(payload, room);
}

// Time stamps stand in packs that open an I picture, the buffer size in the first pack of all.
PacketHeader HeaderOf(MuxState& state) {
  PacketHeader header;
  if (state.Written > 0 || state.Picture.Type != PictureType::I) {
    return header;
  }
  const TimeStamps stamps = StampsOf(state.Times, state.Timing);
  header.Pts = stamps.Pts;
  header.Dts = stamps.Dts;
  if (state.FirstPack) {
    header.BufferKib = VideoBufferKib;
    state.FirstPack = false;
  }
  return header;
}

// The earliest clock of the next pack: when the picture is near enough and the buffer has room.
Clock WaitToSend(MuxState& state, std::size_t payload) {
  Clock scr = state.LastScr + SectorTicks;
  const Clock tooEarly = state.Times.Dts - MostLag - scr;
  if (tooEarly.Units >= 0) {
    scr += Clock{(tooEarly.Units / QuarterSectorTicks.Units + 1) * QuarterSectorTicks.Units};
  }
  const VideoBufferWait wait = WaitForVideoBuffer(state.Buffer, scr, payload);
  if (wait.Stuck) {
    ReportBufferFault(state);
    state.Buffer.Fill = 0;
  }
  return wait.Scr;
}

// Copies bytes of the current picture into `target`, as many as there are; returns what is left of it.
ByteSpan CopyPayload(MuxState& state, ByteSpan target) {
  const ByteView rest = state.Pictures.BytesOf(state.Picture).subspan(state.Written);
  const std::size_t bytes = std::min(rest.size(), target.size());
  std::copy_n(rest.begin(), bytes, target.begin());
  if (bytes > 0 && state.Written < state.DataBytes) {
    state.DataEndSector = state.Output.TotalSectors() - 1;
  }
  state.Written += bytes;
  return target.subspan(bytes);
}

std::size_t DataBytesOf(ByteView unit) {
  std::size_t bytes = unit.size();
  while (bytes > 0 && unit[bytes - 1] == 0) {
    --bytes;
  }
  return bytes;
}

void WriteVideoPack(MuxState& state) {
  if (state.Build.Ui.StopRequested()) {
    throw MuxStopped();
  }
  SendDueUnits(state, state.LatestPts);
  const PacketHeader header = HeaderOf(state);
  const std::size_t payload = PayloadOf(state, RoomAfter(header));
  state.LastScr = InterleaveAudio(state, WaitToSend(state, payload));
  const ByteSpan sector = state.Output.NextSector();
  const SystemClockReference scr = ScrOf(state.LastScr, PackKind::Video, state.Build.Rules);
  const std::size_t at = PutPacket(sector, scr, header, payload);
  state.OpenPack = CopyPayload(state, sector.subspan(at, payload));
  const std::int64_t missing = ChargeVideoBuffer(state.Buffer, state.LastScr, payload);
  if (missing > 0 && !state.Picture.EndCode) {
    ReportUnderflow(state, missing);
  }
}

}  // namespace

void WritePicture(MuxState& state) {
  state.Written = 0;
  state.LatestPts = std::max(state.LatestPts, state.Times.Pts.WholeTicks());
  state.DataBytes = DataBytesOf(state.Pictures.BytesOf(state.Picture));
  state.OpenPack = CopyPayload(state, state.OpenPack);
  while (state.Written < state.Picture.UnitBytes) {
    WriteVideoPack(state);
  }
}

}  // namespace quorvelant
