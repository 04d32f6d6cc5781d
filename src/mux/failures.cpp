#include "mux/failures.h"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

#include "analysis/remedies.h"
#include "base/counted.h"
#include "model/keys.h"
#include "mux/highlights.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"
#include "mux/vobu_decision.h"

namespace quorvelant {
namespace {

// Lines of the log, and of the status.
constexpr std::string_view GopLine = "GOP ERROR AT LBA{}";
constexpr std::string_view BitRateLine = "Excessive bitrate error at sector {}";
constexpr std::string_view BufferLine = "SERIOUS ERROR - BUFFER FULL - NO MORE PICTURES";
constexpr std::string_view UnderflowLine = "Buffer Underflow by {} at sector {}";
constexpr std::string_view UnderflowStatus = "Total Buffer Underflows: {}";

constexpr double LengthTolerance = 1;  // seconds
constexpr std::int64_t UnsearchableSeconds = 10;

}  // namespace

void RefuseOrWarn(MuxBuild& build, Message message) {
  if (build.Rules.RefusesDeadDiscs) {
    throw MuxFault(std::move(message));
  }
  message.Level = Severity::Warning;
  build.Ui.Tell(message);
}

void CheckSequenceDistance(MuxState& state) {
  const std::int64_t fields = state.ElapsedFields - state.VobuStartFields;
  const std::int64_t longest = MostVobuFields(state.Timing) + 2 * std::int64_t{state.Timing.VobuMinFrames};
  if (fields <= longest || state.Input.Kind != TrackKind::Motion) {
    return;
  }
  const auto tell = [&](const MessageKind& kind) {
    const std::string& path = state.Input.Video[state.Picture.File].Path;
    const auto seconds = static_cast<double>(fields * state.Timing.FramePeriod) / 180000;
    return MessageOf(kind, state.Pictures.PlaceOf(state.Picture), path, seconds, RepeatSequenceLine(path));
  };
  if (state.LongVobusTold == 0) {
    state.LongVobusTold = 1;
    state.Build.Ui.Tell(tell(message::SequencesApart));
  }
  if (state.LongVobusTold == 1 && fields > 2 * UnsearchableSeconds * state.Timing.FramesPerSecond) {
    state.LongVobusTold = 2;
    RefuseOrWarn(state.Build, tell(message::SequencesFarApart));
  }
}

void CheckGopLength(const MuxState& state) {
  if (state.Picture.TemporalReference <= state.Timing.MostTemporalReference) {
    return;
  }
  state.Build.RunLog.WriteText(fmt::format(GopLine, state.Output.TotalSectors()));
  throw MuxFault(message::GopTooLong, state.Pictures.PlaceOf(state.Picture));
}

void CheckBitRate(const MuxState& state, Clock navScr) {
  if (navScr - SectorTicks <= state.Times.Dts) {
    return;
  }
  state.Build.RunLog.WriteText(fmt::format(BitRateLine, state.Output.TotalSectors()));
  throw MuxFault(message::BitRateTooHigh, state.Pictures.PlaceOf(state.Picture));
}

void ReportBufferFault(MuxState& state) {
  ++state.Build.BufferFaultCount;
  state.Build.RunLog.WriteText(BufferLine);
  if (!state.Build.Ui.Ask(message::BufferFull.Title, message::BufferFull.Text, false)) {
    state.Build.StopRequested = true;
    throw MuxStopped();
  }
}

void ReportUnderflow(MuxState& state, std::int64_t missingBytes) {
  MuxBuild& build = state.Build;
  const std::uint32_t sector = state.Output.TotalSectors();
  build.RunLog.WriteText(fmt::format(UnderflowLine, missingBytes, sector));
  if (!build.UnderflowSeen) {
    const Message asked = MessageOf(message::BufferUnderflow, {}, sector);
    if (!build.Ui.Ask(asked.Title, asked.Text, true)) {
      throw MuxFault(message::BufferUnderflowRefused, state.Pictures.PlaceOf(state.Picture));
    }
    build.UnderflowSeen = true;
  }
  ++build.UnderflowCount;
  build.Ui.Status(fmt::format(UnderflowStatus, build.UnderflowCount));
}

void WarnOfCutPicture(const MuxState& state) {
  if (state.Picture.Cut) {
    state.Build.Ui.Tell(MessageOf(message::LastPictureCut, state.Pictures.PlaceOf(state.Picture),
                                  state.Input.Video[state.Picture.File].Path));
  }
}

void WarnOfDamage(const MuxState& state) {
  for (const DamageRecord& damage : state.Pictures.Damage()) {
    const std::string& path = state.Input.Video[damage.File].Path;
    state.Build.Ui.Tell(
        MessageOf(*damage.Kind, fmt::format("{}@{}", path, damage.Offset), path, damage.Count));
  }
}

void WarnOfDamagedSound(const MuxState& state) {
  for (const AudioState& stream : state.Audio) {
    if (stream.Changed) {
      state.Build.Ui.Tell(*stream.Changed);
    }
    if (stream.Breaks > 0) {
      state.Build.Ui.Tell(MessageOf(message::AudioBroken, stream.FirstBreak, stream.Input->StreamNumber,
                                    state.Input.Name, Counted(stream.Breaks, "place"), stream.FirstBreak));
    }
    const Ac3Damage damage = stream.Source.Damage();
    if (damage.Places > 0) {
      const std::string& first = stream.Source.FirstDamage();
      const double seconds = static_cast<double>(damage.Lost * stream.FrameTicks) / 90000;
      state.Build.Ui.Tell(MessageOf(message::AudioDamaged, first, stream.Input->StreamNumber,
                                    state.Input.Name, Counted(damage.Places, "place"), first,
                                    Counted(damage.Bytes, "byte"), Counted(damage.Lost, "lost frame"),
                                    seconds));
    }
  }
}

void WarnOfAudioLengths(MuxState& state, std::int64_t endPts) {
  for (AudioState& stream : state.Audio) {
    if (stream.PacksSent == 0 && stream.Input->DelayMs > 0) {
      RefuseOrWarn(state.Build, MessageOf(message::AudioNeverStarts, stream.Source.Place(),
                                          stream.Input->StreamNumber, state.Input.Name, stream.Input->DelayMs,
                                          static_cast<double>(endPts - VideoStartPts) / 90000));
      continue;
    }
    if (stream.Input->DelayMs > 1000 * LengthTolerance) {
      state.Build.Ui.Tell(MessageOf(message::AudioStartsLate, stream.Source.Place(),
                                    stream.Input->StreamNumber, state.Input.Name, stream.Input->DelayMs));
    }
    // Silence under stills and slides is usual.
    const bool motion = state.Input.Kind == TrackKind::Motion;
    const double missing = motion ? static_cast<double>(endPts - stream.NextPts) / 90000 : 0;
    const double rest = stream.SecondsLeft();
    const bool tooLong = rest > LengthTolerance;
    if (tooLong || missing > LengthTolerance) {
      state.Build.Ui.Tell(MessageOf(tooLong ? message::AudioTooLong : message::AudioTooShort,
                                    stream.Source.Place(), stream.Input->StreamNumber, state.Input.Name,
                                    tooLong ? rest : missing));
    }
  }
}

void CheckButtonTimes(MuxState& state, std::int64_t endPts) {
  const auto unshown =
      UnshownHighlights({state.Vobus, state.Input, state.Build.Rules, VideoStartPts, endPts});
  if (unshown.empty()) {
    return;
  }
  const std::int64_t startPts = state.Input.Highlights[unshown.front()].StartPts;
  const auto seconds = [](std::int64_t pts) { return static_cast<double>(pts - VideoStartPts) / 90000; };
  const bool past = state.Input.Highlights[unshown.back()].StartPts >= endPts;
  Message told =
      MessageOf(message::ButtonsNeverShow, TrackKey(static_cast<std::size_t>(state.Input.TrackIndex)),
                state.Input.Name, unshown.size(), unshown.front() + 1, seconds(startPts),
                startPts >= endPts ? fmt::format("the picture ends at {:.1f}", seconds(endPts))
                                   : std::string("a later set begins in the same half second"));
  if (past) {
    RefuseOrWarn(state.Build, std::move(told));
  } else {
    told.Level = Severity::Warning;
    state.Build.Ui.Tell(told);
  }
}

}  // namespace quorvelant
