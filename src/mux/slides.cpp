#include "mux/slides.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string_view>

#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/mux_fault.h"
#include "mux/mux_state.h"
#include "mux/vobus.h"

namespace quorvelant {
namespace {

constexpr Clock NoLimit{std::numeric_limits<std::int64_t>::max()};

constexpr std::string_view SeveralPictures =
    "The file {} of track \"{}\" holds more than one picture. A still or a slide is a single one.";
constexpr std::string_view NoIntra = "The picture of the video file {} is no I picture.";
constexpr std::string_view MarkTitle = "Chapter Mark";
constexpr std::string_view MarkInSlide =
    "Scene \"{}\" of track \"{}\" begins within a slide, at frame {}: its cell opens at frame {}, and no "
    "picture shows there until the next slide.";

bool IsLastFile(const MuxState& state) {
  return state.Slides.File + 1 == state.Input.Video.size();
}

// Frames from the first picture to the end of the longest sound.
std::int64_t SoundFrames(const MuxState& state) {
  std::int64_t frames = 0;
  for (const AudioState& stream : state.Audio) {
    const std::int64_t ticks = SoundEndPts(stream) - VideoStartPts;
    frames = std::max(frames, (ticks + state.Timing.FramePeriod - 1) / state.Timing.FramePeriod);
  }
  return frames;
}

// Frames by which the hold goes on. `hold` frames are left of it.
std::int64_t StepOf(const MuxState& state, std::int64_t hold) {
  const FrameTiming& timing = state.Timing;
  const std::int64_t step = timing.SlideGopFrames - 1;
  // Below this the whole rest is taken.
  constexpr std::int64_t PalThreshold = 18;
  constexpr std::int64_t NtscThreshold = 22;
  const std::int64_t threshold = state.Build.Rules.JoinShortHoldRest ? step + timing.VobuMinFrames
                                 : state.Input.Ntsc                  ? NtscThreshold
                                                                     : PalThreshold;
  const bool whole =
      hold < threshold || (IsLastFile(state) && hold < 2 * std::int64_t{timing.SlideGopFrames});
  return whole ? hold : step;
}

// Sound may go out up to `pts`, and never beyond the end of the track.
void LetSoundTo(MuxState& state, std::int64_t pts) {
  const std::int64_t limit = std::max(pts, state.AudioLimit.value_or(pts));
  state.AudioLimit = std::min(limit, state.Slides.EndPts.value_or(limit));
}

void LetSoundIntoVobu(MuxState& state) {
  LetSoundTo(state, state.Vobus.back().StartPts + state.Timing.FramePeriod * state.Timing.SlideGopFrames);
}

bool SoundHasEnded(const MuxState& state) {
  return std::ranges::all_of(state.Audio, [](const AudioState& stream) { return stream.NextScr.Units <= 0; });
}

void WarnOfMarkInSlide(const MuxState& state, bool slideEnds) {
  if (state.NextMark >= state.Input.Marks.size()) {
    return;
  }
  const MuxMark& mark = state.Input.Marks[state.NextMark];
  const std::int64_t halves = 2 * mark.Frame;
  if (halves < state.ElapsedHalves || (halves == state.ElapsedHalves && !slideEnds)) {
    TellWarning(state.Build.Ui, MarkTitle,
                fmt::format(MarkInSlide, mark.Name, state.Input.Name, mark.Frame, state.ElapsedHalves / 2));
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
  const std::int64_t ahead = std::accumulate(frames.begin(), frames.end() - 1, std::int64_t{0});
  if (state.Input.ExtendSlideForAudio && state.Input.Kind == TrackKind::SlideShow) {
    frames.back() = std::max(frames.back(), SoundFrames(state) - ahead);
  }
  state.Slides.EndPts = state.PtsOfHalves(2 * (ahead + frames.back()));
}

DecodeTimes SlideTimes(const MuxState& state) {
  const Clock pts = Clock::FromTicks(VideoStartPts) + state.TimeOfHalves(state.HalvesAhead());
  return {pts - Clock::FromTicks(state.Timing.FramePeriod), pts};
}

void OpenSlide(MuxState& state) {
  const PictureUnit& picture = state.Picture;
  const std::string& path = state.Input.Video[picture.File].Path;
  if (picture.File == state.Slides.File) {
    const std::int64_t shown = state.HalvesAhead() - state.Slides.StartHalves;
    if (!picture.Field() || shown > 1) {
      throw MuxFault(fmt::format(SeveralPictures, path, state.Input.Name), state.Pictures.PlaceOf(picture));
    }
    return;
  }
  if (picture.Type != PictureType::I) {
    throw MuxFault(fmt::format(NoIntra, path), state.Pictures.PlaceOf(picture));
  }
  CheckBitRate(state, state.NavScr);
  state.Slides.File = picture.File;
  state.Slides.StartHalves = state.HalvesAhead();
  state.Vobus.back().HasVideo = true;
  LetSoundIntoVobu(state);
}

void HoldSlide(MuxState& state) {
  const std::int64_t end = state.Slides.StartHalves + 2 * state.Slides.Frames[state.Slides.File];
  const bool waits = IsLastFile(state) && state.Input.Infinite;
  while (waits || state.ElapsedHalves < end) {
    const std::int64_t left = end - state.ElapsedHalves;
    // A picture of three fields leaves half a frame over.
    const std::int64_t step =
        waits ? 2 * std::int64_t{state.Timing.SlideGopFrames - 1} : 2 * StepOf(state, left / 2) + left % 2;
    state.ElapsedHalves += step;
    const std::int64_t pts = state.PtsOfHalves(state.ElapsedHalves);
    const Clock wanted = state.TimeOfHalves(state.ElapsedHalves);
    LetSoundTo(state, pts);
    SendDueUnits(state, pts - 1);
    SendAudioAhead(state, wanted, NoLimit);
    const bool ends = !waits && state.ElapsedHalves >= end;
    if ((waits && SoundHasEnded(state)) || (ends && IsLastFile(state))) {
      return;
    }
    WarnOfMarkInSlide(state, ends);
    OpenHeldVobu(state, wanted);
    LetSoundIntoVobu(state);
  }
}

}  // namespace quorvelant
