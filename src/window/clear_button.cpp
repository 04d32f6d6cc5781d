#include "window/clear_button.h"

#include <QLineEdit>
#include <QToolButton>

namespace quorvelant {

void AddClearButton(QLineEdit& line) {
  line.setClearButtonEnabled(true);
  for (auto* const button : line.findChildren<QToolButton*>()) {
    button->setAccessibleName(QLineEdit::tr("Clear"));
  }
}

}  // namespace quorvelant
