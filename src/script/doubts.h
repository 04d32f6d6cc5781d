// What values of keys look like.
#pragma once

#include <string_view>

namespace quorvelant {

// Says how a value is read, and what it must look like: any other is taken as it stands, and doubted.
enum class Takes {
  Anything,
  Number,
  Timecode,
  YesNo,
  Standard,
  Aspect,
  Language,        // a name of the vocabulary
  LanguageCode,    // or a name
  AudioExtension,  // a name, or its row
  SubExtension,
  DisplayMode,
  MenuType,
  PlayBack,
  ButtonMode,
  YesOrNumber,
  Rgb,  // three numbers with commas between, as are those below
  Pair,
  Quad,
  // Not judged.
  PgcLink
};

// Of a switch with other words than yes and no.
inline constexpr std::string_view NoSwitchWord = "is none of the words that this key takes";

// Why a value is doubted; empty where it is as it must be, or is empty.
std::string_view DoubtOf(Takes takes, std::string_view value);

}  // namespace quorvelant
