#include "mux/subpicture_stream.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "mux/interleave.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/subpicture_packs.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {
namespace {

constexpr std::string_view NoUnit = "Track \"{}\", subtitle stream {}, entry {}: {}";
constexpr std::int64_t StopStepTicks = 1024;
constexpr std::uint32_t NoStop = 65535;

// While a picture is held, a unit may reach the player so much ahead of its time, as a picture may.
constexpr Clock MostLead = Clock::FromTicks(63000);

std::int64_t StopPtsOf(const SPURecord& unit) {
  const bool stops = unit.StopDelay > 0 && unit.StopDelay < NoStop;
  return stops ? unit.StartPTS + StopStepTicks * unit.StopDelay : NeverStops;
}

Bytes MakeUnitOf(MuxState& state, const SubpictureState& stream, const SPURecord& unit) {
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
    throw MuxFault(
        fmt::format(NoUnit, state.Input.Name, stream.Input->StreamNumber, unit.Entry + 1, error.what()),
        unit.File);
  } catch (const SubpictureError& error) {
    throw MuxFault(
        fmt::format(NoUnit, state.Input.Name, stream.Input->StreamNumber, unit.Entry + 1, error.what()),
        unit.File);
  }
}

// The clock of a unit's next pack. Sound that is due goes ahead of it, where the rules let it.
Clock ScrOfNextPack(MuxState& state, Clock earliest) {
  const Clock next = std::max(earliest, state.LastScr + SectorTicks);
  return state.Build.Rules.AudioBetweenUnitPacks ? InterleaveAudio(state, next) : next;
}

void SendUnit(MuxState& state, SubpictureState& stream) {
  const SPURecord& unit = stream.Units[stream.Next++];
  const Bytes bytes = MakeUnitOf(state, stream, unit);
  const bool first = stream.Next == 1;
  auto form = first ? SubpicturePackForm::FirstOfVob : SubpicturePackForm::FirstOfUnit;
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
    const ByteSpan sector = state.Output.NextSector();
    std::ranges::fill(sector, std::uint8_t{0});
    PutPackHeader(sector, ScrOf(scr, PackKind::AudioOrSubpicture, state.Build.Rules));
    rest = rest.subspan(PutSubpicturePacket(sector, rest, form, stream.Input->StreamNumber, unit.StartPTS));
    form = SubpicturePackForm::Following;
    state.LastScr = scr;
  }
  stream.Sent.push_back(sent);
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
    const auto behind = std::ranges::upper_bound(stream.Sent, startPts, {}, &SentUnit::StartPts);
    if (behind == stream.Sent.begin()) {
      continue;
    }
    stream.Sent.erase(stream.Sent.begin(), behind - 1);
    const SentUnit& shown = stream.Sent.front();
    // A unit that starts with the VOBU comes behind its navigation pack and takes this one's place.
    const bool replaced = stream.Next < stream.Units.size() && stream.Units[stream.Next].StartPTS <= startPts;
    if (startPts < shown.StopPts && !replaced) {
      sync.at(static_cast<std::size_t>(stream.Input->StreamNumber)) = sector - shown.Sector;
    }
  }
  return sync;
}

}  // namespace quorvelant
