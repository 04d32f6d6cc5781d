#include "ui/color_text.h"

#include <QRegularExpression>

namespace quorvelant {

std::optional<Color> ColorIn(const QString& text) {
  static const QRegularExpression form(QStringLiteral("^#?([0-9a-fA-F]{6})$"));
  const auto match = form.match(text.trimmed());
  return match.hasMatch() ? std::optional(ColorOf(QColor(u'#' + match.captured(1)))) : std::nullopt;
}

}  // namespace quorvelant
