// What the program is, its version and its licence.
#pragma once

#include <QDialog>

namespace quorvelant {

class AboutBox : public QDialog {
  Q_OBJECT
 public:
  explicit AboutBox(QWidget* parent = nullptr);

 signals:
  void ChangeLogWanted();
};

}  // namespace quorvelant
