#include "window/name_delegate.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>

#include "ui/tree_model.h"

namespace quorvelant {

namespace {

QString KindOf(const QModelIndex& index) {
  return index.data(TreeModel::KindRole).toString() + QLatin1Char(' ');
}

}  // namespace

void NameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem whole = option;
  initStyleOption(&whole, index);
  const QString name = whole.text;
  whole.text.clear();
  const QStyle& style = whole.widget != nullptr ? *whole.widget->style() : *QApplication::style();
  style.drawControl(QStyle::CE_ItemViewItem, &whole, painter, whole.widget);

  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &whole, whole.widget) + 1;
  QRect place = whole.rect.adjusted(margin, 0, -margin, 0);
  const bool isChosen = whole.state.testFlag(QStyle::State_Selected);
  const auto group = whole.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
  QColor ink = whole.palette.color(group, isChosen ? QPalette::HighlightedText : QPalette::Text);
  const QFontMetrics metrics(whole.font);
  const QString kind = KindOf(index);

  painter->save();
  painter->setFont(whole.font);
  QColor dim = isChosen ? ink : whole.palette.color(group, QPalette::PlaceholderText);
  painter->setPen(dim);
  painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, kind);
  place.setLeft(place.left() + metrics.horizontalAdvance(kind));
  painter->setPen(ink);
  painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    metrics.elidedText(name, Qt::ElideRight, std::max(place.width(), 0)));
  painter->restore();
}

QSize NameDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.rwidth() += option.fontMetrics.horizontalAdvance(KindOf(index));
  return size;
}

QWidget* NameDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
  editor->setAccessibleName(tr("Name"));
  return editor;
}

void NameDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                const QModelIndex& index) const {
  const auto* const line = qobject_cast<QLineEdit*>(editor);
  if (line != nullptr && line->text() != index.data(Qt::EditRole).toString()) {
    emit Entered(index, line->text());
  }
}

}  // namespace quorvelant
