#include "mux/decode_schedule.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostAhead =
    std::size_t{NtscTiming.MostGopFields};  // pictures: fields of the longest GOP

// Ticks. A field of NTSC lasts 1501.5; times are written with the fraction cut.
constexpr std::int64_t NtscFieldTicks = 1501;
constexpr std::int64_t NearAField = 5;   // ticks about a whole number of fields that are taken for it
constexpr std::int64_t AfterAFrame = 9;  // ticks after a whole number of frames
constexpr std::int64_t BeforeAFrame = 9;

}  // namespace

int BetweenFields(const CodedPicture& reference, const PicturesAfter& after) {
  int fields = 0;
  for (std::size_t i = 1; i <= MostAhead; ++i) {
    const CodedPicture* next = after(i);
    if (next == nullptr) {
      break;
    }
    if (next->Type == PictureType::B) {
      fields += next->ShownFields();
    } else if (!next->IsField() || next->TemporalReference != reference.TemporalReference || i > 1) {
      break;
    }
  }
  return fields;
}

DecodeSchedule::DecodeSchedule(const FrameTiming& timing)
    : fieldPeriod_{timing.FramePeriod * Clock::UnitsPerTick / 2},
      referenceDts_(Clock::FromTicks(VideoStartPts - timing.FramePeriod)) {}

DecodeTimes DecodeSchedule::Reference(const CodedPicture& picture, const PicturesAfter& after) {
  if (haveReference_) {
    referenceDts_ = referencePts_;
  }
  const int between = BetweenFields(picture, after) + referenceRepeat_;
  referencePts_ = referenceDts_ + Fields(2 + between);
  previousRepeat_ = referenceRepeat_;
  referenceRepeat_ = picture.RepeatFields;
  haveReference_ = true;
  return {referenceDts_, referencePts_};
}

DecodeTimes DecodeSchedule::Next(const CodedPicture& picture, const PicturesAfter& after) {
  const bool secondField = picture.IsField() && previousOpensPair_ &&
                           picture.TemporalReference == previousPicture_.TemporalReference;
  DecodeTimes times;
  if (secondField) {
    times.Dts = previous_.Dts + Fields(1);
    times.Pts = picture.Type == PictureType::B ? times.Dts : previous_.Pts + Fields(1);
  } else if (picture.Type == PictureType::B) {
    const int previousFields = haveReference_ ? previousPicture_.LengthFields + previousRepeat_ : 2;
    times.Dts = (haveReference_ ? previous_.Dts : referenceDts_) + Fields(previousFields);
    times.Pts = times.Dts;
    previousRepeat_ = picture.RepeatFields;
  } else {
    times = Reference(picture, after);
  }
  previousOpensPair_ = picture.IsField() && !secondField;
  previous_ = times;
  previousPicture_ = picture;
  return times;
}

TimeStamps StampsOf(const DecodeTimes& times, const FrameTiming& timing) {
  TimeStamps stamps{times.Pts.WholeTicks(), times.Dts.WholeTicks()};
  if (timing.FramePeriod % 2 == 0) {
    return stamps;
  }
  const std::int64_t beyond = (stamps.Pts - stamps.Dts) % timing.FramePeriod;
  const std::int64_t fromField = beyond - NtscFieldTicks;
  if (beyond >= 1 && beyond <= AfterAFrame) {
    stamps.Pts -= beyond;
  } else if (beyond >= timing.FramePeriod - BeforeAFrame) {
    stamps.Pts += timing.FramePeriod - beyond;
  } else if (fromField >= -NearAField && fromField < 0) {
    stamps.Pts -= fromField;
  } else if (fromField > 0 && fromField <= NearAField) {
    stamps.Dts += fromField;
  }
  return stamps;
}

}  // namespace quorvelant
