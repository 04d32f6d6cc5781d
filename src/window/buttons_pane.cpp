#include "window/buttons_pane.h"

namespace quorvelant {

ButtonsPane::ButtonsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Buttons"));
}

}  // namespace quorvelant
