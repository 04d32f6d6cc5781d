#include "desk/edit_button_fields.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "base/message_error.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "desk/messages.h"
#include "edit/track_viewer.h"
#include "model/highlight_groups.h"
#include "subpicture/bitmap_window.h"

namespace quorvelant {

namespace {

constexpr std::int64_t MostPalette = 15;  // of indexes and contrasts

// A field of an object, by name.
template <class Element>
struct ObjectRow {
  std::string_view Name;
  void (*Set)(const Track& track, Element& element, const JsonField& value);
};

template <class Element, std::size_t Count>
void SetEach(const Track& track, Element& element, const std::vector<JsonField>& fields,
             const std::array<ObjectRow<Element>, Count>& rows, std::string_view what) {
  for (const JsonField& field : fields) {
    const auto row = std::ranges::find(rows, field.Name(), &ObjectRow<Element>::Name);
    if (row == rows.end()) {
      std::vector<std::string_view> names;
      std::ranges::transform(rows, std::back_inserter(names), &ObjectRow<Element>::Name);
      throw MessageError(
          MessageOf(message::EditFieldUnknown, {}, what, field.Name(), fmt::join(names, ", ")));
    }
    row->Set(track, element, field);
  }
}

template <ColorQuad ColorScheme::*Member>
void PutQuad(const Track& /*track*/, ColorScheme& scheme, const JsonField& value) {
  scheme.*Member = QuadOf(value);
}

constexpr std::array SchemeRows{
    ObjectRow<ColorScheme>{"selection", PutQuad<&ColorScheme::SelectionColor>},
    ObjectRow<ColorScheme>{"selectionContrast", PutQuad<&ColorScheme::SelectionContrast>},
    ObjectRow<ColorScheme>{"action", PutQuad<&ColorScheme::ActionColor>},
    ObjectRow<ColorScheme>{"actionContrast", PutQuad<&ColorScheme::ActionContrast>}};

HighlightArea AreaOf(const Track& track, const JsonField& value) {
  const auto edges = NumbersOf(value, 4, 0, ScreenWidth - 1);
  const int lines = ScreenHeight(FramesPerSecond(track.Standard) == 30);
  const HighlightArea area{.X1 = edges[0], .X2 = edges[2], .Y1 = edges[1], .Y2 = edges[3]};
  if (area.X1 >= area.X2 || area.Y1 >= area.Y2 || area.Y2 >= lines) {
    value.Refuse(fmt::format("left, top, right and bottom within {} by {} pixels", ScreenWidth, lines));
  }
  return area;
}

// Each display of the track has its own.
void PutAreas(const Track& track, HighlightButton& button, const JsonField& value) {
  const std::vector<JsonField> areas = value.List(button.Areas.size());
  for (std::size_t i = 0; i < areas.size(); ++i) {
    button.Areas.at(i) = AreaOf(track, areas[i]);
  }
}

template <std::string HighlightButton::*Member>
void PutLink(const Track& /*track*/, HighlightButton& button, const JsonField& value) {
  button.*Member = value.IsNull() ? std::string() : LineTextOf(value);
}

constexpr std::array ButtonRows{
    ObjectRow<HighlightButton>{"name", [](const Track& /*track*/, HighlightButton& button,
                                          const JsonField& value) { button.Name = LineTextOf(value); }},
    ObjectRow<HighlightButton>{"area",
                               [](const Track& track, HighlightButton& button, const JsonField& value) {
                                 button.Areas.fill(AreaOf(track, value));
                               }},
    ObjectRow<HighlightButton>{"areas", PutAreas},
    ObjectRow<HighlightButton>{"left", PutLink<&HighlightButton::Left>},
    ObjectRow<HighlightButton>{"right", PutLink<&HighlightButton::Right>},
    ObjectRow<HighlightButton>{"up", PutLink<&HighlightButton::Up>},
    ObjectRow<HighlightButton>{"down", PutLink<&HighlightButton::Down>},
    ObjectRow<HighlightButton>{"scheme",
                               [](const Track& /*track*/, HighlightButton& button, const JsonField& value) {
                                 button.ColorScheme = static_cast<std::int32_t>(value.Number(1, 3));
                               }},
    ObjectRow<HighlightButton>{"autoAction",
                               [](const Track& /*track*/, HighlightButton& button, const JsonField& value) {
                                 button.AutoAction = value.Flag();
                               }}};

HighlightButton ButtonOf(const Track& track, const HighlightPlay& saved, const JsonField& object) {
  const std::vector<JsonField> fields = object.Fields();
  const auto name = std::ranges::find(fields, "name", &JsonField::Name);
  if (name == fields.end()) {
    object.Refuse("a list of objects with the \"name\" of each button");
  }
  const auto known = FindButton(saved.Buttons, LineTextOf(*name));
  HighlightButton button = known ? saved.Buttons[*known] : HighlightButton();
  SetEach(track, button, fields, ButtonRows, "buttons");
  if (!known && std::ranges::count(button.Areas, HighlightArea()) == std::ssize(button.Areas)) {
    object.Refuse(fmt::format(R"(an "area" of the new button "{}")", button.Name));
  }
  return button;
}

// Names are what buttons are linked by.
void RequireNames(const std::vector<HighlightButton>& buttons, const JsonField& list) {
  for (const HighlightButton& button : buttons) {
    if (std::ranges::count(buttons, button.Name, &HighlightButton::Name) > 1) {
      list.Refuse(fmt::format("another name for one of the buttons \"{}\"", button.Name));
    }
    for (const std::string* link : {&button.Left, &button.Right, &button.Up, &button.Down}) {
      if (!link->empty() && !FindButton(buttons, *link)) {
        list.Refuse(fmt::format(R"(a button "{}", to which "{}" links,)", *link, button.Name));
      }
    }
  }
}

std::vector<HighlightButton> ButtonsOf(const Track& track, const EditedSet& set, const JsonField& list) {
  std::vector<HighlightButton> wanted;
  for (const JsonField& one : list.List(MostButtonsOnDisc(1))) {
    wanted.push_back(ButtonOf(track, set.Set, one));
  }
  if (!set.Saved && wanted.empty()) {
    list.Refuse("a list of at least one button");
  }
  RequireNames(wanted, list);
  return wanted;
}

// The button that a set is to force, empty for none; nothing where the line says nothing.
std::optional<std::string> ForcedIn(const EditedSet& set, const EditLine& line, std::string_view name) {
  if (!line.Has(name)) {
    return std::nullopt;
  }
  const JsonField field = line.At(name);
  std::string button = field.IsNull() ? std::string() : LineTextOf(field);
  if (!button.empty() && !FindButton(KeptButtons(set.Buttons), button)) {
    field.Refuse("null, or the name of a button of the set");
  }
  return button;
}

}  // namespace

std::int64_t FrameOf(const JsonField& field, int framesPerSecond) {
  constexpr std::string_view Pattern = "00:00:00:00";
  const std::string text = field.Text();
  const bool fits = std::ranges::equal(
      text, Pattern, [](char one, char of) { return of == ':' ? one == of : one >= '0' && one <= '9'; });
  // A time that is written in another way, such as one with 70 seconds, is another time.
  const std::int64_t frame = fits ? TimecodeToFrames(text, framesPerSecond) : 0;
  if (!fits || FramesToTimecode(frame, framesPerSecond) != text) {
    field.Refuse(fmt::format("a time as HH:MM:SS:FF at {} frames a second", framesPerSecond));
  }
  return frame;
}

std::string LineTextOf(const JsonField& field) {
  std::string text(Trim(field.Text()));
  if (text.empty() || text.find_first_of("\r\n") != std::string::npos) {
    field.Refuse("a text of one line");
  }
  return text;
}

std::vector<std::int32_t> NumbersOf(const JsonField& field, std::size_t count, std::int64_t least,
                                    std::int64_t most) {
  std::vector<std::int32_t> numbers;
  for (const JsonField& one : field.List(count)) {
    numbers.push_back(static_cast<std::int32_t>(one.Number(least, most)));
  }
  if (numbers.size() != count) {
    field.Refuse(fmt::format("a list of {} numbers", count));
  }
  return numbers;
}

ColorQuad QuadOf(const JsonField& field) {
  ColorQuad quad{};
  std::ranges::copy(NumbersOf(field, quad.size(), 0, MostPalette), quad.begin());
  return quad;
}

EditedSet WithFields(EditedSet set, const Track& track, const EditLine& line) {
  const TrackTimes times(track);
  if (line.Has("time")) {
    set.Set.StartTimeToVideo = times.Timecode(FrameOf(line.At("time"), times.FramesPerSecond));
  }
  if (line.Has("duration")) {
    set.Set.Duration = times.Timecode(FrameOf(line.At("duration"), times.FramesPerSecond));
  }
  if (line.Has("schemes")) {
    const std::vector<JsonField> schemes = line.At("schemes").List(set.Set.Schemes.size());
    for (std::size_t i = 0; i < schemes.size(); ++i) {
      SetEach(track, set.Set.Schemes.at(i), schemes[i].Fields(), SchemeRows, "schemes");
    }
  }
  if (line.Has("buttons")) {
    const std::vector<HighlightButton> wanted = ButtonsOf(track, set, line.At("buttons"));
    set.Buttons = EditedButtons(set.Set, wanted, ButtonViewOf(track, OfferedViews(track).front()));
  }
  set.ForcedSelect = ForcedIn(set, line, "forcedSelect");
  set.ForcedAction = ForcedIn(set, line, "forcedAction");
  return set;
}

}  // namespace quorvelant
