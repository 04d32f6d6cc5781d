#include "player/nav_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace quorvelant {

namespace {

constexpr int ColumnStep = 400;
constexpr int RowStep = 40;
constexpr int Margin = 20;
constexpr int HeadHeight = 30;
constexpr std::array<std::string_view, 4> Columns{"First Play", "Video Manager", "Menus of title sets",
                                                  "Titles"};

std::size_t ColumnOf(const NavMapChain& chain) {
  return static_cast<std::size_t>(chain.At.Domain);
}

std::string TextOf(const NavMapChain& chain) {
  const std::string name = chain.Name.empty() || chain.Name == chain.Words
                               ? chain.Words
                               : fmt::format("{} ({})", chain.Words, chain.Name);
  return chain.IsReached ? name : "nobody comes here: " + name;
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

// Out of the side of the one box that faces the other; at their right side where they stand in one column.
NavChartArrow ArrowBetween(const NavChart& chart, const NavMapArrow& arrow) {
  constexpr int Bend = 50;
  constexpr int Tip = 5;
  const NavChartBox& from = chart.Boxes[arrow.From];
  const NavChartBox& to = chart.Boxes[arrow.To];
  const bool leavesRight = from.X <= to.X;
  const bool entersLeft = from.X < to.X;
  const NavChartPoint start{static_cast<double>(leavesRight ? from.X + NavChart::BoxWidth : from.X),
                            from.Y + NavChart::BoxHeight / 2.0};
  const NavChartPoint end{static_cast<double>(entersLeft ? to.X : to.X + NavChart::BoxWidth),
                          to.Y + NavChart::BoxHeight / 2.0};
  const double back = entersLeft ? -Tip : Tip;
  return {.From = arrow.From,
          .To = arrow.To,
          .Start = start,
          .StartHandle = {start.X + (leavesRight ? Bend : -Bend), start.Y},
          .EndHandle = {end.X + (entersLeft ? -Bend : Bend), end.Y},
          .End = end,
          .Upper = {end.X + back, end.Y - Tip},
          .Lower = {end.X + back, end.Y + Tip}};
}

void AddArrow(const NavChartArrow& arrow, std::string& svg) {
  fmt::format_to(
      std::back_inserter(svg),
      R"svg(<path d="M{} {} C{} {} {} {} {} {} M{} {} L{} {} L{} {}" fill="none" stroke="#557"/>)svg"
      "\n",
      arrow.Start.X, arrow.Start.Y, arrow.StartHandle.X, arrow.StartHandle.Y, arrow.EndHandle.X,
      arrow.EndHandle.Y, arrow.End.X, arrow.End.Y, arrow.Upper.X, arrow.Upper.Y, arrow.End.X, arrow.End.Y,
      arrow.Lower.X, arrow.Lower.Y);
}

// As much as a box has room for: letters of 12 pixels are 7 wide at most times.
std::string Cut(std::string_view text) {
  constexpr std::size_t Most = (NavChart::BoxWidth - 16) / 7;
  if (text.size() <= Most) {
    return std::string(text);
  }
  std::size_t end = Most - 1;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
    --end;
  }
  return std::string(text.substr(0, end)) + "…";
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
                           .Text = TextOf(map.Chains[i]),
                           .IsReached = map.Chains[i].IsReached});
  }
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    chart.Heads.push_back({Columns.at(i), Margin + static_cast<int>(i) * ColumnStep, Margin + 10});
  }
  std::ranges::transform(map.Arrows, std::back_inserter(chart.Arrows),
                         [&chart](const NavMapArrow& arrow) { return ArrowBetween(chart, arrow); });
  chart.Width = 2 * Margin + static_cast<int>(Columns.size() - 1) * ColumnStep + NavChart::BoxWidth;
  chart.Height = 2 * Margin + HeadHeight + *std::ranges::max_element(rows) * RowStep;
  return chart;
}

std::string SvgOf(const NavMap& map) {
  const NavChart chart = ChartOf(map);
  std::string svg =
      fmt::format(R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{1}" viewBox="0 0 {0} {1}" )"
                  R"(font-family="sans-serif" font-size="12">)"
                  "\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n",
                  chart.Width, chart.Height);
  for (const NavChartHead& head : chart.Heads) {
    fmt::format_to(std::back_inserter(svg), "<text x=\"{}\" y=\"{}\" font-weight=\"bold\">{}</text>\n",
                   head.X, head.Y, head.Text);
  }
  std::ranges::for_each(chart.Arrows, [&svg](const NavChartArrow& arrow) { AddArrow(arrow, svg); });
  for (const NavChartBox& box : chart.Boxes) {
    fmt::format_to(std::back_inserter(svg),
                   R"(<rect x="{}" y="{}" width="{}" height="{}" rx="4" fill="{}" stroke="{}">)"
                   R"(<title>{}</title></rect><text x="{}" y="{}" pointer-events="none">{}</text>)"
                   "\n",
                   box.X, box.Y, NavChart::BoxWidth, NavChart::BoxHeight, box.IsReached ? "#eef" : "#fdd",
                   box.IsReached ? "#557" : "#c00", Escaped(box.Text), box.X + 8, box.Y + 18,
                   Escaped(Cut(box.Text)));
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
