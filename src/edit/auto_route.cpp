#include "edit/auto_route.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>

#include "model/walk.h"

namespace quorvelant {

namespace {

using Buttons = std::vector<HighlightButton*>;
// For each button the place of its neighbour.
using Neighbours = std::vector<std::size_t>;

// A rectangle seen along a direction: how far it reaches on the way there and across it. Twice the pixels, so
// that middles are whole.
struct Extent {
  int From = 0;
  int To = 0;
  int AcrossFrom = 0;
  int AcrossTo = 0;

  [[nodiscard]] int Middle() const { return (From + To) / 2; }
  [[nodiscard]] int AcrossMiddle() const { return (AcrossFrom + AcrossTo) / 2; }
  [[nodiscard]] bool Faces(const Extent& other) const {
    return AcrossFrom <= other.AcrossTo && other.AcrossFrom <= AcrossTo;
  }
};

Extent ExtentOf(const HighlightArea& area, LinkDirection direction) {
  const auto span = [](int low, int high) { return std::pair(2 * low, 2 * high); };
  const bool level = direction == LinkDirection::Left || direction == LinkDirection::Right;
  auto [from, to] = level ? span(area.X1, area.X2) : span(area.Y1, area.Y2);
  const auto [acrossFrom, acrossTo] = level ? span(area.Y1, area.Y2) : span(area.X1, area.X2);
  if (direction == LinkDirection::Left || direction == LinkDirection::Up) {
    std::tie(from, to) = std::pair(-to, -from);
  }
  return {from, to, acrossFrom, acrossTo};
}

// The least candidate by `cost`, which gives nothing for those that are none.
template <class Cost>
std::optional<std::size_t> Least(std::size_t count, const Cost& cost) {
  std::optional<std::size_t> best;
  decltype(cost(0)) least;
  for (std::size_t i = 0; i < count; ++i) {
    const auto own = cost(i);
    if (own && (!least || *own < *least)) {
      least = own;
      best = i;
    }
  }
  return best;
}

// The neighbour of one button: the nearest that faces it, else the nearest within the quarter of the picture
// that lies that way, else the farthest that faces it on the other side.
std::optional<std::size_t> NeighbourOf(std::size_t own, const std::vector<Extent>& extents) {
  using Cost = std::optional<std::pair<int, int>>;
  const Extent& from = extents[own];
  const auto away = [&](const Extent& other) { return other.Middle() - from.Middle(); };
  const auto aside = [&](const Extent& other) {
    return std::abs(other.AcrossMiddle() - from.AcrossMiddle());
  };
  const auto facing = [&](std::size_t i) -> Cost {
    const Extent& other = extents[i];
    return away(other) > 0 && from.Faces(other) ? Cost({std::max(other.From - from.To, 0), aside(other)})
                                                : std::nullopt;
  };
  const auto quarter = [&](std::size_t i) -> Cost {
    const Extent& other = extents[i];
    return away(other) > 0 && aside(other) <= away(other) ? Cost({away(other) + aside(other), aside(other)})
                                                          : std::nullopt;
  };
  const auto round = [&](std::size_t i) -> Cost {
    const Extent& other = extents[i];
    return away(other) < 0 && from.Faces(other) ? Cost({away(other), aside(other)}) : std::nullopt;
  };
  auto found = Least(extents.size(), facing);
  found = found ? found : Least(extents.size(), quarter);
  return found ? found : Least(extents.size(), round);
}

// The places of the buttons in the order in which they are read: row by row, each from the left.
std::vector<std::size_t> ReadingOrder(const std::vector<Extent>& extents) {
  std::vector<std::size_t> order(extents.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t i) { return extents[i].AcrossMiddle(); });
  for (auto row = order.begin(); row != order.end();) {
    const Extent& first = extents[*row];
    const auto end = std::find_if(row, order.end(),
                                  [&](std::size_t i) { return extents[i].AcrossMiddle() > first.AcrossTo; });
    std::stable_sort(row, end,
                     [&](std::size_t a, std::size_t b) { return extents[a].From < extents[b].From; });
    row = end;
  }
  return order;
}

// What follows each button in the order, `steps` places on.
Neighbours Following(const std::vector<std::size_t>& order, std::size_t steps) {
  Neighbours next(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    next[order[i]] = order[(i + steps) % order.size()];
  }
  return next;
}

std::size_t CountReached(const std::array<Neighbours, 4>& links, bool backwards) {
  const std::size_t count = links[0].size();
  std::vector<bool> reached(count);
  reached[0] = true;
  for (bool grows = true; grows;) {
    grows = false;
    for (const Neighbours& direction : links) {
      for (std::size_t i = 0; i < count; ++i) {
        const std::size_t from = backwards ? direction[i] : i;
        const std::size_t to = backwards ? i : direction[i];
        grows = grows || (reached[from] && !reached[to]);
        reached[to] = reached[to] || reached[from];
      }
    }
  }
  return static_cast<std::size_t>(std::ranges::count(reached, true));
}

constexpr std::array Directions{LinkDirection::Left, LinkDirection::Right, LinkDirection::Up,
                                LinkDirection::Down};

void PutLinks(const Buttons& buttons, const std::array<Neighbours, 4>& links) {
  constexpr std::array Fields{&HighlightButton::Left, &HighlightButton::Right, &HighlightButton::Up,
                              &HighlightButton::Down};
  for (std::size_t direction = 0; direction < Fields.size(); ++direction) {
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      buttons[i]->*Fields.at(direction) = buttons[links.at(direction)[i]]->Name;
    }
  }
}

std::array<Neighbours, 4> RingOf(const std::vector<std::size_t>& order) {
  const Neighbours after = Following(order, 1);
  const Neighbours before = Following(order, order.size() - 1);
  return {before, after, before, after};
}

std::array<Neighbours, 4> GeometryOf(const Buttons& buttons, std::size_t area) {
  const auto extentsAlong = [&](LinkDirection direction) {
    std::vector<Extent> extents;
    for (const HighlightButton* button : buttons) {
      extents.push_back(ExtentOf(button->Areas.at(area), direction));
    }
    return extents;
  };
  const auto ring = RingOf(ReadingOrder(extentsAlong(LinkDirection::Right)));
  std::array<Neighbours, 4> links = ring;
  for (std::size_t direction = 0; direction < Directions.size(); ++direction) {
    const std::vector<Extent> extents = extentsAlong(Directions.at(direction));
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      links.at(direction)[i] = NeighbourOf(i, extents).value_or(ring.at(direction)[i]);
    }
  }
  if (CountReached(links, false) < buttons.size() || CountReached(links, true) < buttons.size()) {
    links[0] = ring[0];  // level moves then read through all of them
    links[1] = ring[1];
  }
  return links;
}

void LinkAll(const Buttons& buttons, Route route, std::size_t area) {
  if (buttons.empty()) {
    return;
  }
  std::vector<std::size_t> order(buttons.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  PutLinks(buttons, route == Route::Ring ? RingOf(order) : GeometryOf(buttons, area));
}

}  // namespace

std::vector<Route> OfferedRoutes(const Rules& rules) {
  return rules.RoutesByGeometry ? std::vector{Route::Geometry, Route::Ring} : std::vector{Route::Ring};
}

void AutoRoute(std::span<EditedButton> buttons, Route route, std::size_t area) {
  Buttons live;
  for (EditedButton* button : Live(buttons)) {
    live.push_back(&button->Button);
  }
  LinkAll(live, route, area);
}

void AutoRoute(std::span<HighlightButton> buttons, Route route, std::size_t area) {
  Buttons all;
  for (HighlightButton& button : buttons) {
    all.push_back(&button);
  }
  LinkAll(all, route, area);
}

}  // namespace quorvelant
