// Problems: the findings on the project, live.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class ProblemsPane : public QWidget {
  Q_OBJECT
 public:
  explicit ProblemsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
