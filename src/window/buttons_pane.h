// Buttons: the buttons of the set that shows at the moment.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class ButtonsPane : public QWidget {
  Q_OBJECT
 public:
  explicit ButtonsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
