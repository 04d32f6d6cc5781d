#include "script/doubts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <vector>

#include "base/text.h"
#include "model/cls_dvd.h"
#include "model/menu_kind.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoNumber = "is no number";
constexpr std::string_view NoTimecode = "is no time HH:MM:SS:FF";
constexpr std::string_view NoYesNo = "is neither Yes nor No";
constexpr std::string_view NoStandard = "is neither PAL nor NTSC";
constexpr std::string_view NoAspect = "is neither 4:3 nor 16:9";
constexpr std::string_view NoLanguage = "is no language that a disc can name";
constexpr std::string_view NoExtension = "is no language extension";
constexpr std::string_view NoDisplayMode = "is no display mode";
constexpr std::string_view NoMenuType = "is no menu: Root, TitleMenu, Subpicture, Audio, Angle, PTT or None";
constexpr std::string_view NoPlayBack =
    "is none of Sequential Playback, Random Playback and Shuffle Playback";

constexpr std::string_view NoButtonMode = "is no button mode: wide, letter or pan";
constexpr std::string_view NoYesNoNumber = "is neither Yes nor No nor a number";
constexpr std::string_view NoColor = "is no colour: three numbers of 0 to 255 with commas between";
constexpr std::string_view NoPair = "is not two numbers with a comma between";
constexpr std::string_view NoQuad = "is not four numbers with commas between";

constexpr std::size_t TimecodeFields = 4;

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsNumber(std::string_view text) {
  return IsDigits(text.substr(text.starts_with('-') || text.starts_with('+') ? 1 : 0));
}

// That many numbers with commas between, none above `most`.
bool IsNumbers(std::string_view text, std::size_t count, std::int32_t most) {
  const std::vector<std::string_view> numbers = Split(text, ",");
  return numbers.size() == count && std::ranges::all_of(numbers, [most](std::string_view number) {
           return IsNumber(Trim(number)) && LeadingNumber(number) <= most;
         });
}

bool IsTimecode(std::string_view text) {
  std::size_t fields = 0;
  for (; !text.empty() && fields <= TimecodeFields; ++fields) {
    const std::size_t mark = std::min(text.find_first_of(":;"), text.size());
    if (!IsDigits(Trim(text.substr(0, mark)))) {
      return false;
    }
    text.remove_prefix(std::min(mark + 1, text.size()));
  }
  return fields == TimecodeFields;
}

bool IsOneOf(std::string_view value, std::span<const std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [value](std::string_view word) { return EqualNoCase(word, value); });
}
bool IsOneOf(std::string_view value, std::initializer_list<std::string_view> words) {
  return IsOneOf(value, std::span(words.begin(), words.size()));
}
bool IsYesNo(std::string_view value) {
  return IsOneOf(value, {"yes", "no", "true", "false", "1", "0"});
}

constexpr std::int32_t MostColor = 255;
constexpr std::int32_t AnyNumber = std::numeric_limits<std::int32_t>::max();

bool IsLanguage(std::string_view value) {
  return !CLsDVD::LangNameToLangCode(value).empty() || EqualNoCase(value, "not specified");
}

bool IsLanguageCode(std::string_view value) {
  for (std::size_t row = 0; row < CLsDVD::LanguageCount; ++row) {
    if (CLsDVD::SpareLanguage(row) == value) {
      return true;
    }
  }
  return IsLanguage(value);
}

bool IsDisplayMode(std::string_view value) {
  return IsOneOf(value, {"Not Specified", "Only PanScan", "Only LetterBox", "Both PanScan and LetterBox",
                         "Normal", "Wide", "Pan", "LetterBox", "Letter", "Wide/Letter", "Pan/Letter"});
}

bool IsMenuType(std::string_view value) {
  return MenuKindOf(value).Category != 0 || IsOneOf(value, {"none", "no", "no menu"});
}

}  // namespace

std::string_view DoubtOf(Takes takes, std::string_view value) {
  value = Trim(value);
  if (value.empty()) {
    return {};
  }
  const auto unless = [](bool fits, std::string_view doubt) { return fits ? std::string_view() : doubt; };
  switch (takes) {
    case Takes::Number:
      return unless(IsNumber(value), NoNumber);
    case Takes::Timecode:
      return unless(IsTimecode(value), NoTimecode);
    case Takes::YesNo:
      return unless(IsYesNo(value), NoYesNo);
    case Takes::Standard:
      return unless(IsOneOf(value, {"PAL", "NTSC"}), NoStandard);
    case Takes::Aspect:
      return unless(IsOneOf(value, {"4:3", "16:9"}), NoAspect);
    case Takes::Language:
      return unless(IsLanguage(value), NoLanguage);
    case Takes::LanguageCode:
      return unless(IsLanguageCode(value), NoLanguage);
    case Takes::AudioExtension:
      return unless(IsOneOf(value, CLsDVD::AudioArray()) || IsDigits(value), NoExtension);
    case Takes::SubExtension:
      return unless(IsOneOf(value, CLsDVD::SubArray()) || IsDigits(value), NoExtension);
    case Takes::DisplayMode:
      return unless(IsDisplayMode(value), NoDisplayMode);
    case Takes::MenuType:
      return unless(IsMenuType(value), NoMenuType);
    case Takes::PlayBack:
      return unless(IsOneOf(value, {"sequential playback", "random playback", "shuffle playback"}),
                    NoPlayBack);
    case Takes::ButtonMode:
      return unless(IsOneOf(value, {"wide", "letter", "letterbox", "pan", "panscan", "none", "normal"}),
                    NoButtonMode);
    case Takes::YesOrNumber:
      return unless(IsYesNo(value) || IsNumber(value), NoYesNoNumber);
    case Takes::Rgb:
      return unless(IsNumbers(value, 3, MostColor), NoColor);
    case Takes::Pair:
      return unless(IsNumbers(value, 2, AnyNumber), NoPair);
    case Takes::Quad:
      return unless(IsNumbers(value, 4, AnyNumber), NoQuad);
    case Takes::Anything:
    case Takes::PgcLink:
      break;
  }
  return {};
}

}  // namespace quorvelant
