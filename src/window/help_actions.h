// What the menu Help does.
#pragma once

#include <QWidget>

#include "window/actions.h"

namespace quorvelant {

// Says what "Manual", "Shortcuts", "Change Log" and "About Quorvelant" do. Their windows belong to `window`,
// are made when first asked for, and do not keep its other panes from being used.
void HandleHelp(Actions& actions, QWidget* window);

}  // namespace quorvelant
