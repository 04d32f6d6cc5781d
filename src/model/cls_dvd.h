// The fixed vocabulary of a disc: languages, language code extensions, audio room types, user operations.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace quorvelant {

// Stateless: every table is a constant. A name or code that is returned lives as long as the program.
class CLsDVD {
 public:
  static constexpr std::size_t LanguageCount = 137;
  static constexpr std::size_t AudioExtensionCount = 5;
  static constexpr std::size_t SubExtensionCount = 11;
  static constexpr std::size_t RoomTypeCount = 9;
  // What `UOPSIndex` gives for a text that names no user operation.
  static constexpr std::size_t NoUserOperation = 25;

  // The language's name; codes are compared exactly; "English" for an unknown code.
  static std::string_view LangCodeToLangName(std::string_view code);
  // The two letters of ISO 639 (some of its older edition: "in", "iw", "ji", "jw"), one blank for
  // "None Specified"; names are compared without case; empty for an unknown name.
  static std::string_view LangNameToLangCode(std::string_view name);
  // The row of a language by its name, its two letters, its three (ISO 639-2, either set) or another usual
  // name, in any case.
  static std::optional<std::size_t> LanguageCalled(std::string_view text);
  // The row of a language, compared without case; 0 ("None Specified") for an unknown name.
  static std::size_t LanguageIndex(std::string_view name);
  // The row of an audio extension, compared without case; 0 ("Unspecified") for an unknown name.
  static std::size_t ExtensionIndex(std::string_view name);
  // The same for subpicture extensions.
  static std::size_t SubExtensionIndex(std::string_view name);
  // The bit of a user operation in the disc's masks, `NoUserOperation` where the text names none. With
  // `numbered` clear, `name` is a name of `UserOP`, in any case; with it set, a line whose first word is
  // "uop" and a number of at most two digits.
  static std::size_t UOPSIndex(std::string_view name, bool numbered);
  // The code of a row of the languages; empty after the last row.
  static std::string_view SpareLanguage(std::size_t row);
  static std::span<const std::string_view> LanguageArray();
  static std::span<const std::string_view> AudioArray();
  static std::span<const std::string_view> SubArray();
  static std::span<const std::string_view> AudioRoomType();
  // The name of a user operation; empty after the last.
  static std::string_view UserOP(std::size_t index);
  // The country whose flag stands for a language; names are compared exactly; "None" where there is none.
  static std::string_view FlagName(std::string_view name);
  // A word of the other dialect of scripts as an extension's name, compared without case; empty for an
  // unknown word.
  static std::string_view ConvertExtensions(std::string_view scriptWord);
  static std::string_view ConvertSubExtensions(std::string_view scriptWord);
};

}  // namespace quorvelant
