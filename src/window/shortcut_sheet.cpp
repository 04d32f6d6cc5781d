#include "window/shortcut_sheet.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <optional>
#include <string_view>

#include "window/actions.h"
#include "window/clear_button.h"

namespace quorvelant {

namespace {

QString Told(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString MenuName(MenuId menu) {
  switch (menu) {
    case MenuId::File:
      return ShortcutSheet::tr("File");
    case MenuId::Edit:
      return ShortcutSheet::tr("Edit");
    case MenuId::View:
      return ShortcutSheet::tr("View");
    case MenuId::Track:
      return ShortcutSheet::tr("Track");
    case MenuId::Disc:
      return ShortcutSheet::tr("Disc");
    case MenuId::Tools:
      return ShortcutSheet::tr("Tools");
    case MenuId::Help:
      return ShortcutSheet::tr("Help");
  }
  return {};
}

}  // namespace

ShortcutSheet::ShortcutSheet(QWidget* parent)
    : QDialog(parent), search_(new QLineEdit), rows_(new QTreeWidget) {
  setWindowTitle(tr("Shortcuts"));
  search_->setPlaceholderText(tr("Search commands and keys"));
  search_->setAccessibleName(tr("Search commands and keys"));
  AddClearButton(*search_);
  rows_->setAccessibleName(tr("Commands and keys"));
  rows_->setHeaderLabels({tr("Command"), tr("Keys"), tr("What it does")});
  rows_->setRootIsDecorated(false);
  rows_->setAlternatingRowColors(true);
  rows_->setAllColumnsShowFocus(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(search_, &QLineEdit::textChanged, this, &ShortcutSheet::Narrow);
  auto* all = new QVBoxLayout(this);
  all->addWidget(search_);
  all->addWidget(rows_, 1);
  all->addWidget(buttons);
  Fill();
  const int letter = fontMetrics().averageCharWidth();
  resize(letter * 150, fontMetrics().height() * 36);
}

void ShortcutSheet::Fill() {
  QTreeWidgetItem* menu = nullptr;
  std::optional<MenuId> last;
  for (const ActionRow& row : ActionTable()) {
    if (last != row.Menu) {
      menu = new QTreeWidgetItem(rows_, {MenuName(row.Menu)});
      menu->setFirstColumnSpanned(true);
      QFont bold = menu->font(0);
      bold.setBold(true);
      menu->setFont(0, bold);
      last = row.Menu;
    }
    const QKeySequence keys = QKeySequence::fromString(Told(row.Keys), QKeySequence::PortableText);
    new QTreeWidgetItem(menu, {Told(row.Text).remove(QLatin1Char('&')),
                               keys.toString(QKeySequence::NativeText), Told(row.Tip)});
  }
  rows_->expandAll();
  rows_->header()->resizeSections(QHeaderView::ResizeToContents);
}

void ShortcutSheet::Narrow(const QString& words) {
  for (int i = 0; i < rows_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* menu = rows_->topLevelItem(i);
    bool any = false;
    for (int k = 0; k < menu->childCount(); ++k) {
      QTreeWidgetItem* row = menu->child(k);
      const QString all = row->text(0) + QLatin1Char('\n') + row->text(1) + QLatin1Char('\n') + row->text(2);
      const bool shows = all.contains(words.trimmed(), Qt::CaseInsensitive);
      row->setHidden(!shows);
      any = any || shows;
    }
    menu->setHidden(!any);
  }
}

}  // namespace quorvelant
