#include "edit/button_rules.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/subtitle_ticks.h"
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

std::size_t ButtonLimit(std::size_t displayModes) {
  return 12 / std::clamp<std::size_t>(displayModes, 1, 3);
}

bool AddButton(std::vector<EditedButton>& buttons, HighlightArea drag, const ButtonView& view) {
  const auto live = std::ranges::count(buttons, false, &EditedButton::Removed);
  if (static_cast<std::size_t>(live) >= ButtonLimit(view.DisplayModes)) {
    return false;
  }
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
  button.Button.Name = fmt::format("Button_{}", button.Button.Number);
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

void LinkButton(std::span<EditedButton> buttons, std::size_t from, std::size_t to, LinkDirection direction) {
  if (from == to) {
    return;
  }
  HighlightButton& button = buttons[from].Button;
  const auto link = [&]() -> std::string& {
    switch (direction) {
      case LinkDirection::Left:
        return button.Left;
      case LinkDirection::Right:
        return button.Right;
      case LinkDirection::Up:
        return button.Up;
      case LinkDirection::Down:
        break;
    }
    return button.Down;
  };
  link() = buttons[to].Button.Name;
}

void RemoveButton(EditedButton& button, UserInterface& ui) {
  button.Removed = button.Removed || ui.Ask(button_text::DeleteTitle, button_text::DeleteQuestion, false);
}

std::vector<HighlightButton> KeptButtons(std::span<const EditedButton> buttons) {
  std::vector<HighlightButton> kept;
  for (const EditedButton* button : Live(buttons)) {
    kept.push_back(button->Button);
    kept.back().Number = static_cast<std::int32_t>(kept.size());
  }
  return kept;
}

void SaveButtons(Track& track, HighlightPlay& set, std::span<const EditedButton> buttons,
                 int framesPerSecond) {
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
