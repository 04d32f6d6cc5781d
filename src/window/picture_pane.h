// Picture: the picture of the moment, with what lies over it, and the bar of time below.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class PicturePane : public QWidget {
  Q_OBJECT
 public:
  explicit PicturePane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
