// Colours as users write them.
#pragma once

#include <QColor>
#include <QString>
#include <optional>

#include "model/tracks.h"

namespace quorvelant {

[[nodiscard]] inline QColor QColorOf(Color color) {
  return {static_cast<int>(color & 0xFFU), static_cast<int>((color >> 8U) & 0xFFU),
          static_cast<int>((color >> 16U) & 0xFFU)};
}
[[nodiscard]] inline Color ColorOf(const QColor& color) {
  return static_cast<Color>(color.red()) | static_cast<Color>(color.green()) << 8U |
         static_cast<Color>(color.blue()) << 16U;
}
// "#rrggbb".
[[nodiscard]] inline QString ColorText(Color color) {
  return QColorOf(color).name();
}
// Nothing where the text is no "#rrggbb"; the "#" may be missing.
[[nodiscard]] std::optional<Color> ColorIn(const QString& text);

}  // namespace quorvelant
