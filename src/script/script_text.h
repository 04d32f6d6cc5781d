// The lines of a script in the making.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "model/tracks.h"

namespace quorvelant {

// Appends lines to one buffer. The level of a line, shown by leading tabs, follows the open braces.
class ScriptText {
 public:
  ScriptText() { text_.reserve(std::size_t{1} << 16U); }

  void Line(std::string_view line) {
    Begin(line);
    End();
  }
  // `key` holds its "=".
  void Value(std::string_view key, std::string_view value) {
    Begin(key);
    text_.append(value);
    End();
  }
  void Value(std::string_view key, std::int64_t value) {
    Begin(key);
    Append(value);
    End();
  }
  // "<before><number><behind><value>"
  void Numbered(std::string_view before, std::size_t number, std::string_view behind, std::int64_t value) {
    Begin(before);
    Append(static_cast<std::int64_t>(number));
    text_.append(behind);
    Append(value);
    End();
  }
  void Numbered(std::string_view before, std::size_t number, std::string_view behind,
                std::string_view value = {}) {
    Begin(before);
    Append(static_cast<std::int64_t>(number));
    text_.append(behind).append(value);
    End();
  }
  void Numbers(std::string_view key, std::initializer_list<std::int64_t> numbers,
               std::string_view separator = ",") {
    Begin(key);
    std::string_view ahead;
    for (const std::int64_t number : numbers) {
      text_.append(std::exchange(ahead, separator));
      Append(number);
    }
    End();
  }
  // Three bytes, the low one first.
  void Bytes(std::string_view key, Color color) {
    Numbers(key, {color & 255U, color >> 8U & 255U, color >> 16U & 255U});
  }
  void Open() {
    Line("{");
    ++level_;
  }
  void Open(std::string_view item) {
    Line(item);
    Open();
  }
  void Close() {
    if (level_ > 0) {
      --level_;
    }
    Line("}");
  }

  std::string Take() { return std::move(text_); }

 private:
  void Begin(std::string_view start) { text_.append(level_, '\t').append(start); }
  void Append(std::int64_t number) {
    std::array<char, 24> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text_.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
  }
  void End() { text_.append("\r\n"); }

  std::string text_;
  std::size_t level_ = 0;
};

}  // namespace quorvelant
