// The lines of a script in the making.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quorvelant {

// Appends lines to one buffer. The level of a line, shown by leading tabs, follows the open braces.
class ScriptText {
 public:
  ScriptText() { text_.reserve(std::size_t{1} << 16U); }

  void Line(std::string_view line) {
    Begin().Put(line);
    End();
  }
  void Value(std::string_view key, std::string_view value) {
    BeginValue(key).Put(value);
    End();
  }
  void Open() {
    Line("{");
    ++level_;
  }
  void Open(std::string_view item) {
    Line(item);
    Open();
  }
  // An item with a number in the place of its "*", or after its "#".
  void OpenNumbered(std::string_view item, std::size_t number) {
    Begin().PutNumbered(item, number);
    End();
    Open();
  }
  void Close() {
    if (level_ > 0) {
      --level_;
    }
    Line("}");
  }

  // A line in pieces: begun, put together, ended.
  ScriptText& BeginValue(std::string_view key) { return Begin().Put(key).Put('='); }
  ScriptText& BeginNumbered(std::string_view key, std::size_t number) {
    return Begin().PutNumbered(key, number).Put('=');
  }
  ScriptText& Put(std::string_view text) {
    text_.append(text);
    return *this;
  }
  ScriptText& Put(char character) {
    text_.push_back(character);
    return *this;
  }
  ScriptText& Put(std::int64_t number) {
    std::array<char, 24> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text_.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
    return *this;
  }
  void End() { text_.append("\r\n"); }

  std::string Release() { return std::move(text_); }

 private:
  ScriptText& Begin() {
    text_.append(level_, '\t');
    return *this;
  }
  ScriptText& PutNumbered(std::string_view word, std::size_t number) {
    const std::size_t star = word.find('*');
    Put(word.substr(0, star)).Put(static_cast<std::int64_t>(number));
    return star == std::string_view::npos ? *this : Put(word.substr(star + 1));
  }

  std::string text_;
  std::size_t level_ = 0;
};

}  // namespace quorvelant
