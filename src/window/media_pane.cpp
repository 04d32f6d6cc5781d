#include "window/media_pane.h"

namespace quorvelant {

MediaPane::MediaPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Media"));
}

}  // namespace quorvelant
