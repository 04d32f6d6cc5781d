#include "mux/subpicture_stream.h"

#include <algorithm>
#include <exception>

#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/packet.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {
namespace {

constexpr std::uint8_t FirstSubstream = 0x20;
constexpr std::int64_t StopStepTicks = 1024;
constexpr std::uint32_t NoStop = 65535;

// While a picture is held, a unit may reach the player as much before its time as a picture may.
constexpr Clock MostLead = Clock::FromTicks(63000);

std::int64_t StopPtsOf(const SPURecord& unit) {
  const bool stops = unit.StopDelay > 0 && unit.StopDelay < NoStop;
  return stops ? unit.StartPTS + StopStepTicks * unit.StopDelay : NeverStops;
}

Bytes MakeUnitOf(MuxState& state, const SubpictureState& stream, const SPURecord& unit) {
  const auto notMade = [&](const std::exception& error) {
    return MuxFault(message::SubtitleNotMade, unit.File, state.Input.Name, stream.Input->StreamNumber,
                    unit.Entry + 1, error.what());
  };
  try {
    const MuxBuild& build = state.Build;
    if (build.Coded != nullptr) {
      if (const EncodedBitmap* coded = build.Coded->Find(unit, state.Input.Ntsc)) {
        return MakeUnit(unit, *coded);
      }
    }
    BmpLoader pictures(build.Pictures);
    return MakeUnit(unit, LoadSPUBitmap(pictures, unit, state.Input.Ntsc, build.Rules));
  } catch (const PictureError& error) {
    throw notMade(error);
  } catch (const SubpictureError& error) {
    throw notMade(error);
  }
}

// The clock of a unit's next pack. Sound that is due goes before it, where the rules let it.
Clock ScrOfNextPack(MuxState& state, Clock earliest) {
  const Clock next = std::max(earliest, state.LastScr + SectorTicks);
  return state.Build.Rules.AudioBetweenUnitPacks ? InterleaveAudio(state, next) : next;
}

// The header of a unit's first pack.
PacketHeader HeaderOf(const SPURecord& unit, bool firstOfVob) {
  return {.StreamId = start_code::PrivateStream1,
          .Pts = unit.StartPTS,
          .BufferKib = firstOfVob ? PrivateBufferKib : std::uint16_t{0}};
}

// Fills a sector with the next bytes of a unit, each packet's after the substream number; returns the rest.
ByteView PutUnitPack(ByteSpan sector, SystemClockReference scr, const PacketHeader& header, int streamNumber,
                     ByteView rest) {
  const std::size_t taken = std::min(rest.size(), RoomAfter(header) - 1);
  const std::size_t at = PutPacket(sector, scr, header, 1 + taken);
  PutBytes(sector, at, 1, FirstSubstream + static_cast<std::uint64_t>(streamNumber));
  std::ranges::copy(rest.first(taken), sector.subspan(at + 1).begin());
  return rest.subspan(taken);
}

// A unit that has been sent, against the player's buffer.
void NoteArrival(MuxState& state, SubpictureState& stream, const SPURecord& unit, std::size_t bytes) {
  stream.Late.Note(state.LastScr, unit.StartPTS);
  const std::int64_t held = stream.Buffer.Enter(state.LastScr, unit.StartPTS, bytes);
  if (held > SubpictureBufferBytes && !stream.Overfilled) {
    stream.Overfilled = true;
    RefuseOrWarn(state.Build,
                 MessageOf(message::SubtitlesOverfill, unit.File, state.Input.Name,
                           stream.Input->StreamNumber, unit.Entry + 1, held, SubpictureBufferBytes));
  }
}

void SendUnit(MuxState& state, SubpictureState& stream) {
  const SPURecord& unit = stream.Units[stream.Next++];
  const Bytes bytes = MakeUnitOf(state, stream, unit);
  PacketHeader header = HeaderOf(unit, stream.Next == 1);
  SentUnit sent{unit.StartPTS, StopPtsOf(unit)};
  Clock earliest;
  if (state.Input.Kind != TrackKind::Motion) {
    earliest = Clock::FromTicks(unit.StartPTS) - MostLead;
  }
  if (earliest > state.LastScr + SectorTicks) {
    SendAudioAhead(state, earliest, Clock::FromTicks(unit.StartPTS));
  }
  for (ByteView rest = bytes; !rest.empty();) {
    if (state.Build.Ui.StopRequested()) {
      throw MuxStopped();
    }
    const Clock scr = ScrOfNextPack(state, earliest);
    if (rest.size() == bytes.size()) {
      sent.Sector = state.Output.TotalSectors();
    }
    rest = PutUnitPack(state.Output.NextSector(), ScrOf(scr, PackKind::AudioOrSubpicture, state.Build.Rules),
                       header, stream.Input->StreamNumber, rest);
    header = {.StreamId = start_code::PrivateStream1};
    state.LastScr = scr;
  }
  stream.Sent.push_back(sent);
  NoteArrival(state, stream, unit, bytes.size());
}

}  // namespace

std::vector<SubpictureState> OpenSubpictures(const MuxInput& input, const Rules& rules) {
  const FrameTiming& timing = TimingOf(input.Ntsc);
  const TrackClock clock{timing.FramePeriod, timing.FramesPerSecond, VideoStartPts};
  const SubStreamOptions options{input.Kind == TrackKind::Still, input.ExtendFinalSubtitle,
                                 rules.StopDelayOnClock, input.SourceFolder};
  std::vector<SubpictureState> streams;
  for (const MuxSubStream& stream : input.Subpictures) {
    streams.push_back({&stream, PrepareSPURecords(*stream.Stream, stream.CellHolds, clock, options)});
  }
  std::ranges::stable_sort(streams, {},
                           [](const SubpictureState& stream) { return stream.Input->StreamNumber; });
  return streams;
}

void SendDueUnits(MuxState& state, std::int64_t duePts) {
  const auto isDue = [&](const SubpictureState& stream) {
    return stream.Next < stream.Units.size() && stream.Units[stream.Next].StartPTS <= duePts;
  };
  for (bool sent = true; sent;) {
    sent = false;
    for (SubpictureState& stream : state.Subpictures) {
      if (isDue(stream)) {
        SendUnit(state, stream);
        sent = true;
      }
    }
  }
}

std::array<std::uint32_t, SubStreamCount> SubpictureSync(std::vector<SubpictureState>& streams,
                                                         std::int64_t startPts, std::uint32_t sector) {
  std::array<std::uint32_t, SubStreamCount> sync{};
  sync.fill(NoSubpictureSync);
  for (SubpictureState& stream : streams) {
    const auto following = std::ranges::upper_bound(stream.Sent, startPts, {}, &SentUnit::StartPts);
    if (following == stream.Sent.begin()) {
      continue;
    }
    stream.Sent.erase(stream.Sent.begin(), following - 1);
    const SentUnit& shown = stream.Sent.front();
    // A unit that starts with the VOBU comes after its navigation pack and takes this one's place.
    const bool replaced = stream.Next < stream.Units.size() && stream.Units[stream.Next].StartPTS <= startPts;
    if (startPts < shown.StopPts && !replaced) {
      sync.at(static_cast<std::size_t>(stream.Input->StreamNumber)) = sector - shown.Sector;
    }
  }
  return sync;
}

}  // namespace quorvelant
