#include "window/short_label.h"

#include <QEvent>
#include <QTextLayout>

namespace quorvelant {

ShortLabel::ShortLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ShortLabel::SetWords(const QString& words) {
  words_ = words.simplified();
  setAccessibleName(words_);
  Lay();
}

QSize ShortLabel::sizeHint() const {
  const QMargins margins = contentsMargins();
  return {minimumSizeHint().width(), lines_ * fontMetrics().lineSpacing() + margins.top() + margins.bottom()};
}

QSize ShortLabel::minimumSizeHint() const {
  constexpr int LeastLetters = 12;
  return {fontMetrics().averageCharWidth() * LeastLetters, fontMetrics().lineSpacing()};
}

void ShortLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Lay();
}

void ShortLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    Lay();
  }
}

void ShortLabel::Lay() {
  const int room = contentsRect().width();
  QString shown = words_;
  int lines = 1;
  if (fontMetrics().horizontalAdvance(words_) > room) {
    QTextLayout layout(words_, font());
    layout.beginLayout();
    QTextLine first = layout.createLine();
    first.setLineWidth(room);
    layout.endLayout();
    const int end = first.textLength();
    shown = words_.left(end).trimmed() + QLatin1Char('\n') +
            fontMetrics().elidedText(words_.mid(end), Qt::ElideRight, room);
    lines = 2;
  }
  setToolTip(shown.endsWith(QChar(0x2026)) ? words_ : QString());
  if (text() != shown) {
    setText(shown);
  }
  if (lines != lines_) {
    lines_ = lines;
    updateGeometry();
  }
}

}  // namespace quorvelant
