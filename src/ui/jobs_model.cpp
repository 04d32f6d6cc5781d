#include "ui/jobs_model.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "author/size_text.h"
#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

// Work that counts so far counts bytes.
constexpr double LeastRateOfBytes = 20000;

QString RateWords(const Job& job) {
  const auto rate = job.UnitsPerSecond();
  if (job.IsOver() || !rate || *rate < LeastRateOfBytes) {
    return {};
  }
  return Shown(SizeText(static_cast<std::uint64_t>(*rate))) + QStringLiteral("/s");
}

QString TimeWords(const Job& job) {
  const auto left = job.TimeLeft();
  if (job.IsOver() || !left) {
    return {};
  }
  const auto seconds = left->count();
  return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString ShareWords(const Job& job) {
  const double share = job.Share();
  return job.IsOver() || share <= 0 ? QString()
                                    : QStringLiteral("%1 %").arg(static_cast<int>(std::floor(share * 100)));
}

QString CellText(const Job& job, int column) {
  switch (column) {
    case JobsModel::Title:
      return Shown(job.Title());
    case JobsModel::Stage:
      return job.IsOver() ? QString() : Shown(job.Stage());
    case JobsModel::Share:
      return ShareWords(job);
    case JobsModel::Rate:
      return RateWords(job);
    case JobsModel::TimeLeft:
      return TimeWords(job);
    default:
      return JobWords(job);
  }
}

}  // namespace

QString JobWords(const Job& job) {
  if (!job.Words().empty()) {
    return Shown(job.Words());
  }
  switch (job.Now()) {
    case Job::State::Running:
      return JobsModel::tr("Running");
    case Job::State::Stopping:
      return JobsModel::tr("Stopping");
    case Job::State::Done:
      return JobsModel::tr("Done");
    case Job::State::Failed:
      return JobsModel::tr("Failed");
    case Job::State::Stopped:
      return JobsModel::tr("Stopped");
  }
  return {};
}

JobsModel::JobsModel(Jobs& jobs, QObject* parent) : QAbstractTableModel(parent) {
  for (const auto& job : jobs.All()) {
    Add(job.get());
  }
  connect(&jobs, &Jobs::Began, this, &JobsModel::Add);
}

void JobsModel::Add(Job* job) {
  const int row = static_cast<int>(rows_.size());
  beginInsertRows({}, row, row);
  rows_.push_back(job);
  endInsertRows();
  connect(job, &Job::Moved, this,
          [this, row] { emit dataChanged(index(row, 0), index(row, ColumnCount - 1)); });
}

Job* JobsModel::JobAt(int row) const {
  return row >= 0 && static_cast<std::size_t>(row) < rows_.size() ? rows_[static_cast<std::size_t>(row)]
                                                                  : nullptr;
}

int JobsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int JobsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant JobsModel::data(const QModelIndex& index, int role) const {
  const Job* const job = JobAt(index.row());
  if (job == nullptr) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
      return CellText(*job, index.column());
    case Qt::AccessibleTextRole: {
      QStringList facts;
      for (int column = index.column(); column < (index.column() == 0 ? ColumnCount : index.column() + 1);
           ++column) {
        facts << CellText(*job, column);
      }
      facts.removeAll(QString());
      return facts.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole:
      return index.column() == Result ? PlainToolTip(JobWords(*job)) : QVariant();
    case ShareRole:
      return job->IsOver() ? 1.0 : job->Share();
    default:
      return {};
  }
}

QVariant JobsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const std::array<QString, ColumnCount> titles{tr("Job"),  tr("Stage"),     tr("Share"),
                                                tr("Rate"), tr("Time left"), tr("Result")};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount) {
    return {};
  }
  return titles.at(static_cast<std::size_t>(section));
}

}  // namespace quorvelant
