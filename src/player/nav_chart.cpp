#include "player/nav_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace quorvelant {

namespace {

constexpr int ColumnStep = 340;
constexpr int RowStep = 40;
constexpr int Margin = 20;
constexpr int HeadHeight = 30;
constexpr std::array<std::string_view, 4> Columns{"First Play", "Video Manager", "Menus of title sets",
                                                  "Titles"};

std::size_t ColumnOf(const NavMapChain& chain) {
  return static_cast<std::size_t>(chain.At.Domain);
}

std::string TextOf(const NavMapChain& chain) {
  return chain.Name.empty() || chain.Name == chain.Words ? chain.Words
                                                         : fmt::format("{} ({})", chain.Words, chain.Name);
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '&':
        escaped += "&amp;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
  }
  return quoted + "\"";
}

void AddArrow(const NavChart& chart, const NavMapArrow& arrow, std::string& svg) {
  const NavChartBox& from = chart.Boxes[arrow.From];
  const NavChartBox& to = chart.Boxes[arrow.To];
  const bool right = from.X < to.X;
  const bool level = from.X == to.X;
  const int startX = right || level ? from.X + NavChart::BoxWidth : from.X;
  const int endX = right ? to.X : to.X + NavChart::BoxWidth;
  const int startY = from.Y + NavChart::BoxHeight / 2;
  const int endY = to.Y + NavChart::BoxHeight / 2;
  constexpr int Bend = 50;
  const int startBend = right || level ? startX + Bend : startX - Bend;
  const int endBend = right ? endX - Bend : endX + Bend;
  fmt::format_to(
      std::back_inserter(svg),
      R"svg(<path d="M{} {} C{} {} {} {} {} {}" fill="none" stroke="#557" marker-end="url(#tip)"/>)svg"
      "\n",
      startX, startY, startBend, startY, endBend, endY, endX, endY);
}

}  // namespace

NavChart ChartOf(const NavMap& map) {
  NavChart chart;
  std::array<int, Columns.size()> rows{};
  for (std::size_t i = 0; i < map.Chains.size(); ++i) {
    const std::size_t column = ColumnOf(map.Chains[i]);
    const int row = rows.at(column)++;
    chart.Boxes.push_back({.Chain = i,
                           .X = Margin + static_cast<int>(column) * ColumnStep,
                           .Y = Margin + HeadHeight + row * RowStep,
                           .Text = TextOf(map.Chains[i])});
  }
  chart.Width = 2 * Margin + static_cast<int>(Columns.size() - 1) * ColumnStep + NavChart::BoxWidth;
  chart.Height = 2 * Margin + HeadHeight + *std::ranges::max_element(rows) * RowStep;
  return chart;
}

std::string SvgOf(const NavMap& map) {
  const NavChart chart = ChartOf(map);
  std::string svg = fmt::format(
      R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{1}" viewBox="0 0 {0} {1}" )"
      R"(font-family="sans-serif" font-size="12">)"
      "\n"
      R"(<defs><marker id="tip" markerWidth="8" markerHeight="8" refX="7" refY="3" orient="auto">)"
      R"(<path d="M0 0 L7 3 L0 6 z" fill="#557"/></marker></defs>)"
      "\n",
      chart.Width, chart.Height);
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    fmt::format_to(std::back_inserter(svg), "<text x=\"{}\" y=\"{}\" font-weight=\"bold\">{}</text>\n",
                   Margin + static_cast<int>(i) * ColumnStep, Margin + 10, Columns.at(i));
  }
  for (const NavMapArrow& arrow : map.Arrows) {
    AddArrow(chart, arrow, svg);
  }
  for (const NavChartBox& box : chart.Boxes) {
    const bool isReached = map.Chains[box.Chain].IsReached;
    fmt::format_to(std::back_inserter(svg),
                   R"(<rect x="{}" y="{}" width="{}" height="{}" rx="4" fill="{}" stroke="{}"/>)"
                   R"(<text x="{}" y="{}">{}</text>)"
                   "\n",
                   box.X, box.Y, NavChart::BoxWidth, NavChart::BoxHeight, isReached ? "#eef" : "#fdd",
                   isReached ? "#557" : "#c00", box.X + 8, box.Y + 18, Escaped(box.Text));
  }
  return svg + "</svg>\n";
}

std::string DotOf(const NavMap& map) {
  std::string dot = "digraph disc {\n  rankdir=LR;\n  node [shape=box];\n";
  for (std::size_t column = 0; column < Columns.size(); ++column) {
    fmt::format_to(std::back_inserter(dot), "  subgraph cluster_{} {{\n    label={};\n", column,
                   Quoted(Columns.at(column)));
    for (std::size_t i = 0; i < map.Chains.size(); ++i) {
      if (ColumnOf(map.Chains[i]) == column) {
        fmt::format_to(std::back_inserter(dot), "    n{} [label={}{}];\n", i, Quoted(TextOf(map.Chains[i])),
                       map.Chains[i].IsReached ? "" : ", color=red");
      }
    }
    dot += "  }\n";
  }
  for (const NavMapArrow& arrow : map.Arrows) {
    fmt::format_to(std::back_inserter(dot), "  n{} -> n{};\n", arrow.From, arrow.To);
  }
  return dot + "}\n";
}

}  // namespace quorvelant
