#include "mux/mux_track.h"

#include <fmt/format.h>

#include <string_view>

#include "mux/failures.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/track_end.h"
#include "mux/video_packs.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

constexpr std::uint64_t BytesPerProgress = std::uint64_t{1} << 20;

constexpr std::string_view NotBuilt = "Track \"{}\": {} are not built yet.";
constexpr std::string_view NoVideo = "Track \"{}\" has no video.";

void RefuseWhatIsNotBuilt(const MuxInput& input) {
  if (input.Kind != TrackKind::Motion) {
    throw MuxFault(fmt::format(NotBuilt, input.Name, "stills and slideshows"));
  }
  if (input.Video.empty()) {
    throw MuxFault(fmt::format(NoVideo, input.Name));
  }
}

MuxState SetUp(const MuxInput& input, MuxBuild& build, VobOutput& output, const VobSetRecords& records) {
  const FrameTiming& timing = TimingOf(input.Ntsc);
  MuxState state{.Input = input,
                 .Build = build,
                 .Output = output,
                 .Timing = timing,
                 .VobId = static_cast<std::uint16_t>(records.Vobs.size() + 1),
                 .Pictures = {build.Files, input.Video, {input.Mpeg2, build.RemoveSeqEnd}},
                 .Audio = OpenAudioStreams(build.Files, input, build.Rules),
                 .Subpictures = OpenSubpictures(input),
                 .Schedule = DecodeSchedule(timing)};
  state.FirstUnsynced.resize(state.Audio.size());
  return state;
}

// Counts the picture at the front, gives it its times and enters it into the buffer.
void BeginPicture(MuxState& state) {
  state.FormerLengthHalves = state.Picture.LengthHalves;
  state.Picture = *state.Pictures.Front();
  CheckGopLength(state);
  state.ElapsedHalves += state.Picture.ShownHalves();
  state.Times = state.Schedule.Next(
      state.Picture, [&](std::size_t ahead) -> const CodedPicture* { return state.Pictures.Ahead(ahead); });
  QueuePicture(state.Buffer,
               {state.Times.Dts.WholeTicks(), static_cast<std::int64_t>(state.Picture.UnitBytes)});
}

void EndPicture(MuxState& state) {
  NotePictureEnd(state);
  MuxBuild& build = state.Build;
  build.SourceBytesDone += state.Picture.UnitBytes;
  state.BytesSinceProgress += state.Picture.UnitBytes;
  if (state.BytesSinceProgress >= BytesPerProgress) {
    state.BytesSinceProgress = 0;
    build.Ui.Progress(static_cast<double>(build.SourceBytesDone),
                      static_cast<double>(build.SourceBytesTotal));
  }
  state.Pictures.Next();
}

void WriteTrack(MuxState& state, VobSetRecords& records) {
  while (state.Pictures.Front() != nullptr) {
    BeginPicture(state);
    if (state.Vobus.empty()) {
      OpenVob(state);
    } else {
      OpenVobuIfDue(state);
    }
    WritePicture(state);
    EndPicture(state);
  }
  EndTrack(state, records);
}

}  // namespace

MuxOutcome MuxTrack(const MuxInput& input, MuxBuild& build, VobOutput& output, VobSetRecords& records) {
  try {
    RefuseWhatIsNotBuilt(input);
    MuxState state = SetUp(input, build, output, records);
    WriteTrack(state, records);
    return MuxOutcome::Done;
  } catch (const MuxStopped&) {
    build.StopRequested = true;
    return MuxOutcome::Stopped;
  } catch (const MuxFault& fault) {
    TellError(build.Ui, fault.Title, fault.what(), fault.Place);
  } catch (const FileError& error) {
    TellError(build.Ui, MuxErrorTitle, error.OneLine());
  }
  return MuxOutcome::Failed;
}

}  // namespace quorvelant
