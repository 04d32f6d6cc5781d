#include "desk/edit_line.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "base/message_error.h"
#include "base/text.h"
#include "desk/messages.h"

namespace quorvelant {

namespace {

using Json = nlohmann::json;

constexpr std::string_view WordField = "op";
constexpr std::string_view AgreeField = "agree";

Json Parsed(std::string_view text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& fault) {
    // After the number and the line, which is always the first: "column 5: syntax error while ...".
    constexpr std::string_view Before = "line 1, ";
    const std::string words = fault.what();
    const std::size_t start = words.find(Before);
    throw MessageError(MessageOf(message::EditLineNoJson, {},
                                 start == std::string::npos ? words : words.substr(start + Before.size())));
  } catch (const Json::exception& fault) {  // a number beyond all
    throw MessageError(MessageOf(message::EditLineNoJson, {}, fault.what()));
  }
}

std::vector<std::string_view> NamesIn(std::string_view takes) {
  return takes.empty() ? std::vector<std::string_view>() : Split(takes, " ");
}

}  // namespace

EditLine::EditLine(std::string_view text) : object_(Parsed(text)) {
  if (!object_.is_object() || !Has(WordField)) {
    throw MessageError(MessageOf(message::EditLineWithoutWord, {}));
  }
  if (Has(AgreeField)) {
    agrees_ = At(AgreeField).Flag();
    object_.erase(std::string(AgreeField));
  }
}

std::string EditLine::Word() const {
  return Text(WordField);
}

bool EditLine::Agrees() const {
  return agrees_;
}

bool EditLine::IsLike(const EditLine& other) const {
  return object_ == other.object_;
}

void EditLine::Expect(std::string_view takes) const {
  const auto names = NamesIn(takes);
  for (const auto& field : object_.items()) {
    const std::string& name = field.key();
    const bool known =
        name == WordField || std::ranges::any_of(names, [&name](std::string_view taken) {
          return taken == name || (taken.ends_with('?') && taken.substr(0, taken.size() - 1) == name);
        });
    if (!known) {
      throw MessageError(takes.empty() ? MessageOf(message::EditTakesNoField, {}, Word(), name)
                                       : MessageOf(message::EditFieldUnknown, {}, Word(), name, takes));
    }
  }
  for (const std::string_view name : names) {
    if (!name.ends_with('?') && !Has(name)) {
      throw MessageError(MessageOf(message::EditFieldMissing, {}, Word(), name));
    }
  }
}

bool EditLine::Has(std::string_view name) const {
  return object_.contains(name);
}

JsonField EditLine::At(std::string_view name) const {
  return {std::string(name), object_.at(std::string(name))};
}

std::optional<std::string> EditLine::TextIf(std::string_view name) const {
  return Has(name) ? std::optional(Text(name)) : std::nullopt;
}

std::size_t EditLine::IndexOf(std::string_view name) const {
  return static_cast<std::size_t>(At(name).Number(1, std::numeric_limits<std::int32_t>::max())) - 1;
}

}  // namespace quorvelant
