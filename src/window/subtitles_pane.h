// Subtitles: the entries of the subtitle stream that is shown.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class SubtitlesPane : public QWidget {
  Q_OBJECT
 public:
  explicit SubtitlesPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
