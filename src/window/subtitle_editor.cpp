#include "window/subtitle_editor.h"

#include <utility>

#include "base/message_error.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/subtitle_along.h"
#include "subpicture/subtitle_times.h"
#include "ui/subtitle_model.h"
#include "window/time_text.h"

namespace quorvelant {

namespace {

// What the table shows of an entry's times.
SubtitleTimes TimesOf(const SubtitleStream& stream, std::size_t entry, int rate) {
  const SubPicturePlay& play = stream.SubPlays[entry];
  const std::int64_t start = TimecodeToFrames(play.Start, rate);
  const std::int64_t next = entry + 1 < stream.SubPlays.size()
                                ? TimecodeToFrames(stream.SubPlays[entry + 1].Start, rate) - 1
                                : start + rate;
  return {start, EndOf(play, rate).value_or(next) - start};
}

}  // namespace

const SubtitleStream& SubtitleEditor::StreamOf(const SubtitlePlace& place) const {
  return parts_.Doc.Work().Tracks[place.Track].SubStreams[place.Stream];
}

int SubtitleEditor::RateOf(const SubtitlePlace& place) const {
  return TrackTimes(parts_.Doc.Work().Tracks[place.Track]).FramesPerSecond;
}

std::int64_t SubtitleEditor::StartOf(const SubtitlePlace& place) const {
  return TimecodeToFrames(StreamOf(place).SubPlays[place.Entry].Start, RateOf(place));
}

Outcome SubtitleEditor::Retime(const SubtitlePlace& place, int column, const QString& text) {
  const int rate = RateOf(place);
  SubtitleTimes times = TimesOf(StreamOf(place), place.Entry, rate);
  try {
    if (column == SubtitleModel::Start) {
      times.Start = FramesIn(text, times.Start, rate);
    } else if (column == SubtitleModel::Duration) {
      times.Frames = FramesIn(text, times.Frames, rate);
    } else {
      times.Frames = FramesIn(text, times.Start + times.Frames, rate) - times.Start;
    }
  } catch (const MessageError& trouble) {
    return Outcome::Refused(trouble.What());
  }
  return parts_.Doc.Try([&](EditSession& session) { return SetTimes(session, place, times); });
}

void SubtitleEditor::Tick(const SubtitlePlace& place, int column, bool on) {
  parts_.Doc.Do([&](EditSession& session, Consent) {
    return column == SubtitleModel::Forced ? SetForcedMark(session, place, on) : SetUsed(session, place, on);
  });
}

std::optional<std::string> SubtitleEditor::SetHere(const SubtitlePlace& place, bool isEnd, bool along) {
  if (parts_.View.TrackIndex() != place.Track) {
    return std::nullopt;
  }
  const std::int64_t frame = parts_.View.State().Frame;
  const SubPicturePlay before = StreamOf(place).SubPlays[place.Entry];
  SubtitleTimes times = TimesOf(StreamOf(place), place.Entry, RateOf(place));
  if (isEnd) {
    times.Frames = frame - times.Start;
  } else if (along || frame >= times.Start + times.Frames) {
    times.Start = frame;  // as long as before
  } else {
    times.Frames -= frame - times.Start;
    times.Start = frame;
  }
  auto key = parts_.Doc.Do([&](EditSession& session, Consent) {
    return along ? SetTimesAlong(session, place, times) : SetTimes(session, place, times);
  });
  if (key && StreamOf(place).SubPlays[place.Entry] == before) {
    parts_.Doc.Speaks().Status(isEnd ? "Nothing changed: the subtitle ends at this picture already"
                                     : "Nothing changed: the subtitle starts at this picture already");
  }
  return key;
}

std::optional<std::string> SubtitleEditor::AskBitmap() {
  const auto files =
      parts_.Answers.FilesToOpen("Please select your Subpicture", {{"Pictures", {"bmp", "png"}}}, false);
  return files.empty() ? std::nullopt : std::optional(parts_.Doc.AsScriptHolds(files.front()));
}

std::optional<std::string> SubtitleEditor::AddHere(std::optional<std::size_t> stream,
                                                   SubPicturePlay settings) {
  const auto track = parts_.View.TrackIndex();
  if (!track) {
    return std::nullopt;
  }
  const SubtitleMoment moment{*track, stream, parts_.View.State().Frame};
  // Without a stream there is nothing to choose a bitmap for; the operation says so.
  auto file = stream ? AskBitmap() : std::optional(std::string());
  if (!file) {
    return std::nullopt;
  }
  settings.File = *std::move(file);
  return parts_.Doc.Do([&](EditSession& session, Consent) { return NewSubtitle(session, moment, settings); });
}

void SubtitleEditor::ReplaceAt(const SubtitleMoment& moment) {
  if (const auto file = AskBitmap()) {
    parts_.Doc.Do([&](EditSession& session, Consent) { return ReplaceBitmap(session, moment, *file); });
  }
}

}  // namespace quorvelant
