#include "ui/button_links.h"

#include <QPoint>
#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "ui/button_areas.h"

namespace quorvelant {

std::optional<std::size_t> NextLinkTarget(std::span<const HighlightButton> buttons,
                                          std::span<const HighlightArea> areas, std::size_t from,
                                          LinkDirection direction) {
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (i != from) {
      others.push_back(i);
    }
  }
  if (others.empty()) {
    return std::nullopt;
  }
  const QPoint centre = CentreOf(areas[from]);
  const auto rank = [&](std::size_t one) {
    const QPoint to = CentreOf(areas[one]);
    const bool isAside = DirectionOf(centre, to) != direction;
    return std::pair(isAside, (to - centre).manhattanLength());
  };
  std::ranges::stable_sort(others, {}, rank);
  const std::string& link = buttons[from].*LinkTowards(direction);
  const auto linked =
      std::ranges::find_if(others, [&](std::size_t one) { return buttons[one].Name == link; });
  const bool isLast = linked == others.end() || std::next(linked) == others.end();
  return isLast ? others.front() : *std::next(linked);
}

}  // namespace quorvelant
