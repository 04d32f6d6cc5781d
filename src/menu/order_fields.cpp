#include "menu/order_fields.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>

#include "base/random.h"
#include "base/text.h"
#include "menu/messages.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

constexpr int MostSeconds = 24 * 3600;

bool IsOneLine(std::string_view text) {
  return !Trim(text).empty() && std::ranges::none_of(text, [](char letter) {
    return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F;
  });
}

// "1h30m" and the like; 0 for any other text.
int SecondsIn(std::string_view text) {
  std::int64_t seconds = 0;
  std::string_view units = "hms";  // each at most once, in this order
  while (!text.empty()) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    const std::size_t unit = text.empty() ? std::string_view::npos : units.find(text.front());
    if (error != std::errc() || number < 0 || unit == std::string_view::npos) {
      return 0;
    }
    const int worth = units[unit] == 'h' ? 3600 : units[unit] == 'm' ? 60 : 1;
    seconds += std::int64_t{number} * worth;
    units.remove_prefix(unit + 1);
    text.remove_prefix(1);
  }
  return seconds <= MostSeconds ? static_cast<int>(seconds) : 0;
}

}  // namespace

OrderFields::OrderFields(std::string file)
    : file_(std::move(file)), folder_(std::filesystem::path(file_).parent_path().string()) {}

std::string OrderFields::PlaceAt(std::size_t line) const {
  return fmt::format("{}:{}", file_, line);
}

std::string OrderFields::PlaceOf(const toml::node& value) const {
  return PlaceAt(value.source().begin.line);
}

void OrderFields::Refuse(Message message, std::size_t line) {
  message.Place = PlaceAt(line);
  errors_.emplace_back(line, std::move(message));
}

void OrderFields::Unfit(const toml::node& value, std::string_view key, std::string_view expected) {
  Refuse(MessageOf(message::OrderValueUnfit, {}, key, expected), value.source().begin.line);
}

void OrderFields::Lacks(const toml::node& table, std::string_view what, std::string_view key) {
  Refuse(MessageOf(message::OrderKeyMissing, {}, what, key), table.source().begin.line);
}

std::vector<Message> OrderFields::Errors() const {
  auto sorted = errors_;
  std::ranges::stable_sort(sorted, {}, &std::pair<std::size_t, Message>::first);
  std::vector<Message> errors;
  errors.reserve(sorted.size());
  for (auto& [line, error] : sorted) {
    errors.push_back(std::move(error));
  }
  return errors;
}

void OrderFields::ReadTable(const toml::node& table, std::string_view what,
                            std::span<const OrderField> fields) {
  if (!table.is_table()) {
    Unfit(table, what, "a table");
    return;
  }
  for (const auto& [key, value] : *table.as_table()) {
    const std::string_view word = key.str();
    const auto field = std::ranges::find(fields, word, &OrderField::Key);
    if (field != fields.end()) {
      field->Read(value);
      continue;
    }
    std::vector<std::string_view> keys;
    std::ranges::transform(fields, std::back_inserter(keys), &OrderField::Key);
    Refuse(MessageOf(message::OrderKeyUnknown, {}, word, what, fmt::format("{}", fmt::join(keys, ", "))),
           key.source().begin.line);
  }
}

std::optional<std::string> OrderFields::Text(const toml::node& value, std::string_view key) {
  auto text = value.value_exact<std::string>();
  if (!text || !IsOneLine(*text)) {
    Unfit(value, key, "a line of text in quotes");
    return std::nullopt;
  }
  return text;
}

std::optional<std::string> OrderFields::Path(const toml::node& value, std::string_view key) {
  auto text = Text(value, key);
  if (!text) {
    return std::nullopt;
  }
  const std::filesystem::path path = SystemPath(*text);
  return path.is_absolute() || folder_.empty() ? path.string() : (folder_ / path).string();
}

std::optional<bool> OrderFields::Flag(const toml::node& value, std::string_view key) {
  auto flag = value.value_exact<bool>();
  if (!flag) {
    Unfit(value, key, "true or false");
  }
  return flag;
}

std::optional<int> OrderFields::Number(const toml::node& value, std::string_view key, int least, int most) {
  const auto number = value.value_exact<std::int64_t>();
  if (!number || *number < least || *number > most) {
    Unfit(value, key, fmt::format("a number from {} to {}", least, most));
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

std::optional<Color> OrderFields::Ink(const toml::node& value, std::string_view key) {
  const std::string text = value.value_exact<std::string>().value_or("");
  std::uint32_t rgb = 0;
  const char* end = text.data() + text.size();
  const bool hasForm = text.size() == 7 && text[0] == '#';
  if (!hasForm || std::from_chars(text.data() + 1, end, rgb, 16).ptr != end) {
    Unfit(value, key, R"(a colour as "#rrggbb")");
    return std::nullopt;
  }
  return rgb >> 16 | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
}

std::optional<std::string> OrderFields::Language(const toml::node& value, std::string_view key) {
  const auto text = value.value_exact<std::string>();
  const auto row = text ? CLsDVD::LanguageCalled(*text) : std::nullopt;
  if (!row || *row == 0) {
    Unfit(value, key, "a language by its English name or its code of two or three letters (docs/lists.md)");
    return std::nullopt;
  }
  return std::string(CLsDVD::LanguageArray()[*row]);
}

std::optional<int> OrderFields::Seconds(const toml::node& value, std::string_view key) {
  const int seconds = SecondsIn(value.value_exact<std::string>().value_or(""));
  if (seconds == 0) {
    Unfit(value, key, R"(a time as "10m", "1h30m" or "90s", up to a day)");
    return std::nullopt;
  }
  return seconds;
}

std::optional<std::string> OrderFields::OneOf(const toml::node& value, std::string_view key,
                                              std::span<const std::string_view> words) {
  const auto text = value.value_exact<std::string>();
  const auto word = std::ranges::find_if(
      words, [&text](std::string_view known) { return text && EqualNoCase(*text, known); });
  if (word == words.end()) {
    Unfit(value, key, OneOfWords(words));
    return std::nullopt;
  }
  return std::string(*word);
}

void OrderFields::List(const toml::node& value, std::string_view key, std::string_view expected,
                       const std::function<void(const toml::node& entry)>& read) {
  if (!value.is_array()) {
    Unfit(value, key, expected);
    return;
  }
  for (const toml::node& entry : *value.as_array()) {
    read(entry);
  }
}

std::string OrderFields::OneOfWords(std::span<const std::string_view> words) {
  return fmt::format("one of \"{}\"", fmt::join(words, "\", \""));
}

}  // namespace quorvelant
