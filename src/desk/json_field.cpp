#include "desk/json_field.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "base/message_error.h"
#include "base/text.h"
#include "desk/messages.h"

namespace quorvelant {

namespace {

using Json = nlohmann::json;

constexpr std::size_t MostShown = 60;

std::optional<std::int64_t> WholeNumber(const Json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    return number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())
               ? std::nullopt
               : std::optional(static_cast<std::int64_t>(number));
  }
  return value.is_number_integer() ? std::optional(value.get<std::int64_t>()) : std::nullopt;
}

// What a message shows of a value that is no list or object.
std::string Shown(const Json& value) {
  std::string text = value.dump(-1, ' ', true, Json::error_handler_t::replace);
  return text.size() <= MostShown ? text : text.substr(0, MostShown) + "...";
}

}  // namespace

std::string JsonField::Text() const {
  if (!value_->is_string()) {
    Refuse("a text");
  }
  return value_->get<std::string>();
}

std::int64_t JsonField::Number(std::int64_t least, std::int64_t most) const {
  const auto number = WholeNumber(*value_);
  if (!number || *number < least || *number > most) {
    Refuse(most == std::numeric_limits<std::int32_t>::max()
               ? fmt::format("a number from {}", least)
               : fmt::format("a number from {} to {}", least, most));
  }
  return *number;
}

bool JsonField::Flag() const {
  if (!value_->is_boolean()) {
    Refuse("true or false");
  }
  return value_->get<bool>();
}

std::size_t JsonField::OneOf(std::span<const std::string_view> words) const {
  const auto word = std::ranges::find_if(words, [this](std::string_view one) {
    return value_->is_string() && EqualNoCase(one, value_->get_ref<const std::string&>());
  });
  if (word == words.end()) {
    Refuse(fmt::format("one of \"{}\"", fmt::join(words, "\", \"")));
  }
  return static_cast<std::size_t>(word - words.begin());
}

std::vector<JsonField> JsonField::List(std::size_t most) const {
  if (!value_->is_array() || value_->size() > most) {
    const std::string has = value_->is_array() ? fmt::format(", not of {},", value_->size()) : std::string();
    Refuse(fmt::format("a list of at most {} value{}{}", most, most == 1 ? "" : "s", has));
  }
  std::vector<JsonField> list;
  for (const Json& one : *value_) {
    list.emplace_back(name_, one);
  }
  return list;
}

std::vector<JsonField> JsonField::Fields() const {
  if (!value_->is_object() || value_->empty()) {
    Refuse("an object with fields");
  }
  std::vector<JsonField> fields;
  for (const auto& [name, value] : value_->items()) {
    fields.emplace_back(name, value);
  }
  return fields;
}

void JsonField::Refuse(std::string_view expected) const {
  throw MessageError(value_->is_structured()
                         ? MessageOf(message::EditListUnfit, {}, name_, expected)
                         : MessageOf(message::EditFieldUnfit, {}, name_, Shown(*value_), expected));
}

}  // namespace quorvelant
