// The palettes of the project.
#pragma once

#include <QButtonGroup>
#include <QWidget>
#include <string>

#include "edit/palettes.h"
#include "window/window_parts.h"

class QComboBox;

namespace quorvelant {

class ColorLine;

// Sixteen colours under a name: one is chosen, and written as "#rrggbb" or taken from a dialog.
class PaletteEditor : public QWidget {
  Q_OBJECT
 public:
  explicit PaletteEditor(WindowParts& parts, QWidget* parent = nullptr);

  void Show(const std::string& name);

 private:
  void Fill();
  void ShowColor();
  void SetColor(Color color);
  void AddPalette();
  [[nodiscard]] PaletteColors Colors() const;

  WindowParts& parts_;
  QComboBox* palettes_;
  QButtonGroup swatches_;
  ColorLine* color_;
};

}  // namespace quorvelant
