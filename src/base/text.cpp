#include "base/text.h"

#include <algorithm>
#include <limits>

namespace quorvelant {

namespace {

constexpr char LowerChar(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
constexpr char UpperChar(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

}  // namespace

std::string Lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), LowerChar);
  return result;
}

std::string Upper(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), UpperChar);
  return result;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerChar(x) == LowerChar(y); });
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string NameKey(std::string_view text) {
  std::string key;
  key.reserve(text.size());
  for (const char c : text) {
    if (c != ' ') {
      key.push_back(LowerChar(c));
    }
  }
  return key;
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  std::size_t from = 0;
  for (std::size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, from)) {
    pieces.push_back(text.substr(from, at - from));
    from = at + separator.size();
  }
  pieces.push_back(text.substr(from));
  return pieces;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, start)) {
    result.append(text.substr(start, at - start)).append(to);
    start = at + from.size();
  }
  return result.append(text.substr(start));
}

std::int32_t LeadingNumber(std::string_view text) {
  text = Trim(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  constexpr std::int64_t Limit = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') {
      break;
    }
    value = std::min<std::int64_t>(value * 10 + (c - '0'), Limit);
  }
  return static_cast<std::int32_t>(negative ? -value : value);
}

std::string Printable(std::string_view text) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string shown;
  shown.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\n') || byte == 0x7F) {
      shown.append("\\x").append(1, Digits[byte >> 4U]).append(1, Digits[byte & 15U]);
    } else {
      shown.push_back(c);
    }
  }
  return shown;
}

}  // namespace quorvelant
