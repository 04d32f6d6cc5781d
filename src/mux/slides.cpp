#include "mux/slides.h"

#include <algorithm>
#include <numeric>

#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

constexpr Clock NoLimit{std::numeric_limits<std::int64_t>::max()};

bool IsLastFile(const MuxState& state) {
  return state.Slides.File + 1 == state.Input.Video.size();
}

// Frames from the first picture to the end of the longest sound.
std::int64_t AudioFrames(const MuxState& state) {
  std::int64_t frames = 0;
  for (const AudioState& stream : state.Audio) {
    const std::int64_t ticks = AudioEndPts(stream) - VideoStartPts;
    frames = std::max(frames, (ticks + state.Timing.FramePeriod - 1) / state.Timing.FramePeriod);
  }
  return frames;
}

// Frames by which the hold goes on. `hold` frames are left of it.
std::int64_t StepOf(const MuxState& state, std::int64_t hold) {
  const FrameTiming& timing = state.Timing;
  const std::int64_t step = timing.SlideGopFrames - 1;
  // Below this the whole rest is taken.
  const std::int64_t threshold =
      state.Build.Rules.JoinShortHoldRest ? step + timing.VobuMinFrames : timing.SlideRestFrames;
  const bool whole =
      hold < threshold || (IsLastFile(state) && hold < 2 * std::int64_t{timing.SlideGopFrames});
  return whole ? hold : step;
}

// Sound may go out up to `pts`, and never beyond the end of the track.
void LetAudioTo(MuxState& state, std::int64_t pts) {
  const std::int64_t limit = std::max(pts, state.AudioLimit.value_or(pts));
  state.AudioLimit = std::min(limit, state.Slides.EndPts.value_or(limit));
}

void LetAudioIntoVobu(MuxState& state) {
  LetAudioTo(state, state.Vobus.back().StartPts + state.Timing.FramePeriod * state.Timing.SlideGopFrames);
}

bool AudioHasEnded(const MuxState& state) {
  return std::ranges::all_of(state.Audio, [](const AudioState& stream) { return stream.NextScr.Units <= 0; });
}

void WarnOfMarkInSlide(const MuxState& state, bool slideEnds) {
  if (state.NextMark >= state.Input.Marks.size()) {
    return;
  }
  const MuxMark& mark = state.Input.Marks[state.NextMark];
  const std::int64_t fields = 2 * mark.Frame;
  if (fields < state.ElapsedFields || (fields == state.ElapsedFields && !slideEnds)) {
    state.Build.Ui.Tell(MessageOf(message::MarkWithinSlide, {}, mark.Name, state.Input.Name, mark.Frame,
                                  state.ElapsedFields / 2));
  }
}

}  // namespace

void PlanSlides(MuxState& state) {
  std::vector<std::int64_t>& frames = state.Slides.Frames;
  for (const MuxVideoFile& file : state.Input.Video) {
    frames.push_back(file.HoldFlag ? file.HoldFrames : state.Timing.SlideGopFrames);
  }
  if (state.Input.Infinite) {
    return;
  }
  const std::int64_t before = std::accumulate(frames.begin(), frames.end() - 1, std::int64_t{0});
  if (state.Input.ExtendSlideForAudio && state.Input.Kind == TrackKind::SlideShow) {
    frames.back() = std::max(frames.back(), AudioFrames(state) - before);
  }
  state.Slides.EndPts = state.PtsOfFields(2 * (before + frames.back()));
}

DecodeTimes SlideTimes(const MuxState& state) {
  const Clock pts = Clock::FromTicks(VideoStartPts) + state.TimeOfFields(state.FieldsBeforePicture());
  return {pts - Clock::FromTicks(state.Timing.FramePeriod), pts};
}

void OpenSlide(MuxState& state) {
  const PictureUnit& picture = state.Picture;
  const std::string& path = state.Input.Video[picture.File].Path;
  if (picture.File == state.Slides.File) {
    const std::int64_t shown = state.FieldsBeforePicture() - state.Slides.StartFields;
    if (!picture.IsField() || shown > 1) {
      throw MuxFault(message::SlideOfSeveralPictures, state.Pictures.PlaceOf(picture), path,
                     state.Input.Name);
    }
    return;
  }
  if (picture.Type != PictureType::I) {
    throw MuxFault(message::SlideNotIntra, state.Pictures.PlaceOf(picture), path);
  }
  CheckBitRate(state, state.NavScr);
  state.Slides.File = picture.File;
  state.Slides.StartFields = state.FieldsBeforePicture();
  state.Vobus.back().HasVideo = true;
  LetAudioIntoVobu(state);
}

void HoldSlide(MuxState& state) {
  const std::int64_t end = state.Slides.StartFields + 2 * state.Slides.Frames[state.Slides.File];
  const bool waits = IsLastFile(state) && state.Input.Infinite;
  if (!waits && state.ElapsedFields >= end && !state.Build.Rules.ShortSlidesEndTheirVobu) {
    return;
  }
  do {
    const std::int64_t left = std::max(end - state.ElapsedFields, std::int64_t{0});
    // A picture of three fields leaves half a frame over.
    const std::int64_t step =
        waits ? 2 * std::int64_t{state.Timing.SlideGopFrames - 1} : 2 * StepOf(state, left / 2) + left % 2;
    state.ElapsedFields += step;
    const std::int64_t pts = state.PtsOfFields(state.ElapsedFields);
    const Clock wanted = state.TimeOfFields(state.ElapsedFields);
    LetAudioTo(state, pts);
    SendDueUnits(state, pts - 1);
    SendAudioAhead(state, wanted, NoLimit);
    const bool ends = !waits && state.ElapsedFields >= end;
    if ((waits && AudioHasEnded(state)) || (ends && IsLastFile(state))) {
      return;
    }
    WarnOfMarkInSlide(state, ends);
    OpenHeldVobu(state, wanted);
    LetAudioIntoVobu(state);
  } while (waits || state.ElapsedFields < end);
}

}  // namespace quorvelant
