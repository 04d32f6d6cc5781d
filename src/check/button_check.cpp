#include "check/button_check.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "base/counted.h"
#include "check/messages.h"
#include "check/track_times.h"
#include "model/highlight_groups.h"
#include "model/keys.h"
#include "subpicture/bitmap_window.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

// The check of the sets of one track.
class SetCheck {
 public:
  SetCheck(const Track& track, std::size_t trackIndex)
      : track_(track), times_(track), key_(HighStreamKey(trackIndex)) {}

  Findings Run();

 private:
  void CheckTimes(const PlaySpan& span, const std::optional<PlaySpan>& earlier);
  void CheckButtonsOf(const HighlightPlay& play);
  void CheckArea(const HighlightButton& button, const HighlightArea& area);
  void CheckNames(const HighlightPlay& play);
  void CheckValues(const HighlightPlay& play);
  bool ForcedSubtitleShows(const PlaySpan& buttons) const;

  template <class... Values>
  void Add(const MessageKind& kind, const Values&... values) {
    findings_.push_back(MessageOf(kind, place_, values...));
  }

  const Track& track_;
  TrackTimes times_;
  std::string key_;
  std::string place_;  // of the set that is looked at
  Findings findings_;
};

// The span of a set against its track and the set before it.
void SetCheck::CheckTimes(const PlaySpan& span, const std::optional<PlaySpan>& earlier) {
  const std::string start = times_.Timecode(span.Start);
  if (times_.StartsPastEnd(span.Start)) {
    Add(message::ButtonsOutsideTrack, start, times_.End());
  } else if (times_.EndsPastEnd(span.End)) {
    Add(message::ButtonsEndPastEnd, times_.Timecode(span.End), times_.End());
  }
  if (earlier && span.Start < earlier->Start) {
    Add(message::ButtonsOutOfOrder, start, times_.Timecode(earlier->Start));
  } else if (earlier && span.Start < earlier->End) {
    Add(message::ButtonsOverlap, start, times_.Timecode(earlier->End));
  }
}

void SetCheck::CheckArea(const HighlightButton& button, const HighlightArea& area) {
  if (area.X1 < 0 || area.Y1 < 0 || area.X2 <= area.X1 || area.Y2 <= area.Y1 || area.X2 >= ScreenWidth ||
      area.Y2 >= ScreenHeight(times_.IsNtsc())) {
    Add(message::ButtonAreaUnfit, button.Name, area.X1, area.Y1, area.X2, area.Y2);
  }
}

void SetCheck::CheckButtonsOf(const HighlightPlay& play) {
  const auto groups = ButtonGroupsOf(play, track_.Aspect, track_.DisplayMode);
  const std::size_t most = MostButtonsOnDisc(groups.size());
  const std::size_t count = play.Buttons.size();
  if (count > most) {
    Add(message::TooManyButtons, count, Counted(groups.size(), "display mode"), most);
  }
  for (const HighlightButton& button : play.Buttons) {
    if (button.ColorScheme < 1 || button.ColorScheme > 3) {
      Add(message::ButtonSchemeUnknown, button.Name, button.ColorScheme);
    }
    for (const ButtonGroup& group : groups) {
      CheckArea(button, button.Areas.at(group.AreaPlace));
    }
  }
  const std::array<std::pair<std::string_view, std::int32_t>, 2> forced{
      {{"forced", play.ForcedSelect}, {"forced action", play.ForcedAction}}};
  for (const auto& [kind, number] : forced) {
    if (number < 0 || static_cast<std::size_t>(number) > count) {
      Add(message::ForcedButtonMissing, kind, number, count);
    }
  }
}

void SetCheck::CheckNames(const HighlightPlay& play) {
  std::unordered_set<std::string_view> names;
  for (const HighlightButton& button : play.Buttons) {
    if (!names.insert(button.Name).second) {
      Add(message::ButtonNameRepeated, button.Name);
    }
  }
}

// What a disc has too few bits for, and a selection that is over before it begins.
void SetCheck::CheckValues(const HighlightPlay& play) {
  constexpr std::int32_t MostIndex = 15;
  constexpr std::int32_t MostOffset = 255;
  const auto check = [this](std::string_view what, std::int32_t value, std::int32_t most) {
    if (value < 0 || value > most) {
      Add(message::ButtonValueBeyond, what, most, value);
    }
  };
  for (const ColorScheme& scheme : play.Schemes) {
    for (const ColorQuad* quad :
         {&scheme.SelectionColor, &scheme.SelectionContrast, &scheme.ActionColor, &scheme.ActionContrast}) {
      for (const std::int32_t value : *quad) {
        check("a colour or contrast", value, MostIndex);
      }
    }
  }
  check("the Offset", play.Offset, MostOffset);
  const std::int64_t start = SpanOf(play, times_.FramesPerSecond).Start;
  const std::int64_t over = TimecodeToFrames(play.SelectionEndTime, times_.FramesPerSecond);
  if (over > 0 && over <= start) {
    Add(message::ButtonSelectionOver, times_.Timecode(start), times_.Timecode(over));
  }
}

bool SetCheck::ForcedSubtitleShows(const PlaySpan& buttons) const {
  const bool still = EqualNoCase(track_.TrackType, "Still");
  return std::ranges::any_of(track_.SubStreams, [&](const SubtitleStream& stream) {
    return !stream.Removed && std::ranges::any_of(stream.SubPlays, [&](const SubPicturePlay& play) {
      const PlaySpan span = SpanOf(play, times_.FramesPerSecond);
      const bool meets = span.Start < std::max(buttons.End, buttons.Start + 1) && buttons.Start < span.End;
      return play.Used && play.Forced && (still || meets);
    });
  });
}

Findings SetCheck::Run() {
  std::optional<PlaySpan> earlier;
  for (std::size_t i = 0; i < track_.HighlightPlays.size(); ++i) {
    const HighlightPlay& play = track_.HighlightPlays[i];
    place_ = fmt::format("{} entry {}", key_, i + 1);
    const PlaySpan span = SpanOf(play, times_.FramesPerSecond);
    CheckTimes(span, earlier);
    earlier = span;
    CheckButtonsOf(play);
    CheckNames(play);
    CheckValues(play);
    if (play.Buttons.empty()) {
      Add(message::ButtonSetEmpty);
    } else if (!ForcedSubtitleShows(span)) {
      Add(message::ButtonsWithoutSubtitle);
    }
  }
  return std::move(findings_);
}

}  // namespace

Findings CheckButtonLinks(const Track& track, std::size_t trackIndex) {
  Findings findings;
  for (std::size_t i = 0; i < track.HighlightPlays.size(); ++i) {
    const auto& buttons = track.HighlightPlays[i].Buttons;
    std::unordered_set<std::string_view> names;
    for (const HighlightButton& button : buttons) {
      names.insert(button.Name);
    }
    for (const HighlightButton& button : buttons) {
      for (const std::string* link : {&button.Up, &button.Down, &button.Left, &button.Right}) {
        if (!link->empty() && !names.contains(*link)) {
          findings.push_back(MessageOf(message::ButtonLinkMissing,
                                       fmt::format("{} entry {}", HighStreamKey(trackIndex), i + 1),
                                       button.Name, *link));
        }
      }
    }
  }
  return findings;
}

Findings CheckButtons(const Track& track, std::size_t trackIndex) {
  return SetCheck(track, trackIndex).Run();
}

}  // namespace quorvelant
