// Tables of what an element holds.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

namespace quorvelant {

// A table over a mirror of plain rows. It never writes and never looks into the project: who shows it hands
// it the rows of each new state, and what stayed at both ends of the list is left alone.
template <class Row>
class MirrorTable : public QAbstractTableModel {
 public:
  MirrorTable(QStringList headers, QObject* parent)
      : QAbstractTableModel(parent), headers_(std::move(headers)) {}

  [[nodiscard]] const std::vector<Row>& Rows() const { return rows_; }

  // The same table in a new state.
  void Take(std::vector<Row> rows) {
    const auto [oldHead, newHead] = std::ranges::mismatch(rows_, rows);
    const auto head = static_cast<std::size_t>(oldHead - rows_.begin());
    std::size_t tail = 0;
    while (tail < rows_.size() - head && tail < rows.size() - head &&
           rows_[rows_.size() - 1 - tail] == rows[rows.size() - 1 - tail]) {
      ++tail;
    }
    const std::size_t before = rows_.size() - head - tail;
    const std::size_t now = rows.size() - head - tail;
    const std::size_t same = std::min(before, now);
    const auto at = [head, same](auto& list) {
      return list.begin() + static_cast<std::ptrdiff_t>(head + same);
    };
    std::move(rows.begin() + static_cast<std::ptrdiff_t>(head), at(rows),
              rows_.begin() + static_cast<std::ptrdiff_t>(head));
    const int first = static_cast<int>(head + same);
    // Rows keep their numbers while they move.
    if (now > same) {
      const auto added = static_cast<std::ptrdiff_t>(now - same);
      beginInsertRows({}, first, first + static_cast<int>(added) - 1);
      rows_.insert(at(rows_), std::make_move_iterator(at(rows)), std::make_move_iterator(at(rows) + added));
      numbers_.insert(at(numbers_), static_cast<std::size_t>(added), 0);
      endInsertRows();
    } else if (before > same) {
      const auto gone = static_cast<std::ptrdiff_t>(before - same);
      beginRemoveRows({}, first, first + static_cast<int>(gone) - 1);
      rows_.erase(at(rows_), at(rows_) + gone);
      numbers_.erase(at(numbers_), at(numbers_) + gone);
      endRemoveRows();
    }
    if (now != before) {
      Renumber(first);
    }
    if (same > 0) {
      emit dataChanged(index(static_cast<int>(head), 0), index(first - 1, columnCount() - 1));
    }
  }

  // Another table.
  void Show(std::vector<Row> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    numbers_.resize(rows_.size());
    std::iota(numbers_.begin(), numbers_.end(), 1);
    endResetModel();
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(headers_.size());
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override {
    const bool isHeader = orientation == Qt::Horizontal && section >= 0 && section < headers_.size();
    return isHeader && role == Qt::DisplayRole ? QVariant(headers_[section]) : QVariant();
  }

 protected:
  // nullptr where the index is none of this table.
  [[nodiscard]] const Row* RowAt(const QModelIndex& index) const {
    const bool isHere = checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid);
    return isHere ? &rows_[static_cast<std::size_t>(index.row())] : nullptr;
  }

  // Of a row of this table, from 1.
  [[nodiscard]] int NumberOf(const QModelIndex& index) const {
    return numbers_[static_cast<std::size_t>(index.row())];
  }

 private:
  void Renumber(int first) {
    std::iota(numbers_.begin() + first, numbers_.end(), first + 1);
    if (first < rowCount()) {
      emit dataChanged(index(first, 0), index(rowCount() - 1, 0));
    }
  }

  QStringList headers_;
  std::vector<Row> rows_;
  std::vector<int> numbers_;
};

}  // namespace quorvelant
