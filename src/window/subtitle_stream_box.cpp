#include "window/subtitle_stream_box.h"

#include "model/walk.h"
#include "ui/shown_text.h"

namespace quorvelant {

SubtitleStreamBox::SubtitleStreamBox(QWidget* parent) : QComboBox(parent) {
  setAccessibleName(tr("Stream"));
  connect(this, &QComboBox::activated, this,
          [this](int at) { emit StreamChosen(static_cast<std::size_t>(itemData(at).toULongLong())); });
}

void SubtitleStreamBox::Show(const Track& track, std::size_t chosen) {
  clear();
  for (const auto& [at, stream] : LiveWithIndex(track.SubStreams)) {
    addItem(QStringLiteral("%1: %2, %3").arg(at + 1).arg(Shown(stream.Language), Shown(stream.DisplayMode)),
            QVariant::fromValue(static_cast<qulonglong>(at)));
    if (at == chosen) {
      setCurrentIndex(count() - 1);
    }
  }
}

}  // namespace quorvelant
