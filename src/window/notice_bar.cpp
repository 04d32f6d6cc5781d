#include "window/notice_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QMetaObject>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "ui/shown_text.h"
#include "window/messages.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostChoices = 3;

Message WhyFailed(const Job& job) {
  const auto error = std::ranges::find(job.Told(), Severity::Error, &Message::Level);
  return MessageOf(message::JobFailed, {}, job.Title(),
                   error == job.Told().end() ? job.Words() : error->Text);
}

}  // namespace

NoticeRow::NoticeRow(QWidget* parent) : QWidget(parent), sign_(new QLabel), words_(new ShortLabel) {
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(sign_);
  layout->addWidget(words_, 1);
  for (std::size_t i = 0; i < MostChoices; ++i) {
    auto* const button = new QPushButton;
    buttons_.push_back(button);
    layout->addWidget(button);
  }
  auto* const away = new QPushButton(tr("Dismiss"));
  layout->addWidget(away);
  connect(away, &QPushButton::clicked, this, &NoticeRow::Answered);
}

void NoticeRow::PutUp(const QString& words, bool isWarning, const std::vector<Choice>& choices) {
  const auto kind = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxCritical;
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  sign_->setPixmap(style()->standardIcon(kind, nullptr, this).pixmap(size, size));
  words_->SetWords(words);
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    QPushButton* const button = buttons_.at(i);
    button->disconnect(this);
    button->setVisible(i < choices.size());
    if (i < choices.size()) {
      button->setText(choices.at(i).Verb);
      connect(button, &QPushButton::clicked, this, [this, run = choices.at(i).Run] {
        const auto chosen = run;  // the answer may bring the next question, which takes this one's place
        emit Answered();
        chosen();
      });
    }
  }
  QAccessibleEvent alert(words_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

NoticeBar::NoticeBar(Voice& voice, QWidget* parent)
    : QToolBar(tr("Notice"), parent),
      offer_(new NoticeRow),
      refusal_(new NoticeRow),
      escape_(new QShortcut(QKeySequence(Qt::Key_Escape), parent)) {
  setObjectName(QStringLiteral("Notice"));
  setMovable(false);
  setFloatable(false);
  toggleViewAction()->setVisible(false);
  auto* const rows = new QWidget;
  rows->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* const column = new QVBoxLayout(rows);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(offer_);
  column->addWidget(refusal_);
  addWidget(rows);
  connect(offer_, &NoticeRow::Answered, this, [this] {
    offers_.pop_back();
    ShowOffer();
  });
  connect(refusal_, &NoticeRow::Answered, this, &NoticeBar::Fade);
  connect(escape_, &QShortcut::activated, this, &NoticeBar::Fade);
  connect(&voice, &Voice::Told, this, &NoticeBar::Hear);
  ShowRows();
}

void NoticeBar::Follow(Jobs& jobs) {
  connect(&jobs, &Jobs::Began, this, [this](Job* job) {
    connect(job, &Job::HasTold, this, [this](const Message& message) {
      if (message.Level != Severity::Information && !told_.empty()) {
        told_.pop_back();  // the voice told it just now
      }
    });
    connect(job, &Job::Ended, this, [this, job] {
      if (job->Now() == Job::State::Failed) {
        Hear(WhyFailed(*job));
      }
    });
  });
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
  const std::vector<Message> told = std::exchange(told_, {});
  const auto worst = std::ranges::max_element(told, {}, &Message::Level);
  if (worst == told.end()) {
    return;
  }
  QString words = Shown(worst->Text);
  if (!worst->Title.empty()) {
    words = QStringLiteral("%1: %2").arg(Shown(worst->Title), words);
  }
  if (told.size() > 1) {
    words += tr(" (%1 more in Log)").arg(told.size() - 1);
  }
  isRefused_ = true;
  refusal_->PutUp(words, worst->Level == Severity::Warning);
  ShowRows();
}

void NoticeBar::Offer(Subject subject, const QString& words, std::vector<Choice> choices) {
  std::erase_if(offers_, [subject](const Standing& one) { return one.About == subject; });
  offers_.push_back({subject, words, std::move(choices)});
  ShowOffer();
}

void NoticeBar::Withdraw(Subject subject) {
  if (std::erase_if(offers_, [subject](const Standing& one) { return one.About == subject; }) > 0) {
    ShowOffer();
  }
}

void NoticeBar::ShowOffer() {
  if (!offers_.empty()) {
    offer_->PutUp(offers_.back().Words, true, offers_.back().Choices);
  }
  ShowRows();
}

void NoticeBar::ShowRows() {
  offer_->setVisible(!offers_.empty());
  refusal_->setVisible(isRefused_);
  escape_->setEnabled(isRefused_);
  setVisible(isRefused_ || !offers_.empty());
}

void NoticeBar::Fade() {
  isRefused_ = false;
  ShowRows();
}

QString NoticeBar::Words() const {
  QStringList words;
  if (!offers_.empty()) {
    words << offer_->Words();
  }
  if (isRefused_) {
    words << refusal_->Words();
  }
  return words.join(QLatin1Char('\n'));
}

}  // namespace quorvelant
