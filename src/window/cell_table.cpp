#include "window/cell_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace quorvelant {

CellTable::CellTable(const QString& name, QWidget* parent) : QTableView(parent) {
  setAccessibleName(name);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);  // Tab leaves the table
  setWordWrap(false);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void CellTable::SetEmptyWords(const QString& words) {
  emptyWords_ = words;
  setAccessibleDescription(words);
  viewport()->update();
}

void CellTable::SetWidths(const QStringList& samples, int widest) {
  for (int column = 0; column < samples.size(); ++column) {
    if (!samples[column].isEmpty()) {
      QFont bold = font();  // as a row can be that is marked
      bold.setBold(true);
      const int width = std::max(QFontMetrics(bold).horizontalAdvance(samples[column]),
                                 horizontalHeader()->sectionSizeHint(column));
      setColumnWidth(column, width + fontMetrics().averageCharWidth() * 2);
    }
  }
  horizontalHeader()->setSectionResizeMode(widest, QHeaderView::Stretch);
}

void CellTable::GoToRow(int row) {
  if (row >= 0 && row < model()->rowCount()) {
    setCurrentIndex(model()->index(row, std::max(currentIndex().column(), 0)));
  }
}

bool CellTable::event(QEvent* event) {
  // Keys of the window's menus that mean the cell or the row here.
  if (event->type() == QEvent::ShortcutOverride) {
    const int key = static_cast<QKeyEvent*>(event)->key();  // NOLINT: the event's type says so
    const bool isMine = key == Qt::Key_F2 || (key == Qt::Key_Delete && takesRemove_);
    if (isMine && currentIndex().isValid()) {
      event->accept();
      return true;
    }
  }
  return QTableView::event(event);
}

void CellTable::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter && state() == EditingState) {
    return;  // the editor has let it through
  }
  if (isEnter && (model()->flags(currentIndex()) & Qt::ItemIsEditable) != 0) {
    edit(currentIndex());
    return;
  }
  if (event->key() == Qt::Key_Delete && takesRemove_ && currentIndex().isValid()) {
    emit RemoveWanted();
    return;
  }
  const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const bool isStep = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
  if (takesSteps_ && isPlain && isStep && currentIndex().isValid()) {
    emit StepWanted(event->key() == Qt::Key_Right);
    return;
  }
  QTableView::keyPressEvent(event);
}

bool CellTable::focusNextPrevChild(bool next) {
  if (takesSteps_ && currentIndex().isValid() && state() != EditingState) {
    const int way = next ? 1 : -1;
    int column = currentIndex().column() + way;
    while (column >= 0 && column < model()->columnCount() && isColumnHidden(column)) {
      column += way;
    }
    if (column >= 0 && column < model()->columnCount()) {
      setCurrentIndex(currentIndex().siblingAtColumn(column));
      return true;
    }
  }
  return QTableView::focusNextPrevChild(next);
}

void CellTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model() != nullptr && model()->rowCount() == 0) {
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    const int edge = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(edge, edge, -edge, -edge),
                     static_cast<int>(Qt::AlignHCenter) | static_cast<int>(Qt::AlignTop) |
                         static_cast<int>(Qt::TextWordWrap),
                     emptyWords_);
  }
}

}  // namespace quorvelant
