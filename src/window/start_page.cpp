#include "window/start_page.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/plain_tool_tip.h"

namespace quorvelant {

namespace {

QPushButton* ButtonOf(QAction& action, bool isFirst) {
  auto* const button = new QPushButton(action.text());
  button->setToolTip(action.statusTip());
  button->setDefault(isFirst);
  QObject::connect(button, &QPushButton::clicked, &action, &QAction::trigger);
  const auto follow = [button, &action] { button->setEnabled(action.isEnabled()); };
  follow();
  QObject::connect(&action, &QAction::changed, button, follow);
  return button;
}

QString WithoutHome(const QString& path) {
  return path.startsWith(QDir::homePath() + QLatin1Char('/'))
             ? QLatin1Char('~') + path.mid(QDir::homePath().size())
             : path;
}

}  // namespace

StartPage::StartPage(Actions& actions, QWidget* parent)
    : QWidget(parent), recentPart_(new QWidget), recent_(new QListWidget) {
  setAccessibleName(tr("Start"));
  auto* const column = new QVBoxLayout;
  auto* const heading = new QLabel(tr("Make a disc"));
  QFont large = heading->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  heading->setFont(large);
  column->addWidget(heading);
  column->addWidget(new QLabel(tr("Drop films here, or begin with one of these.")));
  bool isFirst = true;
  for (const ActionId id :
       {ActionId::NewDiscFromFilms, ActionId::NewTrack, ActionId::Open, ActionId::OpenExample}) {
    column->addWidget(ButtonOf(*actions.Of(id), isFirst));
    isFirst = false;
  }
  auto* const recentColumn = new QVBoxLayout(recentPart_);
  recentColumn->setContentsMargins(0, 0, 0, 0);
  auto* const label = new QLabel(tr("Recent projects"));
  label->setBuddy(recent_);
  recent_->setAccessibleName(tr("Recent projects"));
  recent_->setTextElideMode(Qt::ElideMiddle);
  recentColumn->addWidget(label);
  recentColumn->addWidget(recent_);
  column->addWidget(recentPart_, 1);
  column->addStretch();
  auto* const row = new QHBoxLayout(this);
  row->addStretch(1);
  row->addLayout(column, 4);
  row->addStretch(1);
  const auto open = [this](const QListWidgetItem* item) { emit Chosen(item->data(Qt::UserRole).toString()); };
  connect(recent_, &QListWidget::itemActivated, this, open);
  SetRecent({});
}

void StartPage::SetRecent(const QStringList& files) {
  recent_->clear();
  for (const QString& file : files) {
    auto* const item = new QListWidgetItem(
        QStringLiteral("%1 — %2").arg(QFileInfo(file).fileName(), WithoutHome(QFileInfo(file).path())),
        recent_);
    item->setData(Qt::UserRole, file);
    item->setToolTip(PlainToolTip(file));
  }
  recentPart_->setVisible(!files.isEmpty());
}

}  // namespace quorvelant
