#include "support/folders.h"

namespace quorvelant {

std::string SourceFile(std::string_view relative) {
  return std::string(QUORVELANT_SOURCE_DIR "/").append(relative);
}

std::string BuildFile(std::string_view relative) {
  return std::string(QUORVELANT_BINARY_DIR "/").append(relative);
}

}  // namespace quorvelant
