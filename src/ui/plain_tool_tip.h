// Tool tips with names in them.
#pragma once

#include <QString>
#include <QTextDocument>

namespace quorvelant {

// Names that look like markup stand as they are.
[[nodiscard]] inline QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace quorvelant
