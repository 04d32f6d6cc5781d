#include "menu/menu_labels.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "menu/label_tables.h"

namespace quorvelant {

namespace {

constexpr std::string_view ValueMark = "{}";

constexpr auto Keys = [] {
  std::array<std::string_view, LabelTexts.size()> keys{};
  for (std::size_t i = 0; i < keys.size(); ++i) {
    keys[i] = LabelTexts[i][0];
  }
  return keys;
}();

// The text of the row that begins with the English one; that one where there is no such row.
std::string_view TextOf(std::span<const LabelRow> rows, std::string_view english, std::size_t column) {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [english](const LabelRow& texts) { return EqualNoCase(texts[0], english); });
  return row == rows.end() ? english : (*row)[column];
}

bool IsPlain(std::string_view extension) {
  return extension.empty() || EqualNoCase(extension, "Unspecified") || EqualNoCase(extension, "Normal");
}

}  // namespace

std::span<const std::string_view> MenuLabelLanguages() {
  return LabelLanguages;
}

std::span<const std::string_view> MenuLabelKeys() {
  return Keys;
}

MenuLabels::MenuLabels(std::string_view language, const std::map<std::string, std::string>& own) : own_(own) {
  const auto* const named =
      std::find_if(LabelLanguages.begin(), LabelLanguages.end(),
                   [language](std::string_view name) { return EqualNoCase(name, language); });
  if (named != LabelLanguages.end()) {
    column_ = static_cast<std::size_t>(named - LabelLanguages.begin());
  }
}

std::string MenuLabels::Of(std::string_view key) const {
  const auto own = own_.find(std::string(key));
  return own != own_.end() ? own->second : std::string(TextOf(LabelTexts, key, column_));
}

std::string MenuLabels::Of(std::string_view key, std::string_view value) const {
  return Replace(Of(key), ValueMark, value);
}

std::string MenuLabels::StreamName(const OfferedStream& stream) const {
  const auto named = [this](std::span<const LabelRow> rows, const std::string& english) {
    const auto own = own_.find(english);
    return own != own_.end() ? own->second : std::string(TextOf(rows, english, column_));
  };
  const std::string language =
      named(LanguageTexts, stream.Language.empty() ? "None Specified" : stream.Language);
  return IsPlain(stream.Extension)
             ? language
             : fmt::format("{} ({})", language, named(ExtensionTexts, stream.Extension));
}

}  // namespace quorvelant
