#include "check/preflight.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "model/keys.h"
#include "subpicture/highlight_groups.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

namespace text = preflight_text;

// What the checks of one track share.
struct TrackCheck {
  const Track& Of;
  std::size_t Index = 0;
  int FramesPerSecond = 25;
  bool Ntsc = false;
  std::int64_t Frames = 0;  // 0 where the length is not known or does not bind: stills and slides
  std::vector<Message>& Messages;

  std::string Timecode(std::int64_t frame) const { return FramesToTimecode(frame, FramesPerSecond); }
};

// Tells about one entry of a track.
class EntryVoice {
 public:
  EntryVoice(TrackCheck& check, std::string_view title, std::string place)
      : check_(&check), title_(title), place_(std::move(place)) {}

  void Error(std::string words) { Add(Severity::Error, std::move(words)); }
  void Warning(std::string words) { Add(Severity::Warning, std::move(words)); }

 private:
  void Add(Severity level, std::string words) {
    check_->Messages.push_back({level, std::string(title_), std::move(words), place_});
  }

  TrackCheck* check_;
  std::string_view title_;
  std::string place_;
};

TrackCheck CheckOf(const Track& track, std::size_t trackIndex, std::vector<Message>& messages) {
  TrackCheck check{.Of = track, .Index = trackIndex, .Messages = messages};
  check.FramesPerSecond = FramesPerSecond(track.Standard);
  check.Ntsc = check.FramesPerSecond == 30;
  if (EqualNoCase(track.TrackType, "Motion")) {
    check.Frames = track.VideoFrames > 0 ? track.VideoFrames : track.FrameCount;
  }
  return check;
}

// A start against the one ahead, and the end of what is ahead.
void CheckSubtitleTimes(const TrackCheck& check, const PlaySpan& span, const std::optional<PlaySpan>& ahead,
                        EntryVoice& voice) {
  const std::string start = check.Timecode(span.Start);
  if (span.End < span.Start) {
    voice.Error(fmt::format(text::EndsBeforeStart, check.Timecode(span.End), start));
  } else if (span.End == span.Start) {
    voice.Warning(std::string(text::NoDuration));
  }
  if (ahead && span.Start < ahead->Start) {
    voice.Error(fmt::format(text::OutOfOrder, start, check.Timecode(ahead->Start)));
  } else if (ahead && span.Start == ahead->Start) {
    voice.Warning(fmt::format(text::SameStart, start));
  } else if (ahead && span.Start < ahead->End) {
    voice.Warning(fmt::format(text::Overlap, start, check.Timecode(ahead->End)));
  }
  if (check.Frames > 0 && span.Start >= check.Frames) {
    voice.Warning(fmt::format(text::StartsPastEnd, start, check.Timecode(check.Frames)));
  } else if (check.Frames > 0 && span.End > check.Frames) {
    voice.Warning(fmt::format(text::EndsPastEnd, check.Timecode(span.End), check.Timecode(check.Frames)));
  }
}

void CheckIndexes(const SPURecord& record, EntryVoice& voice) {
  for (const ColorQuad* quad : {&record.ColorIndexes, &record.Contrasts}) {
    for (const std::int32_t value : *quad) {
      if (value < 0 || value > 15) {
        voice.Warning(fmt::format(text::BadIndex, value));
      }
    }
  }
}

// Raises what hinders the unit's making.
void CheckUnit(const SPURecord& record, bool ntsc, const SubpictureChecks& context) {
  if (const EncodedBitmap* coded = context.Coded != nullptr ? context.Coded->Find(record, ntsc) : nullptr) {
    MakeUnit(record, *coded);
    return;
  }
  const EncodedBitmap bitmap = LoadSPUBitmap(context.Pictures, record, ntsc, context.Rules);
  MakeUnit(record, bitmap);
  if (context.Coded != nullptr) {
    context.Coded->Keep(record, ntsc, bitmap);
  }
}

void CheckStream(TrackCheck& check, std::size_t streamIndex, const SubpictureChecks& context) {
  const SubtitleStream& stream = check.Of.SubStreams[streamIndex];
  const TrackClock clock{.FramesPerSecond = check.FramesPerSecond};
  const auto placeOf = [&](std::size_t entry) {
    return fmt::format("{} ({}) entry {}", SubStreamKey(check.Index, streamIndex + 1), check.Of.TrackName,
                       entry + 1);
  };
  for (std::size_t i = 0; i < stream.SubPlays.size(); ++i) {
    if (stream.SubPlays[i].Used && stream.SubPlays[i].File.empty()) {
      EntryVoice(check, text::SubtitleTitle, placeOf(i)).Warning(std::string(text::NoFile));
    }
  }
  const std::vector<SPURecord> records =
      PrepareSPURecords(stream, {}, clock, {.SourceFolder = context.SourceFolder});
  if (context.Coded != nullptr) {
    CodeAhead(records, check.Ntsc, context.Rules, context.Ui, *context.Coded);
  }
  std::optional<PlaySpan> ahead;
  for (const SPURecord& record : records) {
    if (context.Ui.StopRequested()) {
      return;
    }
    EntryVoice voice(check, text::SubtitleTitle, placeOf(record.Entry));
    const PlaySpan span = SpanOf(stream.SubPlays[record.Entry], check.FramesPerSecond);
    if (!EqualNoCase(check.Of.TrackType, "Still")) {
      CheckSubtitleTimes(check, span, ahead, voice);
    }
    ahead = span;
    CheckIndexes(record, voice);
    try {
      CheckUnit(record, check.Ntsc, context);
    } catch (const PictureError& error) {
      voice.Error(error.what());
    } catch (const SubpictureError& error) {
      voice.Error(error.what());
    }
  }
}

void CheckLinks(const HighlightPlay& play, EntryVoice& voice) {
  std::unordered_set<std::string> names;
  for (const HighlightButton& button : play.Buttons) {
    if (!names.insert(button.Name).second) {
      voice.Warning(fmt::format(text::SameName, button.Name));
    }
  }
  for (const HighlightButton& button : play.Buttons) {
    const std::array<std::pair<std::string_view, const std::string*>, 4> links{
        {{"up", &button.Up}, {"down", &button.Down}, {"left", &button.Left}, {"right", &button.Right}}};
    for (const auto& [direction, name] : links) {
      if (!name->empty() && !names.contains(*name)) {
        voice.Warning(fmt::format(text::NoSuchButton, direction, button.Name, *name));
      }
    }
  }
}

void CheckButtons(const TrackCheck& check, const HighlightPlay& play, EntryVoice& voice) {
  const auto groups = ButtonGroupsOf(play, check.Of.Aspect, check.Of.DisplayMode);
  const std::size_t most = MostButtonsOnDisc(groups.size());
  const std::size_t count = play.Buttons.size();
  if (count > most) {
    voice.Error(fmt::format(text::TooManyButtons, count, groups.size(), most));
  }
  for (const HighlightButton& button : play.Buttons) {
    if (button.ColorScheme < 1 || button.ColorScheme > 3) {
      voice.Warning(fmt::format(text::BadScheme, button.Name, button.ColorScheme));
    }
    for (const ButtonGroup& group : groups) {
      const HighlightArea& area = button.Areas.at(group.AreaPlace);
      if (area.X1 < 0 || area.Y1 < 0 || area.X2 <= area.X1 || area.Y2 <= area.Y1 || area.X2 >= ScreenWidth ||
          area.Y2 >= ScreenHeight(check.Ntsc)) {
        voice.Warning(fmt::format(text::BadArea, button.Name, area.X1, area.Y1, area.X2, area.Y2));
      }
    }
  }
  const std::array<std::pair<std::string_view, std::int32_t>, 2> forced{
      {{"forced", play.ForcedSelect}, {"forced action", play.ForcedAction}}};
  for (const auto& [kind, number] : forced) {
    if (number < 0 || static_cast<std::size_t>(number) > count) {
      voice.Warning(fmt::format(text::BadForced, kind, number, count));
    }
  }
}

// The span of a set against its track and the set ahead of it.
void CheckSetTimes(const TrackCheck& check, const PlaySpan& span, const std::optional<PlaySpan>& ahead,
                   EntryVoice& voice) {
  const std::string start = check.Timecode(span.Start);
  if (check.Frames > 0 && span.Start >= check.Frames) {
    voice.Error(fmt::format(text::OutsideTrack, start, check.Timecode(check.Frames)));
  } else if (check.Frames > 0 && span.End > check.Frames) {
    voice.Warning(fmt::format(text::SetEndsPastEnd, check.Timecode(span.End), check.Timecode(check.Frames)));
  }
  if (ahead && span.Start < ahead->Start) {
    voice.Error(fmt::format(text::SetsOutOfOrder, start, check.Timecode(ahead->Start)));
  } else if (ahead && span.Start < ahead->End) {
    voice.Warning(fmt::format(text::SetsOverlap, start, check.Timecode(ahead->End)));
  }
}

bool ForcedSubtitleShows(const TrackCheck& check, const PlaySpan& buttons) {
  const bool still = EqualNoCase(check.Of.TrackType, "Still");
  return std::ranges::any_of(check.Of.SubStreams, [&](const SubtitleStream& stream) {
    return !stream.Removed && std::ranges::any_of(stream.SubPlays, [&](const SubPicturePlay& play) {
      const PlaySpan span = SpanOf(play, check.FramesPerSecond);
      const bool meets = span.Start < std::max(buttons.End, buttons.Start + 1) && buttons.Start < span.End;
      return play.Used && play.Forced && (still || meets);
    });
  });
}

void CheckHighlights(TrackCheck& check, bool links) {
  std::optional<PlaySpan> ahead;
  for (std::size_t i = 0; i < check.Of.HighlightPlays.size(); ++i) {
    const HighlightPlay& play = check.Of.HighlightPlays[i];
    EntryVoice voice(check, text::HighlightTitle,
                     fmt::format("{} ({}) entry {}", HighStreamKey(check.Index), check.Of.TrackName, i + 1));
    const PlaySpan span = SpanOf(play, check.FramesPerSecond);
    CheckSetTimes(check, span, ahead, voice);
    ahead = span;
    CheckButtons(check, play, voice);
    if (links) {
      CheckLinks(play, voice);
    }
    if (!play.Buttons.empty() && !ForcedSubtitleShows(check, span)) {
      voice.Warning(std::string(text::NothingForced));
    }
  }
}

}  // namespace

std::vector<Message> CheckTrackSubpictures(const Track& track, std::size_t trackIndex,
                                           const SubpictureChecks& checks) {
  std::vector<Message> messages;
  TrackCheck check = CheckOf(track, trackIndex, messages);
  for (std::size_t i = 0; i < track.SubStreams.size(); ++i) {
    const SubtitleStream& stream = track.SubStreams[i];
    if (!stream.Removed && (stream.MuxThisStream || !checks.MuxedOnly)) {
      CheckStream(check, i, checks);
    }
  }
  CheckHighlights(check, checks.ButtonLinks);
  return messages;
}

}  // namespace quorvelant
