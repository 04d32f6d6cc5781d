// Tables whose cells are edited in place.
#pragma once

#include <QStringList>
#include <QTableView>

namespace quorvelant {

// Rows are chosen whole; Enter and F2 edit the cell, Del removes the row where the table takes it. While it
// is empty it says what belongs there.
class CellTable : public QTableView {
  Q_OBJECT
 public:
  explicit CellTable(const QString& name, QWidget* parent = nullptr);

  void SetEmptyWords(const QString& words);
  void TakeRemove() { takesRemove_ = true; }
  // Left and Right step through something else than the columns; Tab goes through those then, and on from the
  // last.
  void TakeSteps() { takesSteps_ = true; }
  // As wide as these texts, one a column; an empty one keeps what it has, and the column `widest` takes what
  // is left.
  void SetWidths(const QStringList& samples, int widest);
  [[nodiscard]] int CurrentRow() const { return currentIndex().row(); }  // -1 for none
  // Makes the row current and shows it; the column stays.
  void GoToRow(int row);

 signals:
  void RemoveWanted();
  void StepWanted(bool forwards);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString emptyWords_;
  bool takesRemove_ = false;
  bool takesSteps_ = false;
};

}  // namespace quorvelant
