#include "mux/mux_track.h"

#include <utility>

#include "codec/still_encoder.h"
#include "mux/failures.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/still_source.h"
#include "mux/track_end.h"
#include "mux/video_packs.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

constexpr std::uint64_t BytesPerProgress = std::uint64_t{1} << 20;

MuxState SetUp(const MuxInput& input, MuxBuild& build, VobOutput& output, const VobSetRecords& records) {
  if (input.Video.empty()) {
    throw MuxFault(message::MuxTrackEmpty, {}, input.Name);
  }
  const FrameTiming& timing = TimingOf(input.Ntsc);
  MuxState state{.Input = input,
                 .Build = build,
                 .Output = output,
                 .Timing = timing,
                 .VobId = static_cast<std::uint16_t>(records.Vobs.size() + 1),
                 .Pictures = {build.Files,
                              input.Video,
                              {.Mpeg2 = input.Mpeg2,
                               .MostGopFields = timing.MostGopFields,
                               .RemoveEndCodes = build.RemoveSeqEnd,
                               .EndEachFile = input.Kind != TrackKind::Motion,
                               .EncodeStill = StillEncoderOf(input, build),
                               .Refuse = [&build](Message why) { RefuseOrWarn(build, std::move(why)); }}},
                 .Audio = OpenAudioStreams(build.Files, input, build.Rules),
                 .Subpictures = OpenSubpictures(input, build.Rules),
                 .Schedule = DecodeSchedule(timing)};
  state.FirstUnsynced.resize(state.Audio.size());
  if (input.Kind != TrackKind::Motion) {
    PlanSlides(state);
  }
  return state;
}

DecodeTimes TimesOfPicture(MuxState& state) {
  if (state.Input.Kind != TrackKind::Motion) {
    return SlideTimes(state);
  }
  return state.Schedule.Next(
      state.Picture, [&](std::size_t offset) -> const CodedPicture* { return state.Pictures.After(offset); });
}

// Counts the picture at the front, gives it its times and enters it into the buffer.
void BeginPicture(MuxState& state) {
  state.PreviousLengthFields = state.Picture.LengthFields;
  state.Picture = *state.Pictures.Front();
  CheckGopLength(state);
  state.ElapsedFields += state.Picture.ShownFields();
  state.Times = TimesOfPicture(state);
  QueuePicture(state.Buffer,
               {state.Times.Dts.WholeTicks(), static_cast<std::int64_t>(state.Picture.UnitBytes)});
}

void EndPicture(MuxState& state) {
  NotePictureEnd(state);
  WarnOfCutPicture(state);
  MuxBuild& build = state.Build;
  const bool bitmap = state.Input.Video[state.Picture.File].ImageSource;
  const std::uint64_t bytes = bitmap ? LargestStillBytes : state.Picture.UnitBytes;
  build.SourceBytesDone += bytes;
  state.BytesSinceProgress += bytes;
  if (state.BytesSinceProgress >= BytesPerProgress) {
    state.BytesSinceProgress = 0;
    build.Ui.Progress(static_cast<double>(build.SourceBytesDone),
                      static_cast<double>(build.SourceBytesTotal));
  }
  state.Pictures.Next();
}

void WriteTrack(MuxState& state, VobSetRecords& records) {
  const bool motion = state.Input.Kind == TrackKind::Motion;
  while (state.Pictures.Front() != nullptr) {
    BeginPicture(state);
    if (state.Vobus.empty()) {
      OpenVob(state);
    } else if (motion) {
      OpenVobuIfDue(state);
    }
    if (!motion) {
      OpenSlide(state);
    }
    CheckSequenceDistance(state);
    WritePicture(state);
    EndPicture(state);
    if (!motion && state.Picture.LastOfFile) {
      HoldSlide(state);
    }
  }
  EndTrack(state, records);
}

}  // namespace

MuxOutcome MuxTrack(const MuxInput& input, MuxBuild& build, VobOutput& output, VobSetRecords& records) {
  try {
    MuxState state = SetUp(input, build, output, records);
    WriteTrack(state, records);
    return MuxOutcome::Done;
  } catch (const MuxStopped&) {
    build.StopRequested = true;
    return MuxOutcome::Stopped;
  } catch (const MuxFault& fault) {
    build.Ui.Tell(fault.Told);
  } catch (const FileError& error) {
    build.Ui.Tell(MessageOf(message::MuxFileFailed, {}, error.OneLine()));
  }
  return MuxOutcome::Failed;
}

}  // namespace quorvelant
