// The commands of the project that lead nowhere.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "window/window_parts.h"

namespace quorvelant {

// Follows the project while it is open.
class ErrorListWindow : public QDialog {
  Q_OBJECT
 public:
  explicit ErrorListWindow(WindowParts& parts, QWidget* parent = nullptr);

 private:
  void Fill();
  void Save();

  WindowParts& parts_;
  QTableWidget* table_;
  QLabel* words_;
  QPushButton* save_;
};

}  // namespace quorvelant
