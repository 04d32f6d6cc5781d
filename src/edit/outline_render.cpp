// The outline as lines of text and as JSON.
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "edit/outline_json.h"

namespace quorvelant {

namespace {

// Empty when a reader has nothing to learn from it.
std::string FactText(const OutlineFact& fact) {
  if (const auto* text = std::get_if<std::string>(&fact.Value)) {
    return text->empty() ? std::string() : fmt::format("{} {}", fact.Name, *text);
  }
  if (const auto* number = std::get_if<std::int64_t>(&fact.Value)) {
    return *number == 0 && fact.Name != "stream" ? std::string() : fmt::format("{} {}", fact.Name, *number);
  }
  return std::get<bool>(fact.Value) ? std::string(fact.Name) : std::string();
}

void AppendText(std::string& text, const OutlineNode& node, std::size_t level) {
  text.append(2 * level, ' ').append(node.Kind);
  if (!node.Name.empty()) {
    text.append(" \"").append(node.Name).append("\"");
  }
  if (!node.Key.empty()) {
    text.append(" [").append(node.Key).append("]");
  }
  std::string_view ahead = " ";
  for (const OutlineFact& fact : node.Facts) {
    const std::string shown = FactText(fact);
    if (!shown.empty()) {
      text.append(std::exchange(ahead, ", ")).append(shown);
    }
  }
  text.push_back('\n');
  for (const OutlineNode& child : node.Children) {
    AppendText(text, child, level + 1);
  }
}

}  // namespace

std::string OutlineText(const OutlineNode& node) {
  std::string text;
  for (const OutlineNode& child : node.Children) {
    AppendText(text, child, 0);
  }
  return text;
}

nlohmann::ordered_json OutlineJson(const OutlineNode& node) {
  nlohmann::ordered_json json{{"kind", node.Kind}};
  if (!node.Key.empty()) {
    json["key"] = node.Key;
  }
  if (!node.Name.empty()) {
    json["name"] = node.Name;
  }
  for (const OutlineFact& fact : node.Facts) {
    std::visit([&json, &fact](const auto& value) { json[std::string(fact.Name)] = value; }, fact.Value);
  }
  if (!node.Children.empty()) {
    nlohmann::ordered_json children = nlohmann::ordered_json::array();
    std::transform(node.Children.begin(), node.Children.end(), std::back_inserter(children), OutlineJson);
    json["children"] = std::move(children);
  }
  return json;
}

}  // namespace quorvelant
