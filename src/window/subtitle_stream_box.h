// The choice of a subtitle stream of a track.
#pragma once

#include <QComboBox>
#include <cstddef>

#include "model/tracks.h"

namespace quorvelant {

// Each live stream with its number, language and display mode.
class SubtitleStreamBox : public QComboBox {
  Q_OBJECT
 public:
  explicit SubtitleStreamBox(QWidget* parent = nullptr);

  // The streams of the track, with this one on top.
  void Show(const Track& track, std::size_t chosen);

 signals:
  void StreamChosen(std::size_t stream);  // by the user; index in `SubStreams`
};

}  // namespace quorvelant
