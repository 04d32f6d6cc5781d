#include "window/disc_pane.h"

namespace quorvelant {

DiscPane::DiscPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Disc"));
}

}  // namespace quorvelant
