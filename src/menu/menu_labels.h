// What menus say, in the viewer's language.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "menu/menu_offer.h"

namespace quorvelant {

// The languages that labels are there in, by their names in the vocabulary of discs.
[[nodiscard]] std::span<const std::string_view> MenuLabelLanguages();
// The English labels, which an own table goes by. "{}" stands where a name or a number goes.
[[nodiscard]] std::span<const std::string_view> MenuLabelKeys();

class MenuLabels {
 public:
  // A language without labels has English ones. `own` is looked at first: labels, names of languages and
  // kinds of streams, by the English text.
  MenuLabels(std::string_view language, const std::map<std::string, std::string>& own);

  // `key` is one of the English labels; an own label without "{}" stands as it is.
  [[nodiscard]] std::string Of(std::string_view key) const;
  [[nodiscard]] std::string Of(std::string_view key, std::string_view value) const;
  // A stream by its language and what it is, e.g. "German (director's comments)".
  [[nodiscard]] std::string StreamName(const OfferedStream& stream) const;

 private:
  std::size_t column_ = 0;
  const std::map<std::string, std::string>& own_;
};

}  // namespace quorvelant
