#include "window/notice_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QMetaObject>
#include <QStyle>
#include <algorithm>

#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostChoices = 3;

}  // namespace

NoticeBar::NoticeBar(Voice& voice, QWidget* parent)
    : QToolBar(tr("Notice"), parent), sign_(new QLabel), words_(new QLabel) {
  setObjectName(QStringLiteral("Notice"));
  setMovable(false);
  setFloatable(false);
  toggleViewAction()->setVisible(false);
  auto* const row = new QWidget;
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  words_->setWordWrap(true);
  words_->setTextFormat(Qt::PlainText);
  words_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(sign_);
  layout->addWidget(words_, 1);
  for (std::size_t i = 0; i < MostChoices; ++i) {
    auto* const button = new QPushButton;
    buttons_.push_back(button);
    layout->addWidget(button);
  }
  auto* const away = new QPushButton(tr("Dismiss"));
  layout->addWidget(away);
  connect(away, &QPushButton::clicked, this, [this] {
    isOffer_ = false;
    hide();
  });
  addWidget(row);
  hide();
  connect(&voice, &Voice::Told, this, &NoticeBar::Hear);
}

void NoticeBar::Hear(const Message& message) {
  if (message.Level == Severity::Information) {
    return;
  }
  if (told_.empty()) {
    QMetaObject::invokeMethod(this, &NoticeBar::ShowTold, Qt::QueuedConnection);
  }
  told_.push_back(message);
}

void NoticeBar::ShowTold() {
  const auto worst = std::ranges::max_element(told_, {}, &Message::Level);
  if (worst == told_.end() || isOffer_) {
    told_.clear();
    return;
  }
  QString words = Shown(worst->Text);
  if (!worst->Title.empty()) {
    words = QStringLiteral("%1: %2").arg(Shown(worst->Title), words);
  }
  if (told_.size() > 1) {
    words += tr(" (%1 more in Log)").arg(told_.size() - 1);
  }
  for (QPushButton* button : buttons_) {
    button->hide();
  }
  PutUp(words, worst->Level == Severity::Warning);
  told_.clear();
}

void NoticeBar::Offer(const QString& words, std::vector<Choice> choices) {
  isOffer_ = true;
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    QPushButton* const button = buttons_.at(i);
    button->disconnect(this);
    button->setVisible(i < choices.size());
    if (i < choices.size()) {
      button->setText(choices.at(i).Verb);
      connect(button, &QPushButton::clicked, this, [this, run = choices.at(i).Run] {
        isOffer_ = false;
        hide();
        run();
      });
    }
  }
  PutUp(words, true);
}

void NoticeBar::PutUp(const QString& words, bool isWarning) {
  const auto kind = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxCritical;
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  sign_->setPixmap(style()->standardIcon(kind, nullptr, this).pixmap(size, size));
  words_->setText(words);
  show();
  QAccessibleEvent alert(words_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NoticeBar::Fade() {
  if (!isOffer_) {
    hide();
  }
}

}  // namespace quorvelant
