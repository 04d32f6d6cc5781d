#include "edit/auto_route.h"

#include "model/walk.h"

namespace quorvelant {

namespace {

void LinkToNeighbours(HighlightButton& button, const HighlightButton& before, const HighlightButton& after) {
  button.Left = before.Name;
  button.Up = before.Name;
  button.Right = after.Name;
  button.Down = after.Name;
}

}  // namespace

void AutoRoute(std::span<EditedButton> buttons) {
  const std::size_t count = buttons.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (IsLive(buttons[i])) {
      LinkToNeighbours(buttons[i].Button, buttons[(i + count - 1) % count].Button,
                       buttons[(i + 1) % count].Button);
    }
  }
}

void AutoRoute(std::span<HighlightButton> buttons) {
  const std::size_t count = buttons.size();
  for (std::size_t i = 0; i < count; ++i) {
    LinkToNeighbours(buttons[i], buttons[(i + count - 1) % count], buttons[(i + 1) % count]);
  }
}

}  // namespace quorvelant
