// Values of a TOML file, with what is wrong with them by file and line.
#pragma once

#include <toml++/toml.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/message.h"
#include "model/tracks.h"

namespace quorvelant {

// A key that a table may have, and who reads its value.
struct OrderField {
  std::string_view Key;
  std::function<void(const toml::node& value)> Read;
};

// A word and what it stands for.
template <class Value>
struct OrderWord {
  std::string_view Word;
  Value Means;
};

// Every reader gives nothing for an unfit value, and notes the error.
class OrderFields {
 public:
  explicit OrderFields(std::string file);

  // Hands each value of a table to its field. `what` names the table, as in "a title".
  void ReadTable(const toml::node& table, std::string_view what, std::span<const OrderField> fields);

  // One line of text, which is not empty.
  std::optional<std::string> Text(const toml::node& value, std::string_view key);
  // A path, as it counts from here.
  std::optional<std::string> Path(const toml::node& value, std::string_view key);
  std::optional<bool> Flag(const toml::node& value, std::string_view key);
  std::optional<int> Number(const toml::node& value, std::string_view key, int least, int most);
  std::optional<Color> Ink(const toml::node& value, std::string_view key);             // "#rrggbb"
  std::optional<std::string> Language(const toml::node& value, std::string_view key);  // by its name
  std::optional<int> Seconds(const toml::node& value, std::string_view key);           // "1h30m", "90s"
  // A word of the vocabulary, in any case.
  std::optional<std::string> OneOf(const toml::node& value, std::string_view key,
                                   std::span<const std::string_view> words);
  template <class Value>
  std::optional<Value> Choice(const toml::node& value, std::string_view key,
                              std::span<const OrderWord<Value>> words) {
    const auto word = value.value_exact<std::string>();
    for (const OrderWord<Value>& choice : words) {
      if (word == choice.Word) {
        return choice.Means;
      }
    }
    std::vector<std::string_view> names;
    for (const OrderWord<Value>& choice : words) {
      names.push_back(choice.Word);
    }
    Unfit(value, key, OneOfWords(names));
    return std::nullopt;
  }
  // Every entry of a list goes to `read`.
  void List(const toml::node& value, std::string_view key, std::string_view expected,
            const std::function<void(const toml::node& entry)>& read);

  void Unfit(const toml::node& value, std::string_view key, std::string_view expected);
  void Lacks(const toml::node& table, std::string_view what, std::string_view key);
  void Refuse(Message message, std::size_t line);
  // "disc.toml:12"
  [[nodiscard]] std::string PlaceOf(const toml::node& value) const;
  // In the order of the lines.
  [[nodiscard]] std::vector<Message> Errors() const;

 private:
  static std::string OneOfWords(std::span<const std::string_view> words);
  [[nodiscard]] std::string PlaceAt(std::size_t line) const;

  std::string file_;
  std::string folder_;
  std::vector<std::pair<std::size_t, Message>> errors_;  // with the line
};

}  // namespace quorvelant
