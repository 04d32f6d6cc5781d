// Editors of cells that are one of a list.
#pragma once

#include <QStyledItemDelegate>

namespace quorvelant {

// A list to choose from where the model has choices for a cell, otherwise what the cell's value needs.
class ListChoiceDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit ListChoiceDelegate(int choicesRole, QObject* parent)
      : QStyledItemDelegate(parent), choicesRole_(choicesRole) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 private:
  int choicesRole_;
};

}  // namespace quorvelant
