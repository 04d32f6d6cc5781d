#include "window/jobs_pane.h"

namespace quorvelant {

JobsPane::JobsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Jobs"));
}

}  // namespace quorvelant
