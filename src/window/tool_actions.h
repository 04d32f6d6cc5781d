// What the menu Tools does, and the list of command errors.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

// Says what "Settings…" and "Command Errors…" do. Each has one window at a time.
void HandleTools(WindowParts& parts, QWidget* window);

}  // namespace quorvelant
