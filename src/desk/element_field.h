// A field of an element, for those who show it.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

enum class FieldKind : std::uint8_t {
  Text,
  Time,     // a timecode
  Number,   // from `Least` to `Most`
  Flag,     // true or false
  Choice,   // one of `Choices`
  Names,    // a list of some of `Choices`
  Numbers,  // a list, each from `Least` to `Most`
  Flags     // a list of true and false
};

struct ElementField {      // NOLINT(bugprone-exception-escape): moving a value of JSON only asserts
  std::string_view Name;   // by which `SetFields` knows it
  std::string_view Label;  // what a form calls it
  FieldKind Kind = FieldKind::Text;
  nlohmann::json Value;  // as `SetFields` takes it
  std::vector<std::string> Choices;
  std::int64_t Least = 0;
  std::int64_t Most = 0;
};

}  // namespace quorvelant
