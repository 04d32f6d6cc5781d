#include "window/message_table.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>
#include <QStyledItemDelegate>

#include "window/icons.h"

namespace quorvelant {

namespace {

// The sign of the level beside its word.
class LevelDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto* const list = qobject_cast<const MessageList*>(index.model());
    const Message* const message = list == nullptr ? nullptr : list->At(index.row());
    if (message != nullptr) {
      constexpr std::array<std::string_view, 3> Signs{"note", "warning", "error"};
      option->features |= QStyleOptionViewItem::HasDecoration;
      option->icon = IconNamed(Signs.at(static_cast<std::size_t>(message->Level)));
    }
  }
};

void CopyRows(const QTableView& table) {
  QStringList lines;
  for (const QModelIndex& row : table.selectionModel()->selectedRows()) {
    QStringList cells;
    for (int column = 0; column < MessageList::ColumnCount; ++column) {
      cells << row.siblingAtColumn(column).data().toString();
    }
    lines << cells.join(QLatin1Char('\t'));
  }
  QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

}  // namespace

QTableView* MakeMessageTable(MessageList* list, const QString& name) {
  auto* const table = new QTableView;
  table->setModel(list);
  table->setAccessibleName(name);
  table->setItemDelegateForColumn(MessageList::Level, new LevelDelegate(table));
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setTabKeyNavigation(false);
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->verticalHeader()->hide();
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() * 3 / 2);
  QHeaderView* const header = table->horizontalHeader();
  const int em = table->fontMetrics().horizontalAdvance(QLatin1Char('m'));
  table->setColumnWidth(MessageList::Level, 9 * em);
  table->setColumnWidth(MessageList::Place, 16 * em);
  header->setStretchLastSection(false);
  header->setSectionResizeMode(MessageList::Text, QHeaderView::Stretch);
  auto* const copy = new QShortcut(QKeySequence::Copy, table, nullptr, nullptr, Qt::WidgetShortcut);
  QObject::connect(copy, &QShortcut::activated, table, [table] { CopyRows(*table); });
  return table;
}

}  // namespace quorvelant
