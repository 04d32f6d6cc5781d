// The colours of a subtitle, and how they spread over its stream or track.
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "edit/overlays.h"
#include "window/window_parts.h"

class QComboBox;
class QSpinBox;

namespace quorvelant {

class ColorLine;

// Four of the bitmap's colours become the pixel codes of the disc; each shows in a colour of the palette,
// more or less opaque.
class SubtitleColors : public QWidget {
  Q_OBJECT
 public:
  explicit SubtitleColors(WindowParts& parts, QWidget* parent = nullptr);

  // The colours of this entry, as far as it is there.
  void Show(std::optional<SubtitlePlace> place);
  // Position and colours for a new subtitle: those that stand here.
  [[nodiscard]] SubPicturePlay Settings() const;

 private:
  void Spread(SpreadColor which, bool allStreams);
  [[nodiscard]] std::optional<FourColors> Written();

  WindowParts& parts_;
  std::optional<SubtitlePlace> place_;
  SubPicturePlay entry_;
  std::array<ColorLine*, 4> conversion_{};
  std::array<QSpinBox*, 4> index_{};
  std::array<QSpinBox*, 4> contrast_{};
};

}  // namespace quorvelant
