// The navigation of a disc as a chart.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "player/nav_findings.h"

namespace quorvelant {

// Chains as boxes in columns by their domain, in pixels.
struct NavChartBox {
  std::size_t Chain = 0;  // of `NavMap::Chains`
  int X = 0;
  int Y = 0;
  std::string Text;
};
struct NavChart {
  static constexpr int BoxWidth = 240;
  static constexpr int BoxHeight = 28;
  int Width = 0;
  int Height = 0;
  std::vector<NavChartBox> Boxes;  // one a chain, in its order
};
[[nodiscard]] NavChart ChartOf(const NavMap& map);

// What nobody reaches is red.
[[nodiscard]] std::string SvgOf(const NavMap& map);
// In the language of graph drawers: a node a chain, a cluster a domain.
[[nodiscard]] std::string DotOf(const NavMap& map);

}  // namespace quorvelant
