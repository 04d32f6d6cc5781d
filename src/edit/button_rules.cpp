#include "edit/button_rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "edit/messages.h"
#include "edit/subtitle_ticks.h"
#include "model/highlight_groups.h"
#include "model/walk.h"
#include "subpicture/bitmap_window.h"

namespace quorvelant {

namespace {

constexpr int LeastDrag = 3;  // pixels in each direction

// Nearest whole number of value * numerator / denominator.
int Scale(int value, int numerator, int denominator) {
  const int product = 2 * value * numerator;
  return product >= 0 ? (product + denominator) / (2 * denominator)
                      : -((denominator - product) / (2 * denominator));
}

HighlightArea OnDisc(HighlightArea screen, int columns) {
  screen.X1 = DiscColumn(screen.X1, columns);
  screen.X2 = DiscColumn(screen.X2, columns);
  return screen;
}

HighlightArea OnScreen(HighlightArea disc, int columns) {
  disc.X1 = ScreenColumn(disc.X1, columns);
  disc.X2 = ScreenColumn(disc.X2, columns);
  return disc;
}

std::size_t LiveCount(std::span<const EditedButton> buttons) {
  return static_cast<std::size_t>(std::ranges::count(buttons, false, &EditedButton::Removed));
}

// The first name of the row that no button bears.
std::string FreeName(std::span<const EditedButton> buttons) {
  for (std::size_t number = 1;; ++number) {
    std::string name = fmt::format("Button_{}", number);
    if (std::ranges::none_of(buttons, [&](const EditedButton& other) { return other.Button.Name == name; })) {
      return name;
    }
  }
}

EditedButton EditedFrom(const HighlightButton& button, const ButtonView& view) {
  EditedButton edited{.Button = button, .Screen = {}};
  for (std::size_t group = 0; group < edited.Screen.size(); ++group) {
    edited.Screen.at(group) = OnScreen(button.Areas.at(group), ScreenColumns(view, group));
  }
  return edited;
}

// A button number of the set after its buttons have changed; 0 for none and for one that is gone.
std::int32_t Followed(std::int32_t number, const std::vector<std::int32_t>& numbers) {
  return number >= 1 && static_cast<std::size_t>(number) <= numbers.size()
             ? numbers[static_cast<std::size_t>(number) - 1]
             : 0;
}

}  // namespace

std::size_t GroupOfView(ViewMode view) {
  switch (view) {
    case ViewMode::LetterBox:
      return 1;
    case ViewMode::Pan:
      return 2;
    case ViewMode::Normal:
    case ViewMode::Wide:
      break;
  }
  return 0;
}

int ScreenColumns(const ButtonView& view, std::size_t group) {
  if (group == 0 && view.ShowsWide) {
    return view.Ntsc ? 853 : 1024;
  }
  return view.Ntsc ? 640 : 768;
}

int DiscColumn(int screenColumn, int screenColumns) {
  return Scale(screenColumn, ScreenWidth, screenColumns);
}

int ScreenColumn(int discColumn, int screenColumns) {
  return Scale(discColumn, screenColumns, ScreenWidth);
}

std::size_t ButtonLimit(std::size_t displayModes, const Rules& rules) {
  constexpr std::size_t TraditionalMost = 12;
  const std::size_t modes = std::clamp<std::size_t>(displayModes, 1, 3);
  return rules.FullButtonSets ? MostButtonsOnDisc(modes) : TraditionalMost / modes;
}

std::optional<Message> RefuseButton(std::span<const EditedButton> buttons, std::size_t displayModes,
                                    const Rules& rules) {
  const std::size_t limit = ButtonLimit(displayModes, rules);
  return LiveCount(buttons) < limit ? std::nullopt
                                    : std::optional(MessageOf(message::ButtonsAtLimit, {}, limit));
}

bool AddButton(std::vector<EditedButton>& buttons, HighlightArea drag, const ButtonView& view) {
  const int columns = ScreenColumns(view, GroupOfView(view.Mode));
  const auto clip = [](std::int32_t& low, std::int32_t& high, int count) {
    if (low > high) {
      std::swap(low, high);
    }
    low = std::clamp(low, 0, count - 1);
    high = std::clamp(high, 0, count - 1);
  };
  clip(drag.X1, drag.X2, columns);
  clip(drag.Y1, drag.Y2, ScreenHeight(view.Ntsc));
  if (drag.X2 - drag.X1 < LeastDrag || drag.Y2 - drag.Y1 < LeastDrag) {
    return false;
  }
  EditedButton button;
  button.Button.Number = static_cast<std::int32_t>(buttons.size() + 1);
  button.Button.Name = FreeName(buttons);
  MoveButton(button, drag, view, true);
  buttons.push_back(std::move(button));
  return true;
}

std::optional<std::size_t> ButtonAt(std::span<const EditedButton> buttons, int x, int y,
                                    const ButtonView& view) {
  const std::size_t group = GroupOfView(view.Mode);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const HighlightArea& area = buttons[i].Screen.at(group);
    if (IsLive(buttons[i]) && x >= area.X1 && x <= area.X2 && y >= area.Y1 && y <= area.Y2) {
      return i;
    }
  }
  return std::nullopt;
}

void MoveButton(EditedButton& button, const HighlightArea& screen, const ButtonView& view, bool equalSizes) {
  const std::size_t own = GroupOfView(view.Mode);
  const HighlightArea disc = OnDisc(screen, ScreenColumns(view, own));
  for (std::size_t group = 0; group < button.Screen.size(); ++group) {
    if (group == own || equalSizes) {
      button.Button.Areas.at(group) = disc;
      button.Screen.at(group) = group == own ? screen : OnScreen(disc, ScreenColumns(view, group));
    }
  }
}

std::string HighlightButton::*LinkTowards(LinkDirection direction) {
  switch (direction) {
    case LinkDirection::Left:
      return &HighlightButton::Left;
    case LinkDirection::Right:
      return &HighlightButton::Right;
    case LinkDirection::Up:
      return &HighlightButton::Up;
    case LinkDirection::Down:
      break;
  }
  return &HighlightButton::Down;
}

void LinkButton(std::span<EditedButton> buttons, std::size_t from, std::size_t to, LinkDirection direction) {
  if (from != to) {
    buttons[from].Button.*LinkTowards(direction) = buttons[to].Button.Name;
  }
}

Outcome RemoveButton(EditedButton& button, Consent consent) {
  if (!button.Removed && consent == Consent::None) {
    return Outcome::Asks(MessageOf(message::AskDeleteButton, {}));
  }
  button.Removed = true;
  return Outcome::Done(button.Button.Name);
}

std::vector<EditedButton> EditedButtons(const HighlightPlay& set, const ButtonView& view) {
  std::vector<EditedButton> edited;
  for (std::size_t i = 0; i < set.Buttons.size(); ++i) {
    edited.push_back(EditedFrom(set.Buttons[i], view));
    edited.back().Saved = i;
  }
  return edited;
}

std::vector<EditedButton> EditedButtons(const HighlightPlay& set, std::span<const HighlightButton> wanted,
                                        const ButtonView& view) {
  std::vector<EditedButton> left = EditedButtons(set, view);
  std::vector<EditedButton> edited;
  for (const HighlightButton& button : wanted) {
    edited.push_back(EditedFrom(button, view));
    const auto saved = std::ranges::find_if(
        left, [&](const EditedButton& one) { return !one.Removed && one.Button.Name == button.Name; });
    if (saved != left.end()) {
      edited.back().Saved = saved->Saved;
      saved->Removed = true;  // taken
    }
  }
  return edited;
}

std::vector<HighlightButton> KeptButtons(std::span<const EditedButton> buttons) {
  std::vector<HighlightButton> kept;
  for (const EditedButton* button : Live(buttons)) {
    kept.push_back(button->Button);
    kept.back().Number = static_cast<std::int32_t>(kept.size());
  }
  return kept;
}

std::vector<std::int32_t> NewNumbers(std::size_t savedButtons, std::span<const EditedButton> buttons) {
  std::vector<std::int32_t> numbers(savedButtons);
  std::int32_t number = 0;
  for (const EditedButton* button : Live(buttons)) {
    ++number;
    if (button->Saved && *button->Saved < savedButtons) {
      numbers[*button->Saved] = number;
    }
  }
  return numbers;
}

void SaveButtons(Track& track, HighlightPlay& set, std::span<const EditedButton> buttons,
                 int framesPerSecond) {
  const std::vector<std::int32_t> numbers = NewNumbers(set.Buttons.size(), buttons);
  const auto reach = static_cast<std::int32_t>(LiveCount(buttons));
  const bool all = std::cmp_greater_equal(set.NumericalButtons, set.Buttons.size());
  set.NumericalButtons = all ? reach : std::min(set.NumericalButtons, reach);
  // Where the selection is forced it stays so, if need be onto the first button.
  set.ForcedSelect =
      set.ForcedSelect == 0 ? 0 : std::max(Followed(set.ForcedSelect, numbers), std::min(reach, 1));
  set.ForcedAction = Followed(set.ForcedAction, numbers);
  set.Buttons = KeptButtons(buttons);
  if (std::ranges::all_of(set.ButtonModes, &std::string::empty)) {
    set.ButtonModes = {"wide", "letter", "pan"};
  }
  track.HasHighlights = true;
  for (SubtitleStream& stream : track.SubStreams) {
    for (SubPicturePlay& play : stream.SubPlays) {
      play.Forced = play.Forced || ShowTogether(play, set, framesPerSecond);
    }
  }
}

}  // namespace quorvelant
