#include "check/subtitle_check.h"

#include <fmt/format.h>

#include <optional>
#include <utility>
#include <vector>

#include "base/counted.h"
#include "base/text.h"
#include "check/messages.h"
#include "check/track_times.h"
#include "model/keys.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

// The check of one stream.
class StreamCheck {
 public:
  StreamCheck(const Track& track, std::size_t trackIndex, std::size_t streamIndex,
              const SubtitleChecks& context)
      : track_(track),
        stream_(track.SubStreams[streamIndex]),
        times_(track),
        key_(SubStreamKey(trackIndex, streamIndex + 1)),
        context_(context) {}

  Findings Run();

 private:
  bool Still() const { return EqualNoCase(track_.TrackType, "Still"); }
  bool CheckOrder(std::size_t entry, const PlaySpan& span, const PlaySpan& earlier);
  void CheckTimes(std::size_t entry, const PlaySpan& span, const std::optional<PlaySpan>& earlier);
  void CheckIndexes(const SPURecord& record);
  void CheckBitmap(const SPURecord& record);
  void MakeUnitOf(const SPURecord& record);
  void CountOddPixels(const SPURecord& record, const EncodedBitmap& bitmap);
  void TellOddPixels();

  std::string PlaceOf(std::size_t entry) const { return fmt::format("{} entry {}", key_, entry + 1); }
  template <class... Values>
  void Add(const MessageKind& kind, std::size_t entry, const Values&... values) {
    findings_.push_back(MessageOf(kind, PlaceOf(entry), values...));
  }

  const Track& track_;
  const SubtitleStream& stream_;
  TrackTimes times_;
  std::string key_;
  const SubtitleChecks& context_;
  Findings findings_;
  std::size_t oddBitmaps_ = 0;
  std::size_t oddPixels_ = 0;
  std::size_t firstOdd_ = 0;  // entry
};

// Whether the entry starts after the one before it. Traditionally only films were held to the order.
bool StreamCheck::CheckOrder(std::size_t entry, const PlaySpan& span, const PlaySpan& earlier) {
  const std::size_t told = findings_.size();
  if (span.Start == earlier.Start) {
    Add(message::SubtitlesStartTogether, entry, times_.Timecode(span.Start));
  } else if (span.Start < earlier.Start) {
    Add(message::SubtitlesOutOfOrder, entry, times_.Timecode(span.Start), times_.Timecode(earlier.Start));
  }
  if (told < findings_.size() && (Still() || span.Start == earlier.Start)) {
    findings_.back() = ByRules({findings_.back()}, context_.Rules).front();
  }
  return told == findings_.size();
}

// A start against the one before it, and the end of what is before it.
void StreamCheck::CheckTimes(std::size_t entry, const PlaySpan& span,
                             const std::optional<PlaySpan>& earlier) {
  const std::string start = times_.Timecode(span.Start);
  const std::string end = times_.Timecode(span.End);
  if (span.End < span.Start) {
    Add(message::SubtitleEndsBeforeStart, entry, end, start);
  } else if (span.End == span.Start) {
    Add(message::SubtitleWithoutDuration, entry);
  }
  if (earlier && CheckOrder(entry, span, *earlier) && span.Start < earlier->End) {
    Add(message::SubtitlesOverlap, entry, start, times_.Timecode(earlier->End));
  }
  if (times_.StartsPastEnd(span.Start)) {
    Add(message::SubtitleStartsPastEnd, entry, start, times_.End());
  } else if (times_.EndsPastEnd(span.End)) {
    Add(message::SubtitleEndsPastEnd, entry, end, times_.End());
  }
}

void StreamCheck::CheckIndexes(const SPURecord& record) {
  for (const ColorQuad* quad : {&record.ColorIndexes, &record.Contrasts}) {
    for (const std::int32_t value : *quad) {
      if (value < 0 || value > 15) {
        Add(message::SubtitleIndexBeyond, record.Entry, value);
      }
    }
  }
}

// Raises what hinders the unit's making.
void StreamCheck::MakeUnitOf(const SPURecord& record) {
  const bool ntsc = times_.IsNtsc();
  if (const EncodedBitmap* coded = context_.Coded != nullptr ? context_.Coded->Find(record, ntsc) : nullptr) {
    MakeUnit(record, *coded);
    CountOddPixels(record, *coded);
    return;
  }
  const EncodedBitmap bitmap = LoadSPUBitmap(*context_.Pictures, record, ntsc, context_.Rules);
  MakeUnit(record, bitmap);
  CountOddPixels(record, bitmap);
  if (context_.Coded != nullptr) {
    context_.Coded->Keep(record, ntsc, bitmap);
  }
}

void StreamCheck::CountOddPixels(const SPURecord& record, const EncodedBitmap& bitmap) {
  if (bitmap.OddPixels > 0) {
    firstOdd_ = oddBitmaps_++ == 0 ? record.Entry : firstOdd_;
    oddPixels_ += bitmap.OddPixels;
  }
}

void StreamCheck::TellOddPixels() {
  if (oddBitmaps_ > 0) {
    const std::string_view become = context_.Rules.OddPixelsTakeNearest
                                        ? "what has the nearest of them: letters have jagged edges"
                                        : "background: letters lose their edges";
    Add(message::SubtitleOddPixels, firstOdd_, stream_.SubPlays[firstOdd_].File, Counted(oddPixels_, "pixel"),
        Counted(oddBitmaps_, "bitmap"), become);
  }
}

void StreamCheck::CheckBitmap(const SPURecord& record) {
  const SubPicturePlay& entry = stream_.SubPlays[record.Entry];
  if (auto fault = context_.Judge.Subtitle(entry, {entry.File, PlaceOf(record.Entry), times_.IsNtsc()})) {
    findings_.push_back(std::move(*fault));
    return;
  }
  try {
    if (context_.Pictures != nullptr) {
      MakeUnitOf(record);
    }
  } catch (const PictureError& error) {
    Add(message::SubtitleUnfit, record.Entry, error.what());
  } catch (const SubpictureError& error) {
    Message fault = error.What();
    fault.Place = PlaceOf(record.Entry);
    findings_.push_back(std::move(fault));
  }
}

Findings StreamCheck::Run() {
  for (std::size_t i = 0; i < stream_.SubPlays.size(); ++i) {
    if (stream_.SubPlays[i].Used && stream_.SubPlays[i].File.empty()) {
      Add(message::SubtitleWithoutFile, i);
    }
  }
  const TrackClock clock{.FramesPerSecond = times_.FramesPerSecond};
  const std::vector<SPURecord> records =
      PrepareSPURecords(stream_, {}, clock, {.SourceFolder = context_.SourceFolder});
  if (context_.Coded != nullptr && context_.Pictures != nullptr) {
    CodeAhead(records, times_.IsNtsc(), context_.Rules, context_.Ui, *context_.Coded);
  }
  std::optional<PlaySpan> earlier;
  for (const SPURecord& record : records) {
    if (context_.Ui.StopRequested()) {
      break;
    }
    const PlaySpan span = SpanOf(stream_.SubPlays[record.Entry], times_.FramesPerSecond);
    if (!Still()) {
      CheckTimes(record.Entry, span, earlier);
    } else if (earlier) {
      CheckOrder(record.Entry, span, *earlier);
    }
    earlier = span;
    CheckIndexes(record);
    CheckBitmap(record);
  }
  TellOddPixels();
  return std::move(findings_);
}

}  // namespace

Findings CheckSubtitles(const Track& track, std::size_t trackIndex, std::size_t streamIndex,
                        const SubtitleChecks& checks) {
  return StreamCheck(track, trackIndex, streamIndex, checks).Run();
}

}  // namespace quorvelant
