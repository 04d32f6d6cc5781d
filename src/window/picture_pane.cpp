#include "window/picture_pane.h"

#include <fmt/format.h>

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/button_aims.h"
#include "edit/saved_frame.h"
#include "ui/color_pick.h"
#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QString NameOf(ViewMode view) {
  switch (view) {
    case ViewMode::Wide:
      return PicturePane::tr("Wide");
    case ViewMode::Pan:
      return PicturePane::tr("Pan-Scan");
    case ViewMode::LetterBox:
      return PicturePane::tr("LetterBox");
    case ViewMode::Normal:
      break;
  }
  return PicturePane::tr("4:3");
}

// Texts, so that they show in every palette.
struct TransportKey {
  ActionId Id;
  const char* Text;
};
constexpr std::array TransportKeys{
    TransportKey{ActionId::FirstSubtitle, "⇤"}, TransportKey{ActionId::PreviousSubtitle, "≪"},
    TransportKey{ActionId::PreviousGop, "◀"},   TransportKey{ActionId::NextGop, "▶"},
    TransportKey{ActionId::NextSubtitle, "≫"},  TransportKey{ActionId::LastSubtitle, "⇥"}};

// A button that does what an action does and bears a sign instead of its words.
QToolButton* ButtonFor(QAction& action, const QString& text, QWidget* parent) {
  auto* const button = new QToolButton(parent);
  button->setText(text);
  button->setAccessibleName(action.text().remove(QLatin1Char('&')));
  const QString keys = action.shortcut().toString(QKeySequence::NativeText);
  button->setToolTip(keys.isEmpty() ? button->accessibleName()
                                    : QStringLiteral("%1 (%2)").arg(button->accessibleName(), keys));
  QObject::connect(button, &QToolButton::clicked, &action, &QAction::trigger);
  const auto follow = [button, &action] { button->setEnabled(action.isEnabled()); };
  QObject::connect(&action, &QAction::enabledChanged, button, follow);
  follow();
  return button;
}

Picture PictureOf(const QImage& image) {
  const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
  Picture picture(rgb.width(), rgb.height());
  for (int row = 0; row < rgb.height(); ++row) {
    std::copy_n(rgb.constScanLine(row), picture.RowBytes(), picture.Row(row));
  }
  return picture;
}

}  // namespace

PicturePane::PicturePane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      board_(parts.Doc, parts.View),
      view_(new PictureView(parts, board_, this)),
      bar_(new PictureBar(parts, this)),
      time_(new QLineEdit(this)),
      length_(new QLabel(this)),
      words_(new QLabel(this)),
      viewBox_(new QComboBox(this)),
      streamBox_(new QComboBox(this)),
      stateBox_(new QComboBox(this)),
      dropper_(Toggle(tr("Pick Colour"), tr("Click on a subtitle to take the colour of its bitmap"))) {
  setAccessibleName(tr("Picture"));
  for (QLabel* const label : {length_, words_}) {
    label->setTextFormat(Qt::PlainText);
  }
  words_->setAccessibleName(tr("Subtitle of the moment"));
  words_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(view_, 1);
  column->addWidget(bar_);
  column->addWidget(Transport());
  column->addWidget(Choices());
  column->addWidget(words_);
  HandleActions();
  connect(&parts.View, &Viewer::StateMoved, this, &PicturePane::ShowState);
  connect(&parts.View, &Viewer::PicturesChanged, this, &PicturePane::ShowState);
  connect(&parts.View, &Viewer::PictureReady, this, &PicturePane::ShowWords);
  connect(&parts.View, &Viewer::UnitReady, this, &PicturePane::ShowWords);
  connect(&parts.View, &Viewer::ButtonChosen, this, &PicturePane::ShowWords);
  connect(&parts.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &PicturePane::ShowState);
  connect(view_, &PictureView::PickEnded, dropper_, [this] { dropper_->setChecked(false); });
  connect(view_, &PictureView::ColorPicked, this, &PicturePane::TakeColor);
  ShowState();
}

QToolButton* PicturePane::Toggle(const QString& text, const QString& tip) {
  auto* const button = new QToolButton(this);
  button->setText(text);
  button->setAccessibleName(text);
  button->setToolTip(tip);
  button->setCheckable(true);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QWidget* PicturePane::Transport() {
  auto* const row = new QWidget(this);
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  for (const TransportKey& key : TransportKeys) {
    QToolButton* const button = ButtonFor(*parts_.Commands.Of(key.Id), QString::fromUtf8(key.Text), row);
    button->setFocusPolicy(Qt::StrongFocus);
    line->addWidget(button);
  }
  time_->setAccessibleName(tr("Time"));
  // A blank that is no digit: blanks are not told to screen readers.
  time_->setInputMask(QStringLiteral("00:00:00:00;_"));
  time_->setMaximumWidth(time_->fontMetrics().horizontalAdvance(QStringLiteral("00:00:00:00  ")) * 5 / 4);
  connect(time_, &QLineEdit::editingFinished, this, &PicturePane::ToTypedTime);
  line->addWidget(time_);
  line->addWidget(length_);
  line->addStretch(1);
  auto* const rate =
      Toggle(tr("Bit Rate"), tr("Show the bits of the film over time, against the disc's limit"));
  connect(rate, &QToolButton::toggled, bar_, &PictureBar::ShowBitRate);
  line->addWidget(rate);
  return row;
}

QWidget* PicturePane::Choices() {
  auto* const row = new QWidget(this);
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  viewBox_->setAccessibleName(tr("Viewing mode"));
  streamBox_->setAccessibleName(tr("Subtitle stream"));
  streamBox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  streamBox_->setMinimumContentsLength(10);
  stateBox_->setAccessibleName(tr("Buttons shown as"));
  stateBox_->addItems({tr("Normal"), tr("Selected"), tr("Activated")});
  stateBox_->setCurrentIndex(static_cast<int>(board_.State()));
  auto* const links = Toggle(tr("Links"), tr("Show where the arrow keys of the remote control lead"));
  links->setChecked(true);
  line->addWidget(viewBox_);
  line->addWidget(streamBox_, 1);
  line->addWidget(stateBox_);
  line->addWidget(links);
  line->addWidget(dropper_);
  connect(viewBox_, &QComboBox::activated, this, [this](int index) {
    viewChanged_ = true;
    parts_.View.ToView(static_cast<ViewMode>(viewBox_->itemData(index).toInt()));
  });
  connect(streamBox_, &QComboBox::activated, this, [this](int index) {
    if (streamBox_->itemData(index).isValid()) {
      parts_.View.ToStream(static_cast<std::size_t>(streamBox_->itemData(index).toULongLong()));
    }
  });
  connect(stateBox_, &QComboBox::currentIndexChanged, this,
          [this](int index) { board_.Show(static_cast<ButtonState>(index)); });
  connect(links, &QToolButton::toggled, view_, &PictureView::ShowLinks);
  connect(dropper_, &QToolButton::toggled, view_, &PictureView::PickColor);
  return row;
}

void PicturePane::HandleActions() {
  using enum ActionId;
  Actions& actions = parts_.Commands;
  const auto hasTrack = [this] { return parts_.View.Shown() != nullptr; };
  const auto hasEntries = [this] {
    const Track* const track = parts_.View.Shown();
    const auto stream = parts_.View.State().Stream;
    return track != nullptr && stream && *stream < track->SubStreams.size() &&
           !track->SubStreams[*stream].SubPlays.empty();
  };
  constexpr std::array<std::pair<ActionId, ViewerMove>, 6> Moves{{{PreviousGop, ViewerMove::PrevGop},
                                                                  {NextGop, ViewerMove::NextGop},
                                                                  {FirstSubtitle, ViewerMove::FirstSub},
                                                                  {PreviousSubtitle, ViewerMove::PrevSub},
                                                                  {NextSubtitle, ViewerMove::NextSub},
                                                                  {LastSubtitle, ViewerMove::LastSub}}};
  for (const auto& move : Moves) {
    const bool isGop = move.second == ViewerMove::PrevGop || move.second == ViewerMove::NextGop;
    const auto run = [this, to = move.second] { parts_.View.Move(to); };
    isGop ? actions.Handle(move.first, run, hasTrack) : actions.Handle(move.first, run, hasEntries);
  }
  actions.Handle(
      ActionId::NextView, [this] { this->NextView(); },
      [this] { return parts_.View.Shown() != nullptr && OfferedViews(*parts_.View.Shown()).size() > 1; });
  actions.Handle(ActionId::SafeArea,
                 [this] { view_->ShowSafeArea(parts_.Commands.Of(ActionId::SafeArea)->isChecked()); });
  const auto hasPicture = [this] { return parts_.View.IsPictureReady(); };
  actions.Handle(
      SaveFrame, [this] { this->Save(false); }, hasPicture);
  actions.Handle(
      SaveFrameAsTrack, [this] { this->Save(true); }, hasPicture);
  actions.Handle(
      ActionId::NewButton, [this] { this->NewButton(); }, hasTrack);
  actions.Handle(
      RouteButtons, [this] { board_.Route(); }, [this] { return board_.Set() != nullptr; });
}

void PicturePane::ShowState() {
  const Track* const track = parts_.View.Shown();
  const ViewerState& state = parts_.View.State();
  const QSignalBlocker quietViews(viewBox_);
  const QSignalBlocker quietStreams(streamBox_);
  viewBox_->clear();
  streamBox_->clear();
  for (QWidget* control :
       {static_cast<QWidget*>(time_), static_cast<QWidget*>(viewBox_), static_cast<QWidget*>(streamBox_),
        static_cast<QWidget*>(stateBox_), static_cast<QWidget*>(dropper_)}) {
    control->setEnabled(track != nullptr);
  }
  if (track == nullptr) {
    time_->setText(QStringLiteral("00:00:00:00"));
    length_->clear();
    ShowWords();
    return;
  }
  for (const ViewMode view : OfferedViews(*track)) {
    viewBox_->addItem(NameOf(view), static_cast<int>(view));
  }
  viewBox_->setCurrentIndex(viewBox_->findData(static_cast<int>(state.View)));
  for (const std::size_t stream : StreamsIn(state.View, *track)) {
    const SubtitleStream& shown = track->SubStreams[stream];
    const std::size_t lines = shown.SubPlays.size();
    streamBox_->addItem((lines == 1 ? tr("%1  %2 (%3 line)") : tr("%1  %2 (%3 lines)"))
                            .arg(stream + 1)
                            .arg(Shown(shown.Language))
                            .arg(lines),
                        static_cast<qulonglong>(stream));
  }
  if (streamBox_->count() == 0) {
    streamBox_->addItem(Shown(NoStreams));
  } else if (state.Stream) {
    streamBox_->setCurrentIndex(streamBox_->findData(static_cast<qulonglong>(*state.Stream)));
  }
  streamBox_->setToolTip(Shown(StreamsLine(state.View, viewChanged_)));
  const TrackTimes times(*track);
  if (!time_->hasFocus() || !time_->isModified()) {
    time_->setText(Shown(times.Timecode(state.Frame)));
  }
  const std::int64_t frames = parts_.View.FrameCount();
  length_->setText(frames > 0 ? tr("of %1").arg(Shown(times.Timecode(frames))) : QString());
  parts_.Commands.Refresh();
  ShowWords();
}

void PicturePane::ShowWords() {
  const Track* const track = parts_.View.Shown();
  QStringList words;
  if (track != nullptr) {
    words << Shown(StatusLine(parts_.View.State(), {*track, parts_.View.Pictures()}));
  }
  words << parts_.View.PictureWords() << parts_.View.UnitWords();
  if (const std::string hidden = board_.WordsOfChosen(); !hidden.empty()) {
    words << tr("Button# %1: %2").arg(*parts_.View.Button() + 1).arg(Shown(hidden));
  }
  words.removeAll(QString());
  words_->setText(words.join(QStringLiteral("  ·  ")));
  words_->setToolTip(PlainToolTip(words_->text()));
  parts_.Commands.Refresh();
}

void PicturePane::ToTypedTime() {
  const Track* const track = parts_.View.Shown();
  if (track == nullptr || !time_->isModified()) {
    return;
  }
  time_->setModified(false);
  parts_.View.ToFrame(TimecodeToFrames(time_->displayText().replace(u'_', u'0').toStdString(),
                                       TrackTimes(*track).FramesPerSecond));
  ShowState();
}

void PicturePane::NextView() {
  const auto views = OfferedViews(*parts_.View.Shown());
  const auto now = std::ranges::find(views, parts_.View.State().View);
  const bool isLast = now == views.end() || std::next(now) == views.end();
  viewChanged_ = true;
  parts_.View.ToView(isLast ? views.front() : *std::next(now));
}

// Asks where the button leads, among all that it can lead to.
void PicturePane::NewButton() {
  const std::size_t track = *parts_.View.TrackIndex();
  const auto aims =
      AimsAt(parts_.Doc.Work(), parts_.Doc.Session().RulesInForce(), track, parts_.View.State().Frame);
  std::vector<std::string> choices{"Nothing yet"};
  std::ranges::transform(aims, std::back_inserter(choices), &ButtonAim::Words);
  std::optional<std::size_t> chosen = 0;
  if (!aims.empty()) {
    chosen = parts_.Answers.Choose("New Button", "What does the button lead to?", choices);
  }
  if (chosen && *chosen < choices.size()) {
    view_->AddButton(*chosen == 0 ? std::string() : aims[*chosen - 1].Key);
  }
}

void PicturePane::Save(bool asTrack) {
  const Track* const track = parts_.View.Shown();
  if (track == nullptr || !parts_.View.IsPictureReady()) {
    return;
  }
  const std::string proposal = fmt::format(
      "{}_{}.bmp", track->TrackName.empty() ? "picture" : track->TrackName, parts_.View.State().Frame);
  auto path = parts_.Answers.FileToSave("Location to Save Frame", proposal, {{"BMP Files", {"bmp"}}});
  if (!path) {
    return;
  }
  if (!EqualNoCase(std::string_view(*path).substr(path->size() < 4 ? 0 : path->size() - 4), ".bmp")) {
    *path += ".bmp";
  }
  const Picture frame = PictureOf(parts_.View.PictureNow());
  const std::string held = parts_.Doc.AsScriptHolds(*path);
  const std::size_t source = *parts_.View.TrackIndex();
  const auto done = parts_.Doc.Do([&](EditSession& session, Consent consent) {
    const FrameFile file{.Path = held, .Consent = consent};
    return asTrack ? SaveFrameAsTrack(session, source, frame, file) : SaveFrame(session, frame, file);
  });
  if (done) {
    parts_.Doc.Speaks().Status("Picture saved: " + *path);
  }
}

// The colour goes to one of the four conversion colours, of as many entries as the user says.
void PicturePane::TakeColor(int column, int line) {
  const ViewerState& state = parts_.View.State();
  if (!state.Stream || !state.Entry) {
    parts_.Doc.Speaks().Status("No Subpictures at this time frame");
    return;
  }
  const SubtitlePlace place{*parts_.View.TrackIndex(), *state.Stream, *state.Entry};
  const auto picked = PickedColor(parts_.Doc.Work(), place, column, line, parts_.Pictures);
  if (!picked.Color) {
    parts_.Doc.Speaks().Status(picked.Why);
    return;
  }
  const Color color = *picked.Color;
  const std::string name =
      fmt::format("{}, {}, {}", color & 0xFFU, color >> 8U & 0xFFU, color >> 16U & 0xFFU);
  const auto cell = parts_.Answers.Choose("Conversion Colour",
                                          "Pixels of the colour " + name + " (red, green, blue) are to be",
                                          {"Background", "Pattern", "Emphasis 2", "Emphasis 1"});
  const auto scope =
      cell ? parts_.Answers.Choose("Conversion Colour", "For which subtitles?",
                                   {"This subtitle", "All of this stream", "All of all streams of the track"})
           : std::nullopt;
  if (!cell || !scope) {
    return;
  }
  constexpr std::array<std::size_t, 4> Places{3, 2, 0, 1};  // Bg, P, E2, E1 in a quad
  parts_.Doc.Do([&](EditSession& session, Consent) {
    return PutConversionColor(session, place, Places.at(*cell), color, static_cast<ColorScope>(*scope));
  });
}

}  // namespace quorvelant
