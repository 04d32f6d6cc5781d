// Texts of the core in a window.
#pragma once

#include <QString>
#include <string_view>

namespace quorvelant {

[[nodiscard]] inline QString Shown(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace quorvelant
