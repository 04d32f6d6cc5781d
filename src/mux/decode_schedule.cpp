#include "mux/decode_schedule.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostAhead = 36;  // pictures: the fields of the longest GOP

}  // namespace

int BetweenHalves(const CodedPicture& reference, const PicturesAhead& ahead) {
  int halves = 0;
  for (std::size_t i = 1; i <= MostAhead; ++i) {
    const CodedPicture* next = ahead(i);
    if (next == nullptr) {
      break;
    }
    if (next->Type == PictureType::B) {
      halves += next->ShownHalves();
    } else if (!next->Field() || next->Temporal != reference.Temporal || i > 1) {
      break;
    }
  }
  return halves;
}

DecodeSchedule::DecodeSchedule(const FrameTiming& timing)
    : halfFrame_{timing.FramePeriod * Clock::UnitsPerTick / 2},
      referenceDts_(Clock::FromTicks(VideoStartPts - timing.FramePeriod)) {}

DecodeTimes DecodeSchedule::Reference(const CodedPicture& picture, const PicturesAhead& ahead) {
  if (haveReference_) {
    referenceDts_ = referencePts_;
  }
  const int between = BetweenHalves(picture, ahead) + referenceRepeat_;
  referencePts_ = referenceDts_ + Halves(2 + between);
  formerRepeat_ = referenceRepeat_;
  referenceRepeat_ = picture.RepeatHalves;
  haveReference_ = true;
  return {referenceDts_, referencePts_};
}

DecodeTimes DecodeSchedule::Next(const CodedPicture& picture, const PicturesAhead& ahead) {
  const bool secondField = picture.Field() && formerOpensPair_ && picture.Temporal == formerPicture_.Temporal;
  DecodeTimes times;
  if (secondField) {
    times.Dts = former_.Dts + Halves(1);
    times.Pts = picture.Type == PictureType::B ? times.Dts : former_.Pts + Halves(1);
  } else if (picture.Type == PictureType::B) {
    const int formerHalves = haveReference_ ? formerPicture_.LengthHalves + formerRepeat_ : 2;
    times.Dts = (haveReference_ ? former_.Dts : referenceDts_) + Halves(formerHalves);
    times.Pts = times.Dts;
    formerRepeat_ = picture.RepeatHalves;
  } else {
    times = Reference(picture, ahead);
  }
  formerOpensPair_ = picture.Field() && !secondField;
  former_ = times;
  formerPicture_ = picture;
  return times;
}

TimeStamps StampsOf(const DecodeTimes& times, const FrameTiming& timing) {
  TimeStamps stamps{times.Pts.WholeTicks(), times.Dts.WholeTicks()};
  if (timing.FramePeriod % 2 == 0) {
    return stamps;
  }
  const std::int64_t beyond = (stamps.Pts - stamps.Dts) % timing.FramePeriod;
  if (beyond >= 1 && beyond <= 9) {
    stamps.Pts -= beyond;
  } else if (beyond >= 1496 && beyond <= 1500) {
    stamps.Pts += 1501 - beyond;
  } else if (beyond >= 1502 && beyond <= 1506) {
    stamps.Dts += beyond - 1501;
  } else if (beyond >= 2994) {
    stamps.Pts += timing.FramePeriod - beyond;
  }
  return stamps;
}

}  // namespace quorvelant
