#include "window/list_choice_delegate.h"

#include <QComboBox>

namespace quorvelant {

QWidget* ListChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const {
  const QStringList choices = index.data(choicesRole_).toStringList();
  const QString name = index.model()->headerData(index.column(), Qt::Horizontal).toString();
  if (choices.isEmpty()) {
    QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
    editor->setAccessibleName(name);
    return editor;
  }
  auto* const list = new QComboBox(parent);
  list->addItems(choices);
  list->setAccessibleName(name);
  connect(list, &QComboBox::activated, this, [this, list] {
    auto* const delegate = const_cast<ListChoiceDelegate*>(this);
    emit delegate->commitData(list);
    emit delegate->closeEditor(list);
  });
  return list;
}

void ListChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* const list = qobject_cast<QComboBox*>(editor)) {
    list->setCurrentText(index.data(Qt::EditRole).toString());
  } else {
    QStyledItemDelegate::setEditorData(editor, index);
  }
}

void ListChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                      const QModelIndex& index) const {
  if (const auto* const list = qobject_cast<QComboBox*>(editor)) {
    model->setData(index, list->currentText());
  } else {
    QStyledItemDelegate::setModelData(editor, model, index);
  }
}

}  // namespace quorvelant
