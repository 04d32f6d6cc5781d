#include "window/log_pane.h"

namespace quorvelant {

LogPane::LogPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Log"));
}

}  // namespace quorvelant
