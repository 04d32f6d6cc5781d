// Log: everything that was told.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class LogPane : public QWidget {
  Q_OBJECT
 public:
  explicit LogPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
