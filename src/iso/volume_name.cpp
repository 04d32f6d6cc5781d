#include "iso/volume_name.h"

#include <algorithm>

#include "base/text.h"

namespace quorvelant {
namespace {

constexpr std::string_view NamelessVolume = "DVD_VIDEO";
constexpr char Gap = '_';

bool IsPlain(char letter) {
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
}

}  // namespace

bool IsVolumeName(std::string_view text) {
  return !text.empty() && text.size() <= MostLabelLetters &&
         std::ranges::all_of(text, [](char letter) { return IsPlain(letter) || letter == Gap; });
}

std::string VolumeNameFrom(std::string_view text) {
  std::string name;
  for (const char letter : Upper(text)) {
    if (IsPlain(letter)) {
      name += letter;
    } else if (!name.empty() && name.back() != Gap) {
      name += Gap;
    }
  }
  name.resize(std::min(name.size(), MostLabelLetters));
  name.resize(name.find_last_not_of(Gap) + 1);
  return name.empty() ? std::string(NamelessVolume) : name;
}

}  // namespace quorvelant
