// A line in which a colour is written.
#pragma once

#include <QLineEdit>

class QAction;

namespace quorvelant {

// "#rrggbb", with the colour beside it.
class ColorLine : public QLineEdit {
  Q_OBJECT
 public:
  explicit ColorLine(QWidget* parent = nullptr);

 private:
  void ShowColor();

  QAction* swatch_;
};

}  // namespace quorvelant
