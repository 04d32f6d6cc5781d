#include "window/error_list_window.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QVBoxLayout>

#include "edit/error_list.h"
#include "ui/shown_text.h"

namespace quorvelant {

ErrorListWindow::ErrorListWindow(WindowParts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), table_(new QTableWidget), words_(new QLabel) {
  setWindowTitle(tr("Command Errors"));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(QSize(90, 24) * fontMetrics().height() * 2 / 3);
  const QStringList columns{tr("VTS"),     tr("Title/Language"), tr("PGC"), tr("CELL"),
                            tr("Command"), tr("To Action"),      tr("Type")};
  table_->setColumnCount(static_cast<int>(columns.size()));
  table_->setHorizontalHeaderLabels(columns);
  table_->setAccessibleName(windowTitle());
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setStretchLastSection(true);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Close);
  save_ = buttons->button(QDialogButtonBox::Save);
  connect(buttons, &QDialogButtonBox::accepted, this, &ErrorListWindow::Save);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(words_);
  rows->addWidget(table_);
  rows->addWidget(buttons);
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &ErrorListWindow::Fill);
  Fill();
}

void ErrorListWindow::Fill() {
  const std::vector<CommandError>& errors = parts_.Doc.Session().Commands().Errors;
  table_->setRowCount(static_cast<int>(errors.size()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    const CommandError& error = errors[static_cast<std::size_t>(row)];
    int column = 0;
    for (const std::string* text : {&error.VTS, &error.TitleOrLanguage, &error.PGC, &error.CELL,
                                    &error.Command, &error.To_Action, &error.Type}) {
      table_->setItem(row, column++, new QTableWidgetItem(Shown(*text)));
    }
  }
  table_->resizeColumnsToContents();
  words_->setText(errors.empty() ? tr("Every command of the project leads somewhere.")
                                 : tr("These commands lead to what is not there:"));
  save_->setEnabled(!errors.empty());
}

void ErrorListWindow::Save() {
  const auto path = parts_.Answers.FileToSave(windowTitle().toStdString(), "command errors.txt", {});
  if (path) {  // what goes wrong is told
    static_cast<void>(WriteErrorList(parts_.Doc.Session().Commands().Errors, *path, parts_.Doc.Speaks()));
  }
}

}  // namespace quorvelant
