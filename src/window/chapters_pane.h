// Chapters: the scenes of the shown track.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class ChaptersPane : public QWidget {
  Q_OBJECT
 public:
  explicit ChaptersPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
