// Media: the source material: tracks with their plays, streams and scenes.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class MediaPane : public QWidget {
  Q_OBJECT
 public:
  explicit MediaPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
