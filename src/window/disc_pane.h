// Disc: the structure of the disc.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class DiscPane : public QWidget {
  Q_OBJECT
 public:
  explicit DiscPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
