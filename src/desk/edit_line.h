// One line of `quorvelant edit`: an operation as a JSON object.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "desk/json_field.h"

namespace quorvelant {

// {"op":"drop","track":0,"target":"VTS1.TITLE1.PGC1"}
class EditLine {
 public:
  // Raises a MessageError with the place in the line where the text is none.
  explicit EditLine(std::string_view text);

  [[nodiscard]] std::string Word() const;
  // "agree": the consent to what the operation asks.
  [[nodiscard]] bool Agrees() const;
  // Whether the lines say the same but for the consent.
  [[nodiscard]] bool IsLike(const EditLine& other) const;

  // Raises a MessageError where the line has other fields than `takes`, or lacks one. `takes` are names with
  // blanks between; "?" after a name: it may be missing.
  void Expect(std::string_view takes) const;

  [[nodiscard]] bool Has(std::string_view name) const;
  // The field must be there.
  [[nodiscard]] JsonField At(std::string_view name) const;
  [[nodiscard]] std::string Text(std::string_view name) const { return At(name).Text(); }
  // Nothing where the field is missing.
  [[nodiscard]] std::optional<std::string> TextIf(std::string_view name) const;
  [[nodiscard]] bool FlagIf(std::string_view name) const { return Has(name) && At(name).Flag(); }
  // Of numbers that count from 1: from 0.
  [[nodiscard]] std::size_t IndexOf(std::string_view name) const;

 private:
  nlohmann::json object_;  // without "agree"
  bool agrees_ = false;
};

}  // namespace quorvelant
