#include "window/color_line.h"

#include <QAction>
#include <QPixmap>

#include "ui/color_text.h"

namespace quorvelant {

ColorLine::ColorLine(QWidget* parent) : QLineEdit(parent), swatch_(addAction(QIcon(), LeadingPosition)) {
  setMaxLength(7);
  swatch_->setText(tr("The colour that is written here"));
  swatch_->setEnabled(false);
  connect(this, &QLineEdit::textChanged, this, &ColorLine::ShowColor);
}

void ColorLine::ShowColor() {
  const int side = fontMetrics().height();
  QPixmap pixmap(side, side);
  const auto color = ColorIn(text());
  pixmap.fill(color ? QColorOf(*color) : QColor(Qt::transparent));
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Disabled);
  swatch_->setIcon(icon);
}

}  // namespace quorvelant
