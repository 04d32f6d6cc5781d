// Jobs as a table.
#pragma once

#include <QAbstractTableModel>

#include "ui/jobs.h"

namespace quorvelant {

// One row a job, in the order in which they began. The share of a stage is also there as a number from 0 to
// 1, under `ShareRole`; nothing while the work tells none.
class JobsModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column : std::uint8_t { Title, Stage, Share, Rate, TimeLeft, Result, ColumnCount };
  static constexpr int ShareRole = Qt::UserRole + 1;

  explicit JobsModel(Jobs& jobs, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Job* JobAt(int row) const;

 private:
  void Add(Job* job);

  std::vector<Job*> rows_;
};

// "Running", "Stopped", or what the work came to.
[[nodiscard]] QString JobWords(const Job& job);

}  // namespace quorvelant
