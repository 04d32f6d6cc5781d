// How cells of a table are edited.
#pragma once

#include <QStringList>
#include <QStyledItemDelegate>
#include <functional>
#include <optional>

#include "base/message.h"
#include "edit/outcome.h"

class QLineEdit;

namespace quorvelant {

// Why a text was not taken, and where in it the trouble lies.
struct CellRefusal {
  Message Words;
  int From = 0;
  int Length = 0;  // 0 for the whole
};
// Nothing where the operation was done.
using CommitCell = std::function<std::optional<CellRefusal>(const QModelIndex& index, const QString& text)>;

[[nodiscard]] std::optional<CellRefusal> RefusalOf(const Outcome& outcome);

// A text that is refused stays in its editor with the reason under its place; the project keeps what it had.
// Left by a click elsewhere, the reason is told and the old text stands again.
class CellEditor : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using Choices = std::function<QStringList(const QModelIndex& index)>;

  CellEditor(CommitCell commit, std::function<void(const Message&)> tell, QObject* parent);

  // Cells that have some are edited by choosing.
  void SetChoices(Choices choices) { choices_ = std::move(choices); }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  [[nodiscard]] virtual QLineEdit* MakeLine(QWidget* parent, const QModelIndex& index) const;
  // Commits and closes the editor, or shows why not.
  void Finish(QLineEdit& line, EndEditHint hint = NoHint);

 private:
  [[nodiscard]] bool Commit(QWidget& editor);

  CommitCell commit_;
  std::function<void(const Message&)> tell_;
  Choices choices_;
};

}  // namespace quorvelant
