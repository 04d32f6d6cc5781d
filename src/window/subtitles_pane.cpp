#include "window/subtitles_pane.h"

namespace quorvelant {

SubtitlesPane::SubtitlesPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Subtitles"));
}

}  // namespace quorvelant
