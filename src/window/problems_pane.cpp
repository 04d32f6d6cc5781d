#include "window/problems_pane.h"

namespace quorvelant {

ProblemsPane::ProblemsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Problems"));
}

}  // namespace quorvelant
