#include "ui/button_board.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/auto_route.h"
#include "edit/button_aims.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "model/highlight_groups.h"
#include "model/keys.h"
#include "subpicture/spu_timing.h"
#include "subpicture/subtitle_times.h"
#include "ui/button_shade.h"
#include "ui/messages.h"
#include "ui/picture_geometry.h"

namespace quorvelant {

namespace {

constexpr std::array<ViewMode, 3> GroupViews{ViewMode::Wide, ViewMode::LetterBox, ViewMode::Pan};

// The area of the first group that the disc has: routes go by where buttons lie there.
std::size_t FirstArea(const Track& track, const HighlightPlay& set) {
  return ButtonGroupsOf(set, track.Aspect, track.DisplayMode).front().AreaPlace;
}

bool SameLinks(const std::vector<HighlightButton>& a, const std::vector<HighlightButton>& b) {
  return std::ranges::equal(a, b, [](const HighlightButton& one, const HighlightButton& other) {
    return one.Up == other.Up && one.Down == other.Down && one.Left == other.Left && one.Right == other.Right;
  });
}

// How the buttons are linked, if not by hand.
std::optional<Route> RouteOf(const std::vector<HighlightButton>& buttons, std::size_t area,
                             const Rules& rules) {
  for (const Route route : OfferedRoutes(rules)) {
    std::vector<HighlightButton> routed = buttons;
    AutoRoute(routed, route, area);
    if (SameLinks(routed, buttons)) {
      return route;
    }
  }
  return std::nullopt;
}

// Links of a new button, which is the last: by the route of the others, or else its own alone.
void LinkNew(std::vector<EditedButton>& buttons, std::optional<Route> route, std::size_t area,
             const Rules& rules) {
  std::vector<EditedButton> routed = buttons;
  AutoRoute(std::span<EditedButton>(routed), route.value_or(OfferedRoutes(rules).front()), area);
  if (route) {
    buttons = std::move(routed);
    return;
  }
  buttons.back().Button = routed.back().Button;
}

// A name of one line that no button of the set has.
std::string FreeButtonName(const std::vector<EditedButton>& buttons, std::string_view wanted) {
  const std::string stem(Trim(wanted.substr(0, wanted.find_first_of("\r\n"))));
  std::string name = stem;
  const auto isTaken = [&] {
    return std::ranges::any_of(buttons, [&](const EditedButton& one) { return one.Button.Name == name; });
  };
  for (int number = 2; isTaken(); ++number) {
    name = fmt::format("{} {}", stem, number);
  }
  return name;
}

// All groups from the area that was drawn in one view.
void PutAreas(HighlightButton& button, const HighlightArea& area, const ButtonView& view) {
  const HighlightArea whole = AreaFromView(area, view.Mode, view.Ntsc);
  for (std::size_t group = 0; group < GroupViews.size(); ++group) {
    const bool isOwn = group == GroupOfView(view.Mode);
    const bool isPlain = view.Mode == ViewMode::Normal;
    button.Areas.at(group) = isOwn || isPlain ? area : AreaInView(whole, GroupViews.at(group), view.Ntsc);
  }
}

// The own group moves; others that showed the same part of the picture go along.
void MoveAreas(HighlightButton& button, const HighlightArea& area, const ButtonView& view) {
  const HighlightButton before = button;
  HighlightButton expected = before;
  PutAreas(expected, before.Areas.at(GroupOfView(view.Mode)), view);
  HighlightButton moved = before;
  PutAreas(moved, area, view);
  for (std::size_t group = 0; group < GroupViews.size(); ++group) {
    const HighlightArea& own = before.Areas.at(GroupOfView(view.Mode));
    if (group == GroupOfView(view.Mode) || before.Areas.at(group) == own) {
      button.Areas.at(group) = area;
    } else if (before.Areas.at(group) == expected.Areas.at(group)) {
      button.Areas.at(group) = moved.Areas.at(group);
    }
  }
}

HighlightArea OnScreen(HighlightArea area, const ButtonView& view) {
  const int columns = ScreenColumns(view, GroupOfView(view.Mode));
  area.X1 = ScreenColumn(area.X1, columns);
  area.X2 = ScreenColumn(area.X2, columns);
  return area;
}

bool IsLargeEnough(const HighlightArea& area) {
  constexpr int LeastDrag = 3;
  return area.X2 - area.X1 >= LeastDrag && area.Y2 - area.Y1 >= LeastDrag;
}

std::int64_t StartFrame(const HighlightPlay& set, int rate) {
  return TimecodeToFrames(set.StartTimeToVideo, rate);
}

// A new set ends where the next one, or the next subtitle of a view, begins.
void EndBeforeNext(HighlightPlay& set, const Track& track) {
  const int rate = TrackTimes(track).FramesPerSecond;
  const std::int64_t start = StartFrame(set, rate);
  std::int64_t end = start + TimecodeToFrames(set.Duration, rate);
  for (const HighlightPlay& other : track.HighlightPlays) {
    const std::int64_t next = StartFrame(other, rate);
    end = next > start ? std::min(end, next) : end;
  }
  for (const SubtitleStream& stream : track.SubStreams) {
    for (const SubPicturePlay& play : stream.Removed ? std::vector<SubPicturePlay>() : stream.SubPlays) {
      const std::int64_t next = TimecodeToFrames(play.Start, rate);
      end = next > start ? std::min(end, next - 1) : end;
    }
  }
  set.Duration = FramesToTimecode(std::max<std::int64_t>(end - start, 1), rate);
}

}  // namespace

ButtonBoard::ButtonBoard(Document& document, Viewer& viewer, QObject* parent)
    : QObject(parent), document_(document), viewer_(viewer) {}

const HighlightPlay* ButtonBoard::Set() const {
  const Track* const track = viewer_.Shown();
  const auto set = viewer_.ButtonSet();
  return track != nullptr && set ? &track->HighlightPlays[*set] : nullptr;
}

ButtonView ButtonBoard::View() const {
  return ButtonViewOf(*viewer_.Shown(), viewer_.State().View);
}

std::optional<HighlightArea> ButtonBoard::AreaOf(std::size_t button) const {
  const HighlightPlay* const set = Set();
  return set != nullptr && button < set->Buttons.size()
             ? std::optional(set->Buttons[button].Areas.at(Group()))
             : std::nullopt;
}

std::optional<std::size_t> ButtonBoard::ButtonAt(int column, int line) const {
  const HighlightPlay* const set = Set();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    const HighlightArea& area = set->Buttons[i].Areas.at(Group());
    if (column >= area.X1 && column <= area.X2 && line >= area.Y1 && line <= area.Y2) {
      return i;
    }
  }
  return std::nullopt;
}

void ButtonBoard::Show(ButtonState state) {
  if (state != state_) {
    state_ = state;
    emit StateChanged();
  }
}

std::vector<ButtonLook> ButtonBoard::Looks() const {
  std::vector<ButtonLook> looks;
  const HighlightPlay* const set = Set();
  const auto chosen = viewer_.Button();
  for (std::size_t i = 0; set != nullptr && i < set->Buttons.size(); ++i) {
    if (!chosen || *chosen == i) {
      if (auto look = LookOf(*set, set->Buttons[i], Group(), state_)) {
        looks.push_back(*look);
      }
    }
  }
  return looks;
}

std::string ButtonBoard::WordsOfChosen() const {
  const HighlightPlay* const set = Set();
  const auto chosen = viewer_.Button();
  if (set == nullptr || !chosen || *chosen >= set->Buttons.size()) {
    return {};
  }
  const HighlightButton& button = set->Buttons[*chosen];
  const auto look = LookOf(*set, button, Group(), ButtonState::Selected);
  const auto& unit = viewer_.UnitNow();
  if (!viewer_.State().Entry) {
    return "no subtitle shows here: buttons cannot be seen";
  }
  return unit && !ShowsIn(*unit, look->Area, look->Contrasts)
             ? "nothing of the subtitle shows within it: it cannot be seen"
             : std::string();
}

std::optional<EditedSet> ButtonBoard::Opened() const {
  const auto set = viewer_.ButtonSet();
  return viewer_.Shown() != nullptr && set ? std::optional(OpenSet(*viewer_.Shown(), *set, View()))
                                           : std::nullopt;
}

Outcome ButtonBoard::MakeButton(EditSession& session, const HighlightArea& area, std::string_view aim) {
  const std::size_t track = *viewer_.TrackIndex();
  const Rules& rules = session.RulesInForce();
  const ButtonView view = View();
  const std::int64_t frame = viewer_.State().Frame;
  Change change(session, "New Button");
  const Track& shown = session.Work().Tracks[track];
  const auto& state = viewer_.State();
  const SubPicturePlay* const entry =
      state.Stream && state.Entry ? &shown.SubStreams[*state.Stream].SubPlays[*state.Entry] : nullptr;
  EditedSet set = Opened().value_or(NewSet(shown, frame, entry));
  if (auto refusal = RefuseButton(set.Buttons, view.DisplayModes, rules)) {
    return Outcome::Refused(*std::move(refusal));
  }
  const std::size_t place = FirstArea(shown, set.Set);
  const auto route = RouteOf(KeptButtons(set.Buttons), place, rules);
  if (!AddButton(set.Buttons, OnScreen(area, view), view)) {
    return Outcome::Refused(MessageOf(message::ButtonTooSmall, HighStreamKey(track)));
  }
  HighlightButton& button = set.Buttons.back().Button;
  PutAreas(button, area, view);
  if (const std::string name = NameOfAim(session.Work(), aim); !aim.empty() && !name.empty()) {
    button.Name = FreeButtonName(set.Buttons, name);
  }
  LinkNew(set.Buttons, route, place, rules);
  if (!set.Saved) {
    set.ForcedSelect = set.Buttons.front().Button.Name;
    if (entry == nullptr) {
      set.Set.Schemes.fill(ShadeScheme());
      EndBeforeNext(set.Set, shown);
    }
  }
  const TrackTimes times(shown);
  const PlaySpan span = SpanOf(set.Set, times.FramesPerSecond);
  if (LacksShade(shown, span.Start)) {
    std::string why;
    const std::string file = ShadeFile(session, track, why);
    if (file.empty()) {
      return Outcome::Refused(MessageOf(message::ButtonShadeUnwritten, TrackKey(track), why));
    }
    if (Outcome shaded =
            AddShade(session, {track, span.Start, span.End - span.Start}, file, set.Set.Schemes.front());
        !shaded.IsDone()) {
      return shaded;
    }
  }
  const std::size_t number = set.Buttons.size() - 1;
  Outcome put = PutButtons(session, track, set);
  if (!put.IsDone()) {
    return put;
  }
  const std::size_t index = set.Saved.value_or(session.Work().Tracks[track].HighlightPlays.size() - 1);
  if (!aim.empty()) {
    if (Outcome aimed = AimButton(session, track, {index, number}, aim); !aimed.IsDone()) {
      return aimed;
    }
  }
  return change.Commit(put.Key);
}

bool ButtonBoard::Add(const HighlightArea& area, std::string_view aim) {
  if (viewer_.Shown() == nullptr || (aim.empty() && !IsLargeEnough(area))) {
    return false;
  }
  const bool made =
      document_.Do([&](EditSession& session, Consent) { return MakeButton(session, area, aim); }).has_value();
  if (const HighlightPlay* const set = Set(); made && set != nullptr) {
    viewer_.ChooseButton(set->Buttons.size() - 1);
  }
  return made;
}

std::vector<ButtonBoard::WantedButton> ButtonBoard::Wanted() const {
  std::vector<WantedButton> wanted;
  if (const HighlightPlay* const set = Set()) {
    for (std::size_t i = 0; i < set->Buttons.size(); ++i) {
      wanted.push_back({set->Buttons[i], i});
    }
  }
  return wanted;
}

bool ButtonBoard::Save(const std::vector<WantedButton>& wanted, bool follows, std::string_view gesture) {
  auto opened = Opened();
  if (!opened) {
    return false;
  }
  EditedSet set = *std::move(opened);
  const Track& track = *viewer_.Shown();
  const std::size_t place = FirstArea(track, set.Set);
  std::vector<HighlightButton> buttons;
  std::ranges::transform(wanted, std::back_inserter(buttons), &WantedButton::Button);
  if (const auto route = RouteOf(set.Set.Buttons, place, document_.Session().RulesInForce());
      follows && route) {
    AutoRoute(std::span<HighlightButton>(buttons), *route, place);
  }
  set.Buttons = EditedButtons(set.Set, buttons, View());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    set.Buttons[i].Saved = wanted[i].Origin;
  }
  const std::size_t index = *viewer_.TrackIndex();
  const auto put = [&](EditSession& session, Consent) { return PutButtons(session, index, set); };
  return (gesture.empty() ? document_.Do(put) : document_.DoAgain(gesture, put)).has_value();
}

bool ButtonBoard::Put(std::size_t button, const HighlightArea& area) {
  std::vector<WantedButton> wanted = Wanted();
  if (button >= wanted.size() || !IsLargeEnough(area)) {
    return false;
  }
  MoveAreas(wanted[button].Button, area, View());
  return Save(
      wanted, true,
      fmt::format("button {} of {}", button, HighStreamKey(*viewer_.TrackIndex(), *viewer_.ButtonSet() + 1)));
}

bool ButtonBoard::Link(std::size_t from, std::size_t to, LinkDirection direction) {
  std::vector<WantedButton> wanted = Wanted();
  if (from >= wanted.size() || to >= wanted.size() || from == to) {
    return false;
  }
  std::vector<EditedButton> pair(2);
  pair[0].Button = wanted[from].Button;
  pair[1].Button = wanted[to].Button;
  LinkButton(pair, 0, 1, direction);
  wanted[from].Button = pair[0].Button;
  return Save(wanted, false);
}

bool ButtonBoard::Remove(std::size_t button) {
  std::vector<WantedButton> wanted = Wanted();
  if (button >= wanted.size()) {
    return false;
  }
  EditedButton removed;
  removed.Button = wanted[button].Button;
  const Outcome asked =
      Carry(document_.Speaks(), [&](Consent consent) { return RemoveButton(removed, consent); });
  if (!asked.IsDone()) {
    return false;
  }
  wanted.erase(wanted.begin() + static_cast<std::ptrdiff_t>(button));
  viewer_.ChooseButton({});
  return Save(wanted, true);
}

bool ButtonBoard::Rename(std::size_t button, const std::string& name) {
  std::vector<WantedButton> wanted = Wanted();
  const std::string text(Trim(name));
  if (button >= wanted.size() || text.empty() || text == wanted[button].Button.Name) {
    return false;
  }
  const bool isTaken =
      std::ranges::any_of(wanted, [&](const WantedButton& one) { return one.Button.Name == text; });
  if (isTaken || text.find_first_of("\r\n") != std::string::npos) {
    document_.Speaks().Tell(MessageOf(message::ButtonNameTaken, HighStreamKey(*viewer_.TrackIndex()), text));
    return false;
  }
  const std::string former = std::exchange(wanted[button].Button.Name, text);
  for (WantedButton& one : wanted) {
    for (std::string* link : {&one.Button.Up, &one.Button.Down, &one.Button.Left, &one.Button.Right}) {
      *link = *link == former ? text : *link;
    }
  }
  return Save(wanted, false);
}

bool ButtonBoard::Route() {
  const auto set = viewer_.ButtonSet();
  if (viewer_.Shown() == nullptr || !set) {
    return false;
  }
  const std::size_t track = *viewer_.TrackIndex();
  const quorvelant::Route route = OfferedRoutes(document_.Session().RulesInForce()).front();
  return document_
      .Do([&](EditSession& session, Consent) { return RouteButtons(session, track, *set, route); })
      .has_value();
}

}  // namespace quorvelant
