#include "window/commands_pane.h"

namespace quorvelant {

CommandsPane::CommandsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Commands"));
}

}  // namespace quorvelant
