#include "window/author_sheet.h"

#include <fmt/format.h>

#include <QAccessible>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <algorithm>
#include <filesystem>
#include <utility>

#include "author/messages.h"
#include "author/output_folder.h"
#include "author/size_text.h"
#include "base/passing_ui.h"
#include "desk/author_options.h"
#include "desk/verdict.h"
#include "edit/preflight.h"
#include "ui/author_work.h"
#include "ui/shown_text.h"
#include "window/messages.h"

namespace quorvelant {

namespace {

bool HoldsDisc(const std::string& folder) {
  return QFileInfo::exists(Shown(folder) + QStringLiteral("/VIDEO_TS.IFO"));
}

// Keeps what is told; questions are asked.
class RefusalUi : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override { Told.push_back(message); }

  std::vector<Message> Told;
};

Message WhyNotThere(const std::string& folder, const std::string& reason) {
  return MessageOf(message::DiscFolderRefused, folder, reason, folder);
}

// Why no disc can be made in that folder, whatever the disc.
std::optional<Message> WhyNotIn(const std::string& folder, UserInterface& ui) {
  RefusalUi hears(ui);
  if (!OutputFolder::Judge(folder, true, hears)) {
    return WhyNotThere(folder, hears.Told.empty() ? std::string() : hears.Told.front().Text);
  }
  const std::filesystem::path parent = std::filesystem::path(folder).parent_path();
  std::error_code failed;
  std::filesystem::create_directories(parent, failed);
  if (!failed && !QFileInfo(Shown(parent.string())).isWritable()) {
    failed = std::make_error_code(std::errc::permission_denied);
  }
  if (failed) {
    return WhyNotThere(folder, MessageOf(message::FolderNotMade, folder, failed.message()).Text);
  }
  return std::nullopt;
}

}  // namespace

AuthorSheet::AuthorSheet(WindowParts& parts, const DiscFolders& folders, const DiscMedium& medium,
                         QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      folders_(folders),
      health_(ProjectHealth::Of(parts.Doc)),
      medium_(medium),
      folder_(new QLineEdit(folders.Proposed())),
      size_(new QLabel),
      findings_(new QLabel),
      rules_(new QComboBox),
      strict_(new QCheckBox(tr("Make no disc when there are warnings"))),
      holdSign_(new QLabel),
      hold_(new QLabel) {
  setWindowTitle(tr("Author"));
  auto* const column = new QVBoxLayout(this);
  column->addLayout(MakeForm());
  column->addWidget(MakeHold());
  column->addWidget(MakeButtons());
  make_->setDefault(true);  // of the dialog, whatever has the keys: only now it is in it
  const auto isOther = [this] {
    refusal_.clear();
    ShowHealth();
  };
  connect(folder_, &QLineEdit::textChanged, this, isOther);
  connect(folder_, &QLineEdit::editingFinished, this, [this] { folder_->setText(Shown(Folder())); });
  connect(strict_, &QCheckBox::toggled, this, isOther);
  connect(rules_, &QComboBox::currentIndexChanged, this, [this, isOther] {
    LookAtClassic();
    isOther();
  });
  connect(&health_, &ProjectHealth::FoundChanged, this, [this] {
    LookAtClassic();
    ShowHealth();
  });
  connect(&health_, &ProjectHealth::NeedsChanged, this, &AuthorSheet::ShowHealth);
  ShowHealth();
  (make_->isEnabled() ? static_cast<QWidget*>(make_) : folder_)->setFocus();
}

QFormLayout* AuthorSheet::MakeForm() {
  auto* const browse = new QPushButton(tr("Browse…"));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &AuthorSheet::Browse);
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
  return form;
}

QWidget* AuthorSheet::MakeHold() {
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  holdSign_->setPixmap(
      style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size, size));
  QFont bold = font();
  bold.setBold(true);
  hold_->setFont(bold);
  hold_->setTextFormat(Qt::PlainText);
  hold_->setWordWrap(true);
  hold_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* const holder = new QWidget;
  auto* const row = new QHBoxLayout(holder);
  row->setContentsMargins({});
  row->addWidget(holdSign_, 0, Qt::AlignTop);
  row->addWidget(hold_, 1);
  return holder;
}

QWidget* AuthorSheet::MakeButtons() {
  auto* const buttons = new QDialogButtonBox;
  make_ = buttons->addButton(tr("Author"), QDialogButtonBox::AcceptRole);
  buttons->addButton(QDialogButtonBox::Cancel)->setAutoDefault(false);
  connect(buttons, &QDialogButtonBox::accepted, this, &AuthorSheet::Wanted);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

std::string AuthorSheet::Folder() const {
  return folders_.Absolute(folder_->text()).toStdString();
}

const Rules& AuthorSheet::RulesUsed() const {
  return rules_->currentIndex() == 1 ? Rules::Classic : Rules::Players;
}

void AuthorSheet::Refuse(const QString& words) {
  refusal_ = words;
  ShowHealth();
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

// Findings are kept for the rules of players alone.
void AuthorSheet::LookAtClassic() {
  classic_.reset();
  if (rules_->currentIndex() != 1) {
    return;
  }
  const auto project = std::make_shared<const Project>(parts_.Doc.Work());
  const CommandCheck commands = parts_.Doc.Session().Commands();
  classicLook_.Start(
      [project, commands](UserInterface& ui) { return AllFindings(*project, commands, Rules::Classic, ui); },
      [this](Findings found) {
        classic_ = std::move(found);
        ShowHealth();
      });
}

const Findings* AuthorSheet::Found() const {
  if (rules_->currentIndex() == 1) {
    return classic_ ? &*classic_ : nullptr;
  }
  return health_.IsOfPresent() ? &health_.Found() : nullptr;
}

QString AuthorSheet::WhatHoldsBack() const {
  if (health_.IsBlank()) {
    return tr("Nothing is in the project yet: drop films onto the window first");
  }
  if (folder_->text().trimmed().isEmpty()) {
    return tr("Name the folder that is to become the disc");
  }
  if (const Findings* const found = Found()) {
    const auto first = [found](Severity level) { return std::ranges::find(*found, level, &Message::Level); };
    if (const auto error = first(Severity::Error); error != found->end()) {
      return tr("%1 - see Problems").arg(Shown(error->Text));
    }
    if (const auto warning = first(Severity::Warning); IsStrict() && warning != found->end()) {
      return tr("There is a warning: %1 - see Problems").arg(Shown(warning->Text));
    }
  }
  const auto free = health_.IsOfPresent() ? FreeBytes(Folder()) : std::nullopt;
  if (free && *free < health_.Needs().SourceBytes) {
    const Message space =
        MessageOf(message::SpaceTooLittle, Folder(), SizeText(health_.Needs().Bytes), SizeText(*free));
    return Shown(MessageOf(message::DiscFolderRefused, Folder(), space.Text, Folder()).Text);
  }
  return {};
}

void AuthorSheet::ShowSize() {
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
}

void AuthorSheet::ShowHealth() {
  ShowSize();
  const Findings* const found = Found();
  findings_->setText(found != nullptr && !health_.IsBlank()
                         ? Shown(VerdictWords(VerdictOn(*found, IsStrict())))
                         : (health_.IsBlank() ? tr("Nothing is open yet") : tr("Still looking")));
  const QString holds = WhatHoldsBack();
  make_->setEnabled(holds.isEmpty());
  const QString words = refusal_.isEmpty() ? holds : refusal_;
  const bool isNew = words != hold_->text() && !words.isEmpty();
  hold_->setText(words);
  hold_->parentWidget()->setVisible(!words.isEmpty());
  make_->setAccessibleDescription(words);
  if (isNew) {
    QAccessibleEvent alert(hold_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
}

AuthorAction::AuthorAction(WindowParts& parts, ProjectFiles& files, std::function<const DiscMedium&()> medium,
                           QWidget& window)
    : QObject(&window),
      parts_(parts),
      folders_(parts.Doc, parts.StateFolder, nullptr),
      medium_(std::move(medium)),
      window_(window) {
  // Of a project that is being read or made, not of the one before.
  parts_.Commands.Handle(ActionId::Author, [this, &files] { files.WhenSettled([this] { Ask(); }); });
}

void AuthorAction::Ask() {
  auto* const sheet = new AuthorSheet(parts_, folders_, medium_(), &window_);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  connect(sheet, &AuthorSheet::Wanted, this, [this, sheet] { Make(*sheet); });
  sheet->open();
}

void AuthorAction::Make(AuthorSheet& sheet) {
  Document& document = parts_.Doc;
  const std::string folder = sheet.Folder();
  RefusalUi hears(document.Speaks());
  if (!MayAuthor(document.Session(), folder, hears)) {
    if (!hears.Told.empty()) {
      sheet.Refuse(tr("%1 - see Problems").arg(Shown(hears.Told.front().Text)));
    }
    return;
  }
  if (const auto refusal = WhyNotIn(folder, document.Speaks())) {
    sheet.Refuse(Shown(refusal->Text));
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
      sheet.Refuse(Shown(MessageOf(message::DiscKept, folder, folder).Text));
      return;
    }
  }
  folders_.Remember(Shown(folder));
  sheet.accept();
  const CommandCheck commands = document.Session().Commands();
  parts_.Work.Start("Author " + folder,
                    AuthorWork(std::make_shared<const Project>(document.Work()), commands, std::move(order)),
                    [&document](const Job& job) { document.Speaks().Status(job.Words()); });
  emit Began();
}

}  // namespace quorvelant
