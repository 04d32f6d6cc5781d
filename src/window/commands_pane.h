// Commands: the command lists of the chosen PGC or cell.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class CommandsPane : public QWidget {
  Q_OBJECT
 public:
  explicit CommandsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
