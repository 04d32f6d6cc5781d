#include "window/picture_pane.h"

namespace quorvelant {

PicturePane::PicturePane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Picture"));
}

}  // namespace quorvelant
