#include "window/jobs_pane.h"

#include <QApplication>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QUrl>
#include <QVBoxLayout>

#include "ui/shown_text.h"
#include "window/disc_player.h"
#include "window/shown_row.h"

namespace quorvelant {

namespace {

// A bar behind the share of a stage.
class ShareDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QString words = index.data().toString();
    if (words.isEmpty()) {
      QStyledItemDelegate::paint(painter, option, index);
      return;
    }
    QStyleOptionProgressBar bar;
    bar.rect = option.rect.adjusted(1, 1, -1, -1);
    bar.palette = option.palette;
    bar.fontMetrics = option.fontMetrics;
    bar.state = option.state | QStyle::State_Horizontal;
    bar.maximum = 1000;
    bar.progress = static_cast<int>(index.data(JobsModel::ShareRole).toDouble() * 1000);
    bar.text = words;
    bar.textVisible = true;
    QApplication::style()->drawControl(QStyle::CE_ProgressBar, &bar, painter);
  }
};

}  // namespace

JobsPane::JobsPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      model_(new JobsModel(parts.Work, this)),
      empty_(new QLabel(tr("What takes long shows here while it is done. Author… (Ctrl+B) makes a disc."))),
      table_(new QTableView),
      verdict_(new ShortLabel),
      stop_(new QPushButton(tr("Stop"))),
      open_(new QPushButton(tr("Open Folder"))),
      play_(new QPushButton(tr("Play"))) {
  table_->setModel(model_);
  table_->setAccessibleName(tr("Jobs"));
  table_->setItemDelegateForColumn(JobsModel::Share, new ShareDelegate(table_));
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setTabKeyNavigation(false);
  table_->setShowGrid(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  table_->horizontalHeader()->setSectionResizeMode(JobsModel::Result, QHeaderView::Stretch);
  const int em = fontMetrics().horizontalAdvance(QLatin1Char('m'));
  table_->setColumnWidth(JobsModel::Title, 20 * em);
  table_->setColumnWidth(JobsModel::Stage, 18 * em);
  empty_->setWordWrap(true);
  KeepChosenRowShown(*table_);
  auto* const row = new QHBoxLayout;
  row->addWidget(verdict_, 1);
  for (QPushButton* button : {stop_, open_, play_}) {
    row->addWidget(button);
  }
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(empty_);
  column->addWidget(table_, 1);
  column->addLayout(row);
  setFocusProxy(table_);
  connect(stop_, &QPushButton::clicked, this, [this] {
    if (Job* const job = Chosen()) {
      job->Stop();
    }
  });
  connect(open_, &QPushButton::clicked, this, [this] {
    if (const Job* const job = Chosen()) {
      QDesktopServices::openUrl(QUrl::fromLocalFile(Shown(job->Folder())));
    }
  });
  connect(play_, &QPushButton::clicked, this, [this] {
    const Job* const job = Chosen();
    if (job != nullptr && !PlayDisc(Shown(job->Folder()))) {
      parts_.Doc.Speaks().Status(tr("No player of discs is installed").toStdString());
    }
  });
  connect(model_, &QAbstractItemModel::rowsInserted, this, &JobsPane::ChooseLast);
  connect(model_, &QAbstractItemModel::dataChanged, this, &JobsPane::ShowChosen);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &JobsPane::ShowChosen);
  ChooseLast();
}

Job* JobsPane::Chosen() const {
  return model_->JobAt(table_->currentIndex().row());
}

void JobsPane::ChooseLast() {
  if (model_->rowCount() > 0) {
    table_->setCurrentIndex(model_->index(model_->rowCount() - 1, 0));
  }
  ShowChosen();
}

void JobsPane::ShowChosen() {
  const Job* const job = Chosen();
  empty_->setVisible(job == nullptr);
  table_->setVisible(job != nullptr);
  const bool hasDisc = job != nullptr && !job->Folder().empty();
  verdict_->setVisible(job != nullptr && job->IsOver());
  verdict_->SetWords(job != nullptr && job->IsOver() ? JobWords(*job) : QString());
  stop_->setVisible(job != nullptr && !job->IsOver());
  stop_->setEnabled(job != nullptr && job->Now() == Job::State::Running);
  open_->setVisible(hasDisc);
  play_->setVisible(hasDisc);
}

}  // namespace quorvelant
