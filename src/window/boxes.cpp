#include "window/boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "ui/shown_text.h"

namespace quorvelant {

namespace {

// Titles of the core's questions are sometimes empty, and a box needs one.
QString TitleOf(std::string_view title) {
  return title.empty() ? QApplication::applicationDisplayName() : Shown(title);
}

// A box may come up over a dialog that asks.
QWidget* Over(QWidget& window) {
  QWidget* const active = QApplication::activeModalWidget();
  return active != nullptr ? active : &window;
}

// What no undo brings back is not done by a mere Enter.
bool DestroysWhatWas(std::string_view verb) {
  return verb == "Replace" || verb == "Overwrite" || verb == "Stop";
}

// As they are, whatever names stand in them, and wide enough for the title and its buttons.
void ShowWords(QInputDialog& dialog) {
  if (auto* const label = dialog.findChild<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
  }
  const QFontMetrics letters = dialog.fontMetrics();
  dialog.setMinimumWidth(letters.horizontalAdvance(dialog.windowTitle()) + 16 * letters.averageCharWidth());
}

QString FilterOf(const std::vector<FileFilter>& kinds) {
  QStringList filters;
  for (const FileFilter& kind : kinds) {
    QStringList patterns;
    for (const std::string& extension : kind.Extensions) {
      patterns << QStringLiteral("*.%1").arg(Shown(extension))
               << QStringLiteral("*.%1").arg(Shown(extension).toUpper());
    }
    filters << QStringLiteral("%1 (%2)").arg(
        Shown(kind.Name), patterns.isEmpty() ? QStringLiteral("*") : patterns.join(QLatin1Char(' ')));
  }
  return filters.join(QStringLiteral(";;"));
}

}  // namespace

bool Boxes::Ask(std::string_view title, std::string_view text, std::string_view yes, std::string_view no) {
  QMessageBox box(QMessageBox::Question, TitleOf(title), Shown(text), QMessageBox::NoButton, Over(window_));
  box.setTextFormat(Qt::PlainText);
  QPushButton* const agreed = box.addButton(Shown(yes), QMessageBox::AcceptRole);
  QPushButton* const refused = box.addButton(Shown(no), QMessageBox::RejectRole);
  box.setEscapeButton(refused);
  box.setDefaultButton(DestroysWhatWas(yes) ? refused : agreed);
  box.exec();
  return box.clickedButton() == agreed;
}

std::optional<bool> Boxes::AskOrStay(std::string_view title, std::string_view text, std::string_view yes,
                                     std::string_view no) {
  QMessageBox box(QMessageBox::Question, TitleOf(title), Shown(text), QMessageBox::Cancel, Over(window_));
  box.setTextFormat(Qt::PlainText);
  QPushButton* const agreed = box.addButton(Shown(yes), QMessageBox::AcceptRole);
  const QPushButton* const refused = box.addButton(Shown(no), QMessageBox::DestructiveRole);
  box.setDefaultButton(agreed);
  box.exec();
  if (box.clickedButton() != agreed && box.clickedButton() != refused) {
    return std::nullopt;
  }
  return box.clickedButton() == agreed;
}

std::optional<std::string> Boxes::AskText(std::string_view title, std::string_view text,
                                          std::string_view proposal) {
  QInputDialog dialog(Over(window_));
  dialog.setWindowTitle(TitleOf(title));
  dialog.setLabelText(Shown(text));
  dialog.setTextValue(Shown(proposal));
  ShowWords(dialog);
  return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue().toStdString()) : std::nullopt;
}

std::optional<std::size_t> Boxes::Choose(std::string_view title, std::string_view text,
                                         const std::vector<std::string>& choices) {
  QStringList items;
  for (const std::string& choice : choices) {
    items << Shown(choice);
  }
  QInputDialog dialog(Over(window_));
  dialog.setWindowTitle(TitleOf(title));
  dialog.setLabelText(Shown(text));
  dialog.setComboBoxItems(items);
  ShowWords(dialog);
  if (dialog.exec() != QDialog::Accepted) {
    return std::nullopt;
  }
  const QComboBox* const list = dialog.findChild<QComboBox*>();
  const int at = list != nullptr ? list->currentIndex() : static_cast<int>(items.indexOf(dialog.textValue()));
  return at < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(at));
}

std::vector<std::string> Boxes::FilesToOpen(std::string_view title, const std::vector<FileFilter>& kinds,
                                            bool several) {
  QFileDialog dialog(Over(window_), TitleOf(title), folder_, FilterOf(kinds));
  dialog.setFileMode(several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  std::vector<std::string> files;
  for (const QString& file : dialog.selectedFiles()) {
    files.push_back(file.toStdString());
  }
  folder_ = dialog.directory().absolutePath();
  return files;
}

std::optional<std::string> Boxes::FileToSave(std::string_view title, std::string_view proposal,
                                             const std::vector<FileFilter>& kinds) {
  QFileDialog dialog(Over(window_), TitleOf(title), folder_, FilterOf(kinds));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  if (!kinds.empty() && !kinds.front().Extensions.empty()) {
    dialog.setDefaultSuffix(Shown(kinds.front().Extensions.front()));
  }
  if (!proposal.empty()) {
    const QFileInfo file(Shown(proposal));
    if (file.isAbsolute()) {
      dialog.setDirectory(file.absolutePath());
    }
    dialog.selectFile(file.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return std::nullopt;
  }
  folder_ = dialog.directory().absolutePath();
  return dialog.selectedFiles().constFirst().toStdString();
}

std::optional<std::string> Boxes::FolderToUse(std::string_view title, std::string_view proposal) {
  QFileDialog dialog(Over(window_), TitleOf(title), proposal.empty() ? folder_ : Shown(proposal));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return std::nullopt;
  }
  return dialog.selectedFiles().constFirst().toStdString();
}

}  // namespace quorvelant
