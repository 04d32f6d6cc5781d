// The navigation of a disc as a chart.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "player/nav_map.h"

namespace quorvelant {

struct NavChartPoint {
  double X = 0;
  double Y = 0;
};
// Chains as boxes in columns by their domain, in pixels.
struct NavChartBox {
  std::size_t Chain = 0;  // of `NavMap::Chains`
  int X = 0;
  int Y = 0;
  std::string Text;  // also says where nobody comes here
  bool IsReached = false;
};
// A curve from the side of one box to the side of another, with its two handles, and the ends of its tip's
// sides.
struct NavChartArrow {
  std::size_t From = 0;  // of `Boxes`
  std::size_t To = 0;
  NavChartPoint Start, StartHandle, EndHandle, End;
  NavChartPoint Upper, Lower;
};
struct NavChartHead {
  std::string_view Text;
  int X = 0;
  int Y = 0;  // of its lower edge
};
struct NavChart {
  static constexpr int BoxWidth = 310;
  static constexpr int BoxHeight = 28;
  int Width = 0;
  int Height = 0;
  std::vector<NavChartHead> Heads;  // of the columns
  std::vector<NavChartBox> Boxes;   // one a chain, in its order
  std::vector<NavChartArrow> Arrows;
};
[[nodiscard]] NavChart ChartOf(const NavMap& map);

// What nobody reaches is red.
[[nodiscard]] std::string SvgOf(const NavMap& map);
// In the language of graph drawers: a node a chain, a cluster a domain.
[[nodiscard]] std::string DotOf(const NavMap& map);

}  // namespace quorvelant
