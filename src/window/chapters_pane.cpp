#include "window/chapters_pane.h"

namespace quorvelant {

ChaptersPane::ChaptersPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Chapters"));
}

}  // namespace quorvelant
