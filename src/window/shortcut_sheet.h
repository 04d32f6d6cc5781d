// All keys on one sheet.
#pragma once

#include <QDialog>

class QLineEdit;
class QTreeWidget;

namespace quorvelant {

// Made from the table of actions, menu by menu, so it tells what holds: each action with its keys and what it
// does. A line above narrows it.
class ShortcutSheet : public QDialog {
  Q_OBJECT
 public:
  explicit ShortcutSheet(QWidget* parent = nullptr);

 private:
  void Fill();
  void Narrow(const QString& words);

  QLineEdit* search_;
  QTreeWidget* rows_;
};

}  // namespace quorvelant
