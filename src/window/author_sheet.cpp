#include "window/author_sheet.h"

#include <fmt/format.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStandardPaths>
#include <utility>

#include "author/output_folder.h"
#include "author/size_text.h"
#include "base/random.h"
#include "desk/author_options.h"
#include "desk/verdict.h"
#include "edit/preflight.h"
#include "edit/structure.h"
#include "ui/author_work.h"
#include "ui/shown_text.h"
#include "window/messages.h"

namespace quorvelant {

namespace {

// The project's own folder, or one that goes by the project's name.
QString ProposedFolder(const WindowParts& parts) {
  const Project& project = parts.Doc.Work();
  if (!project.DestinationFolder.empty()) {
    return Shown(SystemPath(project.DestinationFolder));
  }
  const std::string& file = parts.Doc.Session().File();
  const QFileInfo script(Shown(SystemPath(file)));
  const QString base = file.empty() ? QStandardPaths::writableLocation(QStandardPaths::MoviesLocation) +
                                          QStringLiteral("/Disc")
                                    : script.absolutePath() + QLatin1Char('/') + script.completeBaseName();
  return base + QStringLiteral("/VIDEO_TS");
}

bool HoldsDisc(const std::string& folder) {
  return QFileInfo::exists(Shown(folder) + QStringLiteral("/VIDEO_TS.IFO"));
}

}  // namespace

AuthorSheet::AuthorSheet(WindowParts& parts, const DiscMedium& medium, QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      health_(ProjectHealth::Of(parts.Doc)),
      medium_(medium),
      folder_(new QLineEdit(ProposedFolder(parts))),
      size_(new QLabel),
      findings_(new QLabel),
      rules_(new QComboBox),
      strict_(new QCheckBox(tr("Make no disc when there are warnings"))) {
  setWindowTitle(tr("Author"));
  auto* const browse = new QPushButton(tr("Browse…"));
  browse->setAutoDefault(false);
  auto* const folderRow = new QHBoxLayout;
  folderRow->addWidget(folder_, 1);
  folderRow->addWidget(browse);
  folder_->setAccessibleName(tr("Folder"));
  folder_->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('m')) * 36);
  folder_->setToolTip(tr("The folder that becomes the disc's VIDEO_TS"));
  rules_->addItem(tr("What players expect"));
  rules_->addItem(tr("Every traditional number"));
  rules_->setAccessibleName(tr("Rules"));
  size_->setWordWrap(true);
  findings_->setWordWrap(true);
  auto* const form = new QFormLayout;
  form->addRow(tr("Folder"), folderRow);
  form->addRow(tr("Size"), size_);
  form->addRow(tr("Findings"), findings_);
  form->addRow(tr("Rules"), rules_);
  form->addRow(QString(), strict_);
  auto* const buttons = new QDialogButtonBox;
  QPushButton* const make = buttons->addButton(tr("Author"), QDialogButtonBox::AcceptRole);
  make->setDefault(true);
  buttons->addButton(QDialogButtonBox::Cancel)->setAutoDefault(false);
  auto* const column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(browse, &QPushButton::clicked, this, &AuthorSheet::Browse);
  connect(folder_, &QLineEdit::textChanged, this, [this, make](const QString& text) {
    make->setEnabled(!text.trimmed().isEmpty());
    ShowHealth();
  });
  connect(&health_, &ProjectHealth::FoundChanged, this, &AuthorSheet::ShowHealth);
  connect(&health_, &ProjectHealth::NeedsChanged, this, &AuthorSheet::ShowHealth);
  ShowHealth();
  make->setFocus();
}

std::string AuthorSheet::Folder() const {
  return QDir::cleanPath(folder_->text().trimmed()).toStdString();
}

const Rules& AuthorSheet::RulesUsed() const {
  return rules_->currentIndex() == 1 ? Rules::Classic : Rules::Players;
}

void AuthorSheet::Browse() {
  const auto folder = parts_.Answers.FolderToUse("Folder of the disc", Folder());
  if (!folder) {
    return;
  }
  QString path = Shown(*folder);
  const bool isOwn = path.endsWith(QStringLiteral("/VIDEO_TS")) || QDir(path).isEmpty();
  folder_->setText(isOwn ? path : path + QStringLiteral("/VIDEO_TS"));
}

void AuthorSheet::ShowHealth() {
  const DiscNeeds& needs = health_.Needs();
  QString size =
      Shown(fmt::format("{} of {} ({})", SizeText(needs.Bytes), SizeText(medium_.Bytes), medium_.Name));
  if (const auto free = FreeBytes(Folder())) {
    size += tr(", %1 free in the folder").arg(Shown(SizeText(*free)));
  }
  if (const std::string drop = WhatToDrop(needs, medium_.Bytes); !drop.empty()) {
    size += QLatin1Char('\n') + Shown(drop);
  }
  size_->setText(size);
  findings_->setText(health_.IsWhole() ? Shown(VerdictWords(VerdictOn(health_.Found())))
                                       : tr("Still looking"));
}

AuthorAction::AuthorAction(WindowParts& parts, ProjectFiles& files, std::function<const DiscMedium&()> medium,
                           QWidget& window)
    : QObject(&window), parts_(parts), medium_(std::move(medium)), window_(window) {
  // Of a project that is being read or made, not of the one before.
  parts_.Commands.Handle(ActionId::Author, [this, &files] { files.WhenSettled([this] { Ask(); }); });
}

void AuthorAction::Ask() {
  auto* const sheet = new AuthorSheet(parts_, medium_(), &window_);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  connect(sheet, &QDialog::accepted, this, [this, sheet] { Make(*sheet); });
  sheet->open();
}

void AuthorAction::Make(const AuthorSheet& sheet) {
  Document& document = parts_.Doc;
  const std::string folder = sheet.Folder();
  // A folder that was only proposed is none that the project must keep.
  if (folder != ProposedFolder(parts_).toStdString()) {
    document.Do([&folder](EditSession& session, Consent) { return SetDestination(session, folder); });
  }
  if (!MayAuthor(document.Session(), folder, document.Speaks())) {
    return;
  }
  AuthorOrder order = OrderOf(parts_.Options, sheet.RulesUsed());
  order.Folder = folder;
  order.Strict = sheet.IsStrict();
  order.LogFile = parts_.LogPath;
  order.Pictures = &parts_.Pictures;
  if (HoldsDisc(folder)) {
    const Message question = MessageOf(message::AskReplaceDisc, folder, folder);
    order.Force = parts_.Answers.Ask(question.Title, question.Text, "Replace", "Keep");
    if (!order.Force) {
      return;
    }
  }
  QDir().mkpath(QFileInfo(Shown(folder)).path());
  const CommandCheck commands = document.Session().Commands();
  parts_.Work.Start("Author " + folder,
                    AuthorWork(std::make_shared<const Project>(document.Work()), commands, std::move(order)),
                    [&document](const Job& job) { document.Speaks().Status(job.Words()); });
  emit Began();
}

}  // namespace quorvelant
