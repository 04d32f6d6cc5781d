// Disc size: what the disc needs, against the media it may go on.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

// A bar for the status line, with the accessible value interface.
class SizeGauge : public QWidget {
  Q_OBJECT
 public:
  explicit SizeGauge(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
