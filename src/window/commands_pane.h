// Commands: the lists of the chosen PGC or cell.
#pragma once

#include <QWidget>
#include <string>

#include "ui/command_model.h"
#include "window/cell_editor.h"
#include "window/window_parts.h"

class QLabel;

namespace quorvelant {

class CellTable;

// Digits follow when the commands are next resolved, which is put off to the end of the present event.
class CommandsPane : public QWidget {
  Q_OBJECT
 public:
  explicit CommandsPane(WindowParts& parts, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Build();
  void HandleActions();
  void FollowKey();
  void GoTo(const GoToPlace& place);
  void TakeRows(bool isOther);
  void ResolveSoon();

  [[nodiscard]] const CommandRow* Current() const;
  [[nodiscard]] std::optional<CellRefusal> Commit(const QModelIndex& index, const QString& text);
  void Insert();
  void Move(int by);
  void RemoveRow();

  WindowParts& parts_;
  CommandModel model_;
  QLabel* title_ = nullptr;
  CellTable* table_ = nullptr;
  std::string owner_;  // key of the PGC or cell
  bool isDue_ = false;
};

}  // namespace quorvelant
