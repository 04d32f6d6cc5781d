#include "window/player_pane.h"

#include <QApplication>
#include <QKeySequence>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr double LongestWait = 8;  // seconds: films are stills here
constexpr int FlashTime = 150;     // milliseconds
constexpr int DigitTime = 1500;

bool IsOfPlayer(const QKeyEvent& event) {
  return RemoteKeyOf(event) != nullptr || DigitOf(event) || event.key() == Qt::Key_Escape;
}

}  // namespace

PlayerPane::PlayerPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      player_(parts.Player),
      screen_(new PlayerScreen(parts.Player, this)),
      words_(new ShortLabel(this)),
      screens_(new QComboBox(this)),
      languages_(new QComboBox(this)) {
  setAccessibleName(tr("Player"));
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(screen_, 1);
  column->addWidget(words_);
  column->addLayout(Remote());
  setFocusProxy(screen_);
  for (QTimer* const timer : {&clock_, &flash_, &digits_}) {
    timer->setSingleShot(true);
  }
  connect(&clock_, &QTimer::timeout, this, [this] { player_.PassTime(); });
  connect(&flash_, &QTimer::timeout, this, &PlayerPane::Finish);
  connect(&digits_, &QTimer::timeout, this, &PlayerPane::Finish);
  connect(screen_, &PlayerScreen::Pointed, this, &PlayerPane::Point);
  connect(&player_, &Simulation::StateChanged, this, &PlayerPane::Follow);
  connect(&player_, &Simulation::LookChanged, this, &PlayerPane::FollowLook);
  Follow();
}

QToolButton* PlayerPane::Button(const QString& name, const QString& sign, const QString& keys) {
  auto* const button = new QToolButton(this);
  button->setText(sign);
  button->setAccessibleName(name);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(name, keys));
  button->setFocusPolicy(Qt::TabFocus);  // after a click the keys stay those of the remote
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  return button;
}

QLayout* PlayerPane::Remote() {
  auto* const grid = new QGridLayout;
  grid->setSpacing(2);
  for (const RemoteKey& key : RemoteKeys()) {
    QToolButton* const button =
        Button(tr(key.Name), tr(key.Sign), QKeySequence(key.Pressed).toString(QKeySequence::NativeText));
    grid->addWidget(button, key.Row, key.Column);
    if (key.Order == RemoteOrder::Play) {
      play_ = button;
      play_->setCheckable(true);
      play_->setToolTip(tr("Time runs: what is played ends by itself, after eight seconds at most (P)"));
      connect(play_, &QToolButton::toggled, this, &PlayerPane::Wait);
      connect(play_, &QToolButton::clicked, this, &PlayerPane::GiveKeysBack);
    } else {
      connect(button, &QToolButton::clicked, this, [this, &key] {
        GiveKeysBack();
        Order(key);
      });
    }
  }
  AddDigits(*grid);
  AddChoices(*grid);
  return grid;
}

void PlayerPane::AddDigits(QGridLayout& grid) {
  constexpr int First = 7;
  constexpr int InRow = 5;
  for (int place = 0; place < 2 * InRow; ++place) {
    const int digit = (place + 1) % (2 * InRow);
    QToolButton* const button =
        Button(tr("Digit %1").arg(digit), QString::number(digit), QString::number(digit));
    grid.addWidget(button, place / InRow, First + place % InRow);
    connect(button, &QToolButton::clicked, this, [this, digit] {
      GiveKeysBack();
      Digit(digit);
    });
  }
}

void PlayerPane::AddChoices(QGridLayout& grid) {
  screens_->addItems({tr("Screen 16:9"), tr("Screen 4:3, letterbox"), tr("Screen 4:3, pan-scan")});
  screens_->setAccessibleName(tr("Screen"));
  screens_->setToolTip(tr("The shape of the screen, and how it shows films of 16:9"));
  languages_->setAccessibleName(tr("Language of the player"));
  languages_->setToolTip(tr("The language that the player is set to; another one puts the disc in anew"));
  for (QComboBox* const box : {screens_, languages_}) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(5);
    connect(box, &QComboBox::currentIndexChanged, this, &PlayerPane::PutPlayer);
    connect(box, &QComboBox::activated, this, &PlayerPane::GiveKeysBack);
  }
  grid.addWidget(screens_, 2, 7, 1, 3);
  grid.addWidget(languages_, 2, 10, 1, 2);
}

// --- keys ---

// After a choice or a click keys are those of the remote.
void PlayerPane::GiveKeysBack() {
  screen_->setFocus(Qt::OtherFocusReason);
}

// Keys that the window has actions for go to the player.
bool PlayerPane::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOfPlayer(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void PlayerPane::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    player_.Eject();
  } else if (const auto digit = DigitOf(*event)) {
    Digit(*digit);
  } else if (auto* const button = qobject_cast<QToolButton*>(QApplication::focusWidget());
             button != nullptr && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
    button->click();
  } else if (const RemoteKey* const key = RemoteKeyOf(*event)) {
    Order(*key);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void PlayerPane::Order(const RemoteKey& key) {
  Finish();
  switch (key.Order) {
    case RemoteOrder::Press:
      Press({key.Key, 0});
      break;
    case RemoteOrder::Next:
      player_.PressNext(key.Key);
      break;
    case RemoteOrder::GoOn:
      player_.GoOn();
      break;
    case RemoteOrder::Play:
      play_->toggle();
      break;
    case RemoteOrder::StartAnew:
      player_.Insert();
      break;
  }
}

void PlayerPane::Press(const NavEvent& event) {
  const NavPage* const page = player_.Page();
  if (event.Key != NavKey::Activate || page == nullptr || page->Buttons.empty()) {
    player_.Press(event);
    return;
  }
  clock_.stop();
  pressed_ = event;
  screen_->ShowPressed(true);
  flash_.start(FlashTime);
}

// Buttons are called by their number; where there are none, chapters of a title.
void PlayerPane::Digit(int digit) {
  constexpr int Ten = 10;
  if (pressed_) {
    Finish();
  }
  number_ = number_ * Ten + digit;
  const NavPage* const page = player_.Page();
  const int most = page != nullptr ? page->ByNumber + page->Offset : static_cast<int>(player_.Parts());
  if (number_ * Ten > most && number_ > 0) {
    Finish();
    return;
  }
  words_->SetWords(tr("Number %1").arg(number_));
  digits_.start(DigitTime);
}

void PlayerPane::Point(int button, bool isPressed) {
  if (pressed_) {
    return;
  }
  if (player_.State().Registers.Button() != button) {
    Finish();
    player_.Press({NavKey::Select, static_cast<std::uint16_t>(button)});
  }
  if (isPressed && player_.State().Registers.Button() == button) {
    screen_->setFocus(Qt::MouseFocusReason);
    Press({NavKey::Activate, 0});
  }
}

void PlayerPane::Finish() {
  const auto pressed = std::exchange(pressed_, std::nullopt);
  const int number = std::exchange(number_, 0);
  const bool hadDigits = digits_.isActive() || number > 0;
  Forget();
  if (pressed) {
    player_.Press(*pressed);
  } else if (hadDigits) {
    const bool isPart = player_.Page() == nullptr && player_.Parts() > 0;
    player_.Press({isPart ? NavKey::Part : NavKey::Number, static_cast<std::uint16_t>(number)});
  }
}

void PlayerPane::Forget() {
  pressed_.reset();
  number_ = 0;
  flash_.stop();
  digits_.stop();
  screen_->ShowPressed(false);
}

// --- the player ---

void PlayerPane::PutPlayer() {
  SimulatedPlayer player = player_.Player();
  player.Screen = static_cast<PlayerScreenKind>(std::max(screens_->currentIndex(), 0));
  if (languages_->currentIndex() >= 0) {
    player.Language = static_cast<std::uint16_t>(languages_->currentData().toUInt());
  }
  player_.SetPlayer(player);
}

void PlayerPane::Follow() {
  if (!player_.IsOn()) {
    Forget();
    clock_.stop();
    play_->setChecked(false);
    if (!words_->Words().isEmpty()) {  // of what has just been played
      words_->SetWords({});
      parts_.Doc.Speaks().Status(tr("Ready").toStdString());
    }
    return;
  }
  words_->SetWords(player_.Words());
  ShowPlayer();
  parts_.Doc.Speaks().Status(player_.Words().toStdString());
  Wait();
}

void PlayerPane::FollowLook() {
  if (player_.IsOn() && number_ == 0) {
    words_->SetWords(player_.Words());
    if (!clock_.isActive() && !pressed_) {
      Wait();
    }
  }
}

void PlayerPane::ShowPlayer() {
  const QSignalBlocker quietScreens(screens_);
  const QSignalBlocker quietLanguages(languages_);
  screens_->setCurrentIndex(static_cast<int>(player_.Player().Screen));
  if (auto languages = player_.Languages(); languages != offered_) {
    offered_ = std::move(languages);
    languages_->clear();
    for (const std::uint16_t language : offered_) {
      languages_->addItem(LanguageWords(language), language);
    }
  }
  languages_->setCurrentIndex(languages_->findData(player_.Player().Language));
}

void PlayerPane::Wait() {
  clock_.stop();
  const auto seconds = player_.Seconds();
  if (player_.IsOn() && play_->isChecked() && seconds) {
    clock_.start(static_cast<int>(std::clamp(*seconds, 0.04, LongestWait) * 1000));
  }
}

}  // namespace quorvelant
