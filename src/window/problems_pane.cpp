#include "window/problems_pane.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "desk/verdict.h"
#include "ui/place_words.h"
#include "ui/shown_text.h"
#include "window/message_table.h"
#include "window/problem_steps.h"
#include "window/shown_row.h"

namespace quorvelant {

ProblemsPane::ProblemsPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      health_(ProjectHealth::Of(parts.Doc)),
      list_(new MessageList(this)),
      empty_(new QLabel),
      table_(MakeMessageTable(list_, tr("Problems"))),
      whole_(new ShortLabel),
      go_(new QPushButton(tr("Go There"))),
      mend_(new QPushButton) {
  list_->NamePlaces([this](const std::string& place) { return PlaceWords(parts_.Doc.Work(), place); });
  KeepChosenRowShown(*table_);
  mend_->setAccessibleName(tr("Mend"));
  auto* const row = new QHBoxLayout;
  row->addWidget(whole_, 1);
  row->addWidget(go_, 0, Qt::AlignTop);
  row->addWidget(mend_, 0, Qt::AlignTop);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(empty_);
  column->addWidget(table_, 1);
  column->addLayout(row);
  setFocusProxy(table_);
  connect(&health_, &ProjectHealth::FoundChanged, this, &ProblemsPane::ShowFound);
  connect(&health_, &ProjectHealth::BecameWhole, this, [this] {
    if (std::exchange(isCheckAsked_, false)) {
      parts_.Doc.Speaks().Status(VerdictWords(VerdictOn(health_.Found())));
    }
  });
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ProblemsPane::ShowChosen);
  connect(table_, &QTableView::activated, this, &ProblemsPane::GoThere);
  connect(go_, &QPushButton::clicked, this, &ProblemsPane::GoThere);
  connect(mend_, &QPushButton::clicked, this, &ProblemsPane::Mend);
  HandleCheck();
  ShowFound();
}

void ProblemsPane::HandleCheck() {
  parts_.Commands.Handle(ActionId::Check, [this] {
    if (health_.IsBlank()) {
      parts_.Doc.Speaks().Status("Nothing is open yet");
      emit Asked();
      return;
    }
    isCheckAsked_ = true;
    parts_.Doc.Speaks().Status("Checking");
    health_.LookAgain();
    emit Asked();
  });
}

void ProblemsPane::ShowFound() {
  const Findings& found = health_.Found();
  list_->Replace(found);
  if (!table_->currentIndex().isValid() && list_->rowCount() > 0) {
    table_->setCurrentIndex(list_->index(0, 0));
  }
  empty_->setText(EmptyWords());
  empty_->setVisible(found.empty());
  table_->setVisible(!found.empty());
  const std::size_t errors = CountOf(found, Severity::Error);
  const std::size_t warnings = CountOf(found, Severity::Warning);
  QString words = tr("Problems");
  words += errors > 0 ? QStringLiteral(" %1 ✖").arg(errors) : QString();
  words += warnings > 0 ? QStringLiteral(" %1 ⚠").arg(warnings) : QString();
  emit TabWords(words);
  ShowChosen();
}

QString ProblemsPane::EmptyWords() const {
  if (health_.IsBlank()) {
    return tr("Nothing is open yet. What hinders a good disc shows here.");
  }
  return health_.HasLooked() ? tr("Nothing was found that hinders a good disc.") : tr("Still looking");
}

const Message* ProblemsPane::Chosen() const {
  return list_->At(table_->currentIndex().row());
}

void ProblemsPane::ShowChosen() {
  const Message* const finding = Chosen();
  whole_->SetWords(finding == nullptr ? QString() : Shown(finding->Text));
  whole_->setVisible(finding != nullptr);
  go_->setVisible(finding != nullptr);
  go_->setEnabled(finding != nullptr && ParsePlace(parts_.Doc.Work(), finding->Place).has_value());
  const auto step = finding == nullptr ? std::nullopt : StepFor(*finding, parts_);
  mend_->setVisible(step.has_value());
  if (step) {
    mend_->setText(step->Verb);
    mend_->setAccessibleName(step->Verb);
  }
}

void ProblemsPane::GoThere() {
  const Message* const finding = Chosen();
  if (finding != nullptr && !parts_.Chosen.GoTo(finding->Place)) {
    parts_.Doc.Speaks().Status("This is of no single place of the project");
  }
}

void ProblemsPane::Mend() {
  const Message* const finding = Chosen();
  if (const auto step = finding == nullptr ? std::nullopt : StepFor(*finding, parts_)) {
    step->Run();
  }
}

}  // namespace quorvelant
