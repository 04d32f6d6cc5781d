#include "window/simulator_pane.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

SimulatorPane::SimulatorPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      player_(parts.Player),
      steps_(new QListWidget),
      registers_(new QTableWidget),
      goThere_(new QPushButton(tr("Go There"))),
      lists_(new QSplitter(Qt::Vertical)) {
  steps_->setAccessibleName(tr("What the player did"));
  steps_->setUniformItemSizes(true);
  goThere_->setToolTip(tr("Show the command or the cell in the project (Enter in the list)"));
  goThere_->setEnabled(false);
  BuildRegisters();
  auto* const upper = new QWidget;
  auto* const rows = new QVBoxLayout(upper);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(steps_, 1);
  auto* const line = new QHBoxLayout;
  line->addStretch(1);
  line->addWidget(goThere_);
  rows->addLayout(line);
  lists_->addWidget(upper);
  lists_->addWidget(registers_);
  lists_->setStretchFactor(0, 3);
  lists_->setStretchFactor(1, 2);
  lists_->setChildrenCollapsible(false);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lists_);
  connect(&player_, &Simulation::StateChanged, this, &SimulatorPane::Follow);
  connect(steps_, &QListWidget::itemActivated, this, &SimulatorPane::GoTo);
  connect(goThere_, &QPushButton::clicked, this, [this] { GoTo(steps_->currentItem()); });
  connect(steps_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* now) {
    goThere_->setEnabled(now != nullptr && !now->data(Qt::UserRole).toString().isEmpty());
  });
  Follow();
}

// Below a picture there is more room aside than below.
void SimulatorPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  lists_->setOrientation(width() > 2 * height() ? Qt::Horizontal : Qt::Vertical);
}

void SimulatorPane::BuildRegisters() {
  registers_->setAccessibleName(tr("Registers"));
  registers_->setColumnCount(2);
  registers_->setHorizontalHeaderLabels({tr("Register"), tr("Value")});
  registers_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  registers_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  registers_->verticalHeader()->hide();
  registers_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 4 / 3);
  registers_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  registers_->setSelectionBehavior(QAbstractItemView::SelectRows);
  registers_->setTabKeyNavigation(false);
  const auto all = RegistersInWords({});
  registers_->setRowCount(static_cast<int>(all.size()));
  for (int row = 0; row < registers_->rowCount(); ++row) {
    registers_->setItem(row, 0, new QTableWidgetItem(all[static_cast<std::size_t>(row)].Name));
    registers_->item(row, 0)->setToolTip(registers_->item(row, 0)->text());
    registers_->setItem(row, 1, new QTableWidgetItem);
  }
}

void SimulatorPane::Follow() {
  setEnabled(player_.IsOn());
  ShowRegisters();
  ShowSteps();
}

void SimulatorPane::ShowRegisters() {
  const auto all = RegistersInWords(player_.State().Registers);
  for (int row = 0; row < registers_->rowCount(); ++row) {
    const QString value = player_.IsOn() ? all[static_cast<std::size_t>(row)].Value : QString();
    QTableWidgetItem* const cell = registers_->item(row, 1);
    QFont font = registers_->font();
    font.setBold(!cell->text().isEmpty() && cell->text() != value);  // what has just changed
    cell->setFont(font);
    cell->setText(value);
    cell->setToolTip(font.bold() ? tr("Has just changed") : QString());
  }
}

void SimulatorPane::ShowSteps() {
  const SimulationLog& log = player_.Log();
  if (log.First() > shown_) {
    steps_->clear();
    shown_ = log.First();
  }
  while (std::cmp_greater(steps_->count(), SimulationLog::Most)) {
    delete steps_->takeItem(0);
  }
  for (; shown_ < log.End(); ++shown_) {
    const SimulatedStep& step = log.At(shown_);
    const QString place = Shown(step.Place);
    auto* const item =
        new QListWidgetItem(step.IsPress ? step.Words : QStringLiteral("    ") + step.Words, steps_);
    item->setData(Qt::UserRole, place);
    item->setToolTip(
        PlainToolTip(place.isEmpty() ? step.Words : QStringLiteral("%1\n%2").arg(step.Words, place)));
    QFont font = steps_->font();
    font.setBold(step.IsPress);
    item->setFont(font);
    if (step.IsFault) {
      item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    }
  }
  steps_->scrollToBottom();
}

void SimulatorPane::GoTo(const QListWidgetItem* item) {
  if (item != nullptr && !item->data(Qt::UserRole).toString().isEmpty()) {
    parts_.Chosen.GoTo(item->data(Qt::UserRole).toString().toStdString());
  }
}

}  // namespace quorvelant
