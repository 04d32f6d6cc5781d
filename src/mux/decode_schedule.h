// When each picture is decoded and shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "disc/clock.h"
#include "disc/video_standard.h"
#include "mux/coded_picture.h"

namespace quorvelant {

struct DecodeTimes {
  Clock Dts;
  Clock Pts;
};

// The time stamps as they are written: whole ticks.
struct TimeStamps {
  std::int64_t Pts = 0;
  std::int64_t Dts = 0;
  bool operator==(const TimeStamps&) const = default;
};

// The picture `offset` places after the current one in coded order; null at the end of the track.
using PicturesAfter = std::function<const CodedPicture*(std::size_t offset)>;

// Fields of B pictures between a reference picture and the next one: the time by which it is shown
// later than the reference picture before it would end. The second field of the picture itself is no end.
int BetweenFields(const CodedPicture& reference, const PicturesAfter& after);

// Gives every picture of a VOB its times, in coded order. The decoder holds one reference picture back:
// it is shown when the next one is decoded, while a B picture is shown as it is decoded. Whatever the
// first GOP looks like, the first picture shown is shown at VideoStartPts.
class DecodeSchedule {
 public:
  explicit DecodeSchedule(const FrameTiming& timing);
  DecodeTimes Next(const CodedPicture& picture, const PicturesAfter& after);

 private:
  Clock Fields(int fields) const { return {fieldPeriod_.Units * fields}; }
  DecodeTimes Reference(const CodedPicture& picture, const PicturesAfter& after);

  Clock fieldPeriod_;
  Clock referenceDts_;  // of the latest reference picture; before it, one frame before the start
  Clock referencePts_;
  bool haveReference_ = false;
  int referenceRepeat_ = 0;  // fields by which the latest reference picture is shown longer
  int previousRepeat_ = 0;   // the same of the picture on screen while the next one is decoded
  DecodeTimes previous_;
  CodedPicture previousPicture_;
  bool previousOpensPair_ = false;  // the previous picture is a first field
};

// With field times that do not fall on whole ticks (NTSC), a PTS that lies near a whole number of fields
// after its DTS is moved there, so that the rounding does not show as drift.
TimeStamps StampsOf(const DecodeTimes& times, const FrameTiming& timing);

}  // namespace quorvelant
