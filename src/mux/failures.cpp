#include "mux/failures.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr std::string_view GopTitle = "Gop Error";
constexpr std::string_view GopText = "GOP length has exceeded 36 fields (18 frames) - Aborting";
constexpr std::string_view GopLine = "GOP ERROR AT LBA{}";

constexpr std::string_view BitRateTitle = "Excessive Bitrate Error";
constexpr std::string_view BitRateText =
    "Unrecoverable Excessive Bitrate Error - Aborting\n"
    "Try reducing the quantity of audio streams or Video bitrate";
constexpr std::string_view BitRateLine = "Excessive bitrate error at sector {}";

constexpr std::string_view BufferTitle = "Serious Buffer Fault";
constexpr std::string_view BufferText =
    "A serious buffer error has occured. Would you like to reset the buffer - THIS MAY CAUSE A STUTTER IN "
    "THE PLAYBACK!";
constexpr std::string_view BufferLine = "SERIOUS ERROR - BUFFER FULL - NO MORE PICTURES";

constexpr std::string_view UnderflowTitle = "Buffer Underflow Error";
constexpr std::string_view UnderflowText =
    "A Buffer Underflow has been noted (probably due to excessive bitrate) at sector {}.\n"
    "The DVD may not play smoothly. Do you want to continue mux (This error will not be reported again)?";
constexpr std::string_view UnderflowLine = "Buffer Underflow by {} at sector {}";
constexpr std::string_view UnderflowStatus = "Total Buffer Underflows: {}";
constexpr std::string_view UnderflowRefused = "The build was ended at the first buffer underflow.";

constexpr std::string_view CutTitle = "Video Source";
constexpr std::string_view CutText =
    "The video file {} ends within a picture: its last picture is incomplete.";

constexpr std::string_view LengthTitle = "Audio Length";
constexpr std::string_view ShortText =
    "Audio stream {} of track \"{}\" ends {:.1f} seconds before the picture does.";
constexpr std::string_view LongText =
    "Audio stream {} of track \"{}\" is {:.1f} seconds longer than the picture: the rest is left out.";
constexpr double LengthTolerance = 1;  // seconds

}  // namespace

void CheckGopLength(const MuxState& state) {
  if (state.Picture.Temporal <= state.Timing.MostTemporalReference) {
    return;
  }
  state.Build.RunLog.WriteText(fmt::format(GopLine, state.Output.TotalSectors()));
  throw MuxFault(std::string(GopText), state.Pictures.PlaceOf(state.Picture), GopTitle);
}

void CheckBitRate(const MuxState& state, Clock navScr) {
  if (navScr - SectorTicks <= state.Times.Dts) {
    return;
  }
  state.Build.RunLog.WriteText(fmt::format(BitRateLine, state.Output.TotalSectors()));
  throw MuxFault(std::string(BitRateText), state.Pictures.PlaceOf(state.Picture), BitRateTitle);
}

void ReportBufferFault(MuxState& state) {
  ++state.Build.BufferFaultCount;
  state.Build.RunLog.WriteText(BufferLine);
  if (!state.Build.Ui.Ask(BufferTitle, BufferText, false)) {
    state.Build.StopRequested = true;
    throw MuxStopped();
  }
}

void ReportUnderflow(MuxState& state, std::int64_t missingBytes) {
  MuxBuild& build = state.Build;
  const std::uint32_t sector = state.Output.TotalSectors();
  build.RunLog.WriteText(fmt::format(UnderflowLine, missingBytes, sector));
  if (!build.UnderflowSeen) {
    if (!build.Ui.Ask(UnderflowTitle, fmt::format(UnderflowText, sector), true)) {
      throw MuxFault(std::string(UnderflowRefused), state.Pictures.PlaceOf(state.Picture), UnderflowTitle);
    }
    build.UnderflowSeen = true;
  }
  ++build.UnderflowCount;
  build.Ui.Status(fmt::format(UnderflowStatus, build.UnderflowCount));
}

void WarnOfCutPicture(const MuxState& state) {
  if (state.Picture.Cut) {
    TellWarning(state.Build.Ui, CutTitle, fmt::format(CutText, state.Input.Video[state.Picture.File].Path),
                state.Pictures.PlaceOf(state.Picture));
  }
}

void WarnOfAudioLengths(MuxState& state, std::int64_t endPts) {
  for (AudioState& stream : state.Audio) {
    // Under stills and slides silence is at home.
    const bool motion = state.Input.Kind == TrackKind::Motion;
    const double missing = motion ? static_cast<double>(endPts - stream.NextPts) / 90000 : 0;
    const double rest = stream.SecondsLeft();
    if (rest > LengthTolerance || missing > LengthTolerance) {
      TellWarning(
          state.Build.Ui, LengthTitle,
          fmt::format(fmt::runtime(rest > LengthTolerance ? LongText : ShortText), stream.Input->StreamNumber,
                      state.Input.Name, rest > LengthTolerance ? rest : missing),
          stream.Source.Place());
    }
  }
}

}  // namespace quorvelant
