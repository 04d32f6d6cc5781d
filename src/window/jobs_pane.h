// Jobs: long work: its stage, share, rate and verdict.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class JobsPane : public QWidget {
  Q_OBJECT
 public:
  explicit JobsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
