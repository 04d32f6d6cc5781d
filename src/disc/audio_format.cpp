#include "disc/audio_format.h"

#include <algorithm>

#include "base/text.h"

namespace quorvelant {

std::string GetAudioType(std::string_view fileName) {
  const std::string extension =
      Lower(fileName.substr(fileName.size() - std::min<std::size_t>(4, fileName.size())));
  if (extension == ".ac3") {
    return "AC3";
  }
  if (extension == ".wav") {
    return "PCM";
  }
  return extension == ".dts" ? "DTS" : "";
}

}  // namespace quorvelant
