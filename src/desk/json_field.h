// Values of JSON that a user wrote.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

// A named value. What is not as asked for raises a MessageError that names the field and what is expected.
class JsonField {
 public:
  // `value` must live as long as the field.
  JsonField(std::string name, const nlohmann::json& value) : name_(std::move(name)), value_(&value) {}

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] bool IsText() const { return value_->is_string(); }
  [[nodiscard]] bool IsNull() const { return value_->is_null(); }

  [[nodiscard]] std::string Text() const;
  [[nodiscard]] std::int64_t Number(std::int64_t least, std::int64_t most) const;
  [[nodiscard]] bool Flag() const;
  // The index of one of the words, in any case.
  [[nodiscard]] std::size_t OneOf(std::span<const std::string_view> words) const;
  // The values of a list of at most so many; each goes by this field's name.
  [[nodiscard]] std::vector<JsonField> List(std::size_t most) const;
  // The fields of an object, by name.
  [[nodiscard]] std::vector<JsonField> Fields() const;

  [[noreturn]] void Refuse(std::string_view expected) const;

 private:
  std::string name_;
  const nlohmann::json* value_;
};

}  // namespace quorvelant
