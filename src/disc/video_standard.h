// The figures of PAL and NTSC.
#pragma once

#include <cstdint>

namespace quorvelant {

// How each standard divides time.
struct FrameTiming {
  std::int64_t FramePeriod;   // ticks a frame
  int FramesPerSecond;        // 25 or 30, as timecodes count
  int VobuMinFrames;          // least frames in a VOBU
  int SlideGopFrames;         // frames in one repeat of a slide
  int MostTemporalReference;  // a GOP may not be longer
  int MostGopFields;          // displayed fields of a GOP that players expect at most
  int SceneMarginFrames;      // a scene cannot start closer to the end of its track
  // Traditionally a rest of a slide's hold shorter than this is shown in one step.
  int SlideRestFrames;
};
inline constexpr FrameTiming PalTiming{.FramePeriod = 3600,
                                       .FramesPerSecond = 25,
                                       .VobuMinFrames = 10,
                                       .SlideGopFrames = 12,
                                       .MostTemporalReference = 15,
                                       .MostGopFields = 30,
                                       .SceneMarginFrames = 15,
                                       .SlideRestFrames = 18};
inline constexpr FrameTiming NtscTiming{.FramePeriod = 3003,
                                        .FramesPerSecond = 30,
                                        .VobuMinFrames = 12,
                                        .SlideGopFrames = 15,
                                        .MostTemporalReference = 18,
                                        .MostGopFields = 36,
                                        .SceneMarginFrames = 12,
                                        .SlideRestFrames = 22};
constexpr const FrameTiming& TimingOf(bool ntsc) {
  return ntsc ? NtscTiming : PalTiming;
}

// Pixels of a full picture; half and quarter sizes divide these by two.
inline constexpr int FullWidth = 720;
inline constexpr int CroppedWidth = 704;
inline constexpr int HalfWidth = 352;
constexpr int FullHeight(bool ntsc) {
  return ntsc ? 480 : 576;
}

}  // namespace quorvelant
