#include "window/simulator_pane.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "window/player_keys.h"

namespace quorvelant {

namespace {

constexpr double LongestWait = 8;  // seconds: films are stills here

}  // namespace

SimulatorPane::SimulatorPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      player_(parts.Player),
      words_(new QLabel),
      runs_(new QCheckBox(tr("Time runs"))),
      registers_(new QTableWidget),
      steps_(new QListWidget) {
  words_->setTextFormat(Qt::PlainText);
  words_->setWordWrap(true);
  words_->setAccessibleName(tr("Where the player is"));
  runs_->setToolTip(tr("Cells and stills end by themselves, after eight seconds at most"));
  steps_->setAccessibleName(tr("What the player did"));
  steps_->setToolTip(tr("A double click leads to the place in the project"));
  steps_->setUniformItemSizes(true);
  BuildRegisters();
  auto* const lists = new QSplitter(Qt::Vertical);
  lists->addWidget(steps_);
  lists->addWidget(registers_);
  lists->setStretchFactor(0, 1);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(words_);
  column->addLayout(BuildRemote());
  column->addWidget(runs_);
  column->addWidget(lists, 1);
  clock_.setSingleShot(true);
  connect(&clock_, &QTimer::timeout, this, [this] { player_.Press({NavKey::Wait, 0}); });
  connect(runs_, &QCheckBox::toggled, this, &SimulatorPane::Wait);
  connect(&player_, &Simulation::StateChanged, this, &SimulatorPane::Follow);
  connect(steps_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
    parts_.Chosen.GoTo(item->data(Qt::UserRole).toString().toStdString());
  });
  Follow();
}

QLayout* SimulatorPane::BuildRemote() {
  constexpr int InRow = 3;
  auto* const grid = new QGridLayout;
  int at = 0;
  for (const RemoteKey& key : RemoteKeys()) {
    auto* const button = new QPushButton(tr(key.Name));
    const QString pressed = QKeySequence(key.Pressed).toString(QKeySequence::NativeText);
    button->setToolTip(tr("%1 on the picture").arg(pressed));
    button->setAutoDefault(false);
    grid->addWidget(button, at / InRow, at % InRow);
    ++at;
    connect(button, &QPushButton::clicked, this, [this, which = key.Key] {
      if (which == NavKey::Audio || which == NavKey::Subpicture) {
        player_.PressNext(which);
      } else {
        player_.Press({which, 0});
      }
    });
  }
  return grid;
}

void SimulatorPane::BuildRegisters() {
  registers_->setAccessibleName(tr("Registers"));
  registers_->setColumnCount(2);
  registers_->setHorizontalHeaderLabels({tr("Register"), tr("Value")});
  registers_->horizontalHeader()->setStretchLastSection(true);
  registers_->verticalHeader()->hide();
  registers_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  registers_->setTabKeyNavigation(false);
  const auto all = player_.Registers();
  registers_->setRowCount(static_cast<int>(all.size()));
  for (int row = 0; row < registers_->rowCount(); ++row) {
    registers_->setItem(row, 0, new QTableWidgetItem(all[static_cast<std::size_t>(row)].Name));
    registers_->setItem(row, 1, new QTableWidgetItem);
  }
}

void SimulatorPane::Follow() {
  setEnabled(player_.IsOn());
  words_->setText(player_.IsOn() ? player_.Words() : tr("No disc is in. Simulate (F5) puts it in."));
  const auto all = player_.Registers();
  for (int row = 0; row < registers_->rowCount(); ++row) {
    const QString value = QString::number(all[static_cast<std::size_t>(row)].Value);
    QTableWidgetItem* const cell = registers_->item(row, 1);
    QFont font = registers_->font();
    font.setBold(!cell->text().isEmpty() && cell->text() != value);  // what has just changed
    cell->setFont(font);
    cell->setText(value);
  }
  ShowSteps();
  Wait();
}

void SimulatorPane::ShowSteps() {
  const auto& steps = player_.Steps();
  if (std::cmp_less(steps.size(), steps_->count())) {
    steps_->clear();
  }
  for (auto at = static_cast<std::size_t>(steps_->count()); at < steps.size(); ++at) {
    auto* const item = new QListWidgetItem(steps[at].Words, steps_);
    item->setData(Qt::UserRole, QString::fromStdString(steps[at].Place));
    item->setToolTip(item->data(Qt::UserRole).toString());
    if (steps[at].IsFault) {
      item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    }
  }
  steps_->scrollToBottom();
}

void SimulatorPane::Wait() {
  clock_.stop();
  const auto seconds = player_.Seconds();
  if (runs_->isChecked() && seconds) {
    clock_.start(static_cast<int>(std::clamp(*seconds, 0.04, LongestWait) * 1000));
  }
}

}  // namespace quorvelant
