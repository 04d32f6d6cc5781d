// The first column of a tree of the project.
#pragma once

#include <QStyledItemDelegate>

namespace quorvelant {

// Draws the kind of a row, dimmed, before its name. Its editor starts with the name alone and hands what was
// entered to a signal; the model is not written to.
class NameDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 signals:
  void Entered(const QModelIndex& index, const QString& name) const;
};

}  // namespace quorvelant
