#include "script/values.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "base/timecode.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

// A number is a row of the vocabulary.
std::string ExtensionText(std::string_view value, std::span<const std::string_view> names) {
  const std::string_view trimmed = Trim(value);
  const bool isNumber = !trimmed.empty() && trimmed.find_first_not_of("0123456789") == std::string_view::npos;
  const auto row = isNumber ? static_cast<std::size_t>(LeadingNumber(trimmed)) : names.size();
  return std::string(row < names.size() ? names[row] : value);
}

// A code, or in the other dialect a language's name.
std::string LanguageCode(std::string_view value) {
  const std::string_view code = CLsDVD::LangNameToLangCode(Trim(value));
  return std::string(code.empty() ? value : code);
}

std::string LinkText(std::string_view value) {
  const bool none = Trim(value).empty() || IsWord(value, "none") || IsWord(value, "nonexistent");
  return std::string(none ? "none" : value);
}

}  // namespace

Color CommaColor(std::string_view value) {
  const auto channels = CommaNumbers<3>(value);
  Color color = 0;
  for (std::size_t channel = 0; channel < channels.size(); ++channel) {
    color = WithChannel(color, channel, channels[channel]);
  }
  return color;
}

Color WithChannel(Color color, std::size_t channel, std::int32_t value) {
  const std::size_t shift = 8 * channel;
  return (color & ~(Color{255} << shift)) | (static_cast<Color>(value) & 255U) << shift;
}

bool IsOn(std::string_view value, const Switch& words) {
  std::string_view others = words.AlsoOn;
  for (std::string_view word = words.On; !word.empty();) {
    if (IsWord(value, word)) {
      return true;
    }
    word = others.substr(0, others.find('|'));
    others.remove_prefix(std::min(word.size() + 1, others.size()));
  }
  return words.Otherwise && !IsWord(value, words.Off);
}

bool IsWordOf(const Switch& words, std::string_view value) {
  constexpr std::array<std::string_view, 5> Off{"", "no", "false", "0", "none"};
  const auto is = [value](std::string_view word) { return IsWord(value, word); };
  // In a switch that no word turns off by chance, only words for on are on.
  const Switch strict{.On = words.On, .Off = words.Off, .AlsoOn = words.AlsoOn};
  return is(words.Off) || IsOn(value, strict) || std::ranges::any_of(Off, is);
}

std::string TextOf(Takes takes, std::string_view value, bool isScenarist) {
  switch (takes) {
    case Takes::Timecode:
      return ColonTimecode(value);
    case Takes::Standard:
      return Upper(Trim(value));
    case Takes::Language:
      return std::string(IsWord(value, "not specified") ? "None Specified" : value);
    case Takes::LanguageCode:
      return LanguageCode(value);
    case Takes::AudioExtension:
      return ExtensionText(value, CLsDVD::AudioArray());
    case Takes::SubExtension:
      return ExtensionText(value, CLsDVD::SubArray());
    case Takes::DisplayMode:
      return std::string(IsWord(value, "letter") ? "LetterBox" : value);
    case Takes::MenuType:
      return std::string(isScenarist && Trim(value).empty() ? "No Menu" : value);
    case Takes::PgcLink:
      return LinkText(value);
    default:
      return std::string(value);
  }
}

std::string_view WrittenText(Takes takes, std::string_view text) {
  return takes == Takes::PgcLink && EqualNoCase(text, "none") ? std::string_view() : text;
}

std::string ColonTimecode(std::string_view value) {
  return Replace(Trim(value), ";", ":");
}

std::int32_t SceneFrame(std::string_view timecode, int framesPerSecond) {
  constexpr std::int64_t Most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(TimecodeToFrames(timecode, framesPerSecond), 0, Most));
}

}  // namespace quorvelant
